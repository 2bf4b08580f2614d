#pragma once

#include <QString>
#include <QStringList>

namespace vantoro {

/// What a start of the program asks for.
struct LaunchRequest {
    enum class Kind {
        Activate, ///< no file: show the main window
        Open, ///< files, as if opened from a file manager
        ExtractHere, ///< each beside itself, without a question
        ExtractTo, ///< into `folder`
        ExtractToDesktop, ///< into the settings' Desktop folder
        ExtractAsking, ///< the user says where to
        Compress, ///< the compression page takes the files; without files it is shown
        ServiceToCurrentFolder,
        ServiceToDesktop,
        ServiceToOthers,
        BusService, ///< started by the session bus: wait for calls
        Help,
        Version,
        Mistake, ///< `mistake` says what is wrong
    };
    Kind kind = Kind::Activate;
    QStringList paths; ///< absolute
    QString folder; ///< absolute
    QString mistake;
};

/// `arguments` without the program's name; relative paths are taken from `workingDirectory`. Paths and file:// URIs may
/// be mixed; "--" ends the options.
LaunchRequest parseCommandLine(const QStringList& arguments, const QString& workingDirectory);
QString helpText();

}
