#include "browse/EncodingList.h"

#include <QCollator>
#include <QCoreApplication>
#include <QFontMetrics>

#include <algorithm>
#include <cmath>

namespace vantoro {

QList<EncodingRecord> encodingRecords()
{
    QList<EncodingRecord> records;
    for (const Charset& charset : charsets()) {
        const QString name = QCoreApplication::translate("Charset", charset.displayName);
        if (!name.isEmpty() && charset.id != kCharsetUtf16)
            records.append({name, charset.id});
    }
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    collator.setNumericMode(true);
    std::stable_sort(records.begin(), records.end(), [&collator](const EncodingRecord& a, const EncodingRecord& b) {
        return collator.compare(a.name, b.name) < 0;
    });
    return records;
}

bool acceptsSample(const QString& sample)
{
    for (qsizetype i = 0; i < sample.size(); ++i) {
        const QChar unit = sample.at(i);
        if (unit.isHighSurrogate())
            return false;
        if (unit.isLowSurrogate()) {
            ++i;
            if (i == sample.size() || !sample.at(i).isHighSurrogate())
                return false;
        }
    }
    return true;
}

QList<EncodingMatch> encodingsMatching(const XADString& name)
{
    QList<EncodingMatch> matches;
    for (const EncodingRecord& record : encodingRecords()) {
        if (!name.canDecodeWithEncoding(record.encoding))
            continue;
        const QString sample = name.stringWithEncoding(record.encoding);
        if (acceptsSample(sample))
            matches.append({record, sample});
    }
    return matches;
}

int widestEncodingName(const QList<EncodingRecord>& records, const QFont& font)
{
    const QFontMetricsF metrics(font);
    qreal widest = 0;
    for (const EncodingRecord& record : records)
        widest = qMax(widest, metrics.horizontalAdvance(record.name));
    return static_cast<int>(std::ceil(widest));
}

}
