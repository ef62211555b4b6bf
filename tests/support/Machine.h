#pragma once

// What machine a test runs on, for what only some can do.

/// Windows, real or not.
[[nodiscard]] bool onWindows();

/// A Windows that is Wine, which is a little less.
[[nodiscard]] bool underWine();

/// Whether a sanitizer watches: memory is its own then, and more is needed.
[[nodiscard]] constexpr bool isSanitized()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return true;
#else
    return false;
#endif
}
