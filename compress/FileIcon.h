#pragma once

#include <QIcon>

namespace vantoro {

/// The desktop's icon for a file or folder, or one that the program carries; never null.
QIcon fileIcon(const QString& path);

}
