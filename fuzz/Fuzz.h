#pragma once

#include <cstddef>
#include <cstdint>

/// Defined by each fuzzer: tests the @p size bytes at @p data. Always returns 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

/// Reports a finding named @p what and ends the run, unless the rule @p holds.
void demand(bool holds, const char *what);
