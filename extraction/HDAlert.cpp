#include "extraction/HDAlert.h"

#include "widgets/Icons.h"
#include "widgets/Theme.h"

#include <QLabel>
#include <QLoggingCategory>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QWindow>

namespace vantoro {
namespace {

Q_LOGGING_CATEGORY(lcAlert, "vantoro.alert", QtInfoMsg)

constexpr int kIconEdge = 40;
constexpr int kLeastTextWidth = 280;

void setStyleIcon(QMessageBox& box, HDAlert::Style style)
{
    const auto colors = theme::colors(box.palette());
    QString glyph = QStringLiteral("glyph-info");
    QColor color = theme::accent(theme::Accent::Selection);
    if (style == HDAlert::Style::Warning) {
        glyph = QStringLiteral("glyph-warning");
        color = colors.warning;
    } else if (style == HDAlert::Style::Critical) {
        glyph = QStringLiteral("glyph-error");
        color = colors.danger;
    }
    box.setIconPixmap(icons::glyph(glyph, color, kIconEdge, box.devicePixelRatioF()));
}

}

std::shared_ptr<HDAlert> HDAlert::initWithTitle(const QString& title, const QString& message, Style style)
{
    return std::shared_ptr<HDAlert>(new HDAlert(title, message, style));
}

std::shared_ptr<HDAlert> HDAlert::alertWithTitle(const QString& title, const QString& message, Style style)
{
    return initWithTitle(title, message, style);
}

HDAlert::HDAlert(const QString& title, const QString& message, Style style) : m_box(new QMessageBox)
{
    m_box->setWindowTitle(title);
    m_box->setTextFormat(Qt::PlainText);
    m_box->setText(title);
    m_box->setInformativeText(message);
    setStyleIcon(*m_box, style);
    if (auto* label = m_box->findChild<QLabel*>(QStringLiteral("qt_msgbox_label")))
        label->setFont(theme::font(theme::Type::BodyStrong, label->font()));
    if (auto* label = m_box->findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel")))
        label->setMinimumWidth(kLeastTextWidth);
}

HDAlert::~HDAlert() = default;

void HDAlert::DeleteLater::operator()(QMessageBox* box) const { box->deleteLater(); }

HDAlertItem HDAlert::addButtonWithTitle(const QString& title, std::function<void(const HDAlertItem&)> handler)
{
    Q_ASSERT_X(!title.isNull(), "HDAlert", "all title must be non-nil");
    m_box->addButton(title, m_items.isEmpty() ? QMessageBox::AcceptRole : QMessageBox::RejectRole);
    m_items.append({title, static_cast<int>(m_items.size()), std::move(handler)});
    return m_items.last();
}

HDAlertItem HDAlert::addCommonButtonWithTitle(const QString& title, std::function<void(const HDAlertItem&)> handler)
{
    return addButtonWithTitle(title, std::move(handler));
}

int HDAlert::addButtonWithTitle(const QString& title)
{
    return addButtonWithTitle(title, [](const HDAlertItem&) { qCInfo(lcAlert, "no action"); }).tag;
}

void HDAlert::open(QWidget* window)
{
    m_self = shared_from_this();
    const QPointer<QWidget> sheetOf = window;
    connect(m_box.get(), &QDialog::finished, this, [this, sheetOf] {
        const auto buttons = m_box->buttons();
        const int result = kFirstButtonReturn + static_cast<int>(buttons.indexOf(m_box->clickedButton()));
        const auto self = std::move(m_self); // the handler may show it again
        if (const int index = result - kFirstButtonReturn; index >= 0 && index < m_items.size()) {
            const HDAlertItem item = m_items.at(index);
            if (item.action)
                item.action(item);
        }
        if (sheetOf)
            sheetOf->activateWindow();
    });
    m_box->open();
}

void HDAlert::show(QWidget* window)
{
    // Transient for the window rather than its child: the window may go first without taking the box along.
    m_box->winId();
    m_box->windowHandle()->setTransientParent(window->window()->windowHandle());
    m_box->setWindowModality(Qt::WindowModal);
    open(window->window());
}

void HDAlert::show()
{
    m_box->setWindowModality(Qt::ApplicationModal);
    open(nullptr);
    m_box->raise();
    m_box->activateWindow();
}

void HDAlert::showMessage(const QString& message, QWidget* window, std::function<void(int)> completionHandler)
{
    const auto alert = initWithTitle(message, QString(), Style::Warning);
    alert->addButtonWithTitle(tr("OK"), [completionHandler = std::move(completionHandler)](const HDAlertItem& item) {
        if (completionHandler)
            completionHandler(kFirstButtonReturn + item.tag);
    });
    alert->show(window);
}

void HDAlert::showAlert(Style style, const QString& title, const QString& message)
{
    const auto alert = initWithTitle(title, message, style);
    alert->addButtonWithTitle(tr("OK"), {});
    alert->show();
}

}
