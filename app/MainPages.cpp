#include "app/MainPages.h"

#include "widgets/Icons.h"

#include <QCoreApplication>

namespace vantoro {

QString pageTitle(int index)
{
    return index == kCompressPage ? QCoreApplication::translate("MainPages", "Compress")
                                  : QCoreApplication::translate("MainPages", "Extract");
}

QIcon pageImage(int index)
{
    return icons::icon(index == kCompressPage ? QStringLiteral("compress") : QStringLiteral("extract"));
}

QIcon pageRowImage(int index)
{
    return icons::icon(index == kCompressPage ? QStringLiteral("compress-1") : QStringLiteral("extract-1"));
}

}
