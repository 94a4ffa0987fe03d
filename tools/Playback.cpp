#include "Playback.h"

#include "Folders.h"
#include "Output.h"
#include "Problem.h"
#include "StopSignals.h"
#include "TerminalLine.h"

#include <multimedia/MetaData.h>

#include <QtCore/QFileInfo>
#include <QtCore/QRandomGenerator>

#include <algorithm>
#include <initializer_list>
#include <numeric>
#include <utility>

namespace voro {

using multimedia::AudioOutput;
using multimedia::BufferStatus;
using multimedia::MediaError;
using multimedia::MediaPlayer;
using multimedia::MediaState;
using multimedia::RepeatMode;
using multimedia::ShuffleMode;
using multimedia::VideoOutput;

namespace {

/** Runs commands until one fails; its error is the result. */
MediaError::Type inTurn(std::initializer_list<std::function<MediaError::Type()>> commands)
{
    for (const auto &command : commands) {
        if (const auto error = command(); error != MediaError::None) {
            return error;
        }
    }
    return MediaError::None;
}

} // namespace

Playback::Playback(PlaybackSettings settings)
    : Session("play"),
      m_settings(std::move(settings)),
      m_display(m_settings.json ? Display::createSilent() : Display::create()),
      m_speed(m_settings.speed)
{
    connectPlayer();
    watchSound();
}

void Playback::connectPlayer()
{
    if (m_settings.json) {
        m_printer = new SignalPrinter(&m_player, voro::print, this);
    }
    connect(&m_player, &MediaPlayer::metaDataChanged, this, &Playback::refresh);
    if (m_settings.captions && !m_settings.json) {
        connect(&m_player, &MediaPlayer::metaDataChanged, this, &Playback::onMetaData);
    }
    connect(&m_player, &MediaPlayer::mediaStateChanged, this, &Playback::onState);
    connect(&m_player, &MediaPlayer::repeatModeChanged, this, &Playback::refresh);
    connect(&m_player, &MediaPlayer::bufferStatusChanged, this, &Playback::refresh);
    connect(&m_player, &MediaPlayer::volumeChanged, this, &Playback::refresh);
    connect(&m_player, &MediaPlayer::speedChanged, this, &Playback::refresh);
    connect(&m_player, &MediaPlayer::closedCaptionEnabledChanged, this, &Playback::refresh);
    connect(&m_player, qOverload<unsigned>(&MediaPlayer::trackCountChanged), this, &Playback::refresh);
    connect(&m_player, qOverload<unsigned>(&MediaPlayer::durationChanged), this, &Playback::refresh);
    connect(&m_player, qOverload<unsigned>(&MediaPlayer::positionChanged), this, [this] {
        m_sought.reset();
        // Nothing tells that the first track is the first.
        if (m_told == 0 && m_player.track() == 1) {
            m_told = 1;
        }
        refresh();
    });
    if (m_settings.windowId.isEmpty() && !m_settings.json && TerminalLine::isAvailable()) {
        connect(&m_player, &MediaPlayer::videoDimensionsChanged, this, &Playback::onPictures);
    }
    connect(&m_player, &MediaPlayer::buffering, this, [this](double fraction) {
        m_buffering = fraction;
        refresh();
    });
    connect(&m_chapters, &Chapters::changed, this, &Playback::refresh);
    // The number of tracks comes behind the first track, and what follows an end uses the player, which is still at its
    // report here: they follow from the event loop.
    connect(&m_player, qOverload<unsigned>(&MediaPlayer::trackChanged), this, &Playback::onTrack, Qt::QueuedConnection);
    connect(&m_player, &MediaPlayer::playbackCompleted, this, &Playback::onEnd, Qt::QueuedConnection);
    connect(&m_player, qOverload<MediaError::Type, unsigned>(&MediaPlayer::error), this, &Playback::onError,
            Qt::QueuedConnection);
}

/** Warns once when what is played goes into nothing. */
void Playback::watchSound()
{
    m_sound = std::make_unique<PpsObject>(contextFolder(QStringLiteral("MediaPlayer")) + QLatin1String("/audio"));
    connect(m_sound.get(), &PpsObject::readyRead, this, [this] {
        bool isRead = false;
        const QVariantMap objects = PpsObject::decode(m_sound->read(&isRead));
        const bool isSilent = objects.value(QStringLiteral("@audio")).toMap().value(QStringLiteral("silent")).toBool();
        if (isRead && !isSilent) {
            return;
        }
        m_sound->close();
        if (isSilent && m_printer) {
            m_printer->print("warning", {{"text", QString::fromLatin1(NoSoundServer)}});
        } else if (isSilent) {
            report(QString::fromLatin1(NoSoundServer));
        }
    });
    m_sound->open(PpsOpenMode::Subscribe);
}

bool Playback::begin()
{
    if (const auto error = applySettings(); error != MediaError::None) {
        fail(problemOf(error));
        return false;
    }
    if (m_settings.isPublished) {
        m_publication = std::make_unique<Publication>(m_player);
        connect(m_publication.get(), &Publication::keyAsked, this, &Playback::onKey);
        connect(m_publication.get(), &Publication::stopAsked, this, [this] { perform([this] { return stop(); }); });
        connect(m_publication.get(), &Publication::repeatAsked, this,
                [this](RepeatMode::Type mode) { perform([this, mode] { return m_player.setRepeatMode(mode); }); });
        connect(m_publication.get(), &Publication::shuffleAsked, this,
                [this](bool isShuffled) { perform([this, isShuffled] { return setShuffled(isShuffled); }); });
    }
    omitMissingFiles();
    if (m_media.empty()) {
        return false;
    }
    const auto error = playFirst();
    if (error != MediaError::None && m_media.size() == 1) {
        failWith(m_media.front(), error);
    } else if (error != MediaError::None) {
        fail(QStringLiteral("none of them can be played: ") + problemOf(error));
    }
    return error == MediaError::None;
}

MediaError::Type Playback::applySettings()
{
    if (!m_settings.windowId.isEmpty()) {
        m_player.setWindowId(m_settings.windowId);
        if (m_settings.captions) {
            m_player.setClosedCaptionWindowId(m_settings.windowId);
        }
    }
    return inTurn({
        [&] { return m_player.setVolume(m_settings.volume); },
        [&] { return m_player.setEqualizerPreset(m_settings.equalizerPreset); },
        [&] { return m_player.setRepeatMode(m_settings.repeatMode); },
        [&] {
            return m_settings.windowId.isEmpty() ? MediaError::None
                                                 : m_player.setVideoOutput(VideoOutput::PrimaryDisplay);
        },
    });
}

void Playback::omitMissingFiles()
{
    for (const Medium &medium : m_settings.media) {
        if (m_settings.media.size() == 1 || !medium.url.isLocalFile() || QFileInfo::exists(medium.url.toLocalFile())) {
            m_media.push_back(medium);
        } else {
            failWith(medium, MediaError::SourceUnavailable);
        }
    }
    m_order.resize(m_media.size());
    std::iota(m_order.begin(), m_order.end(), 0);
    if (m_settings.isShuffled && m_media.size() > 1) {
        m_isShuffled = true;
        std::shuffle(m_order.begin(), m_order.end(), *QRandomGenerator::global());
    }
}

QUrl Playback::source()
{
    if (m_media.size() == 1) {
        return m_media.front().url;
    }
    QByteArray lines;
    for (const unsigned number : m_order) {
        lines += m_media[number].url.toEncoded() + '\n';
    }
    QFile playlist(m_folder.emplace().filePath(QStringLiteral("queue.m3u8")));
    const bool isWritten = playlist.open(QFile::WriteOnly) && playlist.write(lines) == lines.size() && playlist.flush();
    return isWritten ? QUrl::fromLocalFile(playlist.fileName()) : QUrl();
}

MediaError::Type Playback::playFirst()
{
    const StopSignals::AtOnce atOnce;
    return inTurn({
        [&] { return m_player.setSourceUrl(source()); },
        [&] { return m_player.prepare(); },
        [&] {
            auto error = MediaError::None;
            for (unsigned track = 1; m_settings.captions && error == MediaError::None && track <= m_media.size();
                 ++track) {
                error = m_player.setClosedCaptionUrl(track, m_settings.captions->url);
            }
            return error;
        },
        [&] { return m_settings.start ? m_player.seekTime(*m_settings.start) : MediaError::None; },
        [&] { return start(); },
    });
}

MediaError::Type Playback::start()
{
    // A speed starts a prepared player by itself; play() would go back to the speed that was reported last.
    return m_speed ? m_player.setSpeed(*m_speed) : m_player.play();
}

bool Playback::playOn(unsigned track)
{
    if (track > trackCount()) {
        return false;
    }
    const auto error = inTurn(
        {[&] { return m_player.prepare(); }, [&] { return m_player.seekTrack(track); }, [&] { return start(); }});
    if (error != MediaError::None) {
        fail(nameOf(track) + QLatin1String(": ") + problemOf(error));
    }
    return error == MediaError::None;
}

void Playback::complainOf(unsigned first, unsigned end)
{
    for (unsigned track = first; track < end; ++track) {
        if (!m_examined.insert(numberOf(track)).second) {
            continue;
        }
        if (!isKnown()) {
            fail(nameOf(track) + QLatin1String(": passed over"));
            continue;
        }
        // A very short one may have been over before it was told of.
        MediaPlayer player;
        const auto error =
            inTurn({[&] { return player.setAudioOutput(AudioOutput::None); },
                    [&] { return player.setSourceUrl(mediumOf(track).url); }, [&] { return player.prepare(); }});
        if (error != MediaError::None) {
            failWith(mediumOf(track), error);
        }
    }
}

void Playback::failWith(const Medium &medium, Error::Type error)
{
    fail(medium.name + QLatin1String(": ") + problemOf(error, medium.url));
}

void Playback::perform(const std::function<Error::Type()> &command)
{
    if (const auto error = command(); error != MediaError::None) {
        report(problemOf(error));
    }
}

void Playback::onPictures(const QSize &size)
{
    if (size.isEmpty()) {
        return;
    }
    // Once is enough.
    disconnect(&m_player, &MediaPlayer::videoDimensionsChanged, this, &Playback::onPictures);
    clearLine();
    print("playing the sound only; voro demo shows the pictures, too\n");
    refresh();
}

void Playback::onMetaData(const QVariantMap &metaData)
{
    if (metaData.value(QStringLiteral("captions_unreadable")).toBool()) {
        // Once is enough.
        disconnect(&m_player, &MediaPlayer::metaDataChanged, this, &Playback::onMetaData);
        report(m_settings.captions->name + QLatin1String(": these captions cannot be read"));
    }
}

void Playback::onState(MediaState::Type state)
{
    if (m_isReopening) {
        return;
    }
    m_isStopped = m_isStopped && state == MediaState::Stopped;
    if (m_publication) {
        m_publication->setState(state);
    }
    refresh();
}

void Playback::onTrack(unsigned track)
{
    complainOf(m_told + 1, track);
    m_told = track;
    refresh();
}

void Playback::onEnd()
{
    complainOf(m_told + 1, trackCount() + 1);
    finish();
}

void Playback::onError(MediaError::Type error, unsigned position)
{
    fail(QStringLiteral("%1: %2 at %3").arg(nameOf(m_player.track()), problemOf(error), timeText(position)));
    if (!playOn(m_player.track() + 1)) {
        finish();
    }
}

MediaError::Type Playback::setShuffled(bool isShuffled)
{
    if (!canShuffle() || isShuffled == m_isShuffled) {
        return MediaError::None;
    }
    m_isShuffled = isShuffled;
    const unsigned current = m_order[m_player.track() - 1];
    std::iota(m_order.begin(), m_order.end(), 0);
    if (!isShuffled) {
        return reopen(current + 1, m_player.position());
    }
    std::swap(m_order.front(), m_order[current]);
    std::shuffle(m_order.begin() + 1, m_order.end(), *QRandomGenerator::global());
    return reopen(1, m_player.position());
}

MediaError::Type Playback::reopen(unsigned track, unsigned position)
{
    const MediaState::Type state = m_player.mediaState();
    m_isReopening = true;
    m_told = track;
    m_awaited = track;
    const auto error = inTurn({
        [&] { return m_player.setSourceUrl(source()); },
        [&] { return m_player.prepare(); },
        [&] { return state == MediaState::Stopped ? m_player.seekTrack(track) : m_player.seek(track, position); },
        [&] { return state == MediaState::Started ? start() : MediaError::None; },
        [&] { return state == MediaState::Paused ? m_player.pause() : MediaError::None; },
    });
    m_isReopening = false;
    if (error != MediaError::None) {
        m_awaited.reset();
        onState(m_player.mediaState());
    }
    refresh();
    return error;
}

bool Playback::hold()
{
    return m_player.mediaState() == MediaState::Started && m_player.pause() == MediaError::None;
}

QString Playback::title() const
{
    const QVariantMap metaData = m_player.metaData();
    const QString title = metaData.value(QLatin1String(multimedia::MetaData::Title)).toString();
    const QString artist = metaData.value(QLatin1String(multimedia::MetaData::Artist)).toString();
    if (!title.isEmpty()) {
        return printable(artist.isEmpty() ? title : title + QLatin1String(" - ") + artist);
    }
    // A medium that plays and still has no title will have none.
    if (m_player.position() == 0 || m_player.mediaState() == MediaState::Unprepared) {
        return {};
    }
    return printable(fallbackTitle());
}

QString Playback::fallbackTitle() const
{
    const QUrl uri(m_player.metaData().value(QLatin1String(multimedia::MetaData::Uri)).toString());
    return isKnown() || uri.fileName().isEmpty() ? nameOf(m_player.track()) : uri.fileName();
}

QString Playback::nameOf(unsigned track) const
{
    if (isKnown()) {
        return mediumOf(track).name;
    }
    const QString number = QStringLiteral("track %1").arg(track);
    return m_media.size() > 1 ? number : m_media.front().name + QLatin1String(", ") + number;
}

bool Playback::hasNext() const
{
    return m_player.track() < trackCount() || m_player.repeatMode() == RepeatMode::All;
}

void Playback::publish()
{
    if (m_awaited && (!isKnown() || m_player.track() != *m_awaited)) {
        return;
    }
    m_awaited.reset();
    const QLatin1String titleKey(multimedia::MetaData::Title);
    QVariantMap metaData = m_player.metaData();
    if (!metaData.isEmpty() && metaData.value(titleKey).toString().isEmpty()) {
        metaData.insert(titleKey, fallbackTitle());
    }
    m_publication->setNeighbours(hasNext(), m_player.track() > 1);
    m_publication->setTrack(numberOf(m_player.track()), metaData);
    if (canShuffle()) {
        m_publication->setShuffleMode(m_isShuffled ? ShuffleMode::All : ShuffleMode::Off);
    }
}

void Playback::refresh()
{
    if (m_publication && !m_isReopening) {
        publish();
    }
    m_chapters.follow(QUrl(m_player.metaData().value(QLatin1String(multimedia::MetaData::Uri)).toString()));
    const bool hasCaptions = m_settings.captions && !m_settings.windowId.isEmpty();
    m_display->show({
        .title = title(),
        .chapter = printable(m_chapters.textAt(m_player.position())),
        .isPaused = m_player.mediaState() == MediaState::Paused || m_isStopped,
        .buffering = m_player.bufferStatus() == BufferStatus::Buffering ? m_buffering : -1,
        .position = m_player.position(),
        .duration = m_player.duration(),
        .volume = m_player.volume(),
        .track = m_player.track(),
        .trackCount = trackCount(),
        .speed = m_player.speed(),
        .captions = hasCaptions ? std::optional(m_player.closedCaptionEnabled()) : std::nullopt,
    });
}

} // namespace voro
