#include "SharedFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

bool openShared(QFile &file)
{
    // Without O_NONBLOCK, opening a pipe would block until it has a writer.
    const int descriptor = ::open(QFile::encodeName(file.fileName()).constData(),
                                  O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0)
        return false;
    struct stat status = {};
    const bool isRegular = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    if (isRegular && file.open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered,
                               QFileDevice::AutoCloseHandle))
        return true;
    ::close(descriptor);
    return false;
}
