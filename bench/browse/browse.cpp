// Opens one archive as the contents browser does and prints what each step took: one line of JSON.
#include "browse/ArchiveTree.h"
#include "browse/KXUnarchiveWrapper.h"
#include "files/KXFileWrapper.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <chrono>
#include <cstdio>
#include <sys/resource.h>

using namespace vantoro;

namespace {

double seconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

double processorTime(int who)
{
    rusage usage = {};
    getrusage(who, &usage);
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// Of a line like "VmHWM:  1234 kB" in /proc/…/status, in MiB.
double memory(const QString& process, const char* key)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(process));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = status.readAll();
    return text.mid(text.indexOf(key)).simplified().split(' ').at(1).toDouble() / 1024;
}

class Clock {
public:
    void print(const char* step)
    {
        const auto now = std::chrono::steady_clock::now();
        const double cpu = processorTime(RUSAGE_SELF);
        std::printf("\"%s\": %.4f, \"%s_cpu\": %.4f, ", step, std::chrono::duration<double>(now - m_start).count(),
                    step, cpu - m_cpu);
        m_start = std::chrono::steady_clock::now();
        m_cpu = processorTime(RUSAGE_SELF);
    }

private:
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
    double m_cpu = processorTime(RUSAGE_SELF);
};

}

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench_browse ARCHIVE\n");
        return 2;
    }
    KXFileWrapper::pathForTemporaryDirectory();
    const double before = memory(QStringLiteral("self"), "VmRSS:");
    std::printf("{");
    Clock clock;
    auto wrapper = KXUnarchiveWrapper::initWithPath(QFile::decodeName(argv[1]));
    clock.print("open");
    wrapper->listContents();
    clock.print("list");
    auto tree = ArchiveTree::generateTree(*wrapper);
    clock.print("tree");
    const double peak = memory(QStringLiteral("self"), "VmHWM:");
    const double now = memory(QStringLiteral("self"), "VmRSS:");
    wrapper->buildSkeleton();
    clock.print("skeleton");
    const auto matches = tree->filtered(QStringLiteral("e1"));
    clock.print("filter");
    std::printf("\"entries\": %lld, \"nodes\": %u, \"matches\": %u, \"unplaced\": %zu, \"base\": %.1f, \"peak\": %.1f, "
                "\"held\": %.1f, ",
                static_cast<long long>(wrapper->archiveContents()->count()), tree->nodeCount(), matches->nodeCount(),
                wrapper->entriesWithoutPlaceholder().size(), before, peak, now);
    const int error = wrapper->openingError();
    wrapper.reset();
    rusage worker = {};
    getrusage(RUSAGE_CHILDREN, &worker);
    std::printf("\"worker_cpu\": %.4f, \"worker_peak\": %.1f, \"error\": %d}\n", processorTime(RUSAGE_CHILDREN),
                static_cast<double>(worker.ru_maxrss) / 1024, error);
}
