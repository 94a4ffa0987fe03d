#include "private/Announcement.h"
#include "private/ModeNames.h"
#include "private/NowPlayingControllerPrivate.h"
#include "private/Values.h"

#include <multimedia/MetaData.h>
#include <multimedia/NowPlayingController.h>
#include <voro/PpsObject.h>

#include <QtCore/QMetaMethod>

#include <algorithm>
#include <array>

namespace voro::multimedia {

namespace {

constexpr QLatin1String ControlName("@control");

constexpr QLatin1String PPS_CONTROLLER_PATHNAME("/pps/services/multimedia/mediacontroller/control");
// Every read waits for the next message.
constexpr QLatin1String PPS_CONTROLLER_PATHNAME_WAIT("/pps/services/multimedia/mediacontroller/control?wait");

constexpr char COMMAND_PLAY[] = "m_play";
constexpr char COMMAND_PAUSE[] = "m_pause";
constexpr char COMMAND_PLAYPAUSE[] = "m_playpause";
constexpr char COMMAND_STOP[] = "m_stop";
constexpr char COMMAND_NEXT[] = "m_next";
constexpr char COMMAND_PREVIOUS[] = "m_previous";
constexpr char COMMAND_FFORWARD[] = "m_fforward";
constexpr char COMMAND_REWIND[] = "m_rewind";
constexpr char COMMAND_VOLUMEUP[] = "v_up";
constexpr char COMMAND_VOLUMEDOWN[] = "v_down";
constexpr char COMMAND_SETVOLUME[] = "v_set";
constexpr char COMMAND_SETMUTE[] = "v_mute";
constexpr char COMMAND_GENERIC[] = "m_command";
constexpr char SUB_COMMAND_REPEAT[] = "repeat";
constexpr char SUB_COMMAND_SHUFFLE[] = "shuffle";

constexpr QLatin1String MSG_SUBSCRIBE("md_subscribe");
constexpr QLatin1String MSG_UNSUBSCRIBE("md_unsubscribe");
constexpr QLatin1String MSG_STATE("m_state");
constexpr QLatin1String MSG_UPDATE("md_update");
constexpr QLatin1String MSG_ACTIVE_PID("m_active_pid");
constexpr QLatin1String PROPERTY_STATE("state");
constexpr QLatin1String STATE_PLAYING("playing");
constexpr QLatin1String STATE_PAUSED("paused");
constexpr QLatin1String STATE_STOPPED("stopped");
constexpr QLatin1String STATE_TRACKCHANGE("trackchange");
constexpr QLatin1String PROPERTY_ARTIST("artist");
constexpr QLatin1String PROPERTY_ALBUM("album");
constexpr QLatin1String PROPERTY_TRACK("track");
constexpr QLatin1String PROPERTY_TRACK_NUMBER("track_number");
constexpr QLatin1String PROPERTY_NEXTENABLED("nextEnabled");
constexpr QLatin1String PROPERTY_PREVENABLED("prevEnabled");
constexpr QLatin1String PROPERTY_REPEATMODE("repeat_mode");
constexpr QLatin1String PROPERTY_SHUFFLEMODE("shuffle_mode");
constexpr QLatin1String PROPERTY_POSITION("position");
constexpr QLatin1String PROPERTY_DURATION("duration");
constexpr QLatin1String PROPERTY_ARTWORK("albumArtwork");
constexpr QLatin1String PROPERTY_ALLMETADATA("allmetadata");
constexpr QLatin1String RESULT_ERROR("error");

QString messageText(const char *command)
{
    return QStringLiteral("msg::") + QLatin1String(command);
}

/** The metadata among the entries of a converted update. */
QVariantMap metaDataOf(const QVariantMap &update)
{
    QVariantMap metaData;
    for (const char *key : {MetaData::Artist, MetaData::Album, MetaData::Title, MetaData::Track}) {
        const auto entry = update.find(QLatin1String(key));
        if (entry != update.end())
            metaData.insert(entry.key(), entry.value());
    }
    return metaData;
}

/** An update of the service with the library's names and types. */
QVariantMap converted(const FunctionTracer &tracer, const QVariantMap &update)
{
    QVariantMap result;
    const auto convert = [&](QLatin1String field, const char *key, auto toValue) {
        const auto found = update.find(field);
        if (found == update.end())
            return;
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
        if (found != update.end())
            result.insert(field, found.value());
    }
    return result;
}

/** Waits for the next message of the service, however often reading fails. */
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
        if (map.contains(ControlName))
            return map.value(ControlName).toMap();
    }
}

