#include "app/ApplicationService.h"

#include "app/AppDelegate.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

#include <array>

namespace vantoro {
namespace {

using Kind = LaunchRequest::Kind;

const QString kObjectPath = QStringLiteral("/org/vantoro/vantoro");
const QString kApplicationInterface = QStringLiteral("org.freedesktop.Application");
const QString kServicesInterface = QStringLiteral("org.vantoro.Services");
constexpr int kForwardTimeout = 25000; // milliseconds

/// Windows may come to the front while one of these lives; children must not inherit the token.
class ActivationToken {
public:
    explicit ActivationToken(const QString& token)
    {
        if (!token.isEmpty())
            qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
    }
    ~ActivationToken() { qunsetenv("XDG_ACTIVATION_TOKEN"); }
    ActivationToken(const ActivationToken&) = delete;
    ActivationToken& operator=(const ActivationToken&) = delete;
};

QString tokenIn(const QVariantMap& platformData)
{
    const QString token = platformData.value(QStringLiteral("activation-token")).toString();
    return token.isEmpty() ? platformData.value(QStringLiteral("desktop-startup-id")).toString() : token;
}

QVariantMap platformDataWith(const QString& token)
{
    if (token.isEmpty())
        return {};
    return {{QStringLiteral("activation-token"), token}, {QStringLiteral("desktop-startup-id"), token}};
}

QStringList urisFor(const QStringList& paths)
{
    QStringList uris;
    for (const QString& path : paths)
        uris += QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded());
    return uris;
}

QStringList pathsFrom(const QStringList& uris)
{
    QStringList paths;
    for (const QString& uri : uris) {
        const QUrl url(uri);
        if (url.isLocalFile())
            paths += url.toLocalFile();
        else if (uri.startsWith(QLatin1Char('/')))
            paths += uri;
        else
            qWarning("WAR: not a local file: %s", qUtf8Printable(uri));
    }
    return paths;
}

/// The URIs in an action's parameter, however the caller wrapped them.
QStringList urisIn(const QVariantList& parameter)
{
    QStringList uris;
    for (QVariant value : parameter) {
        if (value.canConvert<QDBusVariant>() && value.userType() == qMetaTypeId<QDBusVariant>())
            value = value.value<QDBusVariant>().variant();
        if (value.userType() == qMetaTypeId<QDBusArgument>())
            uris += qdbus_cast<QStringList>(value);
        else
            uris += value.toStringList();
    }
    return uris;
}

struct ServiceRow {
    Kind kind;
    const char* method;
    const char* action;
};
constexpr std::array kServices{
    ServiceRow{Kind::ServiceToCurrentFolder, "ExtractToCurrentFolder", "extract-to-current-folder"},
    ServiceRow{Kind::ServiceToDesktop, "ExtractToDesktop", "extract-to-desktop"},
    ServiceRow{Kind::ServiceToOthers, "ExtractToOthers", "extract-to-others"},
    ServiceRow{Kind::ExtractHere, "ExtractHere", "extract-here"},
    ServiceRow{Kind::ExtractTo, "ExtractTo", ""},
    ServiceRow{Kind::ExtractToDesktop, "ExtractIntoDesktopFolder", "extract-into-desktop-folder"},
    ServiceRow{Kind::ExtractAsking, "ExtractAsking", "extract-asking"},
    ServiceRow{Kind::Compress, "Compress", "compress"},
};

QDBusMessage messageFor(const LaunchRequest& request, const QString& token)
{
    const auto call = [](const QString& interface, const char* method) {
        return QDBusMessage::createMethodCall(kApplicationId, kObjectPath, interface, QString::fromLatin1(method));
    };
    for (const ServiceRow& row : kServices) {
        if (row.kind != request.kind)
            continue;
        auto message = call(kServicesInterface, row.method);
        message << urisFor(request.paths);
        if (request.kind == Kind::ExtractTo)
            message << request.folder;
        return message << platformDataWith(token);
    }
    if (request.kind == Kind::Open)
        return call(kApplicationInterface, "Open") << urisFor(request.paths) << platformDataWith(token);
    return call(kApplicationInterface, "Activate") << platformDataWith(token);
}

}

ApplicationService::ApplicationService(AppDelegate& delegate) : m_delegate(delegate)
{
    new FreedesktopApplication(*this, delegate);
    auto* services = new ExtractionServices(*this, delegate);
    connect(&delegate, &AppDelegate::runningChanged, services, [](bool isRunning) {
        auto signal = QDBusMessage::createSignal(kObjectPath, QStringLiteral("org.freedesktop.DBus.Properties"),
                                                 QStringLiteral("PropertiesChanged"));
        signal << kServicesInterface << QVariantMap{{QStringLiteral("isRunning"), isRunning}} << QStringList();
        QDBusConnection::sessionBus().send(signal);
    });
}

ApplicationService::Role ApplicationService::claimOrForward(const LaunchRequest& request, const QString& token)
{
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return Role::Primary;
    bus.registerObject(kObjectPath, this);
    const auto reply = bus.interface()->registerService(kApplicationId, QDBusConnectionInterface::DontQueueService,
                                                        QDBusConnectionInterface::DontAllowReplacement);
    if (!reply.isValid() || reply.value() == QDBusConnectionInterface::ServiceRegistered)
        return Role::Primary;
    bus.unregisterObject(kObjectPath);
    const QDBusMessage answer = bus.call(messageFor(request, token), QDBus::Block, kForwardTimeout);
    if (answer.type() == QDBusMessage::ReplyMessage)
        return Role::Forwarded;
    qWarning("ERR: the running program does not answer: %s", qUtf8Printable(answer.errorMessage()));
    return Role::ForwardingFailed;
}

