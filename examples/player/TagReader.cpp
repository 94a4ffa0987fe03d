#include "TagReader.h"

#include <multimedia/MediaPlayer.h>
#include <multimedia/MetaData.h>

using namespace voro::multimedia;

namespace {

constexpr int PatienceMs = 1000;

QString text(const QVariantMap &metaData, const char *key)
{
    return metaData.value(QLatin1String(key)).toString();
}

QByteArray pictureIn(const QVariantMap &metaData)
{
    const QByteArray url = metaData.value(QStringLiteral("image")).toByteArray();
    const auto comma = url.indexOf(',');
    return url.first(comma + 1).endsWith(";base64,") ? QByteArray::fromBase64(url.mid(comma + 1)) : QByteArray();
}

} // namespace

TagReader::TagReader() : m_patience(this)
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(PatienceMs);
    connect(&m_patience, &QTimer::timeout, this, &TagReader::finish);
}

TagReader::~TagReader() = default;

void TagReader::read(const QString &path)
{
    m_wanted.push_front(path);
    if (m_path.isEmpty()) {
        next();
    }
}

void TagReader::clear()
{
    m_wanted.clear();
}

void TagReader::next()
{
    if (m_wanted.empty()) {
        m_path.clear();
        // Nothing is kept ready for nobody.
        m_player.reset();
        return;
    }
    m_path = m_wanted.front();
    m_wanted.pop_front();
    if (!m_player) {
        m_player = std::make_unique<MediaPlayer>();
        m_player->setAudioOutput(AudioOutput::None);
        connect(m_player.get(), &MediaPlayer::metaDataChanged, this, [this](const QVariantMap &metaData) {
            // The medium before this one ends with a duration of 0.
            if (m_patience.isActive() && metaData.value(QLatin1String(MetaData::Duration)).toLongLong() > 0) {
                finish();
            }
        });
    }
    m_player->setSourceUrl(QUrl::fromLocalFile(m_path));
    m_patience.start(m_player->prepare() == MediaError::None ? PatienceMs : 0);
}

void TagReader::finish()
{
    m_patience.stop();
    const QVariantMap metaData = m_player->metaData();
    const Tags tags{text(metaData, MetaData::Title),
                    text(metaData, MetaData::Artist),
                    text(metaData, MetaData::Album),
                    metaData.value(QLatin1String(MetaData::Track)).toInt(),
                    metaData.value(QLatin1String(MetaData::Duration)).toLongLong(),
                    {}};
    Q_EMIT found(m_path, tags, pictureIn(metaData));
    // From the event loop, since this may be a report of the player that is about to change.
    QMetaObject::invokeMethod(this, &TagReader::next, Qt::QueuedConnection);
}
