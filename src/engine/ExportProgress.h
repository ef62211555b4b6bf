#pragma once

#include <atomic>

/// Progress of the current export. The worker updates it; any thread can read it.
///
/// Work is measured in bytes to pack; faster operations count less per byte. If the expected work
/// changes, the fraction advances at a different rate from then on. It never decreases.
class ExportProgress
{
public:
    /// From 0 to less than 1; negative if no export is running. Any thread.
    [[nodiscard]] double fraction() const { return figure; }

    // The remaining functions are for the worker thread.
    void begin();
    void end();
    /// Adds @p work to the remaining work.
    void expect(double work);
    /// Sets the remaining work to @p work.
    void expectOnly(double work);
    /// Moves @p work from remaining to done.
    void advance(double work);

private:
    std::atomic<double> figure{-1};
    double left = 0;
};
