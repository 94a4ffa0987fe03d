#pragma once

#include <QtCore/QFile>
#include <QtCore/QObject>
#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>
#include <QtQml/qqmlregistration.h>

/** What the applications do with files. Functions that change something return what went wrong, as a sentence. */
class Files : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QUrl music READ music CONSTANT)
    Q_PROPERTY(QUrl recordings READ recordings CONSTANT)
    Q_PROPERTY(QUrl sample READ sample CONSTANT)
public:
    using QObject::QObject;

    /** The user's folder of music, or the home folder where there is none. */
    static QUrl music();
    /** The folder of recordings, made when it is asked for. */
    static QUrl recordings();
    /** The piece of music that comes with the project; empty where it was not installed. */
    static QUrl sample();

    Q_INVOKABLE bool isFolder(const QUrl &url) const;
    /** The name without folder and extension. */
    Q_INVOKABLE QString nameOf(const QUrl &url) const;
    /** In bytes. */
    Q_INVOKABLE double sizeOf(const QUrl &url) const;
    /** What is left in bytes in the file system of that folder; negative when it is not known. */
    Q_INVOKABLE double freeSpaceOf(const QUrl &folder) const;
    Q_INVOKABLE QUrl folderOf(const QUrl &url) const;
    /** As people write it. */
    Q_INVOKABLE QString pathOf(const QUrl &url) const;
    /** A URL for an address that somebody typed; empty for what is none. */
    Q_INVOKABLE QUrl addressOf(const QString &text) const;
    /** The name of a folder, as its heading. */
    Q_INVOKABLE QString titleOf(const QUrl &folder) const;
    /** The picture that lies beside a medium; empty without one. */
    Q_INVOKABLE static QUrl coverOf(const QUrl &medium);
    /** A file for a picture that stands in a data URL, for others to read too; it goes when the next one comes. */
    Q_INVOKABLE QUrl fileOf(const QUrl &picture);
    /**
     * The captions beside a medium that have its name, those in the user's language first: objects with a `url` and a
     * `text`, the name of their language as far as the file's name has one.
     */
    Q_INVOKABLE QVariantList captionsOf(const QUrl &medium) const;

    /** How a language calls itself, by its code; empty for an unknown one. */
    Q_INVOKABLE QString nameOfLanguage(const QString &code) const;
    /** Whether a code is that of the user's language. */
    Q_INVOKABLE bool isOwnLanguage(const QString &code) const;

    /** A new name for a recording, by the time. */
    Q_INVOKABLE QUrl newRecording(const QString &extension) const;
    /** Gives a file another name in its folder; the extension stays. */
    Q_INVOKABLE QString rename(const QUrl &file, const QString &name) const;
    Q_INVOKABLE QString remove(const QUrl &file) const;
    /** Says in its name that a recording was cut short; false when there is nothing in it. */
    Q_INVOKABLE bool markCutShort(const QUrl &recording) const;

    /** The media that are meant: files and addresses as they are, of folders everything in them. */
    Q_INVOKABLE QList<QUrl> mediaOf(const QList<QUrl> &urls) const;

    /** The media that a playlist of the kind M3U names. */
    Q_INVOKABLE QList<QUrl> readPlaylist(const QUrl &playlist) const;
    /** Adds a medium to a playlist of the music folder, which is made if need be. */
    Q_INVOKABLE QString addToPlaylist(const QString &name, const QUrl &medium) const;
    /** Writes what is to be played into a playlist that lives as long as the application. */
    Q_INVOKABLE QUrl makeQueue(const QList<QUrl> &media);

private:
    /** What lives as long as the application. */
    QTemporaryDir m_folder;
    int m_queueCount = 0;
    QFile m_picture;
};
