#pragma once

#include <QPushButton>
#include <QVariantAnimation>

#include "widgets/Theme.h"

namespace vantoro {

/// A flat push button whose colours glide from one state to the next.
class FlatButton : public QPushButton {
    Q_OBJECT

public:
    enum class Kind {
        Prominent, ///< filled with the page's accent: at most one on a page
        Plain, ///< outlined
        Quiet, ///< no ground until the pointer comes
        Round, ///< a circle around a glyph; set an accessible name
    };

    /// Ground and content (text and glyph) of one state; an invalid colour keeps the kind's own.
    struct Look {
        QColor ground;
        QColor content;
    };

    explicit FlatButton(Kind kind, QWidget* parent = nullptr);
    FlatButton(const QString& text, Kind kind, QWidget* parent = nullptr);

    Kind kind() const { return m_kind; }
    void setKind(Kind kind);
    void setAccent(theme::Accent accent);
    /// A glyph of the resources, in the colour of the text; empty for none.
    void setGlyph(const QString& name);
    /// Overrides the colours at rest and under the pointer.
    void setLooks(const Look& normal, const Look& highlighted);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void nextCheckState() override;

private:
    Look look() const;
    bool isProminent() const;
    Look kindLook(bool hovered, bool pressed) const;
    void glide();
    void paintContent(QPainter& painter, const QRect& rect);

    Kind m_kind;
    theme::Accent m_accent = theme::Accent::Selection;
    QString m_glyph;
    Look m_normal;
    Look m_highlighted;
    Look m_from;
    Look m_to;
    Look m_now;
    QVariantAnimation m_animation;
    bool m_showsFocus = false;
};

}
