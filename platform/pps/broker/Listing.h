#pragma once

#include <pps/Wire.h>

#include <string>
#include <vector>

namespace voro::pps {

/**
 * The text of a folder's listing: one attribute for each entry of the folder, `object`, `service` or `folder`. A long
 * one is given out in several texts, with the position counting the entries in between.
 */
std::string listFolder(const std::string &folder, const std::vector<std::string> &objects,
                       const std::vector<std::string> &services, Position &position);

} // namespace voro::pps
