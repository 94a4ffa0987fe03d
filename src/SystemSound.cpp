#include <multimedia/SystemSound.h>
#include <voro/PpsObject.h>

#include <QtCore/QVariantMap>

#include <private/Delivery.h>
#include <private/SystemSoundPrivate.h>

#include <array>

namespace voro::multimedia {

SystemSoundPrivate::SystemSoundPrivate(QObject *parent)
    : QObject(parent),
      m_control(new voro::PpsObject(QStringLiteral("/pps/services/multimedia/sound/control"), this))
{
    TRACE_FUNCTION();
    if (!m_control->open(voro::PpsOpenMode::Publish)) {
        WARNING_LINE << "Unable open PPS. uri=" << m_control->path() << ", error=" << m_control->error();
    }
}

SystemSoundPrivate::~SystemSoundPrivate()
{
    TRACE_FUNCTION();
    if (m_control->isOpen()) {
        m_control->close();
    }
}

SystemSound::Type SystemSoundPrivate::sound() const
{
    TRACE_FUNCTION();
    return m_sound;
}

bool SystemSoundPrivate::setSound(SystemSound::Type sound)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "sound=" << static_cast<int>(sound);
    if (*toString(sound) == '\0') {
        WARNING_LINE << "Invalid system sound. sound=" << static_cast<int>(sound);
        return false;
    }
    if (sound == m_sound) {
        DEBUG_LINE << "Ignoring sound already set";
        return false;
    }
    m_sound = sound;
    return send(m_control, QStringLiteral("prepare_sound"), sound);
}

void SystemSoundPrivate::play()
{
    TRACE_FUNCTION();
    play(m_sound);
}

void SystemSoundPrivate::play(SystemSound::Type sound)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "sound=" << static_cast<int>(sound);
    send(m_control, QStringLiteral("play_sound"), sound);
}

bool SystemSoundPrivate::send(const voro::PpsObject *object, const QString &message, SystemSound::Type sound)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "sound=" << static_cast<int>(sound) << ", msg=" << message;
    const QString name = QString::fromLatin1(toString(sound));
    if (name.isEmpty() || !object->isOpen()) {
        return false;
    }
    const QVariantMap request{
        {QStringLiteral("msg"), message},
        {QStringLiteral("id"), QStringLiteral("0")},
        {QStringLiteral("dat"), QVariantMap{{QStringLiteral("sound"), name}}},
    };
    // A failed write is ignored; this is required.
    return deliver(tracer, *m_control, request, {"Error encoding the PPS message. error=", nullptr})
           != Delivery::NotEncoded;
}

const char *SystemSoundPrivate::toString(SystemSound::Type sound)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "sound=" << static_cast<int>(sound);
    static constexpr std::array names{
        "",
        "alarm_battery",
        "event_browser_start",
        "event_camera_shutter",
        "event_device_lock",
        "event_device_unlock",
        "event_device_tether",
        "event_device_untether",
        "notification_general",
        "input_keypress",
        "event_recording_start",
        "event_recording_stop",
        "notification_sapphire",
        "system_master_volume_reference",
        "event_video_call",
        "event_video_call_outgoing",
        "event_camera_burst_sound",
    };
    const auto index = static_cast<size_t>(sound);
    return index < names.size() ? names[index] : "";
}

SystemSound::SystemSound(QObject *parent) : QObject(parent), d(new SystemSoundPrivate(this))
{
    TRACE_FUNCTION();
}

SystemSound::SystemSound(SystemSound::Type sound, QObject *parent) : QObject(parent), d(new SystemSoundPrivate(this))
{
    TRACE_FUNCTION();
    d->setSound(sound);
}

SystemSound::~SystemSound()
{
    TRACE_FUNCTION();
}

SystemSound::Type SystemSound::sound() const
{
    TRACE_FUNCTION();
    return d->sound();
}

bool SystemSound::setSound(SystemSound::Type sound)
{
    TRACE_FUNCTION();
    return d->setSound(sound);
}

void SystemSound::play()
{
    TRACE_FUNCTION();
    d->play();
}

void SystemSound::play(SystemSound::Type sound)
{
    TRACE_FUNCTION();
    SystemSoundPrivate().play(sound);
}

} // namespace voro::multimedia
