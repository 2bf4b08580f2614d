#include "browse/PdfView.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>

namespace vantoro {
namespace {

/// In the build tree beside the program; in an installation, wherever that was moved to, beside the worker.
QString pluginPath()
{
    const QDir here(QCoreApplication::applicationDirPath());
    for (const auto* folder : {".", VANTORO_LIBEXEC_FROM_BIN}) {
        const QString path = here.filePath(QLatin1String(folder) + QStringLiteral("/vantoro-pdf.so"));
        if (QFileInfo::exists(path))
            return path;
    }
    return {};
}

}

std::unique_ptr<PdfView> makePdfView(QWidget* parent)
{
    QLibrary library(pluginPath());
    using Maker = PdfView* (*)(QWidget*);
    const auto make = reinterpret_cast<Maker>(library.resolve(VANTORO_PDF_MAKER));
    if (!make) {
        qWarning().noquote() << "ERR: no PDF documents can be shown:" << library.errorString();
        return nullptr;
    }
    return std::unique_ptr<PdfView>(make(parent));
}

}
