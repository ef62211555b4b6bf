#pragma once

#include "FindstrExpression.h"

#include <string>

/// An expression in the language of the PCRE2 library.
struct FindstrPattern
{
    /// For many lines at once, compiled with PCRE2_MULTILINE, line feeds as the only line ends and
    /// bytes as characters. A match starts in the line that it is found in and stays there.
    std::string text;
    /// False: the pattern finds every line that matches, but others too.
    bool exact = true;
};

/// Translates @p expression. The pattern never takes more than linear time in the length of a line:
/// a repetition of anything but any byte, which only backtracking could follow, is widened to one
/// of any byte, and the pattern is no longer exact.
[[nodiscard]] FindstrPattern toPattern(const FindstrExpression &expression);
