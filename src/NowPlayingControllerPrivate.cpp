#include <multimedia/MetaData.h>
#include <voro/PpsObject.h>

#include <QtCore/QMetaMethod>

#include <private/ControllerNames.h>
#include <private/Delivery.h>
#include <private/ModeNames.h>
#include <private/NowPlayingControllerPrivate.h>

#include <algorithm>

namespace voro::multimedia {

namespace {

constexpr QLatin1String ControllerObject("@control");

bool isMetaData(const QString &key)
{
    const auto keys = {MetaData::Artist, MetaData::Album, MetaData::Title, MetaData::Track};
    return std::any_of(keys.begin(), keys.end(), [&key](const char *known) { return key == QLatin1String(known); });
}

/** The metadata entries of a converted update. */
QVariantMap metaDataOf(const QVariantMap &update)
{
    QVariantMap metaData;
    for (auto entry = update.cbegin(); entry != update.cend(); ++entry) {
        if (isMetaData(entry.key())) {
            metaData.insert(entry.key(), entry.value());
        }
    }
    return metaData;
}

/** Removes from an update the fields that a newer one has. The metadata count as one field. */
void removeOutdated(QVariantMap &update, const QVariantMap &newer)
{
    const bool hasMetaData = !metaDataOf(newer).isEmpty();
    update.removeIf([&](const QVariantMap::iterator &entry) {
        return newer.contains(entry.key()) || (hasMetaData && isMetaData(entry.key()));
    });
}

/** Converts an update of the service to the library's names and types. */
QVariantMap converted(const FunctionTracer &tracer, const QVariantMap &update)
{
    QVariantMap result;
    const auto convert = [&](QLatin1String field, const char *key, auto toValue) {
        const auto found = update.find(field);
        if (found == update.end()) {
            return;
        }
        const QVariant value = toValue(found.value());
        DEBUG_LINE << "metadata '" << key << "':" << value;
        result.insert(QLatin1String(key), value);
    };
    const auto same = [](const QVariant &value) { return value; };
    const auto toBool = [](const QVariant &value) { return QVariant(value.toString() == QLatin1String("true")); };
    const auto toRepeat = [](const QVariant &value) {
        return QVariant(static_cast<int>(NowPlayingControllerPrivate::toRepeatMode(value.toString())));
    };
    const auto toShuffle = [](const QVariant &value) {
        return QVariant(static_cast<int>(NowPlayingControllerPrivate::toShuffleMode(value.toString())));
    };
    convert(PROPERTY_ARTIST, MetaData::Artist, same);
    convert(PROPERTY_ALBUM, MetaData::Album, same);
    convert(PROPERTY_TRACK, MetaData::Title, same);
    convert(PROPERTY_TRACK_NUMBER, MetaData::Track, same);
    convert(PROPERTY_NEXTENABLED, PROPERTY_NEXTENABLED.data(), toBool);
    convert(PROPERTY_PREVENABLED, PROPERTY_PREVENABLED.data(), toBool);
    convert(PROPERTY_REPEATMODE, PROPERTY_REPEATMODE.data(), toRepeat);
    convert(PROPERTY_SHUFFLEMODE, PROPERTY_SHUFFLEMODE.data(), toShuffle);
    for (const QLatin1String field : {PROPERTY_POSITION, PROPERTY_DURATION, PROPERTY_ARTWORK}) {
        const auto found = update.find(field);
        if (found != update.end()) {
            result.insert(field, found.value());
        }
    }
    return result;
}

/** Waits for the next message of the service and retries failed reads. */
QVariantMap nextMessage(const FunctionTracer &tracer, voro::PpsObject &object)
{
    for (;;) {
        DEBUG_LINE << "waiting for the blocking PPS read.";
        bool ok = false;
        const QByteArray data = object.read(&ok);
        if (!ok) {
            WARNING_LINE << "Error reading PPS = " << object.error() << " (" << object.errorString();
            continue;
        }
        const QVariantMap map = voro::PpsObject::decode(data, &ok);
        if (!ok) {
            WARNING_LINE << "Error decoding PPS message = " << object.error() << " (" << object.errorString();
            continue;
        }
        if (map.contains(ControllerObject)) {
            return map.value(ControllerObject).toMap();
        }
    }
}

/** Copies the requested fields from the messages so far; false while some are missing. */
bool takeFields(const FunctionTracer &tracer, const QStringList &fields, const QVariantMap &received,
                QVariantMap &result)
{
    if (fields.contains(PROPERTY_STATE) && received.contains(PROPERTY_STATE)) {
        result.insert(PROPERTY_STATE, received.value(PROPERTY_STATE));
        return true;
    }
    if (!received.contains(MSG_UPDATE)) {
        return false;
    }
    const QVariantMap update = received.value(MSG_UPDATE).toMap();
    if (fields.contains(PROPERTY_ALLMETADATA)) {
        result.insert(PROPERTY_ALLMETADATA, metaDataOf(update));
        return true;
    }
    if (!std::all_of(fields.begin(), fields.end(), [&](const QString &field) { return update.contains(field); })) {
        DEBUG_LINE << "Missing requested field. Continue.";
        return false;
    }
    DEBUG_LINE << "Field found - exiting.";
    for (const QString &field : fields) {
        result.insert(field, update.value(field));
    }
    return true;
}

} // namespace

NowPlayingControllerPrivate::NowPlayingControllerPrivate(NowPlayingController *controller)
    : PrivateObject(controller),
      m_metaData{{QLatin1String(MetaData::Artist), QString()},
                 {QLatin1String(MetaData::Album), QString()},
                 {QLatin1String(MetaData::Title), QString()}},
      m_control(new voro::PpsObject(PPS_CONTROLLER_PATHNAME, this))
{
    TRACE_FUNCTION();
    connect(m_control, &voro::PpsObject::readyRead, this, &NowPlayingControllerPrivate::onReceivedMetaData);
}

void NowPlayingControllerPrivate::end()
{
    TRACE_FUNCTION();
    if (becomeOrphan() && m_control->isOpen()) {
        m_control->close();
    }
}

// Commands

MediaError::Type NowPlayingControllerPrivate::command(const QString &text) const
{
    TRACE_FUNCTION();
    return voro::PpsObject::sendMessage(PPS_CONTROLLER_PATHNAME, text) == 0 ? MediaError::None : MediaError::Write;
}

MediaError::Type NowPlayingControllerPrivate::modeCommand(const char *subCommand) const
{
    TRACE_FUNCTION();
    return command(QStringLiteral("msg::%1\ndat:json:{\"command\":\"%2\"}")
                       .arg(QLatin1String(COMMAND_GENERIC), QLatin1String(subCommand)));
}

MediaError::Type NowPlayingControllerPrivate::modeCommand(const char *subCommand, const QString &mode) const
{
    TRACE_FUNCTION();
    return command(QStringLiteral("msg::%1\ndat:json:{\"command\":\"%2\", \"value\":\"%3\"}")
                       .arg(QLatin1String(COMMAND_GENERIC), QLatin1String(subCommand), mode));
}

bool NowPlayingControllerPrivate::send(voro::PpsObject *object, const QVariantMap &message) const
{
    TRACE_FUNCTION();
    DEBUG_LINE << "msg=" << message;
    if (!object->isOpen()) {
        WARNING_LINE << "PPS is not open.";
        return false;
    }
    return deliver(tracer, *object, message,
                   {"Error encoding message for PPS. errno=", "Error writing message to PPS. errno="})
           == Delivery::Written;
}

QString NowPlayingControllerPrivate::toString(RepeatMode::Type repeatMode)
{
    TRACE_FUNCTION();
    return modeName(tracer, repeatMode);
}

QString NowPlayingControllerPrivate::toString(ShuffleMode::Type shuffleMode)
{
    TRACE_FUNCTION();
    return modeName(tracer, shuffleMode);
}

RepeatMode::Type NowPlayingControllerPrivate::toRepeatMode(const QString &text, bool *ok)
{
    TRACE_FUNCTION();
    return repeatModeFrom(tracer, text, ok);
}

ShuffleMode::Type NowPlayingControllerPrivate::toShuffleMode(const QString &text, bool *ok)
{
    TRACE_FUNCTION();
    return shuffleModeFrom(tracer, text, ok);
}

// The subscription

int NowPlayingControllerPrivate::listenerCount() const
{
    const QMetaObject &metaObject = NowPlayingController::staticMetaObject;
    int count = 0;
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i) {
        const QMetaMethod method = metaObject.method(i);
        // SIGNAL() puts this digit before a signature.
        if (method.methodType() == QMetaMethod::Signal) {
            count += q->receivers(("2" + method.methodSignature()).constData());
        }
    }
    return count;
}

