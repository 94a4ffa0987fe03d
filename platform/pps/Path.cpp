#include "Path.h"

#include "Text.h"

#include <algorithm>

namespace voro::pps {

namespace {

constexpr std::string_view Root = "/pps/";
constexpr size_t MaximumPath = 1024;
constexpr size_t MaximumFilter = 32;

std::string_view takeUpTo(std::string_view &rest, char separator)
{
    const size_t end = rest.find(separator);
    const std::string_view part = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return part;
}

bool addToFilter(std::string_view attribute, std::vector<std::string> &filter)
{
    if (!isValidName(attribute)) {
        return false;
    }
    if (std::find(filter.begin(), filter.end(), attribute) == filter.end()) {
        filter.emplace_back(attribute);
    }
    return filter.size() <= MaximumFilter;
}

bool parseOptions(std::string_view options, ObjectPath &path)
{
    if (options.size() > MaximumPath) {
        return false;
    }
    do {
        const std::string_view option = takeUpTo(options, ',');
        if (option == "wait") {
            path.wait = true;
        } else if (option == "server") {
            path.server = true;
        } else if (option == "delta") {
            path.delta = true;
        } else if (!option.starts_with("f=") || !addToFilter(option.substr(2), path.filter)) {
            return false;
        }
    } while (!options.empty());
    return path.isService() ? !path.delta && path.filter.empty() : !path.server;
}

bool isFolderName(std::string_view name)
{
    return isValidName(name) && name.front() != '.' && name != "control";
}

} // namespace

bool parsePath(std::string_view text, ObjectPath &path)
{
    path = {};
    const size_t question = text.find('?');
    const std::string_view object = text.substr(0, question);
    if (object.size() > MaximumPath || !object.starts_with(Root)) {
        return false;
    }
    const size_t slash = object.rfind('/');
    // Every folder's name, with the slash that ends it.
    for (std::string_view rest = object.substr(1, slash); !rest.empty();) {
        if (!isFolderName(takeUpTo(rest, '/'))) {
            return false;
        }
    }
    path.folder = object.substr(0, slash);
    path.name = object.substr(slash + 1);
    if (!isFolderName(path.name) && !path.isService() && !path.isAll() && !path.isListing()) {
        return false;
    }
    return question == std::string_view::npos || parseOptions(text.substr(question + 1), path);
}

bool isOpenable(const ObjectPath &path, unsigned mode)
{
    if (mode < Publish || mode > PublishSubscribe) {
        return false;
    }
    if (path.server) {
        return mode == PublishSubscribe;
    }
    return mode == Subscribe || !(path.isAll() || path.isListing());
}

bool isWritable(const ObjectPath &path, std::string_view text)
{
    LineReader reader(text);
    Line line;
    bool isFirst = true;
    bool isDeletion = false;
    for (; reader.next(line); isFirst = false) {
        if (isDeletion) {
            return false;
        }
        if (line.kind != Line::Kind::Object) {
            continue;
        }
        isDeletion = line.mark == '-';
        const bool isClient = path.server && line.name.starts_with("control.");
        if (!isFirst || (line.name != path.name && !isClient)) {
            return false;
        }
    }
    return !isFirst && !reader.failed();
}

} // namespace voro::pps
