#include "engine/write/zip_records.h"

#include "engine/text/charset.h"

#include <algorithm>
#include <ctime>

namespace vantoro {

namespace {

constexpr std::uint32_t kFull32 = 0xFFFFFFFF;
constexpr std::uint16_t kMadeByUnix = 3 << 8 | 63;
constexpr std::uint16_t kAesMethod = 99;

class Record {
public:
    explicit Record(std::vector<std::byte>& out) : m_out(out) {}
    Record& u8(unsigned value)
    {
        m_out.push_back(static_cast<std::byte>(value));
        return *this;
    }
    Record& le16(std::uint32_t value) { return u8(value & 0xFF).u8(value >> 8 & 0xFF); }
    Record& le32(std::uint32_t value) { return le16(value & 0xFFFF).le16(value >> 16); }
    Record& le64(std::uint64_t value)
    {
        return le32(static_cast<std::uint32_t>(value)).le32(static_cast<std::uint32_t>(value >> 32));
    }
    Record& text(std::string_view text)
    {
        const auto bytes = asBytes(text);
        m_out.insert(m_out.end(), bytes.begin(), bytes.end());
        return *this;
    }
    Record& bytes(ConstBytes bytes)
    {
        m_out.insert(m_out.end(), bytes.begin(), bytes.end());
        return *this;
    }

private:
    std::vector<std::byte>& m_out;
};

std::uint16_t flagsOf(const ZipRecord& record)
{
    const bool isUtf8 = !isAscii(record.name) && isValidUtf8(record.name);
    return static_cast<std::uint16_t>((isUtf8 ? 1U << 11 : 0U) | (record.isAes || record.isClassic ? 1U : 0U));
}

std::uint16_t versionNeeded(const ZipRecord& record, bool isWide)
{
    return static_cast<std::uint16_t>(record.isAes ? 51 : isWide ? 45 : 20);
}

void appendCommonExtra(std::vector<std::byte>& extra, const ZipRecord& record)
{
    Record out(extra);
    if (record.modified)
        out.le16(0x5455).le16(5).u8(1).le32(static_cast<std::uint32_t>(*record.modified));
    if (record.isAes)
        out.le16(0x9901).le16(7).le16(2).text("AE").u8(3).le16(record.method);
}

std::uint32_t narrow(std::uint64_t value, bool isWide) { return isWide ? kFull32 : static_cast<std::uint32_t>(value); }

std::uint32_t dosTimeOf(std::int64_t seconds, bool useUtc)
{
    const auto time = static_cast<std::time_t>(seconds);
    std::tm fields{};
    (useUtc ? ::gmtime_r(&time, &fields) : ::localtime_r(&time, &fields));
    const int year = std::clamp(fields.tm_year + 1900, 1980, 2107);
    if (year != fields.tm_year + 1900)
        return year == 1980 ? 0x00210000 : 0xFF9FBF7D;
    const auto date = static_cast<std::uint32_t>((year - 1980) << 9 | (fields.tm_mon + 1) << 5 | fields.tm_mday);
    const auto clock = static_cast<std::uint32_t>(fields.tm_hour << 11 | fields.tm_min << 5 | fields.tm_sec / 2);
    return date << 16 | clock;
}

}

std::vector<std::byte> localHeader(const ZipRecord& record)
{
    std::vector<std::byte> extra;
    if (record.hasWideSizes)
        Record(extra).le16(1).le16(16).le64(record.size).le64(record.packedSize);
    appendCommonExtra(extra, record);
    std::vector<std::byte> header;
    Record(header)
        .le32(0x04034B50)
        .le16(versionNeeded(record, record.hasWideSizes))
        .le16(flagsOf(record))
        .le16(record.isAes ? kAesMethod : record.method)
        .le32(record.dosTime)
        .le32(record.isAes ? 0 : record.crc)
        .le32(narrow(record.packedSize, record.hasWideSizes))
        .le32(narrow(record.size, record.hasWideSizes))
        .le16(static_cast<std::uint32_t>(record.name.size()))
        .le16(static_cast<std::uint32_t>(extra.size()))
        .text(record.name)
        .bytes(extra);
    return header;
}

void appendCentral(std::vector<std::byte>& directory, const ZipRecord& record)
{
    const bool wideSize = record.size >= kFull32;
    const bool widePacked = record.packedSize >= kFull32;
    const bool wideOffset = record.offset >= kFull32;
    std::vector<std::byte> wide;
    Record wideOut(wide);
    if (wideSize)
        wideOut.le64(record.size);
    if (widePacked)
        wideOut.le64(record.packedSize);
    if (wideOffset)
        wideOut.le64(record.offset);
    std::vector<std::byte> extra;
    if (!wide.empty())
        Record(extra).le16(1).le16(static_cast<std::uint32_t>(wide.size())).bytes(wide);
    appendCommonExtra(extra, record);
    Record(directory)
        .le32(0x02014B50)
        .le16(kMadeByUnix)
        .le16(versionNeeded(record, !wide.empty()))
        .le16(flagsOf(record))
        .le16(record.isAes ? kAesMethod : record.method)
        .le32(record.dosTime)
        .le32(record.isAes ? 0 : record.crc)
        .le32(narrow(record.packedSize, widePacked))
        .le32(narrow(record.size, wideSize))
        .le16(static_cast<std::uint32_t>(record.name.size()))
        .le16(static_cast<std::uint32_t>(extra.size()))
        .le16(0) // comment
        .le16(0) // disk
        .le16(0) // internal attributes
        .le32(record.mode << 16 | (S_ISDIR(record.mode) ? 0x10U : 0U))
        .le32(narrow(record.offset, wideOffset))
        .text(record.name)
        .bytes(extra);
}

std::vector<std::byte> endRecords(std::uint64_t count, std::uint64_t directoryOffset, std::uint64_t directorySize)
{
    std::vector<std::byte> out;
    Record record(out);
    const bool isWide = count >= 0xFFFF || directoryOffset >= kFull32 || directorySize >= kFull32;
    if (isWide) {
        record.le32(0x06064B50).le64(44).le16(kMadeByUnix).le16(45).le32(0).le32(0).le64(count).le64(count);
        record.le64(directorySize).le64(directoryOffset);
        record.le32(0x07064B50).le32(0).le64(directoryOffset + directorySize).le32(1);
    }
    const auto shortCount = static_cast<std::uint32_t>(std::min<std::uint64_t>(count, 0xFFFF));
    record.le32(0x06054B50).le16(0).le16(0).le16(shortCount).le16(shortCount);
    record.le32(static_cast<std::uint32_t>(std::min<std::uint64_t>(directorySize, kFull32)));
    record.le32(static_cast<std::uint32_t>(std::min<std::uint64_t>(directoryOffset, kFull32)));
    record.le16(0);
    return out;
}

ZipRecord recordFor(const SourceItem& item, bool storeTimes, bool useUtc)
{
    ZipRecord record;
    record.name = item.name + (item.kind == EntryKind::Folder ? "/" : "");
    record.mode = item.mode;
    if (!storeTimes)
        return record;
    record.dosTime = dosTimeOf(item.modified.seconds, useUtc);
    if (std::in_range<std::int32_t>(item.modified.seconds))
        record.modified = static_cast<std::int32_t>(item.modified.seconds);
    return record;
}

}
