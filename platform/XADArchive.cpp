#include "platform/XADArchive.h"

#include "platform/XADException.h"

#include "engine/extract.h"
#include "engine/extract/entry_names.h"
#include "engine/extract/safe_name.h"

#include <QFile>

#include <algorithm>
#include <vector>

namespace vantoro {
namespace {

std::string encoded(const QString& path) { return QFile::encodeName(path).toStdString(); }

struct Row {
    std::string name; // raw at first, then cleaned
    CharsetId charset = kCharsetUnknown;
    PathStyle pathStyle = PathStyle::Unix;
    bool isFolder = false;
    XADDataForkDictionary about;
};

QDateTime dateOf(const Timestamp& time)
{
    if (!time.isSet)
        return {};
    const auto utc = QDateTime::fromSecsSinceEpoch(time.seconds, Qt::UTC);
    return time.isLocal ? QDateTime(utc.date(), utc.time()) : utc.toLocalTime();
}

class RowCollector final : public EntryVisitor {
public:
    Result<void> visit(const Entry& entry) override
    {
        Row row{.name = std::string(entry.name),
                .charset = entry.nameCharset,
                .pathStyle = entry.pathStyle,
                .isFolder = entry.kind == EntryKind::Folder,
                .about = {.lastModificationDate = dateOf(entry.modified),
                          .isEncrypted = entry.isEncrypted,
                          .isLink = entry.kind == EntryKind::SymbolicLink || entry.kind == EntryKind::HardLink}};
        if (entry.size)
            row.about.fileSize = static_cast<qint64>(*entry.size);
        if (EntryNames::isUndeclared(row.name, row.charset))
            m_detector.add(row.name);
        rows.push_back(std::move(row));
        return {};
    }
    CharsetId charset() const { return m_detector.detect().charset; }

    std::vector<Row> rows;

private:
    CharsetDetector m_detector;
};

void cleanNames(std::vector<Row>& rows, CharsetId charset)
{
    EntryNames names(charset);
    NameCleaner cleaner;
    std::string buffer;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto components = cleaner.clean(names.decoded(rows[i].name, rows[i].charset, buffer), rows[i].pathStyle);
        rows[i].name = components && !components->empty() ? joinedName(*components) : "entry " + std::to_string(i);
    }
}

/// Keeps the data of one entry, up to a limit.
class OneEntry final : public Lanes, private LaneReceiver {
public:
    explicit OneEntry(qint64 limit) : m_limit(limit), m_room(512 << 10) {}
    unsigned count() const override { return 1; }
    LaneReceiver& lane(unsigned) override { return *this; }
    std::optional<QByteArray> takeData() { return m_isWhole ? std::optional(std::move(m_data)) : std::nullopt; }

private:
    Result<Want> begin(const Entry&) override { return Want::Data; }
    Bytes room(std::size_t) override { return m_room; }
    Result<void> data(ConstBytes block) override
    {
        if (m_data.size() + static_cast<qint64>(block.size()) > m_limit)
            return Error{ErrorCode::LimitExceeded, "too large to look at"};
        m_data.append(reinterpret_cast<const char*>(block.data()), static_cast<qsizetype>(block.size()));
        return {};
    }
    Result<void> end(Result<void> outcome) override
    {
        m_isWhole = outcome.has_value();
        return {};
    }

    const qint64 m_limit;
    std::vector<std::byte> m_room;
    QByteArray m_data;
    bool m_isWhole = false;
};

/// The first thing that went wrong is the answer: one entry has one outcome.
class FirstProblem final : public ExtractDelegate {
public:
    explicit FirstProblem(CharsetId charset) : m_charset(charset) {}
    bool entryFailed(const EntryProblem& problem) override
    {
        if (!error)
            error = problem.error;
        return true;
    }
    std::optional<CharsetId> chooseCharset(std::string_view, const Detection&) override { return m_charset; }
    bool allowsSize(const SizeQuestion& question) override { return question.kind != SizeQuestion::Kind::Space; }

    std::optional<Error> error;

private:
    const CharsetId m_charset;
};

class EngineArchive final : public XADArchive, private PasswordProvider {
public:
    explicit EngineArchive(const QString& path) : m_path(path) {}
    Result<void> open();

