#include "compress/PackTable.h"

#include "compress/KXTableCellView.h"

#include "widgets/FlatButton.h"
#include "widgets/Theme.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>

#include <algorithm>

namespace vantoro {
namespace {

constexpr int kBorder = 1;
constexpr int kUsualRows = 6;

}

PackTable::PackTable(QWidget* parent) : QAbstractScrollArea(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setViewportMargins(kBorder, kBorder, kBorder, kBorder);
    setAccessibleName(tr("Files to compress"));
    viewport()->setAutoFillBackground(false);
    verticalScrollBar()->setSingleStep(rowHeight());
}

void PackTable::reloadData(const QStringList& paths)
{
    const QString current = m_paths.value(m_currentRow);
    m_paths = paths;
    const auto row = static_cast<int>(paths.indexOf(current));
    if (!current.isNull() && row >= 0)
        m_currentRow = row;
    else
        m_currentRow = std::min(m_currentRow, static_cast<int>(paths.size()) - 1);
    for (const auto& [_, view] : m_views) {
        view->hide();
        m_spare.push_back(view);
    }
    m_views.clear();
    updateScrollBar();
    layoutRows();
    viewport()->update();
}

int PackTable::rowForView(const QWidget* view) const
{
    for (const auto& [row, shown] : m_views) {
        if (shown == view || shown->isAncestorOf(view))
            return row;
    }
    return -1;
}

KXTableCellView* PackTable::viewForPath(const QString& path) const
{
    const auto found = std::find_if(m_views.begin(), m_views.end(),
                                    [&](const auto& shown) { return m_paths.value(shown.first) == path; });
    return found == m_views.end() ? nullptr : found->second;
}

void PackTable::setCurrentRow(int row)
{
    m_currentRow = std::clamp(row, -1, static_cast<int>(m_paths.size()) - 1);
    if (m_currentRow >= 0) {
        auto* bar = verticalScrollBar();
        const int top = m_currentRow * rowHeight();
        if (top < bar->value())
            bar->setValue(top);
        else if (top + rowHeight() > bar->value() + viewport()->height())
            bar->setValue(top + rowHeight() - viewport()->height());
    }
    viewport()->update();
}

void PackTable::setHighlighted(bool highlighted)
{
    m_isHighlighted = highlighted;
    update();
    viewport()->update();
}

KXTableCellView* PackTable::takeView()
{
    if (!m_spare.empty()) {
        auto* view = m_spare.back();
        m_spare.pop_back();
        return view;
    }
    auto* view = new KXTableCellView(viewport());
    emit rowMade(view);
    return view;
}

void PackTable::updateScrollBar()
{
    const int height = static_cast<int>(m_paths.size()) * rowHeight();
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setRange(0, std::max(0, height - viewport()->height()));
}

void PackTable::layoutRows()
{
    const int top = verticalScrollBar()->value();
    const int first = top / rowHeight();
    const int last = std::min(static_cast<int>(m_paths.size()) - 1, (top + viewport()->height() - 1) / rowHeight());
    for (auto shown = m_views.begin(); shown != m_views.end();) {
        if (shown->first >= first && shown->first <= last) {
            ++shown;
            continue;
        }
        shown->second->hide();
        m_spare.push_back(shown->second);
        shown = m_views.erase(shown);
    }
    for (int row = first; row <= last; ++row) {
        auto& view = m_views[row];
        const bool isNew = !view;
        if (isNew) {
            view = takeView();
            view->setPath(m_paths[row]);
            if (m_prepare)
                m_prepare(*view);
        }
        view->setGeometry(0, row * rowHeight() - top, viewport()->width(), rowHeight());
        if (isNew)
            view->show();
    }
    orderTabs();
}

/// From top to bottom, whatever row a view served before.
void PackTable::orderTabs()
{
    QWidget* before = nullptr;
    for (const auto& [_, view] : m_views) {
        for (QWidget* button :
             {static_cast<QWidget*>(view->previewButton()), static_cast<QWidget*>(view->closeBut())}) {
            if (before)
                setTabOrder(before, button);
            before = button;
        }
    }
}

int PackTable::rowHeight() const { return KXTableCellView::rowHeight(fontMetrics()); }

int PackTable::rowsPerPage() const { return std::max(1, viewport()->height() / rowHeight() - 1); }

QSize PackTable::sizeHint() const { return {360, kUsualRows * rowHeight() + 2 * kBorder}; }

void PackTable::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    updateScrollBar();
    layoutRows();
}

void PackTable::scrollContentsBy(int, int)
{
    layoutRows();
    viewport()->update();
}

bool PackTable::viewportEvent(QEvent* event)
{
    // Drags are the page's affair, wherever they hover.
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::DragLeave:
    case QEvent::Drop:
        return false;
    default:
        return QAbstractScrollArea::viewportEvent(event);
    }
}

void PackTable::paintEvent(QPaintEvent*)
{
    const auto colors = theme::colors(palette());
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = viewport()->rect();
    QPainterPath shape;
    shape.addRoundedRect(area.adjusted(0.5, 0.5, -0.5, -0.5), theme::kRadiusCard, theme::kRadiusCard);
    painter.setClipPath(shape);
    painter.fillRect(area, colors.surface);
    const int top = verticalScrollBar()->value();
    for (const auto& [row, view] : m_views) {
        const QRect place(0, row * rowHeight() - top, viewport()->width(), rowHeight());
        if (row % 2 == 1)
            painter.fillRect(place, colors.surfaceAlternate);
        if (row == m_currentRow && hasFocus())
            painter.fillRect(place, theme::mix(colors.surface, theme::accent(theme::Accent::Selection), 0.2));
    }
    painter.setClipping(false);
    painter.setBrush(Qt::NoBrush);
    QColor border = colors.border;
    qreal width = 1;
    if (m_isHighlighted) {
        border = theme::accent(theme::Accent::Compress);
        width = 2;
    } else if (hasFocus()) {
        border = theme::accent(theme::Accent::Selection);
        width = 2;
    }
    painter.setPen(QPen(border, width));
    painter.drawRoundedRect(area.adjusted(width / 2, width / 2, -width / 2, -width / 2), theme::kRadiusCard,
                            theme::kRadiusCard);
}

void PackTable::keyPressEvent(QKeyEvent* event)
{
    const int last = static_cast<int>(m_paths.size()) - 1;
    const int row = std::max(0, m_currentRow);
    switch (event->key()) {
    case Qt::Key_Up:
        return setCurrentRow(std::max(0, row - 1));
    case Qt::Key_Down:
        return setCurrentRow(m_currentRow < 0 ? 0 : row + 1);
    case Qt::Key_Home:
        return setCurrentRow(0);
    case Qt::Key_End:
        return setCurrentRow(last);
    case Qt::Key_PageUp:
        return setCurrentRow(std::max(0, row - rowsPerPage()));
    case Qt::Key_PageDown:
        return setCurrentRow(row + rowsPerPage());
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        if (m_currentRow >= 0)
            emit removeRequested(m_currentRow);
        return;
    case Qt::Key_Space:
        if (m_currentRow >= 0)
            emit previewRequested(m_currentRow);
        return;
    default:
        event->ignore();
    }
}

void PackTable::mousePressEvent(QMouseEvent* event)
{
    event->accept(); // a click on a row does nothing
}

void PackTable::focusInEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusInEvent(event);
    if (m_currentRow < 0 && !m_paths.isEmpty())
        m_currentRow = 0;
    viewport()->update();
}

void PackTable::focusOutEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

void PackTable::changeEvent(QEvent* event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        viewport()->update();
}

}
