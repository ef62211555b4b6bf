#include "Ratios.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>

namespace {

/// Prints as the console does and keeps the times, the median where a benchmark was repeated.
class TimeKeeper : public benchmark::ConsoleReporter
{
public:
    TimeKeeper()
        : ConsoleReporter(OO_None) // plain text: the output is kept in a file
    {
    }

    void ReportRuns(const std::vector<Run> &runs) override
    {
        for (const Run &run : runs) {
            if (run.run_type == Run::RT_Iteration && !run.error_occurred)
                times[nameOf(run)].push_back(run.GetAdjustedRealTime());
        }
        ConsoleReporter::ReportRuns(runs);
    }

    /// Zero when nothing of that name ran.
    [[nodiscard]] double median(const std::string &name) const
    {
        const auto found = times.find(name);
        if (found == times.end())
            return 0;
        std::vector<double> sorted = found->second;
        std::sort(sorted.begin(), sorted.end());
        return sorted[sorted.size() / 2];
    }

private:
    static std::string nameOf(const Run &run)
    {
        const std::string &args = run.run_name.args;
        return args.empty() ? run.run_name.function_name : run.run_name.function_name + "/" + args;
    }

    std::map<std::string, std::vector<double>> times;
};

} // namespace

int runAndCompare(int argc, char **argv, const std::vector<Ratio> &ratios)
{
    benchmark::Initialize(&argc, argv);
    TimeKeeper keeper;
    benchmark::RunSpecifiedBenchmarks(&keeper);

    bool complete = true;
    for (const Ratio &ratio : ratios) {
        const double measured = keeper.median(ratio.measured);
        const double floor = keeper.median(ratio.floor);
        if (measured > 0 && floor > 0)
            std::printf("ratio  %-50s %6.2f  (target: at most %.2f)\n", ratio.what,
                        measured / floor, ratio.target);
        else
            complete = false;
    }
    return complete ? 0 : 1;
}
