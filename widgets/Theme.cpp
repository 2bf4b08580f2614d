#include "widgets/Theme.h"

#include <QPalette>

#include <cmath>

namespace vantoro::theme {
namespace {

constexpr double kReadable = 4.5;

double channel(double value) { return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4); }

double luminance(const QColor& color)
{
    return 0.2126 * channel(color.redF()) + 0.7152 * channel(color.greenF()) + 0.0722 * channel(color.blueF());
}

struct PaletteSeed {
    QColor window;
    QColor base;
    QColor alternate;
    QColor button;
    QColor text;
    QColor placeholder;
    QColor disabled;
    QColor link;
};

QPalette paletteFrom(const PaletteSeed& seed)
{
    QPalette palette(seed.button, seed.window);
    palette.setColor(QPalette::Window, seed.window);
    palette.setColor(QPalette::Base, seed.base);
    palette.setColor(QPalette::AlternateBase, seed.alternate);
    palette.setColor(QPalette::Button, seed.button);
    palette.setColor(QPalette::ToolTipBase, seed.base);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, seed.text);
        palette.setColor(QPalette::Disabled, role, seed.disabled);
    }
    palette.setColor(QPalette::PlaceholderText, seed.placeholder);
    palette.setColor(QPalette::Highlight, accentFill(Accent::Selection));
    palette.setColor(QPalette::HighlightedText, textOn(accentFill(Accent::Selection)));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, mix(seed.base, seed.text, 0.2));
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, seed.text);
    palette.setColor(QPalette::Link, seed.link);
    palette.setColor(QPalette::LinkVisited, seed.link);
    palette.setColor(QPalette::BrightText, Qt::white);
    return palette;
}

}

double contrast(const QColor& one, const QColor& other)
{
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return a > b ? a / b : b / a;
}

QColor mix(const QColor& from, const QColor& to, double share)
{
    const auto blend = [share](float a, float b) { return static_cast<float>(a + (b - a) * share); };
    return QColor::fromRgbF(blend(from.redF(), to.redF()), blend(from.greenF(), to.greenF()),
                            blend(from.blueF(), to.blueF()), blend(from.alphaF(), to.alphaF()));
}

bool isDark(const QPalette& palette)
{
    return luminance(palette.color(QPalette::Window)) < luminance(palette.color(QPalette::WindowText));
}

Colors colors(const QPalette& palette)
{
    const bool dark = isDark(palette);
    Colors result;
    result.window = palette.color(QPalette::Active, QPalette::Window);
    result.surface = palette.color(QPalette::Active, QPalette::Base);
    result.surfaceAlternate = palette.color(QPalette::Active, QPalette::AlternateBase);
    result.text = palette.color(QPalette::Active, QPalette::Text);
    result.border = mix(result.surface, result.text, dark ? 0.20 : 0.16);
    result.track = mix(result.surface, result.text, dark ? 0.18 : 0.11);
    result.hover = mix(result.surface, result.text, dark ? 0.10 : 0.06);
    result.pressed = mix(result.surface, result.text, dark ? 0.18 : 0.13);
    result.textSecondary = mix(result.text, result.surface, dark ? 0.30 : 0.32);
    result.textDisabled = palette.color(QPalette::Disabled, QPalette::Text);
    result.danger = dark ? QColor(255, 138, 128) : QColor(190, 38, 38);
    result.warning = dark ? QColor(240, 190, 90) : QColor(150, 94, 0);
    return result;
}

QPalette lightPalette()
{
    return paletteFrom({.window = QColor(246, 247, 249),
                        .base = Qt::white,
                        .alternate = QColor::fromRgbF(0.9294117647058824F, 0.9490196078431372F, 1.0F),
                        .button = Qt::white,
                        .text = QColor(27, 31, 36),
                        .placeholder = QColor(94, 103, 113),
                        .disabled = QColor(150, 157, 165),
                        .link = QColor(11, 99, 168)});
}

QPalette darkPalette()
{
    return paletteFrom({.window = QColor(29, 31, 35),
                        .base = QColor(37, 40, 45),
                        .alternate = QColor(42, 47, 58),
                        .button = QColor(49, 53, 59),
                        .text = QColor(236, 239, 242),
                        .placeholder = QColor(166, 173, 182),
                        .disabled = QColor(112, 119, 128),
                        .link = QColor(110, 190, 245)});
}

QColor accent(Accent which)
{
    switch (which) {
    case Accent::Extract:
        return {27, 146, 37};
    case Accent::Compress:
        return {224, 164, 44};
    case Accent::Selection:
        break;
    }
    return {61, 165, 236};
}

QColor accentFill(Accent which)
{
    QColor fill = accent(which);
    // The blue of a selection carries white, like the green; dark on blue reads, but looks like an oversight.
    while (contrast(fill, which == Accent::Selection ? QColor(Qt::white) : textOn(fill)) < kReadable)
        fill = mix(fill, Qt::black, 0.02);
    return fill;
}

QColor textOn(const QColor& fill)
{
    const QColor ink(20, 22, 26);
    // White is kept down to 3.6:1: accentFill() darkens such a ground a little, which looks calmer than dark on green.
    return contrast(fill, Qt::white) >= 3.6 ? QColor(Qt::white) : ink;
}

QFont font(Type type, const QFont& base)
{
    QFont result = base;
    const auto scale = [&result, &base](double factor) {
        if (base.pixelSize() > 0)
            result.setPixelSize(static_cast<int>(std::lround(base.pixelSize() * factor)));
        else
            result.setPointSizeF(base.pointSizeF() * factor);
    };
    switch (type) {
    case Type::Caption:
        scale(0.88);
        break;
    case Type::Body:
        break;
    case Type::BodyStrong:
        result.setWeight(QFont::DemiBold);
        break;
    case Type::Title:
        scale(1.25);
        result.setWeight(QFont::DemiBold);
        break;
    case Type::Display:
        scale(1.7);
        result.setWeight(QFont::DemiBold);
        break;
    }
    return result;
}

}
