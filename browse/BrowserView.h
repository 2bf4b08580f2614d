#pragma once

#include "browse/ArchiveTree.h"
#include "browse/PreviewContent.h"

#include <functional>

namespace vantoro {

/// What running work may tell its overlay. Its own thread.
class OverlayProgress {
public:
    virtual ~OverlayProgress() = default;
    /// 0 to 1.
    virtual void setProgress(double fraction) = 0;
    virtual void setDetail(const QString& text) = 0;
};

/// Work behind a progress overlay.
struct OverlayTask {
    enum class Cover { Window, Page };
    QString label;
    Cover cover = Cover::Window;
    bool dims = true;
    std::function<void(OverlayProgress&)> block; ///< on a thread of its own
    std::function<void()> cancel; ///< makes block end soon; main thread
    std::function<void()> finished; ///< main thread
};

/// What a message on the page is about.
enum class Notice { WrongPassword, EmptyArchive };

/// The page as its logic sees it. Main thread.
class BrowserView {
public:
    virtual ~BrowserView() = default;

    /// Called only after the task before it has finished.
    virtual void showWhileExecuting(OverlayTask task) = 0;
    /// Shows the tree with its root row open, or the drop area for null. `archivePath` names the root row.
    virtual void showTree(std::shared_ptr<const ArchiveTree> tree, const QString& archivePath) = 0;
    /// The same archive with other rows, all of them open as far as that is sensible while they are filtered.
    virtual void showRows(std::shared_ptr<const ArchiveTree> tree, bool areFiltered) = 0;
    virtual void showStatus(const QString& text) = 0;
    /// Leads to the settings once it is dismissed. `reason` says what stood in the way; may be empty.
    virtual void showInformation(const QString& reason) = 0;
    /// Goes by itself.
    virtual void showNotice(Notice notice) = 0;
    /// Answers through the presenter's togglePasswordOK() or togglePasswordCancel().
    virtual void showPWDPanel(const QString& archiveName) = 0;
    virtual void closePWDPanel() = 0;
    virtual void showPreview(const PreviewContent& content) = 0;
    virtual void kx_close() = 0; ///< the preview
    /// Of the selection at this moment; kNoNode for none.
    virtual ArchiveTree::Node selectedNode() const = 0;
};

}
