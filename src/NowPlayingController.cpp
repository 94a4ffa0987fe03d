#include <multimedia/NowPlayingController.h>

#include <QtCore/QMetaMethod>

#include <private/ControllerNames.h>
#include <private/Logger.h>
#include <private/NowPlayingControllerPrivate.h>
#include <private/Values.h>

#include <algorithm>

namespace voro::multimedia {

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
    // Count later: Qt may hold a lock that counting needs, and still counts a listener during its destruction.
    d->countLater();
}

// Commands

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

// Getters

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