    qsizetype numberOfEntries() const override { return static_cast<qsizetype>(m_rows.size()); }
    QString nameOfEntry(qsizetype index) const override
    {
        const Row* row = rowAt(index);
        return row ? QString::fromStdString(row->name) : QString();
    }
    bool entryIsDirectory(qsizetype index) const override
    {
        const Row* row = rowAt(index);
        return row && row->isFolder;
    }
    XADDataForkDictionary dataForkParserDictionaryForEntry(qsizetype index) const override
    {
        const Row* row = rowAt(index);
        return row ? row->about : XADDataForkDictionary();
    }
    QString commonTopDirectory() const override;
    bool isEncrypted() const override;
    bool needsPasswordToList() const override { return m_needsPassword; }
    int listingError() const override { return m_listingError; }
    void setPassword(const Secret& password) override;
    std::optional<QByteArray> contentsOfEntry(qsizetype index, qint64 limit) override;
    int extractEntry(qsizetype index, const QString& folder) override;

private:
    const Row* rowAt(qsizetype index) const
    {
        return index >= 0 && index < numberOfEntries() ? &m_rows[static_cast<std::size_t>(index)] : nullptr;
    }
    Result<Secret> password(unsigned attempt) override;
    Result<void> list();

    const QString m_path;
    std::unique_ptr<OpenedArchive> m_archive;
    std::vector<Row> m_rows;
    CharsetId m_charset = kCharsetUtf8;
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
    auto opened = openArchive(encoded(m_path), {.passwords = this});
    m_needsPassword = !opened && asksForPassword(opened.error());
    if (!opened)
        return opened.error();
    m_archive = std::move(opened).value();
    return list();
}

Result<void> EngineArchive::list()
{
    RowCollector collector;
    const auto listed = m_archive->archive().list(collector);
    m_needsPassword = !listed && asksForPassword(listed.error());
    m_listingError = listed ? 0 : XADException::codeForError(listed.error());
    m_charset = collector.charset();
    m_rows = std::move(collector.rows);
    cleanNames(m_rows, m_charset);
    if (!listed && m_rows.empty())
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
    const bool wasListed = !m_needsPassword && !m_rows.empty();
    m_archive.reset(); // what it remembers of passwords that failed goes with it
    if (wasListed) {
        if (auto opened = openArchive(encoded(m_path), {.passwords = this}))
            m_archive = std::move(opened).value();
    } else if (const auto opened = open(); !opened) {
        m_listingError = XADException::codeForError(opened.error());
    }
}

QString EngineArchive::commonTopDirectory() const
{
    std::string top;
    for (const Row& row : m_rows) {
        const auto slash = row.name.find('/');
        if (slash == std::string::npos && !row.isFolder)
            return {};
        const auto first = row.name.substr(0, slash);
        if (!top.empty() && top != first)
            return {};
        top = first;
    }
    return QString::fromStdString(top);
}

bool EngineArchive::isEncrypted() const
{
    return m_needsPassword || (m_archive && m_archive->archive().info().hasEncryptedNames)
        || std::any_of(m_rows.begin(), m_rows.end(), [](const Row& row) { return row.about.isEncrypted; });
}

std::optional<QByteArray> EngineArchive::contentsOfEntry(qsizetype index, qint64 limit)
{
    const Row* row = rowAt(index);
    if (!m_archive || !row || row->isFolder || row->about.fileSize.value_or(0) > limit)
        return std::nullopt;
    OneEntry entry(limit);
    const auto read = m_archive->archive().read({.selection = {{static_cast<std::uint64_t>(index)}}}, entry);
    return read ? entry.takeData() : std::nullopt;
}

int EngineArchive::extractEntry(qsizetype index, const QString& folder)
{
    if (!m_archive || !rowAt(index))
        return XADException::codeForError({ErrorCode::Internal});
    ExtractOptions options;
    options.destination = encoded(folder);
    options.folder = FolderMode::Never;
    options.selection = {{static_cast<std::uint64_t>(index)}};
    options.charset = m_charset;
    FirstProblem problem(m_charset);
    const auto report = extractArchive(*m_archive, options, problem);
    if (!report)
        return XADException::codeForError(report.error());
    return problem.error ? XADException::codeForError(*problem.error) : 0;
}

}

std::unique_ptr<XADArchive> XADArchive::initWithFile(const QString& path, int* error)
{
    auto archive = std::make_unique<EngineArchive>(path);
    const auto opened = archive->open();
    if (error)
        *error = opened ? 0 : XADException::codeForError(opened.error());
    if (!opened && !archive->needsPasswordToList())
        return nullptr;
    return archive;
}

}
