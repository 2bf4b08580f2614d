#include "engine/io/late_library.h"

#include <dlfcn.h>

namespace vantoro {

namespace {
std::atomic<bool> isMissed{false};
}

bool wasLibraryMissed() { return isMissed.load(); }

void noteMissedLibrary() { isMissed.store(true); }

bool LateLibrary::load()
{
    std::call_once(m_once, [this] { m_handle = ::dlopen(m_name, RTLD_LAZY | RTLD_LOCAL); });
    if (!m_handle)
        noteMissedLibrary();
    return m_handle != nullptr;
}

void* LateLibrary::find(const char* symbol) { return load() ? ::dlsym(m_handle, symbol) : nullptr; }

}
