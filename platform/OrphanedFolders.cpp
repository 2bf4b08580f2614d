#include "platform/OrphanedFolders.h"

#include "platform/DefaultsStore.h"
#include "platform/XADPlatform.h"

#include "engine/extract.h"

#include <QFile>

#include <mutex>

namespace vantoro {
namespace {

const QString kOrphanedTempDirectories = QStringLiteral("orphanedTempDirectories");
std::mutex g_mutex; // the list is read, changed and written back

void store(const QStringList& paths) { DefaultsStore::standard().setObject(kOrphanedTempDirectories, paths); }

class EngineList final : public OrphanList {
public:
    void remember(const std::string& path) override { OrphanedFolders::remember(decoded(path)); }
    void forget(const std::string& path) override { OrphanedFolders::forget(decoded(path)); }

private:
    static QString decoded(const std::string& path) { return QFile::decodeName(QByteArray::fromStdString(path)); }
};

}

QStringList OrphanedFolders::paths() { return DefaultsStore::standard().stringArrayForKey(kOrphanedTempDirectories); }

void OrphanedFolders::remember(const QString& path)
{
    const std::lock_guard lock(g_mutex);
    QStringList folders = paths();
    if (!folders.contains(path))
        store(folders << path);
}

void OrphanedFolders::forget(const QString& path)
{
    const std::lock_guard lock(g_mutex);
    QStringList folders = paths();
    if (folders.removeAll(path) > 0)
        store(folders);
}

void OrphanedFolders::sweep()
{
    const std::lock_guard lock(g_mutex);
    if (const QStringList folders = paths(); !folders.isEmpty())
        store(XADPlatform::removeOrphans(folders));
}

void OrphanedFolders::keepForEngine()
{
    static EngineList list;
    setOrphanList(&list);
}

}
