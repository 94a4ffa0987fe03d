#include <multimedia/MetaData.h>
#include <voro/PpsObject.h>

#include <private/Announcement.h>
#include <private/MmrContextNotifier.h>
#include <private/Values.h>

#include <algorithm>
#include <array>
#include <new>
#include <utility>

namespace voro::multimedia {

namespace {

using Attributes = QMap<QString, voro::PpsAttribute>;

QString toMetaDataKey(const QString &attribute)
{
    struct Mapping {
        QLatin1String attribute;
        const char *const *key;
    };
    static const std::array mappings{
        Mapping{QLatin1String("md_title_album"), &MetaData::Album},
        Mapping{QLatin1String("md_title_artist"), &MetaData::Artist},
        Mapping{QLatin1String("md_title_bitrate"), &MetaData::BitRate},
        Mapping{QLatin1String("md_title_comment"), &MetaData::Description},
        Mapping{QLatin1String("md_title_disc"), &MetaData::Disc},
        Mapping{QLatin1String("md_title_duration"), &MetaData::Duration},
        Mapping{QLatin1String("md_title_genre"), &MetaData::Genre},
        Mapping{QLatin1String("md_video_height"), &MetaData::Height},
        Mapping{QLatin1String("md_title_samplerate"), &MetaData::SampleRate},
        Mapping{QLatin1String("md_title_seekable"), &MetaData::Seekable},
        Mapping{QLatin1String("md_title_track"), &MetaData::Track},
        Mapping{QLatin1String("md_title_name"), &MetaData::Title},
        Mapping{QLatin1String("url"), &MetaData::Uri},
        Mapping{QLatin1String("md_video_width"), &MetaData::Width},
        Mapping{QLatin1String("md_video_pixel_width"), &MetaData::PixelWidth},
        Mapping{QLatin1String("md_video_pixel_height"), &MetaData::PixelHeight},
    };
    const auto found = std::find_if(mappings.begin(), mappings.end(),
                                    [&](const Mapping &mapping) { return attribute == mapping.attribute; });
    return found == mappings.end() ? attribute : QString::fromLatin1(*found->key);
}

std::optional<QSize> toVideoDimensions(const QVariantMap &metaData)
{
    const auto number = [&](const char *key) -> std::optional<qint64> {
        const auto entry = metaData.constFind(QLatin1String(key));
        return entry == metaData.constEnd() ? std::nullopt : std::optional<qint64>(entry->toInt());
    };
    const auto width = number(MetaData::Width);
    const auto height = number(MetaData::Height);
    const auto pixelWidth = number(MetaData::PixelWidth);
    const auto pixelHeight = number(MetaData::PixelHeight);
    if (!width || !height) {
        return std::nullopt;
    }
    const QSize size(static_cast<int>(*width), static_cast<int>(*height));
    if (!pixelWidth || !pixelHeight) {
        return size;
    }
    // The pixel's ratio is compared with the frame's, not with 1; this is required.
    if (static_cast<float>(*pixelHeight) / static_cast<float>(*pixelWidth)
        == static_cast<float>(*height) / static_cast<float>(*width)) {
        return size;
    }
    const qint64 smaller = std::min(*pixelHeight, *pixelWidth);
    if (smaller == 0) {
        return size;
    }
    return QSize(static_cast<int>(*pixelWidth * *width / smaller), static_cast<int>(*pixelHeight * *height / smaller));
}

/** Merges attributes into cached parameters. True when a text differs from the cached one. */
bool mergeParameters(const Attributes &attributes, QVariantMap &cache)
{
    bool changed = false;
    for (auto attribute = attributes.begin(); attribute != attributes.end(); ++attribute) {
        if (cache.contains(attribute.key()) && attribute->flags().testFlag(voro::PpsAttributeFlag::Deleted)) {
            cache.remove(attribute.key());
        } else if (replace(cache[attribute.key()], QVariant(attribute->toString()))) {
            changed = true;
        }
    }
    return changed;
}

} // namespace

MmrContextNotifier::MmrContextNotifier(QObject *parent) : QObject(parent)
{
    TRACE_FUNCTION();
}

MmrContextNotifier::~MmrContextNotifier()
{
    TRACE_FUNCTION();
}

void MmrContextNotifier::drop(voro::PpsObject *&object)
{
    if (!object) {
        return;
    }
    object->setParent(nullptr);
    disconnect(object, &voro::PpsObject::readyRead, this, &MmrContextNotifier::onReadyRead);
    delete std::exchange(object, nullptr);
}

bool MmrContextNotifier::monitor(mmr_context_t *context)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "context=" << static_cast<const void *>(context);
    if (context && context == m_context) {
        DEBUG_LINE << "Already monitoring the context. context=" << static_cast<const void *>(context);
        return true;
    }
    drop(m_allObject);
    drop(m_stateObject);
    m_context = context;
    if (!m_context) {
        return true;
    }

