#pragma once

#include <string>
#include <string_view>

/// The command line that searches the file at @p path (in the system's 8-bit encoding) for
/// @p keyword. Nothing is quoted or escaped beyond the two quotes around the keyword: whoever types
/// a quote gets the command line that this makes.
[[nodiscard]] std::string findstrCommand(std::string_view keyword, std::string_view path);
