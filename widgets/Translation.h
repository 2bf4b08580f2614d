#pragma once

#include <QString>

class QCoreApplication;

namespace vantoro {

/// Installs the texts of the user's language, ours and the toolkit's, before the first widget is made. English has a
/// file, too: its plural forms.
void installTranslations(QCoreApplication& application);

/// A control's text as it is read: without the mark of its key, and without the key in brackets that languages with
/// letters of their own add.
QString withoutMnemonic(QString text);

}
