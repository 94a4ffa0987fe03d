#include <multimedia/MetaData.h>
#include <voro/PpsObject.h>
#include <voro/UIToolkitSupport.h>

#include <QtCore/QFile>

#include <private/Delivery.h>
#include <private/Failures.h>
#include <private/LocalPath.h>
#include <private/MediaPlayerService.h>
#include <private/MediaUtils.h>
#include <private/ModeNames.h>
#include <private/NowPlayingConnectionPrivate.h>
#include <private/Values.h>

namespace voro::multimedia {

namespace {

const QString ControlName = QStringLiteral("@control");
const QString StatusName = QStringLiteral("@status");

/** Makes an object's reads block and disables its readyRead(), for the lifetime of this. */
class BlockingReads {
public:
    explicit BlockingReads(voro::PpsObject &object)
        : m_object(object),
          m_wasReadyReadEnabled(object.isReadyReadEnabled()),
          m_wasBlocking(object.isBlocking())
    {
        m_object.setReadyReadEnabled(false);
        m_object.setBlocking(true);
    }
    ~BlockingReads()
    {
        m_object.setBlocking(m_wasBlocking);
        m_object.setReadyReadEnabled(m_wasReadyReadEnabled);
    }
    Q_DISABLE_COPY_MOVE(BlockingReads)

private:
    voro::PpsObject &m_object;
    const bool m_wasReadyReadEnabled;
    const bool m_wasBlocking;
};

/** A command that the service forwards, and its signal. */
struct ForwardedCommand {
    const char *data;
    void (NowPlayingConnection::*signal)();
};

constexpr ForwardedCommand ForwardedCommands[] = {
    {"next", &NowPlayingConnection::next},     {"prev", &NowPlayingConnection::previous},
    {"play", &NowPlayingConnection::play},     {"pause", &NowPlayingConnection::pause},
    {"stop", &NowPlayingConnection::stop},     {"forward", &NowPlayingConnection::forward},
    {"rewind", &NowPlayingConnection::rewind},
};

} // namespace

NowPlayingConnectionPrivate::NowPlayingConnectionPrivate(NowPlayingConnection *connection)
    : PrivateObject(connection),
      m_control(new voro::PpsObject(MediaPlayerControl, this)),
      m_connectionName(QStringLiteral("NPC:%1").arg(MediaUtils::instance()->generateUniqueId()))
{
    TRACE_FUNCTION();
    connect(m_control, &voro::PpsObject::readyRead, this, &NowPlayingConnectionPrivate::onReceivedPPSData);
    // Queued: a setter itself publishes nothing.
    connect(
        this, &NowPlayingConnectionPrivate::invalidate, this, [this] { onInvalidate(); }, Qt::QueuedConnection);
}

void NowPlayingConnectionPrivate::end()
{
    TRACE_FUNCTION();
    if (becomeOrphan() && m_control->isOpen()) {
        m_control->close();
    }
}

// The role

MediaError::Type NowPlayingConnectionPrivate::acquire()
{
    TRACE_FUNCTION();
    const QVariantMap message{{QStringLiteral("msg"), QStringLiteral("acquire")},
                              {QStringLiteral("id"), m_connectionName}};
    if (m_acquired) {
        DEBUG_LINE << "Service already acquired";
        return MediaError::InvalidState;
    }
    if (!m_control->isOpen() && !m_control->open(voro::PpsOpenMode::PublishSubscribe)) {
        return refuse(tracer, MediaError::Internal, "Unable to open PPS object. errno=", m_control->error());
    }
    if (!registration(m_connectionName, m_priorityLevel, m_overlayStyle, m_audioManagerHandle, m_deviceMode)) {
        return refuse(tracer, MediaError::Internal, "Unable to set registration data.");
    }
    bool ok = false;
    const QVariantMap answer = sendReceive(m_control, message, ok);
    if (!ok) {
        return refuse(tracer, MediaError::Internal, "Unable to send acquire message.");
    }
    if (const auto error = handleAcquireResult(answer)) {
        return refuse(tracer, error, "Error trying to acquire the service. error=");
    }
    return MediaError::None;
}

MediaError::Type NowPlayingConnectionPrivate::revoke()
{
    TRACE_FUNCTION();
    MediaError::Type error = MediaError::None;
    // Closing the object gives up the role.
    if (m_acquired && m_control->isOpen()) {
        if (!m_control->close()) {
            error = refuse(tracer, MediaError::Internal, "Unable to close pps object. errno=", m_control->error());
        }
        announce(tracer, &NowPlayingConnection::revoked);
    }
    m_acquired = false;
    return error;
}

bool NowPlayingConnectionPrivate::isPreempted() const
{
    TRACE_FUNCTION();
    voro::PpsObject object{QString(MediaPlayerStatus)};
    if (!m_acquired || !object.open(voro::PpsOpenMode::Subscribe)) {
        return false;
    }
    bool ok = false;
    const QByteArray data = object.read(&ok);
    const QVariantMap map = ok ? voro::PpsObject::decode(data, &ok) : QVariantMap();
    object.close();
    if (!ok || !map.contains(StatusName)) {
        return false;
    }
    const QVariantMap status = map.value(StatusName).toMap();
    const auto activeName = status.find(QStringLiteral("active_name"));
    return activeName != status.end() && activeName->toString() != m_connectionName;
}

bool NowPlayingConnectionPrivate::registration(const QString &name, PriorityLevel::Type priorityLevel,
                                               OverlayStyle::Type overlayStyle, unsigned int audioManagerHandle,
                                               DeviceMode::Type deviceMode)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "overlayStyle=" << keyName(overlayStyle) << ", connectionName=" << name
               << ", priority level=" << keyName(priorityLevel) << ", audioManagerHandle=" << audioManagerHandle
               << ", deviceMode=" << keyName(deviceMode);
    QVariantMap data;
    data[QStringLiteral("name")] = name;
    data[QStringLiteral("prio")] = toString(priorityLevel);
    data[QStringLiteral("audio")] = QStringLiteral("general");
    data[QStringLiteral("overlay")] = toString(overlayStyle);
    if (audioManagerHandle != 0) {
        data[QStringLiteral("audioman_handle")] = audioManagerHandle;
    }
    if (deviceMode == DeviceMode::Capture) {
        data[QStringLiteral("recorder")] = true;
    }
    m_registered = true;
    return send(m_control, {{QStringLiteral("msg"), QStringLiteral("register")}, {QStringLiteral("dat"), data}});
}

