#include "engine/backends/sevenzip_library.h"

#include "engine/backends/library_locale.h"
#include "engine/io/late_library.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <ctime>

#include <dlfcn.h>

namespace vantoro {

namespace sevenzip {

namespace {

// p7zip-full of Debian 12, 7zip of Debian 13 and Ubuntu 24.04, Fedora, Arch, an installation by hand.
constexpr std::array<const char*, 8> kCandidates{
    "/usr/lib/p7zip/7z.so",     "/usr/lib/7zip/7z.so",       "/usr/lib64/7zip/7z.so",      "/usr/libexec/7zip/7z.so",
    "/usr/libexec/p7zip/7z.so", "/usr/local/lib/7zip/7z.so", "/usr/local/lib/p7zip/7z.so", "/opt/7zip/7z.so",
};

using ModuleProperty = HResult (*)(std::uint32_t id, Variant* value);
constexpr std::uint32_t kInterfaceType = 0; // 0: no virtual destructor in the tables
constexpr std::uint32_t kVersion = 1;

template <class Function> Function symbol(void* handle, const char* name)
{
    return reinterpret_cast<Function>(::dlsym(handle, name));
}

Result<Library> findLibrary()
{
    if (const char* chosen = std::getenv("VANTORO_7Z_LIBRARY"); chosen && *chosen)
        return loadLibrary(chosen);
    Error reason{ErrorCode::UnsupportedFeature, "7-Zip: the plug-in library 7z.so is not installed"};
    for (const char* path : kCandidates) {
        auto found = loadLibrary(path);
        if (found)
            return found;
        if (found.error().osError == 0)
            reason = found.error(); // it is there, but cannot be used
    }
    noteMissedLibrary();
    return reason;
}

}

Result<Library> loadLibrary(const std::string& path)
{
    useUtf8ForLibraries();
    ::tzset(); // the library turns local times into UTC: the zone's file must have been read before a sandbox
    void* handle = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle)
        return Error{ErrorCode::UnsupportedFeature, "7-Zip: the plug-in library cannot be loaded", ENOENT};
    const auto moduleProperty = symbol<ModuleProperty>(handle, "GetModuleProp");
    Library library{symbol<CreateObject>(handle, "CreateObject")};
    if (!library.createObject)
        return Error{ErrorCode::UnsupportedFeature, "7-Zip: the file is not its plug-in library"};
    Variant type, version;
    if (!moduleProperty || moduleProperty(kInterfaceType, &type) != kOk || type.number(1) != 0)
        return Error{ErrorCode::UnsupportedFeature, "7-Zip: the plug-in library is older than 23.01"};
    if (moduleProperty(kVersion, &version) == kOk)
        library.version = static_cast<std::uint32_t>(version.number());
    return library;
}

Result<Library> library()
{
    static const Result<Library> loaded = findLibrary();
    return loaded;
}

}

Result<void> preloadSevenZip()
{
    const auto loaded = sevenzip::library();
    if (!loaded)
        return loaded.error();
    return {};
}

}
