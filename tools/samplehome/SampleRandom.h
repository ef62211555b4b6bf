#pragma once

#include <QtGlobal>

#include <random>

/// Numbers that are the same on every system for the same seed: the generator is laid down by the
/// language, and no distribution of the library, which is not, comes between.
class SampleRandom
{
public:
    explicit SampleRandom(quint32 seed)
        : engine(seed)
    {
    }

    /// From 0 up to, not including, @p limit, which is at least 1.
    [[nodiscard]] int below(int limit) { return int(engine() % quint32(limit)); }
    /// From @p least to @p most, both included.
    [[nodiscard]] int between(int least, int most) { return least + below(most - least + 1); }
    /// True in one of @p cases.
    [[nodiscard]] bool oneIn(int cases) { return below(cases) == 0; }

private:
    std::mt19937 engine;
};
