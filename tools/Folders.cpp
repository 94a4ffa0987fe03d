#include "Folders.h"

#include <QtCore/QCoreApplication>

namespace voro {

bool readFolder(PpsObject &list, const std::function<void(const QString &, bool)> &take)
{
    // A long list comes in several reads.
    for (;;) {
        bool ok = false;
        const QByteArray data = list.read(&ok);
        if (!ok || data.isEmpty()) {
            return ok;
        }
        const QVariantMap entries = PpsObject::decode(data).value(QStringLiteral("@.list")).toMap();
        for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
            take(entry.key(), entry.value() == QLatin1String("folder"));
        }
    }
}

QString contextFolder(const QString &className)
{
    const QString contexts = QStringLiteral("/pps/services/multimedia/renderer/context/");
    const QString prefix = QLatin1String("voro.multimedia.") + className + QLatin1String("__");
    PpsObject list(contexts + QLatin1String(".list"));
    QString folder;
    quint64 first = 0;
    const auto look = [&](const QString &name, bool) {
        // The rest of a context's name is a number that holds the process in its upper half.
        bool isNumber = false;
        const quint64 number = name.startsWith(prefix) ? name.mid(prefix.size()).toULongLong(&isNumber, 36) : 0;
        const bool isOurs = isNumber && static_cast<qint64>(number >> 32) == QCoreApplication::applicationPid();
        if (isOurs && (folder.isEmpty() || number < first)) {
            folder = contexts + name;
            first = number;
        }
    };
    return list.open(PpsOpenMode::Subscribe) && readFolder(list, look) ? folder : QString();
}

} // namespace voro
