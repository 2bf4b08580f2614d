#include "platform/ArchiveWriting.h"

#include "platform/WriterMonitor.h"

#include <QFile>

#include <cstring>

namespace vantoro {
namespace {

QString reason(const Error& error)
{
    QString text = QString::fromLatin1(describe(error.code));
    if (error.osError != 0)
        text += QStringLiteral(" (%1)").arg(QString::fromLocal8Bit(std::strerror(error.osError)));
    return text;
}

class Listener final : public CreateDelegate {
public:
    Listener(const QString& archive, WriterMonitor* monitor) : m_archive(archive), m_monitor(monitor) {}

    void progressed(const CreateProgress& progress) override
    {
        if (!m_monitor)
            return;
        const auto share = [](std::uint64_t done, std::uint64_t of) {
            return of == 0 ? 0.0 : qMin(1.0, static_cast<double>(done) / static_cast<double>(of));
        };
        m_monitor->progressed(progress.bytesTotal > 0 ? share(progress.bytes, progress.bytesTotal)
                                                      : share(progress.entries, progress.entriesTotal),
                              QString::fromStdString(progress.currentName));
    }

    void sourceFailed(const CreateProblem& problem) override
    {
        qWarning("WAR: %s was left out of %s: %s", problem.path.c_str(), qUtf8Printable(m_archive),
                 qUtf8Printable(reason(problem.error)));
    }

private:
    const QString& m_archive;
    WriterMonitor* m_monitor;
};

}

bool writeArchive(ArchiveWriting writing, QString* error)
{
    QByteArray password = writing.password.toUtf8();
    writing.options.password
        = Secret(std::string_view(password.constData(), static_cast<std::size_t>(password.size())));
    wipe(password.data(), static_cast<std::size_t>(password.size()));
    if (writing.monitor)
        writing.options.cancel = writing.monitor->cancel;
    Listener listener(writing.path, writing.monitor);
    const auto report
        = createArchive(QFile::encodeName(writing.path).toStdString(), writing.inputs, writing.options, listener);
    if (report)
        return true;
    const QString why = reason(report.error());
    if (report.error().code != ErrorCode::Cancelled)
        qWarning("ERR: %s cannot be written: %s", qUtf8Printable(writing.path), qUtf8Printable(why));
    if (error)
        *error = why;
    return false;
}

}
