#pragma once

#include "widgets/DropArea.h"

#include <optional>

namespace vantoro {

/// Takes the one archive that was dropped.
class DropArchiveDelegate {
public:
    virtual ~DropArchiveDelegate() = default;
    virtual void obtainFilesPath(const QString& path) = 0;
};

/// The place for one archive to look into. Anything else is refused: several files with a message, a file of another
/// kind silently.
class KXDropArchiveView final : public DropArea {
    Q_OBJECT

public:
    explicit KXDropArchiveView(QWidget* parent = nullptr);

    /// Not owned; null takes nothing.
    void setDelegate(DropArchiveDelegate* delegate) { m_delegate = delegate; }

    /// The extensions that are taken, letter case included.
    const QStringList& fileFormatArray() const;
    void setFileFormatArray(const QStringList& extensions) { m_fileFormatArray = extensions; }

    /// Files that came by a drop here or elsewhere on the page. True: taken.
    bool takeFiles(const QStringList& paths);

protected:
    bool performDrop(const QStringList& paths) override { return takeFiles(paths); }

private:
    void showOneAtATime();

    DropArchiveDelegate* m_delegate = nullptr;
    mutable std::optional<QStringList> m_fileFormatArray; // a copy of the table, made on first use
};

}
