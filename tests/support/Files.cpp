#include "Files.h"

#include <QtCore/QFile>
#include <QtCore/QtEndian>

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

QByteArray silentWav(int seconds)
{
    const auto size = static_cast<quint32>(seconds) * 8000;
    QByteArray file = QByteArray::fromHex("524946460000000057415645666d7420100000000100"
                                          "0100401f0000401f0000010008006461746100000000");
    qToLittleEndian(36 + size, file.data() + 4);
    qToLittleEndian(size, file.data() + 40);
    return file + QByteArray(size, '\x80');
}
