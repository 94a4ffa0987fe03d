#include "Comeback.h"
#include "Connection.h"

#include <voro/PpsObject.h>

#include <QtCore/QPointer>
#include <QtCore/QSocketNotifier>

#include <cerrno>

namespace voro {

class PpsObjectPrivate {
public:
    PpsObjectPrivate(PpsObject *object, const QString &objectPath) : q(object), path(objectPath)
    {
        pps::ObjectPath parsed;
        isBlocking = pps::parsePath(objectPath.toStdString(), parsed) && parsed.wait;
    }

    bool fail(int number)
    {
        error = number;
        return false;
    }
    /** Looks from the event loop whether there is something to read. */
    void postCheck();
    void check();
    void follow();
    void dropNotifier();
    void endComeback();
    /** Whether the connection came back by itself, so that its socket is not watched yet. */
    bool hasOtherSocket() const { return notifier && notifiedSocket != connection.socketNumber(); }

    PpsObject *const q;
    const QString path;
    pps::Connection connection;
    /** A child of the object, so that it follows the object to another thread. Made by the event loop that needs it. */
    QSocketNotifier *notifier = nullptr;
    /** Which of the connection's sockets it is for. */
    unsigned notifiedSocket = 0;
    /** A child of the object as well, while the connection is lost. */
    pps::Comeback *comeback = nullptr;
    pps::Comeback::Attempts attempts;
    int error = 0;
    bool isBlocking = false;
    bool isEnabled = true;
    bool isCheckPosted = false;
    /** The failing read that is due was announced. */
    bool announcedEnd = false;
};

void PpsObjectPrivate::postCheck()
{
    if (isEnabled && !isCheckPosted && connection.isReader()) {
        isCheckPosted = true;
        QMetaObject::invokeMethod(
            q,
            [this] {
                isCheckPosted = false;
                check();
            },
            Qt::QueuedConnection);
    }
}

// An object may be closed in disconnectNotify(), which Qt calls with locks held that a QObject's destruction wants.
void PpsObjectPrivate::dropNotifier()
{
    if (notifier) {
        notifier->setEnabled(false);
        std::exchange(notifier, nullptr)->deleteLater();
    }
}

void PpsObjectPrivate::endComeback()
{
    if (comeback) {
        std::exchange(comeback, nullptr)->end();
    }
}

// Watches the connection's present socket, or for another daemon when it is lost.
void PpsObjectPrivate::follow()
{
    if (notifier && notifiedSocket != connection.socketNumber()) {
        dropNotifier();
    }
    if (!notifier) {
        notifier = new QSocketNotifier(connection.fd(), QSocketNotifier::Read, q);
        notifiedSocket = connection.socketNumber();
        QObject::connect(notifier, &QSocketNotifier::activated, q, [this] { check(); });
    }
    // The end shows on the socket for ever; it is announced once.
    notifier->setEnabled(!connection.isAtEnd());
    if (!connection.isLost()) {
        if (comeback) {
            attempts.isBack();
        }
        endComeback();
    } else if (!comeback && !connection.hasMore()) {
        comeback = new pps::Comeback(q, connection.hasReturn(), attempts, [this](bool mayStart) {
            connection.comeBack(mayStart);
            check();
        });
    }
}

void PpsObjectPrivate::check()
{
    if (!isEnabled || !connection.isReader()) {
        return;
    }
    const bool isReadable = connection.isReadable();
    follow();
    const bool isEnd = connection.isAtEnd() && !connection.isLost() && !connection.hasMore();
    if (!isReadable || (isEnd && announcedEnd)) {
        return;
    }
    announcedEnd = isEnd;
    const QPointer<PpsObject> guard(q);
    Q_EMIT q->readyRead();
    if (guard && connection.hasMore()) {
        postCheck();
    }
}

PpsObject::PpsObject(const QString &path, QObject *parent)
    : QObject(parent),
      d(std::make_unique<PpsObjectPrivate>(this, path))
{}

PpsObject::~PpsObject()
{
    d->dropNotifier();
    d->endComeback();
}

QString PpsObject::path() const
{
    return d->path;
}

bool PpsObject::open(QFlags<PpsOpenMode::Type> mode)
{
    if (!d->connection.open(d->path.toStdString(), static_cast<unsigned>(mode.toInt()))) {
        return d->fail(d->connection.error());
    }
    d->announcedEnd = false;
    d->postCheck();
    return true;
}

bool PpsObject::isOpen() const
{
    return d->connection.isOpen();
}

bool PpsObject::close()
{
    if (!isOpen()) {
        return d->fail(EBADF);
    }
    d->dropNotifier();
    d->endComeback();
    d->connection.close();
    return true;
}

QByteArray PpsObject::read(bool *ok)
{
    std::string text;
    const bool isGood = d->connection.read(text, d->isBlocking);
    if (!isGood) {
        d->fail(d->connection.error());
    }
    if (!d->connection.isOpen()) {
        d->dropNotifier();
        d->endComeback();
    } else if (d->connection.hasMore() || d->connection.isAtEnd() || d->hasOtherSocket()) {
        d->announcedEnd = false;
        d->postCheck();
    }
    if (ok) {
        *ok = isGood;
    }
    return QByteArray::fromStdString(text);
}

bool PpsObject::write(const QByteArray &data)
{
    const bool isWritten = d->connection.write({data.constData(), static_cast<size_t>(data.size())});
    if (d->hasOtherSocket()) {
        d->postCheck();
    }
    return isWritten || d->fail(d->connection.error());
}

void PpsObject::setBlocking(bool blocking)
{
    d->isBlocking = blocking;
}

bool PpsObject::isBlocking() const
{
    return d->isBlocking;
}

void PpsObject::setReadyReadEnabled(bool enabled)
{
    d->isEnabled = enabled;
    if (d->notifier) {
        d->notifier->setEnabled(enabled && !d->connection.isAtEnd());
    }
    d->postCheck();
}

bool PpsObject::isReadyReadEnabled() const
{
    return d->isEnabled;
}

int PpsObject::error() const
{
    return d->error;
}

QString PpsObject::errorString() const
{
    return d->error == 0 ? QString() : qt_error_string(d->error);
}

int PpsObject::sendMessage(const QString &path, const QString &message)
{
    pps::Connection connection;
    const bool isSent = connection.open(path.toStdString(), pps::Publish) && connection.write(message.toStdString());
    return isSent ? 0 : connection.error();
}

} // namespace voro
