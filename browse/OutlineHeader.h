#pragma once

#include <QHeaderView>

namespace vantoro {

/// The outline's column titles: quiet captions above one line.
class OutlineHeader final : public QHeaderView {
    Q_OBJECT

public:
    explicit OutlineHeader(QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;
    void paintEvent(QPaintEvent* event) override;
};

}
