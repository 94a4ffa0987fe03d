#pragma once

#include <QtCore/QString>
#include <QtCore/QUrl>

namespace voro {

/** What the library needs of the user interface toolkit. */
class UIToolkitSupport {
public:
    /** The window group of this process, under which its windows find each other. */
    QString windowGroupID() const;

    /**
     * The absolute path of a local URL, percent-encoded, or an empty text when the URL names no local file.
     *
     * Local are `file:` URLs, URLs without a scheme (relative ones are taken from the working folder) and `asset:`
     * URLs. Assets lie in the folder `assets` beside the application's executable or, where there is none, in
     * `../share/<application>/assets`.
     */
    static QString absolutePathFromUrl(const QUrl &url);
};

} // namespace voro
