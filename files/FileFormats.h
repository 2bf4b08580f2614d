#pragma once

#include <QStringList>

namespace vantoro {

/// The extensions of archives, lower-case, without the dot, in the order of the open panel.
const QStringList& fileFormatArray();
/// Whether the path's extension is one of them, letter case included.
bool hasArchiveExtension(const QString& path);

}
