#pragma once

#include <string>
#include <vector>

/// What a time is told by. The processor's tells the same whatever else the machine does, and is
/// right for work of one thread; the wall's is right for what waits, and for several processes.
enum class Clock { Processor, Wall };

/// A promise about speed: what is measured may take so many times as long as its peer. Benchmarks
/// go by the name of their function, or of a capture and an argument: "function/capture/argument".
struct Ratio
{
    const char *what;
    const char *measured;
    const char *peerName; ///< in words
    const char *peer;
    double target; ///< 0: nothing is promised
    Clock clock = Clock::Processor;
};

/// A promise of a time.
struct Limit
{
    const char *what;
    const char *measured;
    double milliseconds; ///< 0: nothing is promised
    int steps = 1; ///< what is promised is done so often in one measured turn
};

/// A promise of so many bytes a second.
struct Rate
{
    const char *what;
    const char *measured;
    double bytes; ///< in one measured turn
    double megabytesPerSecond;
};

struct Promises
{
    std::vector<Ratio> ratios = {};
    std::vector<Limit> limits = {};
    std::vector<Rate> rates = {};
};

/// Runs the benchmarks of the program, @p repetitions times in turn and in a random order, and
/// prints the medians, then a row for each promise. A ratio is the median of the pairs' ratios. The
/// exit code of main(): 0, or 1 when a benchmark of a promise did not run.
int runAndCompare(int argc, char **argv, const Promises &promises, int repetitions = 7);

/// A row of the table that ./bench puts together.
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
