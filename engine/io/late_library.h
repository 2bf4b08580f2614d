#pragma once

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <mutex>

namespace vantoro {

/// Whether anything has asked for a library that could not be loaded: what was done without it may be second best.
bool wasLibraryMissed();
void noteMissedLibrary();

/// A shared library that is loaded when something in it is called for the first time, and not at every start: most
/// runs need none of the large ones. Where files can no longer be opened by then, load() goes before.
class LateLibrary {
public:
    /// `name` as the dynamic loader knows it: "libcrypto.so.3".
    constexpr explicit LateLibrary(const char* name) : m_name(name) {}
    LateLibrary(const LateLibrary&) = delete;
    LateLibrary& operator=(const LateLibrary&) = delete;

    const char* name() const { return m_name; }
    /// False when it is not installed or cannot be loaded any more.
    bool load();
    void* find(const char* symbol);

private:
    const char* m_name;
    std::once_flag m_once;
    void* m_handle = nullptr;
};

/// One function of a late library. Its caller has seen to it that the library loads; a function that is not there after
/// that ends the program, as it would at the start.
template <class F> class LateSymbol {
public:
    constexpr LateSymbol(LateLibrary& library, const char* name) : m_library(library), m_name(name) {}
    LateSymbol(const LateSymbol&) = delete;
    LateSymbol& operator=(const LateSymbol&) = delete;

    F& function() const
    {
        auto* const known = m_address.load(std::memory_order_relaxed);
        return known ? *known : find();
    }

private:
    F& find() const
    {
        auto* const found = reinterpret_cast<F*>(m_library.find(m_name));
        if (!found) {
            std::fprintf(stderr, "%s: no %s\n", m_library.name(), m_name);
            std::abort();
        }
        m_address.store(found, std::memory_order_relaxed);
        return *found;
    }

    LateLibrary& m_library;
    const char* m_name;
    mutable std::atomic<F*> m_address{nullptr};
};

/// Stands for a function of type `F` under the function's own name.
template <class F> class LateFunction;
template <class R, class... Parameters> class LateFunction<R(Parameters...)> : public LateSymbol<R(Parameters...)> {
public:
    using LateSymbol<R(Parameters...)>::LateSymbol;
    R operator()(Parameters... parameters) const { return this->function()(parameters...); }
};
template <class R, class... Parameters>
class LateFunction<R(Parameters..., ...)> : public LateSymbol<R(Parameters..., ...)> {
public:
    using LateSymbol<R(Parameters..., ...)>::LateSymbol;
    template <class... More> R operator()(Parameters... parameters, More... more) const
    {
        return this->function()(parameters..., more...);
    }
};

}
