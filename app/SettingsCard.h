#pragma once

#include "widgets/ColoredView.h"

class QLabel;
class QVBoxLayout;

namespace vantoro {

/// A group of settings: each a name, a sentence that says what it does, and its control.
class SettingsCard final : public ColoredView {
    Q_OBJECT
public:
    enum class Lasts { ForGood, UntilRestart };
    enum class Place { Beside, Below }; ///< of the control: below where it is wide

    explicit SettingsCard(QWidget* parent = nullptr);

    /// Takes the control. Those that a launch resets say so.
    void addSetting(const QString& name, const QString& sentence, QWidget* control, Lasts lasts = Lasts::ForGood,
                    Place place = Place::Beside);

private:
    QVBoxLayout* m_column;
};

/// The text of a caption in the quiet colour; follows the palette and the font of its parent.
QLabel* makeCaption(const QString& text, QWidget* parent);

}
