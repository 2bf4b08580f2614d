#include "cli/commands.h"
#include "cli/entry_printer.h"
#include "cli/output.h"

#include "engine/crypto/late_openssl.h"
#include "engine/extract.h"

#include <algorithm>
#include <array>
#include <deque>

namespace vantoro::cli {

namespace {

/// An entry that outlives the visit, for those that wait until all names are known.
struct KeptEntry {
    explicit KeptEntry(const Entry& from) : entry(from), name(from.name), method(from.method), link(from.linkTarget) {}
    Entry value() const
    {
        auto result = entry;
        result.name = name;
        result.method = method;
        result.linkTarget = link;
        return result;
    }
    Entry entry;
    std::string name, method, link;
    std::string sha256;
    std::optional<std::uint64_t> decodedSize;
};

/// Prints entries as they come for as long as their names are clear, and keeps them back from the first whose
/// charset has to be judged by all names together.
class Listing final : public EntryVisitor {
public:
    Listing(const Arguments& arguments, EntryPrinter& printer, const CancelToken& cancel)
        : m_arguments(arguments)
        , m_printer(printer)
        , m_cancel(cancel)
    {
    }

    Result<void> visit(const Entry& entry) override
    {
        TRY(m_cancel.check());
        add(entry, {}, std::nullopt);
        return {};
    }

    void add(const Entry& entry, const std::string& sha256, std::optional<std::uint64_t> decodedSize)
    {
        const bool isPassedOn = m_kept.empty() && (!decodedSize || entry.size);
        if (isPassedOn && isAscii(entry.name)) // nearly all
            return m_printer.print(entry, linkCharset(entry), sha256);
        if (entry.nameCharset == kCharsetUnknown || !isValidUtf8(entry.name))
            m_detector.add(entry.name);
        if (m_kept.empty() && isClear(entry)) {
            auto shown = entry;
            if (decodedSize && !shown.size)
                shown.size = decodedSize;
            m_printer.print(shown, charsetOf(entry, m_arguments.charset, kCharsetUtf8), sha256);
            return;
        }
        auto& kept = m_kept.emplace_back(entry);
        kept.sha256 = sha256;
        kept.decodedSize = decodedSize;
    }

    void finish()
    {
        const auto detected = m_detector.detect().charset;
        for (const auto& kept : m_kept) {
            auto entry = kept.value();
            if (kept.decodedSize && !entry.size)
                entry.size = kept.decodedSize;
            m_printer.print(entry, charsetOf(entry, m_arguments.charset, detected), kept.sha256);
        }
        m_kept.clear();
    }

private:
    CharsetId linkCharset(const Entry& entry) const
    {
        return entry.linkTarget.empty() ? kCharsetUtf8 : charsetOf(entry, m_arguments.charset, kCharsetUtf8);
    }
    bool isClear(const Entry& entry) const
    {
        return isAscii(entry.name) || (entry.nameCharset != kCharsetUnknown && isValidUtf8(entry.name))
            || m_arguments.charset != kCharsetUnknown;
    }
    const Arguments& m_arguments;
    EntryPrinter& m_printer;
    const CancelToken& m_cancel;
    CharsetDetector m_detector;
    std::deque<KeptEntry> m_kept;
};

struct FreeDigest {
    void operator()(EVP_MD_CTX* context) const { EVP_MD_CTX_free(context); }
};

/// Decodes entries one after another and lists them with the digest of their data.
class HashingLane final : public LaneReceiver, public Lanes {
public:
    HashingLane(Listing& listing, std::string archive) : m_listing(listing), m_archive(std::move(archive)) {}

    unsigned count() const override { return 1; }
    LaneReceiver& lane(unsigned) override { return *this; }

