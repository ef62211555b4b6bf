#pragma once

#include <QFile>

#include <algorithm>
#include <sys/resource.h>
#include <unistd.h>

/// Limits this process's address space to @p more bytes beyond its current size. Linux only.
class MemoryLimit
{
public:
    explicit MemoryLimit(qint64 more)
    {
        QFile status("/proc/self/statm");
        if (!status.open(QIODevice::ReadOnly))
            qFatal("cannot read how much memory there is in use");
        const qint64 pages = status.readAll().split(' ').value(0).toLongLong();
        set(rlim_t(pages * sysconf(_SC_PAGESIZE) + more));
    }
    ~MemoryLimit() { set(RLIM_INFINITY); }
    MemoryLimit(const MemoryLimit &) = delete;
    MemoryLimit &operator=(const MemoryLimit &) = delete;

private:
    static void set(rlim_t bytes)
    {
        rlimit limit{};
        if (getrlimit(RLIMIT_AS, &limit) != 0)
            qFatal("cannot read the memory limit");
        limit.rlim_cur = std::min(bytes, limit.rlim_max);
        if (setrlimit(RLIMIT_AS, &limit) != 0)
            qFatal("cannot set the memory limit");
    }
};
