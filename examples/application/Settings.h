#pragma once

#include <QtCore/QBasicTimer>
#include <QtCore/QObject>
#include <QtCore/QVariantMap>
#include <QtQml/QQmlParserStatus>
#include <QtQml/qqmlregistration.h>

/** Remembers the properties that are declared in it from one start of the application to the next. */
class Settings : public QObject,
                 public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    /** The group that the properties belong to, to be set once. */
    Q_PROPERTY(QString category MEMBER m_category)
public:
    using QObject::QObject;
    ~Settings() override;

    void classBegin() override {}
    void componentComplete() override;

    /** What an earlier start has kept, for what is needed before properties are read. */
    Q_INVOKABLE QVariant value(const QString &key, const QVariant &otherwise = {}) const;
    Q_INVOKABLE void setValue(const QString &key, const QVariant &value);

protected:
    void timerEvent(QTimerEvent *event) override;

private Q_SLOTS:
    void note();

private:
    void store();

    QString m_category;
    QVariantMap m_changed;
    QBasicTimer m_timer;
};
