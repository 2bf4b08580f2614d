#include "engine/formats/rar/archive.h"

#include "engine/formats/rar/text.h"
#include "engine/formats/side_by_side.h"
#include "engine/text/utf16.h"

#include <algorithm>

namespace vantoro {

namespace {

constexpr std::uint64_t kLargeWindow = 96 << 20; // codecs with more history than this take turns
constexpr std::uint64_t kMaxComment = 1 << 20;
constexpr std::uint64_t kMaxTrial = 64 << 20; // packed bytes of an entry that a password is tried on
constexpr std::size_t kTrials = 3;

/// Collects a comment.
class TextSink final : public ByteSink {
public:
    Result<void> write(ConstBytes block) override
    {
        if (text.size() + block.size() > kMaxComment)
            return Error{ErrorCode::LimitExceeded, "rar: comment"};
        text += asText(block);
        return {};
    }
    Result<void> finish() override { return {}; }
    std::string text;
};

std::string sizeName(std::uint64_t bytes)
{
    if (bytes >= 1 << 30 && bytes % (1 << 30) == 0)
        return std::to_string(bytes >> 30) + "G";
    if (bytes >= 1 << 20)
        return std::to_string(bytes >> 20) + "M";
    return std::to_string(bytes >> 10) + "K";
}

std::string methodName(const RarMember& member)
{
    switch (member.method) {
    case RarMethod::Stored:
        return "Stored";
    case RarMethod::Rar15:
        return "RAR 1.5:" + std::to_string(member.level);
    case RarMethod::Rar20:
        return "RAR 2.0:" + std::to_string(member.level);
    case RarMethod::Rar29:
        return "RAR 2.9:" + std::to_string(member.level);
    case RarMethod::Rar50:
        return "RAR 5.0:" + std::to_string(member.level) + ":" + sizeName(member.dictionary);
    case RarMethod::Rar70:
        return "RAR 7.0:" + std::to_string(member.level) + ":" + sizeName(member.dictionary);
    default:
        return "unknown";
    }
}

bool stopsReading(const Error& error) { return error.code == ErrorCode::Cancelled; }

bool hasCheck(const RarEncryption& encryption)
{
    return encryption.scheme == RarEncryption::Scheme::Rar5 && encryption.hasCheck;
}

}

/// Passes an entry's bytes to a lane. An entry that the receiver refuses is decoded on in silence where others need
/// the state behind it.
class RarArchive::LaneSink final : public RarCheckedSink {
public:
    LaneSink(const RarMember& member, LaneReceiver& lane, bool leadsOn)
        : RarCheckedSink(member)
        , m_lane(lane)
        , m_leadsOn(leadsOn)
    {
    }
    const std::optional<Error>& failure() const { return m_failure; }
    void fail(const Error& error) { m_failure = error; }

protected:
    Result<void> take(ConstBytes block) override
    {
        if (m_failure)
            return {};
        const auto taken = m_lane.data(block);
        if (!taken)
            m_failure = taken.error();
        if (!taken && !(taken.error().code == ErrorCode::EntryRefused && m_leadsOn))
            return taken;
        return {};
    }

private:
    LaneReceiver& m_lane;
    bool m_leadsOn;
    std::optional<Error> m_failure; // the receiver's
};

/// One read(): what its workers share.
struct RarArchive::Reading {
    RarShelf shelf;
    std::vector<bool> isChosen;
    std::mutex largeWindow;
    std::atomic<bool> hasFailed{false}; // a task may be long: the others end theirs early
};

RarArchive::RarArchive(RarCatalog catalog, std::unique_ptr<RarKeyRing> keys, const OpenContext& context)
    : m_catalog(std::move(catalog))
    , m_links(linkRarMembers(m_catalog.members))
    , m_keys(std::move(keys))
    , m_cancel(context.cancel)
    , m_limits(context.limits)
{
    m_info.format = "rar";
    m_info.isSolid = m_catalog.isSolid
        || std::any_of(m_links.begin(), m_links.end(), [](const RarLink& link) { return link.leadsOn; });
    m_info.hasEncryptedNames = m_catalog.hasEncryptedHeaders;
    m_info.missingVolume = m_catalog.missingVolume;
    m_info.damage = m_catalog.damage;
    if (m_catalog.isVolumeSet) {
        for (const auto& volume : m_catalog.volumes)
            m_info.volumes.push_back(volume.name);
    }
    m_info.caresAboutPasswordEncoding
        = std::any_of(m_catalog.members.begin(), m_catalog.members.end(), [](const RarMember& member) {
              return member.encryption && member.encryption->scheme < RarEncryption::Scheme::Rar3;
          });
}

RarShelf RarArchive::shelf(std::atomic<std::uint64_t>* packedBytesRead)
{
    return {m_catalog,       m_links,  *m_keys, [this](const RarMember& member) { return formOf(member); },
            packedBytesRead, m_cancel, m_limits};
}

void RarArchive::readComment(const RarVolumeFacts& firstVolume)
{
    if (!firstVolume.plainComment.empty())
        m_info.comment = guessedText(firstVolume.plainComment);
    if (!firstVolume.comment || (firstVolume.comment->encryption && !firstVolume.headerForm))
        return;
    auto shared = shelf(nullptr);
    shared.formOf = [&](const RarMember&) -> Result<std::size_t> { return *firstVolume.headerForm; };
    RarEntryReader reader(shared);
    TextSink sink;
    (void)reader.decodeAlone(*firstVolume.comment, firstVolume.isCommentEnciphered14, sink);
    const auto& text = sink.text;
    if (!firstVolume.isCommentUtf8 && !isValidUtf8(text) && text.size() % 2 == 0
        && text.find('\0') != std::string::npos)
        m_info.comment = utf8FromUtf16(asBytes(text), std::endian::little);
    else
        m_info.comment = guessedText(text.substr(0, text.find('\0')));
}

Entry RarArchive::describe(std::uint32_t index, std::string& method) const
{
    const auto& member = m_catalog.members[index];
    Entry entry;
    entry.index = index;
    entry.name = member.name;
    entry.nameCharset = member.charset;
    entry.pathStyle = member.pathStyle;
    entry.kind = member.kind;
    if (member.hasData())
        entry.size = member.size;
    entry.packedSize = member.packedSize();
    entry.modified = member.modified;
    entry.created = member.created;
    entry.accessed = member.accessed;
    entry.mode = member.mode;
    entry.isEncrypted = member.encryption != nullptr;
    method = methodName(member);
    entry.method = method;
    if (m_links[index].group != RarLink::kNone)
        entry.solidGroup = m_links[index].group;
    if (member.extras) {
        if (!member.isFileCopy)
            entry.linkTarget = member.extras->linkTarget;
        entry.owner = member.extras->owner;
        entry.group = member.extras->group;
        entry.comment = member.extras->comment;
    }
    const auto isKeyed = member.encryption && member.encryption->hasKeyedChecksums;
    if (member.extras && member.extras->hash)
        entry.checksum.kind = Checksum::Kind::Blake2sp;
    else if (member.checksum == RarChecksum::Crc32 && !isKeyed)
        entry.checksum = {Checksum::Kind::Crc32, member.crc};
    else if (member.checksum != RarChecksum::None)
        entry.checksum.kind = Checksum::Kind::Other;
    return entry;
}

Result<void> RarArchive::list(EntryVisitor& visitor)
{
    std::string method;
    for (std::uint32_t i = 0; i < m_catalog.members.size(); ++i) {
        if (i % 1024 == 0)
            TRY(m_cancel.check());
        TRY(visitor.visit(describe(i, method)));
    }
    return {};
}

Result<std::size_t> RarArchive::formOf(const RarMember& member) const
{
    if (const auto known = m_forms.find(member.encryption.get()); known != m_forms.end())
        return known->second;
    if (m_trialForm)
        return *m_trialForm;
    return Error{ErrorCode::PasswordNeeded, "rar: the entry is encrypted"};
}

/// The entries that tell soonest whether a password is right.
std::vector<std::uint32_t> RarArchive::trialMembers() const
{
    std::vector<std::uint32_t> found;
    for (std::uint32_t i = 0; i < m_catalog.members.size(); ++i) {
        const auto& member = m_catalog.members[i];
        if (member.encryption && !hasCheck(*member.encryption) && m_links[i].previous == RarLink::kNone
            && !member.lacksStart && !member.lacksEnd && member.checksum != RarChecksum::None && member.hasData()
            && member.part.length > 0 && member.packedSize() <= kMaxTrial && m_links[i].window <= m_limits.dictionary)
            found.push_back(i);
    }
    const auto count = std::min(found.size(), kTrials);
    std::partial_sort(
        found.begin(), found.begin() + static_cast<std::ptrdiff_t>(count), found.end(),
        [&](auto a, auto b) { return m_catalog.members[a].packedSize() < m_catalog.members[b].packedSize(); });
    found.resize(count);
    return found;
}

/// Schemes without a check value: the password is right when a small entry has its checksum.
Result<std::size_t> RarArchive::unlockByTrial()
{
    const auto members = trialMembers();
    const auto shared = shelf(nullptr);
    return m_keys->unlock([&](std::size_t form) -> Result<bool> {
        m_trialForm = form;
        for (const auto index : members) {
            TRY(m_cancel.check());
            RarEntryReader reader(shared);
            RarNullSink sink(m_catalog.members[index]);
            const auto outcome = reader.decode(index, sink);
            m_isTrialSure = outcome.has_value();
            if (outcome)
                return true;
            if (stopsReading(outcome.error()))
                return outcome.error();
        }
        m_trialForm.reset();
        return members.empty();
    });
}

Result<std::size_t> RarArchive::unlockOne(const RarEncryption& encryption)
{
    if (!hasCheck(encryption)) {
        if (!m_trialForm)
            m_trialForm = TRY(unlockByTrial());
        return *m_trialForm;
    }
    return m_keys->unlock([&](std::size_t form) -> Result<bool> {
        const auto key = TRY(m_keys->rar5Key(form, encryption));
        return matchesRar5Check(key, encryption.check).value_or(true);
    });
}

Result<void> RarArchive::unlock(const std::vector<std::uint32_t>& chosen)
{
    std::vector<bool> isDone(m_catalog.members.size());
    for (const auto index : chosen) {
        const auto& extras = m_catalog.members[index].extras;
        const auto original = extras && !extras->linkTarget.empty() ? originalOf(index) : std::nullopt;
        for (auto i = original.value_or(index); i != RarLink::kNone && !isDone[i]; i = m_links[i].previous) {
            isDone[i] = true;
            const auto& member = m_catalog.members[i];
            if (!member.encryption || !member.hasData() || m_forms.contains(member.encryption.get()))
                continue;
            m_forms[member.encryption.get()] = TRY(unlockOne(*member.encryption));
        }
    }
    return {};
}

/// The plain file whose data a hard link or a file copy stands for.
std::optional<std::uint32_t> RarArchive::originalOf(std::uint32_t index)
{
    const std::lock_guard lock(m_originalsMutex);
    if (m_originals.empty()) {
        for (std::uint32_t i = 0; i < m_catalog.members.size(); ++i) {
            const auto& member = m_catalog.members[i];
            if (member.kind == EntryKind::File && !member.isFileCopy)
                m_originals.emplace(member.name, i);
        }
    }
    // A link may name another one; each names an earlier entry.
    const auto& extras = m_catalog.members[index].extras;
    const auto found = extras ? m_originals.find(extras->linkTarget) : m_originals.end();
    if (found == m_originals.end() || found->second >= index)
        return std::nullopt;
    return found->second;
}

Result<void> RarArchive::deliver(RarEntryReader& reader, std::uint32_t source, LaneSink& sink, LaneReceiver& lane)
{
    constexpr std::uint64_t kStep = 8 << 20; // the stop flag is asked between steps
    const auto& member = m_catalog.members[source];
    const auto isPlain = member.method == RarMethod::Stored && !member.encryption && !member.lacksStart
        && !member.lacksEnd && member.size && *member.size <= member.packedSize()
        && !(member.extras && member.extras->hash) && member.checksum != RarChecksum::Sum14;
    if (!isPlain)
        return reader.decode(source, sink);
    // Stored bytes may be copied without passing through here.
    const auto data = TRY(reader.packedSource(member));
    std::uint32_t crc = 0;
    for (std::uint64_t done = 0; done < *member.size;) {
        TRY(m_cancel.check());
        const auto step = std::min(*member.size - done, kStep);
        const auto copied = lane.copy(*data, done, step, member.checksum == RarChecksum::Crc32 ? &crc : nullptr);
        if (!copied) {
            if (copied.error().code != ErrorCode::Io && copied.error().code != ErrorCode::Truncated)
                sink.fail(copied.error());
            return copied;
        }
        done += step;
    }
    sink.account(*member.size, crc);
    return sink.verify(nullptr);
}

Result<void> RarArchive::readMember(Reading& reading, RarEntryReader& reader, RarEntryReader& copies,
                                    LaneReceiver& lane, std::uint32_t index)
{
    const auto& member = m_catalog.members[index];
    std::string method;
    auto entry = describe(index, method);
    auto source = index;
    auto hasData = member.hasData();
    std::optional<Error> refusal;
    if (member.isFileCopy || member.kind == EntryKind::HardLink) {
        const auto original = originalOf(index);
        if (member.kind == EntryKind::HardLink && (!original || reading.isChosen[*original])) {
            hasData = false; // the receiver links the two
        } else {
            entry.kind = EntryKind::File;
            entry.linkTarget = {};
            hasData = true;
            if (original)
                source = *original;
            else
                refusal = Error{ErrorCode::Corrupt, "rar: the entry copied is not there"};
            entry.size = m_catalog.members[source].size;
        }
    }
    if (TRY(lane.begin(entry)) == LaneReceiver::Want::Skip)
        return {};
    if (!hasData)
        return lane.end({});
    if (refusal)
        return lane.end(*refusal);

    LaneSink sink(m_catalog.members[source], lane, m_links[source].leadsOn);
    auto outcome = deliver(source == index ? reader : copies, source, sink, lane);
    if (source == index && reading.shelf.packedBytesRead && sink.count() > 0 && member.method == RarMethod::Stored
        && !member.encryption)
        reading.shelf.packedBytesRead->fetch_add(sink.count(), std::memory_order_relaxed);
    if (sink.failure()) {
        if (sink.failure()->code != ErrorCode::EntryRefused)
            return *sink.failure();
        outcome = *sink.failure();
    } else if (!outcome && stopsReading(outcome.error())) {
        return outcome;
    } else if (!outcome && member.encryption && !hasCheck(*member.encryption) && !m_isTrialSure
               && (outcome.error().code == ErrorCode::Corrupt || outcome.error().code == ErrorCode::Truncated
                   || outcome.error().code == ErrorCode::ChecksumMismatch)) {
        outcome = Error{ErrorCode::WrongPassword, "rar: wrong password or damaged"};
    }
    return lane.end(outcome);
}

Result<void> RarArchive::readTask(Reading& reading, RarEntryReader& reader, RarEntryReader& copies, LaneReceiver& lane,
                                  const Task& task)
{
    std::unique_lock<std::mutex> turn;
    const auto isLarge = m_links[task.front()].window > kLargeWindow;
    if (isLarge)
        turn = std::unique_lock(reading.largeWindow);
    for (const auto index : task) {
        TRY(m_cancel.check());
        if (reading.hasFailed)
            return {};
        const auto outcome = guarded([&] { return readMember(reading, reader, copies, lane, index); });
        if (!outcome)
            reading.hasFailed = true;
        TRY(outcome);
        copies.rest();
    }
    if (isLarge)
        reader.rest();
    return {};
}

/// The entries of a solid group follow each other, with unpacked ones between them.
std::vector<RarArchive::Task> RarArchive::tasksOf(const std::vector<std::uint32_t>& chosen) const
{
    std::vector<Task> tasks;
    auto lastGroup = RarLink::kNone;
    for (const auto index : chosen) {
        const auto& link = m_links[index];
        const auto group = link.isPacked ? link.group : lastGroup;
        if (group != RarLink::kNone && group == lastGroup)
            tasks.back().push_back(index);
        else
            tasks.push_back({index});
        lastGroup = group;
    }
    return tasks;
}

Result<void> RarArchive::read(const ReadRequest& request, Lanes& lanes)
{
    Reading reading{.shelf = shelf(request.packedBytesRead)};
    reading.isChosen.assign(m_catalog.members.size(), false);
    Task chosen;
    for (const auto index : request.chosen(m_catalog.members.size())) {
        reading.isChosen[static_cast<std::size_t>(index)] = true;
        chosen.push_back(static_cast<std::uint32_t>(index));
    }
    TRY(unlock(chosen));

    const auto tasks = tasksOf(chosen);
    auto next = tasks.begin();
    return readSideBySide(
        lanes, lanes.count(), [&] { return Result(next == tasks.end() ? nullptr : &*next++); },
        [&](LaneReceiver& lane) {
            return [&, reader = RarEntryReader(reading.shelf), copies = RarEntryReader(reading.shelf)](
                       const Task& task) mutable { return readTask(reading, reader, copies, lane, task); };
        });
}

}
