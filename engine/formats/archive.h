#pragma once

#include "engine/io/cancel.h"
#include "engine/io/secret.h"
#include "engine/io/source.h"
#include "engine/text/charset.h"

#include <array>
#include <atomic>
#include <optional>
#include <string>
#include <vector>

namespace vantoro {

enum class EntryKind : std::uint8_t { File, Folder, SymbolicLink, HardLink, ResourceFork, Other };
/// What the type bits of a Unix mode say; nothing where there are none, or unknown ones.
std::optional<EntryKind> kindOfMode(std::uint32_t mode);

/// A point in time. UTC unless `isLocal`, which DOS times are: they are read in the zone of this machine.
struct Timestamp {
    std::int64_t seconds = 0; ///< since 1970-01-01
    std::uint32_t nanoseconds = 0;
    bool isSet = false;
    bool isLocal = false;
};

/// How the bytes of a name are split into components.
enum class PathStyle : std::uint8_t {
    Unix, ///< only '/' separates
    Dos, ///< '\' separates too and a drive letter may lead: zip from FAT/NTFS, cab, lha from DOS, rar from Windows
};

struct Checksum {
    enum class Kind : std::uint8_t { None, Crc32, Adler32, Blake2sp, Other };
    Kind kind = Kind::None;
    std::uint32_t value = 0; ///< of Crc32 and Adler32
};

struct ExtendedAttribute {
    std::string_view name; ///< with its prefix: "user.comment"
    ConstBytes value;
};

/// What an archive says of one entry: plain values, all of them claims. Views last until the receiver's call returns.
struct Entry {
    std::uint64_t index = 0; ///< position in the archive's listing, from 0 without gaps
    std::string_view name; ///< the stored bytes; not cleaned, may be hostile
    CharsetId nameCharset = kCharsetUnknown; ///< what the format declares; kCharsetUnknown: judge it from all names
    PathStyle pathStyle = PathStyle::Unix;
    EntryKind kind = EntryKind::File;
    std::optional<std::uint64_t> size; ///< decoded bytes
    std::optional<std::uint64_t> packedSize;
    Timestamp modified, created, accessed;
    std::optional<std::uint32_t> mode; ///< Unix mode bits as stored, type bits included where the format has them
    std::string_view owner, group; ///< shown, never applied
    /// SymbolicLink: target bytes, where the listing knows it; otherwise read() delivers it as the entry's data.
    /// HardLink: the stored name of the entry linked to.
    std::string_view linkTarget;
    Checksum checksum;
    bool isEncrypted = false;
    std::string_view method; ///< "Deflate", "LZMA2:24 BCJ" …
    std::string_view comment; ///< in the charset of the name
    std::optional<std::uint32_t> solidGroup; ///< entries with the same number are decoded together
    std::span<const ExtendedAttribute> attributes;
};

/// Takes a listing, an entry a call. An Error stops the listing and is returned by it.
class EntryVisitor {
public:
    virtual ~EntryVisitor() = default;
    virtual Result<void> visit(const Entry& entry) = 0;
};

/// Takes the data of whole entries, one after another. One thread at a time uses a lane; lanes may run at once.
/// An Error returned by begin(), data(), hole() or end() stops the whole read() and is returned by it, with one
/// exception: EntryRefused from data() or hole() drops the rest of that entry, end(EntryRefused) follows, and the
/// reader goes on with the next one.
class LaneReceiver {
public:
    enum class Want : std::uint8_t { Skip, Data };
    virtual ~LaneReceiver() = default;
    /// Skip: neither data nor end() follow.
    virtual Result<Want> begin(const Entry& entry) = 0;
    /// Room to decode into, at least `least` bytes (at most 512 KiB may be asked for). Handing the filled front of it
    /// to data() saves a copy. Valid until the next call on this lane.
    virtual Bytes room(std::size_t least) = 0;
    virtual Result<void> data(ConstBytes block) = 0;
    /// `length` zero bytes that a sparse entry does not store.
    virtual Result<void> hole(std::uint64_t length);
    /// Stored bytes that lie in `source`: a receiver that writes a file may copy inside the kernel. Returns data()'s
    /// errors, or the source's own (Io, Truncated), after which the reader calls end() with that error.
    /// `crc`, where given, receives the CRC-32 of the bytes.
    virtual Result<void> copy(const ByteSource& source, std::uint64_t position, std::uint64_t length,
                              std::uint32_t* crc);
    /// The entry is complete (no error), or broken off. Declared size and checksum have been compared by the reader.
    virtual Result<void> end(Result<void> outcome) = 0;
};

class Lanes {
public:
    virtual ~Lanes() = default;
    virtual unsigned count() const = 0; ///< at least 1
    virtual LaneReceiver& lane(unsigned index) = 0; ///< index below count()
};

struct ReadRequest {
    /// Sorted unique indices below the number of entries, or nothing for all entries.
    std::optional<std::vector<std::uint64_t>> selection;
    bool isChosen(std::uint64_t index) const;
    /// The chosen indices of an archive with so many entries.
    std::vector<std::uint64_t> chosen(std::uint64_t entries) const;

