#include <voro/UIToolkitSupport.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace voro {

namespace {

QString percentEncoded(const QString &path)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(path, "/"));
}

QString assetsFolder()
{
    const QFileInfo executable(QFile::symLinkTarget(QStringLiteral("/proc/self/exe")));
    const QDir folder = executable.dir();
    if (folder.exists(QStringLiteral("assets"))) {
        return folder.filePath(QStringLiteral("assets"));
    }
    return QDir::cleanPath(folder.filePath(QStringLiteral("../share/%1/assets").arg(executable.fileName())));
}

/** A percent-encoded path below a folder that is not encoded yet. */
QString below(const QString &folder, const QString &encodedPath)
{
    return percentEncoded(folder) + QLatin1Char('/') + encodedPath;
}

} // namespace

QString UIToolkitSupport::windowGroupID() const
{
    return QStringLiteral("voro-%1").arg(QCoreApplication::applicationPid());
}

QString UIToolkitSupport::absolutePathFromUrl(const QUrl &url)
{
    const QString scheme = url.scheme();
    QString path = url.path(QUrl::FullyEncoded);
    if (path.isEmpty()) {
        return {};
    }
    if (scheme == QLatin1String("asset")) {
        while (path.startsWith(QLatin1Char('/'))) {
            path.remove(0, 1);
        }
        return path.isEmpty() ? QString() : below(assetsFolder(), path);
    }
    if (!scheme.isEmpty() && scheme != QLatin1String("file")) {
        return {};
    }
    const QString host = url.host();
    if (!host.isEmpty() && host != QLatin1String("localhost")) {
        return {};
    }
    return path.startsWith(QLatin1Char('/')) ? path : below(QDir::currentPath(), path);
}

} // namespace voro
