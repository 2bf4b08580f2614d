// What the engine asks and tells a job, on the job's thread.
#include "extraction/KXArchiveManageController.h"

#include "app/KXPrefsDefault.h"

#include <QLocale>

namespace vantoro {

bool KXArchiveManageController::extractionShouldStopForSimpleUnarchiver(XADSimpleUnarchiver*) { return isCancelled(); }

QString KXArchiveManageController::encodingNameForXADString(XADSimpleUnarchiver*, const XADString& string)
{
    const auto setting = static_cast<CharsetId>(KXPrefsDefault::fileEncode());
    if (const QString name = XADString::encodingNameForEncoding(setting); !name.isEmpty())
        return name;
    const auto threshold = static_cast<float>(KXPrefsDefault::autoThreshold());
    if (const CharsetId selected = m_selectedEncoding; selected != kCharsetUnknown)
        return string.canDecodeWithEncoding(selected) ? XADString::encodingNameForEncoding(selected)
                                                      : askForEncoding(string);
    const CharsetId detected = string.encoding();
    if (string.confidence() * 100.0F >= threshold && detected != kCharsetUnknown
        && string.canDecodeWithEncoding(detected))
        return XADString::encodingNameForEncoding(detected);
    return askForEncoding(string);
}

QString KXArchiveManageController::askForEncoding(const XADString& string)
{
    m_selectedEncoding = m_view->displayEncodingSelectorForXADString(string);
    if (m_selectedEncoding == kCharsetUnknown) {
        setIsCancelled(true);
        return {};
    }
    return XADString::encodingNameForEncoding(m_selectedEncoding);
}

void KXArchiveManageController::simpleUnarchiverNeedsPassword(XADSimpleUnarchiver* unarchiver, unsigned attempt)
{
    bool applyToAll = false;
    CharsetId encoding = kCharsetUnknown;
    Secret password;
    try {
        password = m_view->displayPasswordInputWithApplyToAllPointer(&applyToAll, &encoding, attempt);
    } catch (...) {
        return; // as though no password had been given
    }
    if (password.isEmpty()) {
        setIsCancelled(true);
        return;
    }
    unarchiver->setPassword(password);
    if (encoding != kCharsetUnknown)
        unarchiver->setPasswordEncodingName(XADString::encodingNameForEncoding(encoding));
}

void KXArchiveManageController::willExtractEntryWithDictionary(XADSimpleUnarchiver*, const XADEntryDictionary& entry)
{
    m_view->setName(stringForXADPath(entry.fileName));
}

void KXArchiveManageController::extractionProgress(XADSimpleUnarchiver*, const XADProgress& progress)
{
    m_view->setProgress(progress.fraction);
    m_view->setProgressDetail(progress);
}

void KXArchiveManageController::didExtractEntryWithDictionary(XADSimpleUnarchiver*, const XADEntryDictionary& entry,
                                                              int error)
{
    if (error == 0 || m_isIgnoreAll || isCancelled())
        return;
    const QString format = entry.isResourceFork ? tr("DO NOT extract the files \"%1\" from the archive \"%2\":\n%3")
                                                : tr("DO NOT extract the files \"%1\" from archive \"%2\": %3");
    const QString name = stringForXADPath(entry.fileName);
    // Damage that belongs to no entry: what the archive held behind it is lost.
    const QString message = name.isEmpty() ? tr("The archive \"%1\" could not be read to its end: %2")
                                                 .arg(currentArchiveName(), localizedDescriptionOfError(error))
                                           : format.arg(name, currentArchiveName(), localizedDescriptionOfError(error));
    m_isErrors = true;
    m_outcome.problems += message;
    if (!m_view->displayError(message, &m_isIgnoreAll))
        setIsCancelled(true);
}

bool KXArchiveManageController::allowsSize(XADSimpleUnarchiver*, const XADSizeQuestion& question)
{
    const QLocale locale;
    const auto size = [&](quint64 bytes) { return locale.formattedDataSize(static_cast<qint64>(bytes)); };
    QString message;
    switch (question.kind) {
    case XADSizeQuestion::Kind::Ratio:
        message
            = tr("The archive \"%1\" of %2 would unpack to %3. Archives that are made to fill a disk look like this.")
                  .arg(currentArchiveName(), size(question.packed), size(question.expected));
        break;
    case XADSizeQuestion::Kind::Space:
        message = tr("The contents of the archive \"%1\" need %2, but only %3 are free in the destination.")
                      .arg(currentArchiveName(), size(question.expected), size(question.available));
        break;
    case XADSizeQuestion::Kind::Crowd:
        message = tr("The archive \"%1\" of %2 holds %3 entries.")
                      .arg(currentArchiveName(), size(question.packed), locale.toString(question.expected));
        break;
    }
    return m_view->displayError(message, &m_isIgnoreAll);
}

}
