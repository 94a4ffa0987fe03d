#include "Instance.h"

#include "Bus.h"

#include <QtDBus/QDBusMessage>

namespace application {

namespace {

QString pathOf(const QString &id)
{
    return QLatin1Char('/') + QString(id).replace(QLatin1Char('.'), QLatin1Char('/'));
}

} // namespace

Instance::Instance(const QString &id) : m_id(id)
{
    QDBusConnection bus = sessionBus();
    if (bus.isConnected()) {
        bus.registerObject(pathOf(id), this, QDBusConnection::ExportAllSlots);
        m_isFirst = bus.registerService(id);
    }
}

bool Instance::handsOver(const QList<QUrl> &urls) const
{
    if (m_isFirst) {
        return false;
    }
    QVariantMap platformData;
    if (const QString token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN"); !token.isEmpty()) {
        platformData.insert(QStringLiteral("activation-token"), token);
    }
    auto call = QDBusMessage::createMethodCall(m_id, pathOf(m_id), QStringLiteral("org.freedesktop.Application"),
                                               urls.isEmpty() ? QStringLiteral("Activate") : QStringLiteral("Open"));
    if (!urls.isEmpty()) {
        call << QUrl::toStringList(urls, QUrl::FullyEncoded);
    }
    call << platformData;
    return sessionBus().call(call).type() == QDBusMessage::ReplyMessage;
}

void Instance::Activate(const QVariantMap &platformData)
{
    Open({}, platformData);
}

void Instance::Open(const QStringList &uris, const QVariantMap &platformData)
{
    if (const auto token = platformData.constFind(QStringLiteral("activation-token")); token != platformData.cend()) {
        qputenv("XDG_ACTIVATION_TOKEN", token->toByteArray());
    }
    Q_EMIT asked(QUrl::fromStringList(uris));
}

void Instance::ActivateAction(const QString &action, const QVariantList &, const QVariantMap &platformData)
{
    if (action == QLatin1String("quit")) {
        Q_EMIT quitAsked();
    } else {
        Open({}, platformData);
    }
}

} // namespace application
