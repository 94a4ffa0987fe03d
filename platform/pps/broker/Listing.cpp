#include "Listing.h"

#include <pps/Text.h>

#include <map>

namespace voro::pps {

namespace {

constexpr std::string_view ListingLine = "@.list\n";

using Entries = std::map<std::string, std::string_view, std::less<>>;

void collect(Entries &entries, const std::string &folder, const std::vector<std::string> &paths, std::string_view kind)
{
    const std::string prefix = folder + '/';
    for (const std::string &path : paths) {
        if (!path.starts_with(prefix)) {
            continue;
        }
        const std::string rest = path.substr(prefix.size());
        const size_t slash = rest.find('/');
        entries.insert_or_assign(rest.substr(0, slash), slash == std::string::npos ? kind : "folder");
    }
}

} // namespace

std::string listFolder(const std::string &folder, const std::vector<std::string> &objects,
                       const std::vector<std::string> &services, Position &position)
{
    Entries entries;
    collect(entries, folder, objects, "object");
    collect(entries, folder, services, "service");
    std::string text(ListingLine);
    uint64_t index = 0;
    for (const auto &[name, kind] : entries) {
        if (index++ < position.reached) {
            continue;
        }
        std::string line;
        appendText(line, name, kind);
        if (text.size() + line.size() > MaximumMessage) {
            position.reached = index - 1;
            return text;
        }
        text += line;
    }
    position = {1, 1};
    return text;
}

} // namespace voro::pps