void NowPlayingConnectionPrivate::updateRegistration()
{
    if (m_control->isOpen()) {
        registration(m_connectionName, m_priorityLevel, m_overlayStyle, m_audioManagerHandle, m_deviceMode);
    }
}

MediaError::Type NowPlayingConnectionPrivate::handleAcquireResult(const QVariantMap &map)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "map=" << map;
    if (!map.contains(ControlName)) {
        return MediaError::InvalidParameter;
    }
    const QVariantMap control = map.value(ControlName).toMap();
    if (control.value(QStringLiteral("res")).toString() != QLatin1String("acquire")) {
        return MediaError::InvalidParameter;
    }
    const auto refusal = control.find(QStringLiteral("err"));
    if (refusal != control.end() && refusal->toString() == QLatin1String("revoked")) {
        DEBUG_LINE << "REVOKED";
        m_acquired = false;
        return refuse(tracer, MediaError::ResourceUnavailable, "Service is unavailable");
    }
    if (refusal != control.end()) {
        return refuse(tracer, MediaError::Internal, "Unknown acquire error. err=", refusal->toString());
    }
    DEBUG_LINE << "ACQUIRED";
    m_acquired = true;
    if (!sendMediaState(m_mediaState)) {
        WARNING_LINE << "Unable to send initial meta data.";
    }
    announce(tracer, &NowPlayingConnection::acquired);
    return MediaError::None;
}

// Messages to the service

bool NowPlayingConnectionPrivate::send(const voro::PpsObject *object, const QVariantMap &message)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "msg=" << message;
    if (!object || !object->isOpen()) {
        return false;
    }
    return deliver(tracer, *m_control, message,
                   {"Error encoding message for PPS. errno=", "Error writing message to PPS. errno="})
           != Delivery::NotEncoded;
}

QVariantMap NowPlayingConnectionPrivate::sendReceive(voro::PpsObject *object, const QVariantMap &message, bool &ok)
{
    TRACE_FUNCTION();
    ok = false;
    if (!object) {
        WARNING_LINE << "PPS object is null";
        return {};
    }
    QVariantMap answer;
    const BlockingReads blockingReads(*object);
    ok = send(object, message);
    while (ok) {
        const QByteArray data = object->read(&ok);
        if (!ok) {
            break;
        }
        answer = voro::PpsObject::decode(data, &ok);
        if (!ok || !answer.contains(ControlName)) {
            break;
        }
        const QVariantMap control = answer.value(ControlName).toMap();
        if (control.contains(QStringLiteral("res"))) {
            break;
        }
        handleControlMessage(control);
    }
    return answer;
}

