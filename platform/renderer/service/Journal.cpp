#include "Journal.h"

#include <pps/Text.h>

#include <algorithm>

namespace voro::renderer {

namespace {

constexpr long DefaultInterval = 1000;

Owner ownerOf(const std::string &type)
{
    return type == "video" ? Owner::Video : type == "subpicture" ? Owner::Caption : Owner::Audio;
}

Result checkOutput(const std::string &url, const std::string &type)
{
    if (type == "audio") {
        return url == "audio:default" ? Result() : Result(ErrorCode::OutputUnavailable, "there is no output " + url);
    }
    if (type == "video" || type == "subpicture") {
        return {ErrorCode::OutputUnavailable, "this renderer shows no pictures"};
    }
    if (type == "file") {
        return {ErrorCode::UnsupportedOperation, "this renderer does not record"};
    }
    return {ErrorCode::InvalidParameter, "unknown output type " + type};
}

} // namespace

Result Journal::attachOutput(const std::string &url, const std::string &type, int &id)
{
    Result result = checkOutput(url, type);
    if (result) {
        std::erase_if(m_outputs, [&](const auto &output) { return output.second.type == type; });
        id = m_nextOutput++;
        m_outputs[id] = {type, {}};
    }
    return result;
}

Result Journal::detachOutput(int id)
{
    if (id < 0 || id >= m_nextOutput) {
        return {ErrorCode::InvalidParameter, "no such output"};
    }
    m_outputs.erase(id);
    return {};
}

Result Journal::setOutput(int id, const Parameters &parameters)
{
    const auto found = m_outputs.find(id);
    if (found == m_outputs.end()) {
        return {ErrorCode::InvalidParameter, "no such output"};
    }
    Result result = parameters.check(ownerOf(found->second.type));
    if (result) {
        found->second.parameters.merge(parameters);
    }
    return result;
}

Result Journal::setContext(const Parameters &parameters)
{
    Result result = parameters.check(Owner::Context);
    if (result) {
        m_context.merge(parameters);
    }
    return result;
}

Result Journal::setInput(const Parameters &parameters)
{
    Result result = parameters.check(Owner::Input);
    if (result) {
        m_input = parameters;
    }
    return result;
}

Result Journal::setTrack(unsigned track, const Parameters &parameters)
{
    Result result = parameters.check(Owner::Track);
    if (result) {
        m_tracks[track] = parameters;
    }
    return result;
}

Parameters Journal::firstTrack(const std::string &type) const
{
    const auto defaults = m_tracks.find(0);
    Parameters first = defaults == m_tracks.end() ? Parameters() : defaults->second;
    for (const auto &[name, value] : m_input.entries()) {
        if (type == "autolist" && name.starts_with("subpicture_")) {
            first.set(name, value);
        }
    }
    return first;
}

Parameters Journal::audio() const
{
    const auto found = std::find_if(m_outputs.begin(), m_outputs.end(),
                                    [](const auto &output) { return output.second.type == "audio"; });
    return found == m_outputs.end() ? Parameters() : found->second.parameters;
}

std::string Journal::openLines(const Input &input, int speed, const std::optional<TrackPosition> &start) const
{
    const bool isAudible = std::any_of(m_outputs.begin(), m_outputs.end(),
                                       [](const auto &output) { return output.second.type == "audio"; });
    std::string lines;
    pps::appendText(lines, "url", input.url);
    pps::appendText(lines, "type", input.type);
    pps::appendNumber(lines, "speed", speed);
    pps::appendBool(lines, "audio", isAudible);
    if (start) {
        pps::appendNumber(lines, "track", start->track);
        pps::appendNumber(lines, "position", start->milliseconds);
    }
    return lines + settingLines();
}

std::string Journal::settingLines() const
{
    const Parameters audible = audio();
    std::string lines;
    pps::appendNumber(lines, "interval", m_context.number("updateinterval", DefaultInterval));
    pps::appendNumber(lines, "volume", audible.number("volume", 100));
    for (const char *name : {"eq_preset", "autopause", "audioman_handle"}) {
        pps::appendText(lines, name, audible.text(name));
    }
    pps::appendText(lines, "repeat", m_input.text("repeat"));
    return lines;
}

} // namespace voro::renderer
