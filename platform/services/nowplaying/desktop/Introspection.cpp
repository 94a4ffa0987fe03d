#include "Introspection.h"

#include <QtCore/QFile>

namespace voro::nowplaying {

QString introspection(const QStringList &missing)
{
    QFile file(QStringLiteral(":/mpris/Mpris.xml"));
    if (!file.open(QFile::ReadOnly)) {
        qFatal("the module lacks its resource");
    }
    QString xml = QString::fromLatin1(file.readAll());
    for (const QString &name : missing) {
        const qsizetype line = xml.indexOf("    <property name=\"" + name + '"');
        xml.remove(line, xml.indexOf('\n', line) + 1 - line);
    }
    return xml;
}

} // namespace voro::nowplaying
