#include "MemoryFile.h"

#include "Fuzz.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

MemoryFile::MemoryFile(const QByteArray &contents)
    : descriptor(::memfd_create("input", MFD_CLOEXEC))
{
    demand(descriptor >= 0, "a file in memory");
    write(contents);
}

MemoryFile::~MemoryFile()
{
    ::close(descriptor);
}

QString MemoryFile::path() const
{
    return QStringLiteral("/proc/self/fd/%1").arg(descriptor);
}

QByteArray MemoryFile::read() const
{
    struct stat status = {};
    demand(::fstat(descriptor, &status) == 0, "the file's size is known");
    QByteArray contents(int(status.st_size), Qt::Uninitialized);
    demand(::pread(descriptor, contents.data(), std::size_t(contents.size()), 0) == contents.size(),
           "the file can be read");
    return contents;
}

void MemoryFile::write(const QByteArray &contents)
{
    const bool written = ::ftruncate(descriptor, 0) == 0 &&
                         ::pwrite(descriptor, contents.constData(), std::size_t(contents.size()),
                                  0) == contents.size();
    demand(written, "the file can be written");
}