/** Takes the fields that were asked for out of what was received so far; false while some are missing. */
bool takeFields(const FunctionTracer &tracer, const QStringList &fields, const QVariantMap &received,
                QVariantMap &result)
{
    if (fields.contains(PROPERTY_STATE) && received.contains(PROPERTY_STATE)) {
        result.insert(PROPERTY_STATE, received.value(PROPERTY_STATE));
        return true;
    }
    if (!received.contains(MSG_UPDATE))
        return false;
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
    for (const QString &field : fields)
        result.insert(field, update.value(field));
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
    if (becomeOrphan() && m_control->isOpen())
        m_control->close();
}

// NowPlayingControllerPrivate: commands

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
    bool ok = false;
    const QByteArray encoded = voro::PpsObject::encode(message, &ok);
    if (!ok) {
        WARNING_LINE << "Error encoding message for PPS. errno=" << object->error();
        return false;
    }
    if (!object->write(encoded)) {
        WARNING_LINE << "Error writing message to PPS. errno=" << object->error();
        return false;
    }
    return true;
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

// NowPlayingControllerPrivate: the subscription

int NowPlayingControllerPrivate::listenerCount() const
{
    const QMetaObject &metaObject = NowPlayingController::staticMetaObject;
    int count = 0;
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i) {
        const QMetaMethod method = metaObject.method(i);
        // The digit is what SIGNAL() puts before a signature.
        if (method.methodType() == QMetaMethod::Signal)
            count += q->receivers(("2" + method.methodSignature()).constData());
    }
    return count;
}

void NowPlayingControllerPrivate::addConnection()
{
    TRACE_FUNCTION();
    if (!m_control->isOpen() && listenerCount() > 0 && !registerNotifications(m_control))
        WARNING_LINE << "Cannot register notification from PPS.";
}

void NowPlayingControllerPrivate::removeConnection()
{
    TRACE_FUNCTION();
    if (m_control->isOpen() && listenerCount() == 0 && !unregisterNotifications(m_control))
        WARNING_LINE << "Cannot unregister notification from PPS.";
}

void NowPlayingControllerPrivate::countLater()
{
    TRACE_FUNCTION();
    if (replace(m_isCountDue, true))
        QMetaObject::invokeMethod(this, &NowPlayingControllerPrivate::countNow, Qt::QueuedConnection);
}

void NowPlayingControllerPrivate::countNow()
{
    TRACE_FUNCTION();
    if (replace(m_isCountDue, false))
        removeConnection();
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
    if (!object->isOpen())
        return false;
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

// NowPlayingControllerPrivate: what the service publishes

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
        if (state == STATE_STOPPED)
            result.insert(PROPERTY_STATE, static_cast<int>(MediaState::Stopped));
        else if (state == STATE_PAUSED)
            result.insert(PROPERTY_STATE, static_cast<int>(MediaState::Paused));
        else if (state == STATE_PLAYING)
            result.insert(PROPERTY_STATE, static_cast<int>(MediaState::Started));
        else if (state == STATE_TRACKCHANGE)
            result.insert(STATE_TRACKCHANGE, true);
        else
            WARNING_LINE << "error: unknown state.";
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
    if (!map.contains(ControlName)) {
        WARNING_LINE << "message does not contain @control";
        return;
    }
    QVariantMap result;
    processPpsRead(map.value(ControlName).toMap(), result);
    const Emission to{this};
    if (result.value(STATE_TRACKCHANGE).toBool()) {
        announce(tracer, "trackChanged");
        Q_EMIT to->trackChanged();
    }
    if (takeField(tracer, result, PROPERTY_STATE, m_mediaState, "mediaStateChanged", "mediaState"))
        Q_EMIT to->mediaStateChanged(m_mediaState);
    if (result.contains(MSG_UPDATE))
        takeUpdate(tracer, result.value(MSG_UPDATE).toMap());
}

template<typename Value>
bool NowPlayingControllerPrivate::takeField(const FunctionTracer &tracer, const QVariantMap &update,
                                            QLatin1String field, Value &cached, const char *signal, const char *name)
{
    const auto found = update.find(field);
    if (found == update.end() || !learn(cached, found->template value<Value>()))
        return false;
    announce(tracer, signal, name, cached);
    return true;
}

