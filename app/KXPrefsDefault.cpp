#include "app/KXPrefsDefault.h"

#include "platform/DefaultsStore.h"

#include <QDir>
#include <QStandardPaths>

namespace vantoro {
namespace {
const QString kLastDestination = QStringLiteral("kLastDestinationMAX");
const QString kIsOperation = QStringLiteral("kIsOperation");
const QString kChangeViewMode = QStringLiteral("kChangeViewMode");
const QString kListArchive = QStringLiteral("quicklookarchives");
const QString kCreateFolder = QStringLiteral("kCreateFolder");
const QString kModifiedDate = QStringLiteral("kFolderModifiedDate");
const QString kChangeDate = QStringLiteral("kChangeDate");
const QString kExtractToCurrent = QStringLiteral("kExtractToCurrent");
const QString kRemoveArchive = QStringLiteral("kRemoveArchive");
const QString kOpenFolder = QStringLiteral("kOpenFolder");
const QString kAutoThreshold = QStringLiteral("kAutoThreshold");
const QString kExtractToFolder = QStringLiteral("kExtractDestion");
const QString kFileEncode = QStringLiteral("kEncoding");
const QString kDesktop = QStringLiteral("kDesktop");

bool flag(const QString& key) { return DefaultsStore::standard().boolForKey(key); }
qint64 number(const QString& key) { return DefaultsStore::standard().integerForKey(key); }
QString text(const QString& key) { return DefaultsStore::standard().stringForKey(key); }
void store(const QString& key, const QVariant& value) { DefaultsStore::standard().setObject(key, value); }
void storeText(const QString& key, const QString& value) { store(key, value.isNull() ? QVariant() : QVariant(value)); }
}

QString KXPrefsDefault::lastDestination() { return text(kLastDestination); }
void KXPrefsDefault::setLastDestination(const QString& path) { storeText(kLastDestination, path); }
bool KXPrefsDefault::isOperation() { return flag(kIsOperation); }
void KXPrefsDefault::setIsOperation(bool value) { store(kIsOperation, value); }
bool KXPrefsDefault::changeViewMode() { return flag(kChangeViewMode); }
void KXPrefsDefault::setChangeViewMode(bool value) { store(kChangeViewMode, value); }
bool KXPrefsDefault::listArchive() { return flag(kListArchive); }
void KXPrefsDefault::setListArchive(bool value) { store(kListArchive, value); }
qint64 KXPrefsDefault::creatFolder() { return number(kCreateFolder); }
void KXPrefsDefault::setCreateFolder(qint64 value) { store(kCreateFolder, value); }
qint64 KXPrefsDefault::modifiedDate() { return number(kModifiedDate); }
void KXPrefsDefault::setModifiedDate(qint64 value) { store(kModifiedDate, value); }
bool KXPrefsDefault::changeDate() { return flag(kChangeDate); }
void KXPrefsDefault::setChangeDate(bool value) { store(kChangeDate, value); }
bool KXPrefsDefault::extractToCurrent() { return flag(kExtractToCurrent); }
void KXPrefsDefault::setExtractToCurrent(bool value) { store(kExtractToCurrent, value); }
bool KXPrefsDefault::removeArchive() { return flag(kRemoveArchive); }
void KXPrefsDefault::setRemoveArchive(bool value) { store(kRemoveArchive, value); }
bool KXPrefsDefault::openFolder() { return flag(kOpenFolder); }
void KXPrefsDefault::setOpenFolder(bool value) { store(kOpenFolder, value); }
qint64 KXPrefsDefault::autoThreshold() { return number(kAutoThreshold); }
void KXPrefsDefault::setAutoThreshold(qint64 value) { store(kAutoThreshold, value); }
qint64 KXPrefsDefault::extractToFolder() { return number(kExtractToFolder); }
void KXPrefsDefault::setExtractToFolder(qint64 value) { store(kExtractToFolder, value); }
qint64 KXPrefsDefault::fileEncode() { return number(kFileEncode); }
void KXPrefsDefault::setFileEncode(qint64 value) { store(kFileEncode, value); }
QString KXPrefsDefault::desktop() { return text(kDesktop); }
void KXPrefsDefault::setDesktop(const QString& path) { storeText(kDesktop, path); }

QString KXPrefsDefault::desktopDirectory()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    return folder.isEmpty() ? QDir::home().filePath(QStringLiteral("Desktop")) : folder;
}

}
