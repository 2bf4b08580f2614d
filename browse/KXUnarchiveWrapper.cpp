#include "browse/KXUnarchiveWrapper.h"

#include "browse/SkeletonWriter.h"
#include "browse/TemporarySweep.h"
#include "files/KXFileWrapper.h"
#include "files/KXUtilities.h"
#include "platform/PathNames.h"
#include "platform/XADException.h"

#include <QCoreApplication>

#include <algorithm>
#include <unistd.h>

namespace vantoro {
namespace {

constexpr qint64 kMiB = qint64{1} << 20;
constexpr qsizetype kTellEvery = 4096; // placeholders

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(KXUnarchiveWrapper)
};

/// The archive's name less its last extension; never one that would stand for another folder.
QString skeletonName(const QString& archivePath)
{
    const QString name = lastPathComponent(archivePath);
    const QString stem = deletingPathExtension(name);
    return stem == QLatin1String(".") || stem == QLatin1String("..") ? name : stem;
}

ReadProblem problemOf(int error, const QString& name, qint64 size)
{
    const QString file = lastPathComponent(name);
    switch (error) {
    case 0:
        return {};
    case XADException::kBreak:
        return {ReadProblem::Kind::Stopped, {}};
    case XADException::kTooLarge:
        return {ReadProblem::Kind::TooLarge,
                Texts::tr("“%1” is too large to be shown: it has %2, and at most %3 are read for a preview.")
                    .arg(file, size > 0 ? KXUtilities::sizeFormatForNumber(size) : Texts::tr("more than that"),
                         KXUtilities::sizeFormatForNumber(KXUnarchiveWrapper::previewLimit()))};
    case XADException::kPasswordNeeded:
    case XADException::kWrongPassword:
        return {ReadProblem::Kind::WrongPassword,
                Texts::tr("“%1” is encrypted, and the password does not fit.").arg(file)};
    default:
        return {ReadProblem::Kind::Failed,
                Texts::tr("“%1” cannot be read: %2.").arg(file, XADException::describeXADError(error))};
    }
}

}

KXUnarchiveWrapper::KXUnarchiveWrapper(const QString& archivePath, const ListingWatch& watch)
    : m_archivePath(archivePath)
    , m_watch(watch)
    , m_archive(
          XADArchive::initWithFile(archivePath, &m_openingError, {.counted = watch.listed, .cancel = watch.cancel}))
    , m_contents(std::make_shared<ArchiveListing>(nullptr, QString()))
{
    if (m_archive)
        m_openingError = m_archive->listingError();
}

KXUnarchiveWrapper::~KXUnarchiveWrapper() = default;

std::unique_ptr<KXUnarchiveWrapper> KXUnarchiveWrapper::initWithPath(const QString& archivePath,
                                                                     const ListingWatch& watch)
{
    return std::unique_ptr<KXUnarchiveWrapper>(new KXUnarchiveWrapper(archivePath, watch));
}

bool KXUnarchiveWrapper::obtainArchiveContents()
{
    listContents();
    return buildSkeleton();
}

void KXUnarchiveWrapper::listContents()
{
    const QString temporary = KXFileWrapper::pathForTemporaryDirectory();
    TemporarySweep::putAside(temporary);
    const QString skeleton = appendingPathComponent(temporary, skeletonName(m_archivePath));
    KXFileWrapper::createDirectoriesForPath(skeleton);
    m_tmpArchivePath = skeleton;
    m_contents = std::make_shared<ArchiveListing>(m_archive ? m_archive->entryTable() : nullptr, skeleton);
    const QString top = m_archive ? m_archive->commonTopDirectory() : QString();
    if (!top.isEmpty())
        m_tmpArchivePath = appendingPathComponent(skeleton, top);
}

bool KXUnarchiveWrapper::buildSkeleton()
{
    m_unplaced.clear();
    SkeletonWriter writer(m_contents->skeletonFolder());
    const auto entries = m_contents->count();
    for (qsizetype i = 0; i < entries; ++i) {
        const auto name = m_contents->table()->name(i);
        const bool isMade = m_contents->itemAt(i)->isFolder() ? writer.makeFolder(name) : writer.makeFile(name);
        if (!isMade)
            m_unplaced.push_back(static_cast<quint32>(i));
        if (m_watch.placed && (i + 1) % kTellEvery == 0)
            m_watch.placed(i + 1, entries);
        if (m_watch.cancel.isCancelled())
            return false;
    }
    TemporarySweep::removeAside(KXFileWrapper::pathForTemporaryDirectory(), m_watch.cancel);
    return !m_watch.cancel.isCancelled();
}

std::optional<QByteArray> KXUnarchiveWrapper::itemDataForName(const QString& name, ReadProblem* problem)
{
    return dataOfEntry(indexOfName(name), problem);
}

std::optional<QByteArray> KXUnarchiveWrapper::itemDataForItem(const KXArchiveItem* item, ReadProblem* problem)
{
    return dataOfEntry(m_contents->indexOfItem(item), problem);
}

std::optional<QByteArray> KXUnarchiveWrapper::dataOfEntry(qsizetype index, ReadProblem* problem)
{
    if (problem)
        *problem = {};
    if (!m_archive)
        return std::nullopt;
    int error = 0;
    auto data = m_archive->contentsOfEntry(index, previewLimit(), &error);
    if (problem && error != 0) {
        const auto size = m_archive->dataForkParserDictionaryForEntry(index).fileSize;
        *problem = problemOf(error, m_archive->nameOfEntry(index), size.value_or(0));
    }
    return data;
}

qint64 KXUnarchiveWrapper::previewLimit()
{
    static const qint64 limit = [] {
        const qint64 memory = static_cast<qint64>(::sysconf(_SC_PHYS_PAGES)) * ::sysconf(_SC_PAGESIZE);
        return std::clamp(memory / 16, 16 * kMiB, 256 * kMiB);
    }();
    return limit;
}

bool KXUnarchiveWrapper::crypted() const { return m_archive && m_archive->isEncrypted(); }

bool KXUnarchiveWrapper::needsPasswordToList() const { return m_archive && m_archive->needsPasswordToList(); }

/// An entry too large to be held proves the password by its beginning.
bool KXUnarchiveWrapper::checkPassword(const KXArchiveItem* item)
{
    if (!item || item->itemPath().isNull())
        return false;
    ReadProblem problem;
    const auto data = itemDataForItem(item, &problem);
    if (problem.kind == ReadProblem::Kind::TooLarge)
        return m_archive->canReadEntry(m_contents->indexOfItem(item), previewLimit());
    return data && !data->isEmpty();
}

void KXUnarchiveWrapper::setPassword(const std::optional<Secret>& password)
{
    m_password = password;
    if (m_password && m_archive)
        m_archive->setPassword(*m_password);
}

void KXUnarchiveWrapper::stop()
{
    if (m_archive)
        m_archive->stop();
}

qint64 KXUnarchiveWrapper::getSizeForItem(const KXArchiveItem* item) const
{
    const auto index = indexOfName(item->itemName());
    return m_archive ? m_archive->dataForkParserDictionaryForEntry(index).fileSize.value_or(0) : 0;
}

QString KXUnarchiveWrapper::getModifiedDateForItem(const KXArchiveItem* item) const
{
    const auto index = indexOfName(item->itemName());
    return m_archive
        ? KXUtilities::stringLongFromDate(m_archive->dataForkParserDictionaryForEntry(index).lastModificationDate)
        : QString();
}

}