bool NowPlayingConnectionPrivate::sendMediaState(MediaState::Type mediaState)
{
    TRACE_FUNCTION();
    return send(m_control,
                {{QStringLiteral("msg"), QStringLiteral("state")}, {QStringLiteral("dat"), toString(mediaState)}});
}

bool NowPlayingConnectionPrivate::sendMetaData(const QVariantMap &metaData)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "metadata=" << metaData;
    const QString repeatModeKey = QStringLiteral("repeat_mode");
    const QString shuffleModeKey = QStringLiteral("shuffle_mode");
    const auto trackKey = QLatin1String(MetaData::Track);
    const auto titleKey = QLatin1String(MetaData::Title);

    const QString path = voro::UIToolkitSupport::absolutePathFromUrl(m_iconUrl);
    QVariantMap data = metaData;
    data[QLatin1String(MetaData::Duration)] = m_duration;
    data[QStringLiteral("position")] = m_position;
    data[QStringLiteral("nextEnabled")] = m_nextEnabled;
    data[QStringLiteral("prevEnabled")] = m_previousEnabled;
    data.remove(repeatModeKey);
    if (m_repeatMode != RepeatMode::Unsupported) {
        data[repeatModeKey] = toString(m_repeatMode);
    }
    data.remove(shuffleModeKey);
    if (m_shuffleMode != ShuffleMode::Unsupported) {
        data[shuffleModeKey] = toString(m_shuffleMode);
    }
    if (!path.isEmpty()) {
        data[QStringLiteral("albumArtwork")] =
            QFile::exists(toLocalPath(m_iconUrl)) ? QStringLiteral("file://%1").arg(path) : m_iconUrl.toString();
    }
    // The service's "track" carries the title, so the number moves first.
    if (data.contains(trackKey)) {
        data[QStringLiteral("track_number")] = data.value(trackKey).toString();
    }
    if (data.contains(titleKey)) {
        data[trackKey] = data.value(titleKey).toString();
    }
    return send(m_control, {{QStringLiteral("msg"), QStringLiteral("metadata")}, {QStringLiteral("dat"), data}});
}

void NowPlayingConnectionPrivate::onInvalidate(bool force)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "force=" << force;
    if (!force && !(m_acquired && m_controllerActive)) {
        DEBUG_LINE << "Not sending data. acquired=" << m_acquired << ", send=" << m_controllerActive;
        return;
    }
    sendMetaData(m_metaData);
}

// Messages from the service

void NowPlayingConnectionPrivate::onReceivedPPSData()
{
    TRACE_FUNCTION();
    bool ok = false;
    const QByteArray data = m_control->read(&ok);
    if (!ok) {
        return;
    }
    const QVariantMap map = voro::PpsObject::decode(data, &ok);
    if (ok && map.contains(ControlName)) {
        handleControlMessage(map.value(ControlName).toMap());
    }
}

void NowPlayingConnectionPrivate::handleControlMessage(const QVariantMap &control)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "control=" << control;
    const QString message = control.value(QStringLiteral("msg")).toString();
    if (message == QLatin1String("revoke")) {
        handleRevoke(tracer, control);
    } else if (message == QLatin1String("track")) {
        handleTrackMessage(tracer, control.value(QStringLiteral("dat")));
    } else {
        DEBUG_LINE << "Unknown message. msg=" << message;
    }
}

void NowPlayingConnectionPrivate::handleRevoke(const FunctionTracer &tracer, const QVariantMap &control)
{
    if (!replace(m_acquired, false)) {
        return;
    }
    const auto data = control.find(QStringLiteral("dat"));
    const QVariantMap by = data == control.end() ? QVariantMap() : data->toMap();
    m_lastRevokingConnectionPid = by.value(QStringLiteral("pid")).toUInt();
    m_lastRevokingConnectionName = by.value(QStringLiteral("name")).toString();
    if (data != control.end()) {
        DEBUG_LINE << "REVOKED";
        DEBUG_LINE << "  by: pid=" << m_lastRevokingConnectionPid << ", name=" << m_lastRevokingConnectionName;
    }
    announce(tracer, &NowPlayingConnection::revoked);
}

