#pragma once

#include <string>
#include <string_view>

/// The command line that searches the file at @p path (in the system's 8-bit encoding) for @p
/// keyword. Nothing is escaped: a quotation mark in the keyword ends it.
[[nodiscard]] std::string findstrCommand(std::string_view keyword, std::string_view path);