    /// Counts packed bytes as they are read, for progress where sizes are not declared. May be null.
    std::atomic<std::uint64_t>* packedBytesRead = nullptr;
};

/// Answers with the other files of a multi-part set. Called on any thread, one call at a time.
class VolumeProvider {
public:
    virtual ~VolumeProvider() = default;
    /// `name` is a bare file name (no slash), looked up beside the opened file, letter case ignored.
    /// MissingVolume when there is none.
    virtual Result<SourcePtr> openVolume(std::string_view name) = 0;
};

/// Answers with passwords. Called on the thread that called into the archive.
class PasswordProvider {
public:
    virtual ~PasswordProvider() = default;
    /// `attempt` counts from 0 for the archive; above 0 the password before was wrong. PasswordNeeded when there is
    /// none to give, Cancelled when the user stopped.
    virtual Result<Secret> password(unsigned attempt) = 0;
};

/// What a reader may use while the archive lives. The pointers outlive the archive and may be null.
struct OpenContext {
    std::string name; ///< bare file name of the opened file: for volume rules, and for entries named by their stem
    VolumeProvider* volumes = nullptr;
    PasswordProvider* passwords = nullptr;
    CancelToken cancel;
    Limits limits;
};

struct ArchiveInfo {
    std::string format; ///< id of the registry's row: "zip", "7z", "tar" …
    std::string outerFormat; ///< of the stream around it: "gz", "rpm" …; empty when there is none
    std::string comment;
    std::vector<std::string> volumes; ///< bare names of all parts in order, the opened one included; empty for one file
    std::string missingVolume; ///< name of a part that is not there; empty when all are
    bool isSolid = false;
    bool hasEncryptedNames = false;
    /// list() touches headers only: cheap enough to go before read(). False where listing means decoding (tar.gz).
    bool listsCheaply = true;
    /// Data come from a thread or process of their own: a receiver gains nothing by handing them to one more.
    bool decodesElsewhere = false;
    bool caresAboutPasswordEncoding = false; ///< the cipher takes the password's bytes in an archive-specific charset
    /// What is wrong with the archive as a whole although entries can be read, e.g. a damaged directory that was
    /// rebuilt. Reported as the archive's own damage: status 1.
    std::optional<Error> damage;
    /// Set by read() together with `damage` when a check over many entries failed, as the checksum of the gz around a
    /// tar: the entries from this index on cannot be trusted, also those whose end() reported them whole.
    std::optional<std::uint64_t> firstDoubtfulEntry;
};

/// An opened archive. Readers see no path and no folder: they know sources, callbacks and plain values, so that a
/// worker process can stand behind this class. One thread at a time calls it.
class Archive {
public:
    Archive() = default;
    Archive(const Archive&) = delete;
    Archive& operator=(const Archive&) = delete;
    virtual ~Archive() = default;

    /// Valid after opening; list() and read() may complete it (volumes found on the way, damage).
    virtual const ArchiveInfo& info() const = 0;
    /// Streams every entry in archive order; may be called again. On an error the entries visited before it hold.
    virtual Result<void> list(EntryVisitor& visitor) = 0;
    /// Decodes the chosen entries in one pass, in archive order within a lane. Fails only where it cannot go on;
    /// what is wrong with one entry goes to that entry's end().
    virtual Result<void> read(const ReadRequest& request, Lanes& lanes) = 0;
};
using ArchivePtr = std::unique_ptr<Archive>;

}
