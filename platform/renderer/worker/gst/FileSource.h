#pragma once

#include <gst/gst.h>

#include <string>

namespace voro::renderer {

/**
 * The source of local files: it reads what openLocal() opens, at places of its own. After it was registered it is made
 * for every `file` URI that is opened, and no other element opens one by its URI.
 */
inline constexpr char FileSourceElement[] = "vorofilesrc";

/** Registers the element, which asks before it takes a URI. False when that fails. */
bool registerFileSource(bool (*mayOpen)(const std::string &uri));

/** Has it read a file from the next start on. */
void setFilePath(GstElement *source, const std::string &path);

} // namespace voro::renderer
