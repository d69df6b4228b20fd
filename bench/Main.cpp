#include "Row.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <memory>

#include <benchmark/benchmark.h>

namespace {

BenchRows allRows()
{
    BenchRows rows = libraryRows();
    for (const BenchRows &more : {analysisRows(), exchangeRows()})
        rows.insert(rows.end(), more.begin(), more.end());
    return rows;
}

/// A row is prepared when one of its benchmarks first runs, and only then.
void registerRow(const BenchRow &row)
{
    const auto jobs = std::make_shared<std::unique_ptr<BenchRow::Jobs>>();
    const auto prepared = [row, jobs]() -> const BenchRow::Jobs & {
        if (!*jobs)
            *jobs = std::make_unique<BenchRow::Jobs>(row.prepare());
        return **jobs;
    };
    const auto run = [](benchmark::State &state, const BenchRow::Jobs &job, const std::function<void()> &body) {
        if (!body) {
            state.SkipWithError("no straightforward version");
            return;
        }
        for ([[maybe_unused]] auto turn : state)
            body();
        if (job.megabytes > 0)
            state.counters["MB/s"] = benchmark::Counter(job.megabytes, benchmark::Counter::kIsIterationInvariantRate);
        if (job.items > 0)
            state.counters["items/s"] = benchmark::Counter(job.items, benchmark::Counter::kIsIterationInvariantRate);
    };
    benchmark::RegisterBenchmark((row.name + "/straightforward").c_str(), [=](benchmark::State &state) {
        run(state, prepared(), prepared().straightforward);
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((row.name + "/ours").c_str(), [=](benchmark::State &state) {
        run(state, prepared(), prepared().ours);
    })->Unit(benchmark::kMillisecond);
}

/// The median of a few runs, in milliseconds; fewer of those that take long.
double milliseconds(const std::function<void()> &job)
{
    using Clock = std::chrono::steady_clock;
    std::vector<double> times;
    double total = 0;
    while (times.size() < 3 || (times.size() < 15 && total < 1500)) {
        const auto start = Clock::now();
        job();
        times.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
        total += times.back();
        if (total > 8000)
            break;
    }
    std::ranges::sort(times);
    return times[times.size() / 2];
}

void printTable(const char *filter)
{
    std::printf("%-58s %14s %12s %8s %12s\n", "job", "straightforward", "ours", "ratio", "rate");
    for (const BenchRow &row : allRows()) {
        if (row.name.find(filter) == std::string::npos)
            continue;
        const BenchRow::Jobs jobs = row.prepare();
        const double ours = milliseconds(jobs.ours);
        std::printf("%-58s ", row.name.c_str());
        if (jobs.straightforward) {
            const double plain = milliseconds(jobs.straightforward);
            std::printf("%12.2f ms %9.3f ms %7.1fx", plain, ours, plain / ours);
        } else {
            std::printf("%15s %9.3f ms %8s", "-", ours, "-");
        }
        if (jobs.megabytes > 0)
            std::printf(" %7.0f MB/s", jobs.megabytes / ours * 1e3);
        if (jobs.items > 0)
            std::printf(" %9.0f/s", jobs.items / ours * 1e3);
        std::printf("\n");
        std::fflush(stdout);
    }
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc > 1 && std::strcmp(argv[1], "--table") == 0) {
        printTable(argc > 2 ? argv[2] : "");
        return 0;
    }
    for (const BenchRow &row : allRows())
        registerRow(row);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
