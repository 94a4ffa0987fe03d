#pragma once

#include "LogCatcher.h"
#include "private/MmrContextNotifier.h"
#include "ScriptedRenderer.h"
#include "SignalLog.h"

#include <multimedia/MediaPlayer.h>

#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

#include <functional>

/** A player with a scripted renderer and its log. The renderer's objects cannot be watched, so that a test itself plays
    the monitor. */
class PlayerFixture {
public:
    explicit PlayerFixture(const std::function<void(voro::test::ScriptedRenderer &)> &script = {});

    /** Everything that the player shows, as "name=value". */
    QStringList state() const;
    /** Forgets the trace and the lines so far. */
    void forget();

    /** The renderer calls and the player's signals, in their order. */
    QStringList trace;
    QTemporaryDir folder;
    voro::test::LogCatcher log;
    voro::test::ScriptedRenderer renderer;
    voro::multimedia::MediaPlayer player;
    SignalLog emitted;
    voro::multimedia::MmrContextNotifier &notifier;
};

using Action = std::function<voro::multimedia::MediaError::Type(PlayerFixture &)>;
using Preparation = std::function<void(PlayerFixture &)>;

/** A row of a table: what has to come of an action on a player that was prepared for it. */
struct PlayerCase {
    Preparation given;
    Action act;
    /** Calls and signals in their order, then the warnings and critical lines, then every property that changed as
        "name=value", then the result as "-> InvalidState" unless it is `None`; with "; " between. */
    QString outcome;
};

void playerRow(const char *name, const Preparation &given, const Action &act, const QString &outcome);
/** Fetches the current row and tries it. */
void tryPlayerRow();

// Preparations and actions

/** Nothing: a new player. */
inline const Preparation newPlayer = [](PlayerFixture &) {};
/** Gives the player a medium; prepares it; plays it; plays it with video and captions. */
void withSource(PlayerFixture &f);
void prepared(PlayerFixture &f);
void started(PlayerFixture &f);
void startedWithVideo(PlayerFixture &f);

/** What `prepared` does on a new player. */
inline const QString prepareCalls =
    QStringLiteral("mmr_output_attach audio:default audio; mmr_output_parameters 0 volume=100; mmr_track_parameters 0; "
                   "mmr_input_attach file:///music/a.ogg playlist; mmr_track_parameters 0; mmr_input_parameters");
/** The end of every way into the unprepared state that starts on a player of one track, first time. */
inline const QString unprepared = QStringLiteral("mmr_track_parameters 1; trackChanged(1); trackChanged(uint 1); "
                                                 "mediaStateChanged(Unprepared)");

template<typename... Parameters, typename... Arguments>
Action call(voro::multimedia::MediaError::Type (voro::multimedia::MediaPlayer::*method)(Parameters...),
            Arguments... arguments)
{
    return [=](PlayerFixture &f) { return (f.player.*method)(arguments...); };
}

template<typename... Parameters, typename... Arguments>
Action call(void (voro::multimedia::MediaPlayer::*method)(Parameters...), Arguments... arguments)
{
    return [=](PlayerFixture &f) {
        (f.player.*method)(arguments...);
        return voro::multimedia::MediaError::None;
    };
}

/** The monitor reports something. */
template<typename... Parameters, typename... Arguments>
Action reported(void (voro::multimedia::MmrContextNotifier::*signal)(Parameters...), Arguments... arguments)
{
    return [=](PlayerFixture &f) {
        (f.notifier.*signal)(arguments...);
        return voro::multimedia::MediaError::None;
    };
}

/** The renderer fails a function from now on. */
Preparation failing(const char *function, voro::multimedia::MediaError::Type code, int64_t extraValue = 0);

/** Several steps that lead to the state of a row. */
template<typename... Steps>
Preparation after(Steps... steps)
{
    return [=](PlayerFixture &f) { (static_cast<void>(steps(f)), ...); };
}
