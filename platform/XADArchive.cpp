#include "platform/XADArchive.h"

#include "platform/XADException.h"
#include "platform/XADListing.h"
#include "platform/XADString.h"

#include "engine/extract.h"

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <limits>
#include <mutex>

namespace vantoro {
namespace {

std::string encoded(const QString& path) { return QFile::encodeName(path).toStdString(); }

QDateTime dateOf(const XADEntryTable::Row& row)
{
    if (!row.hasDate)
        return {};
    const auto utc = QDateTime::fromSecsSinceEpoch(row.date, Qt::UTC);
    return row.dateIsLocal ? QDateTime(utc.date(), utc.time()) : utc.toLocalTime();
}

QString formatName(const ArchiveInfo& info)
{
    const auto formats = supportedFormats();
    const auto name = [&](const std::string& id) {
        const auto row = std::ranges::find(formats, id, &FormatDescription::id);
        return row == formats.end() ? QString::fromStdString(id)
                                    : QCoreApplication::translate("Formats", row->displayName.c_str());
    };
    return info.outerFormat.empty() ? name(info.format)
                                    : QStringLiteral("%1, %2").arg(name(info.format), name(info.outerFormat));
}

/// Takes the data of one entry, up to a limit, and keeps them unless it is told not to.
class OneEntry final : public Lanes, private LaneReceiver {
public:
    enum class Keep { Data, Nothing };
    OneEntry(qint64 limit, qint64 expected, Keep keep = Keep::Data)
        : m_limit(limit)
        , m_keeps(keep == Keep::Data)
        , m_room(512 << 10)
    {
        if (m_keeps)
            m_data.reserve(static_cast<qsizetype>(std::min(limit, expected))); // a claim: pages come as they are filled
    }
    unsigned count() const override { return 1; }
    LaneReceiver& lane(unsigned) override { return *this; }
    QByteArray takeData() { return std::move(m_data); }
    /// Nothing before the entry's end, or where it was broken off.
    const std::optional<Result<void>>& outcome() const { return m_outcome; }
    /// Has the reading end behind the entry: what follows it in a compressed stream need not be decoded.
    void stopBehind() { m_stopsBehind = true; }

private:
    Result<Want> begin(const Entry&) override { return Want::Data; }
    Bytes room(std::size_t) override { return m_room; }
    Result<void> data(ConstBytes block) override
    {
        m_size += static_cast<qint64>(block.size());
        if (m_size > m_limit)
            return Error{ErrorCode::LimitExceeded, "too large to look at"};
        if (m_keeps)
            m_data.append(reinterpret_cast<const char*>(block.data()), static_cast<qsizetype>(block.size()));
        return {};
    }
    Result<void> end(Result<void> outcome) override
    {
        m_outcome = outcome;
        if (m_stopsBehind)
            return Error{ErrorCode::Cancelled, "that was all"};
        return {};
    }

    const qint64 m_limit;
    const bool m_keeps;
    qint64 m_size = 0;
    std::vector<std::byte> m_room;
    QByteArray m_data;
    std::optional<Result<void>> m_outcome;
    bool m_stopsBehind = false;
};

/// Passes on what goes wrong and remembers the first of it: where one entry is extracted, that is the answer.
class EntriesDelegate final : public ExtractDelegate {
public:
    EntriesDelegate(CharsetId charset, const XADExtractionWatch& watch) : m_charset(charset), m_watch(watch) {}
    void progressed(const ProgressNote& note) override
    {
        if (m_watch.progressed)
            m_watch.progressed(note.fraction(), QString::fromStdString(note.currentName));
    }
    bool entryFailed(const EntryProblem& problem) override
    {
        const int code = XADException::codeForError(problem.error);
        if (firstError == 0)
            firstError = code;
        if (m_watch.failed)
            m_watch.failed(QString::fromStdString(problem.entry.name), code);
        return true;
    }
    std::optional<CharsetId> chooseCharset(std::string_view, const Detection&) override { return m_charset; }
    bool allowsSize(const SizeQuestion& question) override { return question.kind != SizeQuestion::Kind::Space; }

    int firstError = 0;

private:
    const CharsetId m_charset;
    const XADExtractionWatch& m_watch;
};

class EngineArchive final : public XADArchive, private PasswordProvider {
public:
    EngineArchive(const QString& path, const XADListingWatch& watch)
        : m_path(path)
        , m_watch(watch)
        , m_cancel(watch.cancel)
    {
    }
    Result<void> open();

