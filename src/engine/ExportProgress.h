#pragma once

#include <atomic>

/// How far the export in hand is. The worker counts, any thread may look.
///
/// Work is measured in bytes to be packed; what is done faster counts for less a byte. When there
/// turns out to be more or less to do than was expected, the fraction grows more slowly or faster
/// from there on. It never falls.
class ExportProgress
{
public:
    /// From 0 to less than 1; negative: there is no export in hand. Any thread.
    [[nodiscard]] double fraction() const { return figure; }

    // The rest is for the worker's thread.
    void begin();
    void end();
    /// There is so much more to do.
    void expect(double work);
    /// There is so much to do, and nothing of what was expected before.
    void expectOnly(double work);
    /// So much was done.
    void advance(double work);

private:
    std::atomic<double> figure{-1};
    double left = 0;
};
