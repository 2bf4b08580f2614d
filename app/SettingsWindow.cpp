#include "app/SettingsWindow.h"

#include "app/AppDelegate.h"
#include "app/KXPrefsDefault.h"
#include "app/SettingsCard.h"

#include "browse/KXEncodePopButton.h"
#include "files/CustomePanel.h"
#include "platform/Panels.h"
#include "widgets/SwitchButton.h"
#include "widgets/Theme.h"

#include <QDir>
#include <QEvent>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

namespace vantoro {
namespace {

using Lasts = SettingsCard::Lasts;

constexpr QSize kUsualSize(620, 720);
constexpr int kColumnWidth = 640;
constexpr int kTakeArchiveDate = 2; // the value of "kFolderModifiedDate" that means yes
constexpr int kLeaveDate = 1;

void setSwitch(QAbstractButton* button, bool isOn)
{
    const QSignalBlocker blocker(button);
    button->setChecked(isOn);
}

/// A home folder is shown as people write it.
QString shownFolder(const QString& path)
{
    const QString home = QDir::homePath();
    return path.startsWith(home + QLatin1Char('/')) ? QStringLiteral("~") + path.mid(home.size()) : path;
}

}

SettingsWindow::SettingsWindow(AppDelegate& delegate)
    : AppWindow(Escape::Closes)
    , m_delegate(delegate)
    , m_btnQuickLook(new SwitchButton(this))
    , m_btnChangeViewMode(new SwitchButton(this))
    , m_destination(new QComboBox(this))
    , m_creatFolder(new QComboBox(this))
    , m_removeArchive(new SwitchButton(this))
    , m_openFolder(new SwitchButton(this))
    , m_modifiedDate(new SwitchButton(this))
    , m_desktop(new QPushButton(this))
    , m_fileEncode(new KXEncodePopButton(this))
    , m_autoThreshold(new QSpinBox(this))
{
    setObjectName(QStringLiteral("prefswindow"));
    setWindowTitle(tr("Settings"));
    auto* content = new QWidget;
    auto* column = new QVBoxLayout;
    column->setSpacing(theme::kSpaceS);
    addOpening(column);
    addExtracting(column);
    addPlaces(column);
    addNames(column);
    column->addStretch(1);
    auto* middle = new QWidget(content);
    middle->setMaximumWidth(kColumnWidth);
    middle->setLayout(column);
    column->setContentsMargins(theme::kSpaceXl, theme::kSpaceL, theme::kSpaceXl, theme::kSpaceXl);
    auto* centre = new QHBoxLayout(content);
    centre->setContentsMargins(0, 0, 0, 0);
    centre->addWidget(middle);
    fillWith(content)->setFocusPolicy(Qt::NoFocus);
    resizeWithinScreen(kUsualSize);
}

SettingsCard* SettingsWindow::addCard(QVBoxLayout* column, const QString& heading)
{
    if (column->count() > 0)
        column->addSpacing(theme::kSpaceM);
    auto* label = new QLabel(heading, this);
    label->setFont(theme::font(theme::Type::BodyStrong, font()));
    column->addWidget(label);
    auto* card = new SettingsCard(this);
    column->addWidget(card);
    return card;
}

void SettingsWindow::addOpening(QVBoxLayout* column)
{
    auto* card = addCard(column, tr("Opening archives"));
    card->addSetting(tr("&Look inside before extracting"),
                     tr("An archive that you open is shown first, and extracted when you say so."), m_btnQuickLook);
    card->addSetting(tr("Main window with a &side panel"),
                     tr("One window with the pages listed at its side, instead of the one with tabs. It extracts what "
                        "you open without showing it first."),
                     m_btnChangeViewMode, Lasts::UntilRestart);
    connect(m_btnQuickLook, &QAbstractButton::toggled, this, [this](bool isOn) { m_delegate.tooggleQuickLook(isOn); });
    connect(m_btnChangeViewMode, &QAbstractButton::toggled, this,
            [this](bool isOn) { m_delegate.toggleChangeViewMode(isOn); });
}

void SettingsWindow::addExtracting(QVBoxLayout* column)
{
    m_creatFolder->addItem(tr("Only where it is needed"), 1);
    m_creatFolder->addItem(tr("Always"), 2);
    m_creatFolder->addItem(tr("Never"), 3);
    auto* card = addCard(column, tr("Extracting"));
    card->addSetting(tr("Make a &folder for what comes out"),
                     tr("It is not needed when the archive holds a single item. Never: everything lies loose in the "
                        "destination."),
                     m_creatFolder, Lasts::UntilRestart);
    card->addSetting(tr("&Open what was extracted"), tr("The folder or file opens when it is ready."), m_openFolder);
    card->addSetting(tr("Move the archive to the &Trash"),
                     tr("With all its parts, once everything has come out whole."), m_removeArchive,
                     Lasts::UntilRestart);
    card->addSetting(tr("Give the new folder the archive's &date"),
                     tr("Otherwise the folder bears the time of its extraction. Files always keep their own dates."),
                     m_modifiedDate, Lasts::UntilRestart);
    connect(m_creatFolder, &QComboBox::activated, this,
            [this] { KXPrefsDefault::setCreateFolder(m_creatFolder->currentData().toInt()); });
    connect(m_openFolder, &QAbstractButton::toggled, this, &KXPrefsDefault::setOpenFolder);
    connect(m_removeArchive, &QAbstractButton::toggled, this, &KXPrefsDefault::setRemoveArchive);
    connect(m_modifiedDate, &QAbstractButton::toggled, this,
            [](bool isOn) { KXPrefsDefault::setModifiedDate(isOn ? kTakeArchiveDate : kLeaveDate); });
}

void SettingsWindow::addPlaces(QVBoxLayout* column)
{
    m_destination->addItem(tr("Ask every time"), false);
    m_destination->addItem(tr("Beside the archive"), true);
    auto* card = addCard(column, tr("Places"));
    card->addSetting(tr("&Where archives are extracted to"),
                     tr("Holds for archives that you open or drop, and for the file manager's menu."), m_destination);
    card->addSetting(tr("&Desktop folder"), tr("Where \"Extract to the Desktop\" puts things."), m_desktop,
                     Lasts::UntilRestart);
    connect(m_destination, &QComboBox::activated, this,
            [this] { KXPrefsDefault::setExtractToCurrent(m_destination->currentData().toBool()); });
    connect(m_desktop, &QPushButton::clicked, this, &SettingsWindow::chooseDesktop);
}

void SettingsWindow::addNames(QVBoxLayout* column)
{
    m_fileEncode->buildEncodingListWithAutoDetect();
    m_fileEncode->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_fileEncode->setMinimumContentsLength(18);
    m_autoThreshold->setRange(0, 100);
    m_autoThreshold->setSuffix(tr(" %"));
    auto* card = addCard(column, tr("File names in old archives"));
    card->addSetting(tr("&Encoding of file names"),
                     tr("How names are read in archives that do not say it themselves. Without a choice, it is found "
                        "out."),
                     m_fileEncode, Lasts::UntilRestart);
    card->addSetting(tr("Ask when &less sure than"),
                     tr("A guess at the encoding that is surer than this is used without a question."), m_autoThreshold,
                     Lasts::UntilRestart);
    connect(m_fileEncode, &QComboBox::activated, this,
            [this] { KXPrefsDefault::setFileEncode(static_cast<qint64>(m_fileEncode->selectedTag())); });
    connect(m_autoThreshold, &QSpinBox::valueChanged, this, &KXPrefsDefault::setAutoThreshold);
}

void SettingsWindow::selectDefaultEncoding(KXEncodePopButton& button)
{
    const auto encoding = static_cast<CharsetId>(KXPrefsDefault::fileEncode());
    if (encoding == kCharsetUnknown || !button.selectItemWithTag(encoding))
        button.selectItemAtIndex(button.count() - 1);
}

void SettingsWindow::chooseDesktop()
{
    const OpenPanel panel = CustomePanel::openPanelWithTitleMessage({.message = tr("Choose the Desktop folder"),
                                                                     .prompt = tr("Select"),
                                                                     .chooseFiles = false,
                                                                     .chooseDirectories = true,
                                                                     .createDirectories = true,
                                                                     .directory = KXPrefsDefault::desktop()});
    PanelService::shared().runOpenPanel(panel, Action<PanelResult>(this, [this](const PanelResult& chosen) {
                                            if (!chosen || chosen->isEmpty())
                                                return;
                                            KXPrefsDefault::setDesktop(chosen->front().toLocalFile());
                                            reload();
                                        }));
}

void SettingsWindow::showEvent(QShowEvent* event)
{
    reload();
    AppWindow::showEvent(event);
}

void SettingsWindow::changeEvent(QEvent* event)
{
    AppWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        reload();
}

void SettingsWindow::reload()
{
    setSwitch(m_btnQuickLook, KXPrefsDefault::listArchive());
    setSwitch(m_btnChangeViewMode, KXPrefsDefault::changeViewMode());
    m_destination->setCurrentIndex(m_destination->findData(KXPrefsDefault::extractToCurrent()));
    // Values that mean nothing act as the first.
    m_creatFolder->setCurrentIndex(qMax(0, m_creatFolder->findData(static_cast<int>(KXPrefsDefault::creatFolder()))));
    setSwitch(m_removeArchive, KXPrefsDefault::removeArchive());
    setSwitch(m_openFolder, KXPrefsDefault::openFolder());
    setSwitch(m_modifiedDate, KXPrefsDefault::modifiedDate() == kTakeArchiveDate);
    m_desktop->setText(shownFolder(KXPrefsDefault::desktop()));
    selectDefaultEncoding(*m_fileEncode);
    const QSignalBlocker blocker(m_autoThreshold);
    m_autoThreshold->setValue(static_cast<int>(KXPrefsDefault::autoThreshold()));
}

}
