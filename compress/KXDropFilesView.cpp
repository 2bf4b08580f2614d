#include "compress/KXDropFilesView.h"

#include "widgets/FlatButton.h"
#include "widgets/Icons.h"

namespace vantoro {

KXDropFilesView::KXDropFilesView(QWidget* parent) : DropArea(parent)
{
    setAccent(theme::Accent::Compress);
    setIllustration(icons::icon(QStringLiteral("compress")));
    setSentence(tr("Drop files and folders here to compress them"));
    setHint(tr("or choose them from your folders"));
    button()->setText(tr("Add Files…"));
}

bool KXDropFilesView::performDrop(const QStringList& paths)
{
    if (paths.isEmpty())
        return false;
    if (m_delegate)
        m_delegate->obtainFilesPath(paths);
    return true;
}

}
