#pragma once

#include "app/AppWindow.h"

class QComboBox;
class QLabel;
class QPushButton;
class QSpinBox;
class QVBoxLayout;

namespace vantoro {

class AppDelegate;
class KXEncodePopButton;
class SettingsCard;
class SwitchButton;

/// The settings. Each change is in effect, and on disk, at once. Shows what the store holds whenever it comes to the
/// front, as settings are changed elsewhere, too.
class SettingsWindow final : public AppWindow {
    Q_OBJECT
public:
    /// The delegate outlives the window.
    explicit SettingsWindow(AppDelegate& delegate);

    /// The default encoding: selects what the settings hold; the last item, which is the separator, when they hold
    /// none.
    static void selectDefaultEncoding(KXEncodePopButton& button);

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    SettingsCard* addCard(QVBoxLayout* column, const QString& heading);
    void addOpening(QVBoxLayout* column);
    void addExtracting(QVBoxLayout* column);
    void addPlaces(QVBoxLayout* column);
    void addNames(QVBoxLayout* column);
    void chooseDesktop();
    void reload();

    AppDelegate& m_delegate;
    SwitchButton* m_btnQuickLook;
    SwitchButton* m_btnChangeViewMode;
    QComboBox* m_destination;
    QComboBox* m_creatFolder;
    SwitchButton* m_removeArchive;
    SwitchButton* m_openFolder;
    SwitchButton* m_modifiedDate;
    QPushButton* m_desktop;
    KXEncodePopButton* m_fileEncode;
    QSpinBox* m_autoThreshold;
};

}
