#pragma once

#include <QString>

/// A file that another program has open, in Windows' sense: while it lives, others may do with the
/// file only what it lets them.
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
