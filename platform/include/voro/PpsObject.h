#pragma once

#include <voro/PpsAttribute.h>

#include <QtCore/QObject>

#include <memory>

namespace voro {

class PpsObjectPrivate;

/**
 * One open PPS object: a named text object under "/pps/" that processes publish, read and watch.
 *
 * A path may carry options after a question mark, separated by commas: `delta` (read what was written since the last
 * read instead of the whole object), `f=NAME` (only attributes of that name; with `delta`: everything that was written,
 * once an attribute of that name was), `wait` (reads block), `server` (own the service object). No deletion passes a
 * filter. At most 32 names are chosen, and the options are no longer than 1024 bytes. The name `.all` in a folder
 * stands for every object of the folder that changed.
 *
 * The first open of a process starts the daemon `vorod` when none runs, unless the environment says
 * `VORO_AUTOSPAWN=0`.
 */
class PpsObject : public QObject {
    Q_OBJECT
public:
    /** A closed object for the path; nothing is contacted before open(). */
    explicit PpsObject(const QString &path, QObject *parent = nullptr);
    /** Closes the object. */
    ~PpsObject() override;

    /** The path as given, with its options. */
    QString path() const;

    /**
     * Opens the object. False on failure, with error() and errorString() set. When it has returned, what the object
     * holds can be read without waiting.
     */
    bool open(QFlags<PpsOpenMode::Type> mode);
    bool isOpen() const;
    /** Closes the object; false when it is not open. What was written before takes effect before. */
    bool close();

    /**
     * Reads the object.
     *
     * A plain object gives its content, or with `delta` what was written since the last read; a service object gives
     * one message. With nothing to read a non-blocking read gives an empty text, a blocking one waits. `ok` becomes
     * false on failure: the object is not open for reading, or the broker or the service went away.
     */
    QByteArray read(bool *ok = nullptr);
    /** Writes one message of at most 64 KiB. False on failure. */
    bool write(const QByteArray &data);

    /** Whether read() waits for data; off when the object is made, on for a path with `wait`. */
    void setBlocking(bool blocking);
    bool isBlocking() const;
    /** Whether readyRead() is delivered; on when the object is made. */
    void setReadyReadEnabled(bool enabled);
    bool isReadyReadEnabled() const;

    /** The last failure as an errno number; 0 when nothing failed. */
    int error() const;
    /** The last failure as text. */
    QString errorString() const;

    /**
     * Encodes a map's entries in key order, without an object line. `ok` becomes false, and the text empty, when a
     * value is neither text, number, truth value, list nor map.
     */
    static QByteArray encode(const QVariantMap &map, bool *ok = nullptr);
    /** Decodes text into object name (with its "@") to a map of attribute values; deleted ones are left out. */
    static QVariantMap decode(const QByteArray &data, bool *ok = nullptr);
    /** Decodes text into object name (with its "@") to the object's attributes, with their flags. */
    static QMap<QString, PpsAttribute> decodeWithFlags(const QByteArray &data, bool *ok = nullptr);
    /**
     * Writes one message to the object at the path, which is opened and closed for it. 0 on success, else an errno
     * number.
     */
    static int sendMessage(const QString &path, const QString &message);

Q_SIGNALS:
    /**
     * There is something to read, or one failing read tells that the broker or the service went away. Comes from the
     * event loop only, again as long as something is left.
     */
    void readyRead();

private:
    friend class PpsObjectPrivate;
    std::unique_ptr<PpsObjectPrivate> d;
};

} // namespace voro
