#include "engine/backends/sevenzip_com.h"
#include "engine/backends/sevenzip_library.h"
#include "engine/write/creator.h"
#include "engine/write/source_reader.h"

#include <algorithm>
#include <map>
#include <mutex>

namespace vantoro {

namespace {

using namespace sevenzip;

constexpr std::uint8_t kSevenZip = 0x07;
constexpr std::uint32_t kUnixExtension = 0x8000; // the attributes' upper half is the Unix mode
constexpr std::uint32_t kWindowsFolder = 0x10;

/// What the library's threads and the caller share: its callbacks arrive on several threads, the log is told on one.
struct WriteState {
    const SourceList& sources;
    const CreateOptions& options;
    CreateLog& log;
    std::vector<std::size_t> order; // of the items as the library sees them
    std::mutex mutex;
    std::optional<Error> failure;

    void fail(const Error& error)
    {
        const std::lock_guard lock(mutex);
        if (!failure)
            failure = error;
    }
};

class FileStream final : public Object<SequentialInStream, StreamSize> {
public:
    FileStream(SourceReader reader, WriteState& state) : m_reader(std::move(reader)), m_state(state) {}
    HResult read(void* data, std::uint32_t size, std::uint32_t* processed) override
    {
        return callback([&] {
            if (processed)
                *processed = 0;
            if (m_state.options.cancel.isCancelled())
                return kAbort;
            // A fault in the middle of a file ends the whole archive: it could not be told apart from a whole one.
            const auto got = m_reader.read(Bytes(static_cast<std::byte*>(data), size));
            if (!got) {
                m_state.fail(got.error());
                return kFail;
            }
            if (processed)
                *processed = static_cast<std::uint32_t>(*got);
            const std::lock_guard lock(m_state.mutex);
            m_state.log.addBytes(*got);
            return kOk;
        });
    }
    HResult streamSize(std::uint64_t* size) override
    {
        *size = m_reader.size();
        return kOk;
    }

private:
    SourceReader m_reader;
    WriteState& m_state;
};

/// The target of a link, which 7z stores as the entry's data.
class TextStream final : public Object<SequentialInStream> {
public:
    explicit TextStream(std::string text) : m_text(std::move(text)) {}
    HResult read(void* data, std::uint32_t size, std::uint32_t* processed) override
    {
        const auto count = std::min<std::size_t>(size, m_text.size() - m_used);
        std::memcpy(data, m_text.data() + m_used, count);
        m_used += count;
        if (processed)
            *processed = static_cast<std::uint32_t>(count);
        return kOk;
    }

private:
    std::string m_text;
    std::size_t m_used = 0;
};

class OutputStream final : public Object<OutStream> {
public:
    OutputStream(OutputFile& out, WriteState& state) : m_out(out), m_state(state) {}

    HResult write(const void* data, std::uint32_t size, std::uint32_t* processed) override
    {
        return callback([&] {
            const ConstBytes block(static_cast<const std::byte*>(data), size);
            auto result = Result<void>();
            // The library goes back once, to complete its first header.
            if (m_position < m_out.position())
                result = m_out.patch(m_position, block);
            else
                result = m_out.write(block);
            if (!result) {
                m_state.fail(result.error());
                return kFail;
            }
            m_position += size;
            if (processed)
                *processed = size;
            return kOk;
        });
    }
    HResult seek(std::int64_t offset, SeekOrigin origin, std::uint64_t* position) override
    {
        const auto base = origin == SeekOrigin::Set ? 0 : origin == SeekOrigin::Current ? m_position : m_out.position();
        const auto target = static_cast<std::int64_t>(base) + offset;
        if (target < 0)
            return kSeekBeforeStart;
        m_position = static_cast<std::uint64_t>(target);
        if (position)
            *position = m_position;
        return kOk;
    }
    HResult setSize(std::uint64_t size) override
    {
        return callback([&] { return m_out.truncate(size) ? kOk : kFail; });
    }

private:
    void* otherInterface(const Guid& id) override
    {
        return id == SequentialOutStream::kId ? static_cast<SequentialOutStream*>(this) : nullptr;
    }
    OutputFile& m_out;
    WriteState& m_state;
    std::uint64_t m_position = 0;
};

class ItemSupplier final : public Object<UpdateCallback, TextPassword2> {
public:
    explicit ItemSupplier(WriteState& state) : m_state(state) {}

    HResult setTotal(std::uint64_t) override { return kOk; }
    HResult setCompleted(const std::uint64_t*) override { return m_state.options.cancel.isCancelled() ? kAbort : kOk; }
    HResult updateItemInfo(std::uint32_t, std::int32_t* newData, std::int32_t* newProperties,
                           std::uint32_t* indexInArchive) override
    {
        if (newData)
            *newData = 1;
        if (newProperties)
            *newProperties = 1;
        if (indexInArchive)
            *indexInArchive = ~std::uint32_t{0};
        return kOk;
    }

    HResult property(std::uint32_t index, std::uint32_t id, Variant* value) override
    {
        return callback([&] {
            const auto& item = itemAt(index);
            value->clear();
            switch (id) {
            case property::kPath:
                set(value, Variant(std::string_view(item.name)));
                break;
            case property::kIsFolder:
                set(value, Variant(item.kind == EntryKind::Folder));
                break;
            case property::kIsAnti:
                set(value, Variant(false));
                break;
            case property::kSize:
                set(value, Variant(item.kind == EntryKind::Folder ? std::uint64_t{0} : item.size));
                break;
            case property::kAttributes:
                set(value,
                    Variant(item.mode << 16 | kUnixExtension | (item.kind == EntryKind::Folder ? kWindowsFolder : 0)));
                break;
            case property::kModified:
                if (m_state.options.storeTimes)
                    setTime(value, item.modified);
                break;
            default:
                break;
            }
            return kOk;
        });
    }

