#include "platform/XADSimpleUnarchiver.h"

#include "platform/XADException.h"

#include "engine/extract.h"

#include <QFile>

#include <mutex>

namespace vantoro {
namespace {

/// Above every confidence: the delegate decides about each charset that the archive does not declare.
constexpr float kAlwaysAsk = 2.0F;

std::string encoded(const QString& path) { return QFile::encodeName(path).toStdString(); }
QString decoded(const std::string& path) { return QFile::decodeName(QByteArray::fromStdString(path)); }

XADEntryDictionary dictionaryOf(const EntryNote& note)
{
    return {.fileName = XADString::stringWithText(QString::fromStdString(printable(note.name))),
            .isResourceFork = note.kind == EntryKind::ResourceFork,
            .index = note.index};
}

XADSizeQuestion::Kind kindOf(SizeQuestion::Kind kind)
{
    switch (kind) {
    case SizeQuestion::Kind::Space:
        return XADSizeQuestion::Kind::Space;
    case SizeQuestion::Kind::Crowd:
        return XADSizeQuestion::Kind::Crowd;
    case SizeQuestion::Kind::Ratio:
        break;
    }
    return XADSizeQuestion::Kind::Ratio;
}

/// Passes the engine's questions on to the application's delegate.
class EngineUnarchiver final : public XADSimpleUnarchiver, private PasswordProvider, private ExtractDelegate {
public:
    EngineUnarchiver(const QString& path, const CancelToken& stop) : m_path(path), m_stop(stop)
    {
        m_parser.filename = path;
        m_parser.allFilenames = QStringList{path};
    }

    /// False when the file is nothing that can be unpacked.
    bool open();
    const std::optional<Error>& openError() const { return m_openError; }

    void setDelegate(XADSimpleUnarchiverDelegate* delegate) override { m_delegate = delegate; }
    void setCopiesArchiveModificationTimeToEnclosingDirectory(bool on) override { m_options.archiveDateToFolder = on; }
    void setCopiesArchiveModificationTimeToSoloItems(bool on) override { m_options.archiveDateToSoloItem = on; }
    void setResetsDateForSoloItems(bool on) override { m_options.resetSoloItemDate = on; }
    void setRemovesEnclosingDirectoryForSoloItems(bool on) override { m_removesEnclosingDirectory = on; }
    void setEnclosingDirectoryName(const QString& name) override { m_enclosingName = name; }
    QString enclosingDirectoryName() const override { return m_enclosingName; }
    void setDestination(const QString& destination) override { m_destination = destination; }
    void addIndexFilter(quint64 index) override;
    void setPassword(const Secret& password) override { m_password = password; }
    void setPasswordEncodingName(const QString& name) override { m_passwordEncoding = name; }

    int parse() override;
    int unarchive() override;

    bool wasSoloItem() const override { return m_report.wasSolo; }
    QString createdItem() const override { return decoded(m_report.createdItem); }
    QStringList notes() const override;
    quint64 extractedBytes() const override { return m_report.bytes; }
    XADArchiveParser archiveParser() const override;
    XADArchiveParser outerArchiveParser() const override { return archiveParser(); }

private:
    Result<Secret> password(unsigned attempt) override;
    void willExtract(const EntryNote& entry) override;
    void progressed(const ProgressNote& progress) override;
    bool entryFailed(const EntryProblem& problem) override;
    std::optional<CharsetId> chooseCharset(std::string_view name, const Detection& detection) override;
    bool allowsSize(const SizeQuestion& question) override;

    bool goesOn();
    void updateParser();
    int codeFor(const Error& error) const;

