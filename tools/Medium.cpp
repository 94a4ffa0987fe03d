#include "Medium.h"

#include "Arguments.h"
#include "Output.h"
#include "StopSignals.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

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

namespace voro {

namespace {

bool exists(const QByteArray &path)
{
    struct stat information {};
    return lstat(path.constData(), &information) == 0;
}

/** Whether the text begins like `http:`; one letter alone is no scheme. */
bool hasScheme(const QByteArray &text)
{
    const auto colon = text.indexOf(':');
    if (colon < 2 || !isalpha(text[0] & 0xff)) {
        return false;
    }
    return std::all_of(text.begin(), text.begin() + colon,
                       [](char c) { return isalnum(c & 0xff) || c == '+' || c == '-' || c == '.'; });
}

bool isUtf8(const QByteArray &text)
{
    return QString::fromUtf8(text).toUtf8() == text;
}

/** Another name for a medium, in a folder that goes with the program. */
QByteArray standIn()
{
    static const QTemporaryDir folder;
    static int count = 0;
    return QFile::encodeName(folder.filePath(QString::number(++count)));
}

/** A path that says the same in UTF-8, the only text a URL can name: that of a link where the path is not. */
QByteArray utf8Path(const QByteArray &path)
{
    if (isUtf8(path)) {
        return path;
    }
    const QByteArray link = standIn();
    return symlink(path.constData(), link.constData()) == 0 ? link : path;
}

/** The path of the copy of standard input, for the end of the program, which may come from a signal. */
std::array<char, PATH_MAX> copyPath{};

void removeCopy()
{
    unlink(copyPath.data());
}

/** Opens the file that standard input is copied into, which goes with the program. */
int openCopy()
{
    const QByteArray path = QFile::encodeName(QDir::tempPath()) + "/voro-XXXXXX";
    if (path.size() >= static_cast<qsizetype>(copyPath.size())) {
        errno = ENAMETOOLONG;
        return -1;
    }
    std::copy(path.begin(), path.end(), copyPath.begin());
    const int copy = mkostemp(copyPath.data(), O_CLOEXEC);
    if (copy >= 0) {
        std::atexit(removeCopy);
        std::at_quick_exit(removeCopy);
    }
    return copy;
}

/** Waits for standard input, and says once what for when that has taken long. */
void awaitInput(const QElapsedTimer &time, bool &isSaid)
{
    constexpr int LongMs = 2000;
    pollfd input{STDIN_FILENO, POLLIN, 0};
    const qint64 left = std::max<qint64>(0, LongMs - time.elapsed());
    if (!isSaid && (left == 0 || poll(&input, 1, static_cast<int>(left)) == 0)) {
        isSaid = true;
        complain(QStringLiteral("play: standard input is read to its end before it plays; ^C ends this"));
    }
}

/** Copies standard input into a file; its path. */
QByteArray keepInput(qint64 most)
{
    const StopSignals stopSignals;
    const StopSignals::AtOnce atOnce;
    QElapsedTimer time;
    time.start();
    const int descriptor = openCopy();
    QFile copy;
    bool isKept =
        descriptor >= 0 && copy.open(descriptor, QFile::WriteOnly | QFile::Unbuffered, QFile::AutoCloseHandle);
    bool isSaid = false;
    qint64 size = 0;
    std::array<char, 64 * 1024> bytes;
    for (ssize_t count = 1; isKept && count > 0;) {
        awaitInput(time, isSaid);
        count = read(STDIN_FILENO, bytes.data(), bytes.size());
        size += std::max<ssize_t>(count, 0);
        if (size > most) {
            throw UsageError{QStringLiteral("standard input has more than %1 bytes; play it from a file").arg(most)};
        }
        isKept = count >= 0 && copy.write(bytes.data(), count) == count;
    }
    if (!isKept) {
        throw UsageError{
            QStringLiteral("standard input cannot be kept: %1").arg(QString::fromLocal8Bit(strerror(errno)))};
    }
    return copyPath.data();
}

/** The path of the file that standard input is; empty when it is none. */
QByteArray inputPath()
{
    struct stat information {};
    if (fstat(STDIN_FILENO, &information) != 0 || !S_ISREG(information.st_mode)) {
        return {};
    }
    const QByteArray path = QFile::encodeName(QFile::symLinkTarget(QStringLiteral("/proc/self/fd/0")));
    return exists(path) ? path : QByteArray();
}

QByteArray absolutePath(const QByteArray &path)
{
    if (path.startsWith('/')) {
        return path;
    }
    return QFile::encodeName(QDir::currentPath()) + '/' + path;
}

Medium file(const QByteArray &path)
{
    const QByteArray encoded = utf8Path(absolutePath(path)).toPercentEncoding("/");
    return {QUrl::fromEncoded("file://" + encoded, QUrl::StrictMode),
            QString::fromLocal8Bit(path.mid(path.lastIndexOf('/') + 1))};
}

void refuseEmpty(const QByteArray &name)
{
    if (name.isEmpty()) {
        throw UsageError{QStringLiteral("an empty name names no file")};
    }
}

} // namespace

Medium mediumFromArgument(const QByteArray &argument)
{
    refuseEmpty(argument);
    if (exists(argument) || !hasScheme(argument)) {
        return file(argument);
    }
    const QUrl url(QString::fromLocal8Bit(argument));
    if (!url.isValid()) {
        throw UsageError{QStringLiteral("'%1' is no URL: %2").arg(QString::fromLocal8Bit(argument), url.errorString())};
    }
    return {url, url.toDisplayString()};
}

Medium inputMedium(qint64 most)
{
    if (isatty(STDIN_FILENO)) {
        throw UsageError{QStringLiteral("-: standard input is a terminal")};
    }
    const QByteArray path = inputPath();
    return {file(path.isEmpty() ? keepInput(most) : path).url, QStringLiteral("standard input")};
}

Medium newFileFromArgument(const QByteArray &argument)
{
    refuseEmpty(argument);
    if (!isUtf8(absolutePath(argument))) {
        throw UsageError{QStringLiteral("'%1' is not UTF-8").arg(QString::fromLocal8Bit(argument))};
    }
    return file(argument);
}

Medium sampleMedium()
{
    const QString path = QCoreApplication::applicationDirPath() + QLatin1String("/" VORO_SAMPLE);
    return file(QFile::encodeName(QDir::cleanPath(path)));
}

} // namespace voro