void NowPlayingControllerPrivate::takeUpdate(const FunctionTracer &tracer, const QVariantMap &update)
{
    const Emission to{this};
    if (takeField(tracer, update, PROPERTY_NEXTENABLED, m_nextEnabled, "nextEnabledChanged", "nextEnabled"))
        Q_EMIT to->nextEnabledChanged(m_nextEnabled);
    if (takeField(tracer, update, PROPERTY_PREVENABLED, m_previousEnabled, "previousEnabledChanged", "prevEnabled"))
        Q_EMIT to->previousEnabledChanged(m_previousEnabled);
    if (takeField(tracer, update, PROPERTY_DURATION, m_duration, "durationChanged", "duration")) {
        Q_EMIT to->durationChanged(m_duration);
        if (to)
            Q_EMIT to->durationChanged(QVariant(m_duration));
    }
    if (takeField(tracer, update, PROPERTY_REPEATMODE, m_repeatMode, "repeatModeChanged", "repeatMode"))
        Q_EMIT to->repeatModeChanged(m_repeatMode);
    if (takeField(tracer, update, PROPERTY_SHUFFLEMODE, m_shuffleMode, "shuffleModeChanged", "shuffleMode"))
        Q_EMIT to->shuffleModeChanged(m_shuffleMode);
    if (takeField(tracer, update, PROPERTY_POSITION, m_position, "positionChanged", "position")) {
        Q_EMIT to->positionChanged(m_position);
        if (to)
            Q_EMIT to->positionChanged(QVariant(m_position));
    }
    if (update.contains(PROPERTY_ARTWORK) && learn(m_iconUrl, update.value(PROPERTY_ARTWORK))) {
        const QUrl iconUrl = m_iconUrl.toUrl();
        announce(tracer, "iconUrlChanged", "iconUrl", LoggedUrl(iconUrl));
        Q_EMIT to->iconUrlChanged(iconUrl);
    }
    const QVariantMap metaData = metaDataOf(update);
    if (!metaData.isEmpty() && learn(m_metaData, metaData)) {
        DEBUG_LINE << "new metadata: " << m_metaData;
        announce(tracer, "metaDataChanged");
        Q_EMIT to->metaDataChanged(m_metaData);
    }
}

// NowPlayingControllerPrivate: reading without a subscription

bool NowPlayingControllerPrivate::makeDataAvailable(const QStringList &fields, QVariantMap &result) const
{
    TRACE_FUNCTION();
    if (m_control->isOpen())
        return true;
    blockReadMetaData(fields, result);
    DEBUG_LINE << "To use the cached values: " << false;
    return false;
}

bool NowPlayingControllerPrivate::blockReadMetaData(const QStringList &fields, QVariantMap &result) const
{
    TRACE_FUNCTION();
    voro::PpsObject object(PPS_CONTROLLER_PATHNAME_WAIT);
    if (!registerNotifications(&object))
        return false;
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

template<typename Value>
Value NowPlayingControllerPrivate::value(QLatin1String field, const Value &cached)
{
    countNow();
    QVariantMap result;
    return makeDataAvailable({field}, result) ? cached : result.value(field).template value<Value>();
}

// NowPlayingController

NowPlayingController::NowPlayingController(QObject *parent) : QObject(parent), d(new NowPlayingControllerPrivate(this))
{
    TRACE_FUNCTION();
}

NowPlayingController::~NowPlayingController()
{
    TRACE_FUNCTION();
    d->end();
}

void NowPlayingController::connectNotify(const QMetaMethod &signal)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "Connect Notification for " << signal.methodSignature().constData();
    d->addConnection();
}

void NowPlayingController::disconnectNotify(const QMetaMethod &signal)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "Disconnect Notification for " << signal.methodSignature().constData();
    // Qt may hold a lock that counting listeners needs, and one that is being destroyed still counts: count later.
    d->countLater();
}

// NowPlayingController: commands

MediaError::Type NowPlayingController::play()
{
    TRACE_FUNCTION();
    return d->command(messageText(COMMAND_PLAY));
}

MediaError::Type NowPlayingController::pause()
{
    TRACE_FUNCTION();
    return d->command(messageText(COMMAND_PAUSE));
}

MediaError::Type NowPlayingController::playPause()
{
    TRACE_FUNCTION();
    return d->command(messageText(COMMAND_PLAYPAUSE));
}

