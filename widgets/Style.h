#pragma once

#include <QProxyStyle>

class QFocusEvent;
class QStyleOptionMenuItem;

namespace vantoro {

/// Vantoro's drawing of the standard controls, so that every window of the program looks of one piece: flat surfaces,
/// one corner radius, one focus ring. Fusion does the rest.
class Style : public QProxyStyle {
    Q_OBJECT

public:
    Style();

    void polish(QWidget* widget) override;
    using QProxyStyle::polish;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget = nullptr) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget = nullptr) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget = nullptr) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option = nullptr,
                    const QWidget* widget = nullptr) const override;
    int styleHint(StyleHint hint, const QStyleOption* option = nullptr, const QWidget* widget = nullptr,
                  QStyleHintReturn* result = nullptr) const override;
    QIcon standardIcon(StandardPixmap which, const QStyleOption* option = nullptr,
                       const QWidget* widget = nullptr) const override;
    QRect subElementRect(SubElement element, const QStyleOption* option,
                         const QWidget* widget = nullptr) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget = nullptr) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget = nullptr) const override;

private:
    void drawHeaderLabel(const QStyleOption* option, QPainter* painter, const QWidget* widget) const;
    void drawMenuItem(const QStyleOptionMenuItem& item, QPainter* painter, const QWidget* widget) const;
    static QRect spinBoxRect(const QStyleOptionComplex& option, SubControl part);
};

/// Whether focus came in a way that calls for the ring: by a key or by the program, not by a click or with the window.
bool isKeyboardFocus(const QFocusEvent& event);

/// A two-pixel ring in the selection colour just inside rect; every control that has the keyboard shows it.
void drawFocusRing(QPainter* painter, const QRectF& rect, qreal radius);

}
