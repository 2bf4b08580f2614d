#pragma once

#include <QDateTime>
#include <QString>

namespace vantoro {

/// The year of the date's week, and the rest by Qt's pattern; empty for an invalid date.
QString dateText(const QDateTime& date, const QString& patternAfterYear);

}
