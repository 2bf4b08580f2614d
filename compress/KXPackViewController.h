#pragma once

#include "compress/KXDropFilesView.h"

#include "widgets/KXBaseViewCter.h"

namespace vantoro {

class CompressHost;

/// The page on which the user gathers files and folders, chooses a kind of archive and a password, and starts.
/// It keeps its list for as long as it lives.
class KXPackViewController final : public KXBaseViewCter, public KXDropFilesViewDelegate {
    Q_OBJECT

public:
    explicit KXPackViewController(CompressHost& host, QWidget* parent = nullptr);
    ~KXPackViewController() override;

    QString identifier() const override { return QStringLiteral("Compress"); }
    QIcon toolbarItemImage() const override;
    QString toolbarItemLabel() const override;
    void viewWillAppear() override;

    /// Adds the paths that are not on the list yet, in their order. The list shows them a little later.
    void obtainFilesPath(const QStringList& paths) override;
    /// The same, and nothing for an empty list.
    void addFilesPathWithPasteboard(const QStringList& paths);
    void obtainFilesPathImage(const QStringList& paths) { obtainFilesPath(paths); }
    /// Lets the user choose files and folders in a panel.
    void addFiles();

private:
    CompressHost& m_host;
    KXDropFilesView* m_dropView;
    QStringList m_filesArray;
    QString m_destArchivePath;
};

}
