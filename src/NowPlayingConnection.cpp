#include <multimedia/NowPlayingConnection.h>

#include <private/NowPlayingConnectionPrivate.h>
#include <private/Values.h>
#include <private/VariantSetter.h>

namespace voro::multimedia {

NowPlayingConnection::NowPlayingConnection(QObject *parent) : QObject(parent), d(new NowPlayingConnectionPrivate(this))
{
    TRACE_FUNCTION();
}

NowPlayingConnection::NowPlayingConnection(const QString &connectionName, QObject *parent)
    : QObject(parent),
      d(new NowPlayingConnectionPrivate(this))
{
    TRACE_FUNCTION();
    d->m_connectionName = connectionName;
}

NowPlayingConnection::NowPlayingConnection(const QString &connectionName, PriorityLevel::Type priorityLevel,
                                           QObject *parent)
    : QObject(parent),
      d(new NowPlayingConnectionPrivate(this))
{
    TRACE_FUNCTION();
    d->m_connectionName = connectionName;
    d->m_priorityLevel = priorityLevel;
}

NowPlayingConnection::NowPlayingConnection(const QString &connectionName, PriorityLevel::Type priorityLevel,
                                           DeviceMode::Type deviceMode, QObject *parent)
    : QObject(parent),
      d(new NowPlayingConnectionPrivate(this))
{
    TRACE_FUNCTION();
    d->m_connectionName = connectionName;
    d->m_priorityLevel = priorityLevel;
    d->m_deviceMode = deviceMode;
}

NowPlayingConnection::~NowPlayingConnection()
{
    TRACE_FUNCTION();
    d->end();
}

MediaError::Type NowPlayingConnection::acquire()
{
    TRACE_FUNCTION();
    return d->acquire();
}

MediaError::Type NowPlayingConnection::revoke()
{
    TRACE_FUNCTION();
    return d->revoke();
}

MediaError::Type NowPlayingConnection::trackChange()
{
    TRACE_FUNCTION();
    const QVariantMap message{{QStringLiteral("msg"), QStringLiteral("state")},
                              {QStringLiteral("dat"), QStringLiteral("trackchange")}};
    if (!d->m_acquired) {
        DEBUG_LINE << "Service not acquired. error=" << keyName(MediaError::InvalidState);
        return MediaError::InvalidState;
    }
    if (!d->send(d->m_control, message)) {
        DEBUG_LINE << "Unable to send PPS message. error =" << keyName(MediaError::Internal);
        return MediaError::Internal;
    }
    return MediaError::None;
}

// Setters

void NowPlayingConnection::setMetaData(const QVariantMap &metaData)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "metadata=" << metaData;
    d->m_metaData = metaData;
    Q_EMIT d->invalidate();
    d->announce(tracer, &NowPlayingConnection::metaDataChanged, "metaData", metaData);
}

void NowPlayingConnection::setIconUrl(const QUrl &iconUrl)
{
    TRACE_FUNCTION();
    const LoggedUrl logged(iconUrl, LoggedUrl::ShowRelative);
    DEBUG_LINE << "url=" << logged;
    d->m_iconUrl = iconUrl;
    logSignal(tracer, "iconUrlChanged", "iconUrl", logged);
    d->emitSignal(&NowPlayingConnection::iconUrlChanged, iconUrl);
}

void NowPlayingConnection::setDuration(unsigned int duration)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "duration=" << duration;
    d->m_duration = duration;
    Q_EMIT d->invalidate();
    d->announce(tracer, {&NowPlayingConnection::durationChanged, &NowPlayingConnection::durationChanged}, "duration",
                d->m_duration);
}

void NowPlayingConnection::setDurationQml(const QVariant &duration)
{
    TRACE_FUNCTION();
    setFromVariant(tracer, this, &NowPlayingConnection::setDuration, "duration", duration,
                   "Unable to convert variant duration. duration=");
}

void NowPlayingConnection::setPosition(unsigned int position)
{
    TRACE_FUNCTION();
    // The spelling is required.
    DEBUG_LINE << "postion=" << position;
    d->m_position = position;
    Q_EMIT d->invalidate();
    d->announce(tracer, {&NowPlayingConnection::positionChanged, &NowPlayingConnection::positionChanged}, "position",
                d->m_position);
}

