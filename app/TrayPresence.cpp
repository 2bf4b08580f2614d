#include "app/TrayPresence.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QGuiApplication>

#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

namespace vantoro {
namespace {

const QString kWatcher = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString kWatcherPath = QStringLiteral("/StatusNotifierWatcher");

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

}

void TrayPresence::watch()
{
    if (hasSelectionOwner())
        return emit found();
    auto bus = QDBusConnection::sessionBus();
    auto* arrival = new QDBusServiceWatcher(kWatcher, bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(arrival, &QDBusServiceWatcher::serviceRegistered, this, &TrayPresence::askWatcher);
    bus.connect(kWatcher, kWatcherPath, kWatcher, QStringLiteral("StatusNotifierHostRegistered"), this,
                SLOT(askWatcher()));
    askWatcher();
}

void TrayPresence::askWatcher()
{
    auto question = QDBusMessage::createMethodCall(
        kWatcher, kWatcherPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question.setAutoStartService(false);
    question << kWatcher << QStringLiteral("IsStatusNotifierHostRegistered");
    auto* answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] { takeAnswer(*answer); });
}

void TrayPresence::takeAnswer(QDBusPendingCallWatcher& answer)
{
    const QDBusPendingReply<QDBusVariant> reply(answer);
    if (!reply.isError() && reply.value().variant().toBool())
        emit found();
    answer.deleteLater();
}

bool TrayPresence::hasSelectionOwner()
{
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11)
        return false;
    auto* connection = x11->connection();
    const QByteArray name("_NET_SYSTEM_TRAY_S0");
    const auto asked = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.constData());
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> atom(xcb_intern_atom_reply(connection, asked, nullptr));
    if (!atom)
        return false;
    const std::unique_ptr<xcb_get_selection_owner_reply_t, Free> owner(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, atom->atom), nullptr));
    return owner && owner->owner != XCB_NONE;
}

}
