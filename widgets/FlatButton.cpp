#include "widgets/FlatButton.h"

#include "widgets/Appearance.h"
#include "widgets/Icons.h"
#include "widgets/Style.h"

#include <QEvent>
#include <QFocusEvent>
#include <QPainter>
#include <QStyleOptionButton>

namespace vantoro {
namespace {

constexpr int kRoundEdge = 32;
constexpr int kGlyphEdge = theme::kIconSmall;

QColor laidOver(const QColor& ground, const QColor& fallback) { return ground.isValid() ? ground : fallback; }

}

FlatButton::FlatButton(Kind kind, QWidget* parent) : FlatButton(QString(), kind, parent) {}

FlatButton::FlatButton(const QString& text, Kind kind, QWidget* parent) : QPushButton(text, parent), m_kind(kind)
{
    setAttribute(Qt::WA_Hover);
    setAutoDefault(false);
    setCursor(Qt::ArrowCursor);
    setSizePolicy(kind == Kind::Round ? QSizePolicy::Fixed : QSizePolicy::Minimum, QSizePolicy::Fixed);
    connect(&m_animation, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        const double share = value.toDouble();
        m_now = {theme::mix(m_from.ground, m_to.ground, share), theme::mix(m_from.content, m_to.content, share)};
        update();
    });
    connect(this, &QPushButton::pressed, this, &FlatButton::glide);
    connect(this, &QPushButton::released, this, &FlatButton::glide);
    connect(this, &QPushButton::toggled, this, &FlatButton::glide);
    m_now = m_to = look();
}

void FlatButton::setKind(Kind kind)
{
    m_kind = kind;
    updateGeometry();
    glide();
}

void FlatButton::setAccent(theme::Accent accent)
{
    m_accent = accent;
    glide();
}

void FlatButton::setGlyph(const QString& name)
{
    m_glyph = name;
    updateGeometry();
    update();
}

void FlatButton::setLooks(const Look& normal, const Look& highlighted)
{
    m_normal = normal;
    m_highlighted = highlighted;
    glide();
}

QSize FlatButton::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    const int height = metrics.height() + 2 * theme::kSpaceS;
    if (m_kind == Kind::Round)
        return QSize(1, 1) * qMax(kRoundEdge, metrics.height() + theme::kSpaceM);
    int width = metrics.size(Qt::TextShowMnemonic, text()).width() + 2 * theme::kSpaceL;
    if (!m_glyph.isEmpty())
        width += kGlyphEdge + (text().isEmpty() ? 0 : theme::kSpaceS);
    return {text().isEmpty() ? qMax(width - theme::kSpaceL, height) : qMax(width, 72), height};
}

QSize FlatButton::minimumSizeHint() const { return sizeHint(); }

bool FlatButton::isProminent() const { return m_kind == Kind::Prominent; }

FlatButton::Look FlatButton::kindLook(bool hovered, bool pressed) const
{
    const auto colors = theme::colors(palette());
    if (isProminent()) {
        const QColor fill = theme::accentFill(m_accent);
        const double darker = pressed ? 0.18 : hovered ? 0.09 : 0.0;
        return {theme::mix(fill, Qt::black, darker), theme::textOn(fill)};
    }
    const bool round = m_kind == Kind::Round;
    QColor ground = pressed ? colors.pressed : hovered ? colors.hover : palette().color(QPalette::Button);
    if (round) {
        ground = pressed ? theme::mix(colors.pressed, colors.text, 0.1) : hovered ? colors.pressed : colors.track;
    } else if (!hovered && !pressed && m_kind == Kind::Quiet) {
        ground = colors.hover;
        ground.setAlpha(0);
    }
    return {ground, round && !hovered ? colors.textSecondary : colors.text};
}

