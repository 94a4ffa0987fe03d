#pragma once

#include "Chapters.h"
#include "Display.h"
#include "Medium.h"
#include "Publication.h"
#include "Session.h"
#include "SignalPrinter.h"

#include <multimedia/EqualizerPreset.h>
#include <multimedia/MediaPlayer.h>
#include <multimedia/RepeatMode.h>
#include <voro/PpsObject.h>

#include <QtCore/QTemporaryDir>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace voro {

/** The fastest speed, also backwards. */
inline constexpr double FastestSpeed = 4;

/** How `voro play` plays. */
struct PlaybackSettings {
    std::vector<Medium> media;
    /** Where the first medium begins, in milliseconds. */
    std::optional<unsigned> start;
    std::optional<double> speed;
    double volume = 1;
    multimedia::RepeatMode::Type repeatMode = multimedia::RepeatMode::None;
    multimedia::EqualizerPreset::Type equalizerPreset = multimedia::EqualizerPreset::Off;
    QString windowId;
    std::optional<Medium> captions;
    /** Whether several media play in random order. */
    bool isShuffled = false;
    bool json = false;
    /** Whether it shows as what is now playing on the device. */
    bool isPublished = true;
};

/** Plays media one after the other, several ones as a queue, and does what the keys ask for. */
class Playback : public Session {
    Q_OBJECT
public:
    explicit Playback(PlaybackSettings settings);

protected:
    bool begin() override;
    void onKey(Key key) override;
    bool hold() override;
    void goOn() override { m_player.play(); }
    void redraw() override { refresh(); }
    void clearLine() override { m_display->clear(); }

private:
    using Error = multimedia::MediaError;

    void connectPlayer();
    void watchSound();
    Error::Type applySettings();
    /** Complains of files that are not there, and leaves them out when there are others. */
    void omitMissingFiles();
    /** The medium, or a playlist of several ones; empty when that cannot be written. */
    QUrl source();
    Error::Type playFirst();
    /** Plays on with a track of the queue after an error; false when there is none. */
    bool playOn(unsigned track);
    /** Says of tracks that were passed over what is wrong with them, once. */
    void complainOf(unsigned first, unsigned end);

    void failWith(const Medium &medium, Error::Type error);
    /** Runs a command and reports its error. */
    void perform(const std::function<Error::Type()> &command);
    /** Says that there is more than is heard. */
    void onPictures(const QSize &size);
    /** Says that captions are left out that cannot be read. */
    void onMetaData(const QVariantMap &metaData);
    void onState(multimedia::MediaState::Type state);
    void onTrack(unsigned track);
    void onEnd();
    void onError(multimedia::MediaError::Type error, unsigned position);

    Error::Type togglePause();
    Error::Type stop();
    Error::Type start();
    Error::Type seekBy(int milliseconds);
    Error::Type seekToTenth(unsigned tenths);
    /** Where the keys count from. */
    unsigned sought() const { return m_sought.value_or(m_player.position()); }
    Error::Type seekToChapter(std::optional<unsigned> begin);
    Error::Type changeVolume(double step);
    Error::Type toggleMute();
    Error::Type changeSpeed(double step);
    void showKeys();
    Error::Type next();
    Error::Type previous();
    Error::Type setShuffled(bool isShuffled);
    /** Opens the queue in its present order and goes on where it was. */
    Error::Type reopen(unsigned track, unsigned position);

    /** Whether the tracks of the queue are the media given. The present track may be told of before their number is. */
    bool isKnown() const { return trackCount() == m_media.size() && m_player.track() <= m_media.size(); }
    bool canShuffle() const { return isKnown() && m_media.size() > 1; }
    unsigned trackCount() const { return std::max(m_player.trackCount(), 1U); }
    bool hasNext() const;
    /** The number of the track's medium, from 1, when it is known, else the track's. */
    unsigned numberOf(unsigned track) const { return isKnown() ? m_order[track - 1] + 1 : track; }
    const Medium &mediumOf(unsigned track) const { return m_media[m_order[track - 1]]; }
    QString nameOf(unsigned track) const;
    /** What the present track is called that has no title. */
    QString fallbackTitle() const;
    QString title() const;
    void refresh();
    void publish();

    const PlaybackSettings m_settings;
    const std::unique_ptr<Display> m_display;
    multimedia::MediaPlayer m_player;
    /** Of --json. */
    SignalPrinter *m_printer = nullptr;
    /** Where the renderer says whether the player is heard. */
    std::unique_ptr<PpsObject> m_sound;
    std::unique_ptr<Publication> m_publication;
    Chapters m_chapters;

    std::vector<Medium> m_media;
    /** The numbers of the media, from 0, in the order in which they play. */
    std::vector<unsigned> m_order;
    bool m_isShuffled = false;
    /** The speed that was asked for, if any was. */
    std::optional<double> m_speed;
    /** The volume to go back to while the sound is off. */
    std::optional<double> m_volume;
    /** The queue is being opened anew, which nobody else has to know. */
    bool m_isReopening = false;
    /** The track that plays when that is done and has been reported. */
    std::optional<unsigned> m_awaited;
    bool m_isStopped = false;
    /** Where the playlist of several media lies. */
    std::optional<QTemporaryDir> m_folder;
    /** The last track that was told of; 0 before. */
    unsigned m_told = 0;
    /** By numberOf(). */
    std::set<unsigned> m_examined;
    /** Where the keys sought to last, until the player reports a position: several presses add up. */
    std::optional<unsigned> m_sought;
    double m_buffering = 0;
};

} // namespace voro
