#include "files/FileFormats.h"

#include "platform/PathNames.h"

namespace vantoro {

const QStringList& fileFormatArray()
{
    static const QStringList extensions = QStringLiteral("z01 zip rar r00 r01 r02 r03 r04 r05 r06 r07 r08 7z lha lzh "
                                                         "zipx hqx bin macbin sit sitx as gz gzip tgz tar-gz "
                                                         "bz2 bzip2 bz tbz2 tbz jar xz txz tar iso cdi nrg mdf gtar z "
                                                         "taz tar-z lzma xar ace arj pak arc spk zoo lbr "
                                                         "lqr lzr cab rpm deb alz dd cpt pit now sea exe msi cpio cpgz "
                                                         "pax warc ha adf adz dms f lzx dcs pkd xms zom pp "
                                                         "nsa sar pdf swf docx app apk cbz cbr nds pkg a pma udf tlz")
                                              .split(QLatin1Char(' '));
    return extensions;
}

bool hasArchiveExtension(const QString& path) { return fileFormatArray().contains(pathExtension(path)); }

}
