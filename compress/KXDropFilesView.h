#pragma once

#include "widgets/DropArea.h"

namespace vantoro {

/// Takes what is dropped on a KXDropFilesView.
class KXDropFilesViewDelegate {
public:
    virtual ~KXDropFilesViewDelegate() = default;
    /// At least one path, in the order of the drag.
    virtual void obtainFilesPath(const QStringList& paths) = 0;
};

/// The place to drop files and folders of any kind that are to be compressed.
class KXDropFilesView final : public DropArea {
    Q_OBJECT

public:
    explicit KXDropFilesView(QWidget* parent = nullptr);

    KXDropFilesViewDelegate* delegate() const { return m_delegate; }
    /// Not owned; null: drops are accepted and lead nowhere.
    void setDelegate(KXDropFilesViewDelegate* delegate) { m_delegate = delegate; }

protected:
    bool performDrop(const QStringList& paths) override;

private:
    KXDropFilesViewDelegate* m_delegate = nullptr;
};

}
