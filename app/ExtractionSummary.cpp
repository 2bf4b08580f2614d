#include "app/ExtractionSummary.h"

#include "platform/PathNames.h"

#include <QCoreApplication>

#include <algorithm>

namespace vantoro {
namespace {

constexpr int kMostLines = 5; // of results in a notification

class Texts {
    Q_DECLARE_TR_FUNCTIONS(ExtractionSummary)
};

QString titleFor(const std::vector<const ExtractionOutcome*>& done, const std::vector<const ExtractionOutcome*>& failed)
{
    if (failed.empty() && done.size() == 1)
        return Texts::tr("\"%1\" was extracted").arg(done.front()->archive);
    if (failed.empty())
        return Texts::tr("%n archive(s) were extracted", nullptr, static_cast<int>(done.size()));
    if (done.empty() && failed.size() == 1)
        return Texts::tr("\"%1\" could not be extracted").arg(failed.front()->archive);
    return Texts::tr("%1 of %2 archives could not be extracted").arg(failed.size()).arg(done.size() + failed.size());
}

QString bodyFor(const std::vector<const ExtractionOutcome*>& done)
{
    QStringList lines;
    for (const auto* outcome : done) {
        if (lines.size() == kMostLines) {
            lines += Texts::tr("and %n more", nullptr, static_cast<int>(done.size()) - kMostLines);
            break;
        }
        const QString name = lastPathComponent(outcome->item);
        const QString folder = deletingLastPathComponent(outcome->item);
        lines += Texts::tr("\"%1\" in %2").arg(name, folder);
    }
    qsizetype problems = 0;
    for (const auto* outcome : done)
        problems += outcome->problems.size();
    if (problems > 0)
        lines += Texts::tr("%n entry(s) were damaged or refused", nullptr, static_cast<int>(problems));
    return lines.join(QLatin1Char('\n'));
}

QString reportFor(const std::vector<ExtractionOutcome>& outcomes)
{
    QStringList lines;
    for (const auto& outcome : outcomes) {
        QStringList own = outcome.problems + outcome.notes;
        if (!outcome.succeeded && !outcome.cancelled && !outcome.error.isEmpty())
            own += outcome.error;
        if (own.isEmpty())
            continue;
        lines += outcome.archive + QLatin1Char(':');
        lines += own;
        lines += QString();
    }
    return lines.join(QLatin1Char('\n'));
}

}

std::optional<ExtractionSummary> summarize(const std::vector<ExtractionOutcome>& outcomes)
{
    std::vector<const ExtractionOutcome*> done;
    std::vector<const ExtractionOutcome*> failed;
    for (const auto& outcome : outcomes) {
        if (outcome.succeeded)
            done.push_back(&outcome);
        else if (!outcome.cancelled)
            failed.push_back(&outcome);
    }
    if (done.empty() && failed.empty())
        return std::nullopt;
    return ExtractionSummary{.title = titleFor(done, failed),
                             .body = done.empty() ? failed.front()->error : bodyFor(done),
                             .item = done.empty() ? QString() : done.back()->item,
                             .report = reportFor(outcomes)};
}

}
