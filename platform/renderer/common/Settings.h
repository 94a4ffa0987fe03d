#pragma once

#include "Medium.h"
#include "Names.h"
#include "Protocol.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace voro::renderer {

/** The part of an application's session that drawing into its windows needs. */
struct Session {
    /** The X server; empty without one. */
    std::string display;
    /** The file with the right to use it; empty for the usual one. */
    std::string authority;

    static void fields(auto &self, auto field)
    {
        field(DisplayName, self.display);
        field(AuthorityName, self.authority);
    }
    bool operator==(const Session &) const = default;
};

/** A part of a picture; all of it when it has no size. */
struct Rectangle {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool operator==(const Rectangle &) const = default;
};

/** Which captions a track is shown with. */
struct CaptionChoice {
    /** Captions from elsewhere, if there are any. */
    Medium medium;
    int index = 0;
    bool areShown = true;

    static void fields(auto &self, auto field)
    {
        field("url", self.medium);
        field("index", self.index);
        field("shown", self.areShown);
    }
    bool operator==(const CaptionChoice &) const = default;
};

/** Settings that a worker can change while it plays. */
struct Settings {
    /** Between two reports of the position, in milliseconds. */
    uint32_t interval = 1000;
    /** How much is recorded at most, in milliseconds; 0 for any length. */
    uint32_t limit = 0;
    bool isAudible = true;
    int volume = 100;
    Preset preset = Preset::Off;
    bool pausesWithDevice = false;
    /** The sound server's role for the stream; empty for none. */
    std::string role;
    RepeatMode repeat = RepeatMode::None;
    /** The windows for pictures and captions, if they are wanted. */
    std::optional<std::string> video;
    Rectangle source;
    std::optional<std::string> subpicture;
    Session session;
    /** Of the tracks. */
    std::map<unsigned, CaptionChoice> captions;

    static void fields(auto &self, auto field)
    {
        field("interval", self.interval);
        field("maxduration", self.limit);
        field("audio", self.isAudible);
        field("volume", self.volume);
        field("eq_preset", self.preset);
        field("autopause", self.pausesWithDevice);
        field("role", self.role);
        field("repeat", self.repeat);
        field("video", self.video);
        if (self.video) {
            field("video_src_x", self.source.x);
            field("video_src_y", self.source.y);
            field("video_src_w", self.source.width);
            field("video_src_h", self.source.height);
        }
        field("subpicture", self.subpicture);
        Session::fields(self.session, field);
        field("captions_", self.captions);
    }
    bool operator==(const Settings &) const = default;
};

} // namespace voro::renderer
