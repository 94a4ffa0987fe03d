#pragma once

#include <renderer/common/Medium.h>

#include <string>

namespace voro::renderer {

/**
 * The text of a playlist as it was meant, for a parser that is strict: in UTF-8 without a byte order mark, with its
 * head line, with places that do not depend on where the list is. A list with numbers ("File1=…") becomes one without,
 * because they may be missing, doubled or without end.
 */
std::string repairedList(std::string text, const Medium &list);

} // namespace voro::renderer
