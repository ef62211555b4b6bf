#pragma once

#include <QString>

/// A file held open by another program: while it exists, other handles are limited to the access
/// that it shares.
class HeldFile
{
public:
    enum class Others { MayNothing, MayRead, MayEverything };

    HeldFile(const QString &path, Others others);
    ~HeldFile();
    HeldFile(const HeldFile &) = delete;
    HeldFile &operator=(const HeldFile &) = delete;

private:
    void *handle;
};
