#include "Ratios.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>

namespace {

constexpr double microseconds = 1e-3; // in milliseconds

std::string text(const char *format, double value)
{
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, format, value);
    return buffer;
}

std::string duration(double milliseconds)
{
    return milliseconds < 1 ? text("%.0f us", milliseconds / microseconds)
                            : text(milliseconds < 100 ? "%.1f ms" : "%.0f ms", milliseconds);
}

Row::Met verdict(bool isMet)
{
    return isMet ? Row::Met::Yes : Row::Met::No;
}

double medianOf(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// Prints medians like the console reporter and records the times of all repetitions.
class TimeKeeper : public benchmark::ConsoleReporter
{
public:
    TimeKeeper()
        : ConsoleReporter(OO_None) // plain text, as the output goes to a file
    {
    }

    void ReportRuns(const std::vector<Run> &runs) override
    {
        std::vector<Run> shown;
        for (const Run &run : runs) {
            if (run.run_type == Run::RT_Iteration && !run.error_occurred)
                keep(run);
            if (run.run_type == Run::RT_Aggregate ? run.aggregate_name == "median"
                                                  : run.error_occurred || run.repetitions <= 1)
                shown.push_back(run);
        }
        ConsoleReporter::ReportRuns(shown);
    }

    /// In milliseconds, in order of repetition.
    [[nodiscard]] std::vector<double> times(const std::string &name, Clock clock) const
    {
        const auto &all = clock == Clock::Wall ? wall : processor;
        const auto found = all.find(name);
        return found != all.end() ? found->second : std::vector<double>();
    }

private:
    void keep(const Run &run)
    {
        const std::string &args = run.run_name.args;
        const std::string name =
            args.empty() ? run.run_name.function_name : run.run_name.function_name + "/" + args;
        const double unit = 1e3 / benchmark::GetTimeUnitMultiplier(run.time_unit);
        const double real = run.GetAdjustedRealTime() * unit;
        // A benchmark with manual timing measures the time to be compared.
        const bool isOwn = run.run_name.time_type == "manual_time";
        wall[name].push_back(real);
        processor[name].push_back(isOwn ? real : run.GetAdjustedCPUTime() * unit);
    }

    std::map<std::string, std::vector<double>> wall;
    std::map<std::string, std::vector<double>> processor;
};

bool compare(const TimeKeeper &keeper, const Ratio &promise)
{
    const std::vector<double> measured = keeper.times(promise.measured, promise.clock);
    const std::vector<double> peer = keeper.times(promise.peer, promise.clock);
    if (measured.empty() || measured.size() != peer.size())
        return false;
    std::vector<double> ratios;
    for (std::size_t i = 0; i < peer.size(); ++i)
        ratios.push_back(measured[i] / peer[i]);
    const double ratio = medianOf(ratios);
    const bool isPromised = promise.target > 0;
    print({promise.what, duration(medianOf(measured)), promise.peerName, duration(medianOf(peer)),
           ratio, isPromised ? text("<= %.2f", promise.target) : std::string(),
           isPromised ? verdict(ratio <= promise.target) : Row::Met::NothingPromised});
    return true;
}

bool compare(const TimeKeeper &keeper, const Limit &promise)
{
    const double time = medianOf(keeper.times(promise.measured, Clock::Processor)) / promise.steps;
    const bool isPromised = promise.milliseconds > 0;
    if (time > 0)
        print({promise.what,
               duration(time),
               {},
               {},
               0,
               isPromised ? text("< %.0f ms", promise.milliseconds) : std::string(),
               isPromised ? verdict(time < promise.milliseconds) : Row::Met::NothingPromised});
    return time > 0;
}

bool compare(const TimeKeeper &keeper, const Rate &promise)
{
    const double time = medianOf(keeper.times(promise.measured, Clock::Processor));
    const double rate = time > 0 ? promise.bytes / 1e6 / (time / 1e3) : 0;
    if (time > 0)
        print({promise.what,
               text("%.0f MB/s", rate),
               {},
               {},
               0,
               text(">= %.0f MB/s", promise.megabytesPerSecond),
               verdict(rate >= promise.megabytesPerSecond)});
    return time > 0;
}

template <typename Promise>
bool compareAll(const TimeKeeper &keeper, const std::vector<Promise> &promises)
{
    const auto failed = std::count_if(promises.begin(), promises.end(),
                                      [&keeper](const auto &one) { return !compare(keeper, one); });
    return failed == 0;
}

} // namespace

int runAndCompare(int argc, char **argv, const Promises &promises, int repetitions)
{
    // Before the given arguments, which take precedence.
    std::string count = "--benchmark_repetitions=" + std::to_string(repetitions);
    std::string order = "--benchmark_enable_random_interleaving=true";
    std::string least = "--benchmark_min_time=0.1";
    std::vector<char *> arguments{argv[0], count.data(), order.data(), least.data()};
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int argumentCount = static_cast<int>(arguments.size());
    benchmark::Initialize(&argumentCount, arguments.data());

    TimeKeeper keeper;
    benchmark::RunSpecifiedBenchmarks(&keeper);
    const bool ratios = compareAll(keeper, promises.ratios);
    const bool limits = compareAll(keeper, promises.limits);
    const bool rates = compareAll(keeper, promises.rates);
    return ratios && limits && rates ? 0 : 1;
}

void print(const Row &row)
{
    static constexpr const char *verdicts[] = {"yes", "NO", ""};
    std::printf("| %-50s | %9s | %-28s | %8s | %5s | %11s | %-3s |\n", row.what.c_str(),
                row.measured.c_str(), row.peerName.c_str(), row.peer.c_str(),
                row.ratio > 0 ? text("%.2f", row.ratio).c_str() : "", row.target.c_str(),
                verdicts[static_cast<int>(row.met)]);
}
