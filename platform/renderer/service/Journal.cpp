#include "Journal.h"

#include "AudioInput.h"
#include "StreamRole.h"

#include <pps/Text.h>
#include <renderer/common/Fields.h>
#include <renderer/common/FrameQueue.h>
#include <renderer/common/Window.h>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace voro::renderer {

namespace {

/** The largest size of all settings; more than a message holds is refused when a medium is opened. */
constexpr size_t MostSettings = 256 * 1024;
/** Before an output's id: the attribute that holds it. */
constexpr std::string_view OutputPrefix = "output_";
constexpr int64_t MostOutputs = 1'000'000'000;
/** Before a track's number: the attribute that holds its parameters. */
constexpr std::string_view TrackPrefix = "track_";

Owner ownerOf(OutputType type)
{
    switch (type) {
    case OutputType::Audio:
        return Owner::Audio;
    case OutputType::Video:
        return Owner::Video;
    case OutputType::Captions:
        return Owner::Caption;
    case OutputType::File:
        break;
    }
    return Owner::File;
}

constexpr std::array ScreenTypes{OutputType::Video, OutputType::Captions};

bool isScreenType(OutputType type)
{
    return std::ranges::find(ScreenTypes, type) != ScreenTypes.end();
}

/** The window that a "screen:?winid=…&…" URL names, empty without. */
std::string windowOf(std::string_view url)
{
    constexpr std::string_view Key = "winid=";
    url.remove_prefix(std::min(url.size(), url.find('?')));
    while (!url.empty()) {
        url.remove_prefix(1);
        const std::string_view part = url.substr(0, url.find('&'));
        if (part.starts_with(Key)) {
            return std::string(part.substr(Key.size()));
        }
        url.remove_prefix(part.size());
    }
    return {};
}

CaptionChoice captionsOf(const Parameters &track)
{
    return {Medium(track.text("subpicture_url")), static_cast<int>(track.number("subpicture_index", 0)),
            track.text("subpicture_disable") != "1"};
}

Result checkOutput(const std::string &url, OutputType type, const Session &session)
{
    if (type == OutputType::Audio ? url != "audio:default" : !url.starts_with(ScreenScheme)) {
        return {ErrorCode::OutputUnavailable, "there is no output " + url};
    }
    const bool hasOwnSink = type == OutputType::Video && std::getenv("VORO_VIDEO_SINK") != nullptr;
    const bool needsDisplay = isScreenType(type) && windowNumber(windowOf(url)) && !hasOwnSink;
    return needsDisplay && session.display.empty()
               ? Result(ErrorCode::OutputUnavailable, "the application has no X server (DISPLAY) for " + url)
               : Result();
}

} // namespace

Result Journal::attachOutput(const std::string &url, OutputType type, const Session &session, int &id)
{
    Result result = checkOutput(url, type, session);
    if (result) {
        id = replaceOutput({type, url, {}, nullptr});
        if (isScreenType(type)) {
            m_session = session;
        }
    }
    return result;
}

Result Journal::attachFile(const std::string &url, const std::string &path, const std::string &key, int &id)
{
    // The same file again is the same recorder's.
    RecordingFile *const former = file();
    const bool wasTaken = former && former->isTaken() && former->key() == key;
    if (wasTaken) {
        former->release();
    }
    auto recording = std::make_shared<RecordingFile>(path, key);
    if (!recording->take()) {
        return {ErrorCode::ResourceUnavailable, path + " is being recorded into"};
    }
    id = replaceOutput({OutputType::File, url, {}, std::move(recording)});
    return {};
}

int Journal::replaceOutput(Output output)
{
    std::erase_if(m_outputs, [&](const auto &other) { return other.second.type == output.type; });
    m_outputs[m_nextOutput] = std::move(output);
    return m_nextOutput++;
}

RecordingFile *Journal::file() const
{
    const Output *recording = output(OutputType::File);
    return recording ? recording->file.get() : nullptr;
}

bool Journal::isFile(int id) const
{
    const auto found = m_outputs.find(id);
    return found != m_outputs.end() && found->second.file;
}

