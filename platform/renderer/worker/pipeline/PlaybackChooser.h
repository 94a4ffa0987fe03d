#pragma once

#include "FilePlayback.h"
#include "PlaybinPlayback.h"

#include <optional>

namespace voro::renderer {

/**
 * Plays each medium in the faster way that it can be played in: files of sound in a common format with the decoders
 * that are kept for them, everything else with a playbin, which also takes over what the decoders fail at. The playbin
 * is made with the first medium that needs it.
 */
class PlaybackChooser : public Playback {
public:
    ~PlaybackChooser() override { unload(); }

    void listen(Events events) override;

    void connectSound() override { m_file.connectSound(); }
    void setVolume(long percent) override;
    void setPreset(Preset preset) override;
    bool isFarAhead() const override { return m_chosen->isFarAhead(); }
    void setSource(const Rectangle &part) override;
    bool load(const Piece &piece) override;
    void loadAhead(const Piece &piece) override;
    void run() override { m_chosen->run(); }
    void hold() override { m_chosen->hold(); }
    void unload() override { m_chosen->unload(); }
    bool hasBegun() const override { return m_chosen->hasBegun(); }
    void selectCaptions(const CaptionChoice &captions) override;
    Succession &succession() override { return m_succession; }
    bool seek(int64_t time, Speed speed) override { return m_chosen->seek(time, speed); }
    Speed speed() const override { return m_chosen->speed(); }
    int64_t position() const override { return m_chosen->position(); }
    int64_t duration() const override { return m_chosen->duration(); }
    bool isCommonFile() const override { return m_chosen->isCommonFile(); }
    bool isSeekable() const override { return m_chosen->isSeekable(); }
    int sampleRate() const override { return m_chosen->sampleRate(); }
    Dimensions dimensions() const override { return m_chosen->dimensions(); }
    CaptionInfo captions() const override { return m_chosen->captions(); }
    std::string device() const override { return m_chosen->device(); }
    bool isSilent() const override { return m_chosen->isSilent(); }

private:
    void onFileFailed(const Failure &failure);
    void chooseFile();
    void loadPlaybin();
    PlaybinPlayback &playbin();

    Succession m_succession;
    FilePlayback m_file{m_succession};
    std::optional<PlaybinPlayback> m_playbin;
    PipelinePlayback *m_chosen = &m_file;
    Piece m_piece;
    // What a playbin that is made gets.
    long m_volume = 100;
    Preset m_preset{};
    Rectangle m_source;
};

} // namespace voro::renderer
