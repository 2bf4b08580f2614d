#include "engine/backends/sevenzip_open.h"

#include "engine/backends/sevenzip_codecs.h"
#include "engine/backends/sevenzip_library.h"
#include "engine/io/processors.h"

#include <algorithm>
#include <array>

namespace vantoro::sevenzip {

namespace {

constexpr std::uint64_t kStubSearch = 1 << 22; // bytes in which a handler may look for its start
constexpr unsigned kMostAttempts = 1000; // a provider that answers for ever must not keep us

class OpenCallbacks final : public Object<OpenCallback, OpenVolumeCallback, TextPassword> {
public:
    explicit OpenCallbacks(Session& session) : m_session(session) {}

    HResult setTotal(const std::uint64_t*, const std::uint64_t*) override { return goOn(); }
    HResult setCompleted(const std::uint64_t*, const std::uint64_t*) override { return goOn(); }

    HResult property(std::uint32_t id, Variant* value) override
    {
        return callback([&] {
            if (id == property::kName) {
                value->type = VariantType::Text;
                value->text = makeBstr(m_session.context().name);
            }
            return kOk;
        });
    }

    HResult volumeStream(const wchar_t* name, InStream** stream) override
    {
        return callback([&] {
            *stream = nullptr;
            const auto source = m_session.volume(rawTextOf(name, std::char_traits<wchar_t>::length(name)));
            if (m_session.stopReason())
                return kAbort;
            if (!source)
                return kFalse;
            *stream = sourceStream(source, m_session.input()).detach();
            return kOk;
        });
    }

    HResult textPassword(Bstr* password) override
    {
        return callback([&] { return givePassword(m_session, password); });
    }

private:
    HResult goOn() const { return m_session.context().cancel.isCancelled() ? kAbort : kOk; }
    Session& m_session;
};

std::uint32_t errorFlags(InArchive& handler)
{
    Variant flags;
    return handler.archiveProperty(property::kErrorFlags, &flags) == kOk ? static_cast<std::uint32_t>(flags.number())
                                                                         : 0;
}

/// The handler did not open what a probe took for its format.
Error refusal(InArchive& handler, const Session& session)
{
    if (session.input()->failure())
        return *session.input()->failure();
    if (!session.missingVolume().empty())
        return {ErrorCode::MissingVolume, "7-Zip: a volume is missing"};
    const auto flags = errorFlags(handler);
    if (flags & error_flag::kUnexpectedEnd)
        return {ErrorCode::Truncated, "7-Zip: the archive ends too early"};
    if (flags & error_flag::kUnsupportedMethod)
        return {ErrorCode::UnsupportedMethod, "7-Zip: the headers are packed by an unknown method"};
    if (flags & error_flag::kUnsupportedFeature)
        return {ErrorCode::UnsupportedFeature, "7-Zip: a feature of the headers is not known"};
    return {ErrorCode::Corrupt, "7-Zip: the headers are damaged"};
}

/// All processors for the block decoders of 7z, xz and bzip2; handlers that know no threads refuse and go on.
void useAllProcessors(const Ref<InArchive>& handler)
{
    const auto setter = handler.query<PropertySetter>();
    if (!setter)
        return;
    const std::array<const wchar_t*, 1> names{L"mt"};
    const std::array<Variant, 1> values{Variant(processorCount())};
    setter->setProperties(names.data(), values.data(), 1);
}

}

Result<Secret> Session::password()
{
    m_asked = true;
    if (m_password)
        return *m_password;
    if (!m_context.passwords)
        return Error{ErrorCode::PasswordNeeded, "7-Zip: nobody to ask for the password"};
    m_password = TRY(m_context.passwords->password(m_attempts));
    ++m_attempts;
    return *m_password;
}

Result<void> Session::nextPassword()
{
    const Error wrong{ErrorCode::WrongPassword, "7-Zip: no password fits"};
    if (!m_context.passwords || m_attempts >= kMostAttempts)
        return wrong;
    auto next = m_context.passwords->password(m_attempts);
    ++m_attempts;
    if (!next)
        return next.error().code == ErrorCode::PasswordNeeded ? wrong : next.error();
    if (m_password && m_password->text() == next->text())
        return wrong; // an answer that does not change would be asked for without end
    m_password = *next;
    return {};
}

SourcePtr Session::volume(const std::string& name)
{
    if (!m_context.volumes || name.empty() || name.find_first_of(std::string_view("/\\\0", 3)) != std::string::npos)
        return nullptr;
    const auto known = std::find(m_volumeNames.begin(), m_volumeNames.end(), name);
    if (known != m_volumeNames.end())
        return m_volumes[static_cast<std::size_t>(known - m_volumeNames.begin())];
    auto source = m_context.volumes->openVolume(name);
    if (!source) {
        if (source.error().code != ErrorCode::MissingVolume)
            stop(source.error());
        else if (m_missingVolume.empty())
            m_missingVolume = name;
        return nullptr;
    }
    m_volumeNames.push_back(name);
    m_volumes.push_back(*source);
    return *source;
}

void Session::forgetVolumes()
{
    m_volumeNames.clear();
    m_volumes.clear();
    m_missingVolume.clear();
}

void Session::stop(const Error& error)
{
    if (!m_stop)
        m_stop = error;
}

HResult givePassword(Session& session, Bstr* password)
{
    *password = nullptr;
    const auto secret = session.password();
    if (!secret) {
        session.stop(secret.error());
        return kAbort;
    }
    *password = makeBstr(secret->text());
    return *password ? kOk : kOutOfMemory;
}

Error errorOf(HResult result, const Session& session)
{
    if (session.stopReason())
        return *session.stopReason();
    if (session.context().cancel.isCancelled())
        return {ErrorCode::Cancelled, "stopped"};
    if (session.input()->failure())
        return *session.input()->failure();
    switch (result) {
    case kFalse:
        return {ErrorCode::Corrupt, "7-Zip: the archive contradicts itself"};
    case kOutOfMemory:
        return {ErrorCode::OutOfMemory, "7-Zip: out of memory"};
    case kNotImplemented:
        return {ErrorCode::UnsupportedFeature, "7-Zip: the library does not offer this for the format"};
    default:
        return {ErrorCode::Internal, "7-Zip: the library failed"};
    }
}

Result<Opened> openHandler(const Format& format, const SourcePtr& source, Session& session)
{
    for (;;) {
        auto handler = TRY(createHandler<InArchive>(format.classId));
        addOwnCodecs(handler);
        useAllProcessors(handler);
        session.forgetAsked();
        session.forgetVolumes();
        const auto stream = sourceStream(source, session.input());
        const auto callbacks = makeObject<OpenCallbacks>(session);
        const std::uint64_t search = format.findsItself ? kStubSearch : 0;
        const auto result = handler->open(stream.raw(), &search, callbacks.raw());
        if (result == kOk) {
            if (session.wasAsked())
                session.provePassword();
            return Opened{std::move(handler), session.wasAsked()};
        }
        if (result != kFalse || session.stopReason() || session.context().cancel.isCancelled())
            return errorOf(result, session);
        const auto reason = refusal(*handler.raw(), session);
        handler->close();
        if (!session.wasAsked() || session.input()->failure() || reason.code == ErrorCode::MissingVolume)
            return reason;
        TRY(session.nextPassword()); // the headers decrypted to noise, which may look like any kind of damage
    }
}

}
