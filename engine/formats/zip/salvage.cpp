#include "engine/formats/zip/salvage.h"

#include <algorithm>
#include <unordered_map>

namespace vantoro::zip {

namespace {

constexpr std::size_t kBlock = 1 << 20;

/// Finds signatures, all of which begin with "PK", in one walk over the source.
class SignatureScanner {
public:
    SignatureScanner(const ByteSource& source, const CancelToken& cancel) : m_source(source), m_cancel(cancel) {}

    struct Hit {
        std::uint64_t position;
        std::uint32_t signature;
    };
    /// The first one at or after `from`.
    Result<std::optional<Hit>> find(std::uint64_t from)
    {
        while (from + 4 <= m_source.size()) {
            if (from < m_start || from + 4 > m_start + m_block.size()) {
                TRY(m_cancel.check());
                m_block = TRY(readBlock(m_source, from, kBlock));
                m_start = from;
                if (m_block.size() < 4)
                    break;
            }
            const auto text = asText(m_block);
            const auto at = text.find("PK", static_cast<std::size_t>(from - m_start));
            if (at == std::string_view::npos || at + 4 > text.size()) {
                from = m_start + (at == std::string_view::npos ? text.size() - 1 : at);
                if (from + 4 > m_source.size())
                    break;
                continue;
            }
            const auto signature = ByteReader(ConstBytes(m_block).subspan(at)).le32();
            from = m_start + at;
            if (isKnown(signature))
                return std::optional<Hit>({from, signature});
            from += 2;
        }
        return std::optional<Hit>();
    }

private:
    static bool isKnown(std::uint32_t signature)
    {
        switch (signature) {
        case kLocalSignature:
        case kDirectorySignature:
        case kDescriptorSignature:
        case kEndSignature:
        case kZip64EndSignature:
        case kExtraDataSignature:
            return true;
        default:
            return false;
        }
    }

    const ByteSource& m_source;
    const CancelToken& m_cancel;
    std::vector<std::byte> m_block;
    std::uint64_t m_start = 0;
};

class Salvager {
public:
    Salvager(const ByteSource& source, const Limits& limits, const CancelToken& cancel)
        : m_source(source)
        , m_limits(limits)
        , m_scanner(source, cancel)
    {
    }

    Result<Directory> run()
    {
        std::uint64_t at = 0;
        while (const auto hit = TRY(m_scanner.find(at))) {
            at = hit->position + 4;
            if (m_open) {
                if (const auto behind = closeByDescriptor(*hit)) {
                    at = std::max(at, *behind);
                    if (hit->signature == kDescriptorSignature)
                        continue;
                }
            }
            if (hit->signature == kLocalSignature)
                at = TRY(meetLocal(hit->position));
            else if (hit->signature == kDirectorySignature)
                at = meetDirectory(hit->position);
            else if (hit->signature == kExtraDataSignature)
                m_isMasked = true;
            if (m_found.size() > m_limits.entries)
                return Error{ErrorCode::LimitExceeded, "zip: number of entries"};
        }
        closeUnknown();
        return combine();
    }

private:
    struct Found {
        LocalHeader local;
        std::uint64_t position = 0, dataStart = 0;
        std::vector<std::byte> variable; ///< name and extra
        bool isSizeKnown = true;
    };

    std::uint64_t number(std::uint64_t position, unsigned bytes) const
    {
        std::byte field[8];
        if (!m_source.readExactly(position, Bytes(field).first(bytes)))
            return 0;
        ByteReader in(Bytes(field).first(bytes));
        return bytes == 8 ? in.le64() : in.le32();
    }

    /// A descriptor says how much was packed, which must be what lies between data start and descriptor. Returns the
    /// position behind it.
    std::optional<std::uint64_t> closeByDescriptor(const SignatureScanner::Hit& hit)
    {
        const auto close = [&](std::uint64_t crcAt, unsigned width) {
            m_open->local.crc = static_cast<std::uint32_t>(number(crcAt, 4));
            m_open->local.packed = number(crcAt + 4, width);
            m_open->local.size = number(crcAt + 4 + width, width);
            m_found.push_back(*std::move(m_open));
            m_open.reset();
            return crcAt + 4 + std::uint64_t{2} * width;
        };
        const auto start = m_open->dataStart;
        for (const auto width : {4U, 8U}) {
            if (hit.signature == kDescriptorSignature) {
                if (number(hit.position + 8, width) == hit.position - start)
                    return close(hit.position + 4, width);
                continue;
            }
            // Without a signature, directly in front of the next header.
            const auto length = 4 + std::uint64_t{2} * width;
            if (hit.position >= start + length
                && number(hit.position - std::uint64_t{2} * width, width) == hit.position - length - start)
                return close(hit.position - length, width);
        }
        return {};
    }

    void closeUnknown()
    {
        if (!m_open)
            return;
        m_open->isSizeKnown = false;
        m_open->local.packed = 0;
        m_open->local.size = 0;
        m_found.push_back(*std::move(m_open));
        m_open.reset();
    }

