#pragma once

#include "engine/backends/sevenzip_com.h"
#include "engine/io/result.h"

#include <string>

namespace vantoro {

/// 7-Zip's plug-in library, loaded once and never unloaded. VANTORO_7Z_LIBRARY names another file than the usual ones.
/// Call it before a sandbox takes the file system away; afterwards it needs no file. UnsupportedFeature when no usable
/// library is there; the reason stays the same until the process ends.
Result<void> preloadSevenZip();

namespace sevenzip {

/// A new handler for the format; loads the library at first need. `Interface` is InArchive or OutArchive.
template <class Interface> Result<Ref<Interface>> createHandler(std::uint8_t formatId);

/// Loads `path` and checks that its tables have the layout known here. For preloadSevenZip() and tests.
using CreateObject = HResult (*)(const Guid* classId, const Guid* interfaceId, void** out);
struct Library {
    CreateObject createObject = nullptr;
    std::uint32_t version = 0; ///< major << 16 | minor
};
Result<Library> loadLibrary(const std::string& path);
/// The process's library; the same answer every time.
Result<Library> library();

template <class Interface> Result<Ref<Interface>> createHandler(std::uint8_t formatId)
{
    const auto loaded = library();
    if (!loaded)
        return loaded.error();
    const auto classId = formatClass(formatId);
    void* object = nullptr;
    if (loaded->createObject(&classId, &Interface::kId, &object) != kOk || !object)
        return Error{ErrorCode::UnsupportedFeature, "7-Zip: this build of the library lacks the format"};
    return Ref<Interface>::adopt(static_cast<Interface*>(object));
}

}

}
