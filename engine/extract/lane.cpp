#include "engine/extract/lane.h"

#include <algorithm>

#include <sys/stat.h>

namespace vantoro {

namespace {

constexpr std::size_t kRoom = 512 << 10;
constexpr std::uint64_t kLargeEntry = 1 << 20; ///< worth a thread of its own for writing
constexpr std::uint64_t kSmallEntry = 1 << 20; ///< fits one block of the helper, who need not wait for the rest
constexpr unsigned kWorthHelper = 32; ///< small entries that justify a second thread
constexpr std::size_t kMostAttributes = 64;
constexpr std::size_t kMostAttributeBytes = 64 << 10;

bool isNode(const Entry& entry)
{
    if (!entry.mode)
        return false;
    const auto type = *entry.mode & static_cast<std::uint32_t>(S_IFMT);
    return type == S_IFIFO || type == S_IFSOCK || type == S_IFCHR || type == S_IFBLK;
}

void keepAttributes(const Entry& entry, FilePlan& plan)
{
    for (const auto& attribute : entry.attributes) {
        const bool isUsers = attribute.name.starts_with("user.") && attribute.name.size() > 5
            && attribute.name.size() < 256 && attribute.name.find('\0') == std::string_view::npos;
        if (isUsers && attribute.value.size() <= kMostAttributeBytes && plan.attributes.size() < kMostAttributes)
            plan.attributes.push_back({std::string(attribute.name), std::string(asText(attribute.value))});
    }
}

/// Of one entry alone; everything else ends the job.
bool isRefusal(const Error& error)
{
    return error.code == ErrorCode::UnsafeName || error.code == ErrorCode::UnsafeLink;
}

}

Result<LaneReceiver::Want> Lane::refused(EntryNote note, const Error& error)
{
    TRY(m_job.refuse(std::move(note), error));
    return Want::Skip;
}

Result<LaneReceiver::Want> Lane::begin(const Entry& entry)
{
    TRY(m_job.stillWanted());
    if (!m_isUsed) {
        m_isUsed = true;
        m_job.usedLanes.fetch_add(1);
    }
    m_receiving = Receiving::Nothing;
    if (m_job.names().isOpen(entry.name, entry.nameCharset))
        return m_job.stopForCharset(entry.index);
    TRY(m_job.passOn(m_job.guard().entered()));
    const auto name = m_job.names().decoded(entry.name, entry.nameCharset, m_decoded);
    const auto components = m_cleaner.clean(name, entry.pathStyle);
    const bool isFolder = entry.kind == EntryKind::Folder;
    if (!components)
        return refused({entry.index, std::string(name), entry.kind}, components.error());
    if (components->empty() && isFolder)
        return Want::Skip; // the root itself
    if (components->empty())
        return refused({entry.index, std::string(name), entry.kind}, Error{ErrorCode::UnsafeName, "no name"});
    const auto want = place(entry, *components);
    if (!want && isRefusal(want.error()))
        return refused({entry.index, joinedName(*components), entry.kind}, want.error());
    if (!want)
        return *m_job.failure();
    return want;
}

Result<LaneReceiver::Want> Lane::place(const Entry& entry, Components name)
{
    const auto placed = [&]() -> Result<Want> {
        switch (entry.kind) {
        case EntryKind::File:
            return placeFile(entry, name);
        case EntryKind::ResourceFork:
            return placeFork(entry, name);
        case EntryKind::Folder:
            return placeFolder(entry, name);
        case EntryKind::SymbolicLink:
            return placeLink(entry, name);
        case EntryKind::HardLink:
            return placeHardLink(entry, name);
        case EntryKind::Other:
            break;
        }
        return refused({entry.index, joinedName(name), entry.kind}, Error{ErrorCode::UnsupportedKind, "device"});
    }();
    if (!placed && !isRefusal(placed.error()))
        (void)m_job.passOn(placed.error());
    return placed;
}

FileTraits Lane::traitsOf(const Entry& entry)
{
    FileTraits traits;
    traits.hasMode = entry.mode.has_value();
    traits.mode = static_cast<mode_t>(entry.mode.value_or(0) & 0777U);
    traits.modified = m_clock.toFileTime(entry.modified);
    traits.accessed = m_clock.toFileTime(entry.accessed);
    return traits;
}

Result<LaneReceiver::Want> Lane::placeFile(const Entry& entry, Components name)
{
    if (isNode(entry))
        return refused({entry.index, joinedName(name), entry.kind}, Error{ErrorCode::UnsupportedKind, "device"});
    FilePlan plan;
    TRY(m_job.placer().addFile(name, entry.index, plan));
    plan.note.name = joinedName(name);
    return startFile(entry, std::move(plan));
}

Result<LaneReceiver::Want> Lane::placeFork(const Entry& entry, Components name)
{
    if (entry.size == std::uint64_t{0})
        return Want::Skip;
    std::vector<std::string_view> forkName(name.begin(), name.end());
    const auto last = std::string(forkName.back()) + ".rsrc";
    forkName.back() = last;
    FilePlan plan;
    TRY(m_job.placer().addFile(forkName, entry.index, plan));
    plan.note.name = joinedName(forkName);
    return startFile(entry, std::move(plan));
}

Result<LaneReceiver::Want> Lane::startFile(const Entry& entry, FilePlan&& plan)
{
    plan.traits = traitsOf(entry);
    plan.size = entry.size;
    plan.isEncrypted = entry.isEncrypted;
    plan.note.index = entry.index;
    plan.note.kind = entry.kind;
    keepAttributes(entry, plan);
    m_job.mailbox().tell(plan.note);
    m_declared = entry.size;
    m_received = 0;
    m_overrun = {};
    auto* const pipe = pipeFor(entry);
    if (!pipe && m_ownPipe)
        TRY(m_ownPipe->drain()); // the sink is this thread's again
    m_pipe = pipe;
    TRY(m_pipe ? m_pipe->begin(std::move(plan)) : m_sink.begin(std::move(plan)));
    m_receiving = Receiving::File;
    m_job.busyLanes.fetch_add(1);
    return Want::Data;
}

Pipe* Lane::pipeFor(const Entry& entry)
{
    if (m_job.decodesElsewhere)
        return helperFor(entry);
    // With several lanes at work the processors are busy anyway, save for a large entry at the end.
    const bool isLarge = !entry.size || *entry.size >= kLargeEntry;
    if (m_job.usedLanes.load() > 1 && !(isLarge && m_job.busyLanes.load() == 0))
        return nullptr;
    if (!m_ownPipe)
        m_ownPipe = Pipe::start(m_sink);
    return m_ownPipe.get();
}

/// A single lane of small files waits for the file system, not for the decoder: every other batch goes to a helper.
Pipe* Lane::helperFor(const Entry& entry)
{
    if (!entry.size || *entry.size > kSmallEntry || m_job.usedLanes.load() > 1)
        return nullptr;
    if (!m_helper && ++m_smallFiles == kWorthHelper) {
        m_helper = std::make_unique<Helper>(m_job);
        m_helper->pipe = Pipe::start(m_helper->sink);
    }
    const bool isReady = m_helper && m_helper->pipe && !m_helper->pipe->isBehind();
    return isReady ? m_helper->pipe.get() : nullptr;
}

Result<LaneReceiver::Want> Lane::placeFolder(const Entry& entry, Components name)
{
    TRY(m_job.placer().addFolder(name, entry.index, traitsOf(entry)));
    m_job.mailbox().tell({entry.index, joinedName(name), entry.kind});
    m_job.countEntry();
    return Want::Skip;
}

Result<LaneReceiver::Want> Lane::placeLink(const Entry& entry, Components name)
{
    m_linkNote = {entry.index, joinedName(name), entry.kind};
    m_link = TRY(m_job.placer().addLinkPlace(name, entry.index));
    m_job.mailbox().tell(m_linkNote);
    if (!entry.linkTarget.empty()) {
        TRY(setTarget(entry.linkTarget, entry.nameCharset, entry.pathStyle));
        return Want::Skip;
    }
    m_target.clear();
    m_targetCharset = entry.nameCharset;
    m_targetStyle = entry.pathStyle;
    m_receiving = Receiving::Target;
    return Want::Data;
}

Result<void> Lane::setTarget(std::string_view target, CharsetId charset, PathStyle style)
{
    auto cleaned = cleanLinkTarget(m_job.names().decoded(target, charset, m_decodedTarget), style);
    if (!cleaned)
        return m_job.refuseLink(m_linkNote, cleaned.error());
    m_job.placer().setTarget(m_link, std::move(*cleaned));
    return {};
}

Result<LaneReceiver::Want> Lane::placeHardLink(const Entry& entry, Components name)
{
    const auto targetName = m_job.names().decoded(entry.linkTarget, entry.nameCharset, m_decodedTarget);
    const auto target = m_targetCleaner.clean(targetName, entry.pathStyle);
    if (!target || target->empty())
        return Error{ErrorCode::UnsafeLink, "target of a hard link"};
    TRY(m_job.placer().addHardLink(name, entry.index, *target));
    m_job.mailbox().tell({entry.index, joinedName(name), entry.kind});
    return Want::Skip;
}

Bytes Lane::room(std::size_t least)
{
    if (m_receiving == Receiving::File && m_pipe)
        return m_pipe->room(least);
    if (!m_room)
        m_room.reset(new std::byte[kRoom]); // not cleared: it will be written before it is read
    return {m_room.get(), kRoom};
}

Result<void> Lane::countReceived(std::uint64_t bytes)
{
    TRY(m_job.stillWanted());
    m_received += bytes;
    if (m_declared && m_received > *m_declared) {
        m_overrun = Error{ErrorCode::SizeMismatch, "more data than declared"};
        return Error{ErrorCode::EntryRefused, "more data than declared"};
    }
    return {};
}

Result<void> Lane::data(ConstBytes block)
{
    if (m_receiving == Receiving::Target) {
        if (m_target.size() + block.size() > kMostTargetBytes) {
            m_overrun = Error{ErrorCode::UnsafeLink, "link target too long"};
            return Error{ErrorCode::EntryRefused, "link target too long"};
        }
        m_target.append(asText(block));
        return {};
    }
    TRY(countReceived(block.size()));
    return m_job.passOn(m_pipe ? m_pipe->data(block) : m_sink.data(block));
}

Result<void> Lane::hole(std::uint64_t length)
{
    if (m_receiving == Receiving::Target)
        return Error{ErrorCode::EntryRefused, "hole in a link target"};
    TRY(countReceived(length));
    return m_job.passOn(m_pipe ? m_pipe->hole(length) : m_sink.hole(length));
}

Result<void> Lane::end(Result<void> outcome)
{
    const auto receiving = std::exchange(m_receiving, Receiving::Nothing);
    if (!m_overrun)
        outcome = std::exchange(m_overrun, {});
    if (receiving == Receiving::Target)
        return m_job.passOn(endTarget(outcome));
    if (receiving == Receiving::Nothing)
        return {};
    m_job.busyLanes.fetch_sub(1);
    if (outcome && m_declared && m_received != *m_declared)
        outcome = Error{ErrorCode::SizeMismatch, "fewer data than declared"};
    return m_job.passOn(m_pipe ? m_pipe->end(outcome) : m_sink.end(outcome));
}

Result<void> Lane::endTarget(const Result<void>& outcome)
{
    if (outcome)
        return setTarget(m_target, m_targetCharset, m_targetStyle);
    if (outcome.error().code == ErrorCode::UnsafeLink)
        return m_job.refuseLink(m_linkNote, outcome.error());
    FilePlan plan;
    plan.note = m_linkNote;
    return m_job.entryFailed(plan, outcome.error());
}

Result<void> Lane::settle(const Result<void>& readOutcome)
{
    if (m_receiving != Receiving::Nothing)
        TRY(end(readOutcome ? Error{ErrorCode::Truncated, "entry without an end"} : readOutcome.error()));
    Result<void> settled;
    for (auto* pipe : {m_ownPipe.get(), m_helper ? m_helper->pipe.get() : nullptr}) {
        if (pipe && settled)
            settled = m_job.passOn(pipe->drain());
    }
    m_writer.reportPlaced(); // the pipes rest
    if (m_helper)
        m_helper->writer.reportPlaced();
    return settled;
}

}
