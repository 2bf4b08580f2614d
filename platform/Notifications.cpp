#include "platform/Notifications.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusReply>

namespace vantoro {
namespace {

const QString kService = QStringLiteral("org.freedesktop.Notifications");
const QString kPath = QStringLiteral("/org/freedesktop/Notifications");
constexpr int kTimeout = 1000; // milliseconds

QDBusMessage callTo(const QString& method) { return QDBusMessage::createMethodCall(kService, kPath, kService, method); }

}

Notifications::Notifications(const QString& applicationId, QObject* parent)
    : QObject(parent)
    , m_applicationId(applicationId)
{
    auto bus = QDBusConnection::sessionBus();
    bus.connect(kService, kPath, kService, QStringLiteral("ActionInvoked"), this,
                SLOT(serverActionInvoked(uint, QString)));
    bus.connect(kService, kPath, kService, QStringLiteral("ActivationToken"), this,
                SLOT(serverActivationToken(uint, QString)));
}

QStringList Notifications::capabilities()
{
    if (!m_capabilities) {
        const QDBusReply<QStringList> reply
            = QDBusConnection::sessionBus().call(callTo(QStringLiteral("GetCapabilities")), QDBus::Block, kTimeout);
        m_capabilities = reply.isValid() ? reply.value() : QStringList();
    }
    return *m_capabilities;
}

void Notifications::notify(const QString& summary, const QString& body, const std::vector<Button>& buttons,
                           bool isError)
{
    if (!QDBusConnection::sessionBus().isConnected())
        return;
    QStringList actions;
    if (capabilities().contains(QStringLiteral("actions"))) {
        for (const Button& button : buttons)
            actions << button.key << button.label;
    }
    const bool hasMarkup = capabilities().contains(QStringLiteral("body-markup"));
    const QVariantMap hints{
        {QStringLiteral("desktop-entry"), m_applicationId},
        {QStringLiteral("category"), isError ? QStringLiteral("transfer.error") : QStringLiteral("transfer.complete")}};
    auto call = callTo(QStringLiteral("Notify"));
    call << QStringLiteral("Vantoro") << m_id << m_applicationId << summary << (hasMarkup ? body.toHtmlEscaped() : body)
         << actions << hints << -1;
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<uint> reply = *watcher;
        if (!reply.isError())
            m_id = reply.value();
        watcher->deleteLater();
    });
}

void Notifications::serverActivationToken(uint id, const QString& token)
{
    if (id == m_id)
        m_token = token;
}

void Notifications::serverActionInvoked(uint id, const QString& key)
{
    if (id == m_id)
        emit actionInvoked(key, std::exchange(m_token, {}));
}

}