bool Journal::isScreen(int id) const
{
    const auto found = m_outputs.find(id);
    return found != m_outputs.end() && isScreenType(found->second.type);
}

Result Journal::checkInput(const Input &input) const
{
    if (input.isRecording() != (file() != nullptr)) {
        return input.isRecording() ? Result(ErrorCode::InvalidState, "there is no file to record into")
                                   : Result(ErrorCode::UnsupportedOperation, "only the audio input can be recorded");
    }
    int channels = 0;
    return input.isRecording() ? parseAudioInput(input.medium.url(), channels) : Result();
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
        m_inputParameters = parameters;
    }
    return result;
}

Result Journal::setTrack(unsigned track, const Parameters &parameters)
{
    if (Result problem = parameters.check(Owner::Track); !problem) {
        return problem;
    }
    auto former = m_tracks.extract(track);
    if (parameters.isEmpty()) {
        return {};
    }
    m_tracks[track] = parameters;
    if (fieldsOf(settings()).size() > MostSettings) {
        m_tracks.erase(track);
        m_tracks.insert(std::move(former));
        return {ErrorCode::InvalidParameter, "the parameters are too many"};
    }
    return {};
}

Parameters Journal::firstTrack(InputType type) const
{
    const auto defaults = m_tracks.find(0);
    Parameters first = defaults == m_tracks.end() ? Parameters() : defaults->second;
    for (const auto &[name, value] : m_inputParameters.entries()) {
        if (type == InputType::AutoList && name.starts_with("subpicture_")) {
            first.set(name, value);
        }
    }
    return first;
}

const Journal::Output *Journal::output(OutputType type) const
{
    const auto found = std::find_if(m_outputs.begin(), m_outputs.end(),
                                    [type](const auto &output) { return output.second.type == type; });
    return found == m_outputs.end() ? nullptr : &found->second;
}

std::string Journal::toText() const
{
    std::string lines;
    pps::appendNumber(lines, "next_output", m_nextOutput);
    lines += fieldsOf(m_session);
    for (const auto &[id, output] : m_outputs) {
        std::string text;
        pps::appendText(text, "type", nameOf(output.type));
        pps::appendText(text, "url", output.url);
        pps::appendText(text, "parameters", output.parameters.toText());
        if (output.file) {
            pps::appendText(text, "key", output.file->key());
            pps::appendBool(text, "used", output.file->isUsed());
        }
        pps::appendText(lines, std::string(OutputPrefix) + std::to_string(id), text);
    }
    pps::appendText(lines, "context", m_context.toText());
    pps::appendText(lines, "input", m_inputParameters.toText());
    for (const auto &[track, parameters] : m_tracks) {
        if (!parameters.isEmpty()) {
            pps::appendText(lines, std::string(TrackPrefix) + std::to_string(track), parameters.toText());
        }
    }
    return lines;
}

void Journal::restore(const pps::Message &message)
{
    const auto parse = [](const std::string &text) { return Parameters::fromText(text).value_or(Parameters()); };
    m_session = parseFields<Session>(message);
    setContext(parse(message.text("context")));
    setInput(parse(message.text("input")));
    for (const auto &[name, value] : message.attributes()) {
        if (name.starts_with(TrackPrefix)) {
            const auto track = parseNumber(name.substr(TrackPrefix.size()), 0, MostTracks);
            Parameters parameters = parse(value);
            if (track && !parameters.isEmpty() && parameters.check(Owner::Track)) {
                m_tracks[static_cast<unsigned>(*track)] = std::move(parameters);
            }
        } else if (name.starts_with(OutputPrefix)) {
            const auto id = parseNumber(name.substr(OutputPrefix.size()), 0, MostOutputs);
            pps::Message output;
            if (id && output.parse(value)) {
                restoreOutput(static_cast<int>(*id), output);
            }
        }
    }
    // Each by itself would cost as much as all.
    if (fieldsOf(settings()).size() > MostSettings) {
        m_tracks.clear();
    }
    m_nextOutput =
        std::max(m_nextOutput, static_cast<int>(std::clamp<int64_t>(message.number("next_output"), 0, MostOutputs)));
}

