#pragma once

#include <cstdio>
#include <cstdlib>

/// Prints a call of a stand-in in the format of Wine's trace, if VANTREL_TRACE_STANDINS is set:
/// tools/windows/calls-report makes a table of it.
inline void traceCall(const char *function)
{
    if (std::getenv("VANTREL_TRACE_STANDINS") != nullptr)
        std::fprintf(stderr, "Call stand-in.%s(\n", function);
}
