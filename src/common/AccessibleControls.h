#pragma once

/// Lets assistive tools do what the mouse can do, where Qt's own answers to them fall short. Once a
/// process, before the first window is shown; GUI thread.
void installAccessibleControls();
