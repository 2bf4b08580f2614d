#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>

namespace vantoro::icons {

/// A picture of the project by its file name without ".svg" ("archive-zip", "extract"), in its own colours.
QIcon icon(const QString& name);
QPixmap pixmap(const QString& name, int edge, qreal devicePixelRatio);

/// A one-colour glyph ("glyph-cancel") drawn in the given colour. Cached.
QPixmap glyph(const QString& name, const QColor& color, int edge, qreal devicePixelRatio);

/// The same as an icon, in the secondary text colour that holds when it is painted.
QIcon glyphIcon(const QString& name);

/// The application's own icon: the desktop theme's, if it has one, else the one that the program carries.
QIcon application();

/// The icon for an archive's kind by its file name; never null.
QIcon forArchive(const QString& fileName);

/// The icon for a file's kind by its name alone; never null.
QIcon forFile(const QString& fileName);

}