    char path[1024];
    if (mmr_context_path(m_context, path, sizeof path) == -1) {
        CRITICAL_LINE << "Unable to retrieve the multimedia context path";
        return false;
    }
    const QString contextPath = QString::fromUtf8(path);
    m_allObject = new (std::nothrow) voro::PpsObject(QStringLiteral("%1/.all").arg(contextPath), this);
    if (!m_allObject) {
        CRITICAL_LINE << "Unable to create pps all object, object is null.";
        return false;
    }
    m_stateObject = new (std::nothrow) voro::PpsObject(QStringLiteral("%1/state?delta,f=error").arg(contextPath), this);
    if (!m_stateObject) {
        CRITICAL_LINE << "Unable to create pps state object, object is null.";
        return false;
    }
    connect(m_allObject, &voro::PpsObject::readyRead, this, &MmrContextNotifier::onReadyRead);
    connect(m_stateObject, &voro::PpsObject::readyRead, this, &MmrContextNotifier::onReadyRead);

    bool opened = m_allObject->open(voro::PpsOpenMode::Subscribe);
    if (opened) {
        opened = m_stateObject->open(voro::PpsOpenMode::Subscribe);
        if (!opened) {
            m_allObject->close();
            DEBUG_LINE << "Error opening the pps state object. errno=" << m_stateObject->error();
        }
    } else {
        DEBUG_LINE << "Error opening the pps all object. errno=" << m_allObject->error();
    }
    m_contextPath = contextPath;
    return opened;
}

MediaError::Type MmrContextNotifier::lastError() const
{
    TRACE_FUNCTION();
    const mmr_error_info_t *info = m_context ? mmr_error_info(m_context) : nullptr;
    return info ? static_cast<MediaError::Type>(info->error_code) : MediaError::None;
}

Attributes MmrContextNotifier::toParameterMap(const QString &file, bool *ok)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "  file=" << file;
    Attributes result;
    if (ok) {
        *ok = false;
    }
    voro::PpsObject object(QStringLiteral("%1/%2").arg(m_contextPath, file));
    object.setReadyReadEnabled(false);
    if (object.open(voro::PpsOpenMode::Subscribe)) {
        const QByteArray data = object.read(ok);
        if (!ok || *ok) {
            result = voro::PpsObject::decodeWithFlags(data, ok);
        }
        object.close();
    }
    return result;
}

// The renderer's publications

