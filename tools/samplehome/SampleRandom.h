#pragma once

#include <QtGlobal>

#include <random>

/// Random numbers that are the same on all systems for the same seed: the generator is
/// standardised, and the library's distributions, which are not, are not used.
class SampleRandom
{
public:
    explicit SampleRandom(quint32 seed)
        : engine(seed)
    {
    }

    /// From 0 to @p limit - 1; @p limit is at least 1.
    [[nodiscard]] int below(int limit) { return int(engine() % quint32(limit)); }
    /// From @p least to @p most, inclusive.
    [[nodiscard]] int between(int least, int most) { return least + below(most - least + 1); }
    /// True with probability 1 / @p cases.
    [[nodiscard]] bool oneIn(int cases) { return below(cases) == 0; }

private:
    std::mt19937 engine;
};
