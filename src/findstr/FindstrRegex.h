#pragma once

#include "FindstrExpression.h"

#include <string>

/// Translates @p expression to RE2's syntax, for bytes (Latin-1) and multi-line texts. A match
/// never spans lines.
[[nodiscard]] std::string toRegex(const FindstrExpression &expression);
