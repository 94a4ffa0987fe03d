#pragma once

#include "../common/Error.h"
#include "../common/RecordingFormat.h"

#include <pps/Fd.h>

#include <string>
#include <string_view>

namespace voro::renderer {

/**
 * A file that a context records into: an output of the type "file". It is taken from others while it is one, unless the
 * context could not get its input, and nothing happens to what is on the disk before the recording starts.
 */
class RecordingFile {
public:
    /** Takes a file that check() found good. */
    explicit RecordingFile(const std::string &path);
    ~RecordingFile();
    RecordingFile(const RecordingFile &) = delete;
    RecordingFile &operator=(const RecordingFile &) = delete;

    /** The path of an output URL, as it stands. */
    static std::string pathOf(std::string_view url);
    /** Whether it could be recorded into; a file that is taken cannot, unless it is `own`. */
    static Result check(const std::string &path, const RecordingFile *own);

    /** Takes it again after release(); false when somebody else has it. */
    bool take();
    /** Lets others have it. */
    void release();

    const RecordingFormat &format() const { return *m_format; }

    /** Opens the file without changing it; an existing one keeps its content until the recording begins. */
    Result open();
    /** The descriptor, while it is open. */
    int descriptor() const { return m_file.get(); }
    /** Lets the recording have the file. It is finished with it: no second one replaces what it holds. */
    void commit();
    /** Lets go of the file after a recording that did not start; one that was made for it goes. */
    void discard();
    /** Whether a recording had it. */
    bool isUsed() const { return m_isUsed; }

private:
    std::string m_path;
    /** The same for every way to write the path. */
    std::string m_key;
    const RecordingFormat *m_format;
    pps::Fd m_file;
    bool m_isTaken = false;
    bool m_isNew = false;
    bool m_isUsed = false;
};

} // namespace voro::renderer
