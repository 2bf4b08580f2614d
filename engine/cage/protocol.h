#pragma once

#include "engine/formats/archive.h"

namespace vantoro::cage {

/// What crosses between the application and its worker process. Control messages travel over a socket pair that keeps
/// message borders; records (entries, data, the archive's description) travel through rings in shared memory. Both ends
/// are the same build, so fields lie in memory as they are; the parent believes none of them.

enum class MessageType : std::uint32_t {
    // parent to worker
    Open = 1, ///< text: archive name; descriptors: the parts of its source; values: their sizes
    List,
    Read, ///< number: lanes; flag: a selection follows as a descriptor of a file of 64-bit indices
    Volume, ///< answer to NeedVolume: a descriptor and its size, or an error
    Password, ///< answer to NeedPassword: text, or an error
    Parts, ///< descriptors and sizes that go before those of the next Open or Volume
    // worker to parent
    Ready, ///< confined and waiting; number: ConfinementStep bits that are in force; values: the worker's buildMark()
    NeedVolume, ///< text: bare name
    NeedPassword, ///< number: attempt
    Done, ///< the request is over, well or with an error; the archive's description is in ring 0
};

/// The same in every build whose two ends understand each other: made of the sources that say what crosses.
std::uint64_t buildMark();

constexpr std::size_t kMaxText = 64 << 10;
constexpr std::size_t kMaxParts = 16; ///< descriptors in one message

struct Message {
    MessageType type = MessageType::Done;
    bool flag = false;
    std::uint64_t number = 0;
    std::optional<Error> error;
    std::string text;
    std::vector<std::uint64_t> values;
};

std::vector<std::byte> encodeMessage(const Message& message);
/// Corrupt when the block is not a message; nothing in it is believed beyond that.
Result<Message> parseMessage(ConstBytes block);

enum class RecordType : std::uint32_t {
    Pad = 1, ///< skip to the ring's start
    Entry, ///< one entry of a listing, or the beginning of one that is read
    Data,
    Hole, ///< 64-bit length
    End, ///< an error, or none
    Info, ///< the archive's description
};

/// Whether data and an end follow an entry: both sides must agree.
constexpr bool carriesData(EntryKind kind)
{
    return kind == EntryKind::File || kind == EntryKind::SymbolicLink || kind == EntryKind::ResourceFork;
}

/// Stands before each record in a ring; records are 8-byte aligned.
struct RecordHeader {
    std::uint32_t type = 0;
    std::uint32_t length = 0; ///< of the payload in bytes
};

/// No record is larger: what an archive adds to its entries beyond that stays behind.
constexpr std::size_t kMaxRecord = 640 << 10;

/// An entry on its way out: written where the other process reads it, so its size is asked for first.
class EntryEncoder {
public:
    explicit EntryEncoder(const Entry& entry);
    std::size_t size() const { return m_size; }
    void write(Bytes room) const;

private:
    const Entry& m_entry;
    std::array<std::string_view, 6> m_texts;
    std::span<const ExtendedAttribute> m_attributes;
    std::size_t m_size;
};

/// Takes entries that the worker sent. Keeps a private copy of the block, which nobody changes while it is used, and
/// one memory for all entries.
class EntryParser {
public:
    /// Enumerations, lengths and limits are checked. Names keep whatever bytes they have.
    Result<void> parse(ConstBytes block, const Limits& limits);
    /// What parse() took; valid until it is called again.
    const Entry& entry() const { return m_entry; }

private:
    std::vector<std::byte> m_block;
    Entry m_entry;
    std::vector<ExtendedAttribute> m_attributes;
};

std::vector<std::byte> encodeInfo(const ArchiveInfo& info);
Result<ArchiveInfo> parseInfo(ConstBytes block);

std::vector<std::byte> encodeOutcome(const Result<void>& outcome);
/// Nothing: whole. The outer result is about the block itself.
Result<std::optional<Error>> parseOutcome(ConstBytes block);

}
