#pragma once

#include <QObject>

class QWidget;

namespace vantoro {

/// Lets files be dropped anywhere on a window where nothing else takes them.
class WindowDrops final : public QObject {
    Q_OBJECT
public:
    /// `window` owns this.
    explicit WindowDrops(QWidget* window);

signals:
    void filesDropped(const QStringList& paths);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}
