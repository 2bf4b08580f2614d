#pragma once

#include <QString>

#include <cerrno>
#include <system_error>

namespace vantoro {

inline void clearError(QString* error)
{
    if (error)
        error->clear();
}

/// What `error` gets of a system call that failed.
inline void keepSystemError(QString* error, int number = errno)
{
    if (error)
        *error = qt_error_string(number);
}

/// True when there is none; else it is kept.
inline bool keepError(QString* error, const std::error_code& code)
{
    if (code && error)
        *error = QString::fromStdString(code.message());
    return !code;
}

}
