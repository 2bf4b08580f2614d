#include "compress/PackSizes.h"

#include "files/KXUtilities.h"
#include "platform/MainLoop.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThreadPool>

#include <atomic>

namespace vantoro {

/// What the threads and this object share; a new one makes all answers to the old one void.
struct PackSizes::Round {
    std::atomic<bool> stop{false};
};

PackSizes::PackSizes(QObject* parent) : QObject(parent), m_round(std::make_shared<Round>()) {}

PackSizes::~PackSizes() { m_round->stop = true; }

void PackSizes::forget()
{
    m_round->stop = true;
    m_round = std::make_shared<Round>();
    m_sizes.clear();
}

std::optional<qint64> PackSizes::sizeOf(const QString& path)
{
    const auto known = m_sizes.constFind(path);
    if (known != m_sizes.constEnd())
        return *known;
    m_sizes.insert(path, std::nullopt);
    start(path);
    return std::nullopt;
}

void PackSizes::start(const QString& path)
{
    QThreadPool::globalInstance()->start([path, round = m_round, owner = QPointer<PackSizes>(this)] {
        if (round->stop)
            return;
        const qint64 size = KXUtilities::isFolder(path) ? KXUtilities::folderSizeForPath(path, &round->stop)
                                                        : KXUtilities::fileSizeForPath(path);
        performOnMainThread(qApp, [path, size, round, owner] {
            if (round->stop || !owner)
                return;
            owner->m_sizes.insert(path, size);
            emit owner->sizeKnown(path, size);
        });
    });
}

}
