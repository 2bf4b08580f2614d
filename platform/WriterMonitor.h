#pragma once

#include "engine/io/cancel.h"

#include <QString>

namespace vantoro {

/// Watches archives being written, and may stop that. A writer that is stopped leaves nothing behind.
class WriterMonitor {
public:
    virtual ~WriterMonitor() = default;
    /// `fraction` (0 to 1) is of the archive in work; `name` is the entry's name in it. On the writer's thread, at
    /// most 20 times a second.
    virtual void progressed(double fraction, const QString& name) = 0;

    CancelToken cancel;
};

}
