#include "Household.h"

#include <multimedia/MetaData.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QtEndian>

#include <algorithm>

using namespace voro::multimedia;

Household::Household(const QUrl &medium, const QString &folder) : m_watcher(MediaKey::Play), m_folder(folder)
{
    for (size_t i = 0; i < Players; ++i) {
        MediaPlayer &player = m_players[i];
        player.setStatusInterval(50);
        player.setSourceUrl(medium);
        player.setRepeatMode(RepeatMode::Track);
        connect(&player, qOverload<MediaError::Type, unsigned>(&MediaPlayer::error), this, [this, i](auto error) {
            ++m_playerErrors[i];
            m_wrong += error != MediaError::Internal;
        });
        connect(&player, qOverload<unsigned>(&MediaPlayer::positionChanged), this, [this, i] { ++m_positions[i]; });
    }
    connect(&m_recorder, qOverload<MediaError::Type, unsigned>(&AudioRecorder::error), this, [this](auto error) {
        ++m_recorderErrors;
        m_wrong += error != MediaError::Internal;
    });
    connect(&m_holder, &NowPlayingConnection::revoked, this, [this] { ++m_revocations; });
    for (NowPlayingController &controller : m_controllers) {
        connect(&controller, &NowPlayingController::metaDataChanged, this, [] {});
    }
    connect(&m_watcher, &MediaKeyWatcher::shortPress, this, [this] { ++m_presses; });
}

QString Household::start()
{
    for (MediaPlayer &player : m_players) {
        if (const auto error = player.play(); error != MediaError::None) {
            return QStringLiteral("a player: error %1").arg(error);
        }
    }
    // A recording that was cut off is over; the next one gets a file of its own.
    m_recording = QDir(m_folder).filePath(QStringLiteral("%1.wav").arg(++m_recordings));
    if (const auto error = m_recorder.reset(); error != MediaError::None) {
        return QStringLiteral("the recorder's reset: error %1").arg(error);
    }
    m_recorder.setOutputUrl(QUrl::fromLocalFile(m_recording));
    if (const auto error = m_recorder.record(); error != MediaError::None) {
        return QStringLiteral("the recorder: error %1").arg(error);
    }
    if (!m_holder.isAcquired()) {
        if (const auto error = m_holder.acquire(); error != MediaError::None) {
            return QStringLiteral("the holder: error %1").arg(error);
        }
    }
    m_holder.setMediaState(MediaState::Started);
    m_holder.setMetaData({{QLatin1String(MetaData::Title), QStringLiteral("title")}});
    return {};
}

bool Household::isAtWork() const
{
    return std::all_of(m_positions.begin(), m_positions.end(), [](int count) { return count > 2; })
           && std::all_of(m_controllers.begin(), m_controllers.end(), [](const NowPlayingController &controller) {
                  return controller.mediaState() == MediaState::Started
                         && controller.metaData().value(QLatin1String(MetaData::Title)) == QStringLiteral("title");
              });
}

void Household::forget()
{
    m_playerErrors = m_positions = {};
    m_recorderErrors = m_revocations = m_presses = m_wrong = 0;
}

bool Household::isTold() const
{
    return std::all_of(m_players.begin(), m_players.end(),
                       [](const MediaPlayer &player) { return player.mediaState() == MediaState::Stopped; })
           && std::all_of(m_playerErrors.begin(), m_playerErrors.end(), [](int count) { return count == 1; })
           && m_recorder.mediaState() == MediaState::Stopped && m_recorderErrors == 1 && !m_holder.isAcquired()
           && m_revocations == 1 && m_wrong == 0
           && std::all_of(m_controllers.begin(), m_controllers.end(), [](const NowPlayingController &controller) {
                  return controller.mediaState() == MediaState::Stopped
                         && controller.metaData().value(QLatin1String(MetaData::Title)).toString().isEmpty();
              });
}

QString Household::report() const
{
    QString text;
    for (size_t i = 0; i < Players; ++i) {
        text += QStringLiteral("player: state %1, %2 errors, %3 positions; ")
                    .arg(m_players[i].mediaState())
                    .arg(m_playerErrors[i])
                    .arg(m_positions[i]);
    }
    text += QStringLiteral("recorder: state %1, %2 errors; holder: %3 revocations; controllers: ")
                .arg(m_recorder.mediaState())
                .arg(m_recorderErrors)
                .arg(m_revocations);
    for (const NowPlayingController &controller : m_controllers) {
        text += QStringLiteral("state %1, '%2'; ")
                    .arg(controller.mediaState())
                    .arg(controller.metaData().value(QLatin1String(MetaData::Title)).toString());
    }
    return text + QStringLiteral("%1 presses, %2 wrong errors").arg(m_presses).arg(m_wrong);
}

bool Household::isComplete(const QString &recording)
{
    QFile file(recording);
    if (!file.open(QFile::ReadOnly)) {
        return false;
    }
    constexpr qint64 Head = 8;
    const QByteArray head = file.read(Head);
    return head.startsWith("RIFF") && qFromLittleEndian<quint32>(head.constData() + 4) == file.size() - Head;
}
