#include "widgets/DropArea.h"

#include "widgets/Appearance.h"
#include "widgets/FlatButton.h"
#include "widgets/ImageView.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDragEnterEvent>
#include <QEvent>
#include <QLabel>
#include <QMimeData>
#include <QPainter>
#include <QUrl>
#include <QVBoxLayout>
#include <QtMath>

#include <cmath>

namespace vantoro {
namespace {

const char* const kPortalTransfer = "application/vnd.portal.filetransfer";
constexpr int kIllustrationEdge = 112;
constexpr double kDash = 6; // pixels
constexpr double kDashGap = 7;
constexpr int kPortalAnswerMs = 3000;

/// Dashes that begin and end at each corner's edge. Straight lines with flat ends cost a twentieth of one dashed path.
void drawDashedLine(QPainter& painter, const QLineF& line, QPen pen)
{
    const double count = qMax(2.0, std::round((line.length() + kDashGap) / (kDash + kDashGap)));
    const double gap = (line.length() - count * kDash) / (count - 1);
    pen.setDashPattern({kDash / pen.widthF(), qMax(0.1, gap) / pen.widthF()});
    painter.setPen(pen);
    painter.drawLine(line);
}

void drawDashedFrame(QPainter& painter, const QRectF& box, const QColor& color)
{
    const QPen pen(color, 2, Qt::SolidLine, Qt::FlatCap);
    constexpr double radius = theme::kRadiusCard;
    const QRectF inner = box.adjusted(radius, radius, -radius, -radius);
    drawDashedLine(painter, {inner.left(), box.top(), inner.right(), box.top()}, pen);
    drawDashedLine(painter, {inner.left(), box.bottom(), inner.right(), box.bottom()}, pen);
    drawDashedLine(painter, {box.left(), inner.top(), box.left(), inner.bottom()}, pen);
    drawDashedLine(painter, {box.right(), inner.top(), box.right(), inner.bottom()}, pen);
    painter.setPen(pen);
    constexpr int sixteenths = 16; // of a degree
    const int span = static_cast<int>(qRadiansToDegrees(kDash / radius) * sixteenths);
    const QSizeF corner(2 * radius, 2 * radius);
    int middle = 45 * sixteenths;
    for (const QPointF& place : {QPointF(box.right() - corner.width(), box.top()), box.topLeft(),
                                 QPointF(box.left(), box.bottom() - corner.height()),
                                 QPointF(box.right() - corner.width(), box.bottom() - corner.height())}) {
        painter.drawArc(QRectF(place, corner), middle - span / 2, span);
        middle += 90 * sixteenths;
    }
}

/// Files that a sandboxed sender offers by a key, to be redeemed at the document portal.
QStringList retrieveFromPortal(const QMimeData* data)
{
    const QString key = QString::fromUtf8(data->data(QLatin1String(kPortalTransfer)).split('\0').value(0));
    auto call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Documents"), QStringLiteral("/org/freedesktop/portal/documents"),
        QStringLiteral("org.freedesktop.portal.FileTransfer"), QStringLiteral("RetrieveFiles"));
    call << key << QVariantMap();
    const auto reply = QDBusConnection::sessionBus().call(call, QDBus::Block, kPortalAnswerMs);
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0).toStringList() : QStringList();
}

}

DropArea::DropArea(QWidget* parent)
    : QWidget(parent)
    , m_illustration(new ImageView(this))
    , m_sentence(new QLabel(this))
    , m_hint(new QLabel(this))
    , m_button(new FlatButton(FlatButton::Kind::Prominent, this))
{
    setAcceptDrops(true);
    m_illustration->setFixedSize(kIllustrationEdge, kIllustrationEdge);
    for (auto* label : {m_sentence, m_hint}) {
        label->setAlignment(Qt::AlignCenter);
        label->setWordWrap(true);
    }
    m_hint->hide();
    m_button->setAccent(m_accent);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(theme::kSpaceXl, theme::kSpaceXl, theme::kSpaceXl, theme::kSpaceXl);
    column->setSpacing(0);
    column->addStretch(1);
    column->addWidget(m_illustration, 0, Qt::AlignHCenter);
    column->addSpacing(theme::kSpaceL);
    column->addWidget(m_sentence);
    column->addSpacing(theme::kSpaceXs);
    column->addWidget(m_hint);
    column->addSpacing(theme::kSpaceL);
    column->addWidget(m_button, 0, Qt::AlignHCenter);
    column->addStretch(1);
    applyType();
    connect(m_button, &FlatButton::clicked, this, &DropArea::buttonClicked);
    connect(&m_animation, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        m_glow = value.toDouble();
        update();
    });
}

void DropArea::setAccent(theme::Accent accent)
{
    m_accent = accent;
    m_button->setAccent(accent);
    update();
}

void DropArea::setIllustration(const QIcon& icon) { m_illustration->setIcon(icon); }

void DropArea::setSentence(const QString& sentence)
{
    m_sentence->setText(sentence);
    setAccessibleName(sentence);
}

void DropArea::setHint(const QString& hint)
{
    m_hint->setText(hint);
    m_hint->setVisible(!hint.isEmpty());
}

QStringList DropArea::localPaths(const QMimeData* data)
{
    if (data->hasFormat(QLatin1String(kPortalTransfer))) {
        const QStringList paths = retrieveFromPortal(data);
        if (!paths.isEmpty())
            return paths;
    }
    QStringList paths;
    for (const QUrl& url : data->urls()) {
        if (url.isLocalFile())
            paths << url.toLocalFile();
    }
    return paths;
}

bool DropArea::offersFiles(const QMimeData* data)
{
    return data->hasUrls() || data->hasFormat(QLatin1String(kPortalTransfer));
}

void DropArea::dragEnterEvent(QDragEnterEvent* event)
{
    if (!offersFiles(event->mimeData()))
        return event->ignore();
    setHighlighted(true);
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void DropArea::dragLeaveEvent(QDragLeaveEvent* event)
{
    setHighlighted(false);
    event->accept();
}

void DropArea::dropEvent(QDropEvent* event)
{
    setHighlighted(false);
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(!offersFiles(event->mimeData()) || performDrop(localPaths(event->mimeData())));
}

void DropArea::setHighlighted(bool highlighted)
{
    m_highlighted = highlighted;
    m_animation.stop();
    m_animation.setStartValue(m_glow);
    m_animation.setEndValue(highlighted ? 1.0 : 0.0);
    m_animation.setDuration(Appearance::instance().duration(theme::kTransition));
    m_animation.start();
}

void DropArea::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange)
        applyType();
}

void DropArea::applyType()
{
    m_sentence->setFont(theme::font(theme::Type::Title, font()));
    QPalette quiet = palette();
    quiet.setColor(QPalette::WindowText, theme::colors(palette()).textSecondary);
    m_hint->setPalette(quiet);
}

void DropArea::paintEvent(QPaintEvent*)
{
    const auto colors = theme::colors(palette());
    const QColor accent = theme::accent(m_accent);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box = QRectF(rect()).adjusted(1, 1, -1, -1);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme::mix(colors.surface, accent, 0.12 * m_glow));
    painter.drawRoundedRect(box, theme::kRadiusCard, theme::kRadiusCard);
    drawDashedFrame(painter, box, theme::mix(theme::mix(colors.border, colors.text, 0.12), accent, m_glow));
}

}
