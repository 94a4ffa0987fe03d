#include "Parameters.h"

#include "Names.h"
#include "TrackPosition.h"

#include <pps/Text.h>

#include <algorithm>
#include <array>
#include <limits>

namespace voro::renderer {

namespace {

constexpr int64_t Most = std::numeric_limits<int>::max();
constexpr int64_t MostUnsigned = std::numeric_limits<uint32_t>::max();

template<int64_t Lowest, int64_t Highest>
bool isBetween(std::string_view value)
{
    return parseNumber(value, Lowest, Highest).has_value();
}

template<typename Value>
bool isName(std::string_view value)
{
    return parseName<Value>(value).has_value();
}

bool isYesOrNo(std::string_view value)
{
    return value == "yes" || value == "no";
}

bool isAnything(std::string_view)
{
    return true;
}

struct Rule {
    Owner owner;
    std::string_view name;
    bool (*isValid)(std::string_view value);
};

constexpr std::array Rules{
    Rule{Owner::Context, "updateinterval", isBetween<20, MostUnsigned>},
    Rule{Owner::Context, "maxduration", isBetween<0, MostUnsigned>},
    Rule{Owner::Input, "repeat", isName<RepeatMode>},
    Rule{Owner::Input, "audioman_handle", isBetween<0, MostUnsigned>},
    Rule{Owner::Input, "audio_type", isAnything},
    Rule{Owner::Input, "subpicture_url", isAnything},
    Rule{Owner::Input, "subpicture_index", isBetween<0, Most>},
    Rule{Owner::Input, "subpicture_disable", isBetween<0, 1>},
    Rule{Owner::Track, "subpicture_url", isAnything},
    Rule{Owner::Track, "subpicture_index", isBetween<0, Most>},
    Rule{Owner::Track, "subpicture_disable", isBetween<0, 1>},
    Rule{Owner::Audio, "audioman_handle", isBetween<0, MostUnsigned>},
    Rule{Owner::Audio, "volume", isBetween<0, 100>},
    Rule{Owner::Audio, "autopause", isYesOrNo},
    Rule{Owner::Audio, "eq_preset", isName<Preset>},
    Rule{Owner::Video, "video_src_x", isBetween<0, Most>},
    Rule{Owner::Video, "video_src_y", isBetween<0, Most>},
    Rule{Owner::Video, "video_src_w", isBetween<0, Most>},
    Rule{Owner::Video, "video_src_h", isBetween<0, Most>},
};

} // namespace

void Parameters::merge(const Parameters &others)
{
    for (const auto &[name, value] : others.m_entries) {
        set(name, value);
    }
}

std::string Parameters::text(std::string_view name) const
{
    const auto found = m_entries.find(name);
    return found == m_entries.end() ? std::string() : found->second;
}

long Parameters::number(std::string_view name, long fallback) const
{
    const auto found = m_entries.find(name);
    if (found == m_entries.end()) {
        return fallback;
    }
    return parseNumber(found->second, 0, MostUnsigned).value_or(fallback);
}

Result Parameters::check(Owner owner) const
{
    for (const auto &[name, value] : m_entries) {
        const auto rule = std::find_if(Rules.begin(), Rules.end(), [&, &wanted = name](const Rule &candidate) {
            return candidate.owner == owner && candidate.name == wanted;
        });
        if (rule == Rules.end()) {
            return {ErrorCode::InvalidParameter, "unknown parameter " + name};
        }
        if (!rule->isValid(value)) {
            return {ErrorCode::InvalidParameter, "bad value of " + name + ": " + value};
        }
    }
    return {};
}

std::string Parameters::toText() const
{
    std::string text;
    for (const auto &[name, value] : m_entries) {
        pps::appendText(text, name, value);
    }
    return text;
}

std::optional<Parameters> Parameters::fromText(std::string_view text)
{
    pps::Message message;
    if (!message.parse(text) || !message.object().empty()) {
        return std::nullopt;
    }
    Parameters parameters;
    for (const auto &entry : message.attributes()) {
        parameters.set(entry.name, entry.value);
    }
    return parameters;
}

} // namespace voro::renderer
