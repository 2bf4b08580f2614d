#pragma once

#include "widgets/KXBaseViewCter.h"

#include <functional>

namespace vantoro {

/// The pages of a main window.
inline constexpr int kBrowserPage = 0;
inline constexpr int kCompressPage = 1;

/// Makes a page as a child of `parent`; asked at most once for each page of a window.
using PageFactory = std::function<KXBaseViewCter*(int index, QWidget* parent)>;

/// "Extract" or "Compress" in the user's language.
QString pageTitle(int index);
QIcon pageImage(int index);
/// Smaller, for the side table.
QIcon pageRowImage(int index);

}
