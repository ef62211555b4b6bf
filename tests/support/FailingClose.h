#pragma once

/// While it exists, every close() of a regular file that this process has written to reports a full
/// disk, as with quotas and network file systems. The file is closed all the same.
class FailingClose
{
public:
    FailingClose();
    ~FailingClose();
    FailingClose(const FailingClose &) = delete;
    FailingClose &operator=(const FailingClose &) = delete;

    [[nodiscard]] static bool available();
};
