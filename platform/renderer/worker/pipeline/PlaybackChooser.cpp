#include "PlaybackChooser.h"

#include <utility>

namespace voro::renderer {

void PlaybackChooser::listen(Events events)
{
    m_events = events;
    events.failed = [this](const Failure &failure) { onFileFailed(failure); };
    m_file.listen(std::move(events));
}

void PlaybackChooser::setVolume(long percent)
{
    m_volume = percent;
    m_file.setVolume(percent);
    if (m_playbin) {
        m_playbin->setVolume(percent);
    }
}

void PlaybackChooser::setPreset(Preset preset)
{
    m_preset = preset;
    m_file.setPreset(preset);
    if (m_playbin) {
        m_playbin->setPreset(preset);
    }
}

void PlaybackChooser::setSource(const Rectangle &part)
{
    m_source = part;
    if (m_playbin) {
        m_playbin->setSource(part);
    }
}

PlaybinPlayback &PlaybackChooser::playbin()
{
    if (!m_playbin) {
        m_playbin.emplace(m_succession);
        m_playbin->listen(m_events);
        m_playbin->setVolume(m_volume);
        m_playbin->setPreset(m_preset);
        m_playbin->setSource(m_source);
    }
    return *m_playbin;
}

bool PlaybackChooser::load(const Piece &piece)
{
    unload();
    m_piece = piece;
    chooseFile();
    if (!m_file.load(piece)) {
        loadPlaybin();
    }
    return true;
}

void PlaybackChooser::chooseFile()
{
    m_chosen = &m_file;
    // All sinks share a connection: a kept one would give its broken one to every new one.
    if (m_playbin) {
        m_playbin->audio().removeLostSink();
    }
}

void PlaybackChooser::loadPlaybin()
{
    m_chosen = &playbin();
    m_file.audio().removeLostSink();
    m_chosen->load(m_piece);
}

void PlaybackChooser::loadAhead(const Piece &piece)
{
    unload();
    chooseFile();
    m_file.loadAhead(piece);
}

void PlaybackChooser::onFileFailed(const Failure &failure)
{
    if (m_file.isOpening()) {
        m_file.unload();
        loadPlaybin();
    } else if (m_file.canPlayOn(failure)) {
        const Transport::Suspension suspension = m_file.transport().suspended();
        m_file.unload();
        loadPlaybin();
        m_chosen->transport().suspend(suspension);
    } else {
        m_events.failed(failure);
    }
}

void PlaybackChooser::selectCaptions(const CaptionChoice &captions)
{
    m_piece.captions = captions;
    m_chosen->selectCaptions(captions);
}

} // namespace voro::renderer
