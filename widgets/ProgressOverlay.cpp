#include "widgets/ProgressOverlay.h"

#include "widgets/Appearance.h"
#include "widgets/ColoredView.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FlatButton.h"
#include "widgets/Icons.h"
#include "widgets/SmoothProgressBar.h"
#include "widgets/SpinningIndicator.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QTimer>
#include <QVBoxLayout>

#include <mutex>

namespace vantoro {
namespace {

constexpr int kGraceMs = 150;
constexpr int kFrameMs = 34;
constexpr int kSpinnerEdge = 36;
constexpr int kGlyphEdge = 48;
constexpr int kCardWidth = 260;
constexpr double kDimmed = 0.45;

}

struct ProgressOverlay::Shared {
    std::atomic<bool> cancelled{false};
    std::atomic<bool> posted{false};
    std::mutex mutex; // guards what follows
    ProgressOverlay* overlay = nullptr; // null once it is being destroyed
    double fraction = -1; // below 0: unknown
    QString detail;

    void post()
    {
        if (posted.exchange(true))
            return;
        const std::scoped_lock lock(mutex);
        if (overlay) {
            QMetaObject::invokeMethod(
                overlay, [target = overlay] { QTimer::singleShot(kFrameMs, target, &ProgressOverlay::refresh); },
                Qt::QueuedConnection);
        }
    }
};

bool ProgressOverlay::Work::isCancelled() const { return m_shared->cancelled; }

void ProgressOverlay::Work::setProgress(double fraction)
{
    {
        const std::scoped_lock lock(m_shared->mutex);
        m_shared->fraction = qBound(0.0, fraction, 1.0);
    }
    m_shared->post();
}

void ProgressOverlay::Work::setDetail(const QString& text)
{
    {
        const std::scoped_lock lock(m_shared->mutex);
        m_shared->detail = text;
    }
    m_shared->post();
}

ProgressOverlay::ProgressOverlay(QWidget* parent)
    : QWidget(parent)
    , m_shared(std::make_shared<Shared>())
    , m_card(ColoredView::card(this))
    , m_spinner(new SpinningIndicator(m_card))
    , m_bar(new SmoothProgressBar(m_card))
    , m_glyph(new QLabel(m_card))
    , m_label(new QLabel(m_card))
    , m_detail(new ElidedLabel(m_card))
    , m_cancel(new FlatButton(tr("Cancel"), FlatButton::Kind::Plain, m_card))
{
    m_shared->overlay = this;
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Working"));
    m_spinner->setFixedSize(kSpinnerEdge, kSpinnerEdge);
    m_label->setWordWrap(true);
    m_label->setAlignment(Qt::AlignCenter);
    m_label->setFont(theme::font(theme::Type::BodyStrong, font()));
    m_detail->setFont(theme::font(theme::Type::Caption, font()));
    m_detail->setAlignment(Qt::AlignCenter);
    m_bar->setAccessibleName(tr("Progress"));
    for (QWidget* widget :
         {static_cast<QWidget*>(m_bar), static_cast<QWidget*>(m_glyph), static_cast<QWidget*>(m_detail),
          static_cast<QWidget*>(m_cancel), static_cast<QWidget*>(m_label)})
        widget->hide();

    auto* column = new QVBoxLayout(m_card);
    column->setContentsMargins(theme::kSpaceXl, theme::kSpaceXl, theme::kSpaceXl, theme::kSpaceXl);
    column->setSpacing(theme::kSpaceM);
    column->addWidget(m_spinner, 0, Qt::AlignHCenter);
    column->addWidget(m_glyph, 0, Qt::AlignHCenter);
    column->addWidget(m_label);
    column->addWidget(m_bar);
    column->addWidget(m_detail);
    column->addWidget(m_cancel, 0, Qt::AlignHCenter);
    auto* outer = new QVBoxLayout(this);
    outer->addWidget(m_card, 0, Qt::AlignCenter);
    m_card->hide();

    connect(m_cancel, &FlatButton::clicked, this, &ProgressOverlay::cancel);
    connect(&m_fade, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        m_opacity = value.toDouble();
        update();
    });
    parent->installEventFilter(this);
    cover();
}

ProgressOverlay::~ProgressOverlay()
{
    {
        const std::scoped_lock lock(m_shared->mutex);
        m_shared->overlay = nullptr;
    }
    m_shared->cancelled = true;
    if (m_thread.joinable())
        m_thread.join();
}

void ProgressOverlay::setDimsBackground(bool dims)
{
    m_dims = dims;
    update();
}

void ProgressOverlay::setAccent(theme::Accent accent)
{
    m_spinner->setAccent(accent);
    m_bar->setAccent(accent);
}

void ProgressOverlay::setLabelText(const QString& text)
{
    m_label->setText(text);
    m_label->setVisible(!text.isEmpty());
    setAccessibleName(text);
}

void ProgressOverlay::setCancellable(bool cancellable) { m_cancel->setVisible(cancellable); }

