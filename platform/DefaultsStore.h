#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

namespace vantoro {

/// The per-user defaults: values under keys that outlive the process. Safe from every thread. A write is on disk when
/// it returns, and a read sees what another process wrote before it.
class DefaultsStore {
public:
    DefaultsStore() = default;
    DefaultsStore(const DefaultsStore&) = delete;
    DefaultsStore& operator=(const DefaultsStore&) = delete;
    virtual ~DefaultsStore() = default;

    /// Invalid when nothing is stored.
    virtual QVariant objectForKey(const QString& key) const = 0;
    /// An invalid value removes the key.
    virtual void setObject(const QString& key, const QVariant& value) = 0;

    /// "yes", "true", "1", any number but 0: true. Everything else, and a missing key: false.
    bool boolForKey(const QString& key) const;
    /// The number that the stored text begins with; 1 for true; 0 otherwise.
    qint64 integerForKey(const QString& key) const;
    /// Null when nothing is stored.
    QString stringForKey(const QString& key) const;
    QStringList stringArrayForKey(const QString& key) const;
    void removeObjectForKey(const QString& key) { setObject(key, {}); }

    /// The store that the whole program uses: the user's file unless a test has set another.
    static DefaultsStore& standard();
    /// `store` outlives its use; null goes back to the user's file.
    static void setStandard(DefaultsStore* store);
};

/// An INI file. One that cannot be parsed is set aside under a new name, and an empty one takes its place.
std::unique_ptr<DefaultsStore> makeFileDefaultsStore(const QString& path);

}
