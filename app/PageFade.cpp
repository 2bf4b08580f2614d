#include "app/PageFade.h"

#include "widgets/Appearance.h"
#include "widgets/Theme.h"

#include <QPainter>

namespace vantoro {

void PageFade::begin(QWidget* place)
{
    if (place->isVisible() && Appearance::instance().duration(theme::kTransition) > 0)
        new PageFade(place);
}

PageFade::PageFade(QWidget* place) : QWidget(place), m_before(place->grab())
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_DeleteOnClose);
    setGeometry(place->rect());
    connect(&m_animation, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        m_opacity = value.toDouble();
        raise(); // above the page that has come meanwhile
        update();
    });
    connect(&m_animation, &QVariantAnimation::finished, this, &QWidget::close);
    m_animation.setStartValue(1.0);
    m_animation.setEndValue(0.0);
    m_animation.setDuration(Appearance::instance().duration(theme::kTransition));
    m_animation.start();
    show();
}

void PageFade::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setOpacity(m_opacity);
    painter.drawPixmap(0, 0, m_before);
}

}
