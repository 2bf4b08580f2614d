#pragma once

#include "platform/DefaultsStore.h"

#include <QMap>

#include <mutex>

namespace vantoro {

/// The standard defaults store for as long as it lives.
class MemoryDefaultsStore final : public DefaultsStore {
public:
    MemoryDefaultsStore() { setStandard(this); }
    ~MemoryDefaultsStore() override { setStandard(nullptr); }

    QVariant objectForKey(const QString& key) const override
    {
        const std::lock_guard lock(m_mutex);
        return m_values.value(key);
    }
    void setObject(const QString& key, const QVariant& value) override
    {
        const std::lock_guard lock(m_mutex);
        if (value.isValid())
            m_values[key] = value;
        else
            m_values.remove(key);
    }
    QStringList keys() const { return m_values.keys(); }

private:
    mutable std::mutex m_mutex;
    QMap<QString, QVariant> m_values;
};

}
