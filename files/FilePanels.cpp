#include "files/FilePanels.h"

#include <QFileDialog>
#include <QGridLayout>
#include <QLabel>
#include <QSortFilterProxyModel>
#include <QFileSystemModel>

namespace vantoro {
namespace {

/// Takes a selected folder as the answer where files may be chosen too; Qt's own dialog would only enter it.
class FileOrFolderDialog final : public QFileDialog {
public:
    using QFileDialog::QFileDialog;
    void accept() override
    {
        if (!selectedFiles().isEmpty())
            QDialog::accept();
    }
};

/// Shows only what may be chosen or leads there.
class EnabledItems final : public QSortFilterProxyModel {
public:
    EnabledItems(std::function<bool(const QUrl&)> shouldEnable, QObject* parent)
        : QSortFilterProxyModel(parent)
        , m_shouldEnable(std::move(shouldEnable))
    {
    }

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override
    {
        const auto* files = qobject_cast<QFileSystemModel*>(sourceModel());
        return !files || m_shouldEnable(QUrl::fromLocalFile(files->filePath(files->index(row, 0, parent))));
    }

private:
    std::function<bool(const QUrl&)> m_shouldEnable;
};

QStringList nameFilters(const QStringList& extensions)
{
    if (extensions.isEmpty())
        return {};
    QStringList patterns;
    for (const QString& extension : extensions)
        patterns += QStringLiteral("*.") + extension;
    return {QFileDialog::tr("Allowed files (%1)").arg(patterns.join(QLatin1Char(' ')))};
}

/// Window-modal on its parent, gone when it is answered.
void runDialog(QFileDialog* dialog, const Action<PanelResult>& finishAction)
{
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(dialog->parentWidget() ? Qt::WindowModal : Qt::NonModal);
    QObject::connect(dialog, &QDialog::finished, dialog, [dialog, finishAction](int result) {
        finishAction.later(result == QDialog::Accepted ? PanelResult(dialog->selectedUrls()) : std::nullopt);
    });
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
}

QFileDialog::FileMode fileMode(const OpenPanel& panel)
{
    if (!panel.chooseFiles)
        return QFileDialog::Directory;
    return panel.multipleSelection ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile;
}

void addAccessoryImage(QFileDialog* dialog, const QString& image)
{
    auto* grid = qobject_cast<QGridLayout*>(dialog->layout());
    if (image.isEmpty() || !grid)
        return;
    auto* label = new QLabel(dialog);
    label->setPixmap(QPixmap(image));
    grid->addWidget(label, grid->rowCount(), 0, 1, grid->columnCount());
}

}

void FilePanels::runOpenPanel(const OpenPanel& panel, Action<PanelResult> finishAction)
{
    QWidget* parent = m_sheetParent();
    const bool both = panel.chooseFiles && panel.chooseDirectories;
    QFileDialog* dialog = both ? new FileOrFolderDialog(parent) : new QFileDialog(parent);
    dialog->setWindowTitle(panel.title.isEmpty() ? panel.message : panel.title);
    dialog->setFileMode(fileMode(panel));
    dialog->setOption(QFileDialog::ShowDirsOnly, !panel.chooseFiles);
    dialog->setOption(QFileDialog::ReadOnly, !panel.createDirectories);
    dialog->setOption(QFileDialog::DontUseNativeDialog, both || panel.shouldEnableURL);
    if (panel.shouldEnableURL)
        dialog->setProxyModel(new EnabledItems(panel.shouldEnableURL, dialog));
    if (!panel.directory.isEmpty())
        dialog->setDirectory(panel.directory);
    if (!panel.allowedFileTypes.isEmpty())
        dialog->setNameFilters(nameFilters(panel.allowedFileTypes));
    dialog->setLabelText(QFileDialog::Accept, panel.prompt);
    runDialog(dialog, finishAction);
}

void FilePanels::runSavePanel(const SavePanel& panel, Action<PanelResult> finishAction)
{
    auto* dialog = new QFileDialog(m_sheetParent());
    dialog->setWindowTitle(panel.title.isEmpty() ? panel.message : panel.title);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setOption(QFileDialog::DontUseNativeDialog, !panel.accessoryImage.isEmpty());
    addAccessoryImage(dialog, panel.accessoryImage);
    if (!panel.directory.isEmpty())
        dialog->setDirectory(panel.directory);
    if (!panel.allowedFileTypes.isEmpty()) {
        dialog->setNameFilters(nameFilters(panel.allowedFileTypes));
        dialog->setDefaultSuffix(panel.allowedFileTypes.constFirst());
    }
    dialog->selectFile(panel.nameFieldValue);
    dialog->setLabelText(QFileDialog::Accept, panel.prompt);
    runDialog(dialog, finishAction);
}

}
