#include "engine/backends/msi_tables.h"

#include <algorithm>
#include <array>

namespace vantoro {

namespace {

constexpr std::uint32_t kLongReferences = 0x80000000; // of the pool's code page: string numbers take 3 bytes
constexpr std::uint32_t kCodePageUtf8 = 65001;
constexpr unsigned kDeepest = 64; // folders in a path

// Types of columns.
constexpr unsigned kIsString = 0x0800;
constexpr unsigned kIsNullable = 0x1000;
constexpr unsigned kIsValid = 0x0100;

class StringPool {
public:
    static Result<StringPool> read(const MsiStreamReader& streams)
    {
        const auto index = streams("_StringPool");
        const auto data = streams("_StringData");
        if (!index || !data)
            return Error{ErrorCode::Corrupt, "msi: no strings"};
        StringPool pool;
        ByteReader in(*index);
        const auto codePage = in.le32();
        pool.m_referenceSize = codePage & kLongReferences ? 3 : 2;
        pool.m_isUtf8 = (codePage & ~kLongReferences) == kCodePageUtf8;
        pool.m_strings.emplace_back(); // number 0 is no string
        ByteReader text(*data);
        while (in.remaining() >= 4) {
            std::size_t length = in.le16();
            const auto references = in.le16();
            if (length == 0 && references != 0) // longer than 64 KiB: the next entry is the length
                length = in.le32();
            pool.m_strings.emplace_back(text.text(length));
        }
        if (!in.ok() || !text.ok())
            return Error{ErrorCode::Corrupt, "msi: strings"};
        return pool;
    }

    std::size_t referenceSize() const { return m_referenceSize; }
    bool isUtf8() const { return m_isUtf8; }
    std::string_view operator[](std::size_t number) const
    {
        return number < m_strings.size() ? std::string_view(m_strings[number]) : std::string_view();
    }

private:
    std::size_t m_referenceSize = 2;
    bool m_isUtf8 = false;
    std::vector<std::string> m_strings;
};

struct Column {
    std::string name;
    unsigned type = 0;
    std::size_t size(const StringPool& pool) const
    {
        const bool isBinary = (type & ~kIsNullable) == (kIsString | kIsValid);
        if (type & kIsString && !isBinary)
            return pool.referenceSize();
        return !isBinary && (type & 0xFF) == 4 ? 4 : 2;
    }
};

/// A table: its columns one after another, each with the values of all rows.
class Table {
public:
    static Result<Table> read(std::vector<std::byte> data, std::vector<Column> columns, const StringPool& pool)
    {
        Table table;
        std::size_t rowSize = 0;
        for (const auto& column : columns)
            rowSize += column.size(pool);
        if (rowSize == 0 || data.size() % rowSize != 0)
            return Error{ErrorCode::Corrupt, "msi: a table of odd size"};
        table.m_rows = data.size() / rowSize;
        table.m_data = std::move(data);
        table.m_columns = std::move(columns);
        table.m_pool = &pool;
        return table;
    }

    std::size_t rows() const { return m_rows; }
    std::string_view text(std::size_t row, std::string_view column) const { return (*m_pool)[value(row, column)]; }
    /// A number as stored; 0 when there is no such column.
    std::uint32_t value(std::size_t row, std::string_view name) const
    {
        std::size_t start = 0;
        for (const auto& column : m_columns) {
            const auto size = column.size(*m_pool);
            if (column.name == name) {
                ByteReader in(m_data);
                in.seek(start + row * size);
                const auto low = in.le16();
                return size == 2 ? low
                    : size == 3  ? low | std::uint32_t{in.u8()} << 16
                                 : low | std::uint32_t{in.le16()} << 16;
            }
            start += size * m_rows;
        }
        return 0;
    }

private:
    std::size_t m_rows = 0;
    std::vector<std::byte> m_data;
    std::vector<Column> m_columns;
    const StringPool* m_pool = nullptr;
};

class Database {
public:
    explicit Database(const MsiStreamReader& streams) : m_streams(streams) {}

    Result<void> open()
    {
        m_pool = TRY(StringPool::read(m_streams));
        auto data = m_streams("_Columns");
        if (!data)
            return Error{ErrorCode::Corrupt, "msi: no columns"};
        constexpr unsigned kText = kIsString | 64;
        m_columns = TRY(
            Table::read(*std::move(data), {{"Table", kText}, {"Number", 2}, {"Name", kText}, {"Type", 2}}, m_pool));
        return {};
    }

