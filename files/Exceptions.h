#pragma once

#include <QString>

#include <stdexcept>

namespace vantoro {

/// A caller's mistake that has a name and a reason.
class NamedException : public std::invalid_argument {
public:
    NamedException(const QString& name, const QString& reason)
        : std::invalid_argument((name + QStringLiteral(": ") + reason).toStdString())
        , m_name(name)
        , m_reason(reason)
    {
    }
    const QString& name() const { return m_name; }
    const QString& reason() const { return m_reason; }

private:
    QString m_name;
    QString m_reason;
};

/// A caller's mistake that a condition in `source` found.
class AssertionFailure : public std::logic_error {
public:
    AssertionFailure(const QString& source, const QString& reason)
        : std::logic_error((source + QStringLiteral(": ") + reason).toStdString())
        , m_source(source)
        , m_reason(reason)
    {
    }
    const QString& source() const { return m_source; }
    const QString& reason() const { return m_reason; }

private:
    QString m_source;
    QString m_reason;
};

}
