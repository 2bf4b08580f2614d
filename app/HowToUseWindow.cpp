#include "app/HowToUseWindow.h"

#include "widgets/ColoredView.h"
#include "widgets/Icons.h"
#include "widgets/Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>

namespace vantoro {
namespace {

constexpr int kUsualWidth = 600;
constexpr QSize kPicture(144, 88);

/// From one picture to the next, with arrows between them: what goes in and what comes out.
class Illustration final : public QWidget {
public:
    Illustration(QStringList pictures, QWidget* parent) : QWidget(parent), m_pictures(std::move(pictures))
    {
        setFixedSize(kPicture);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        const auto colors = theme::colors(palette());
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme::mix(colors.surface, colors.text, 0.05));
        painter.drawRoundedRect(rect(), theme::kRadiusControl, theme::kRadiusControl);
        constexpr int gap = theme::kSpaceXl;
        const auto count = static_cast<int>(m_pictures.size());
        const int width = count * theme::kIconRow + (count - 1) * gap;
        QRect place((this->width() - width) / 2, (height() - theme::kIconRow) / 2, theme::kIconRow, theme::kIconRow);
        for (int i = 0; i < count; ++i) {
            const QRect box = QStyle::visualRect(layoutDirection(), rect(), place);
            paintPicture(painter, m_pictures.at(i), box);
            if (i + 1 < count)
                paintArrow(painter,
                           QStyle::visualRect(layoutDirection(), rect(),
                                              QRect(place.right() + 1, place.top(), gap, place.height())));
            place.translate(theme::kIconRow + gap, 0);
        }
    }

private:
    void paintPicture(QPainter& painter, const QString& name, const QRect& box) const
    {
        const bool isGlyph = name.startsWith(QLatin1String("glyph-")) || name == QLatin1String("stIconTemplate");
        const qreal ratio = devicePixelRatioF();
        painter.drawPixmap(box.topLeft(),
                           isGlyph ? icons::glyph(name, theme::colors(palette()).textSecondary, box.width(), ratio)
                                   : icons::pixmap(name, box.width(), ratio));
    }
    void paintArrow(QPainter& painter, const QRect& box) const
    {
        painter.setPen(QPen(theme::colors(palette()).textSecondary, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        const double by = isRightToLeft() ? -3 : 3;
        const QPointF middle = QRectF(box).center();
        QPainterPath arrow(middle + QPointF(-by, -5));
        arrow.lineTo(middle + QPointF(by, 0));
        arrow.lineTo(middle + QPointF(-by, 5));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(arrow);
        painter.setPen(Qt::NoPen);
    }

    QStringList m_pictures;
};

}

HowToUseWindow::HowToUseWindow() : AppWindow(Escape::Closes)
{
    setObjectName(QStringLiteral("howtousWindow"));
    setWindowTitle(tr("How to Use"));
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(theme::kSpaceXl, theme::kSpaceXl, theme::kSpaceXl, theme::kSpaceXl);
    column->setSpacing(theme::kSpaceM);
    addStep(column, {QStringLiteral("archive-zip"), QStringLiteral("folder")}, tr("Extract"),
            tr("Drop archives on the window, or open them in the file manager. They come out one after another; "
               "whatever must be asked is asked in the archive's own row."));
    addStep(column, {QStringLiteral("archive-7z"), QStringLiteral("glyph-search")}, tr("Look inside"),
            tr("With \"Look inside before extracting\" in the settings, an opened archive shows what it holds. Press "
               "Space to preview an entry, and extract all of it or only what you choose."));
    addStep(column, {QStringLiteral("folder"), QStringLiteral("archive-zip")}, tr("Compress"),
            tr("Drop files and folders on the Compress page, choose a kind and, if you like, a password, and say where "
               "the archive is to be written."));
    addStep(column,
            {
                QStringLiteral("folder"),
                QStringLiteral("glyph-extract"),
            },
            tr("From the file manager"),
            tr("The menu of an archive offers to extract it there, to the Desktop, or to a folder of your choice."));
    addStep(column, {QStringLiteral("stIconTemplate")}, tr("Always at hand"),
            tr("Vantoro goes on running when its windows are closed. Its icon in the tray brings them back, and Quit "
               "ends it."));
    column->addStretch(1);
    fillWith(content);
    resizeWithinScreen({kUsualWidth, column->totalHeightForWidth(kUsualWidth)}); // all steps at once
}

void HowToUseWindow::addStep(QVBoxLayout* column, const QStringList& pictures, const QString& title,
                             const QString& text)
{
    auto* card = ColoredView::card(this);
    auto* name = new QLabel(title, card);
    name->setFont(theme::font(theme::Type::BodyStrong, font()));
    auto* words = new QVBoxLayout;
    words->setSpacing(theme::kSpaceXs);
    words->addStretch(1);
    words->addWidget(name);
    auto* sentence = new QLabel(text, card);
    sentence->setWordWrap(true);
    words->addWidget(sentence);
    words->addStretch(1);
    auto* line = new QHBoxLayout(card);
    line->setContentsMargins(theme::kSpaceM, theme::kSpaceM, theme::kSpaceL, theme::kSpaceM);
    line->setSpacing(theme::kSpaceL);
    line->addWidget(new Illustration(pictures, card), 0, Qt::AlignTop);
    line->addLayout(words, 1);
    column->addWidget(card);
}

}
