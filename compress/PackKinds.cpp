#include "compress/PackKinds.h"

#include "engine/create.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>

namespace vantoro {
namespace {

/// The engine's names of formats, for the translators.
[[maybe_unused]] constexpr const char* kDescriptions[] = {
    QT_TRANSLATE_NOOP("PackKinds", "Zip archive"),
    QT_TRANSLATE_NOOP("PackKinds", "7-Zip archive"),
    QT_TRANSLATE_NOOP("PackKinds", "Gzip-compressed tar"),
    QT_TRANSLATE_NOOP("PackKinds", "XZ-compressed tar"),
    QT_TRANSLATE_NOOP("PackKinds", "Zstandard-compressed tar"),
    QT_TRANSLATE_NOOP("PackKinds", "Bzip2-compressed tar"),
    QT_TRANSLATE_NOOP("PackKinds", "Tar archive"),
    QT_TRANSLATE_NOOP("PackKinds", "LZ4-compressed tar"),
    QT_TRANSLATE_NOOP("PackKinds", "Cpio archive"),
    QT_TRANSLATE_NOOP("PackKinds", "CD image (ISO 9660)"),
    QT_TRANSLATE_NOOP("PackKinds", "Xar archive"),
    QT_TRANSLATE_NOOP("PackKinds", "Ar archive"),
    QT_TRANSLATE_NOOP("PackKinds", "Java archive"),
    QT_TRANSLATE_NOOP("PackKinds", "Comic book archive"),
    QT_TRANSLATE_NOOP("PackKinds", "Gzip-compressed file"),
    QT_TRANSLATE_NOOP("PackKinds", "XZ-compressed file"),
    QT_TRANSLATE_NOOP("PackKinds", "Zstandard-compressed file"),
    QT_TRANSLATE_NOOP("PackKinds", "Bzip2-compressed file"),
    QT_TRANSLATE_NOOP("PackKinds", "LZ4-compressed file"),
};

std::vector<PackKind> buildKinds()
{
    std::vector<PackKind> kinds;
    for (const auto& kind : creatableKinds()) {
        const QString description = QCoreApplication::translate("PackKinds", kind.displayName.c_str());
        const bool isAlias = std::any_of(kinds.begin(), kinds.end(),
                                         [&](const PackKind& other) { return other.description == description; });
        if (!isAlias)
            kinds.push_back({QString::fromStdString(kind.kind), description, kind.singleFile});
    }
    return kinds;
}

}

const std::vector<PackKind>& packKinds()
{
    static const std::vector<PackKind> kinds = buildKinds();
    return kinds;
}

bool canPack(const PackKind& kind, const QStringList& files)
{
    return !kind.singleFile || (files.size() == 1 && QFileInfo(files.constFirst()).isFile());
}

PackPageState PackPageState::of(bool listIsEmpty, bool kindTakesPassword)
{
    return {
        .showsList = !listIsEmpty, .enablesControls = !listIsEmpty, .showsPassword = !listIsEmpty && kindTakesPassword};
}

}
