#pragma once

/// While it lives, this process closes no regular file it has written to without being told that
/// the disk is full, as a quota or a network may do it so late. The file is closed all the same.
class FailingClose
{
public:
    FailingClose();
    ~FailingClose();
    FailingClose(const FailingClose &) = delete;
    FailingClose &operator=(const FailingClose &) = delete;

    [[nodiscard]] static bool available();
};
