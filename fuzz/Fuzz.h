#pragma once

#include <cstddef>
#include <cstdint>

/// What a fuzzer defines: tries the @p size bytes at @p data. Always 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

/// Ends the run as a finding, with @p what on the error output, unless it @p holds.
void demand(bool holds, const char *what);
