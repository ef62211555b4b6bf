#pragma once

// What machine a test runs on, for what only some can do.

/// Windows, real or not.
[[nodiscard]] bool onWindows();

/// A Windows that is Wine, which is a little less.
[[nodiscard]] bool underWine();
