#pragma once

class QWidget;

/// What has to be settled before the application object exists: pictures and sizes follow the
/// screen's scale, no OpenGL is loaded, which the program does not use and which takes longer to
/// load than all the rest of the start, and a Wayland desktop's X server is preferred. What the
/// user has chosen by the environment stays. Call it first thing in main().
void configureQtBeforeStart();

/// Takes back what configureQtBeforeStart() left in the environment, which programs that this one
/// starts would inherit. Call it once the first window is shown.
void restoreEnvironment();

/// Keeps the screens' scale from falling below 1, now and whenever it changes: a desktop may ask
/// for smaller text than usual, the environment for a smaller program. Qt would paint such windows
/// in full size and show their upper left parts. Call it once the application object exists, before
/// there is any window.
void keepScaleAtLeastOne();

/// Makes a window, and the dialogs that it owns, no larger than the primary screen's work area, also
/// where that is less than their minimum. Call it before the window is shown.
void fitToScreen(QWidget &window);

/// Makes the system's font for texts the program's. On Windows Qt begins with the one of decades
/// ago, which shows wherever no style sheet names another. Call it once the application object
/// exists.
void useSystemFont();
