#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

namespace media {

/**
 * Encodes what a filter graph of the encoder generates into a file, with additional output arguments. Ends the test
 * program when that fails.
 */
void encode(const QString &path, const QString &graph, const QStringList &arguments = {});

/** A folder of a test's own with its media. */
class Folder {
public:
    /** The path of a file. */
    QByteArray file(const QByteArray &name) const { return m_folder.filePath(QString::fromUtf8(name)).toUtf8(); }
    void write(const QByteArray &name, const QByteArray &content) const;
    QByteArray content(const QByteArray &name) const;
    void encode(const QByteArray &name, const QString &graph, const QStringList &arguments = {}) const;
    QByteArray path() const { return m_folder.path().toUtf8(); }

private:
    QTemporaryDir m_folder;
};

/** A graph of so many seconds: silence in the first half, noise in the second. */
QString silenceThenNoise(int seconds);

} // namespace media
