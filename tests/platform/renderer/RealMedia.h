#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

#include <Files.h>
#include <Media.h>

namespace media {

/** A folder of a test's own with its media. */
class Folder {
public:
    /** The path of a file. */
    QByteArray file(const QByteArray &name) const { return m_folder.filePath(QString::fromUtf8(name)).toUtf8(); }
    void write(const QByteArray &name, const QByteArray &content) const
    {
        writeFile(QString::fromUtf8(file(name)), content);
    }
    QByteArray content(const QByteArray &name) const { return readFile(QString::fromUtf8(file(name))); }
    void encode(const QByteArray &name, const QString &graph, const QStringList &arguments = {}) const
    {
        media::encode(QString::fromUtf8(file(name)), graph, arguments);
    }
    QByteArray path() const { return m_folder.path().toUtf8(); }

private:
    QTemporaryDir m_folder;
};

/** A graph of so many seconds: silence in the first half, noise in the second. */
inline QString silenceThenNoise(int seconds)
{
    return QStringLiteral("aevalsrc='if(lt(t,%1),0,random(0)-0.5)':duration=%2:sample_rate=44100")
        .arg(seconds / 2.0)
        .arg(seconds);
}

} // namespace media
