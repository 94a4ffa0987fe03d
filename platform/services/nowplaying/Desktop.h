#pragma once

#include "Messages.h"

#include <functional>
#include <memory>
#include <optional>

namespace voro::nowplaying {

/** A player of another program, as the controllers see it. */
struct Player {
    qint64 process = 0;
    State state = State::Stopped;
    Metadata metadata;
};

/** What has changed about a player. */
struct PlayerChange {
    bool state = false;
    /** Any field of its metadata, or a jump within the track. */
    bool metadata = false;
    /** It plays another track, or the same one anew. */
    bool track = false;

    bool isAny() const { return state || metadata || track; }
};

/**
 * The desktop around the services: the session bus, on which the holder shows and players of others are found, and the
 * sound server. It is a module, loaded when the services are used for the first time, because what it links would
 * make every daemon start slower. Nothing in it waits.
 */
class Desktop {
public:
    class Listener {
    public:
        virtual ~Listener() = default;
        /** Somebody on the bus commands the holder. */
        virtual void desktopCommanded(const TrackCommand &command) = 0;
        /** isShown() may have changed. Comes from the event loop only. */
        virtual void desktopShownChanged() = 0;
        /** player() is another one now, or there is none any more. */
        virtual void desktopPlayerChanged() = 0;
        /** Something about player() has changed, more than its position going on. */
        virtual void desktopPlayerUpdated(const PlayerChange &change) = 0;
        /** isSearching() is over. */
        virtual void desktopSearched() = 0;
    };
    /** Takes how a command went: empty, or a problem for people. */
    using Answered = std::function<void(const QString &problem)>;

    virtual ~Desktop() = default;

    /** Shows the holder of this name and process, replacing any; nothing is known of its track yet. */
    virtual void showHolder(const QString &name, qint64 process) = 0;
    virtual void renameHolder(const QString &name) = 0;
    virtual void hideHolder() = 0;
    virtual void showState(State state) = 0;
    virtual void showMetadata(const Metadata &metadata) = 0;
    virtual void showTrackChange() = 0;
    /** Whether the holder is there for others on the bus. */
    virtual bool isShown() const = 0;

    /** The player of another program that is commanded when nobody holds the role, as it is now. */
    virtual std::optional<Player> player() const = 0;
    /** Whether players that run already may not have been found yet. */
    virtual bool isSearching() const = 0;
    /** Commands player(). */
    virtual void commandPlayer(const TrackCommand &command, const Answered &done) = 0;

    virtual void changeVolume(const VolumeCommand &command, const Answered &done) = 0;
};

/** The module's entry; its name is `voroMakeDesktop`. */
using MakeDesktop = Desktop *(Desktop::Listener &);

/** Loads the module; null, and a line in the log, when that fails. */
std::unique_ptr<Desktop> loadDesktop(Desktop::Listener &listener);

} // namespace voro::nowplaying
