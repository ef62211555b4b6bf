#pragma once

class QString;

// Properties of the machine that a test runs on.

/// True on Windows and under Wine.
[[nodiscard]] bool onWindows();

/// True under Wine.
[[nodiscard]] bool underWine();

/// Hides the file at @p path, whose name begins with a full stop, as some systems need. Aborts the
/// test if that fails.
void hide(const QString &path);

/// True in a sanitized build, which uses more memory.
[[nodiscard]] constexpr bool isSanitized()
{
#ifdef VANTREL_SANITIZED
    return true;
#else
    return false;
#endif
}