void NowPlayingConnectionPrivate::handleTrackMessage(const FunctionTracer &tracer, const QVariant &data)
{
    // A map converts to an empty text, which is no command.
    const QString text = data.toString();
    if (text == QLatin1String("sendData")) {
        DEBUG_LINE << "SEND metadata";
        setControllerActive(tracer, true);
        Q_EMIT invalidate();
        return;
    }
    if (text == QLatin1String("holdData")) {
        DEBUG_LINE << "HOLD metadata";
        setControllerActive(tracer, false);
        return;
    }
    for (const ForwardedCommand &command : ForwardedCommands) {
        if (text != QLatin1String(command.data)) {
            continue;
        }
        announce(tracer, command.signal);
        return;
    }
    const QVariantMap map = data.toMap();
    const QString name = map.value(QStringLiteral("command")).toString();
    if (name == QLatin1String("repeat")) {
        requestRepeat(tracer, map);
    } else if (name == QLatin1String("shuffle")) {
        requestShuffle(tracer, map);
    } else {
        DEBUG_LINE << "Unknown message data. dat=" << data;
    }
}

void NowPlayingConnectionPrivate::setControllerActive(const FunctionTracer &tracer, bool controllerActive)
{
    if (!replace(m_controllerActive, controllerActive)) {
        return;
    }
    announce(tracer, &NowPlayingConnection::controllerActiveChanged, "controllerActive", controllerActive);
}

void NowPlayingConnectionPrivate::requestRepeat(const FunctionTracer &tracer, const QVariantMap &command)
{
    const auto value = command.find(QStringLiteral("value"));
    if (value == command.end()) {
        announce(tracer, &NowPlayingConnection::repeat);
        return;
    }
    bool ok = false;
    const RepeatMode::Type repeatMode = toRepeatMode(value->toString(), &ok);
    if (!ok) {
        WARNING_LINE << "Ignored unknown repeat command. value=" << value->toString();
        return;
    }
    logSignal(tracer, "repeat", "repeatMode", repeatMode);
    emitSignal(&NowPlayingConnection::repeatRequest, repeatMode);
}

void NowPlayingConnectionPrivate::requestShuffle(const FunctionTracer &tracer, const QVariantMap &command)
{
    const auto value = command.find(QStringLiteral("value"));
    if (value == command.end()) {
        announce(tracer, &NowPlayingConnection::shuffle);
        return;
    }
    bool ok = false;
    const ShuffleMode::Type shuffleMode = toShuffleMode(value->toString(), &ok);
    if (!ok) {
        // The text of the repeat command; this is required.
        WARNING_LINE << "Ignored unknown repeat command. value=" << value->toString();
        return;
    }
    logSignal(tracer, "shuffle", "shuffleMode", shuffleMode);
    emitSignal(&NowPlayingConnection::shuffleRequest, shuffleMode);
}

// The service's spelling

QString NowPlayingConnectionPrivate::toString(MediaState::Type state)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "state=" << keyName(state);
    switch (state) {
    case MediaState::Started:
        return QStringLiteral("playing");
    case MediaState::Paused:
        return QStringLiteral("paused");
    default:
        return QStringLiteral("stopped");
    }
}

QString NowPlayingConnectionPrivate::toString(OverlayStyle::Type overlayStyle)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "overlayStyle=" << keyName(overlayStyle);
    return overlayStyle == OverlayStyle::Fancy ? QStringLiteral("fancy") : QStringLiteral("plain");
}

QString NowPlayingConnectionPrivate::toString(PriorityLevel::Type priorityLevel)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "priority level=" << keyName(priorityLevel);
    return priorityLevel == PriorityLevel::High ? QStringLiteral("high") : QStringLiteral("low");
}

QString NowPlayingConnectionPrivate::toString(RepeatMode::Type repeatMode)
{
    TRACE_FUNCTION();
    return modeName(tracer, repeatMode);
}

QString NowPlayingConnectionPrivate::toString(ShuffleMode::Type shuffleMode)
{
    TRACE_FUNCTION();
    return modeName(tracer, shuffleMode);
}

RepeatMode::Type NowPlayingConnectionPrivate::toRepeatMode(const QString &text, bool *ok)
{
    TRACE_FUNCTION();
    return repeatModeFrom(tracer, text, ok);
}

ShuffleMode::Type NowPlayingConnectionPrivate::toShuffleMode(const QString &text, bool *ok)
{
    TRACE_FUNCTION();
    return shuffleModeFrom(tracer, text, ok);
}

} // namespace voro::multimedia