    /// Returns where to go on.
    Result<std::uint64_t> meetLocal(std::uint64_t position)
    {
        const auto fixed = TRY(readBlock(m_source, position, kLocalSize));
        const auto local = LocalHeader::parse(fixed);
        if (!local || !isPlausible(*local))
            return position + 4;
        Found found{*local, position, position + local->length(), {}};
        found.variable = TRY(readBlock(m_source, position + kLocalSize, local->nameLength + local->extraLength));
        if (found.variable.size() < local->nameLength + local->extraLength
            || asText(found.variable).substr(0, local->nameLength).find('\0') != std::string_view::npos)
            return position + 4;
        if (m_open && m_open->local.method == static_cast<std::uint16_t>(Method::Stored))
            return position + 4; // more likely an archive stored in this one
        closeUnknown();
        m_isMasked = m_isMasked || (local->flags & kMasked) != 0;
        found.local.applyExtra(ConstBytes(found.variable).subspan(local->nameLength));
        if ((local->flags & kHasDescriptor) != 0 && found.local.packed == 0) {
            const auto start = found.dataStart;
            m_open = std::move(found);
            return start;
        }
        const auto next = behindData(found);
        m_found.push_back(std::move(found));
        return next;
    }

    /// Behind the data when something follows there that looks right; otherwise the size may be what is damaged.
    std::uint64_t behindData(const Found& found) const
    {
        const auto size = m_source.size();
        const bool isStored = found.local.method == static_cast<std::uint16_t>(Method::Stored);
        if (found.dataStart > size || found.local.packed > size - found.dataStart)
            return isStored ? size : found.dataStart;
        const auto end = found.dataStart + found.local.packed;
        if (isStored || end + 4 > size || (number(end, 4) & 0xFFFF) == 0x4B50)
            return end;
        return found.dataStart;
    }

    std::uint64_t meetDirectory(std::uint64_t position)
    {
        auto block = readBlock(m_source, position, kDirectorySize + 3 * std::size_t{kSaturated16});
        if (!block)
            return position + 4;
        const auto header = DirectoryHeader::parse(*block);
        if (!header || header->localOffset >= position || header->disk != 0)
            return position + 4;
        if (m_open && m_open->local.method != static_cast<std::uint16_t>(Method::Stored))
            closeUnknown();
        block->resize(header->length);
        m_central.emplace(header->localOffset, *std::move(block));
        return position + header->length;
    }

    Result<Directory> combine()
    {
        if (m_isMasked)
            return Error{ErrorCode::UnsupportedEncryption, "zip: the directory is encrypted"};
        Directory directory;
        std::uint64_t behind = 0; // the data of the last entry that the directory knows
        std::vector<std::pair<std::uint64_t, const std::vector<std::byte>*>> lost;
        for (const auto& found : m_found)
            m_positions.emplace(found.position, &found);
        for (const auto& [position, header] : m_central) {
            if (!m_positions.contains(position))
                lost.emplace_back(position, &header);
        }
        std::sort(lost.begin(), lost.end());
        auto nextLost = lost.begin();
        std::stable_sort(m_found.begin(), m_found.end(),
                         [](const Found& a, const Found& b) { return a.position < b.position; });
        for (const auto& found : m_found) {
            for (; nextLost != lost.end() && nextLost->first < found.position; ++nextLost)
                directory.addFound(*nextLost->second);
            const auto central = m_central.find(found.position);
            if (central != m_central.end()) {
                directory.addFound(central->second);
                behind = found.dataStart + DirectoryHeader::parse(central->second).value_or(DirectoryHeader()).packed;
            } else if (found.position >= behind) {
                const ConstBytes variable = found.variable;
                directory.addFound(found.local, found.position, variable.first(found.local.nameLength),
                                   variable.subspan(found.local.nameLength), found.isSizeKnown);
            }
        }
        for (; nextLost != lost.end(); ++nextLost)
            directory.addFound(*nextLost->second);
        if (directory.size() == 0)
            return Error{ErrorCode::NotAnArchive, "zip: neither directory nor local headers"};
        directory.setFound(m_source.size());
        return directory;
    }

    const ByteSource& m_source;
    const Limits& m_limits;
    SignatureScanner m_scanner;
    std::optional<Found> m_open; // its end is not known yet
    std::vector<Found> m_found;
    std::unordered_map<std::uint64_t, std::vector<std::byte>> m_central; // directory headers by local position
    std::unordered_map<std::uint64_t, const Found*> m_positions;
    bool m_isMasked = false;
};

}

bool isPlausible(const LocalHeader& header)
{
    return (header.versionNeeded & 0xFF) <= 63 && isKnownMethod(header.method) && header.nameLength >= 1
        && header.nameLength <= 4096;
}

Result<Directory> salvage(const ByteSource& source, const Limits& limits, const CancelToken& cancel)
{
    return Salvager(source, limits, cancel).run();
}

}
