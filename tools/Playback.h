#pragma once

#include "Display.h"
#include "Medium.h"
#include "Publication.h"
#include "Session.h"

#include <multimedia/EqualizerPreset.h>
#include <multimedia/MediaPlayer.h>
#include <multimedia/RepeatMode.h>

#include <memory>
#include <optional>
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

/** Plays media one after the other and does what the keys ask for. */
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
    Error::Type playMedium(const Medium &medium, bool isFirst);
    /** Begins a medium, or the one that follows it when it fails, and so on; false when none is left. */
    bool beginWith(size_t index);
    /** The medium after the given one, if any; the first one when all are repeated. */
    std::optional<size_t> after(size_t index);

    void onEnd();
    void onError(multimedia::MediaError::Type error, unsigned position);

    Error::Type togglePause();
    Error::Type seekBy(int milliseconds);
    Error::Type changeVolume(double step);
    Error::Type next();
    Error::Type previous();

    QString title() const;
    void refresh();

    const PlaybackSettings m_settings;
    const std::unique_ptr<Display> m_display;
    multimedia::MediaPlayer m_player;
    std::unique_ptr<Publication> m_publication;

    size_t m_index = 0;
    /** Media begun so far. */
    int m_begun = 0;
    /** Whether something was played since the first medium was begun last; all failing, nothing is repeated. */
    bool m_hasPlayed = false;
    /** Where the keys sought to last, until the player reports a position: several presses add up. */
    std::optional<unsigned> m_sought;
    double m_buffering = 0;
};

} // namespace voro
