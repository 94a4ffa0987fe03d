#pragma once

#include <multimedia/MediaError.h>

#include <QtCore/QObject>
#include <QtCore/QUrl>
#include <QtQml/qqmlregistration.h>

namespace voro::qml {

/** Error messages for people. */
class MediaErrors : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    QML_ADDED_IN_VERSION(1, 0)
public:
    using QObject::QObject;

    /** A sentence for an error; empty for `None`. An unknown number gives a sentence with that number. */
    Q_INVOKABLE QString text(int error) const;
    /** A sentence for an error of a medium: for a file it tells what is wrong with it, as that it is missing. */
    Q_INVOKABLE QString text(int error, const QUrl &medium) const;
    /** A sentence for an error of a recording: what is wrong with its file or with where it should be. */
    Q_INVOKABLE QString recordingText(int error, const QUrl &file) const;
    /** The enumerator name of an error, as in `SourceUnavailable`; empty for an unknown number. */
    Q_INVOKABLE QString name(int error) const;
};

} // namespace voro::qml
