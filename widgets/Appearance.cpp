#include "widgets/Appearance.h"

#include "widgets/Style.h"
#include "widgets/Theme.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QPalette>
#include <QStyle>

namespace vantoro {
namespace {

const char* const kPortalService = "org.freedesktop.portal.Desktop";
const char* const kPortalPath = "/org/freedesktop/portal/desktop";
const char* const kSettingsInterface = "org.freedesktop.portal.Settings";
const char* const kAppearanceGroup = "org.freedesktop.appearance";
const char* const kColorScheme = "color-scheme";
const char* const kReducedMotion = "reduced-motion";
constexpr int kFirstAnswerMs = 150; // a window that turns dark after it was shown is uglier than this wait

/// The older Read wraps the value twice.
QVariant unwrapped(QVariant value)
{
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

QDBusMessage readCall(const char* key)
{
    auto message = QDBusMessage::createMethodCall(kPortalService, kPortalPath, kSettingsInterface, "Read");
    message << QString::fromLatin1(kAppearanceGroup) << QString::fromLatin1(key);
    return message;
}

/// A desktop whose theme brings a style of its own has a palette of its own, too.
bool desktopHasOwnStyle()
{
    const QString name = QApplication::style()->objectName().toLower();
    return name != QLatin1String("fusion") && name != QLatin1String("windows");
}

}

Appearance& Appearance::instance()
{
    static Appearance appearance;
    return appearance;
}

void Appearance::install(QApplication& application)
{
    if (desktopHasOwnStyle()) {
        readPortal();
        return;
    }
    m_ownsPalette = true;
    application.setStyle(new Style);
    readPortal();
    setScheme(m_scheme);
}

void Appearance::setScheme(Scheme scheme)
{
    m_scheme = scheme;
    if (m_ownsPalette)
        QApplication::setPalette(scheme == Scheme::Dark ? theme::darkPalette() : theme::lightPalette());
    emit changed();
}

bool Appearance::reducedMotion() const
{
    return m_reducedMotion || QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration) == 0;
}

void Appearance::setReducedMotion(bool reduced)
{
    m_reducedMotion = reduced;
    emit changed();
}

void Appearance::readPortal()
{
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(kPortalService, kPortalPath, kSettingsInterface, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    const QDBusPendingReply<QDBusVariant> scheme = bus.asyncCall(readCall(kColorScheme), kFirstAnswerMs);
    readLater(kReducedMotion);
    QDBusPendingReply<QDBusVariant> answer = scheme;
    answer.waitForFinished();
    if (answer.isValid())
        apply(QLatin1String(kColorScheme), unwrapped(QVariant::fromValue(answer.value())));
    else if (answer.error().type() == QDBusError::NoReply || answer.error().type() == QDBusError::Timeout)
        readLater(kColorScheme); // a desktop that is still starting up
}

void Appearance::readLater(const char* key)
{
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(readCall(key)), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, key](QDBusPendingCallWatcher* call) {
        call->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *call;
        if (reply.isValid() && apply(QLatin1String(key), unwrapped(QVariant::fromValue(reply.value()))))
            setScheme(m_scheme);
    });
}

void Appearance::settingChanged(const QString& group, const QString& key, const QDBusVariant& value)
{
    if (group == QLatin1String(kAppearanceGroup) && apply(key, unwrapped(value.variant())))
        setScheme(m_scheme);
}

bool Appearance::apply(const QString& key, const QVariant& value)
{
    const uint number = value.toUInt();
    if (key == QLatin1String(kColorScheme)) {
        m_scheme = number == 1 ? Scheme::Dark : number == 2 ? Scheme::Light : Scheme::NoPreference;
        return true;
    }
    if (key == QLatin1String(kReducedMotion)) {
        m_reducedMotion = number == 1;
        return true;
    }
    return false;
}

}
