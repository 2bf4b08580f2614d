#pragma once

#include "app/AppWindow.h"

class QVBoxLayout;

namespace vantoro {

/// A short illustrated guide: one card for each thing that the program does.
class HowToUseWindow final : public AppWindow {
    Q_OBJECT
public:
    HowToUseWindow();

private:
    void addStep(QVBoxLayout* column, const QStringList& pictures, const QString& title, const QString& text);
};

}
