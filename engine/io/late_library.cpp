#include "engine/io/late_library.h"

#include <dlfcn.h>

namespace vantoro {

bool LateLibrary::load()
{
    std::call_once(m_once, [this] { m_handle = ::dlopen(m_name, RTLD_LAZY | RTLD_LOCAL); });
    return m_handle != nullptr;
}

void* LateLibrary::find(const char* symbol) { return load() ? ::dlsym(m_handle, symbol) : nullptr; }

}
