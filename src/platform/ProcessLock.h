#pragma once

#include <QtGlobal>

class QString;

/// Held by one process of this user at a time. The system takes it from a process that ends, in
/// whatever way, so that a killed one blocks nobody. Not for threads of one process among
/// themselves.
class ProcessLock
{
public:
    /// Waits for the lock called @p name, @p patience milliseconds at most. Where it cannot be had,
    /// nothing is held and nothing is said.
    ProcessLock(const QString &name, int patience);
    ~ProcessLock();
    ProcessLock(const ProcessLock &) = delete;
    ProcessLock &operator=(const ProcessLock &) = delete;

    [[nodiscard]] bool isHeld() const { return held; }

private:
    qintptr handle = -1; ///< the system's, -1: none
    bool held = false;
};
