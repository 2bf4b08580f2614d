#pragma once

#include "extraction/TaskViewPort.h"

#include <QString>

namespace vantoro {

/// The task window as the controller sees it. Main thread.
class TaskWindowHost {
public:
    virtual ~TaskWindowHost() = default;
    virtual TaskListPort& taskLists() = 0;
    /// Shows the window in front, ahead of other applications where the desktop allows it.
    virtual void bringToFront() = 0;
    /// Closed when it is minimised, hidden otherwise.
    virtual void orderOut() = 0;
    virtual bool isVisible() const = 0;
    virtual bool isActive() const = 0;
};

/// The main windows, between which the user switches.
class MainWindowsHost {
public:
    virtual ~MainWindowsHost() = default;
    /// In front, with its first page.
    virtual void showTwoPageWindow() = 0;
    virtual void hideTwoPageWindow() = 0;
    virtual bool isTwoPageWindowVisible() const = 0;
    virtual void showSinglePageWindow() = 0;
    virtual void hideSinglePageWindow() = 0;
    virtual bool isSinglePageWindowVisible() const = 0;
    /// Of the single-page window's table.
    virtual void setTableViewEnable(bool enable) = 0;
    virtual void showPrefsWindow() = 0;
    virtual void showHowToUseWindow() = 0;
    virtual void showShortcutsWindow() = 0;
    virtual void showInfoWindow() = 0;
    /// The contents browser of the two-page window takes the archive and starts to load it.
    virtual void browseArchive(const QString& path) = 0;
    /// The compression page takes files.
    virtual void compressFiles(const QStringList& paths) = 0;
    /// The contents browser of the main window in use has the user choose an archive.
    virtual void chooseArchive() = 0;
    /// The compression page of the main window in use has the user choose files.
    virtual void chooseFilesToCompress() = 0;
    /// False when no window shows an archive whose entries could be extracted.
    virtual bool extractShownArchive() = 0;
    /// Quits; asks first while an archive is being written or extracted.
    virtual void quit() = 0;
};

}
