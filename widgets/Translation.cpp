#include "widgets/Translation.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QRegularExpression>
#include <QTranslator>

static void loadResources() { Q_INIT_RESOURCE(i18n); }

namespace vantoro {

void installTranslations(QCoreApplication& application)
{
    loadResources();
    auto* toolkit = new QTranslator(&application);
    if (toolkit->load(QLocale(), QStringLiteral("qtbase"), QStringLiteral("_"),
                      QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(toolkit);
    auto* own = new QTranslator(&application);
    const QString folder = QStringLiteral(":/i18n");
    if (own->load(QLocale(), QStringLiteral("vantoro"), QStringLiteral("_"), folder)
        || own->load(QStringLiteral("vantoro_en"), folder))
        QCoreApplication::installTranslator(own);
}

QString withoutMnemonic(QString text)
{
    static const QRegularExpression added(QStringLiteral("\\s*[(\\x{FF08}]&\\w[)\\x{FF09}]"));
    return text.remove(added).remove(QLatin1Char('&'));
}

}
