#include "app/CommandLine.h"

#include <QCoreApplication>
#include <QDir>
#include <QUrl>

#include <algorithm>
#include <array>

namespace vantoro {
namespace {

using Kind = LaunchRequest::Kind;

struct OptionRow {
    const char* name;
    Kind kind;
};
constexpr std::array kOptions{
    OptionRow{"--help", Kind::Help},
    OptionRow{"-h", Kind::Help},
    OptionRow{"--version", Kind::Version},
    OptionRow{"--dbus-service", Kind::BusService},
    OptionRow{"--extract-here", Kind::ExtractHere},
    OptionRow{"--extract-to", Kind::ExtractTo},
    OptionRow{"--extract-to-desktop", Kind::ExtractToDesktop},
    OptionRow{"--extract-ask", Kind::ExtractAsking},
    OptionRow{"--extract", Kind::ServiceToOthers},
    OptionRow{"--compress", Kind::Compress},
    OptionRow{"--service-current-folder", Kind::ServiceToCurrentFolder},
    OptionRow{"--service-desktop", Kind::ServiceToDesktop},
    OptionRow{"--service-others", Kind::ServiceToOthers},
};

LaunchRequest mistake(const QString& text)
{
    LaunchRequest request;
    request.kind = Kind::Mistake;
    request.mistake = text;
    return request;
}

/// Null for a URI that is not a local file.
QString absolutePath(const QString& word, const QString& workingDirectory)
{
    if (word.startsWith(QLatin1String("file:"))) {
        const QUrl url(word);
        return url.isLocalFile() ? QDir::cleanPath(url.toLocalFile()) : QString();
    }
    if (word.contains(QLatin1String("://")))
        return {};
    return QDir::cleanPath(QDir(workingDirectory).absoluteFilePath(word));
}

bool needsFiles(Kind kind)
{
    return kind == Kind::ExtractHere || kind == Kind::ExtractTo || kind == Kind::ExtractToDesktop
        || kind == Kind::ExtractAsking; // the services have the user choose
}

}

LaunchRequest parseCommandLine(const QStringList& arguments, const QString& workingDirectory)
{
    LaunchRequest request;
    bool onlyFiles = false;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& word = arguments.at(i);
        if (!onlyFiles && word == QLatin1String("--")) {
            onlyFiles = true;
        } else if (!onlyFiles && word.size() > 1 && word.startsWith(QLatin1Char('-'))) {
            const auto* option
                = std::ranges::find_if(kOptions, [&](const OptionRow& row) { return word == QLatin1String(row.name); });
            if (option == kOptions.end())
                return mistake(QCoreApplication::translate("CommandLine", "there is no option \"%1\"").arg(word));
            request.kind = option->kind;
            if (request.kind != Kind::ExtractTo)
                continue;
            if (++i == arguments.size())
                return mistake(QCoreApplication::translate("CommandLine", "\"--extract-to\" needs a folder"));
            request.folder = absolutePath(arguments.at(i), workingDirectory);
        } else {
            const QString path = absolutePath(word, workingDirectory);
            if (path.isNull())
                return mistake(QCoreApplication::translate("CommandLine", "\"%1\" is not a file here").arg(word));
            request.paths += path;
        }
    }
    if (request.kind == Kind::Activate && !request.paths.isEmpty())
        request.kind = Kind::Open;
    if (needsFiles(request.kind) && request.paths.isEmpty())
        return mistake(QCoreApplication::translate("CommandLine", "no archive is given"));
    return request;
}

QString helpText()
{
    return QCoreApplication::translate("CommandLine",
                                       "Usage: vantoro [OPTION] [FILE...]\n"
                                       "\n"
                                       "Opens archives: extracts them, or shows them if the settings say so.\n"
                                       "Without an archive the main window is shown.\n"
                                       "\n"
                                       "  --extract-here         extract each archive beside itself\n"
                                       "  --extract-to FOLDER    extract into FOLDER\n"
                                       "  --extract-to-desktop   extract into the Desktop folder of the settings\n"
                                       "  --extract-ask          ask where to extract\n"
                                       "  --extract              extract to where the settings say, or ask\n"
                                       "  --compress             make an archive of the files\n"
                                       "  --dbus-service         wait for calls on the session bus\n"
                                       "  -h, --help             show this help\n"
                                       "  --version              show the version\n"
                                       "  --                     everything after this is a file\n"
                                       "\n"
                                       "Files may be paths or file:// URIs. vantoro-cli works without a display.\n");
}

}