void MmrContextNotifier::onReadyRead()
{
    TRACE_FUNCTION();
    const auto object = qobject_cast<voro::PpsObject *>(sender());
    if (!object) {
        WARNING_LINE << "Signal sender was not a pps object";
        return;
    }
    bool ok = false;
    const Attributes objects = voro::PpsObject::decodeWithFlags(object->read(), &ok);
    if (!ok) {
        return;
    }
    DEBUG_LINE << objects;
    const unsigned int stateReads = m_stateReads;
    // A slot may have destroyed the context.
    for (auto entry = objects.begin(); entry != objects.end() && m_context; ++entry) {
        if (entry.key() != QLatin1String("@state")) {
            dispatch(entry.key(), *entry);
        } else if (object != m_allObject) {
            onPpsError(entry->toMap());
        } else if (m_stateReads == stateReads) {
            // Otherwise the event loop of a slot has read a newer state.
            onPpsStateChanged(entry->toMap());
        }
    }
}

void MmrContextNotifier::dispatch(const QString &key, const voro::PpsAttribute &object)
{
    if (key == QLatin1String("@input")) {
        onPpsInputParametersChanged(object.toMap());
    } else if (key == QLatin1String("@play-queue")) {
        onPpsPlayQueueChanged(object.toMap());
    } else if (key == QLatin1String("@status")) {
        onPpsStatusChanged(object.toMap());
    } else if (key == QStringLiteral("@q%1").arg(m_track)) {
        onPpsMetaDataChanged(object.toMap());
    } else if (key.startsWith(QLatin1String("@p")) && key.size() > 2 && key.at(2).isDigit()) {
        bool ok = false;
        const uint track = key.mid(2).toUInt(&ok);
        if (ok) {
            onPpsTrackParametersChanged(track, object.flags(), object.toMap());
        }
    }
}

void MmrContextNotifier::onPpsStateChanged(const Attributes &map)
{
    TRACE_FUNCTION();
    const QString state = map.value(QStringLiteral("state")).toString();
    const int speed = map.value(QStringLiteral("speed")).toInt();
    // Stored before the signal: a slot may end playback, or run an event loop that reads the next state.
    const unsigned int read = ++m_stateReads;
    if (replace(m_state, std::optional(state))) {
        reportState(tracer, state, speed, map.contains(QStringLiteral("error")));
        m_isIdle = m_state == QLatin1String("idle");
    }
    if (read == m_stateReads && replace(m_speed, std::optional(speed))) {
        logSignal(tracer, "speed", "speed", speed);
        Q_EMIT speedChanged(speed);
    }
}

void MmrContextNotifier::forgetPlaying()
{
    if (m_state == QLatin1String("playing")) {
        m_state.reset();
    }
}

void MmrContextNotifier::forgetHold()
{
    if (m_speed == s_PausedPlaybackSpeed) {
        m_speed.reset();
    }
}

void MmrContextNotifier::reportState(const FunctionTracer &tracer, const QString &state, int speed, bool hasError)
{
    if (state == QLatin1String("playing")) {
        if (speed == s_PausedPlaybackSpeed) {
            logSignal(tracer, "paused");
            Q_EMIT paused();
        } else {
            logSignal(tracer, "playing");
            Q_EMIT playing();
        }
    } else if (state == QLatin1String("stopped")) {
        // onPpsError() reports an end with an error.
        if (!hasError) {
            logSignal(tracer, "stopped");
            Q_EMIT stopped();
        }
    } else {
        m_subpictureOutputAttached = false;
        Q_EMIT idle();
    }
}

void MmrContextNotifier::onPpsError(const Attributes &map)
{
    TRACE_FUNCTION();
    if (!map.contains(QStringLiteral("error"))) {
        return;
    }
    const int code = map.value(QStringLiteral("error")).toInt();
    if (code == 0) {
        logSignal(tracer, "playbackCompleted");
        Q_EMIT playbackCompleted();
        return;
    }
    unsigned int track = 1;
    unsigned int position = 0;
    const QString errorPosition = map.value(QStringLiteral("error_pos")).toString();
    if (!decodePosition(errorPosition, track, position)) {
        WARNING_LINE << "Unable to decode error position. error_pos=" << errorPosition;
    }
    const auto mediaError = static_cast<MediaError::Type>(code);
    logSignal(tracer, "error", "error", mediaError);
    Q_EMIT error(mediaError, position, track);
}

