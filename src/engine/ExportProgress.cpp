#include "ExportProgress.h"

#include <algorithm>

namespace {

/// Work after packing: finishing the archive, removing the staging folder. Only end() completes it,
/// so the fraction stays below 1 while somebody waits.
constexpr double closing = 5e5;

} // namespace

void ExportProgress::begin()
{
    figure = 0;
    left = 0;
}

void ExportProgress::end()
{
    figure = -1;
}

void ExportProgress::expect(double work)
{
    left += work;
}

void ExportProgress::expectOnly(double work)
{
    left = work;
}

void ExportProgress::advance(double work)
{
    const double done = std::min(work, left);
    figure = figure + (1 - figure) * done / (left + closing);
    left -= done;
}