    qsizetype numberOfEntries() const override { return m_table->count(); }
    std::shared_ptr<const XADEntryTable> entryTable() const override { return m_table; }
    QString nameOfEntry(qsizetype index) const override
    {
        return isEntry(index) ? QString::fromUtf8(m_table->name(index)) : QString();
    }
    bool entryIsDirectory(qsizetype index) const override { return isEntry(index) && m_table->at(index).isFolder; }
    XADDataForkDictionary dataForkParserDictionaryForEntry(qsizetype index) const override;
    QString commonTopDirectory() const override;
    XADArchiveSummary summary() const override;
    bool isEncrypted() const override;
    bool needsPasswordToList() const override { return m_needsPassword; }
    int listingError() const override { return m_listingError; }
    void setPassword(const Secret& password) override;
    std::optional<QByteArray> contentsOfEntry(qsizetype index, qint64 limit, int* error) override;
    bool canReadEntry(qsizetype index, qint64 enough) override;
    int extractEntry(qsizetype index, const QString& folder) override
    {
        return extractEntries({static_cast<quint64>(index)}, folder, {});
    }
    int extractEntries(std::vector<quint64> indices, const QString& folder, const XADExtractionWatch& watch) override;
    void stop() override;

private:
    bool isEntry(qsizetype index) const { return index >= 0 && index < numberOfEntries(); }
    Result<Secret> password(unsigned attempt) override;
    Result<void> list();
    Result<void> reopen();
    Result<OpenedArchive*> readable();
    Result<QByteArray> contents(qsizetype index, qint64 limit);
    Result<void> readInto(OneEntry& entry, qsizetype index);

