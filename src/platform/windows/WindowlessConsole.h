#pragma once

/// Gives this process a console that has no window, unless it has one already. Console programs
/// that it starts use it too; without it Windows would open a window for each of them. False: there
/// is none. Takes some hundredths of a second. Any thread, but one at a time.
[[nodiscard]] bool takeWindowlessConsole();
