#include "OwnElements.h"

#include <algorithm>
#include <filesystem>

namespace voro::renderer {

namespace {

/** Elements that reach neither files nor devices, or only what every worker reaches. */
constexpr std::string_view Harmless[] = {
    "appsink",      "appsrc",     "audioconvert", "audioresample", "audiotestsrc", "capsfilter", "fakesink",
    "fakesrc",      "identity",   "level",        "pulsesink",     "pulsesrc",     "queue",      "tee",
    "videoconvert", "videoscale", "videotestsrc", "volume",        "wavenc",       "wavparse",   "ximagesink"};

constexpr std::string_view Blanks = " \t\n";

std::string_view takeWord(std::string_view &text)
{
    text.remove_prefix(std::min(text.find_first_not_of(Blanks), text.size()));
    const std::string_view word = text.substr(0, text.find_first_of(Blanks));
    text.remove_prefix(word.size());
    return word;
}

std::string locationOf(std::string_view properties)
{
    constexpr std::string_view Name = "location=";
    while (!properties.empty()) {
        std::string_view word = takeWord(properties);
        if (word.starts_with(Name)) {
            word.remove_prefix(Name.size());
            return std::string(word.starts_with('"') && word.size() > 1 ? word.substr(1, word.size() - 2) : word);
        }
    }
    return {};
}

} // namespace

void OwnElements::add(std::string_view description)
{
    while (!description.empty()) {
        std::string_view part = description.substr(0, description.find('!'));
        description.remove_prefix(std::min(part.size() + 1, description.size()));
        const std::string_view element = takeWord(part);
        // Caps stand between elements like one.
        const bool isCaps = element.find('/') != element.npos;
        if (element == "filesink") {
            folders.push_back(std::filesystem::path(locationOf(part)).parent_path());
        } else if (element == "filesrc") {
            files.push_back(locationOf(part));
        } else if (!element.empty() && !isCaps
                   && std::find(std::begin(Harmless), std::end(Harmless), element) == std::end(Harmless)) {
            unknown.emplace_back(element);
        }
    }
}

} // namespace voro::renderer
