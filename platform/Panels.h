#pragma once

#include "platform/Action.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <functional>
#include <optional>

namespace vantoro {

/// What a panel that chooses existing files or folders shows and allows.
struct OpenPanel {
    QString title; ///< of the window; empty: the message
    QString message;
    QString prompt; ///< text of the confirming button
    bool chooseFiles = true;
    bool multipleSelection = false;
    bool chooseDirectories = false;
    bool createDirectories = false;
    QString directory; ///< to start in; null: the last one used
    QStringList allowedFileTypes; ///< extensions; empty: all
    std::function<bool(const QUrl&)> shouldEnableURL; ///< none: everything may be chosen
};

/// What a panel that chooses the name of a new file shows and allows.
struct SavePanel {
    QString title;
    QString message;
    QString prompt;
    QString nameFieldValue; ///< proposed name
    bool createDirectories = true;
    bool selectHiddenExtension = false;
    QString directory;
    QStringList allowedFileTypes;
    QString accessoryImage; ///< path of an image shown beside the files; empty: none
};

/// Null list: the user cancelled.
using PanelResult = std::optional<QList<QUrl>>;

/// Shows panels; each call returns at once and answers in a later turn of the main loop. Main thread.
class PanelService {
public:
    virtual ~PanelService() = default;
    /// A panel of the task window, which it blocks, or a window of its own where there is none to block.
    virtual void runOpenPanel(const OpenPanel& panel, Action<PanelResult> finishAction) = 0;
    virtual void runSavePanel(const SavePanel& panel, Action<PanelResult> finishAction) = 0;

    /// Set once at start, outlives its use; null where there is no display: every panel is then cancelled.
    static PanelService& shared();
    static void setShared(PanelService* service);
};

}
