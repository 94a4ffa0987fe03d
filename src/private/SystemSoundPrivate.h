#pragma once

#include <multimedia/SystemSound.h>

namespace voro {
class PpsObject;
}

namespace voro::multimedia {

/** A connection to the sound service, and the chosen sound. */
class SystemSoundPrivate : public QObject {
    Q_OBJECT
public:
    explicit SystemSoundPrivate(QObject *parent = nullptr);
    ~SystemSoundPrivate() override;

    SystemSound::Type sound() const;
    bool setSound(SystemSound::Type sound);
    void play();
    void play(SystemSound::Type sound);

    /** Writes a request; false when the sound has no name or the object is not open. */
    bool send(const voro::PpsObject *object, const QString &message, SystemSound::Type sound);
    /** The sound service's name of a sound; empty for an unknown number. */
    const char *toString(SystemSound::Type sound);

private:
    SystemSound::Type m_sound = SystemSound::None;
    voro::PpsObject *m_control;
};

} // namespace voro::multimedia
