#pragma once

/// Installs accessible interfaces for controls whose Qt interface cannot do what the mouse can.
/// Call it once, before the first window is shown. GUI thread only.
void installAccessibleControls();
