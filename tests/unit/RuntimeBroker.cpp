#include "RuntimeBroker.h"

#include <pps/Runtime.h>

RuntimeBroker *RuntimeBroker::s_current = nullptr;

RuntimeBroker::RuntimeBroker()
{
    s_current = this;
    qputenv("VORO_RUNTIME_DIR", m_folder.path().toUtf8());
    qputenv("VORO_AUTOSPAWN", "0");
    const int listener = voro::pps::listenAt(voro::pps::socketPath(m_folder.path().toStdString())).release();
    m_thread.run([&](voro::pps::Broker &broker) { broker.listen(listener); });
}

void RuntimeBroker::publish(const QString &folder, const QString &object)
{
    QStringList lines = object.split(QLatin1Char(' '));
    QString name = lines.takeFirst();
    const bool isMarked = name.startsWith(QLatin1Char('*')) || name.startsWith(QLatin1Char('-'));
    const QString mark = isMarked ? name.left(1) : QString();
    name.remove(0, mark.size());
    if (isMarked) {
        lines.prepend(mark + QLatin1Char('@') + name);
    }
    const QString path = folder + QLatin1Char('/') + name;
    if (!m_thread.publish(path.toStdString(), lines.join(QLatin1Char('\n')).toStdString())) {
        qFatal("cannot publish %s", qPrintable(object));
    }
}
