#pragma once

#include <voro/UIToolkitSupport.h>

#include <QtCore/QString>
#include <QtCore/QUrl>

namespace voro::multimedia {

/** The path of a local URL as it stands in the file system; empty for any other URL. */
inline QString toLocalPath(const QUrl &url)
{
    QString path = QUrl::fromPercentEncoding(voro::UIToolkitSupport::absolutePathFromUrl(url).toUtf8());
    if (path.startsWith(QLatin1String("///"))) {
        path.remove(0, 2);
    }
    return path;
}

} // namespace voro::multimedia
