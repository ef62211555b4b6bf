#pragma once

// Properties of the machine that a test runs on.

/// True on Windows and under Wine.
[[nodiscard]] bool onWindows();

/// True under Wine.
[[nodiscard]] bool underWine();

/// True in a sanitized build, which uses more memory.
[[nodiscard]] constexpr bool isSanitized()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return true;
#else
    return false;
#endif
}