    Result<Want> begin(const Entry& entry) override
    {
        if (entry.kind == EntryKind::Folder || entry.kind == EntryKind::Other || entry.kind == EntryKind::HardLink) {
            m_listing.add(entry, {}, std::nullopt);
            return Want::Skip;
        }
        m_entry.emplace(entry);
        m_size = 0;
        EVP_DigestInit_ex(m_digest.get(), EVP_sha256(), nullptr);
        return Want::Data;
    }
    Bytes room(std::size_t least) override
    {
        if (m_room.size() < least)
            m_room.resize(std::max(least, std::size_t{256} << 10));
        return m_room;
    }
    Result<void> data(ConstBytes block) override
    {
        EVP_DigestUpdate(m_digest.get(), block.data(), block.size());
        m_size += block.size();
        return {};
    }
    Result<void> end(Result<void> outcome) override
    {
        std::array<unsigned char, EVP_MAX_MD_SIZE> digest;
        unsigned length = 0;
        EVP_DigestFinal_ex(m_digest.get(), digest.data(), &length);
        std::string hex;
        for (unsigned i = 0; i < length; ++i) {
            hex += "0123456789abcdef"[digest[i] >> 4];
            hex += "0123456789abcdef"[digest[i] & 15];
        }
        if (!outcome) {
            complain(m_archive, decode(m_entry->name, kCharsetUtf8), sentence(outcome.error()));
            m_firstError = m_firstError ? m_firstError : outcome.error();
            hex.clear();
        }
        m_listing.add(m_entry->value(), hex, outcome ? std::optional(m_size) : std::nullopt);
        return {};
    }
    const std::optional<Error>& firstError() const { return m_firstError; }

private:
    Listing& m_listing;
    std::string m_archive;
    std::unique_ptr<EVP_MD_CTX, FreeDigest> m_digest{EVP_MD_CTX_new()};
    std::optional<KeptEntry> m_entry;
    std::vector<std::byte> m_room;
    std::uint64_t m_size = 0;
    std::optional<Error> m_firstError;
};

}

CharsetId charsetOf(const Entry& entry, CharsetId chosen, CharsetId detected)
{
    const bool isDeclared
        = entry.nameCharset != kCharsetUnknown && (entry.nameCharset != kCharsetUtf8 || isValidUtf8(entry.name));
    if (isDeclared)
        return entry.nameCharset;
    if (chosen != kCharsetUnknown)
        return chosen;
    return isValidUtf8(entry.name) ? kCharsetUtf8 : detected;
}

std::string_view withoutEnds(std::string_view name)
{
    while (name.starts_with("./") && name.size() > 2)
        name.remove_prefix(2);
    while (name.size() > 1 && name.ends_with('/'))
        name.remove_suffix(1);
    return name;
}

std::string shownName(std::string_view name, CharsetId charset, PathStyle style)
{
    auto shown = decode(name, charset);
    if (style == PathStyle::Dos)
        std::replace(shown.begin(), shown.end(), '\\', '/');
    return std::string(withoutEnds(shown));
}

int runList(const Arguments& arguments, const CancelToken& cancel)
{
    const auto& path = arguments.archives[0];
    PasswordSource passwords(arguments);
    passwords.begin(path);
    std::string missing;
    auto opened = openArchive(path, {&passwords, cancel, limitsOf(arguments), &missing});
    if (!opened) {
        complain(path, {}, sentence(opened.error(), missing));
        return statusOf(opened.error());
    }
    Output out;
    EntryPrinter printer(arguments.json, out);
    Listing listing(arguments, printer, cancel);
    auto& archive = (*opened)->archive();
    std::optional<HashingLane> hashing;
    if (arguments.sha256)
        hashing.emplace(listing, path);
    const auto result = hashing ? archive.read({}, *hashing) : archive.list(listing);
    listing.finish();
    printer.printSum();
    const bool isWritten = out.flush();
    if (!result) {
        complain(path, {}, sentence(result.error(), archive.info().missingVolume));
        return statusOf(result.error());
    }
    if (const auto& damage = archive.info().damage)
        complain(path, {}, sentence(*damage, archive.info().missingVolume));
    if (!archive.info().missingVolume.empty() && !archive.info().damage)
        complain(path, {}, sentence({ErrorCode::MissingVolume}, archive.info().missingVolume));
    const auto firstError = hashing ? hashing->firstError() : std::nullopt;
    if (firstError && statusOf(*firstError) == kUnanswered)
        return kUnanswered;
    if (!isWritten)
        return kFailed;
    return firstError || archive.info().damage || !archive.info().missingVolume.empty() ? kDamaged : kWhole;
}

}
