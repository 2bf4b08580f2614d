#include "browse/KXDropArchiveView.h"

#include "files/FileFormats.h"
#include "widgets/FlatButton.h"
#include "widgets/Icons.h"

#include <QFileInfo>
#include <QMessageBox>

namespace vantoro {

KXDropArchiveView::KXDropArchiveView(QWidget* parent) : DropArea(parent)
{
    setObjectName(QStringLiteral("dropView"));
    setIllustration(icons::icon(QStringLiteral("extract")));
    setSentence(tr("Drop an archive here"));
    setHint(tr("to look inside, preview and extract what you need"));
    button()->setText(tr("Choose an Archive…"));
}

const QStringList& KXDropArchiveView::fileFormatArray() const
{
    if (!m_fileFormatArray)
        m_fileFormatArray = vantoro::fileFormatArray();
    return *m_fileFormatArray;
}

bool KXDropArchiveView::takeFiles(const QStringList& paths)
{
    if (paths.size() != 1) {
        showOneAtATime();
        return false;
    }
    if (!fileFormatArray().contains(QFileInfo(paths.front()).suffix()))
        return false;
    if (m_delegate)
        m_delegate->obtainFilesPath(paths.front());
    return true;
}

void KXDropArchiveView::showOneAtATime()
{
    auto* box = new QMessageBox(QMessageBox::Information, tr("Information"), tr("Information"), QMessageBox::NoButton,
                                window());
    box->setInformativeText(tr("ONLY preview one archive at a time"));
    box->addButton(tr("OK"), QMessageBox::AcceptRole);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

}
