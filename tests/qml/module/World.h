#pragma once

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QUrl>
#include <QtQml/qqmlregistration.h>

/** What the tests cannot do in QML: media files, key presses, and what the C++ classes have. */
class World : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QStringList classes READ classes CONSTANT)
    Q_PROPERTY(QStringList enumerators READ enumerators CONSTANT)
public:
    using QObject::QObject;

    /** The names of the library's classes. */
    static QStringList classes();
    Q_INVOKABLE QStringList properties(const QString &className) const;
    /** The signals by their names, and the slots by their names. */
    Q_INVOKABLE QStringList signalNames(const QString &className) const;
    Q_INVOKABLE QStringList slotNames(const QString &className) const;
    /** Every enumerator as "MediaState.Started=2". */
    static QStringList enumerators();

    /** Makes a file of a tone, with a title. */
    Q_INVOKABLE QUrl tone(const QString &name, double seconds, const QString &title) const;
    /** A place for a file of that name. */
    Q_INVOKABLE QUrl place(const QString &name) const;
    /** Holds a media key so long, as a device would; the service's name of the key. */
    Q_INVOKABLE void press(const QString &key, int milliseconds) const;
};
