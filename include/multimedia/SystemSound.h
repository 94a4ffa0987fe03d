#pragma once

#include <multimedia/Export.h>

#include <QtCore/QObject>

namespace voro::multimedia {

class SystemSoundPrivate;

/**
 * Plays one of the device's predefined sounds.
 *
 * Choosing a sound lets the sound service load it, so that play() starts it at once. Nothing is reported back: a sound
 * that cannot be played is a line in the log.
 */
class VOROMULTIMEDIA_EXPORT SystemSound : public QObject {
    Q_OBJECT
    Q_PROPERTY(voro::multimedia::SystemSound::Type sound READ sound WRITE setSound FINAL)
public:
    enum Type : int {
        /** No sound; cannot be chosen. */
        None = 0,
        /** The battery is nearly empty. */
        BatteryAlarm = 1,
        /** A browser page starts to load. */
        BrowserStartEvent = 2,
        /** The camera takes a picture. */
        CameraShutterEvent = 3,
        /** The device was locked. */
        DeviceLockEvent = 4,
        /** The device was unlocked. */
        DeviceUnlockEvent = 5,
        /** The device was tethered. */
        DeviceTetherEvent = 6,
        /** The device is no longer tethered. */
        DeviceUntetherEvent = 7,
        /** Something happened that the user may want to know. */
        GeneralNotification = 8,
        /** A key was pressed. */
        InputKeypress = 9,
        /** A recording starts. */
        RecordingStartEvent = 10,
        /** A recording ends. */
        RecordingStopEvent = 11,
        /** The notification called sapphire. */
        SapphireNotification = 12,
        /** Plays while the master volume is being changed. */
        SystemMasterVolumeReference = 13,
        /** A video call comes in. */
        VideoCallEvent = 14,
        /** A video call goes out. */
        VideoCallOutgoingEvent = 15,
        /** The camera takes a series of pictures. */
        CameraBurstEvent = 16,
    };
    Q_ENUM(Type)

    /** An object that plays nothing until a sound is chosen. Opens a connection of its own to the sound service. */
    explicit SystemSound(QObject *parent = nullptr);
    /** An object that plays the given sound; the same as choosing it with setSound(). */
    explicit SystemSound(SystemSound::Type sound, QObject *parent = nullptr);
    ~SystemSound() override;

    /** The chosen sound, `None` at first. */
    SystemSound::Type sound() const;
    /**
     * Chooses a sound and has the service load it.
     *
     * @return true when the request was sent. False for `None` or a number that is no sound (the choice stays as it
     *         was), for the sound that is chosen already, and when there is no connection to the service (the choice
     *         has changed then).
     */
    bool setSound(SystemSound::Type sound);

    /** Plays a sound without an object. Returns when the request was sent, not when the sound has ended. */
    static void play(SystemSound::Type sound);

public Q_SLOTS:
    /** Plays the chosen sound; nothing happens when there is none. */
    void play();

private:
    SystemSoundPrivate *d;
};

} // namespace voro::multimedia
