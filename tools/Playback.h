#pragma once

#include "Display.h"
#include "Medium.h"
#include "Publication.h"
#include "Session.h"

#include <multimedia/EqualizerPreset.h>
#include <multimedia/MediaPlayer.h>
#include <multimedia/RepeatMode.h>

#include <QtCore/QTemporaryDir>

#include <algorithm>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace voro {

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
    void clearLine() override { m_display->clear(); }

private:
    using Error = multimedia::MediaError;

    void connectPlayer();
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

    void onTrack(unsigned track);
    void onEnd();
    void onError(multimedia::MediaError::Type error, unsigned position);

    Error::Type togglePause();
    Error::Type start();
    Error::Type seekBy(int milliseconds);
    Error::Type changeVolume(double step);
    Error::Type next();
    Error::Type previous();

    /** Whether the tracks of the queue are the media given. */
    bool isKnown() const { return trackCount() == m_media.size(); }
    unsigned trackCount() const { return std::max(m_player.trackCount(), 1U); }
    QString nameOf(unsigned track) const;
    QString title() const;
    void refresh();

    const PlaybackSettings m_settings;
    const std::unique_ptr<Display> m_display;
    multimedia::MediaPlayer m_player;
    std::unique_ptr<Publication> m_publication;

    std::vector<Medium> m_media;
    /** Where the playlist of several media lies. */
    std::optional<QTemporaryDir> m_folder;
    /** The last track that was told of; 0 before. */
    unsigned m_told = 0;
    std::set<unsigned> m_examined;
    /** Where the keys sought to last, until the player reports a position: several presses add up. */
    std::optional<unsigned> m_sought;
    double m_buffering = 0;
};

} // namespace voro
