#pragma once

#include "engine/io/result.h"

#include <QString>

namespace vantoro {

/// The engine's failures as the integers that the application compares. 0 is success.
class XADException {
public:
    static constexpr int kBreak = 13; ///< the user stopped; ends a job without a message
    static constexpr int kPasswordNeeded = 14;
    static constexpr int kWrongPassword = 15;
    static constexpr int kTooLarge = 17; ///< a limit that the caller set was passed

    static int codeForError(const Error& error);
    /// A plain sentence, translated; empty for 0.
    static QString describeXADError(int code);
};

}
