#include "compress/CompressWindow.h"

#include "compress/PackRoutes.h"
#include "compress/StrengthBar.h"

#include "widgets/FlatButton.h"
#include "widgets/PasswordField.h"
#include "widgets/Theme.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace vantoro {
namespace {

constexpr int kFieldWidth = 240;

}

CompressWindow::CompressWindow(QWidget* parent)
    : QDialog(parent)
    , m_kind(new QComboBox(this))
    , m_password(new PasswordField(this))
    , m_strength(new StrengthBar(this))
    , m_repeat(new PasswordField(this))
    , m_complaint(new QLabel(this))
    , m_start(new FlatButton(tr("Start"), FlatButton::Kind::Prominent, this))
    , m_cancel(new FlatButton(tr("Cancel"), FlatButton::Kind::Plain, this))
    , m_form(new QFormLayout)
{
    setWindowTitle(tr("Compression Options"));
    setWindowModality(Qt::ApplicationModal);
    m_start->setAccent(theme::Accent::Compress);
    m_start->setDefault(true);
    m_kind->setAccessibleName(tr("Format"));
    m_password->setMinimumWidth(kFieldWidth);
    m_password->setPlaceholderText(tr("None"));
    m_repeat->setPlaceholderText(tr("Type it once more"));
    m_repeat->setAccessibleName(tr("Repeat the password"));
    m_complaint->setWordWrap(true);

    m_form->setHorizontalSpacing(theme::kSpaceL);
    m_form->setVerticalSpacing(theme::kSpaceM);
    m_form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_form->addRow(tr("Format:"), m_kind);
    m_form->addRow(tr("Password:"), m_password);
    m_form->addRow(QString(), m_strength);
    m_form->addRow(tr("Repeat:"), m_repeat);
    m_form->addRow(QString(), m_complaint);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(theme::kSpaceS);
    buttons->addStretch(1);
    buttons->addWidget(m_cancel);
    buttons->addWidget(m_start);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(theme::kSpaceXl, theme::kSpaceXl, theme::kSpaceXl, theme::kSpaceL);
    column->setSpacing(theme::kSpaceL);
    column->addLayout(m_form);
    column->addStretch(1);
    column->addLayout(buttons);
    column->setSizeConstraint(QLayout::SetFixedSize);

    connect(m_kind, &QComboBox::currentIndexChanged, this, &CompressWindow::kindChanged);
    connect(m_password, &QLineEdit::textChanged, this, &CompressWindow::passwordChanged);
    connect(m_repeat, &QLineEdit::textChanged, this, &CompressWindow::passwordChanged);
    connect(m_start, &FlatButton::clicked, this, &CompressWindow::start);
    connect(m_cancel, &FlatButton::clicked, this, &QDialog::reject);
}

bool CompressWindow::takesPassword() const { return PackRoutes::takesPassword(m_kind->currentText()); }

void CompressWindow::setPassword(const QString& password)
{
    m_password->setText(password);
    m_repeat->clear();
    passwordChanged();
}

void CompressWindow::wipe()
{
    m_password->wipe();
    m_repeat->wipe();
}

void CompressWindow::kindChanged()
{
    for (int row = 1; row < m_form->rowCount(); ++row)
        m_form->setRowVisible(row, takesPassword());
    passwordChanged();
}

void CompressWindow::passwordChanged()
{
    m_strength->setPassword(m_password->text());
    m_repeat->setEnabled(!m_password->text().isEmpty());
    m_complaint->clear();
}

void CompressWindow::start()
{
    if (takesPassword() && m_password->text() != m_repeat->text() && !m_password->text().isEmpty()) {
        QPalette red = palette();
        red.setColor(QPalette::WindowText, theme::colors(palette()).danger);
        m_complaint->setPalette(red);
        m_complaint->setText(tr("The two passwords differ."));
        m_repeat->setFocus();
        m_repeat->selectAll();
        return;
    }
    emit startRequested();
}

}