    HResult inStream(std::uint32_t index, SequentialInStream** stream) override
    {
        return callback([&] {
            const auto& item = itemAt(index);
            *stream = nullptr;
            if (item.kind == EntryKind::SymbolicLink) {
                *stream = makeObject<TextStream>(item.linkTarget).detach();
                return kOk;
            }
            auto reader = SourceReader::open(item);
            const std::lock_guard lock(m_state.mutex);
            if (!reader) {
                m_state.log.problem(item, reader.error());
                return kFalse; // leaves the item out
            }
            m_state.log.begin(item);
            *stream = makeObject<FileStream>(*std::move(reader), m_state).detach();
            return kOk;
        });
    }

    HResult setOperationResult(std::int32_t) override
    {
        const std::lock_guard lock(m_state.mutex);
        m_state.log.end();
        return kOk;
    }

    HResult textPassword2(std::int32_t* isDefined, Bstr* password) override
    {
        return callback([&] {
            const auto text = m_state.options.password.text();
            *isDefined = text.empty() ? 0 : 1;
            *password = makeBstr(text);
            return *password ? kOk : kOutOfMemory;
        });
    }

private:
    void* otherInterface(const Guid& id) override
    {
        return id == Progress::kId ? static_cast<Progress*>(this) : nullptr;
    }
    const SourceItem& itemAt(std::uint32_t index) const { return m_state.sources.items[m_state.order[index]]; }
    /// Moves the value over: the string in it then belongs to the library.
    static void set(Variant* target, Variant&& value)
    {
        std::memcpy(static_cast<void*>(target), static_cast<const void*>(&value), sizeof value);
        value.type = VariantType::Empty;
    }
    static void setTime(Variant* target, const Timestamp& time)
    {
        constexpr std::int64_t kFrom1601 = 11'644'473'600;
        target->type = VariantType::FileTime;
        target->u64 = static_cast<std::uint64_t>(time.seconds + kFrom1601) * 10'000'000 + time.nanoseconds / 100;
    }
    WriteState& m_state;
};

class SevenZipCreator final : public Creator {
public:
    Result<void> write(const SourceList& sources, const CreateOptions& options, OutputFile& out,
                       CreateLog& log) override
    {
        WriteState state{sources, options, log, solidOrder(sources), {}, {}};
        const auto archive = TRY(createHandler<OutArchive>(kSevenZip));
        TRY(setProperties(archive, options));
        const auto supplier = makeObject<ItemSupplier>(state);
        const auto stream = makeObject<OutputStream>(out, state);
        const auto result = archive->updateItems(static_cast<OutStream*>(stream.raw()),
                                                 static_cast<std::uint32_t>(state.order.size()), supplier.raw());
        if (state.failure)
            return *state.failure;
        TRY(options.cancel.check());
        if (result == kOutOfMemory)
            return Error{ErrorCode::OutOfMemory, "7-Zip: creating"};
        return result == kOk ? Result<void>() : Error{ErrorCode::Internal, "7-Zip: creating"};
    }

private:
    /// Files of a kind side by side pack better in a solid block; folders first, as the library expects no order.
    static std::vector<std::size_t> solidOrder(const SourceList& sources)
    {
        std::vector<std::size_t> order(sources.items.size());
        for (std::size_t i = 0; i < order.size(); ++i)
            order[i] = i;
        const auto key = [&](std::size_t i) {
            const auto& name = sources.items[i].name;
            const auto dot = name.rfind('.');
            const auto slash = name.rfind('/');
            const bool hasExtension = dot != std::string::npos && (slash == std::string::npos || dot > slash);
            return std::tuple(sources.items[i].kind == EntryKind::Folder ? 0 : 1,
                              hasExtension ? name.substr(dot + 1) : std::string(), name);
        };
        std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return key(a) < key(b); });
        return order;
    }

    static Result<void> setProperties(const Ref<OutArchive>& archive, const CreateOptions& options)
    {
        const auto setter = archive.query<PropertySetter>();
        if (!setter)
            return Error{ErrorCode::UnsupportedFeature, "7-Zip: no properties"};
        const bool encrypts = !options.password.isEmpty();
        // One call with all of them: a second one would reset the first.
        const wchar_t* names[] = {L"0", L"x", L"s", L"hc", L"hcf", L"he", L"tm", L"tc", L"ta", L"mt"};
        const Variant values[] = {Variant(std::string_view("LZMA2")),
                                  Variant(std::uint32_t{options.level.value_or(9)}),
                                  Variant(options.solid),
                                  Variant(true),
                                  Variant(true),
                                  Variant(encrypts && options.encryptNames),
                                  Variant(options.storeTimes),
                                  Variant(false),
                                  Variant(false),
                                  Variant(std::uint32_t{options.threads})};
        if (setter->setProperties(names, values, static_cast<std::uint32_t>(std::size(values))) != kOk)
            return Error{ErrorCode::UnsupportedFeature, "7-Zip: properties"};
        return {};
    }
};

}

std::unique_ptr<Creator> makeSevenZipCreator(const char*) { return std::make_unique<SevenZipCreator>(); }

}
