#pragma once

#include <QWidget>

#include <functional>

class QMenu;

namespace vantoro {

class AppDelegate;
class MainWindowsHost;

/// The panel of the status item: the shortest ways into the program.
class PopViewController final : public QWidget {
    Q_OBJECT
public:
    /// Both outlive this.
    PopViewController(AppDelegate& delegate, MainWindowsHost& windows);

    void toggleExtractTo();
    void toggleMainWindow();
    void toggleSettings();
    void toggleHowToUse();
    void toggleQuit();

    /// A menu with the same actions, for desktops that place no panel; `parent` owns it.
    QMenu* makeMenu(QWidget* parent);

signals:
    /// Something was chosen; the panel has done its service.
    void chosen();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Row {
        QString name;
        QString glyph;
        QString text;
        void (PopViewController::*action)();
    };
    static QList<Row> rows();

    AppDelegate& m_delegate;
    MainWindowsHost& m_windows;
};

}
