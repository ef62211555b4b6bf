#pragma once

/// Attaches this process to a console without a window, unless it has a console already. Console
/// programs that it starts use this console; otherwise Windows would open a window for each.
/// Returns false on failure. Usually takes a few hundredths of a second, at most two seconds. Any
/// thread, but one at a time.
[[nodiscard]] bool takeWindowlessConsole();
