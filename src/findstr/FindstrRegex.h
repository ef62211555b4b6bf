#pragma once

#include "FindstrExpression.h"

#include <string>

/// Translates @p expression into the language of RE2, for bytes (Latin-1). In a text of many lines
/// a match lies within one line.
[[nodiscard]] std::string toRegex(const FindstrExpression &expression);
