#pragma once

#include "MediaFixture.h"

#include <multimedia/MediaPlayer.h>

using PlayerFixture = MediaFixture<voro::multimedia::MediaPlayer>;
using PlayerCases = CasesOf<voro::multimedia::MediaPlayer>;
using Action = ActionOn<voro::multimedia::MediaPlayer>;
using Preparation = PreparationOf<voro::multimedia::MediaPlayer>;

/** Nothing: a new player. */
inline const Preparation newPlayer = [](PlayerFixture &) {};
/** Gives the player a medium; prepares it; plays it; plays it with video and captions. */
inline void withSource(PlayerFixture &f)
{
    f.media.setSourceUrl(QUrl(QStringLiteral("file:///music/a.ogg")));
}

inline void prepared(PlayerFixture &f)
{
    withSource(f);
    f.media.prepare();
}

inline void started(PlayerFixture &f)
{
    withSource(f);
    f.media.play();
}

inline void startedWithVideo(PlayerFixture &f)
{
    f.media.setVideoOutput(voro::multimedia::VideoOutput::PrimaryDisplay);
    f.media.setWindowId(QStringLiteral("w"));
    f.media.setClosedCaptionWindowId(QStringLiteral("c"));
    f.media.setWindowGroupId(QStringLiteral("g"));
    started(f);
}

/** What `prepared` does on a new player. */
inline const QString prepareCalls =
    QStringLiteral("mmr_output_attach audio:default audio; mmr_output_parameters 0 volume=100; mmr_track_parameters 0; "
                   "mmr_input_attach file:///music/a.ogg playlist; mmr_track_parameters 0; mmr_input_parameters");
/** The end of every way into the unprepared state that starts on a player of one track, first time. */
inline const QString unprepared = QStringLiteral("mmr_track_parameters 1; trackChanged(1); trackChanged(uint 1); "
                                                 "mediaStateChanged(Unprepared)");
