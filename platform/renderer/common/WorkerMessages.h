#pragma once

#include "Settings.h"
#include "Speed.h"
#include "TrackPosition.h"

#include <pps/Text.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

/* All that the renderer service and a worker say to each other, the answers excepted (Protocol.h). */

namespace voro::renderer {

/** A function for each kind of message. */
template<typename... Kinds>
struct Overloaded : Kinds... {
    using Kinds::operator()...;
};
// For compilers that do not deduce an aggregate's arguments: clang before 17.
template<typename... Kinds>
Overloaded(Kinds...) -> Overloaded<Kinds...>;

struct SpeedChange {
    Speed speed;

    static void fields(auto &self, auto field) { field("speed", self.speed); }
};

/** Requests of the service. */
namespace requests {

/** Opens a medium or, as a playlist, a queue of them; or the source of a recording, as a track. */
struct Open {
    Medium medium;
    InputType type = InputType::AutoList;
    /** Asked for as a playlist; if the medium is none, it will be asked for as a track next. */
    bool isTrackNext = false;
    Speed speed;
    TrackPosition start;
    /** Of a recording. */
    struct Recording {
        /** 0 for as many as the source has. */
        int channels = 0;
        /** The extension of the file. */
        std::string format;
        std::string role;
    };
    Recording recording;
    Settings settings;

    bool isRecording() const { return type == InputType::Track; }
    static void fields(auto &self, auto field)
    {
        field("url", self.medium);
        field("type", self.type);
        if (self.type == InputType::Playlist) {
            field("track_next", self.isTrackNext);
        }
        field("speed", self.speed);
        field("track", self.start.track);
        field("position", self.start.milliseconds);
        if (self.isRecording()) {
            field("channels", self.recording.channels);
            field("format", self.recording.format);
            field("recording_role", self.recording.role);
        }
        Settings::fields(self.settings, field);
    }
};

struct Set {
    Settings settings;

    static void fields(auto &self, auto field) { Settings::fields(self.settings, field); }
};

struct Play {};

struct Seek {
    TrackPosition target;

    static void fields(auto &self, auto field)
    {
        field("track", self.target.track);
        field("position", self.target.milliseconds);
    }
};

struct Stop {};
struct Close {};

/** Whether the worker lives; its answer brings the position along. */
struct Ping {};

} // namespace requests

using Request = std::variant<requests::Open, requests::Set, requests::Play, SpeedChange, requests::Seek, requests::Stop,
                             requests::Close, requests::Ping>;

/** Reports of a worker. */
namespace events {

struct Status {
    /** In milliseconds. */
    int64_t position = 0;
    /** Both in percent. */
    int bufferLevel = 0;
    BufferStatus bufferStatus = BufferStatus::Idle;
    int volume = 0;

    static void fields(auto &self, auto field)
    {
        field(PositionName, self.position);
        field("bufferlevel", self.bufferLevel);
        field("bufferstatus", self.bufferStatus);
        field("volume", self.volume);
    }
};

/** The metadata of a track. */
struct Track {
    int64_t track = 1;
    /** As attribute lines. */
    std::string metadata;

    static void fields(auto &self, auto field) { field("track", self.track); }
};

struct Queue {
    int64_t current = 1;
    int64_t total = 0;

    static void fields(auto &self, auto field)
    {
        field("current", self.current);
        field("total", self.total);
    }
};

/** The medium plays without sound, because no sound server answers. */
struct Silent {};

/** The queue was played to its end. */
struct Ended {
    unsigned track = 1;
    std::optional<int64_t> position;

    static void fields(auto &self, auto field)
    {
        field("track", self.track);
        field(PositionName, self.position);
    }
};

/** Nothing can be played any more. */
struct Failed {
    unsigned track = 1;
    std::optional<int64_t> position;
    int64_t error = 0;
    /** In words. */
    std::string cause;

    static void fields(auto &self, auto field)
    {
        field("track", self.track);
        field(PositionName, self.position);
        field("err", self.error);
        field("error", self.cause);
    }
};

} // namespace events

using Event = std::variant<events::Status, events::Track, events::Queue, events::Silent, SpeedChange, events::Ended,
                           events::Failed>;

std::string toText(const Request &request, int64_t id);
/** Nothing for what is no request. */
std::optional<Request> parseRequest(const pps::Message &message);

std::string toText(const Event &event);
/** Reads an event from a message and the text of it; nothing for what is none. */
std::optional<Event> parseEvent(const pps::Message &message, std::string_view text);

} // namespace voro::renderer