void NowPlayingConnection::setPositionQml(const QVariant &position)
{
    TRACE_FUNCTION();
    setFromVariant(tracer, this, &NowPlayingConnection::setPosition, "position", position,
                   "Unable to convert variant position. position=");
}

void NowPlayingConnection::setNextEnabled(bool nextEnabled)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "nextEnabled=" << nextEnabled;
    if (!replace(d->m_nextEnabled, nextEnabled)) {
        DEBUG_LINE << "Next button is already " << (nextEnabled ? "enabled" : "disabled");
        return;
    }
    d->announce(tracer, &NowPlayingConnection::nextEnabledChanged, "nextEnabled", nextEnabled);
}

void NowPlayingConnection::setPreviousEnabled(bool previousEnabled)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "previousEnabled=" << previousEnabled;
    if (!replace(d->m_previousEnabled, previousEnabled)) {
        DEBUG_LINE << "Previous button is already " << (previousEnabled ? "enabled" : "disabled");
        return;
    }
    d->announce(tracer, &NowPlayingConnection::previousEnabledChanged, "previousEnabled", previousEnabled);
}

void NowPlayingConnection::setRepeatMode(RepeatMode::Type repeatMode)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "repeatMode=" << static_cast<int>(repeatMode);
    if (!replace(d->m_repeatMode, repeatMode)) {
        DEBUG_LINE << "Ignoring setting the same repeat mode. repeatMode=" << static_cast<int>(repeatMode);
        return;
    }
    Q_EMIT d->invalidate();
    d->announce(tracer, &NowPlayingConnection::repeatModeChanged, "repeatMode", repeatMode);
}

void NowPlayingConnection::setShuffleMode(ShuffleMode::Type shuffleMode)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "shuffleMode=" << static_cast<int>(shuffleMode);
    if (!replace(d->m_shuffleMode, shuffleMode)) {
        // The text of the repeat mode; this is required.
        DEBUG_LINE << "Ignoring setting the same repeat mode. shuffleMode=" << static_cast<int>(shuffleMode);
        return;
    }
    Q_EMIT d->invalidate();
    d->announce(tracer, &NowPlayingConnection::shuffleModeChanged, "shuffleMode", shuffleMode);
}

void NowPlayingConnection::setMediaState(MediaState::Type mediaState)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "state=" << static_cast<int>(mediaState);
    d->m_mediaState = mediaState;
    if (d->m_acquired) {
        d->sendMediaState(mediaState);
    }
    d->announce(tracer, &NowPlayingConnection::mediaStateChanged, "mediaState", mediaState);
}

void NowPlayingConnection::setOverlayStyle(OverlayStyle::Type overlayStyle)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "overlayStyle=" << static_cast<int>(overlayStyle);
    if (!replace(d->m_overlayStyle, overlayStyle)) {
        return;
    }
    d->updateRegistration();
    d->announce(tracer, &NowPlayingConnection::overlayStyleChanged, "overlayStyle", overlayStyle);
}

void NowPlayingConnection::setAudioManagerHandle(unsigned int audioManagerHandle)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "audioManagerHandle=" << audioManagerHandle;
    if (!replace(d->m_audioManagerHandle, audioManagerHandle)) {
        DEBUG_LINE << "Attempting to set same audio manager handle.";
        return;
    }
    d->updateRegistration();
    d->announce(tracer,
                {&NowPlayingConnection::audioManagerHandleChanged, &NowPlayingConnection::audioManagerHandleChanged},
                "audioManagerHandle", audioManagerHandle);
}

void NowPlayingConnection::setAudioManagerHandleQml(const QVariant &handle)
{
    TRACE_FUNCTION();
    setFromVariant(tracer, this, &NowPlayingConnection::setAudioManagerHandle, "handle", handle,
                   "Unable to convert variant handle.");
}

void NowPlayingConnection::setPreemptable(bool preemptable)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "preemptable=" << preemptable;
    if (d->m_registered) {
        WARNING_LINE << "Attempting to set preemptable after creation.";
        return;
    }
    if (preemptable == isPreemptable()) {
        // The spelling is required.
        DEBUG_LINE << "This connection is already " << (preemptable ? "" : "not") << " preemtable";
        return;
    }
    setPriorityLevel(preemptable ? PriorityLevel::Low : PriorityLevel::High);
    d->announce(tracer, &NowPlayingConnection::preemptableChanged, "preemptable", preemptable);
}