void ApplicationService::perform(const LaunchRequest& request, const QString& activationToken)
{
    const ActivationToken token(activationToken);
    switch (request.kind) {
    case Kind::Open:
        for (const QString& path : request.paths)
            m_delegate.applicationOpenFile(path);
        break;
    case Kind::ExtractHere:
        m_delegate.extractPaths(request.paths, DestinationType::Current);
        break;
    case Kind::ExtractTo:
        m_delegate.extractPathsIntoFolder(request.paths, request.folder);
        break;
    case Kind::ExtractToDesktop:
        m_delegate.extractPaths(request.paths, DestinationType::Desktop);
        break;
    case Kind::ExtractAsking:
        m_delegate.extractPaths(request.paths, DestinationType::Ask);
        break;
    case Kind::Compress:
        m_delegate.compressFiles(request.paths);
        break;
    case Kind::ServiceToCurrentFolder:
        if (request.paths.isEmpty())
            m_delegate.extractToCurrentFolder();
        else
            m_delegate.extractToCurrentFolderWithPasteboard(request.paths);
        break;
    case Kind::ServiceToDesktop:
        if (request.paths.isEmpty())
            m_delegate.extractToDesktop();
        else
            m_delegate.extractToDesktopWithPasteboard(request.paths);
        break;
    case Kind::ServiceToOthers:
        if (request.paths.isEmpty())
            m_delegate.extractToOthers();
        else
            m_delegate.extractToOthersWithPasteboard(request.paths);
        break;
    case Kind::Activate:
        m_delegate.applicationShouldHandleReopen();
        break;
    case Kind::BusService:
    case Kind::Help:
    case Kind::Version:
    case Kind::Mistake:
        return;
    }
    emit used();
}

FreedesktopApplication::FreedesktopApplication(ApplicationService& service, AppDelegate& delegate)
    : QDBusAbstractAdaptor(&service)
    , m_service(service)
    , m_delegate(delegate)
{
}

void FreedesktopApplication::Activate(const QVariantMap& platform_data)
{
    m_service.perform({.kind = Kind::Activate}, tokenIn(platform_data));
}

void FreedesktopApplication::Open(const QStringList& uris, const QVariantMap& platform_data)
{
    m_service.perform({.kind = Kind::Open, .paths = pathsFrom(uris)}, tokenIn(platform_data));
}

void FreedesktopApplication::ActivateAction(const QString& action_name, const QVariantList& parameter,
                                            const QVariantMap& platform_data)
{
    const QStringList paths = pathsFrom(urisIn(parameter));
    for (const ServiceRow& row : kServices) {
        if (!action_name.isEmpty() && action_name == QLatin1String(row.action))
            return m_service.perform({.kind = row.kind, .paths = paths}, tokenIn(platform_data));
    }
    const ActivationToken token(tokenIn(platform_data));
    if (action_name == QLatin1String("preferences"))
        m_delegate.openPrefsWindow();
    else
        m_delegate.toggleOpenWindow();
    emit m_service.used();
}

ExtractionServices::ExtractionServices(ApplicationService& service, AppDelegate& delegate)
    : QDBusAbstractAdaptor(&service)
    , m_service(service)
    , m_delegate(delegate)
{
}

bool ExtractionServices::isRunning() const { return m_delegate.isRunning(); }

void ExtractionServices::ExtractToCurrentFolder(const QStringList& uris, const QVariantMap& platform_data)
{
    m_service.perform({.kind = Kind::ServiceToCurrentFolder, .paths = pathsFrom(uris)}, tokenIn(platform_data));
}

void ExtractionServices::ExtractToDesktop(const QStringList& uris, const QVariantMap& platform_data)
{
    m_service.perform({.kind = Kind::ServiceToDesktop, .paths = pathsFrom(uris)}, tokenIn(platform_data));
}

void ExtractionServices::ExtractToOthers(const QStringList& uris, const QVariantMap& platform_data)
{
    m_service.perform({.kind = Kind::ServiceToOthers, .paths = pathsFrom(uris)}, tokenIn(platform_data));
}

void ExtractionServices::ExtractHere(const QStringList& uris, const QVariantMap& platform_data)
{
    m_service.perform({.kind = Kind::ExtractHere, .paths = pathsFrom(uris)}, tokenIn(platform_data));
}

void ExtractionServices::ExtractTo(const QStringList& uris, const QString& folder, const QVariantMap& platform_data)
{
    m_service.perform({.kind = Kind::ExtractTo, .paths = pathsFrom(uris), .folder = folder}, tokenIn(platform_data));
}

void ExtractionServices::ExtractIntoDesktopFolder(const QStringList& uris, const QVariantMap& platform_data)
{
    m_service.perform({.kind = Kind::ExtractToDesktop, .paths = pathsFrom(uris)}, tokenIn(platform_data));
}

void ExtractionServices::ExtractAsking(const QStringList& uris, const QVariantMap& platform_data)
{
    m_service.perform({.kind = Kind::ExtractAsking, .paths = pathsFrom(uris)}, tokenIn(platform_data));
}

void ExtractionServices::Compress(const QStringList& uris, const QVariantMap& platform_data)
{
    m_service.perform({.kind = Kind::Compress, .paths = pathsFrom(uris)}, tokenIn(platform_data));
}

}
