#include "OpenLocal.h"

#include <utility>

namespace voro::renderer {

namespace {

FileOpener &opener()
{
    static FileOpener opener = [](const std::string &path, Freshness) { return LocalFile::open(path); };
    return opener;
}

} // namespace

void setFileOpener(FileOpener other)
{
    opener() = std::move(other);
}

LocalFile::Shared openLocal(const std::string &path, Freshness freshness)
{
    return opener()(path, freshness);
}

} // namespace voro::renderer
