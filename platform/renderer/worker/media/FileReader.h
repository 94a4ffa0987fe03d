#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

namespace voro::renderer {

/** A file that is read here and there. */
class FileReader {
public:
    explicit FileReader(const std::string &path) : m_file(std::fopen(path.c_str(), "rbe")) {}

    /** What stands at a place, less behind the end. */
    std::string at(int64_t place, size_t size)
    {
        std::string text(size, '\0');
        if (!m_file || place < 0 || fseeko(m_file.get(), place, SEEK_SET) != 0) {
            return {};
        }
        text.resize(std::fread(text.data(), 1, size, m_file.get()));
        return text;
    }
    std::string lastBytes(size_t size)
    {
        if (!m_file || fseeko(m_file.get(), 0, SEEK_END) != 0) {
            return {};
        }
        return at(std::max<int64_t>(0, ftello(m_file.get()) - static_cast<int64_t>(size)), size);
    }

private:
    struct CloseFile {
        void operator()(std::FILE *file) const { std::fclose(file); }
    };
    std::unique_ptr<std::FILE, CloseFile> m_file;
};

} // namespace voro::renderer