void NowPlayingControllerPrivate::addConnection()
{
    TRACE_FUNCTION();
    if (!m_control->isOpen() && listenerCount() > 0 && !registerNotifications(m_control)) {
        WARNING_LINE << "Cannot register notification from PPS.";
    }
}

void NowPlayingControllerPrivate::removeConnection()
{
    TRACE_FUNCTION();
    if (m_control->isOpen() && listenerCount() == 0 && !unregisterNotifications(m_control)) {
        WARNING_LINE << "Cannot unregister notification from PPS.";
    }
}

void NowPlayingControllerPrivate::countLater()
{
    TRACE_FUNCTION();
    if (replace(m_isCountDue, true)) {
        QMetaObject::invokeMethod(this, &NowPlayingControllerPrivate::countNow, Qt::QueuedConnection);
    }
}

void NowPlayingControllerPrivate::countNow()
{
    TRACE_FUNCTION();
    if (replace(m_isCountDue, false)) {
        removeConnection();
    }
}

bool NowPlayingControllerPrivate::registerNotifications(voro::PpsObject *object) const
{
    TRACE_FUNCTION();
    if (object->isOpen() && !object->close()) {
        WARNING_LINE << "Error trying to close the PPS connection. error=" << object->errorString();
        return false;
    }
    if (!object->open(voro::PpsOpenMode::PublishSubscribe)) {
        WARNING_LINE << "Error trying to open the PPS connection. error=" << object->errorString();
        return false;
    }
    if (!send(object, {{QStringLiteral("msg"), MSG_SUBSCRIBE}})) {
        WARNING_LINE << "Nowplaying controller subscription failed.";
        return false;
    }
    DEBUG_LINE << "Subscription message sent:" << messageText(MSG_SUBSCRIBE.data());
    return true;
}

