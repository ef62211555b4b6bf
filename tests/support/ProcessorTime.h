#pragma once

/// The CPU time of this process so far, in seconds.
[[nodiscard]] double processorSeconds();
