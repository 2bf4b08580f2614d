#pragma once

#include <QtGlobal>

#include <memory>
#include <vector>

namespace vantoro {

using EntryIndices = std::vector<quint64>;

/// The list of entries that the next extraction takes, one for the whole program; empty means all. The controller sets
/// it, jobs read it. Main thread.
class SharedSelection {
public:
    static const EntryIndices& indices() { return *list(); }
    /// The list itself, not a copy: what its owner changes later shows here.
    static void set(std::shared_ptr<const EntryIndices> indices) { list() = std::move(indices); }
    static void clear() { list() = std::make_shared<const EntryIndices>(); }

private:
    static std::shared_ptr<const EntryIndices>& list()
    {
        static auto current = std::make_shared<const EntryIndices>();
        return current;
    }
};

}
