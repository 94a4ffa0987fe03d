#pragma once

#include <pps/Fd.h>
#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>

namespace voro::renderer {

/**
 * A file of this machine that is open for reading, or why it is not. All who read it share it, each at its own places.
 */
class LocalFile {
public:
    using Shared = std::shared_ptr<const LocalFile>;

    explicit LocalFile(pps::Fd file) : m_file(std::move(file)) {}
    explicit LocalFile(int error) : m_error(error) {}

    /** Opens a regular file; the error of anything else is `EMEDIUMTYPE`. Opens no device, waits for no writer. */
    static Shared open(const std::string &path);
    /** The same for what is open already, but only as a path (`O_PATH`); an invalid one failed, with errno. */
    static Shared openAt(const pps::Fd &pathDescriptor);

    bool isOpen() const { return m_file.isValid(); }
    /** The errno number of opening. */
    int error() const { return m_error; }
    int descriptor() const { return m_file.get(); }

    /** The same for all names of a file and for no other file; empty when it is not open. */
    std::string identity() const;
    /** How long the file is now. */
    int64_t size() const;
    /** As `pread()`, but reads less only at the end. */
    ssize_t read(int64_t offset, std::span<std::byte> bytes) const;
    /** The content at an offset, less behind the end. */
    std::string at(int64_t offset, size_t size) const;
    std::string lastBytes(size_t size) const;

private:
    pps::Fd m_file;
    int m_error = 0;
};

} // namespace voro::renderer
