#include "StandardInput.h"

#include "Arguments.h"
#include "InputServer.h"
#include "Output.h"
#include "StopSignals.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QtEndian>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

namespace voro {

namespace {

/** How long it may take to come to its end to be a file, which can be sought in. */
constexpr qint64 FileMs = 500;
/** How long something is waited for without a word. */
constexpr qint64 LongMs = 2000;

/** The path of the copy of standard input, for the end of the program, which may come from a signal. */
std::array<char, PATH_MAX> copyPath{};

void removeCopy()
{
    unlink(copyPath.data());
    copyPath.front() = 0;
}

/** Opens the file that standard input is copied into, which goes with the program. */
pps::Fd openCopy()
{
    const QByteArray path = QFile::encodeName(QDir::tempPath()) + "/voro-XXXXXX";
    if (path.size() >= static_cast<qsizetype>(copyPath.size())) {
        errno = ENAMETOOLONG;
        return {};
    }
    std::copy(path.begin(), path.end(), copyPath.begin());
    pps::Fd copy(mkostemp(copyPath.data(), O_CLOEXEC));
    if (copy.isValid()) {
        std::atexit(removeCopy);
        std::at_quick_exit(removeCopy);
    }
    return copy;
}

[[noreturn]] void throwProblem(const char *problem)
{
    throw UsageError{QStringLiteral("standard input cannot be kept: %1").arg(QString::fromLocal8Bit(problem))};
}

/** Copies standard input until it is over, or can be played before it is. */
class Collection {
public:
    Collection(InputUse use, qint64 most) : m_isWhole(use == InputUse::FromAnywhere || hasProxy()), m_most(most)
    {
        if (!m_copy.isValid()) {
            throwProblem(strerror(errno));
        }
        m_wait.start();
    }

    void collect()
    {
        while (!m_isOver && !canBegin()) {
            if (awaitInput()) {
                takeInput();
            }
        }
    }

    bool isOver() const { return m_isOver; }
    qint64 size() const { return m_size; }
    pps::Fd takeCopy() { return std::move(m_copy); }

private:
    /** A proxy is asked for addresses of this machine as well, and does not know them. */
    static bool hasProxy() { return qEnvironmentVariableIsSet("http_proxy"); }

    bool canBegin() const
    {
        return !m_isWhole && m_size > 0 && m_sinceFirst.elapsed() >= FileMs && playsBeforeItsEnd(m_copy.get());
    }

    /** Waits for more, as long as nothing else is to be done; whether it is there. */
    bool awaitInput()
    {
        qint64 timeout = m_isSaid ? -1 : std::max<qint64>(0, LongMs - m_wait.elapsed());
        if (const qint64 left = m_size > 0 && !m_isWhole ? FileMs - m_sinceFirst.elapsed() : 0; left > 0) {
            timeout = left;
        }
        pollfd input{STDIN_FILENO, POLLIN, 0};
        const bool hasCome = poll(&input, 1, static_cast<int>(timeout)) > 0;
        if (!m_isSaid && m_wait.elapsed() >= LongMs) {
            sayWhatIsAwaited();
        }
        return hasCome;
    }

    void sayWhatIsAwaited()
    {
        if (m_size == 0) {
            m_isSaid = true;
            complain(QStringLiteral("play: nothing comes through standard input yet; ^C ends this"));
        } else if (m_isWhole || (m_sinceFirst.elapsed() >= FileMs && !canBegin())) {
            m_isSaid = true;
            complain(QStringLiteral("play: standard input is read to its end before it plays; ^C ends this"));
        }
    }

    void takeInput()
    {
        std::array<char, 64 * 1024> bytes;
        const ssize_t count = read(STDIN_FILENO, bytes.data(), bytes.size());
        if (count < 0 || write(m_copy.get(), bytes.data(), static_cast<size_t>(count)) != count) {
            throwProblem(strerror(errno));
        }
        if (m_size == 0) {
            m_sinceFirst.start();
        }
        m_size += count;
        m_isOver = count == 0;
        if (m_size > m_most) {
            throw UsageError{QStringLiteral("standard input has more than %1 bytes; play it from a file").arg(m_most)};
        }
    }

    pps::Fd m_copy = openCopy();
    const bool m_isWhole;
    const qint64 m_most;
    qint64 m_size = 0;
    bool m_isOver = false;
    bool m_isSaid = false;
    QElapsedTimer m_wait;
    QElapsedTimer m_sinceFirst;
};

/** The path of the file that standard input is; empty when it is none. */
QByteArray inputPath()
{
    struct stat information {};
    if (fstat(STDIN_FILENO, &information) != 0 || !S_ISREG(information.st_mode)) {
        return {};
    }
    const QByteArray path = QFile::encodeName(QFile::symLinkTarget(QStringLiteral("/proc/self/fd/0")));
    return access(path.constData(), F_OK) == 0 ? path : QByteArray();
}

QUrl urlOfPipe(InputUse use, qint64 most)
{
    const StopSignals stopSignals;
    const StopSignals::AtOnce atOnce;
    Collection collection(use, most);
    collection.collect();
    if (collection.isOver()) {
        return mediumFromPath(copyPath.data()).url;
    }
    removeCopy();
    static std::unique_ptr<InputServer> server;
    server = std::make_unique<InputServer>(STDIN_FILENO, collection.takeCopy(), collection.size(), MostKept);
    if (server->url().isEmpty()) {
        throwProblem("this machine has no loopback network");
    }
    return server->url();
}

} // namespace

Medium inputMedium(InputUse use, qint64 most)
{
    if (isatty(STDIN_FILENO)) {
        throw UsageError{QStringLiteral("-: standard input is a terminal")};
    }
    const QByteArray path = inputPath();
    return {path.isEmpty() ? urlOfPipe(use, most) : mediumFromPath(path).url, QStringLiteral("standard input")};
}

bool playsBeforeItsEnd(int file)
{
    for (qint64 at = 0;;) {
        std::array<char, 16> header{};
        if (pread(file, header.data(), header.size(), at) != static_cast<ssize_t>(header.size())) {
            return false;
        }
        const QByteArray type(header.data() + 4, 4);
        const bool isListed = type == "ftyp" || type == "wide" || type == "free" || type == "mdat";
        if ((at == 0 && !isListed) || type == "moov") {
            return true;
        }
        const auto shortLength = qFromBigEndian<quint32>(header.data());
        const auto length = shortLength == 1 ? qFromBigEndian<quint64>(header.data() + 8) : shortLength;
        if (type == "mdat" || length < 8 || length > INT_MAX) {
            return false;
        }
        at += static_cast<qint64>(length);
    }
}

} // namespace voro
