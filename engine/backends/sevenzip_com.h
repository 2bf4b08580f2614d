#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

/// What 7-Zip's plug-in library and its callers exchange: plain vtables with the calling convention of the platform,
/// counted objects, variants and length-prefixed strings. Source: the library's own interface as of 7-Zip 23.01, the
/// first release without virtual destructors in the tables.
namespace vantoro::sevenzip {

using HResult = std::int32_t;
inline constexpr HResult kOk = 0;
inline constexpr HResult kFalse = 1;
inline constexpr HResult kNotImplemented = static_cast<HResult>(0x80004001);
inline constexpr HResult kNoInterface = static_cast<HResult>(0x80004002);
inline constexpr HResult kAbort = static_cast<HResult>(0x80004004);
inline constexpr HResult kFail = static_cast<HResult>(0x80004005);
inline constexpr HResult kOutOfMemory = static_cast<HResult>(0x8007000E);
inline constexpr HResult kInvalidArgument = static_cast<HResult>(0x80070057);
inline constexpr HResult kSeekBeforeStart = static_cast<HResult>(0x80070083);

struct Guid {
    std::uint32_t data1;
    std::uint16_t data2, data3;
    std::uint8_t data4[8];
    bool operator==(const Guid&) const = default;
};
inline constexpr Guid kUnknownId{0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr Guid interfaceId(std::uint8_t group, std::uint8_t sub)
{
    return {0x23170F69, 0x40C1, 0x278A, {0, 0, 0, group, 0, sub, 0, 0}};
}
/// `id` is the format's number in the library: 0x01 zip, 0x07 7z …
constexpr Guid formatClass(std::uint8_t id) { return {0x23170F69, 0x40C1, 0x278A, {0x10, 0, 0, 1, 0x10, id, 0, 0}}; }

/// UTF-16 code units, one in each wchar_t, behind a 32-bit length in bytes. Both sides use the C heap.
using Bstr = wchar_t*;
/// Null when memory is out.
Bstr makeBstr(std::string_view utf8);
/// The bytes of `utf8` with each one from 0x80 escaped (U+EF80 …): hands over a text that is not UTF-8.
Bstr makeRawBstr(std::string_view bytes);
inline void freeBstr(Bstr text)
{
    if (text)
        std::free(reinterpret_cast<char*>(text) - 4);
}
inline std::size_t bstrBytes(const wchar_t* text)
{
    std::uint32_t size = 0;
    if (text)
        std::memcpy(&size, reinterpret_cast<const char*>(text) - 4, sizeof size);
    return size;
}

enum class VariantType : std::uint16_t {
    Empty = 0,
    I32 = 3,
    Text = 8,
    Error = 10,
    Bool = 11,
    U8 = 17,
    U16 = 18,
    U32 = 19,
    I64 = 20,
    U64 = 21,
    FileTime = 64,
};

/// 16 bytes. Only a string owns memory; the destructor frees it.
struct Variant {
    VariantType type = VariantType::Empty;
    std::uint16_t timePrecision = 0; ///< of a FileTime: 0 100 ns, 1 1 s, 2 2 s, 3 and 25 1 ns, 16 + n decimals
    std::uint16_t extraNanoseconds = 0; ///< of a FileTime with precision 3, 24 or 25: 0 to 99
    std::uint16_t reserved = 0;
    union {
        wchar_t* text;
        std::uint64_t u64;
        std::int64_t i64;
        std::uint32_t u32;
        std::int32_t i32;
        std::uint16_t u16;
        std::uint8_t u8;
        std::int16_t boolean; ///< -1 true
    };

    Variant() : u64(0) {}
    explicit Variant(bool value) : type(VariantType::Bool), u64(0) { boolean = value ? -1 : 0; }
    explicit Variant(std::uint32_t value) : type(VariantType::U32), u64(0) { u32 = value; }
    explicit Variant(std::uint64_t value) : type(VariantType::U64), u64(value) {}
    explicit Variant(std::string_view utf8) : type(VariantType::Text), u64(0) { text = makeBstr(utf8); }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    ~Variant() { clear(); }

    void clear()
    {
        if (type == VariantType::Text)
            freeBstr(text);
        type = VariantType::Empty;
        u64 = 0;
    }
    bool isEmpty() const { return type == VariantType::Empty; }
    bool isTrue() const { return type == VariantType::Bool && boolean != 0; }
    /// The number, whatever its width; `fallback` for anything else.
    std::uint64_t number(std::uint64_t fallback = 0) const;
    bool isNumber() const;
    /// UTF-8; escapes of raw bytes are undone, so that 8-bit names come out as they are stored.
    std::string rawText() const;
    /// UTF-8 of a text that is Unicode by nature: no escapes to undo.
    std::string unicodeText() const;
};
static_assert(sizeof(Variant) == 16);

std::string rawTextOf(const wchar_t* units, std::size_t count);
std::string unicodeTextOf(const wchar_t* units, std::size_t count);

enum class AskMode : std::int32_t { Extract = 0, Test = 1, Skip = 2, ReadExternal = 3 };

enum class OperationResult : std::int32_t {
    Ok = 0,
    UnsupportedMethod = 1,
    DataError = 2,
    ChecksumError = 3,
    Unavailable = 4,
    UnexpectedEnd = 5,
    DataAfterEnd = 6,
    NotAnArchive = 7,
    HeadersError = 8,
    WrongPassword = 9,
};

// Interfaces. The order of the functions is the order of the table.

class Unknown {
public:
    virtual HResult queryInterface(const Guid& id, void** out) = 0;
    virtual std::uint32_t addRef() = 0;
    virtual std::uint32_t release() = 0;

protected:
    ~Unknown() = default;
};

class Progress : public Unknown {
public:
    static constexpr Guid kId = interfaceId(0, 0x05);
    virtual HResult setTotal(std::uint64_t total) = 0;
    virtual HResult setCompleted(const std::uint64_t* completed) = 0;

protected:
    ~Progress() = default;
};

class SequentialInStream : public Unknown {
public:
    static constexpr Guid kId = interfaceId(3, 0x01);
    virtual HResult read(void* data, std::uint32_t size, std::uint32_t* processed) = 0;

protected:
    ~SequentialInStream() = default;
};

class SequentialOutStream : public Unknown {
public:
    static constexpr Guid kId = interfaceId(3, 0x02);
    virtual HResult write(const void* data, std::uint32_t size, std::uint32_t* processed) = 0;

protected:
    ~SequentialOutStream() = default;
};

enum class SeekOrigin : std::uint32_t { Set = 0, Current = 1, End = 2 };

class InStream : public SequentialInStream {
public:
    static constexpr Guid kId = interfaceId(3, 0x03);
    virtual HResult seek(std::int64_t offset, SeekOrigin origin, std::uint64_t* position) = 0;

protected:
    ~InStream() = default;
};

class OutStream : public SequentialOutStream {
public:
    static constexpr Guid kId = interfaceId(3, 0x04);
    virtual HResult seek(std::int64_t offset, SeekOrigin origin, std::uint64_t* position) = 0;
    virtual HResult setSize(std::uint64_t size) = 0;

protected:
    ~OutStream() = default;
};

class StreamSize : public Unknown {
public:
    static constexpr Guid kId = interfaceId(3, 0x06);
    virtual HResult streamSize(std::uint64_t* size) = 0;

protected:
    ~StreamSize() = default;
};

class TextPassword : public Unknown {
public:
    static constexpr Guid kId = interfaceId(5, 0x10);
    virtual HResult textPassword(Bstr* password) = 0;

protected:
    ~TextPassword() = default;
};

/// Asked by writers: defined 0 means no encryption.
class TextPassword2 : public Unknown {
public:
    static constexpr Guid kId = interfaceId(5, 0x11);
    virtual HResult textPassword2(std::int32_t* isDefined, Bstr* password) = 0;

protected:
    ~TextPassword2() = default;
};

class PropertySetter : public Unknown {
public:
    static constexpr Guid kId = interfaceId(6, 0x03);
    virtual HResult setProperties(const wchar_t* const* names, const Variant* values, std::uint32_t count) = 0;

protected:
    ~PropertySetter() = default;
};

class OpenCallback : public Unknown {
public:
    static constexpr Guid kId = interfaceId(6, 0x10);
    virtual HResult setTotal(const std::uint64_t* files, const std::uint64_t* bytes) = 0;
    virtual HResult setCompleted(const std::uint64_t* files, const std::uint64_t* bytes) = 0;

protected:
    ~OpenCallback() = default;
};

class OpenVolumeCallback : public Unknown {
public:
    static constexpr Guid kId = interfaceId(6, 0x30);
    virtual HResult property(std::uint32_t id, Variant* value) = 0;
    virtual HResult volumeStream(const wchar_t* name, InStream** stream) = 0;

protected:
    ~OpenVolumeCallback() = default;
};

class ExtractCallback : public Progress {
public:
    static constexpr Guid kId = interfaceId(6, 0x20);
    virtual HResult outStream(std::uint32_t index, SequentialOutStream** stream, AskMode askMode) = 0;
    virtual HResult prepareOperation(AskMode askMode) = 0;
    virtual HResult setOperationResult(OperationResult result) = 0;

protected:
    ~ExtractCallback() = default;
};

class SubStreams : public Unknown {
public:
    static constexpr Guid kId = interfaceId(6, 0x40);
    virtual HResult itemStream(std::uint32_t index, SequentialInStream** stream) = 0;

protected:
    ~SubStreams() = default;
};

class CoderProgress : public Unknown {
public:
    static constexpr Guid kId = interfaceId(4, 0x04);
    virtual HResult setRatio(const std::uint64_t* packed, const std::uint64_t* unpacked) = 0;

protected:
    ~CoderProgress() = default;
};

/// A compression method: decodes one stream into another.
class Coder : public Unknown {
public:
    static constexpr Guid kId = interfaceId(4, 0x05);
    virtual HResult code(SequentialInStream* in, SequentialOutStream* out, const std::uint64_t* packedSize,
                         const std::uint64_t* unpackedSize, CoderProgress* progress)
        = 0;

protected:
    ~Coder() = default;
};

class DecoderProperties : public Unknown {
public:
    static constexpr Guid kId = interfaceId(4, 0x22);
    virtual HResult setDecoderProperties(const std::uint8_t* data, std::uint32_t size) = 0;

protected:
    ~DecoderProperties() = default;
};

/// Methods of ours that a handler may use beside those of the library.
class Codecs : public Unknown {
public:
    static constexpr Guid kId = interfaceId(4, 0x60);
    virtual HResult methodCount(std::uint32_t* count) = 0;
    virtual HResult property(std::uint32_t index, std::uint32_t id, Variant* value) = 0;
    virtual HResult createDecoder(std::uint32_t index, const Guid* interfaceId, void** coder) = 0;
    virtual HResult createEncoder(std::uint32_t index, const Guid* interfaceId, void** coder) = 0;

protected:
    ~Codecs() = default;
};

class CodecsSetter : public Unknown {
public:
    static constexpr Guid kId = interfaceId(4, 0x61);
    virtual HResult setCodecs(Codecs* codecs) = 0;

protected:
    ~CodecsSetter() = default;
};

class InArchive : public Unknown {
public:
    static constexpr Guid kId = interfaceId(6, 0x60);
    virtual HResult open(InStream* stream, const std::uint64_t* maxCheckStart, OpenCallback* callback) = 0;
    virtual HResult close() = 0;
    virtual HResult itemCount(std::uint32_t* count) = 0;
    virtual HResult property(std::uint32_t index, std::uint32_t id, Variant* value) = 0;
    /// Indices sorted, unique and in range: the library does not check. Null and ~0 for all.
    virtual HResult extract(const std::uint32_t* indices, std::uint32_t count, std::int32_t test,
                            ExtractCallback* callback)
        = 0;
    virtual HResult archiveProperty(std::uint32_t id, Variant* value) = 0;
    virtual HResult propertyCount(std::uint32_t* count) = 0;
    virtual HResult propertyInfo(std::uint32_t index, Bstr* name, std::uint32_t* id, std::uint16_t* type) = 0;
    virtual HResult archivePropertyCount(std::uint32_t* count) = 0;
    virtual HResult archivePropertyInfo(std::uint32_t index, Bstr* name, std::uint32_t* id, std::uint16_t* type) = 0;

protected:
    ~InArchive() = default;
};

class RawProperties : public Unknown {
public:
    static constexpr Guid kId = interfaceId(6, 0x70);
    virtual HResult parent(std::uint32_t index, std::uint32_t* parent, std::uint32_t* type) = 0;
    virtual HResult rawProperty(std::uint32_t index, std::uint32_t id, const void** data, std::uint32_t* size,
                                std::uint32_t* type)
        = 0;
    virtual HResult rawPropertyCount(std::uint32_t* count) = 0;
    virtual HResult rawPropertyInfo(std::uint32_t index, Bstr* name, std::uint32_t* id) = 0;

protected:
    ~RawProperties() = default;
};

class UpdateCallback : public Progress {
public:
    static constexpr Guid kId = interfaceId(6, 0x80);
    virtual HResult updateItemInfo(std::uint32_t index, std::int32_t* newData, std::int32_t* newProperties,
                                   std::uint32_t* indexInArchive)
        = 0;
    virtual HResult property(std::uint32_t index, std::uint32_t id, Variant* value) = 0;
    virtual HResult inStream(std::uint32_t index, SequentialInStream** stream) = 0;
    virtual HResult setOperationResult(std::int32_t result) = 0;

protected:
    ~UpdateCallback() = default;
};

class OutArchive : public Unknown {
public:
    static constexpr Guid kId = interfaceId(6, 0xA0);
    virtual HResult updateItems(SequentialOutStream* stream, std::uint32_t count, UpdateCallback* callback) = 0;
    virtual HResult fileTimeType(std::uint32_t* type) = 0;

protected:
    ~OutArchive() = default;
};

/// Properties of items and archives that are used here.
namespace property {
inline constexpr std::uint32_t kMainSubfile = 1;
inline constexpr std::uint32_t kPath = 3;
inline constexpr std::uint32_t kName = 4;
inline constexpr std::uint32_t kIsFolder = 6;
inline constexpr std::uint32_t kSize = 7;
inline constexpr std::uint32_t kPackedSize = 8;
inline constexpr std::uint32_t kAttributes = 9;
inline constexpr std::uint32_t kCreated = 10;
inline constexpr std::uint32_t kAccessed = 11;
inline constexpr std::uint32_t kModified = 12;
inline constexpr std::uint32_t kSolid = 13;
inline constexpr std::uint32_t kEncrypted = 15;
inline constexpr std::uint32_t kCrc = 19;
inline constexpr std::uint32_t kIsAnti = 21;
inline constexpr std::uint32_t kMethod = 22;
inline constexpr std::uint32_t kUser = 25;
inline constexpr std::uint32_t kGroup = 26;
inline constexpr std::uint32_t kBlock = 27;
inline constexpr std::uint32_t kComment = 28;
inline constexpr std::uint32_t kPhysicalSize = 44;
inline constexpr std::uint32_t kCharacteristics = 47;
inline constexpr std::uint32_t kPosixMode = 53;
inline constexpr std::uint32_t kSymbolicLink = 54;
inline constexpr std::uint32_t kErrorText = 55;
inline constexpr std::uint32_t kIsAlternateStream = 63;
inline constexpr std::uint32_t kIsAuxiliary = 64;
inline constexpr std::uint32_t kErrorFlags = 71;
inline constexpr std::uint32_t kWarningFlags = 72;
inline constexpr std::uint32_t kReparsePoint = 89; // raw
inline constexpr std::uint32_t kHardLink = 90;
}

/// Properties of methods.
namespace method_property {
inline constexpr std::uint32_t kId = 0;
inline constexpr std::uint32_t kName = 1;
inline constexpr std::uint32_t kHasDecoder = 7;
inline constexpr std::uint32_t kHasEncoder = 8;
}

/// Bits of kErrorFlags and kWarningFlags.
namespace error_flag {
inline constexpr std::uint32_t kNotThisFormat = 1;
inline constexpr std::uint32_t kHeaders = 2;
inline constexpr std::uint32_t kEncryptedHeaders = 4;
inline constexpr std::uint32_t kUnavailableStart = 8;
inline constexpr std::uint32_t kUnexpectedEnd = 0x20;
inline constexpr std::uint32_t kUnsupportedMethod = 0x80;
inline constexpr std::uint32_t kUnsupportedFeature = 0x100;
inline constexpr std::uint32_t kData = 0x200;
inline constexpr std::uint32_t kChecksum = 0x400;
}

// Helpers of ours.

/// Holds one reference to an object of either side.
template <class T> class Ref {
public:
    Ref() = default;
    /// Takes over the reference that came with `object`.
    static Ref adopt(T* object)
    {
        Ref ref;
        ref.m_object = object;
        return ref;
    }
    /// Adds one.
    static Ref share(T* object)
    {
        if (object)
            object->addRef();
        return adopt(object);
    }
    Ref(const Ref& other) : m_object(other.m_object)
    {
        if (m_object)
            m_object->addRef();
    }
    Ref(Ref&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    Ref& operator=(Ref other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }
    ~Ref()
    {
        if (m_object)
            m_object->release();
    }
    T* operator->() const { return m_object; }
    T* raw() const { return m_object; }
    explicit operator bool() const { return m_object != nullptr; }
    /// Gives the reference away.
    T* detach() { return std::exchange(m_object, nullptr); }

    template <class Other> Ref<Other> query() const
    {
        void* found = nullptr;
        if (!m_object || m_object->queryInterface(Other::kId, &found) != kOk)
            return {};
        return Ref<Other>::adopt(static_cast<Other*>(found));
    }

private:
    T* m_object = nullptr;
};

/// Counting and casting for an object of ours that offers `Interfaces` (each with a base that it also answers to, if
/// listed in `Also`). The library does not count atomically, but its threads release objects of ours.
template <class... Interfaces> class Object : public Interfaces... {
public:
    HResult queryInterface(const Guid& id, void** out) override
    {
        *out = nullptr;
        if (id == kUnknownId)
            *out = first<Interfaces...>();
        ((id == Interfaces::kId ? void(*out = static_cast<Interfaces*>(this)) : void()), ...);
        if (!*out)
            *out = otherInterface(id);
        if (!*out)
            return kNoInterface;
        addRef();
        return kOk;
    }
    std::uint32_t addRef() override { return m_count.fetch_add(1, std::memory_order_relaxed) + 1; }
    std::uint32_t release() override
    {
        const auto left = m_count.fetch_sub(1, std::memory_order_acq_rel) - 1;
        if (left == 0)
            delete this;
        return left;
    }

protected:
    Object() = default;
    virtual ~Object() = default;
    /// Bases of the interfaces that the library may ask for.
    virtual void* otherInterface(const Guid&) { return nullptr; }

private:
    template <class First, class...> First* first() { return static_cast<First*>(this); }
    std::atomic<std::uint32_t> m_count{1};
};

/// Makes an object of ours, holding its first reference.
template <class T, class... Args> Ref<T> makeObject(Args&&... args)
{
    return Ref<T>::adopt(new T(std::forward<Args>(args)...));
}

/// Runs the body of a callback: no exception may pass into the library.
template <class F> HResult callback(F&& body) noexcept
{
    try {
        return body();
    } catch (const std::bad_alloc&) {
        return kOutOfMemory;
    } catch (...) {
        return kFail;
    }
}

}