    const StringPool& pool() const { return m_pool; }
    Result<Table> table(std::string_view name) const
    {
        auto data = m_streams(name);
        if (!data)
            return Error{ErrorCode::NotAnArchive, "msi: a table is missing"};
        std::vector<std::pair<unsigned, Column>> numbered;
        for (std::size_t row = 0; row < m_columns->rows(); ++row) {
            if (m_columns->text(row, "Table") == name)
                numbered.push_back(
                    {m_columns->value(row, "Number"),
                     {std::string(m_columns->text(row, "Name")),
                      m_columns->value(row, "Type") ^ 0x8000U}}); // numbers are kept with the sign flipped
        }
        std::sort(numbered.begin(), numbered.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
        std::vector<Column> columns;
        columns.reserve(numbered.size());
        for (auto& [number, column] : numbered)
            columns.push_back(std::move(column));
        return Table::read(*std::move(data), std::move(columns), m_pool);
    }

private:
    const MsiStreamReader& m_streams;
    StringPool m_pool;
    std::optional<Table> m_columns;
};

/// "target:source", each "short|long": the long name in the target.
std::string_view longName(std::string_view name)
{
    name = name.substr(0, name.find(':'));
    if (const auto bar = name.find('|'); bar != std::string_view::npos)
        name.remove_prefix(bar + 1);
    return name;
}

/// Folders that Windows gives a place to, under the names that they have in English.
std::string_view knownFolder(std::string_view key)
{
    constexpr std::array<std::pair<std::string_view, std::string_view>, 11> kFolders{{
        {"ProgramFilesFolder", "Program Files"},
        {"ProgramFiles64Folder", "Program Files"},
        {"CommonFilesFolder", "Program Files/Common Files"},
        {"CommonFiles64Folder", "Program Files/Common Files"},
        {"WindowsFolder", "Windows"},
        {"SystemFolder", "Windows/System32"},
        {"System64Folder", "Windows/System32"},
        {"FontsFolder", "Windows/Fonts"},
        {"CommonAppDataFolder", "ProgramData"},
        {"AppDataFolder", "AppData/Roaming"},
        {"LocalAppDataFolder", "AppData/Local"},
    }};
    const auto found = std::find_if(kFolders.begin(), kFolders.end(), [&](const auto& f) { return f.first == key; });
    return found == kFolders.end() ? std::string_view() : found->second;
}

class Folders {
public:
    static Result<Folders> read(const Database& database)
    {
        Folders folders;
        const auto table = TRY(database.table("Directory"));
        for (std::size_t row = 0; row < table.rows(); ++row)
            folders.m_folders[std::string(table.text(row, "Directory"))] = {
                std::string(table.text(row, "Directory_Parent")), std::string(longName(table.text(row, "DefaultDir")))};
        return folders;
    }

    /// With a closing '/', or empty at the root.
    std::string path(const std::string& key) const
    {
        std::string path;
        auto current = key;
        for (unsigned depth = 0; depth < kDeepest; ++depth) {
            const auto found = m_folders.find(current);
            if (found == m_folders.end() || found->second.parent.empty() || found->second.parent == current)
                break; // the root, which stands for the place of installation
            const auto known = knownFolder(current);
            const auto& name = found->second.name;
            if (!known.empty())
                path.insert(0, std::string(known) + '/');
            else if (!name.empty() && name != ".")
                path.insert(0, name + '/');
            current = found->second.parent;
        }
        return path;
    }

private:
    struct Folder {
        std::string parent, name;
    };
    std::unordered_map<std::string, Folder> m_folders;
};

Result<std::unordered_map<std::string, std::string>> folderOfComponents(const Database& database)
{
    std::unordered_map<std::string, std::string> folders;
    const auto table = TRY(database.table("Component"));
    for (std::size_t row = 0; row < table.rows(); ++row)
        folders[std::string(table.text(row, "Component"))] = table.text(row, "Directory_");
    return folders;
}

}

Result<MsiFiles> readMsiFiles(const MsiStreamReader& streams)
{
    Database database(streams);
    TRY(database.open());
    const auto folders = TRY(Folders::read(database));
    const auto components = TRY(folderOfComponents(database));
    const auto files = TRY(database.table("File"));
    const auto media = TRY(database.table("Media"));

    MsiFiles result;
    result.charset = database.pool().isUtf8() ? kCharsetUtf8 : kCharsetUnknown;
    for (std::size_t row = 0; row < files.rows(); ++row) {
        const auto component = components.find(std::string(files.text(row, "Component_")));
        const auto folder = component == components.end() ? std::string() : folders.path(component->second);
        result.paths[std::string(files.text(row, "File"))]
            = folder + std::string(longName(files.text(row, "FileName")));
    }
    for (std::size_t row = 0; row < media.rows(); ++row) {
        if (const auto cabinet = media.text(row, "Cabinet"); !cabinet.empty())
            result.cabinets.emplace_back(cabinet);
    }
    if (result.cabinets.empty())
        return Error{ErrorCode::NotAnArchive, "msi: no cabinets"};
    return result;
}

}
