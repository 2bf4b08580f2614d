#pragma once

#include "app/AppCommands.h"
#include "app/AppWindow.h"

class QVBoxLayout;

namespace vantoro {

/// The list of keys.
class ShortcutsWindow final : public AppWindow {
    Q_OBJECT
public:
    ShortcutsWindow(const std::vector<ShortcutRow>& everywhere, const std::vector<ShortcutRow>& pages);

private:
    void addGroup(QVBoxLayout* column, const QString& heading, const std::vector<ShortcutRow>& rows);
};

}
