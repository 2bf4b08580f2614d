#include "browse/KXArchiveItem.h"

#include "platform/PathNames.h"

namespace vantoro {

struct KXArchiveItem::Kept {
    QString path, name; // of items that stand for themselves
    std::optional<QByteArray> data;
    QIcon image;
};

std::unique_ptr<KXArchiveItem> KXArchiveItem::initWithPath(const QString& path, const QString& name, bool isFolder)
{
    auto item = std::unique_ptr<KXArchiveItem>(new KXArchiveItem);
    item->kept().path = path;
    item->kept().name = name;
    item->m_isFolder = isFolder;
    return item;
}

KXArchiveItem::KXArchiveItem(const ItemNames& names, quint32 number, bool isFolder)
    : m_names(&names)
    , m_number(number)
    , m_isFolder(isFolder)
{
}

KXArchiveItem::KXArchiveItem(KXArchiveItem&&) noexcept = default;
KXArchiveItem& KXArchiveItem::operator=(KXArchiveItem&&) noexcept = default;
KXArchiveItem::~KXArchiveItem() = default;

QString KXArchiveItem::itemPath() const
{
    if (!m_names)
        return m_kept->path;
    const auto relative = m_names->relativePath(m_number);
    const QString folder = m_names->skeletonFolder();
    return relative.empty() ? folder : appendingPathComponent(folder, QString::fromUtf8(relative));
}

QString KXArchiveItem::itemName() const { return m_names ? m_names->itemName(m_number) : m_kept->name; }

QString KXArchiveItem::fileName() const
{
    if (!m_names)
        return lastPathComponent(m_kept->path);
    const auto relative = m_names->relativePath(m_number);
    if (relative.empty())
        return lastPathComponent(m_names->skeletonFolder());
    return QString::fromUtf8(relative.substr(relative.rfind('/') + 1));
}

const std::optional<QByteArray>& KXArchiveItem::data() const
{
    static const std::optional<QByteArray> nothing;
    return m_kept ? m_kept->data : nothing;
}

void KXArchiveItem::setData(std::optional<QByteArray> data)
{
    if (data || m_kept)
        kept().data = std::move(data);
}

QIcon KXArchiveItem::itemImage() const { return m_kept ? m_kept->image : QIcon(); }

void KXArchiveItem::setItemImage(const QIcon& image) { kept().image = image; }

KXArchiveItem::Kept& KXArchiveItem::kept()
{
    if (!m_kept)
        m_kept = std::make_unique<Kept>();
    return *m_kept;
}

}
