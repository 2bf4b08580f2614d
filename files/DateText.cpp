#include "files/DateText.h"

namespace vantoro {

QString dateText(const QDateTime& date, const QString& patternAfterYear)
{
    if (!date.isValid())
        return {};
    int year = 0;
    date.date().weekNumber(&year);
    return QStringLiteral("%1").arg(year, 4, 10, QLatin1Char('0')) + date.toString(patternAfterYear);
}

}
