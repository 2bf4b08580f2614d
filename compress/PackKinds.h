#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace vantoro {

/// A kind of archive as the kind menu offers it.
struct PackKind {
    QString title; ///< the kind itself, and the ending of the archive's name: "tar.gz"
    QString description; ///< in the user's language
    bool singleFile = false; ///< packs one plain file and nothing else
};

/// In the order of the menu. A format that several endings stand for is there once.
const std::vector<PackKind>& packKinds();
/// Whether the kind can hold such a list.
bool canPack(const PackKind& kind, const QStringList& files);

/// What of the page is to be seen and to be used; depends on nothing but the list and the kind.
struct PackPageState {
    bool showsList = false; ///< and the tool box below; otherwise the drop area
    bool enablesControls = false; ///< start, clear and the kind menu
    bool showsPassword = false;

    static PackPageState of(bool listIsEmpty, bool kindTakesPassword);
    bool operator==(const PackPageState&) const = default;
};

}
