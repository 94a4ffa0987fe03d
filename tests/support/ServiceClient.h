#pragma once

#include <voro/PpsObject.h>

/** A client of a service that waits for its answers. */
class ServiceClient {
public:
    /** Opens the service; ends the test program when that fails. */
    explicit ServiceClient(const char *path) : m_control(QString::fromLatin1(path))
    {
        if (!m_control.open(voro::PpsOpenMode::PublishSubscribe)) {
            qFatal("The service cannot be reached");
        }
        m_control.setBlocking(true);
    }

    void write(const QByteArray &message)
    {
        if (!m_control.write(message)) {
            qFatal("The service cannot be reached");
        }
    }
    /** The service's next answer, without its object line. */
    QByteArray answer() { return m_control.read().remove(0, static_cast<int>(strlen("@control\n"))).trimmed(); }

private:
    voro::PpsObject m_control;
};
