#pragma once

#include <QObject>

#include <functional>
#include <memory>

class QMessageBox;

namespace vantoro {

struct HDAlertItem {
    QString title;
    int tag = 0; ///< index of the button
    std::function<void(const HDAlertItem&)> action;
};

/// A message with buttons, each with a handler. It lives until it is answered, whether or not anybody still holds it.
class HDAlert : public QObject, public std::enable_shared_from_this<HDAlert> {
    Q_OBJECT

public:
    enum class Style { Warning, Informational, Critical };
    /// What the first button answers; the others count on from it.
    static constexpr int kFirstButtonReturn = 1000;

    static std::shared_ptr<HDAlert> initWithTitle(const QString& title, const QString& message, Style style);
    static std::shared_ptr<HDAlert> alertWithTitle(const QString& title, const QString& message, Style style);
    ~HDAlert() override;

    /// The title may be empty, but not null.
    HDAlertItem addButtonWithTitle(const QString& title, std::function<void(const HDAlertItem&)> handler);
    HDAlertItem addCommonButtonWithTitle(const QString& title, std::function<void(const HDAlertItem&)> handler);
    /// A button that does nothing; its index.
    int addButtonWithTitle(const QString& title);
    QString buttonTitleAtIndex(int index) const { return m_items.value(index).title; }
    QList<HDAlertItem> actions() const { return m_items; }

    /// As a sheet of the window, which has the keyboard again afterwards.
    void show(QWidget* window);
    /// On its own, in the middle of the screen.
    void show();

    static void showMessage(const QString& message, QWidget* window, std::function<void(int)> completionHandler);
    /// With the one button "OK"; blocks the program's windows until it is dismissed, but returns at once.
    static void showAlert(Style style, const QString& title, const QString& message);

private:
    HDAlert(const QString& title, const QString& message, Style style);
    void open(QWidget* window);

    /// The box is still on the stack when its answer lets the alert go.
    struct DeleteLater {
        void operator()(QMessageBox* box) const;
    };

    std::unique_ptr<QMessageBox, DeleteLater> m_box;
    QList<HDAlertItem> m_items;
    std::shared_ptr<HDAlert> m_self; // while it is on screen
};

}
