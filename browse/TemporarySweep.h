#pragma once

#include "engine/io/cancel.h"

#include <QString>

namespace vantoro {

/// Clears the folder for skeletons: every folder in it goes, with all that it holds, but those whose name contains
/// "winmail". Plain files stay. Failures are ignored.
class TemporarySweep {
public:
    /// Puts the old folders out of the way, which is done at once however much they hold.
    static void putAside(const QString& folder);
    /// Removes what was put aside, by this run or one before; ends early once it is cancelled.
    static void removeAside(const QString& folder, const CancelToken& cancel = {});
};

}
