#pragma once

#include <string>
#include <vector>

/// The clock for a measurement: CPU time, which other processes hardly affect, for single-threaded
/// work; wall-clock time for waiting and for several processes.
enum class Clock { Processor, Wall };

/// A speed target: the measured time compared with a baseline's. Benchmarks are named by their
/// function, or by capture and argument: "function/capture/argument".
struct Ratio
{
    const char *what;
    const char *measured;
    const char *peerName; ///< for the table
    const char *peer;
    double target; ///< 0: none
    Clock clock = Clock::Processor;
};

/// A time limit.
struct Limit
{
    const char *what;
    const char *measured;
    double milliseconds; ///< 0: none
    int steps = 1;       ///< number of limited operations per iteration
};

/// A minimum throughput.
struct Rate
{
    const char *what;
    const char *measured;
    double bytes; ///< per iteration
    double megabytesPerSecond;
};

struct Promises
{
    std::vector<Ratio> ratios = {};
    std::vector<Limit> limits = {};
    std::vector<Rate> rates = {};
};

/// Runs all benchmarks @p repetitions times, alternating in random order, and prints the medians,
/// then a row for each target. A ratio is the median of the paired ratios. Returns the exit code of
/// main(): 1 if a benchmark with a target did not run.
int runAndCompare(int argc, char **argv, const Promises &promises, int repetitions = 7);

/// A row of the table printed by ./bench.
struct Row
{
    std::string what;
    std::string measured;
    std::string peerName;
    std::string peer;
    double ratio = 0; ///< 0: none
    std::string target;
    enum class Met { Yes, No, NothingPromised } met;
};
void print(const Row &row);
