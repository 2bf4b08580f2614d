#pragma once

#include "app/CommandLine.h"

#include <QDBusAbstractAdaptor>
#include <QVariantMap>

namespace vantoro {

class AppDelegate;

inline const QString kApplicationId = QStringLiteral("org.vantoro.vantoro");

/// The one running instance on the session bus: takes what later launches, the file manager and scripts ask for.
/// Main thread.
class ApplicationService final : public QObject {
    Q_OBJECT
public:
    explicit ApplicationService(AppDelegate& delegate);

    enum class Role {
        Primary, ///< this process has the name, or there is no bus to share it on
        Forwarded, ///< another process has taken the request
        ForwardingFailed,
    };
    /// Takes the name, or hands the request to the process that has it and waits for its answer.
    Role claimOrForward(const LaunchRequest& request, const QString& activationToken);
    /// Does what a launch asks for, with the token with which windows may come to the front.
    void perform(const LaunchRequest& request, const QString& activationToken);

signals:
    /// A call came in, or this launch's own request is done.
    void used();

private:
    AppDelegate& m_delegate;
};

/// The calls with which launchers start, open files in, and command an application.
class FreedesktopApplication final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
public:
    FreedesktopApplication(ApplicationService& service, AppDelegate& delegate);
public slots: // NOLINT: named by the interface
    void Activate(const QVariantMap& platform_data);
    void Open(const QStringList& uris, const QVariantMap& platform_data);
    /// With a list of URIs: "extract-here", "extract-into-desktop-folder", "extract-asking". With one, or without one
    /// to have the user choose: "extract-to-current-folder", "extract-to-desktop", "extract-to-others", "compress".
    /// Without: "open-window", "preferences".
    void ActivateAction(const QString& action_name, const QVariantList& parameter, const QVariantMap& platform_data);

private:
    ApplicationService& m_service;
    AppDelegate& m_delegate;
};

/// The services and the scripting property.
class ExtractionServices final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.vantoro.Services")
    Q_PROPERTY(bool isRunning READ isRunning)
public:
    ExtractionServices(ApplicationService& service, AppDelegate& delegate);
    bool isRunning() const;
public slots: // NOLINT: named by the interface
    void ExtractToCurrentFolder(const QStringList& uris, const QVariantMap& platform_data);
    void ExtractToDesktop(const QStringList& uris, const QVariantMap& platform_data);
    void ExtractToOthers(const QStringList& uris, const QVariantMap& platform_data);
    void ExtractHere(const QStringList& uris, const QVariantMap& platform_data);
    void ExtractTo(const QStringList& uris, const QString& folder, const QVariantMap& platform_data);
    void ExtractIntoDesktopFolder(const QStringList& uris, const QVariantMap& platform_data);
    void ExtractAsking(const QStringList& uris, const QVariantMap& platform_data);
    /// The compression page takes the files.
    void Compress(const QStringList& uris, const QVariantMap& platform_data);

private:
    ApplicationService& m_service;
    AppDelegate& m_delegate;
};

}
