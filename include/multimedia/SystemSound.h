#pragma once

#include <multimedia/Export.h>

#include <QtCore/QObject>

namespace voro::multimedia {

class SystemSoundPrivate;

/**
 * Plays one of the device's predefined sounds.
 *
 * Choosing a sound makes the sound service load it, so that play() starts it at once. The service reports nothing back:
 * it logs a sound that it cannot play.
 */
class VOROMULTIMEDIA_EXPORT SystemSound : public QObject {
    Q_OBJECT
    Q_PROPERTY(voro::multimedia::SystemSound::Type sound READ sound WRITE setSound FINAL)
public:
    enum Type : int {
        /** No sound. setSound() refuses it. */
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
        /** A general notification. */
        GeneralNotification = 8,
        /** A key was pressed. */
        InputKeypress = 9,
        /** A recording starts. */
        RecordingStartEvent = 10,
        /** A recording ends. */
        RecordingStopEvent = 11,
        /** The sapphire notification. */
        SapphireNotification = 12,
        /** The reference sound while the master volume changes. */
        SystemMasterVolumeReference = 13,
        /** A video call comes in. */
        VideoCallEvent = 14,
        /** A video call goes out. */
        VideoCallOutgoingEvent = 15,
        /** The camera takes a series of pictures. */
        CameraBurstEvent = 16,
    };
    Q_ENUM(Type)

    /** Has no sound until setSound(). Opens a connection to the sound service. */
    explicit SystemSound(QObject *parent = nullptr);
    /** The same with a sound chosen. */
    explicit SystemSound(SystemSound::Type sound, QObject *parent = nullptr);
    ~SystemSound() override;

    /** The chosen sound, `None` at first. */
    SystemSound::Type sound() const;
    /**
     * Chooses a sound and asks the service to load it.
     *
     * @return true when the request was sent. False for `None` or an unknown number, which changes nothing; for the
     *         present sound; and without a connection to the service, although the choice has changed then.
     */
    bool setSound(SystemSound::Type sound);

    /** Plays a sound without an object. Returns when the request is sent, before the sound ends. */
    static void play(SystemSound::Type sound);

public Q_SLOTS:
    /** Plays the chosen sound, if any. */
    void play();

private:
    SystemSoundPrivate *d;
};

} // namespace voro::multimedia
