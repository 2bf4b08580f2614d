#pragma once

#include "widgets/Theme.h"

#include <QPointer>
#include <QVariantAnimation>
#include <QWidget>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>

class QLabel;

namespace vantoro {

class ColoredView;
class ElidedLabel;
class FlatButton;
class SmoothProgressBar;
class SpinningIndicator;

/// Covers a widget or window while a block runs on a thread of its own: nothing below takes input until it has ended.
/// The card appears only after a moment, so that short work does not flicker.
class ProgressOverlay : public QWidget {
    Q_OBJECT

    struct Shared;

public:
    /// What the running block may do; safe from its thread. Updates of the display are limited to 30 a second.
    class Work {
    public:
        explicit Work(std::shared_ptr<Shared> shared) : m_shared(std::move(shared)) {}
        bool isCancelled() const;
        /// 0 to 1; the first call turns the spinner into a bar.
        void setProgress(double fraction);
        void setDetail(const QString& text);

    private:
        std::shared_ptr<Shared> m_shared;
    };
    using Block = std::function<void(Work&)>;

    /// Covers parent from now on and follows its size; it is parent's child.
    explicit ProgressOverlay(QWidget* parent);
    /// Asks a block that still runs to stop, and waits for it.
    ~ProgressOverlay() override;

    void setDimsBackground(bool dims);
    void setAccent(theme::Accent accent);
    void setLabelText(const QString& text);
    /// Without it, the work cannot be stopped by the user.
    void setCancellable(bool cancellable);

    /// Runs block once; afterwards, on the main thread, hides and deletes the overlay and calls finished (which may be
    /// empty). Escape or the button only raise the flag that block polls.
    void showWhileExecuting(Block block, std::function<void()> finished = {});
    bool isExecuting() const { return m_thread.joinable(); }

    /// A short message over parent that goes by itself: "The password is not right".
    static ProgressOverlay* showMessage(QWidget* parent, const QString& glyph, const QString& text,
                                        int milliseconds = 2000);

signals:
    void cancelled();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void cover();
    void revealCard();
    void fadeTo(double opacity, const std::function<void()>& then);
    void cancel();
    void refresh();
    void finish(const std::function<void()>& finished);

    std::shared_ptr<Shared> m_shared;
    std::thread m_thread;
    ColoredView* m_card;
    SpinningIndicator* m_spinner;
    SmoothProgressBar* m_bar;
    QLabel* m_glyph;
    QLabel* m_label;
    ElidedLabel* m_detail;
    FlatButton* m_cancel;
    QPointer<QWidget> m_focusBefore;
    QVariantAnimation m_fade;
    bool m_dims = true;
    double m_opacity = 0;
};

}
