#pragma once

#include <multimedia/MediaError.h>

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

namespace voro::qml {

/** What errors mean, in words for people. */
class MediaErrors : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    QML_ADDED_IN_VERSION(1, 0)
public:
    using QObject::QObject;

    /** A sentence about an error; empty for `None`. What is no error gives a sentence with its number. */
    Q_INVOKABLE QString text(int error) const;
    /** The enumerator's name of an error, as `SourceUnavailable`; empty for what is no error. */
    Q_INVOKABLE QString name(int error) const;
};

} // namespace voro::qml
