#include "app/AppCommands.h"
#include "app/AppDelegate.h"
#include "app/ApplicationService.h"
#include "app/DesktopHosts.h"
#include "app/ExtractionReporter.h"
#include "app/MainWindows.h"
#include "app/StatusMenu.h"
#include "engine/open.h"
#include "files/FilePanels.h"
#include "platform/OrphanedFolders.h"
#include "platform/TerminationSignals.h"
#include "widgets/Appearance.h"
#include "widgets/Icons.h"
#include "widgets/Translation.h"

#include <QApplication>
#include <QDir>
#include <QTimer>

#include <cstdio>

namespace {

using namespace vantoro;
using Kind = LaunchRequest::Kind;

constexpr int kAfterFirstWindowMs = 300; // icons and the tray must not delay it

enum ExitCode { kDone = 0, kFailed = 1, kUsage = 2 };

QStringList argumentsOf(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments += QString::fromLocal8Bit(argv[i]);
    return arguments;
}

/// Read once and removed, or the programs that this one starts would use it again.
QString takeActivationToken()
{
    QString token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN");
    if (token.isEmpty())
        token = qEnvironmentVariable("DESKTOP_STARTUP_ID");
    qunsetenv("XDG_ACTIVATION_TOKEN");
    qunsetenv("DESKTOP_STARTUP_ID");
    return token;
}

/// What needs no display; nothing when the program is to go on.
std::optional<ExitCode> answerWithoutDisplay(const LaunchRequest& request)
{
    switch (request.kind) {
    case Kind::Help:
        std::fputs(qUtf8Printable(helpText()), stdout);
        return kDone;
    case Kind::Version:
        std::puts("vantoro " VANTORO_VERSION);
        return kDone;
    case Kind::Mistake:
        std::fprintf(stderr, "vantoro: %s\nTry \"vantoro --help\".\n", qUtf8Printable(request.mistake));
        return kUsage;
    default:
        break;
    }
    const bool hasDisplay = qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY")
        || qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
    if (hasDisplay)
        return std::nullopt;
    std::fputs("vantoro: there is no display; vantoro-cli extracts without one\n", stderr);
    return kFailed;
}

int runApplication(const LaunchRequest& request, const QString& activationToken)
{
    DesktopTaskWindow taskWindow;
    MainWindows mainWindows;
    FilePanels panels([&] {
        QWidget* window = taskWindow.visibleWindow();
        return window ? window : mainWindows.visibleWindow();
    });
    PanelService::setShared(&panels);
    AppDelegate delegate(taskWindow, mainWindows, panels);
    AppCommands commands(delegate, mainWindows);
    mainWindows.connectTo(delegate, commands);
    StatusMenu statusMenu(delegate, mainWindows);
    ApplicationService service(delegate);
    switch (service.claimOrForward(request, activationToken)) {
    case ApplicationService::Role::Forwarded:
        return kDone;
    case ApplicationService::Role::ForwardingFailed:
        return kFailed;
    case ApplicationService::Role::Primary:
        break;
    }

    holdDecoders();
    // Without a question: whoever sends these has decided.
    TerminationSignals termination;
    QObject::connect(&termination, &TerminationSignals::received, qApp, &QCoreApplication::quit);
    OrphanedFolders::keepForEngine();
    ExtractionReporter reporter(kApplicationId);
    QObject::connect(&delegate, &AppDelegate::extractionsFinished, &reporter, &ExtractionReporter::extractionsFinished);
    QObject::connect(&taskWindow, &DesktopTaskWindow::filesDropped, &delegate, [&](const QStringList& paths) {
        for (const QString& path : paths)
            delegate.applicationOpenFile(path);
    });
    commands.followWindows();
    delegate.awakeFromNib();
    delegate.applicationDidFinishLaunching();
    service.perform(request, activationToken);
    QTimer::singleShot(kAfterFirstWindowMs, &statusMenu, [&statusMenu] {
        QApplication::setWindowIcon(icons::application());
        statusMenu.createWhenPossible();
    });
    const int result = QApplication::exec();
    mainWindows.closeAll();
    PanelService::setShared(nullptr);
    return termination.exitStatus().value_or(result);
}

}

int main(int argc, char** argv)
{
    const LaunchRequest request = parseCommandLine(argumentsOf(argc, argv), QDir::currentPath());
    if (const auto answer = answerWithoutDisplay(request))
        return *answer;
    const QString activationToken = takeActivationToken();
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vantoro"));
    QApplication::setApplicationDisplayName(QStringLiteral("Vantoro"));
    QApplication::setApplicationVersion(QStringLiteral(VANTORO_VERSION));
    QApplication::setDesktopFileName(kApplicationId);
    QApplication::setQuitOnLastWindowClosed(false);
    installTranslations(application);
    Appearance::instance().install(application);
    return runApplication(request, activationToken);
}