MediaError::Type NowPlayingController::stop()
{
    TRACE_FUNCTION();
    return d->command(messageText(COMMAND_STOP));
}

MediaError::Type NowPlayingController::next()
{
    TRACE_FUNCTION();
    return d->command(messageText(COMMAND_NEXT));
}

MediaError::Type NowPlayingController::previous()
{
    TRACE_FUNCTION();
    return d->command(messageText(COMMAND_PREVIOUS));
}

MediaError::Type NowPlayingController::forward()
{
    TRACE_FUNCTION();
    return d->command(messageText(COMMAND_FFORWARD));
}

MediaError::Type NowPlayingController::rewind()
{
    TRACE_FUNCTION();
    return d->command(messageText(COMMAND_REWIND));
}

MediaError::Type NowPlayingController::repeat()
{
    TRACE_FUNCTION();
    return d->modeCommand(SUB_COMMAND_REPEAT);
}

MediaError::Type NowPlayingController::repeat(RepeatMode::Type mode)
{
    TRACE_FUNCTION();
    return d->modeCommand(SUB_COMMAND_REPEAT, d->toString(mode));
}

MediaError::Type NowPlayingController::shuffle()
{
    TRACE_FUNCTION();
    return d->modeCommand(SUB_COMMAND_SHUFFLE);
}

MediaError::Type NowPlayingController::shuffle(ShuffleMode::Type mode)
{
    TRACE_FUNCTION();
    return d->modeCommand(SUB_COMMAND_SHUFFLE, d->toString(mode));
}

MediaError::Type NowPlayingController::volumeUp()
{
    TRACE_FUNCTION();
    return d->command(messageText(COMMAND_VOLUMEUP));
}

MediaError::Type NowPlayingController::volumeDown()
{
    TRACE_FUNCTION();
    return d->command(messageText(COMMAND_VOLUMEDOWN));
}

MediaError::Type NowPlayingController::setVolume(double value)
{
    TRACE_FUNCTION();
    const int level = std::clamp(truncated<int>(value * 100.0), 0, 100);
    return d->command(messageText(COMMAND_SETVOLUME) + QStringLiteral("\ndat::%1").arg(level));
}

MediaError::Type NowPlayingController::setMute(bool muted)
{
    TRACE_FUNCTION();
    return d->command(messageText(COMMAND_SETMUTE) + QLatin1String(muted ? "\ndat:b:true" : "\ndat:b:false"));
}

// NowPlayingController: getters

unsigned int NowPlayingController::duration() const
{
    TRACE_FUNCTION();
    return d->value(PROPERTY_DURATION, d->m_duration);
}

QVariant NowPlayingController::durationQml() const
{
    TRACE_FUNCTION();
    return duration();
}

QUrl NowPlayingController::iconUrl() const
{
    TRACE_FUNCTION();
    return d->value(PROPERTY_ARTWORK, d->m_iconUrl).toUrl();
}

MediaState::Type NowPlayingController::mediaState() const
{
    TRACE_FUNCTION();
    return d->value(PROPERTY_STATE, d->m_mediaState);
}

QVariantMap NowPlayingController::metaData() const
{
    TRACE_FUNCTION();
    return d->value(PROPERTY_ALLMETADATA, d->m_metaData);
}

bool NowPlayingController::isNextEnabled() const
{
    TRACE_FUNCTION();
    return d->value(PROPERTY_NEXTENABLED, d->m_nextEnabled);
}

unsigned int NowPlayingController::position() const
{
    TRACE_FUNCTION();
    return d->value(PROPERTY_POSITION, d->m_position);
}

QVariant NowPlayingController::positionQml() const
{
    TRACE_FUNCTION();
    return position();
}

bool NowPlayingController::isPreviousEnabled() const
{
    TRACE_FUNCTION();
    return d->value(PROPERTY_PREVENABLED, d->m_previousEnabled);
}

RepeatMode::Type NowPlayingController::repeatMode() const
{
    TRACE_FUNCTION();
    return d->value(PROPERTY_REPEATMODE, d->m_repeatMode);
}

ShuffleMode::Type NowPlayingController::shuffleMode() const
{
    TRACE_FUNCTION();
    return d->value(PROPERTY_SHUFFLEMODE, d->m_shuffleMode);
}

} // namespace voro::multimedia
