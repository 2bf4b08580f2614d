#include "browse/ArchiveTexts.h"

#include "files/KXUtilities.h"

#include <QCoreApplication>

#include <limits>

namespace vantoro::texts {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(ArchiveTexts)
};

/// What translations count with.
int plural(qint64 number) { return static_cast<int>(qMin<qint64>(number, std::numeric_limits<int>::max())); }

QString encryption(const XADArchiveSummary& about)
{
    if (about.hasEncryptedNames)
        return Texts::tr("encrypted, names too");
    return about.isEncrypted ? Texts::tr("encrypted") : QString();
}

}

QString separator() { return QStringLiteral(" · "); }

QString entryCount(qsizetype entries) { return Texts::tr("%Ln entries", nullptr, plural(entries)); }

QString folderTotals(const FolderTotals& totals)
{
    QStringList parts{Texts::tr("%Ln files", nullptr, plural(totals.files))};
    if (totals.folders > 0)
        parts << Texts::tr("%Ln folders", nullptr, plural(totals.folders));
    parts << KXUtilities::sizeFormatForNumber(totals.bytes);
    return parts.join(QStringLiteral(", "));
}

QString summary(const XADArchiveSummary& about)
{
    QStringList parts{
        about.format, entryCount(about.entries),
        Texts::tr("%1, %2 packed")
            .arg(KXUtilities::sizeFormatForNumber(about.totalSize), KXUtilities::sizeFormatForNumber(about.packedSize)),
        encryption(about)};
    if (!about.nameEncoding.isEmpty())
        parts << Texts::tr("names in %1").arg(about.nameEncoding);
    if (about.volumes > 1)
        parts << Texts::tr("%Ln volumes", nullptr, plural(about.volumes));
    if (!about.damage.isEmpty())
        parts << Texts::tr("damaged: %1").arg(about.damage);
    parts.removeAll(QString());
    return parts.join(separator());
}

}