void NowPlayingConnection::setPriorityLevel(PriorityLevel::Type priorityLevel)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "priority level=" << static_cast<int>(priorityLevel);
    d->m_priorityLevel = priorityLevel;
}

void NowPlayingConnection::setConnectionName(const QString &connectionName)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "connectionName=" << connectionName;
    d->m_connectionName = connectionName;
}

void NowPlayingConnection::setDeviceMode(DeviceMode::Type deviceMode)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "deviceMode=" << static_cast<int>(deviceMode);
    d->m_deviceMode = deviceMode;
}

// Getters

bool NowPlayingConnection::isAcquired() const
{
    TRACE_FUNCTION();
    return d->m_acquired;
}

unsigned int NowPlayingConnection::audioManagerHandle() const
{
    TRACE_FUNCTION();
    return d->m_audioManagerHandle;
}

QVariant NowPlayingConnection::audioManagerHandleQml() const
{
    TRACE_FUNCTION();
    return audioManagerHandle();
}

QString NowPlayingConnection::connectionName() const
{
    TRACE_FUNCTION();
    return d->m_connectionName;
}

bool NowPlayingConnection::isControllerActive() const
{
    TRACE_FUNCTION();
    return d->m_controllerActive;
}

DeviceMode::Type NowPlayingConnection::deviceMode() const
{
    TRACE_FUNCTION();
    return d->m_deviceMode;
}

unsigned int NowPlayingConnection::duration() const
{
    TRACE_FUNCTION();
    return d->m_duration;
}

QVariant NowPlayingConnection::durationQml() const
{
    TRACE_FUNCTION();
    return duration();
}

QUrl NowPlayingConnection::iconUrl() const
{
    TRACE_FUNCTION();
    return d->m_iconUrl;
}

QString NowPlayingConnection::lastRevokingConnectionName() const
{
    TRACE_FUNCTION();
    return d->m_lastRevokingConnectionName;
}

unsigned int NowPlayingConnection::lastRevokingConnectionPid() const
{
    TRACE_FUNCTION();
    return d->m_lastRevokingConnectionPid;
}

QVariant NowPlayingConnection::lastRevokingConnectionPidQml() const
{
    TRACE_FUNCTION();
    return lastRevokingConnectionPid();
}

MediaState::Type NowPlayingConnection::mediaState() const
{
    TRACE_FUNCTION();
    return d->m_mediaState;
}

QVariantMap NowPlayingConnection::metaData() const
{
    TRACE_FUNCTION();
    return d->m_metaData;
}

bool NowPlayingConnection::isNextEnabled() const
{
    TRACE_FUNCTION();
    return d->m_nextEnabled;
}

OverlayStyle::Type NowPlayingConnection::overlayStyle() const
{
    TRACE_FUNCTION();
    return d->m_overlayStyle;
}

unsigned int NowPlayingConnection::position() const
{
    TRACE_FUNCTION();
    return d->m_position;
}

QVariant NowPlayingConnection::positionQml() const
{
    TRACE_FUNCTION();
    return position();
}

bool NowPlayingConnection::isPreemptable() const
{
    TRACE_FUNCTION();
    return d->m_priorityLevel == PriorityLevel::Low;
}

bool NowPlayingConnection::isPreempted() const
{
    TRACE_FUNCTION();
    return d->isPreempted();
}

bool NowPlayingConnection::isPreviousEnabled() const
{
    TRACE_FUNCTION();
    return d->m_previousEnabled;
}

PriorityLevel::Type NowPlayingConnection::priorityLevel() const
{
    TRACE_FUNCTION();
    return d->m_priorityLevel;
}

RepeatMode::Type NowPlayingConnection::repeatMode() const
{
    TRACE_FUNCTION();
    return d->m_repeatMode;
}

ShuffleMode::Type NowPlayingConnection::shuffleMode() const
{
    TRACE_FUNCTION();
    return d->m_shuffleMode;
}

} // namespace voro::multimedia
