#pragma once

#include <vector>

/// One promise about speed: what is measured may take so many times as long as its floor.
struct Ratio
{
    const char *what;
    const char *measured; ///< name of a benchmark function, or of a capture: "function/capture"
    const char *floor;
    double target;
};

/// Runs the benchmarks of the program and prints, behind their times, each ratio of @p ratios
/// beside its target. The exit code of main(): 0, or 1 when a benchmark of a ratio did not run.
int runAndCompare(int argc, char **argv, const std::vector<Ratio> &ratios);