    const QString m_path;
    CancelToken m_stop;
    XADSimpleUnarchiverDelegate* m_delegate = nullptr;
    std::unique_ptr<OpenedArchive> m_archive;
    std::optional<Error> m_openError;
    mutable std::mutex m_parserMutex;
    XADArchiveParser m_parser;
    ExtractOptions m_options;
    QString m_enclosingName;
    QString m_destination;
    bool m_removesEnclosingDirectory = true;
    Secret m_password;
    QString m_passwordEncoding;
    ExtractReport m_report;
};

bool EngineUnarchiver::open()
{
    std::string missing;
    auto opened = openArchive(encoded(m_path), {.passwords = this, .cancel = m_stop, .missingVolume = &missing});
    if (!opened) {
        m_openError = opened.error();
        const std::lock_guard lock(m_parserMutex);
        m_parser.volumeScanningFailed = m_openError->code == ErrorCode::MissingVolume;
        m_parser.missingVolume = decoded(missing);
        return m_openError->code != ErrorCode::NotAnArchive;
    }
    m_openError.reset();
    m_archive = std::move(opened).value();
    m_enclosingName = decoded(m_archive->stem());
    updateParser();
    return true;
}

void EngineUnarchiver::updateParser()
{
    const ArchiveInfo& info = m_archive->archive().info();
    QStringList volumes;
    for (const auto& path : m_archive->volumePaths())
        volumes += decoded(path);
    const std::lock_guard lock(m_parserMutex);
    m_parser.filename = decoded(m_archive->path());
    m_parser.allFilenames = volumes;
    m_parser.caresAboutPasswordEncoding = info.caresAboutPasswordEncoding;
    m_parser.missingVolume = decoded(info.missingVolume);
    m_parser.volumeScanningFailed = !info.missingVolume.empty();
}

XADArchiveParser EngineUnarchiver::archiveParser() const
{
    const std::lock_guard lock(m_parserMutex);
    return m_parser;
}

void EngineUnarchiver::addIndexFilter(quint64 index)
{
    if (!m_options.selection)
        m_options.selection.emplace();
    m_options.selection->push_back(index);
}

int EngineUnarchiver::parse()
{
    // What could not be opened before may open now that a password can be asked for.
    if (!m_archive && m_openError && m_openError->code == ErrorCode::PasswordNeeded)
        open();
    if (m_openError)
        return codeFor(*m_openError);
    if (m_stop.isCancelled())
        return XADException::kBreak;
    const auto& damage = m_archive->archive().info().damage;
    return damage ? codeFor(*damage) : 0;
}

int EngineUnarchiver::unarchive()
{
    if (!m_archive)
        return codeFor(m_openError.value_or(Error{}));
    const bool intoDestination = m_enclosingName.isNull();
    m_options.charsetThreshold = kAlwaysAsk;
    m_options.enclosingName = encoded(m_enclosingName);
    m_options.folder = intoDestination ? FolderMode::Never
        : m_removesEnclosingDirectory  ? FolderMode::Auto
                                       : FolderMode::Always;
    const std::string destination = encoded(m_destination);
    m_options.destination = intoDestination ? destination : destination.substr(0, destination.rfind('/'));
    m_options.hiddenFolderPath = destination;
    auto report = intoDestination ? extractArchive(*m_archive, m_options, *this, m_stop)
                                  : extractIntoHiddenFolder(*m_archive, m_options, *this, m_stop);
    updateParser();
    if (!report)
        return codeFor(report.error());
    m_report = std::move(report).value();
    return m_stop.isCancelled() ? XADException::kBreak : 0;
}

QStringList EngineUnarchiver::notes() const
{
    QStringList notes;
    for (const auto& note : m_report.notes)
        notes += QString::fromStdString(note);
    return notes;
}

/// A user who stopped is told nothing, whatever the stopping broke.
int EngineUnarchiver::codeFor(const Error& error) const
{
    if (m_stop.isCancelled())
        return XADException::kBreak;
    if (error.what && *error.what)
        qInfo("INFO: %s: %s (errno %d)", qUtf8Printable(m_path), error.what, error.osError);
    return XADException::codeForError(error);
}

bool EngineUnarchiver::goesOn()
{
    if (m_delegate->extractionShouldStopForSimpleUnarchiver(this))
        m_stop.cancel();
    return !m_stop.isCancelled();
}

Result<Secret> EngineUnarchiver::password(unsigned attempt)
{
    if (!m_delegate)
        return Error{ErrorCode::PasswordNeeded, "nobody to ask yet"};
    if (attempt > 0 || m_password.isEmpty()) {
        m_password = {};
        m_delegate->simpleUnarchiverNeedsPassword(this, attempt);
    }
    if (!goesOn())
        return Error{ErrorCode::Cancelled, "the password prompt was stopped"};
    if (m_password.isEmpty())
        return Error{ErrorCode::PasswordNeeded, "no password given"};
    const CharsetId charset = XADString::encodingForEncodingName(m_passwordEncoding);
    if (charset == kCharsetUnknown || !archiveParser().caresAboutPasswordEncoding)
        return m_password;
    auto bytes = TRY(encode(m_password.text(), charset));
    Secret inCharset(bytes);
    wipe(bytes.data(), bytes.size());
    return inCharset;
}

void EngineUnarchiver::willExtract(const EntryNote& entry)
{
    m_delegate->willExtractEntryWithDictionary(this, dictionaryOf(entry));
}

void EngineUnarchiver::progressed(const ProgressNote& progress)
{
    if (!goesOn())
        return;
    m_delegate->extractionProgress(this,
                                   {.written = progress.written,
                                    .writtenTotal = progress.writtenTotal,
                                    .fraction = progress.fraction(),
                                    .currentName = QString::fromStdString(printable(progress.currentName)),
                                    .entries = progress.entries,
                                    .entriesTotal = progress.entriesTotal});
}

bool EngineUnarchiver::entryFailed(const EntryProblem& problem)
{
    const int code = codeFor(problem.error);
    if (code != XADException::kBreak)
        m_delegate->didExtractEntryWithDictionary(this, dictionaryOf(problem.entry), code);
    return goesOn();
}

std::optional<CharsetId> EngineUnarchiver::chooseCharset(std::string_view name, const Detection& detection)
{
    const auto string = XADString::stringWithBytes(QByteArray(name.data(), static_cast<qsizetype>(name.size())),
                                                   detection.charset, detection.confidence);
    const QString answer = m_delegate->encodingNameForXADString(this, string);
    const CharsetId charset = XADString::encodingForEncodingName(answer);
    return goesOn() && charset != kCharsetUnknown ? std::optional(charset) : std::nullopt;
}

bool EngineUnarchiver::allowsSize(const SizeQuestion& question)
{
    return m_delegate->allowsSize(this,
                                  {.kind = kindOf(question.kind),
                                   .expected = question.expected,
                                   .available = question.available,
                                   .packed = question.packed})
        && goesOn();
}

}

std::unique_ptr<XADSimpleUnarchiver> XADSimpleUnarchiver::simpleUnarchiverForPath(const QString& path,
                                                                                  const CancelToken& stop, int* error)
{
    auto unarchiver = std::make_unique<EngineUnarchiver>(path, stop);
    const bool isArchive = unarchiver->open();
    if (error)
        *error = unarchiver->openError() ? XADException::codeForError(*unarchiver->openError()) : 0;
    if (!isArchive)
        return nullptr;
    return unarchiver;
}

QString XADSimpleUnarchiver::findUniquePathForOriginalPath(const QString& path)
{
    return decoded(uniquePath(encoded(path)));
}

}
