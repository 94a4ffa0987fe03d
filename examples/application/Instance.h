#pragma once

#include <QtCore/QObject>
#include <QtCore/QUrl>
#include <QtCore/QVariantMap>

namespace application {

/**
 * The application on the session bus, where it is once only: the desktop starts it there, and a second start hands its
 * operands to the first. Without a bus every start is one of its own.
 */
class Instance : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
public:
    /** Takes the name of the application, unless another instance has it. */
    explicit Instance(const QString &id);

    /** Whether another instance runs and has taken the URLs. */
    bool handsOver(const QList<QUrl> &urls) const;

public Q_SLOTS:
    // As the desktop calls them.

    void Activate(const QVariantMap &platformData);
    void Open(const QStringList &uris, const QVariantMap &platformData);
    void ActivateAction(const QString &action, const QVariantList &parameters, const QVariantMap &platformData);

Q_SIGNALS:
    /** The window is to come to the front, and to open the URLs if there are any. */
    void asked(const QList<QUrl> &urls);
    /** The application is to end as if somebody closed its window. */
    void quitAsked();

private:
    QString m_id;
    bool m_isFirst = true;
};

} // namespace application