    const QString m_path;
    const XADListingWatch m_watch;
    std::mutex m_cancelMutex;
    CancelToken m_cancel; // of m_archive; stop() may come from another thread
    std::unique_ptr<OpenedArchive> m_archive;
    std::shared_ptr<const XADEntryTable> m_table = std::make_shared<XADEntryTable>();
    CharsetId m_charset = kCharsetUtf8;
    bool m_foundCharset = false;
    bool m_hasEncryptedEntries = false;
    Secret m_password;
    bool m_needsPassword = false;
    int m_listingError = 0;
};

bool asksForPassword(const Error& error)
{
    return error.code == ErrorCode::PasswordNeeded || error.code == ErrorCode::WrongPassword;
}

Result<void> EngineArchive::open()
{
    const auto opened = reopen();
    m_needsPassword = !opened && asksForPassword(opened.error());
    return opened ? list() : opened;
}

Result<void> EngineArchive::reopen()
{
    m_archive.reset();
    m_archive = TRY(openArchive(encoded(m_path), {.passwords = this, .cancel = m_cancel}));
    return {};
}

Result<void> EngineArchive::list()
{
    XADListing listing(m_watch);
    const auto listed = m_archive->archive().list(listing);
    m_needsPassword = !listed && asksForPassword(listed.error());
    m_listingError = listed ? 0 : XADException::codeForError(listed.error());
    m_table = listing.finish();
    m_charset = listing.charset();
    m_foundCharset = listing.foundCharset();
    m_hasEncryptedEntries = listing.hasEncryptedEntries();
    if (!listed && (m_table->count() == 0 || listed.error().code == ErrorCode::Cancelled))
        return listed.error();
    return {};
}

Result<Secret> EngineArchive::password(unsigned attempt)
{
    if (attempt > 0)
        return Error{ErrorCode::WrongPassword, "the given password is wrong"};
    if (m_password.isEmpty())
        return Error{ErrorCode::PasswordNeeded, "no password given yet"};
    return m_password;
}

void EngineArchive::setPassword(const Secret& password)
{
    m_password = password;
    const bool wasListed = !m_needsPassword && m_table->count() > 0;
    // Opened anew either way: what the archive remembers of passwords that failed must go.
    if (const auto opened = wasListed ? reopen() : open(); !opened)
        m_listingError = XADException::codeForError(opened.error());
}

void EngineArchive::stop()
{
    const std::lock_guard lock(m_cancelMutex);
    m_cancel.cancel();
}

/// An archive that was stopped stays so: the next reading opens it anew.
Result<OpenedArchive*> EngineArchive::readable()
{
    {
        const std::lock_guard lock(m_cancelMutex);
        if (m_archive && !m_cancel.isCancelled())
            return m_archive.get();
        m_cancel = CancelToken();
    }
    TRY(reopen());
    return m_archive.get();
}

XADDataForkDictionary EngineArchive::dataForkParserDictionaryForEntry(qsizetype index) const
{
    if (!isEntry(index))
        return {};
    const auto& row = m_table->at(index);
    XADDataForkDictionary about{
        .lastModificationDate = dateOf(row), .isEncrypted = row.isEncrypted, .isLink = row.isLink};
    if (row.hasSize)
        about.fileSize = row.size;
    return about;
}

QString EngineArchive::commonTopDirectory() const
{
    std::string_view top;
    for (qsizetype i = 0; i < numberOfEntries(); ++i) {
        const auto name = m_table->name(i);
        const auto slash = name.find('/');
        if (slash == std::string_view::npos && !m_table->at(i).isFolder)
            return {};
        const auto first = name.substr(0, slash);
        if (i > 0 && top != first)
            return {};
        top = first;
    }
    return QString::fromUtf8(top);
}

XADArchiveSummary EngineArchive::summary() const
{
    XADArchiveSummary summary{.entries = numberOfEntries(), .isEncrypted = isEncrypted()};
    for (qsizetype i = 0; i < summary.entries; ++i) {
        const auto size = m_table->at(i).size;
        summary.totalSize += std::min(size, std::numeric_limits<qint64>::max() - summary.totalSize);
    }
    if (m_foundCharset)
        summary.nameEncoding = XADString::encodingNameForEncoding(m_charset);
    if (!m_archive)
        return summary;
    const ArchiveInfo& info = m_archive->archive().info();
    summary.format = formatName(info);
    summary.packedSize = static_cast<qint64>(m_archive->packedSize());
    summary.volumes = static_cast<qsizetype>(m_archive->volumePaths().size());
    summary.hasEncryptedNames = info.hasEncryptedNames;
    summary.isSolid = info.isSolid;
    summary.comment = QString::fromStdString(info.comment);
    if (info.damage)
        summary.damage = XADException::describeXADError(XADException::codeForError(*info.damage));
    return summary;
}

bool EngineArchive::isEncrypted() const
{
    return m_hasEncryptedEntries || m_needsPassword || (m_archive && m_archive->archive().info().hasEncryptedNames);
}

Result<void> EngineArchive::readInto(OneEntry& entry, qsizetype index)
{
    auto& archive = TRY(readable())->archive();
    if (!archive.info().listsCheaply)
        entry.stopBehind();
    const auto read = archive.read({.selection = {{static_cast<std::uint64_t>(index)}}}, entry);
    if (entry.outcome())
        return *entry.outcome();
    return read ? Error{ErrorCode::Internal, "the entry was not read"} : read;
}

Result<QByteArray> EngineArchive::contents(qsizetype index, qint64 limit)
{
    if (!isEntry(index) || m_table->at(index).isFolder)
        return Error{ErrorCode::Internal, "no such file"};
    const auto size = m_table->at(index).size;
    if (size > limit)
        return Error{ErrorCode::LimitExceeded, "too large to look at"};
    OneEntry entry(limit, size);
    TRY(readInto(entry, index));
    return entry.takeData();
}

bool EngineArchive::canReadEntry(qsizetype index, qint64 enough)
{
    if (!isEntry(index) || m_table->at(index).isFolder)
        return false;
    OneEntry entry(enough, 0, OneEntry::Keep::Nothing);
    const auto read = readInto(entry, index);
    return read || read.error().code == ErrorCode::LimitExceeded;
}

std::optional<QByteArray> EngineArchive::contentsOfEntry(qsizetype index, qint64 limit, int* error)
{
    auto data = contents(index, limit);
    if (error)
        *error = data ? 0 : XADException::codeForError(data.error());
    return data ? std::optional(std::move(data).value()) : std::nullopt;
}

int EngineArchive::extractEntries(std::vector<quint64> indices, const QString& folder, const XADExtractionWatch& watch)
{
    if (!std::ranges::all_of(indices, [this](quint64 index) { return isEntry(static_cast<qsizetype>(index)); }))
        return XADException::codeForError({ErrorCode::Internal});
    const auto archive = readable();
    if (!archive)
        return XADException::codeForError(archive.error());
    ExtractOptions options;
    options.destination = encoded(folder);
    options.folder = FolderMode::Never;
    options.selection = std::vector<std::uint64_t>(indices.begin(), indices.end());
    options.charset = m_charset;
    EntriesDelegate delegate(m_charset, watch);
    const auto report = extractArchive(**archive, options, delegate, m_cancel);
    return report ? delegate.firstError : XADException::codeForError(report.error());
}

}

std::unique_ptr<XADArchive> XADArchive::initWithFile(const QString& path, int* error, const XADListingWatch& watch)
{
    auto archive = std::make_unique<EngineArchive>(path, watch);
    const auto opened = archive->open();
    if (error)
        *error = opened ? 0 : XADException::codeForError(opened.error());
    if (!opened && !archive->needsPasswordToList())
        return nullptr;
    return archive;
}

}
