#include "files/CustomePanel.h"

#include <QCoreApplication>
#include <QDebug>

namespace vantoro {
namespace {

QStringList chosenPaths(const PanelResult& chosen)
{
    QStringList paths;
    for (const QUrl& url : chosen.value_or(QList<QUrl>()))
        paths += url.toLocalFile();
    if (paths.size() == 1)
        qDebug().noquote() << "SELECT A FILE :" + paths.constFirst();
    else if (paths.size() > 1)
        qDebug().noquote() << "SELECT  FILES";
    return paths;
}

Action<PanelResult> pathsFor(Action<QStringList> finishAction)
{
    return {qApp,
            [finishAction = std::move(finishAction)](const PanelResult& chosen) { finishAction(chosenPaths(chosen)); }};
}

}

OpenPanel CustomePanel::openPanelWithTitleMessage(OpenPanel panel) { return panel; }

SavePanel CustomePanel::savePanelWithTitleMessage(SavePanel panel) { return panel; }

SavePanel CustomePanel::savePanelWithAllowedFileTypes(const QStringList& allowedFileTypes, const QString& titleMessage,
                                                      const QString& prompt, const QString& accessoryImage)
{
    return {.message = titleMessage,
            .prompt = prompt,
            .allowedFileTypes = allowedFileTypes,
            .accessoryImage = accessoryImage};
}

void CustomePanel::getOpenPanelChooseFiles(const OpenPanel& panel, Action<QStringList> finishAction)
{
    PanelService::shared().runOpenPanel(panel, pathsFor(std::move(finishAction)));
}

void CustomePanel::getSavePanelChooseFiles(const SavePanel& panel, Action<QStringList> finishAction)
{
    PanelService::shared().runSavePanel(panel, pathsFor(std::move(finishAction)));
}

}
