#pragma once

class QCoreApplication;

namespace vantoro {

/// Installs the texts of the user's language, ours and the toolkit's, before the first widget is made. English has a
/// file, too: its plural forms.
void installTranslations(QCoreApplication& application);

}
