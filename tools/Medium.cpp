#include "Medium.h"

#include "Arguments.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

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

QByteArray absolutePath(const QByteArray &path)
{
    if (path.startsWith('/')) {
        return path;
    }
    return QFile::encodeName(QDir::currentPath()) + '/' + path;
}

void refuseEmpty(const QByteArray &name)
{
    if (name.isEmpty()) {
        throw UsageError{QStringLiteral("an empty name names no file")};
    }
}

} // namespace

Medium mediumFromPath(const QByteArray &path)
{
    const QByteArray encoded = utf8Path(absolutePath(path)).toPercentEncoding("/");
    return {QUrl::fromEncoded("file://" + encoded, QUrl::StrictMode),
            QString::fromLocal8Bit(path.mid(path.lastIndexOf('/') + 1))};
}

Medium mediumFromArgument(const QByteArray &argument)
{
    refuseEmpty(argument);
    if (exists(argument) || !hasScheme(argument)) {
        return mediumFromPath(argument);
    }
    const QUrl url(QString::fromLocal8Bit(argument));
    if (!url.isValid()) {
        throw UsageError{QStringLiteral("'%1' is no URL: %2").arg(QString::fromLocal8Bit(argument), url.errorString())};
    }
    return {url, url.isLocalFile() ? url.fileName() : url.toDisplayString()};
}

Medium newFileFromArgument(const QByteArray &argument)
{
    refuseEmpty(argument);
    if (!isUtf8(absolutePath(argument))) {
        throw UsageError{QStringLiteral("'%1' is not UTF-8").arg(QString::fromLocal8Bit(argument))};
    }
    return mediumFromPath(argument);
}

Medium sampleMedium()
{
    const QString path = QCoreApplication::applicationDirPath() + QLatin1String("/" VORO_SAMPLE);
    return mediumFromPath(QFile::encodeName(QDir::cleanPath(path)));
}

} // namespace voro