FlatButton::Look FlatButton::look() const
{
    const auto colors = theme::colors(palette());
    if (!isEnabled()) {
        QColor ground = isProminent() || m_kind == Kind::Plain ? colors.track : colors.hover;
        ground.setAlpha(isProminent() || m_kind == Kind::Plain ? 160 : 0);
        return {ground, colors.textDisabled};
    }
    const bool hovered = underMouse() || isChecked();
    const Look own = kindLook(hovered, isDown());
    const Look& wished = hovered || isDown() ? m_highlighted : m_normal;
    return {laidOver(wished.ground, own.ground), laidOver(wished.content, own.content)};
}

void FlatButton::glide()
{
    const Look target = look();
    m_animation.stop();
    const int length = isVisible() ? Appearance::instance().duration(theme::kTransition) : 0;
    m_from = m_now;
    m_to = target;
    if (length == 0) {
        m_now = target;
        update();
        return;
    }
    m_animation.setStartValue(0.0);
    m_animation.setEndValue(1.0);
    m_animation.setDuration(length);
    m_animation.start();
}

bool FlatButton::event(QEvent* event)
{
    const bool result = QPushButton::event(event);
    switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverLeave:
    case QEvent::EnabledChange:
    case QEvent::PaletteChange:
    case QEvent::StyleChange:
    case QEvent::Show:
        glide();
        break;
    default:
        break;
    }
    return result;
}

void FlatButton::focusInEvent(QFocusEvent* event)
{
    m_showsFocus = isKeyboardFocus(*event);
    QPushButton::focusInEvent(event);
}

void FlatButton::nextCheckState()
{
    QPushButton::nextCheckState();
    glide();
}

void FlatButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QRectF box = rect();
    qreal radius = theme::kRadiusControl;
    if (m_kind == Kind::Round) {
        const qreal edge = qMin(box.width(), box.height());
        box = QRectF(box.center() - QPointF(edge / 2, edge / 2), QSizeF(edge, edge));
        radius = edge / 2;
    }
    const bool outlined = m_kind == Kind::Plain && isEnabled();
    painter.setPen(outlined ? QPen(theme::colors(palette()).border, 1) : QPen(Qt::NoPen));
    painter.setBrush(m_now.ground);
    const qreal by = outlined ? 0.5 : 0;
    painter.drawRoundedRect(box.adjusted(by, by, -by, -by), radius, radius);
    paintContent(painter, rect());
    if (hasFocus() && m_showsFocus)
        drawFocusRing(&painter, box, radius);
}

void FlatButton::paintContent(QPainter& painter, const QRect& rect)
{
    const int textWidth = text().isEmpty() ? 0 : fontMetrics().size(Qt::TextShowMnemonic, text()).width();
    const int gap = text().isEmpty() ? 0 : theme::kSpaceS;
    const int glyphWidth = m_glyph.isEmpty() ? 0 : kGlyphEdge + gap;
    const int width = qMin(textWidth + glyphWidth, rect.width());
    QRect content(rect.left() + (rect.width() - width) / 2, rect.top(), width, rect.height());
    if (glyphWidth > 0) {
        const QRect place = QStyle::alignedRect(layoutDirection(), Qt::AlignLeading | Qt::AlignVCenter,
                                                QSize(kGlyphEdge, kGlyphEdge), content);
        painter.drawPixmap(place.topLeft(), icons::glyph(m_glyph, m_now.content, kGlyphEdge, devicePixelRatioF()));
        content = layoutDirection() == Qt::LeftToRight ? content.adjusted(glyphWidth, 0, 0, 0)
                                                       : content.adjusted(0, 0, -glyphWidth, 0);
    }
    if (textWidth > 0) {
        QStyleOptionButton option;
        initStyleOption(&option);
        const bool underline = style()->styleHint(QStyle::SH_UnderlineShortcut, &option, this) != 0;
        painter.setPen(m_now.content);
        painter.drawText(content, Qt::AlignCenter | (underline ? Qt::TextShowMnemonic : Qt::TextHideMnemonic), text());
    }
}

}
