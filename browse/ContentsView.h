#pragma once

#include "browse/BrowserView.h"
#include "browse/KXArchiveContentsViewController.h"

#include "widgets/ProgressOverlay.h"

#include <QPointer>

namespace vantoro {

/// What the presenter asks of the page, carried out with the page's widgets.
class KXArchiveContentsViewController::View final : public BrowserView {
public:
    explicit View(KXArchiveContentsViewController& page) : m_page(page) {}

    void showWhileExecuting(OverlayTask task) override;
    void showTree(std::shared_ptr<const ArchiveTree> tree, const QString& archivePath) override;
    void showRows(std::shared_ptr<const ArchiveTree> tree, bool areFiltered) override;
    void showStatus(const QString& text) override;
    void showInformation(const QString& reason) override;
    void showNotice(Notice notice) override;
    void showPWDPanel(const QString& archiveName) override;
    void closePWDPanel() override;
    void showPreview(const PreviewContent& content) override;
    void kx_close() override;
    ArchiveTree::Node selectedNode() const override;

    /// Waits for what runs; the presenter has told it to stop.
    void endOverlay();

private:
    void keepKeyboard();

    KXArchiveContentsViewController& m_page;
    QPointer<ProgressOverlay> m_HUD;
};

}
