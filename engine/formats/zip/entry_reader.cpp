#include "engine/formats/zip/entry_reader.h"

#include "engine/crypto/crc32.h"
#include "engine/formats/zip/methods.h"

#include <algorithm>

namespace vantoro::zip {

namespace {

constexpr std::uint64_t kReadAhead = 1 << 20;
constexpr std::uint64_t kCopyFrom = 128 << 10; ///< stored entries this large are left to the receiver to copy
constexpr std::size_t kSlot = 256 << 10, kMostRoom = 512 << 10;

bool isLocalMethodRight(const LocalHeader& local, const DirectoryHeader& header)
{
    return local.method == static_cast<std::uint16_t>(header.method);
}

/// The directory is the authority; a local header that contradicts it in more than the name means damage or deceit.
bool agrees(const LocalHeader& local, const DirectoryHeader& header)
{
    if (!isLocalMethodRight(local, header) || ((local.flags ^ header.flags) & kEncrypted) != 0)
        return false;
    if ((local.flags & (kHasDescriptor | kMasked)) != 0)
        return true;
    const auto matches = [](std::uint64_t ours, std::uint64_t theirs) {
        return ours == theirs || ours == kSaturated32; // a zip64 field that is too short or missing
    };
    return matches(local.packed, header.packed) && matches(local.size, header.size) && local.crc == header.crc;
}

}

Result<void> EntryReader::read(std::size_t index, std::uint64_t readTo)
{
    TRY(m_shared.cancel.check());
    m_readTo = readTo;
    m_emitted = 0;
    const auto header = m_shared.directory[index];
    const bool isCredible = m_shared.directory.isSizeCredible(index, header, m_shared.source->size());
    const auto& entry = m_view.fill(index, header, isCredible);
    if (TRY(m_lane.begin(entry)) == LaneReceiver::Want::Skip)
        return {};
    Result<void> outcome;
    if (entry.kind != EntryKind::Folder)
        outcome = decode(header, index);
    if (m_shared.packedBytesRead)
        m_shared.packedBytesRead->fetch_add(header.packed, std::memory_order_relaxed);
    if (m_receiverError && m_receiverError->code != ErrorCode::EntryRefused)
        return *m_receiverError;
    if (!outcome && outcome.error().code == ErrorCode::Cancelled)
        return outcome;
    m_receiverError.reset();
    return m_lane.end(outcome);
}

Result<void> EntryReader::decode(const DirectoryHeader& header, std::size_t index)
{
    if (header.has(kPatched))
        return Error{ErrorCode::UnsupportedFeature, "zip: patched data"};
    if (header.has(kEncrypted)) {
        TRY(cipherFrame(header));
        if (m_shared.password.empty())
            return Error{ErrorCode::PasswordNeeded, "zip: encrypted"};
    }
    const bool isSizeKnown = m_shared.directory.isSizeKnown(index);
    const auto position = TRY(findData(header, isSizeKnown));
    const auto method = header.realMethod();
    if (!isSizeKnown)
        return decodeStream(header, position, false);
    if (method == Method::Stored && !header.has(kEncrypted))
        return decodeStored(header, position);
    const bool isWhole = header.packed <= kWholeEntry && header.size <= kWholeEntry;
    if (isWhole && (method == Method::Deflate || method == Method::Stored))
        return decodeWhole(header, position);
    if (isWhole && method == Method::Implode && !header.has(kEncrypted))
        return decodeImploded(header, position);
    return decodeStream(header, position, true);
}

/// A stretch of the source. Reads ahead while entries follow closely.
Result<ConstBytes> EntryReader::fetch(std::uint64_t position, std::uint64_t length)
{
    const auto have = m_inputStart + m_input.size();
    if (position < m_inputStart || position + length > have) {
        const auto wanted = std::max(length, std::min(kReadAhead, m_readTo > position ? m_readTo - position : 0));
        m_input.resize(static_cast<std::size_t>(wanted));
        m_inputStart = position;
        auto got = m_shared.source->readAt(position, m_input);
        if (!got && wanted > length) // what was read ahead may be what fails
            got = m_shared.source->readAt(position, Bytes(m_input).first(static_cast<std::size_t>(length)));
        m_input.resize(got ? *got : 0);
        if (!got)
            return got.error();
    }
    const auto offset = static_cast<std::size_t>(position - m_inputStart);
    if (length > m_input.size() - offset)
        return Error{ErrorCode::Truncated, "zip: entry past the end of the file"};
    return ConstBytes(m_input).subspan(offset, static_cast<std::size_t>(length));
}

/// Where the data begin: behind the local header, which is checked against the directory.
Result<std::uint64_t> EntryReader::findData(const DirectoryHeader& header, bool isSizeKnown)
{
    const auto position = m_shared.directory.localPosition(header);
    if (position >= m_shared.source->size())
        return Error{ErrorCode::Truncated, "zip: local header past the end of the file"};
    const auto fixed = TRY(fetch(position, kLocalSize));
    auto local = TRY(LocalHeader::parse(fixed));
    const auto whole = TRY(fetch(position, local.length()));
    local.applyExtra(whole.subspan(kLocalSize + local.nameLength));
    if (isSizeKnown && !agrees(local, header))
        return Error{ErrorCode::Corrupt, "zip: local header and directory differ"};
    return position + local.length();
}

Result<void> EntryReader::emit(ConstBytes block)
{
    m_emitted += block.size();
    if (auto taken = m_lane.data(block); !taken) {
        m_receiverError = taken.error();
        return taken;
    }
    return {};
}

Result<void> EntryReader::checkSum(const DirectoryHeader& header, std::uint32_t crc) const
{
    if (!header.hasChecksum() || crc == header.crc)
        return {};
    // The quick check lets one wrong password in 256 pass.
    if (header.has(kEncrypted) && header.method != Method::Aes && !m_shared.isPasswordProven)
        return Error{ErrorCode::WrongPassword, "zip: checksum after classic decryption"};
    return Error{ErrorCode::ChecksumMismatch, "zip: CRC-32"};
}

Result<void> EntryReader::decodeStored(const DirectoryHeader& header, std::uint64_t position)
{
    if (header.packed != header.size)
        return Error{ErrorCode::Corrupt, "zip: sizes of a stored entry"};
    if (header.size < kCopyFrom) {
        const auto data = TRY(fetch(position, header.size));
        TRY(emit(data));
        return checkSum(header, crc32(0, data));
    }
    const auto& source = *m_shared.source;
    if (position > source.size() || header.size > source.size() - position)
        return Error{ErrorCode::Truncated, "zip: entry past the end of the file"};
    std::uint32_t crc = 0;
    // In steps, so that the stop flag is asked.
    constexpr std::uint64_t kStep = 8 << 20;
    for (std::uint64_t done = 0; done < header.size;) {
        TRY(m_shared.cancel.check());
        const auto part = std::min(kStep, header.size - done);
        if (auto copied = m_lane.copy(source, position + done, part, &crc); !copied) {
            const auto code = copied.error().code;
            if (code != ErrorCode::Io && code != ErrorCode::Truncated && code != ErrorCode::MissingVolume)
                m_receiverError = copied.error();
            return copied;
        }
        done += part;
    }
    return checkSum(header, crc);
}

/// Takes the cipher off data that are whole in memory. The authentication code is checked before anything is made of
/// them.
Result<ConstBytes> EntryReader::decipherWhole(const DirectoryHeader& header, ConstBytes packed)
{
    const auto frame = TRY(cipherFrame(header));
    if (packed.size() < frame.head + frame.tail)
        return Error{ErrorCode::Corrupt, "zip: encrypted entry too short"};
    TRY(m_decipherer.start(header, m_shared.password, packed.first(frame.head)));
    const auto body = packed.subspan(frame.head, packed.size() - frame.head - frame.tail);
    m_clear.assign(body.begin(), body.end());
    TRY(m_decipherer.decrypt(m_clear));
    TRY(m_decipherer.finish(packed.last(frame.tail)));
    return ConstBytes(m_clear);
}

Result<void> EntryReader::decodeWhole(const DirectoryHeader& header, std::uint64_t position)
{
    auto data = TRY(fetch(position, header.packed));
    if (header.has(kEncrypted))
        data = TRY(decipherWhole(header, data));
    const auto size = static_cast<std::size_t>(header.size);
    if (header.realMethod() == Method::Stored) {
        if (data.size() != size)
            return Error{ErrorCode::SizeMismatch, "zip: sizes of a stored entry"};
        TRY(emit(data));
        return checkSum(header, crc32(0, data));
    }
    Bytes room;
    if (size <= kMostRoom) {
        room = m_lane.room(std::max<std::size_t>(size, 1));
    } else {
        if (m_output.size() < size)
            m_output.resize(size);
        room = m_output;
    }
    const auto made = m_inflater.inflate(data, room.first(size));
    // What is damaged goes through the other decoder, which gives what there is up to the fault.
    if (!made)
        return decodeStream(header, position, true);
    const auto block = room.first(*made);
    const auto crc = crc32(0, block);
    for (ConstBytes rest = block; !rest.empty();) {
        const auto part = rest.first(std::min(rest.size(), kMostRoom));
        TRY(emit(part));
        rest = rest.subspan(part.size());
    }
    if (*made != size)
        return Error{ErrorCode::SizeMismatch, "zip: shorter than declared"};
    return checkSum(header, crc);
}

Result<void> EntryReader::decodeStream(const DirectoryHeader& header, std::uint64_t position, bool isSizeKnown)
{
    const auto sourceSize = m_shared.source->size();
    const auto left = position < sourceSize ? sourceSize - position : 0;
    const auto packedSize = isSizeKnown ? header.packed : left;
    const auto size = isSizeKnown ? header.size : ~std::uint64_t{0};
    if (!isSizeKnown && header.realMethod() == Method::Stored)
        return Error{ErrorCode::Corrupt, "zip: nothing tells where the entry ends"};
    auto packed = windowStream(m_shared.source, position, packedSize);
    DecipheredStream* deciphered = nullptr;
    if (header.has(kEncrypted)) {
        auto framed = header;
        framed.packed = packedSize;
        auto clear = TRY(DecipheredStream::open(std::move(packed), framed, m_shared.password));
        deciphered = clear.get();
        packed = std::move(clear);
    }
    auto stream
        = TRY(openMethod(std::move(packed), header, size, {m_shared.decoderThreads, m_shared.limits, m_shared.cancel}));
    const auto crc = TRY(pump(*stream, size));
    if (packedSize > left)
        return Error{ErrorCode::Truncated, "zip: entry past the end of the file"};
    if (!isSizeKnown)
        return Error{ErrorCode::Corrupt, "zip: neither size nor checksum of the entry is left"};
    if (m_emitted != size)
        return Error{ErrorCode::SizeMismatch, "zip: shorter than declared"};
    if (deciphered)
        TRY(deciphered->finish());
    return checkSum(header, crc);
}

/// Hands the whole stream on, `size` bytes at most; returns their checksum.
Result<std::uint32_t> EntryReader::pump(ByteStream& stream, std::uint64_t size)
{
    std::uint32_t crc = 0;
    for (;;) {
        TRY(m_shared.cancel.check());
        const auto room = m_lane.room(kSlot);
        const auto got = TRY(stream.read(room.first(std::min(room.size(), kMostRoom))));
        if (got == 0)
            return crc;
        const auto wanted = std::min<std::uint64_t>(got, size - m_emitted);
        const ConstBytes block = room.first(static_cast<std::size_t>(wanted));
        crc = crc32(crc, block);
        TRY(emit(block));
        if (wanted < got)
            return Error{ErrorCode::SizeMismatch, "zip: longer than declared"};
    }
}

/// Two rules for the shortest match are about: the one whose checksum fits is right.
Result<void> EntryReader::decodeImploded(const DirectoryHeader& header, std::uint64_t position)
{
    const auto size = static_cast<std::size_t>(header.size);
    m_output.resize(std::max(m_output.size(), size));
    const auto room = Bytes(m_output).first(size);
    const auto fits = [&](const StreamPtr& stream) {
        const auto got = stream ? readFully(*stream, room) : std::size_t{0};
        return got && *got == size && crc32(0, room) == header.crc;
    };
    const auto packed = [&] { return windowStream(m_shared.source, position, header.packed); };
    const auto usual = TRY(openMethod(packed(), header, header.size, {}));
    if (fits(usual) || fits(openOldImplode(packed(), header, {})))
        return emit(room);
    return decodeStream(header, position, true);
}

}