void Journal::restoreOutput(int id, const pps::Message &output)
{
    m_nextOutput = id;
    const std::string url = output.text("url");
    const std::string path = RecordingFile::pathOf(url);
    const auto type = parseName<OutputType>(output.text("type"));
    const bool isPossible = type && (type != OutputType::File || RecordingFile::hasFormat(path));
    if (!isPossible
        || !(type == OutputType::File ? attachFile(url, path, output.text("key"), id)
                                      : attachOutput(url, *type, m_session, id))) {
        return;
    }
    setOutput(id, Parameters::fromText(output.text("parameters")).value_or(Parameters()));
    if (output.text("used") == "true" && file()) {
        file()->setUsed();
    }
}

std::optional<std::string> Journal::window(OutputType type) const
{
    const Output *screen = output(type);
    return screen ? std::optional(windowOf(screen->url)) : std::nullopt;
}

std::set<std::string> Journal::frameQueues() const
{
    std::set<std::string> names;
    for (const OutputType type : ScreenTypes) {
        if (const auto name = window(type); name && isFrameQueue(*name)) {
            names.insert(*name);
        }
    }
    return names;
}

Reach Journal::reachFor(const Input &input) const
{
    Reach reach;
    if (input.isRecording()) {
        return reach;
    }
    for (const OutputType type : ScreenTypes) {
        const auto name = window(type);
        reach.windows |= name && windowNumber(*name);
    }
    const bool isScreenFar =
        reach.windows && !m_session.display.starts_with(':') && !m_session.display.starts_with("unix:");
    const auto hasFarCaptions = [](const auto &track) { return !captionsOf(track.second).medium.isLocal(); };
    const Parameters first = firstTrack(input.type);
    reach.network = isScreenFar || !input.medium.isLocal() || hasFarCaptions(std::pair(1, first))
                    || std::ranges::any_of(m_tracks, hasFarCaptions);
    return reach;
}

requests::Open Journal::openRequest(const Input &input, Speed speed, const TrackPosition &start) const
{
    requests::Open request{input.medium, input.type, false, speed, start, {}, settings()};
    if (input.isRecording()) {
        parseAudioInput(input.medium.url(), request.recording.channels);
        request.recording.format = file() ? file()->format().extension : std::string_view();
        request.recording.role = recordingRole(m_inputParameters);
    }
    return request;
}

Settings Journal::settings() const
{
    static const Parameters None;
    const Output *audio = output(OutputType::Audio);
    const Output *video = output(OutputType::Video);
    const Parameters &sound = audio ? audio->parameters : None;
    const Parameters &pictures = video ? video->parameters : None;
    const auto size = [&](std::string_view name) { return static_cast<int>(pictures.number(name, 0)); };
    Settings settings{
        .interval = static_cast<uint32_t>(m_context.number("updateinterval", Settings().interval)),
        .limit = static_cast<uint32_t>(m_context.number("maxduration", 0)),
        .isAudible = audio != nullptr,
        .volume = static_cast<int>(sound.number("volume", 100)),
        .preset = parseName<Preset>(sound.text("eq_preset")).value_or(Preset::Off),
        .pausesWithDevice = sound.text("autopause") == "yes",
        .role = streamRoleOf(static_cast<uint32_t>(sound.number("audioman_handle", 0))),
        .repeat = parseName<RepeatMode>(m_inputParameters.text("repeat")).value_or(RepeatMode::None),
        .video = window(OutputType::Video),
        .source = {size("video_src_x"), size("video_src_y"), size("video_src_w"), size("video_src_h")},
        .subpicture = window(OutputType::Captions),
        .session = m_session,
        .captions = {},
    };
    for (const auto &[track, parameters] : m_tracks) {
        if (track > 0 && !parameters.isEmpty()) {
            settings.captions[track] = captionsOf(parameters);
        }
    }
    return settings;
}

} // namespace voro::renderer