bool NowPlayingControllerPrivate::unregisterNotifications(voro::PpsObject *object) const
{
    TRACE_FUNCTION();
    if (!object->isOpen()) {
        return false;
    }
    if (!send(object, {{QStringLiteral("msg"), MSG_UNSUBSCRIBE}})) {
        WARNING_LINE << "Nowplaying controller unsubscription failed.";
        return false;
    }
    if (!object->close()) {
        WARNING_LINE << "Error trying to close the PPS connection. error=" << object->errorString();
        return false;
    }
    return true;
}

// The service's publications

bool NowPlayingControllerPrivate::processPpsRead(const QVariantMap &control, QVariantMap &result) const
{
    TRACE_FUNCTION();
    DEBUG_LINE << "control=" << control;
    if (control.contains(RESULT_ERROR)) {
        WARNING_LINE << "returning error:" << control.value(RESULT_ERROR).toString();
        result.insert(RESULT_ERROR, control.value(RESULT_ERROR));
    }
    if (!control.contains(QStringLiteral("msg"))) {
        WARNING_LINE << "'msg' is not found in incoming PPS object.'";
        return false;
    }
    const QString message = control.value(QStringLiteral("msg")).toString();
    const QVariant data = control.value(QStringLiteral("dat"));
    if (message == MSG_STATE) {
        const QString state = data.toString();
        DEBUG_LINE << "pps state received: '" << state;
        if (state == STATE_STOPPED) {
            result.insert(PROPERTY_STATE, static_cast<int>(MediaState::Stopped));
        } else if (state == STATE_PAUSED) {
            result.insert(PROPERTY_STATE, static_cast<int>(MediaState::Paused));
        } else if (state == STATE_PLAYING) {
            result.insert(PROPERTY_STATE, static_cast<int>(MediaState::Started));
        } else if (state == STATE_TRACKCHANGE) {
            result.insert(STATE_TRACKCHANGE, true);
        } else {
            WARNING_LINE << "error: unknown state.";
        }
    } else if (message == MSG_UPDATE) {
        DEBUG_LINE << "control received: " << control;
        result.insert(MSG_UPDATE, converted(tracer, data.toMap()));
    } else if (message == MSG_ACTIVE_PID) {
        result.insert(MSG_ACTIVE_PID, data);
    }
    return true;
}

