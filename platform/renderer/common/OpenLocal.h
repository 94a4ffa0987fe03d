#pragma once

#include "LocalFile.h"

#include <functional>

/* How local media, lists and captions are opened: by this process itself, or by whom it asks for them. */

namespace voro::renderer {

enum class Freshness {
    /** A file that was opened a moment ago for the same purpose will do. */
    Recent,
    /** As the file is now. */
    Now,
};

using FileOpener = std::function<LocalFile::Shared(const std::string &path, Freshness freshness)>;

/** Has somebody else open the files; to be called before there are other threads. */
void setFileOpener(FileOpener opener);

/** Never null. May be called by every thread. */
LocalFile::Shared openLocal(const std::string &path, Freshness freshness = Freshness::Recent);

} // namespace voro::renderer
