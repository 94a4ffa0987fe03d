#pragma once

#include <multimedia/BufferStatus.h>
#include <multimedia/MediaError.h>
#include <voro/mmr.h>
#include <voro/PpsAttribute.h>

#include <QtCore/QMap>
#include <QtCore/QObject>
#include <QtCore/QSize>
#include <QtCore/QVariant>

#include <optional>

namespace voro {
class PpsObject;
}

namespace voro::multimedia {

class FunctionTracer;

/**
 * Watches one renderer context through the PPS objects of its folder and turns changes into signals. It also carries
 * the renderer commands that depend on its caches. It owns no context.
 *
 * Positions and durations are milliseconds, tracks count from 1, speeds are thousandths of normal speed.
 */
class MmrContextNotifier : public QObject {
    Q_OBJECT
public:
    static constexpr int s_NormalPlaybackSpeed = 1000;
    static constexpr int s_PausedPlaybackSpeed = 0;

    /** Watches nothing until monitor(). */
    explicit MmrContextNotifier(QObject *parent);
    ~MmrContextNotifier() override;

    /**
     * Watches another context, or none for null. False when its objects cannot be watched. The caches of an earlier
     * context stay.
     */
    bool monitor(mmr_context_t *context);
    /** The code in the context's error record; `None` without a context or record. */
    MediaError::Type lastError() const;

    /** A command has ended playback: the next state `playing` is reported again. */
    void forgetPlaying();
    /** A command has ended a pause: the next speed of 0 is reported again. */
    void forgetHold();

    /** Attaches an input with the parameters of its first track. The caller logs a failure. */
    MediaError::Type attachInput(const QString &url, const QString &type);
    /** Attaches an output and stores its id unless `outputId` is null. */
    MediaError::Type attachOutput(const QString &url, const QString &type, int *outputId);
    /** Sends the track's parameters, if any, and seeks. */
    MediaError::Type seek(unsigned int track, unsigned int position);
    /** Sets one input parameter in addition to earlier ones. */
    MediaError::Type updateInputParameter(const QString &name, const QString &value);
    /** Sends a whole set of input parameters without caching it. */
    MediaError::Type updateInputParameters(const QVariantMap &parameters);
    /** Sets one track parameter in addition to earlier ones. While the renderer is idle it is only cached. */
    MediaError::Type updateTrackParameter(unsigned int track, const QString &name, const QString &value);
    /** Sends a whole set of track parameters without caching it. Track 0 means the defaults of the next input. */
    MediaError::Type updateTrackParameters(unsigned int track, const QVariantMap &parameters);
    /** The parameters of a track, as set or as reported by the renderer. */
    QVariantMap trackParameters(unsigned int track) const;

    /** Reads an object of the context's folder once; `ok` may be null. */
    QMap<QString, voro::PpsAttribute> toParameterMap(const QString &file, bool *ok);
    /** Makes a stream dictionary of a map's texts without the empty ones. */
    MediaError::Type createDictionaryFromMap(const QVariantMap &map, strm_dict_t **dictionary);
    /** Reads "POSITION" (of track 1) or "TRACK:POSITION". */
    bool decodePosition(const QString &data, unsigned int &track, unsigned int &position);
    /** Reads "LEVEL/MAXIMUM". */
    bool decodeLevel(const QString &data, unsigned int &level, unsigned int &maximum);
    /** Reads a buffer status word; `ok` may be null and becomes false for any other word. */
    BufferStatus::Type toBufferStatus(const QString &status, bool *ok);

Q_SIGNALS:
    void buffering(double percentage);
    void bufferStatusChanged(voro::multimedia::BufferStatus::Type bufferStatus);
    void durationChanged(uint duration);
    void error(voro::multimedia::MediaError::Type error, uint position, uint track);
    void idle();
    void metaDataChanged(const QVariantMap &metaData);
    void paused();
    void playbackCompleted();
    void playing();
    void positionChanged(uint position);
    void seekableChanged(bool seekable);
    void speedChanged(int speed);
    void stopped();
    void trackChanged(uint track);
    void trackCountChanged(uint trackCount);
    void videoDimensionsChanged(const QSize &videoDimensions);
    void volumeLevelChanged(double percentage);

private Q_SLOTS:
    void onReadyRead();
    void onPpsError(const QMap<QString, voro::PpsAttribute> &map);
    void onPpsInputParametersChanged(const QMap<QString, voro::PpsAttribute> &map);
    void onPpsMetaDataChanged(const QMap<QString, voro::PpsAttribute> &map);
    void onPpsPlayQueueChanged(const QMap<QString, voro::PpsAttribute> &map);
    void onPpsStateChanged(const QMap<QString, voro::PpsAttribute> &map);
    void onPpsStatusChanged(const QMap<QString, voro::PpsAttribute> &map);
    void onPpsTrackParametersChanged(uint track, voro::PpsAttributeFlag::Types flags,
                                     const QMap<QString, voro::PpsAttribute> &map);

private:
    void updateMetaData(unsigned int track);

    void drop(voro::PpsObject *&object);
    void dispatch(const QString &key, const voro::PpsAttribute &object);
    void reportState(const FunctionTracer &tracer, const QString &state, int speed, bool hasError);
    void reportPosition(const FunctionTracer &tracer, const QString &text);
    void reportBufferStatus(const FunctionTracer &tracer, const QString &text);
    std::optional<double> changedLevel(const FunctionTracer &tracer, const char *name, const char *attribute,
                                       const QString &text, double &stored);
    MediaError::Type sendInputParameters(const FunctionTracer &tracer, const QVariantMap &parameters);

    mmr_context_t *m_context = nullptr;
    voro::PpsObject *m_allObject = nullptr;
    voro::PpsObject *m_stateObject = nullptr;
    QString m_contextPath;
    QVariantMap m_inputParameters;
    bool m_subpictureOutputAttached = false;
    bool m_seekable = false;
    BufferStatus::Type m_bufferStatus = BufferStatus::Idle;
    unsigned int m_duration = 0;
    unsigned int m_position = 0;
    QSize m_videoDimensions = QSize(0, 0);
    unsigned int m_track = 1;
    unsigned int m_trackCount = 0;
    QMap<unsigned int, QVariantMap> m_trackParameters;
    /** Empty after forgetHold(). */
    std::optional<int> m_speed = s_NormalPlaybackSpeed;
    /** Empty after forgetPlaying(). */
    std::optional<QString> m_state = QString();
    /** Whether the renderer is idle. Set after the slots of idle(). */
    bool m_isIdle = false;
    /** The number of states read. */
    unsigned int m_stateReads = 0;
    // Before clamping.
    double m_bufferLevel = 0.0;
    double m_volumeLevel = 0.0;
};

} // namespace voro::multimedia
