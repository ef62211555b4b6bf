#pragma once

class QWidget;

/// Settings that Qt reads before the application object exists: high-DPI scaling, no OpenGL
/// (unused, and slower to load than the rest of startup), and X11 on a Wayland desktop. Environment
/// variables that the user has set take precedence. Call it first in main().
void configureQtBeforeStart();

/// Removes the environment variables that configureQtBeforeStart() has set, so that child processes
/// do not inherit them. Call it after the first window is shown.
void restoreEnvironment();

/// Keeps the scale of all screens at 1 or above, now and whenever it changes. Below 1 Qt would
/// paint windows at full size and clip them. Call it after the application object exists and before
/// any window does.
void keepScaleAtLeastOne();

/// Shrinks @p window and the dialogs it owns to the primary screen's work area, if necessary below
/// their minimum sizes. Call it before the window is shown.
void fitToScreen(QWidget &window);

/// Makes the system's message font the default font. Qt's default on Windows is outdated and shows
/// where no style sheet names a font. Call it after the application object exists.
void useSystemFont();
