#pragma once

#include "app/AppWindow.h"

class QButtonGroup;
class QHBoxLayout;
class QStackedWidget;
class QTreeWidget;

namespace vantoro {

/// What the program is: its version, the formats that it reads, the libraries that it stands on and their licences.
class InformationWindow final : public AppWindow {
    Q_OBJECT
public:
    InformationWindow();

private:
    QHBoxLayout* makeHead();
    QWidget* makeFormats();
    QWidget* makeLibraries();
    void addPage(const QString& title, QWidget* page, QHBoxLayout* tabs);

    QStackedWidget* m_pages;
    QButtonGroup* m_tabs;
};

}
