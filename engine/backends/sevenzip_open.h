#pragma once

#include "engine/backends/sevenzip_streams.h"
#include "engine/formats/archive.h"

namespace vantoro::sevenzip {

/// What the adapter has to know of a format beyond what the library says.
struct Format {
    enum class Names : std::uint8_t {
        Unicode, ///< UTF-16 or UTF-8 by definition
        Utf8, ///< bytes that are UTF-8 by definition
        Bytes, ///< bytes in a charset that the archive does not declare
        Cab, ///< bytes too, some declared UTF-8, separated by backslashes
        Zip, ///< declared entry by entry
    };
    const char* id; ///< of the registry's row
    std::uint8_t classId; ///< number of the handler in the library
    Names names = Names::Unicode;
    PathStyle pathStyle = PathStyle::Unix;
    bool findsItself = false; ///< the handler searches behind a stub on its own, for its offsets count from the file
    bool isImage = false; ///< may hold one thing only, which is opened in its place: a partition of a disk
};

/// Answers of one archive to the library's questions while it is opened and read.
class Session {
public:
    explicit Session(const OpenContext& context)
        : m_context(context)
        , m_input(std::make_shared<InputState>(context.cancel))
    {
    }
    const OpenContext& context() const { return m_context; }
    const InputStatePtr& input() const { return m_input; }

    /// The password in use, asked for when there is none yet.
    Result<Secret> password();
    /// Asks for another one. WrongPassword when nobody can give one that was not tried already.
    Result<void> nextPassword();
    /// Whether the current password was asked for since `forgetAsked()`.
    bool wasAsked() const { return m_asked; }
    void forgetAsked() { m_asked = false; }
    bool isPasswordProven() const { return m_proven; }
    void provePassword() { m_proven = true; }

    /// A volume of the set; null when it is not there.
    SourcePtr volume(const std::string& name);
    void forgetVolumes();
    const std::vector<std::string>& volumeNames() const { return m_volumeNames; }
    const std::vector<SourcePtr>& volumeSources() const { return m_volumes; }
    const std::string& missingVolume() const { return m_missingVolume; }

    /// Why a callback of ours made the library stop, for the caller behind it.
    void stop(const Error& error);
    const std::optional<Error>& stopReason() const { return m_stop; }
    void clearStop() { m_stop.reset(); }

private:
    OpenContext m_context;
    InputStatePtr m_input;
    std::optional<Secret> m_password;
    unsigned m_attempts = 0;
    bool m_asked = false;
    bool m_proven = false;
    std::vector<std::string> m_volumeNames;
    std::vector<SourcePtr> m_volumes;
    std::string m_missingVolume;
    std::optional<Error> m_stop;
};

/// Gives the session's password to the library.
HResult givePassword(Session& session, Bstr* password);
/// What a failed call means, with what the session knows of it.
Error errorOf(HResult result, const Session& session);

struct Opened {
    Ref<InArchive> handler;
    bool hasEncryptedNames = false;
};
/// Opens with exactly this handler, asking for passwords until one fits.
Result<Opened> openHandler(const Format& format, const SourcePtr& source, Session& session);

}
