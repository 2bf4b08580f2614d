#include "platform/DefaultsStore.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QStandardPaths>

#include <mutex>

namespace vantoro {
namespace {

/// The file's own separators do not belong into a key: a key is one name, whatever it is made of.
QString storedKey(QString key)
{
    return key.replace(QLatin1Char('%'), QLatin1String("%25"))
        .replace(QLatin1Char('/'), QLatin1String("%2F"))
        .replace(QLatin1Char('\\'), QLatin1String("%5C"));
}

class FileDefaultsStore final : public DefaultsStore {
public:
    explicit FileDefaultsStore(const QString& path) : m_path(path) { open(); }

    QVariant objectForKey(const QString& key) const override
    {
        const std::lock_guard lock(m_mutex);
        refresh(); // another process may have written; costs a stat when it has not
        return m_settings->value(storedKey(key));
    }

    void setObject(const QString& key, const QVariant& value) override
    {
        const std::lock_guard lock(m_mutex);
        refresh();
        if (m_settings->value(storedKey(key)).toString() == value.toString() && isPlain(value)
            && m_settings->contains(storedKey(key)))
            return; // each launch writes what is there already
        if (value.isValid())
            m_settings->setValue(storedKey(key), value);
        else
            m_settings->remove(storedKey(key));
        m_settings->sync();
        if (m_settings->status() == QSettings::AccessError)
            qWarning("WAR: settings cannot be written: %s", qUtf8Printable(m_path));
    }

private:
    /// Stored as its own text.
    static bool isPlain(const QVariant& value)
    {
        const int type = value.typeId();
        return type == QMetaType::Bool || type == QMetaType::Int || type == QMetaType::LongLong
            || (type == QMetaType::QString && !value.toString().isEmpty());
    }

    void open() const
    {
        m_settings = std::make_unique<QSettings>(m_path, QSettings::IniFormat);
        m_settings->setAtomicSyncRequired(true);
    }

    void refresh() const
    {
        m_settings->sync();
        if (m_settings->status() != QSettings::FormatError)
            return;
        m_settings.reset();
        setAside();
        open();
        m_settings->sync();
    }

    void setAside() const
    {
        QString aside = m_path + QStringLiteral(".damaged");
        for (int n = 1; QFile::exists(aside); ++n)
            aside = m_path + QStringLiteral(".damaged-%1").arg(n);
        if (QFile::rename(m_path, aside))
            qWarning("WAR: damaged settings were set aside as %s", qUtf8Printable(aside));
        else
            qWarning("WAR: damaged settings cannot be set aside: %s", qUtf8Printable(m_path));
    }

    const QString m_path;
    mutable std::mutex m_mutex;
    mutable std::unique_ptr<QSettings> m_settings;
};

DefaultsStore* g_replacement = nullptr; // set before threads start

}

bool DefaultsStore::boolForKey(const QString& key) const
{
    const QVariant value = objectForKey(key);
    if (value.typeId() == QMetaType::Bool)
        return value.toBool();
    const QString text = value.toString().trimmed();
    if (text.isEmpty())
        return false;
    if (QStringLiteral("yYtT").contains(text.front()))
        return true;
    return integerForKey(key) != 0;
}

qint64 DefaultsStore::integerForKey(const QString& key) const
{
    const QVariant value = objectForKey(key);
    const QString text = value.toString().trimmed();
    if (text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0
        || text.compare(QLatin1String("yes"), Qt::CaseInsensitive) == 0)
        return 1;
    qsizetype length = text.startsWith(QLatin1Char('-')) || text.startsWith(QLatin1Char('+')) ? 1 : 0;
    while (length < text.size() && text.at(length).isDigit())
        ++length;
    return text.left(length).toLongLong();
}

QString DefaultsStore::stringForKey(const QString& key) const
{
    const QVariant value = objectForKey(key);
    return value.isValid() ? value.toString() : QString();
}

QStringList DefaultsStore::stringArrayForKey(const QString& key) const { return objectForKey(key).toStringList(); }

DefaultsStore& DefaultsStore::standard()
{
    if (g_replacement)
        return *g_replacement;
    static const std::unique_ptr<DefaultsStore> store
        = makeFileDefaultsStore(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
                                + QStringLiteral("/vantoro/vantoro.conf"));
    return *store;
}

void DefaultsStore::setStandard(DefaultsStore* store) { g_replacement = store; }

std::unique_ptr<DefaultsStore> makeFileDefaultsStore(const QString& path)
{
    return std::make_unique<FileDefaultsStore>(path);
}

}