void ProgressOverlay::showWhileExecuting(Block block, std::function<void()> finished)
{
    Q_ASSERT(!isExecuting());
    m_focusBefore = QApplication::focusWidget();
    cover();
    show();
    raise();
    setFocus();
    QTimer::singleShot(kGraceMs, this, &ProgressOverlay::revealCard);
    m_thread = std::thread([shared = m_shared, block = std::move(block), finished = std::move(finished)] {
        Work work(shared);
        block(work);
        const std::scoped_lock lock(shared->mutex);
        if (shared->overlay)
            QMetaObject::invokeMethod(
                shared->overlay, [overlay = shared->overlay, finished] { overlay->finish(finished); },
                Qt::QueuedConnection);
    });
}

void ProgressOverlay::finish(const std::function<void()>& finished)
{
    m_thread.join();
    if (m_focusBefore && (hasFocus() || isAncestorOf(QApplication::focusWidget())))
        m_focusBefore->setFocus();
    hide();
    deleteLater();
    if (finished)
        finished();
}

void ProgressOverlay::refresh()
{
    m_shared->posted = false;
    double fraction = -1;
    QString detail;
    {
        const std::scoped_lock lock(m_shared->mutex);
        fraction = m_shared->fraction;
        detail = m_shared->detail;
    }
    m_bar->setVisible(fraction >= 0);
    m_spinner->setVisible(fraction < 0);
    if (fraction >= 0)
        m_bar->setFraction(fraction);
    m_detail->setVisible(!detail.isEmpty());
    m_detail->setText(detail);
}

void ProgressOverlay::revealCard()
{
    const bool wide = m_label->isVisibleTo(m_card) || m_bar->isVisibleTo(m_card) || m_cancel->isVisibleTo(m_card);
    m_card->setMinimumWidth(wide ? kCardWidth : 0);
    m_card->show();
    m_spinner->startAnimation();
    fadeTo(1.0, {});
}

void ProgressOverlay::fadeTo(double opacity, const std::function<void()>& then)
{
    m_fade.stop();
    m_fade.disconnect(SIGNAL(finished()));
    if (then)
        connect(&m_fade, &QVariantAnimation::finished, this, then);
    m_fade.setStartValue(m_opacity);
    m_fade.setEndValue(opacity);
    m_fade.setDuration(Appearance::instance().duration(theme::kTransition));
    m_fade.start();
}

void ProgressOverlay::cancel()
{
    if (m_shared->cancelled.exchange(true))
        return;
    m_cancel->setEnabled(false);
    setLabelText(tr("Stopping…"));
    emit cancelled();
}

ProgressOverlay* ProgressOverlay::showMessage(QWidget* parent, const QString& glyph, const QString& text,
                                              int milliseconds)
{
    auto* overlay = new ProgressOverlay(parent);
    overlay->m_spinner->hide();
    const auto colors = theme::colors(overlay->palette());
    overlay->m_glyph->setPixmap(icons::glyph(glyph, colors.warning, kGlyphEdge, overlay->devicePixelRatioF()));
    overlay->m_glyph->show();
    overlay->setLabelText(text);
    overlay->setAttribute(Qt::WA_TransparentForMouseEvents);
    overlay->setFocusPolicy(Qt::NoFocus);
    overlay->show();
    overlay->raise();
    overlay->revealCard();
    QAccessibleEvent alert(overlay, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
    QTimer::singleShot(milliseconds, overlay, [overlay] {
        overlay->m_card->hide();
        overlay->fadeTo(0.0, [overlay] { overlay->deleteLater(); });
    });
    return overlay;
}

void ProgressOverlay::paintEvent(QPaintEvent*)
{
    if (!m_dims)
        return;
    QColor veil = theme::colors(palette()).window;
    veil = theme::mix(veil, Qt::black, 0.4);
    veil.setAlphaF(static_cast<float>(kDimmed * m_opacity));
    QPainter(this).fillRect(rect(), veil);
}

void ProgressOverlay::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && m_cancel->isVisible())
        cancel();
    event->accept(); // nothing below may answer while it is covered
}

void ProgressOverlay::mousePressEvent(QMouseEvent* event) { event->accept(); }

bool ProgressOverlay::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && isExecuting())
        event->accept(); // the window's shortcuts rest, too: the key comes to keyPressEvent
    return QWidget::event(event);
}

bool ProgressOverlay::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parentWidget() && (event->type() == QEvent::Resize || event->type() == QEvent::ChildAdded))
        cover();
    return QWidget::eventFilter(watched, event);
}

bool ProgressOverlay::focusNextPrevChild(bool)
{
    if (m_cancel->isVisible() && m_cancel->isEnabled())
        m_cancel->setFocus(Qt::TabFocusReason);
    return true;
}

void ProgressOverlay::cover()
{
    setGeometry(parentWidget()->rect());
    raise();
}

}
