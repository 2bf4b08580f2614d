#include "extraction/TaskWindow.h"

#include "browse/KXEncodePopButton.h"
#include "extraction/KXTaskListsView.h"
#include "widgets/Theme.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>

namespace vantoro {
namespace {

constexpr int kLeastWidth = 316;
constexpr int kMostWidth = 100000;
constexpr int kUsualWidth = 520;
constexpr int kUsualLetters = 62; // of larger type
constexpr int kMostChoiceLetters = 30;
constexpr double kShareOfScreen = 0.8;

}

TaskWindow::TaskWindow(QWidget* parent)
    : QWidget(parent)
    , m_list(new KXTaskListsView)
    , m_scroll(new QScrollArea(this))
    , m_footer(new QWidget(this))
    , m_count(new QLabel(m_footer))
    , m_btnEncodePopButton(new KXEncodePopButton(m_footer))
{
    setWindowTitle(tr("Extractions"));
    m_scroll->setWidget(m_list);
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

    auto* encodingLabel = new QLabel(tr("File &names:"), m_footer);
    encodingLabel->setBuddy(m_btnEncodePopButton);
    m_count->setForegroundRole(QPalette::PlaceholderText);
    m_btnEncodePopButton->setAccessibleName(tr("Encoding of file names"));
    m_btnEncodePopButton->setMinimumContentsLength(12);
    m_btnEncodePopButton->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_btnEncodePopButton->setMaximumWidth(kMostChoiceLetters * fontMetrics().averageCharWidth());
    auto* line = new QHBoxLayout(m_footer);
    line->setContentsMargins(theme::kSpaceL, theme::kSpaceS, theme::kSpaceL, theme::kSpaceS);
    line->setSpacing(theme::kSpaceS);
    line->addWidget(m_count, 1);
    line->addWidget(encodingLabel);
    line->addWidget(m_btnEncodePopButton, 2);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_scroll, 1);
    column->addWidget(m_footer);
    setMinimumWidth(kLeastWidth);
    setMaximumWidth(kMostWidth);
    const int most = screen()->availableGeometry().width() - theme::kSpaceXxl;
    resize(qMax(kUsualWidth, qMin(kUsualLetters * fontMetrics().averageCharWidth(), most)), 0);
    connect(m_list, &KXTaskListsView::taskCountChanged, this,
            [this](int count) { m_count->setText(tr("%n archive(s)", nullptr, count)); });
}

void TaskWindow::fitToList()
{
    const int wanted = m_list->preferredSize().height();
    if (wanted == 0)
        return;
    const int most = static_cast<int>(screen()->availableGeometry().height() * kShareOfScreen);
    const int height = qMin(wanted + m_footer->sizeHint().height(), most);
    resize(qBound(kLeastWidth, width(), kMostWidth), height); // resizing keeps the top edge
}

void TaskWindow::bringToFront()
{
    if (isMinimized())
        showNormal();
    else
        show();
    raise();
    activateWindow();
}

void TaskWindow::orderOut()
{
    if (isMinimized())
        close();
    else
        hide();
}

void TaskWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Close))
        hide();
    else
        QWidget::keyPressEvent(event);
}

}
