#pragma once

/// The processor time that this process has used so far, in seconds.
[[nodiscard]] double processorSeconds();