void MmrContextNotifier::onPpsInputParametersChanged(const Attributes &map)
{
    TRACE_FUNCTION();
    DEBUG_LINE << map;
    if (map.isEmpty()) {
        m_inputParameters.clear();
        return;
    }
    const bool counted = map.size() != m_inputParameters.size();
    const bool merged = mergeParameters(map, m_inputParameters);
    if (counted || merged) {
        updateInputParameters(m_inputParameters);
    }
}

void MmrContextNotifier::onPpsTrackParametersChanged(uint track, voro::PpsAttributeFlag::Types flags,
                                                     const Attributes &map)
{
    TRACE_FUNCTION();
    DEBUG_LINE << map;
    if (flags.testFlag(voro::PpsAttributeFlag::Deleted)) {
        m_trackParameters.remove(track);
    }
    if (map.isEmpty()) {
        return;
    }
    // The number of attributes is compared with the number of tracks, not of the track's entries; this is required.
    const bool counted = map.size() != m_trackParameters.size();
    const bool merged = mergeParameters(map, m_trackParameters[track]);
    if (counted || merged) {
        updateTrackParameters(track, m_trackParameters[track]);
    }
}

void MmrContextNotifier::onPpsMetaDataChanged(const Attributes &map)
{
    TRACE_FUNCTION();
    QVariantMap metaData;
    for (auto attribute = map.begin(); attribute != map.end(); ++attribute) {
        metaData[toMetaDataKey(attribute.key())] = attribute->toVariant();
    }

    const auto duration = metaData.constFind(QLatin1String(MetaData::Duration));
    if (duration != metaData.constEnd() && replace(m_duration, duration->toUInt())) {
        logSignal(tracer, "durationChanged", "duration", m_duration);
        Q_EMIT durationChanged(m_duration);
    }
    const auto seekable = metaData.constFind(QLatin1String(MetaData::Seekable));
    if (seekable != metaData.constEnd() && replace(m_seekable, seekable->toBool())) {
        logSignal(tracer, "seekableChanged", "seekable", m_seekable);
        Q_EMIT seekableChanged(m_seekable);
    }
    const std::optional<QSize> dimensions = toVideoDimensions(metaData);
    if (dimensions && replace(m_videoDimensions, *dimensions)) {
        logSignal(tracer, "videoDimensions", "videoDimensions", m_videoDimensions);
        Q_EMIT videoDimensionsChanged(m_videoDimensions);
    }
    logSignal(tracer, "metaDataChanged", "metadata", metaData);
    Q_EMIT metaDataChanged(metaData);
}

void MmrContextNotifier::onPpsPlayQueueChanged(const Attributes &map)
{
    TRACE_FUNCTION();
    const auto current = map.constFind(QStringLiteral("current"));
    if (current != map.constEnd() && replace(m_track, current->toVariant().toUInt())) {
        const unsigned int track = m_track;
        logSignal(tracer, "trackChanged", "track", track);
        Q_EMIT trackChanged(track);
        if (m_context) {
            updateMetaData(track);
        }
    }
    const auto total = map.constFind(QStringLiteral("total"));
    if (total != map.constEnd() && replace(m_trackCount, total->toVariant().toUInt())) {
        logSignal(tracer, "trackCountChanged", "trackCount", m_trackCount);
        Q_EMIT trackCountChanged(m_trackCount);
    }
}

void MmrContextNotifier::updateMetaData(unsigned int track)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "  track=" << track;
    bool ok = false;
    const Attributes objects = toParameterMap(QStringLiteral("q%1").arg(track), &ok);
    const auto metaData = objects.constFind(QStringLiteral("@q%1").arg(track));
    if (ok && metaData != objects.constEnd()) {
        onPpsMetaDataChanged(metaData->toMap());
    }
}

} // namespace voro::multimedia
