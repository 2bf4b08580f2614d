#pragma once

#include "platform/XADString.h"

#include <QFont>
#include <QList>

namespace vantoro {

/// One encoding as the user is offered it.
struct EncodingRecord {
    QString name; ///< localised
    CharsetId encoding = kCharsetUnknown;
};

/// An encoding that can read a given name, and what it makes of it.
struct EncodingMatch {
    EncodingRecord record;
    QString sample;
};

/// Every encoding, sorted by name: letter case ignored, runs of digits compared as numbers.
QList<EncodingRecord> encodingRecords();

/// Whether a sample is fit to be shown beside its encoding. A well-formed surrogate pair (high, then low) rules it out,
/// so that an encoding that reads a file name as an emoji does not crowd the list.
bool acceptsSample(const QString& sample);

/// The encodings that can decode the name into an acceptable sample, in the order of encodingRecords().
QList<EncodingMatch> encodingsMatching(const XADString& name);

/// The widest name in the font; 0 for no records.
int widestEncodingName(const QList<EncodingRecord>& records, const QFont& font);

}