void NowPlayingControllerPrivate::onReceivedMetaData()
{
    TRACE_FUNCTION();
    DEBUG_LINE << "Reading received data.";
    bool ok = false;
    const QByteArray data = m_control->read(&ok);
    const QVariantMap map = ok ? voro::PpsObject::decode(data, &ok) : QVariantMap();
    if (!ok) {
        WARNING_LINE << "cannot read from PPS.";
        return;
    }
    DEBUG_LINE << "msg=" << map;
    if (!map.contains(ControllerObject)) {
        WARNING_LINE << "message does not contain @control";
        return;
    }
    QVariantMap result;
    processPpsRead(map.value(ControllerObject).toMap(), result);
    if (result.value(STATE_TRACKCHANGE).toBool()) {
        announce(tracer, &NowPlayingController::trackChanged);
    }
    takeField(tracer, result, PROPERTY_STATE, m_mediaState, &NowPlayingController::mediaStateChanged, "mediaState");
    if (result.contains(MSG_UPDATE)) {
        QVariantMap update = result.value(MSG_UPDATE).toMap();
        // The event loop of a slot may lead here again before the older update is applied.
        for (QVariantMap *const older : m_updates) {
            removeOutdated(*older, update);
        }
        m_updates.append(&update);
        takeUpdate(tracer, update);
        m_updates.removeLast();
    }
}

template<typename Value, typename Signal>
void NowPlayingControllerPrivate::takeField(const FunctionTracer &tracer, const QVariantMap &update,
                                            QLatin1String field, Value &cached, const Signal &signal, const char *name)
{
    const auto found = update.find(field);
    if (found != update.end() && learn(cached, found->template value<Value>())) {
        announce(tracer, signal, name, cached);
    }
}

void NowPlayingControllerPrivate::takeUpdate(const FunctionTracer &tracer, const QVariantMap &update)
{
    using Controller = NowPlayingController;
    const Twins durationChanged{&Controller::durationChanged, &Controller::durationChanged};
    const Twins positionChanged{&Controller::positionChanged, &Controller::positionChanged};
    takeField(tracer, update, PROPERTY_NEXTENABLED, m_nextEnabled, &Controller::nextEnabledChanged, "nextEnabled");
    takeField(tracer, update, PROPERTY_PREVENABLED, m_previousEnabled, &Controller::previousEnabledChanged,
              "prevEnabled");
    takeField(tracer, update, PROPERTY_DURATION, m_duration, durationChanged, "duration");
    takeField(tracer, update, PROPERTY_REPEATMODE, m_repeatMode, &Controller::repeatModeChanged, "repeatMode");
    takeField(tracer, update, PROPERTY_SHUFFLEMODE, m_shuffleMode, &Controller::shuffleModeChanged, "shuffleMode");
    takeField(tracer, update, PROPERTY_POSITION, m_position, positionChanged, "position");
    if (update.contains(PROPERTY_ARTWORK) && learn(m_iconUrl, update.value(PROPERTY_ARTWORK))) {
        const QUrl iconUrl = m_iconUrl.toUrl();
        logSignal(tracer, "iconUrlChanged", "iconUrl", LoggedUrl(iconUrl));
        emitSignal(&Controller::iconUrlChanged, iconUrl);
    }
    const QVariantMap metaData = metaDataOf(update);
    if (!metaData.isEmpty() && learn(m_metaData, metaData)) {
        DEBUG_LINE << "new metadata: " << m_metaData;
        logSignal(tracer, "metaDataChanged");
        emitSignal(&Controller::metaDataChanged, m_metaData);
    }
}

// Reading without a subscription

bool NowPlayingControllerPrivate::makeDataAvailable(const QStringList &fields, QVariantMap &result) const
{
    TRACE_FUNCTION();
    if (m_control->isOpen()) {
        return true;
    }
    blockReadMetaData(fields, result);
    DEBUG_LINE << "To use the cached values: " << false;
    return false;
}

bool NowPlayingControllerPrivate::blockReadMetaData(const QStringList &fields, QVariantMap &result) const
{
    TRACE_FUNCTION();
    voro::PpsObject object(PPS_CONTROLLER_PATHNAME_WAIT);
    if (!registerNotifications(&object)) {
        return false;
    }
    QVariantMap received;
    bool isFound = false;
    bool isOver = false;
    while (!isFound && !isOver) {
        processPpsRead(nextMessage(tracer, object), received);
        const auto activePid = received.find(MSG_ACTIVE_PID);
        isOver = received.contains(RESULT_ERROR) || (activePid != received.end() && activePid->toInt() == 0);
        isFound = takeFields(tracer, fields, received, result);
    }
    unregisterNotifications(&object);
    return isFound;
}

} // namespace voro::multimedia
