#include "Files.h"

#include <QtCore/QFile>

QString writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QFile::WriteOnly) || file.write(content) != content.size()) {
        qFatal("%s cannot be written", qUtf8Printable(path));
    }
    return path;
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}
