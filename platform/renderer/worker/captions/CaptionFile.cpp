#include "CaptionFile.h"

#include <renderer/common/Medium.h>
#include <renderer/common/MemoryFile.h>
#include <renderer/common/OpenLocal.h>
#include <renderer/worker/gst/Gst.h>

#include <algorithm>
#include <cstdio>
#include <utility>
#include <vector>

namespace voro::renderer {

namespace {

constexpr size_t Largest = 8 * 1024 * 1024;
/** A shorter file is not recognised. */
constexpr size_t Shortest = 512;

struct Event {
    int start;
    int end;
    std::string text;
};

/** "1:02:03.45" in milliseconds, -1 for anything else. */
int timeOf(const std::string &text)
{
    unsigned hours = 0;
    unsigned minutes = 0;
    unsigned seconds = 0;
    unsigned hundredths = 0;
    const bool isTime =
        std::sscanf(text.c_str(), " %3u:%2u:%2u.%2u", &hours, &minutes, &seconds, &hundredths) == 4 && minutes < 60;
    return isTime ? static_cast<int>(((hours * 60 + minutes) * 60 + seconds) * 1000 + hundredths * 10) : -1;
}

std::string subRipTime(int milliseconds)
{
    char text[32];
    std::snprintf(text, sizeof text, "%02d:%02d:%02d,%03d", milliseconds / 3'600'000, milliseconds / 60'000 % 60,
                  milliseconds / 1000 % 60, milliseconds % 1000);
    return text;
}

/** Without overrides in braces, with line breaks as such. */
std::string plainText(const std::string &text)
{
    std::string result;
    bool isOverride = false;
    for (size_t i = 0; i < text.size(); ++i) {
        const bool isBreak = text[i] == '\\' && i + 1 < text.size() && (text[i + 1] == 'N' || text[i + 1] == 'n');
        if (text[i] == '{') {
            isOverride = true;
        } else if (text[i] == '}') {
            isOverride = false;
        } else if (isBreak && !isOverride) {
            result += '\n';
            ++i;
        } else if (!isOverride) {
            result += text[i];
        }
    }
    return result;
}

std::vector<std::string> split(const std::string &text, size_t most)
{
    std::vector<std::string> fields;
    size_t start = 0;
    while (fields.size() + 1 < most) {
        const size_t comma = text.find(',', start);
        if (comma == std::string::npos) {
            break;
        }
        fields.push_back(text.substr(start, comma - start));
        start = comma + 1;
    }
    fields.push_back(text.substr(start));
    return fields;
}

} // namespace

std::string subRipOfScript(const std::string &script)
{
    // Layer, Start, End, Style, Name, three margins, Effect, Text; only the text may hold commas.
    constexpr size_t Fields = 10;
    constexpr std::string_view Prefix = "Dialogue:";
    std::vector<Event> events;
    for (size_t start = 0; start < script.size();) {
        const size_t end = std::min(script.find_first_of("\r\n", start), script.size());
        const std::string line = script.substr(start, end - start);
        start = end + 1;
        if (!line.starts_with(Prefix)) {
            continue;
        }
        const auto fields = split(line.substr(Prefix.size()), Fields);
        if (fields.size() == Fields && timeOf(fields[1]) >= 0 && timeOf(fields[2]) > timeOf(fields[1])) {
            events.push_back({timeOf(fields[1]), timeOf(fields[2]), plainText(fields[Fields - 1])});
        }
    }
    std::stable_sort(events.begin(), events.end(), [](const Event &a, const Event &b) { return a.start < b.start; });
    std::string result;
    int number = 0;
    for (const Event &event : events) {
        result += std::to_string(++number) + '\n' + subRipTime(event.start) + " --> " + subRipTime(event.end) + '\n'
                  + event.text + "\n\n";
    }
    return result;
}

std::string CaptionFile::open(const Medium &medium)
{
    m_copy.reset();
    if (!medium.check()) {
        return {};
    }
    if (!medium.isLocal()) {
        return medium.uri();
    }
    std::string text = openLocal(medium.path())->at(0, Largest + 1);
    if (text.size() > Largest) {
        return {};
    }
    if (!g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr)) {
        gsize size = 0;
        const bool isWide = text.starts_with("\xff\xfe") || text.starts_with("\xfe\xff");
        const Owned<char> converted(g_convert(text.data(), static_cast<gssize>(text.size()), "UTF-8",
                                              isWide ? "UTF-16" : "WINDOWS-1252", nullptr, &size, nullptr));
        if (!converted) {
            return medium.uri();
        }
        text.assign(converted.get(), size);
    }
    if (std::string converted = subRipOfScript(text); !converted.empty()) {
        text = std::move(converted);
    }
    text.append(text.size() < Shortest ? Shortest - text.size() : 1, '\n');
    m_copy = makeMemoryFile(std::string_view(text));
    return m_copy.isValid() ? "file://" + nameOf(m_copy) : std::string();
}

} // namespace voro::renderer
