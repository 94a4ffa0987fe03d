#include "PlaybackChooser.h"

#include <utility>

namespace voro::renderer {

void PlaybackChooser::listen(Events events)
{
    m_playbin.listen(events);
    m_events = events;
    events.failed = [this](const Failure &failure) { onFileFailed(failure); };
    m_file.listen(std::move(events));
}

void PlaybackChooser::setVolume(long percent)
{
    m_playbin.setVolume(percent);
    m_file.setVolume(percent);
}

void PlaybackChooser::setPreset(Preset preset)
{
    m_playbin.setPreset(preset);
    m_file.setPreset(preset);
}

bool PlaybackChooser::load(const Piece &piece)
{
    unload();
    m_piece = piece;
    m_chosen = &m_file;
    if (!m_file.load(piece)) {
        loadPlaybin();
    }
    return true;
}

void PlaybackChooser::loadPlaybin()
{
    m_chosen = &m_playbin;
    // All sinks share a connection: a kept one would give its broken one to every new one.
    m_file.audio().removeLostSink();
    m_playbin.load(m_piece);
}

void PlaybackChooser::loadAhead(const Piece &piece)
{
    unload();
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
        m_playbin.transport().suspend(suspension);
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
