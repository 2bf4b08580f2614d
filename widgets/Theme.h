#pragma once

#include <QColor>
#include <QFont>

class QPalette;

/// The one place that knows how Vantoro looks: distances, type and colours. All colours follow the palette in use, so
/// that a desktop's own scheme (also a high-contrast one) carries through.
namespace vantoro::theme {

// Distances are multiples of four device-independent pixels.
inline constexpr int kSpaceXs = 4;
inline constexpr int kSpaceS = 8;
inline constexpr int kSpaceM = 12;
inline constexpr int kSpaceL = 16;
inline constexpr int kSpaceXl = 24;
inline constexpr int kSpaceXxl = 32;

inline constexpr int kRadiusControl = 6;
inline constexpr int kRadiusCard = 12;

// Icons come in these edges only.
inline constexpr int kIconSmall = 16;
inline constexpr int kIconMedium = 24;
inline constexpr int kIconRow = 40;

/// Length of a transition in milliseconds, before reduced motion is taken into account (see Appearance::duration).
inline constexpr int kTransition = 150;

/// The colour of a page; Selection is for what is chosen or focused anywhere.
enum class Accent { Extract, Compress, Selection };

enum class Type { Caption, Body, BodyStrong, Title, Display };

struct Colors {
    QColor window; ///< behind everything
    QColor surface; ///< cards, lists, fields
    QColor surfaceAlternate; ///< every other row of a list
    QColor border;
    QColor track; ///< the part of a bar that is still to be filled
    QColor hover; ///< laid over what the pointer is on
    QColor pressed;
    QColor text;
    QColor textSecondary; ///< at least 4.5:1 on surface with the built-in palettes
    QColor textDisabled;
    QColor danger;
    QColor warning;
};

bool isDark(const QPalette& palette);
Colors colors(const QPalette& palette);

/// The built-in palettes, for desktops that supply none.
QPalette lightPalette();
QPalette darkPalette();

/// The pure hue, for marks: bars, rings, icons.
QColor accent(Accent which);
/// The hue as the ground of a label, shifted as little as needed for 4.5:1 with textOn().
QColor accentFill(Accent which);
/// White or near-black, whichever reads better.
QColor textOn(const QColor& fill);

/// Contrast of two opaque colours, 1 to 21 (WCAG 2).
double contrast(const QColor& one, const QColor& other);
QColor mix(const QColor& from, const QColor& to, double share);

QFont font(Type type, const QFont& base);

}
