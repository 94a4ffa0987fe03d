#include "Folder.h"

#include <pps/Log.h>
#include <pps/Loss.h>
#include <pps/Text.h>
#include <renderer/common/Protocol.h>

#include <algorithm>
#include <utility>

namespace voro::renderer {

using Fence = pps::Broker::Fence;

namespace {

std::string stateLines(State state, Speed speed, const std::optional<Folder::Ending> &ending)
{
    std::string lines;
    pps::appendText(lines, "state", nameOf(state));
    pps::appendNumber(lines, "speed", speed.thousandths);
    if (ending) {
        pps::appendNumber(lines, "error", static_cast<int>(ending->code));
        pps::appendText(lines, "error_pos", toText(ending->position));
    }
    return lines;
}

std::string statusLines(const events::Status &status)
{
    std::string lines;
    pps::appendNumber(lines, "position", status.position);
    pps::appendText(lines, "bufferlevel", std::to_string(status.bufferLevel) + "/100");
    pps::appendText(lines, "bufferstatus", nameOf(status.bufferStatus));
    pps::appendText(lines, "volume", std::to_string(status.volume) + "/100");
    return lines;
}

std::string queueLines(unsigned current, unsigned total)
{
    std::string lines;
    pps::appendNumber(lines, "current", current);
    pps::appendNumber(lines, "total", total);
    return lines;
}

} // namespace

Folder::~Folder()
{
    m_broker.setWill(m_path, {});
    m_broker.remove(m_path);
}

/** Leaves what readers would see had the engine died now. */
void Folder::leaveWill()
{
    std::string will;
    if (!m_isIdle) {
        const Ending ending = m_ending.value_or(Ending{ErrorCode::Internal, m_position});
        will = "@play-queue\n" + queueLines(m_position.track, m_total) + "@status\n"
               + statusLines({m_position.milliseconds}) + "@state\n" + stateLines(State::Stopped, m_speed, ending);
    }
    m_broker.setWill(m_path, will, m_shownBy, m_owner);
}

Folder::Will Folder::restore(std::string_view will, Speed speed)
{
    Will restored{{ErrorCode::Internal, {}}, 1};
    while (!will.empty()) {
        pps::Message object;
        object.parse(pps::takeText(will));
        if (object.object() == "play-queue") {
            restored.total = static_cast<unsigned>(std::clamp<int64_t>(object.number("total"), 0, MostTracks));
        } else if (object.object() == "state") {
            restored.ending.code = codeOf(object.number("error"));
            const auto position = parsePosition(object.text("error_pos")).value_or(ParsedPosition{});
            restored.ending.position = {
                std::clamp(position.track.value_or(1), uint32_t{1}, static_cast<uint32_t>(MostTracks)),
                position.milliseconds};
        }
    }
    m_broker.beginReturn(m_path);
    publishQueue(restored.ending.position.track, restored.total, Fence::None);
    setStatus({restored.ending.position.milliseconds});
    setState(State::Stopped, speed, restored.ending);
    m_broker.endReturn(m_path);
    return restored;
}

// Objects are replaced whole, so that no reader keeps attributes that the new content lacks.
bool Folder::publish(const std::string &name, std::string_view lines, Fence fence, pid_t payer)
{
    const bool isPublished = m_broker.publish(objectPath(name), ("*@" + name + '\n').append(lines), fence, payer);
    if (!isPublished && m_hasRoom) {
        log::warn(log::Category::Renderer, "%s: there is no room for it", objectPath(name).c_str());
    }
    m_hasRoom = isPublished;
    return isPublished;
}

void Folder::setState(State state, Speed speed, const std::optional<Ending> &ending)
{
    m_isIdle = state == State::Idle;
    m_speed = speed;
    m_ending = ending;
    m_shownBy = ending ? m_broker.nextVersion() : 0;
    leaveWill();
    publish("state", stateLines(state, speed, ending));
}

void Folder::setSpeed(Speed speed)
{
    m_speed = speed;
    leaveWill();
    std::string lines = "@state\n";
    pps::appendNumber(lines, "speed", speed.thousandths);
    m_broker.publish(objectPath("state"), lines);
}

void Folder::setQueue(unsigned current, unsigned total)
{
    // Its readers look at once for the track that becomes the current one.
    if (!m_tracks.contains(current)) {
        publishUnknownTrack(current, Fence::None);
    }
    publishQueue(current, total, Fence::None);
    forgetFarTracks();
}

void Folder::forgetFarTracks()
{
    const unsigned current = m_position.track;
    forgetTracks(current > Neighbourhood ? current - Neighbourhood : 1, current + Neighbourhood);
}

/** Removes the tracks that are not between the two. */
void Folder::forgetTracks(unsigned first, unsigned last)
{
    std::erase_if(m_tracks, [&](unsigned track) {
        const bool isFar = track < first || track > last;
        if (isFar) {
            m_broker.remove(objectPath('q' + std::to_string(track)));
        }
        return isFar;
    });
}

void Folder::publishQueue(unsigned current, unsigned total, Fence fence)
{
    m_position.track = current;
    m_total = total;
    leaveWill();
    publish("play-queue", queueLines(current, total), fence);
}

void Folder::setTrack(unsigned track, std::string_view lines)
{
    // One is reported before the queue gets there, but few are.
    constexpr size_t MostTracksShown = 4 * size_t{Neighbourhood};
    if (m_tracks.size() >= MostTracksShown) {
        forgetFarTracks();
    }
    m_tracks.insert(track);
    if (!publish('q' + std::to_string(track), lines, Fence::None, m_owner)) {
        publishUnknownTrack(track, Fence::None);
    }
}

void Folder::setStatus(const events::Status &status, Fence fence)
{
    m_position.milliseconds = status.position;
    m_status = status;
    leaveWill();
    publish("status", statusLines(status), fence);
}

void Folder::setPosition(int64_t position)
{
    setStatus({position, m_status.bufferLevel, m_status.bufferStatus});
}

/** Shows a track of which nothing is known. */
void Folder::publishUnknownTrack(unsigned track, Fence fence)
{
    std::string lines;
    pps::appendNumber(lines, "md_title_duration", 0);
    pps::appendBool(lines, "md_title_seekable", false);
    pps::appendNumber(lines, "md_video_width", 0);
    pps::appendNumber(lines, "md_video_height", 0);
    m_tracks.insert(track);
    publish('q' + std::to_string(track), lines, fence);
}

void Folder::clearMedium(unsigned track)
{
    publishUnknownTrack(track, Fence::Hold);
    publishQueue(track, 0, Fence::Hold);
    setStatus({}, Fence::Hold);
    forgetTracks(track, track);
}

bool Folder::setSilent(bool isSilent)
{
    if (std::exchange(m_isSilent, isSilent) == isSilent) {
        return false;
    }
    std::string lines;
    pps::appendBool(lines, "silent", isSilent);
    publish("audio", lines);
    return isSilent;
}

bool Folder::setInput(const Parameters &parameters)
{
    const bool isPublished = publishChange("input", m_input, parameters);
    if (isPublished) {
        m_input = parameters;
    }
    return isPublished;
}

bool Folder::setTrackParameters(unsigned track, const Parameters &parameters)
{
    const auto before = m_trackParameters.find(track);
    if (!publishChange('p' + std::to_string(track), before == m_trackParameters.end() ? Parameters() : before->second,
                       parameters)) {
        return false;
    }
    if (parameters.isEmpty()) {
        m_trackParameters.erase(track);
    } else {
        m_trackParameters[track] = parameters;
    }
    return true;
}

bool Folder::publishChange(const std::string &name, const Parameters &before, const Parameters &now)
{
    if (before == now) {
        return true;
    }
    std::string lines = '@' + name + '\n' + now.toText();
    for (const auto &[gone, value] : before.entries()) {
        if (!now.entries().contains(gone)) {
            lines += '-' + gone + '\n';
        }
    }
    return m_broker.publish(objectPath(name), lines, Fence::None, m_owner);
}

} // namespace voro::renderer
