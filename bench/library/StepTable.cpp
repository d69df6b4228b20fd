#include "StepTable.h"

#include <QByteArray>
#include <QFile>

#include <chrono>
#include <cstdio>

#include <malloc.h>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace {

/// A line of the process's status, in bytes.
double memory(QByteArrayView name)
{
    QFile file(u"/proc/self/status"_s);
    file.open(QIODevice::ReadOnly);
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith(name))
            return line.sliced(name.size() + 1).trimmed().chopped(3).toDouble() * 1024;
    }
    return 0;
}

/// Makes what is in use now the most that ever was.
void forgetPeak()
{
    malloc_trim(0); // what earlier steps gave back isn't this one's
    QFile file(u"/proc/self/clear_refs"_s);
    file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    file.write("5");
}

/// Of this process and of its children that have ended.
double cpuMilliseconds()
{
    double total = 0;
    for (const auto who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
        rusage usage{};
        getrusage(who, &usage);
        for (const timeval &time : {usage.ru_utime, usage.ru_stime})
            total += double(time.tv_sec) * 1e3 + double(time.tv_usec) / 1e3;
    }
    return total;
}

} // namespace

StepTable::StepTable(double textBytes) : m_textBytes(textBytes), m_ownBytes(memory("VmRSS"))
{
    std::printf("%.0f MB of text, the program itself %.0f MB\n", textBytes / 1e6, m_ownBytes / 1e6);
    std::printf("%-36s %12s %12s %12s %12s %8s\n", "step", "CPU ms", "wall ms", "before MB", "peak MB", "x text");
}

void StepTable::step(const char *name, const std::function<void()> &body) const
{
    using Clock = std::chrono::steady_clock;
    forgetPeak();
    const double before = memory("VmRSS");
    const double cpu = cpuMilliseconds();
    const auto start = Clock::now();
    body();
    const double wall = std::chrono::duration<double, std::milli>(Clock::now() - start).count();
    const double usedCpu = cpuMilliseconds() - cpu;
    const double peak = memory("VmHWM");
    std::printf("%-36s %12.1f %12.1f %12.0f %12.0f %8.2f\n", name, usedCpu, wall, before / 1e6, peak / 1e6,
        (peak - m_ownBytes) / m_textBytes);
    std::fflush(stdout);
}
