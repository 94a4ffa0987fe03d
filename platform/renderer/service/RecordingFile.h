#pragma once

#include "FileView.h"

#include <pps/Fd.h>
#include <renderer/common/Error.h>
#include <renderer/common/RecordingFormat.h>
#include <sys/types.h>

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace voro::renderer {

/**
 * The file of a recording. open() and close() may wait for the disk; the last owner of what make() returns lets go of
 * it on a thread of its own, or leaves it open when there is none to be had.
 */
class OpenRecording {
public:
    /** A new file gets the permissions that the process would give it, which the recording is for. */
    static std::shared_ptr<OpenRecording> make(const FileView::Shared &view, const std::string &path, pid_t process);

    /** Opens the file without changing it; an existing one keeps its content until the recording begins. */
    Result open();
    int descriptor() const { return m_file.get(); }
    /** Lets the recording have the file. */
    void keep() { m_isKept = true; }
    /** The recording has failed. */
    void giveUp() { m_isKept = false; }
    /** Closes the file. An empty one that was made for a recording that does not have it goes. */
    void close();

private:
    OpenRecording(FileView::Shared view, std::string path, pid_t process)
        : m_view(std::move(view)),
          m_path(std::move(path)),
          m_process(process)
    {}

    FileView::Shared m_view;
    std::string m_path;
    pid_t m_process;
    pps::Fd m_file;
    /** The device and inode of the file if it was created here, to recognise it by. */
    std::optional<std::pair<dev_t, ino_t>> m_made;
    std::atomic<bool> m_isKept = false;
};

/**
 * A file that a context records into: an output of the type File. It is taken from others while it is one, unless the
 * context could not get its input, and nothing happens to what is on the disk before the recording starts.
 */
class RecordingFile {
public:
    /** A file that inspect() found good, and its key. */
    RecordingFile(const std::string &path, const std::string &key);
    ~RecordingFile() { release(); }
    RecordingFile(const RecordingFile &) = delete;
    RecordingFile &operator=(const RecordingFile &) = delete;

    /** The path of an output URL, as it stands. */
    static std::string pathOf(std::string_view url);
    /** Whether there is a format for what the path names. */
    static bool hasFormat(const std::string &path);
    /**
     * Whether the path could be recorded into, and its key: the same for every way to write the path. This may wait
     * for the disk.
     */
    static Result inspect(const FileView &view, const std::string &path, std::string &key);

    /** Takes it from others, also again after release(); false when somebody else has it. */
    bool take();
    /** Lets others have it. */
    void release();
    bool isTaken() const { return m_isTaken; }

    const std::string &path() const { return m_path; }
    const std::string &key() const { return m_key; }
    const RecordingFormat &format() const { return *m_format; }

    /** Finishes with it: no second recording replaces what it holds. */
    void setUsed() { m_isUsed = true; }
    /** Whether a recording had it. */
    bool isUsed() const { return m_isUsed; }

private:
    std::string m_path;
    std::string m_key;
    const RecordingFormat *m_format;
    bool m_isTaken = false;
    bool m_isUsed = false;
};

} // namespace voro::renderer
