#include "RuntimeBroker.h"

#include <pps/Runtime.h>
#include <sys/socket.h>
#include <sys/un.h>

RuntimeBroker::RuntimeBroker()
{
    qputenv("VORO_RUNTIME_DIR", m_folder.path().toUtf8());
    qputenv("VORO_AUTOSPAWN", "0");
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray path = QByteArray::fromStdString(voro::pps::socketPath(m_folder.path().toStdString()));
    qstrncpy(address.sun_path, path.constData(), sizeof address.sun_path);
    const int listener = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (bind(listener, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0 || listen(listener, 16) != 0)
        qFatal("cannot listen on %s", path.constData());
    m_thread.run([&](voro::pps::Broker &broker) { broker.listen(listener); });
}

void RuntimeBroker::publish(const QString &folder, const QString &object)
{
    QStringList lines = object.split(QLatin1Char(' '));
    QString name = lines.takeFirst();
    const bool isMarked = name.startsWith(QLatin1Char('*')) || name.startsWith(QLatin1Char('-'));
    const QString mark = isMarked ? name.left(1) : QString();
    name.remove(0, mark.size());
    if (isMarked)
        lines.prepend(mark + QLatin1Char('@') + name);
    const QString path = folder + QLatin1Char('/') + name;
    if (!m_thread.publish(path.toStdString(), lines.join(QLatin1Char('\n')).toStdString()))
        qFatal("cannot publish %s", qPrintable(object));
}
