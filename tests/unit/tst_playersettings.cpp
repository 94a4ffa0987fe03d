#include "PlayerFixture.h"
#include "private/Logger.h"

#include <voro/device/DisplayInfo.h>
#include <voro/UIToolkitSupport.h>

#include <QtTest/QtTest>

#include <Rows.h>

#include <cmath>

using namespace voro::multimedia;

using P = MediaPlayer;
using N = MmrContextNotifier;

/** Outputs, captions and parameters of the player. */
class PlayerSettingsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void prepareWithOutputs_data()
    {
        const PlayerCases row;
        const auto withWindows = [](VideoOutput::Type output, const char *group) {
            return after(withSource, call(&P::setVideoOutput, output), call(&P::setWindowId, QStringLiteral("w")),
                         call(&P::setClosedCaptionWindowId, QStringLiteral("c")),
                         call(&P::setWindowGroupId, QString::fromLatin1(group)));
        };
        const auto attached = [](const QString &group, int display) {
            const auto attach = [&](const char *window, const char *type) {
                return QStringLiteral("mmr_output_attach screen:?winid=%1&wingrp=%2&mmf.VideoWriterDisplayIndex=%3"
                                      "&nodstviewport=1&initflags=invisible %4; ")
                    .arg(QLatin1String(window), group, QString::number(display), QLatin1String(type));
            };
            return prepareCalls.section("; ", 0, 0) + "; " + attach("w", "video") + attach("c", "subpicture")
                   + prepareCalls.section("; ", 1);
        };
        const int primary = voro::device::DisplayInfo::primaryDisplayId();
        const int secondary = voro::device::DisplayInfo::secondaryDisplayId();
        const auto prepareRow = [&](const char *name, const Preparation &given, const QString &calls) {
            row(name, given, call(&P::prepare), calls + "; mediaStateChanged(Prepared); mediaState=Prepared");
        };
        prepareRow("primary display, own window group", withWindows(VideoOutput::PrimaryDisplay, ""),
                   attached(voro::UIToolkitSupport().windowGroupID(), primary));
        prepareRow("secondary display, no window group", withWindows(VideoOutput::SecondaryDisplay, ""),
                   attached(QString(), secondary));
        prepareRow("a window group with a place marker", withWindows(VideoOutput::PrimaryDisplay, "%1%3"),
                   attached(QStringLiteral("%1%3"), primary));
        prepareRow("windows without a video output", withWindows(VideoOutput::None, "g"), prepareCalls);
        prepareRow("no sound", after(withSource, call(&P::setAudioOutput, AudioOutput::None)),
                   prepareCalls.section("; ", 2));
    }

    void prepareWithOutputs() { tryRow<P>(); }

    void output_data()
    {
        const PlayerCases row;
        const auto video = [](int output) { return call(&P::setVideoOutput, static_cast<VideoOutput::Type>(output)); };
        const auto audio = [](int output) { return call(&P::setAudioOutput, static_cast<AudioOutput::Type>(output)); };
        const auto part = [](int x, int y, unsigned int width, unsigned int height) {
            return call(&P::setVideoSourceRect, x, y, width, height);
        };
        const QString unpreparedWithCaptions =
            QStringLiteral("mmr_track_parameters 1 subpicture_index=0; ") + unprepared.section("; ", 1);

        row("video, no output", newPlayer, video(3),
            "W MediaPlayer::setVideoOutput: Invalid video output value. videoOutput=3");
        row("video, same", startedWithVideo, video(VideoOutput::PrimaryDisplay),
            "W MediaPlayer::setVideoOutput: Ignoring attempt to set same video output.");
        row("video off while playing", startedWithVideo, video(VideoOutput::None),
            "mmr_input_detach; " + unpreparedWithCaptions
                + "; mmr_input_detach; mmr_output_detach 1; mmr_input_detach; mmr_output_detach 2; "
                  "videoOutputChanged(None); videoOutput=None; mediaState=Unprepared");
        row("other display while playing", startedWithVideo, video(VideoOutput::SecondaryDisplay),
            "mmr_input_detach; " + unpreparedWithCaptions
                + "; mmr_output_detach 1; mmr_input_detach; mmr_output_detach 2; "
                  "videoOutputChanged(SecondaryDisplay); videoOutput=SecondaryDisplay; mediaState=Unprepared");
        row("video, refused", after(prepared, failing("mmr_input_detach", MediaError::Internal)),
            video(VideoOutput::PrimaryDisplay),
            "mmr_input_detach; C MediaPlayerPrivate::detachInput: Error detaching existing input. error=Internal; "
            "W MediaPlayer::setVideoOutput: Unable to detach existing input. error=1; -> Internal");
        row("video, output refuses", after(startedWithVideo, failing("mmr_output_detach", MediaError::Internal)),
            video(VideoOutput::SecondaryDisplay),
            "mmr_input_detach; " + unpreparedWithCaptions
                + "; mmr_output_detach 1; C MediaPlayerPrivate::detachOutput: Error detaching existing output. "
                  "output=1, error=Internal; "
                  "W MediaPlayer::setVideoOutput: Unable to detach the video output. error=1; mediaState=Unprepared; "
                  "-> Internal");
        row("audio, same", prepared, audio(AudioOutput::Default), "");
        // The detached input has made the player unprepared, so the output stays attached; this order is required.
        row("audio off, prepared", prepared, audio(AudioOutput::None),
            "mmr_input_detach; " + unprepared + "; audioOutputChanged(None); audioOutput=None; mediaState=Unprepared");
        row("audio, another number while playing", started, audio(7),
            "mmr_input_detach; " + unprepared
                + "; mmr_output_detach 0; audioOutputChanged(); audioOutput=; mediaState=Unprepared");
        row("audio, refused", after(started, failing("mmr_input_detach", MediaError::Internal)),
            audio(AudioOutput::None),
            "mmr_input_detach; C MediaPlayerPrivate::detachInput: Error detaching existing input. error=Internal; "
            "C MediaPlayer::setAudioOutput: Unable to detach existing input. error=1; -> Internal");

        row("part of the pictures", startedWithVideo, part(1, 2, 30, 40),
            "mmr_output_parameters 1 video_src_x=1 video_src_y=2 video_src_h=40 video_src_w=30");
        row("empty part", startedWithVideo, part(1, 2, 0, 40),
            "mmr_output_parameters 1 video_src_x=0 video_src_y=0 video_src_h=0 video_src_w=0");
        row("part beyond all numbers", startedWithVideo, part(std::numeric_limits<int>::min(), 0, 0xffffffff, 1),
            "mmr_output_parameters 1 video_src_x=-2147483648 video_src_y=0 video_src_h=1 video_src_w=4294967295");
        row("part without a video output", failing("mmr_output_parameters", MediaError::InvalidParameter),
            part(0, 0, 1, 1),
            "mmr_output_parameters -1 video_src_x=0 video_src_y=0 video_src_h=1 video_src_w=1; "
            "C MediaPlayerPrivate::updateVideoOutputParams: Unable to set video source parameters on player. "
            "rect=QRect(0,0 1x1); C MediaPlayer::setVideoSourceRect: Unable to set video source parameters. "
            "src=QRect(0,0 1x1), error=InvalidParameter; -> InvalidParameter");
    }

    void output() { tryRow<P>(); }

    void window_data()
    {
        const PlayerCases row;
        const QString id = QStringLiteral("w");
        row("window", newPlayer, call(&P::setWindowId, id), "windowIdChanged(w); windowId=w");
        row("group", newPlayer, call(&P::setWindowGroupId, id), "windowGroupIdChanged(w); windowGroupId=w");
        row("captions", newPlayer, call(&P::setClosedCaptionWindowId, id),
            "closedCaptionWindowIdChanged(w); closedCaptionWindowId=w");
    }

    void window() { tryRow<P>(); }

    void closedCaption_data()
    {
        const PlayerCases row;
        const auto url = QUrl(QStringLiteral("file:///films/a%20b.srt"));
        const auto tracks = [](uint count) { return reported(&N::trackCountChanged, count); };
        const auto onTrack = [](uint track) { return reported(&N::trackChanged, track); };
        const auto refused = failing("mmr_track_parameters", MediaError::InvalidParameter);
        const QString index2 =
            QStringLiteral("closedCaptionIndexChanged(2); closedCaptionIndexChanged(uint 2); closedCaptionIndex=2");

        row("off", startedWithVideo, call(&P::setClosedCaptionEnabled, false),
            "mmr_track_parameters 1 subpicture_disable=1; closedCaptionEnabledChanged(false); "
            "closedCaptionEnabled=false");
        row("on again", after(startedWithVideo, call(&P::setClosedCaptionEnabled, false)),
            call(&P::setClosedCaptionEnabled, true),
            "mmr_track_parameters 1 subpicture_disable=0; closedCaptionEnabledChanged(true); "
            "closedCaptionEnabled=true");
        row("on already", newPlayer, call(&P::setClosedCaptionEnabled, true), "");
        row("off, refused: kept without a signal", after(startedWithVideo, refused),
            call(&P::setClosedCaptionEnabled, false),
            "mmr_track_parameters 1 subpicture_disable=1; C MmrContextNotifier::updateTrackParameters: Unable to set "
            "track "
            "parameters. track=1; W MediaPlayerPrivate::updateTrackParamSubpictureDisabled: Unable to set track "
            "subpicture "
            "enabled. error=InvalidParameter; C MediaPlayer::setClosedCaptionEnabled: Unable to set the closed caption "
            "enabled. enabled=false, error=InvalidParameter; closedCaptionEnabled=false; -> InvalidParameter");
        row("index", startedWithVideo, call(&P::setClosedCaptionIndex, 2u),
            "mmr_track_parameters 1 subpicture_index=2; " + index2);
        row("index, track out of range: no call, kept", after(tracks(3), onTrack(3), tracks(2)),
            call(&P::setClosedCaptionIndex, 2u),
            "C MediaPlayerPrivate::updateTrackParamSubpictureIndex: Unable to set out of range track parameters. "
            "track=3, count=2; C MediaPlayer::setClosedCaptionIndex: Unable to set the closed caption index. "
            "index=2, error=InvalidParameter; closedCaptionIndex=2; -> InvalidParameter");
        row("url", startedWithVideo, call(&P::setClosedCaptionUrl, 1u, url),
            "mmr_track_parameters 1 subpicture_url=/films/a b.srt; "
            "closedCaptionUrlChanged(1, file:///films/a b.srt); closedCaptionUrlChanged(uint 1, file:///films/a "
            "b.srt)");
        row("url, same", after(startedWithVideo, call(&P::setClosedCaptionUrl, 1u, url)),
            call(&P::setClosedCaptionUrl, 1u, QUrl(QStringLiteral("/films/a b.srt"))), "");
        row("url, other track", newPlayer, call(&P::setClosedCaptionUrl, 2u, url),
            "W MediaPlayer::setClosedCaptionUrl: Setting the closed caption url is limited to track 1.; -> "
            "InvalidParameter");
        row("url, refused", after(startedWithVideo, refused), call(&P::setClosedCaptionUrl, 1u, url),
            "mmr_track_parameters 1 subpicture_url=/films/a b.srt; C MmrContextNotifier::updateTrackParameters: "
            "Unable to set track parameters. track=1; W MediaPlayerPrivate::updateTrackParamSubpictureUrl: Unable to "
            "set track parameter. error=InvalidParameter; C MediaPlayer::setClosedCaptionUrl: Unable to set the "
            "closed caption url. track=1, url=file:///s/s.srt, error=InvalidParameter; -> InvalidParameter");
        row("the index follows to a new track", after(startedWithVideo, tracks(3), call(&P::setClosedCaptionIndex, 2u)),
            onTrack(2), "mmr_track_parameters 2 subpicture_index=2; trackChanged(2); trackChanged(uint 2); track=2");
        row("a new track that refuses the index is stored without a signal", after(startedWithVideo, refused),
            onTrack(2),
            "mmr_track_parameters 2 subpicture_index=0; C MmrContextNotifier::updateTrackParameters: Unable to set "
            "track parameters. track=2; W MediaPlayerPrivate::updateTrackParamSubpictureIndex: Unable to set track "
            "parameters. error=InvalidParameter; C MediaPlayerPrivate::onTrackChanged: Unable to update the current "
            "track with the closed caption index. index=0, error=InvalidParameter; track=2");
    }

    void closedCaption() { tryRow<P>(); }

    void audioSetting_data()
    {
        const PlayerCases row;
        const auto volume = [](double value) { return call(&P::setVolume, value); };
        const auto autoPause = [](bool on) { return call(&P::setAutoPause, on); };
        const auto equalizer = [](EqualizerPreset::Type preset) { return call(&P::setEqualizerPreset, preset); };
        const auto handle = [](unsigned int value) { return call(&P::setAudioManagerHandle, value); };
        const QString handle7 = QStringLiteral("audioManagerHandleChanged(7); audioManagerHandleChanged(uint 7)");

        row("volume, unprepared: kept for prepare", newPlayer, volume(0.5), "volumeChanged(0.5); volume=0.5");
        row("volume, truncated up to the last step", prepared, volume(0.999),
            "mmr_output_parameters 0 volume=99; volumeChanged(0.999); volume=0.999");
        row("volume, silence", prepared, volume(0.0), "mmr_output_parameters 0 volume=0; volumeChanged(0); volume=0");
        row("volume, negative", prepared, volume(-0.1),
            "W MediaPlayer::setVolume: Volume value out of range. volume=-0.1; -> InvalidParameter");
        row("volume, too high", prepared, volume(1.01),
            "W MediaPlayer::setVolume: Volume value out of range. volume=1.01; -> InvalidParameter");
        row("volume, no number", prepared, volume(std::nan("")),
            "W MediaPlayer::setVolume: Volume value out of range. volume=nan; -> InvalidParameter");
        row("auto pause on", prepared, autoPause(true),
            "mmr_output_parameters 0 volume=100 autopause=yes; autoPauseChanged(true); autoPause=true");
        row("auto pause off: not sent", after(prepared, autoPause(true)), autoPause(false),
            "mmr_output_parameters 0 volume=100; autoPauseChanged(false); autoPause=false");
        row("equalizer off: not sent", after(prepared, equalizer(EqualizerPreset::Rock)),
            equalizer(EqualizerPreset::Off),
            "mmr_output_parameters 0 volume=100; equalizerPresetChanged(Off); equalizerPreset=Off");
        row("handle, with all settings",
            after(prepared, volume(0.25), autoPause(true), equalizer(EqualizerPreset::RhythmAndBlues)), handle(7),
            "mmr_output_parameters 0 audioman_handle=7 volume=25 autopause=yes eq_preset=randb; " + handle7
                + "; audioManagerHandle=7");
        row("handle, same: sent and told again", after(prepared, handle(7)), handle(7),
            "mmr_output_parameters 0 audioman_handle=7 volume=100; " + handle7);

        const auto refused = [&](const char *name, const Action &act, const char *sent, const char *line) {
            row(name, after(prepared, failing("mmr_output_parameters", MediaError::OutputUnavailable)), act,
                QStringLiteral("mmr_output_parameters 0 ") + QLatin1String(sent)
                    + "; W MediaPlayerPrivate::updateAudioOutputParams: Unable to set output parameters. output_id=0; "
                    + line + "; -> OutputUnavailable");
        };
        refused("volume, refused", volume(0.5), "volume=50",
                "C MediaPlayer::setVolume: Unable to set volume parameter. volume=0.5");
        refused("auto pause, refused", autoPause(true), "volume=100 autopause=yes",
                "C MediaPlayer::setAutoPause: Unable to set auto pause");
        refused("equalizer, refused", equalizer(EqualizerPreset::Jazz), "volume=100 eq_preset=jazz",
                "C MediaPlayer::setEqualizerPreset: Unable to set equalizer preset");
        refused("handle, refused", handle(7), "audioman_handle=7 volume=100",
                "W MediaPlayer::setAudioManagerHandle: Unable to set the audio type.");
        row("settings are sent again by prepare", after(prepared, volume(0.5), call(&P::reset)), call(&P::prepare),
            "mmr_output_attach audio:default audio; mmr_output_parameters 1 volume=50; "
            "mmr_track_parameters 0 subpicture_index=0; mmr_input_attach file:///music/a.ogg playlist; "
            "mmr_track_parameters 0; mmr_input_parameters; mediaStateChanged(Prepared); mediaState=Prepared");
    }

    void audioSetting() { tryRow<P>(); }

    void otherSetting_data()
    {
        const PlayerCases row;
        const auto repeat = [](int mode) { return call(&P::setRepeatMode, static_cast<RepeatMode::Type>(mode)); };
        row("repeat, unprepared: kept for prepare", newPlayer, repeat(RepeatMode::All),
            "repeatModeChanged(All); repeatMode=All");
        row("repeat, prepared", prepared, repeat(RepeatMode::Track),
            "mmr_input_parameters repeat=track; repeatModeChanged(Track); repeatMode=Track");
        row("repeat off: an empty value is not sent", after(prepared, repeat(RepeatMode::Track)),
            repeat(RepeatMode::None), "mmr_input_parameters; repeatModeChanged(None); repeatMode=None");
        row("repeat, same: sent again", prepared, repeat(RepeatMode::None), "mmr_input_parameters");
        row("repeat, unsupported", newPlayer, repeat(RepeatMode::Unsupported),
            "W MediaPlayer::setRepeatMode: Cannot set unsupported repeat mode value on player.; -> UnsupportedValue");
        row("repeat, no mode", prepared, repeat(4), "W MediaPlayer::setRepeatMode: Invalid repeat mode. mode=4");
        row("repeat, refused", after(prepared, failing("mmr_input_parameters", MediaError::InvalidState)),
            repeat(RepeatMode::All),
            "mmr_input_parameters repeat=all; C MmrContextNotifier::updateInputParameter: Unable to set input "
            "parameters.; C MediaPlayerPrivate::updateInputParamRepeatMode: Unable to set input parameter. "
            "error=InvalidState; C MediaPlayer::setRepeatMode: Unable to set the repeat mode.; -> InvalidState");
        row("repeat is sent by prepare", after(withSource, repeat(RepeatMode::All)), call(&P::prepare),
            prepareCalls + " repeat=all; mediaStateChanged(Prepared); mediaState=Prepared");

        const auto interval = [](unsigned int value) { return call(&P::setStatusInterval, value); };
        row("interval", newPlayer, interval(50),
            "mmr_context_parameters updateinterval=50; statusIntervalChanged(50); statusIntervalChanged(uint 50); "
            "statusInterval=50");
        row("interval, same: sent again", newPlayer, interval(1000), "mmr_context_parameters updateinterval=1000");
        row("interval, refused", failing("mmr_context_parameters", MediaError::InvalidParameter), interval(0),
            "mmr_context_parameters updateinterval=0; C MediaPlayerPrivate::updateContextParams: Unable to set input "
            "parameters. error=InvalidParameter; C MediaPlayer::setStatusInterval: Unable to set the status "
            "interval.; -> InvalidParameter");
    }

    void otherSetting() { tryRow<P>(); }

    void equalizerPreset_isSentUnderTheRenderersName()
    {
        const QStringList names{"airplane",   "bassboost", "trebleboost", "voiceboost", "basslower",  "treblelower",
                                "voicelower", "acoustic",  "dance",       "electronic", "hiphop",     "jazz",
                                "lounge",     "piano",     "randb",       "rock",       "spokenword", ""};
        PlayerFixture f;
        prepared(f);
        for (int preset = 1; preset <= names.size(); ++preset) {
            f.forget();
            QCOMPARE(f.media.setEqualizerPreset(static_cast<EqualizerPreset::Type>(preset)), MediaError::None);
            QCOMPARE(f.trace.first(), "mmr_output_parameters 0 volume=100 eq_preset=" + names.at(preset - 1));
        }
    }

    void dictionaryFailure_isRefused_andLeaksNothing_data()
    {
        const Rows<QString, Action> row("key", "act");
        row("volume", "volume", call(&P::setVolume, 0.5));
        row("auto pause", "autopause", call(&P::setAutoPause, true));
        row("equalizer", "eq_preset", call(&P::setEqualizerPreset, EqualizerPreset::Jazz));
        row("handle", "audioman_handle", call(&P::setAudioManagerHandle, 3u));
        row("interval", "updateinterval", call(&P::setStatusInterval, 3u));
        row("repeat", "repeat", call(&P::setRepeatMode, RepeatMode::All));
        row("left", "video_src_x", call(&P::setVideoSourceRect, 0, 0, 1u, 1u));
        row("width", "video_src_w", call(&P::setVideoSourceRect, 0, 0, 1u, 1u));
    }

    void dictionaryFailure_isRefused_andLeaksNothing()
    {
        QFETCH(QString, key);
        QFETCH(Action, act);
        PlayerFixture f;
        startedWithVideo(f);
        f.forget();
        const QStringList earlier = f.state();
        f.renderer.failKey(key);
        QCOMPARE(keyName(act(f)), "InvalidParameter");
        QCOMPARE(f.trace, QStringList());
        QCOMPARE(f.renderer.dictionaryCount(), 0);
        QCOMPARE(f.state(), earlier);
    }
};

QTEST_GUILESS_MAIN(PlayerSettingsTest)
#include "tst_playersettings.moc"
