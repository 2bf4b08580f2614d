#pragma once

#include "platform/Panels.h"

namespace vantoro {

/// Makes the panels in which the user chooses files. Main thread.
class CustomePanel {
public:
    static OpenPanel openPanelWithTitleMessage(OpenPanel panel);
    static SavePanel savePanelWithTitleMessage(SavePanel panel);
    static SavePanel savePanelWithAllowedFileTypes(const QStringList& allowedFileTypes, const QString& titleMessage,
                                                   const QString& prompt, const QString& accessoryImage);
    /// Shows the panel and answers with the chosen paths; empty when the user cancelled.
    static void getOpenPanelChooseFiles(const OpenPanel& panel, Action<QStringList> finishAction);
    static void getSavePanelChooseFiles(const SavePanel& panel, Action<QStringList> finishAction);
};

}
