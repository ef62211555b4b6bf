#include "ProcessLock.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

constexpr unsigned long pollInterval = 2; // milliseconds

bool take(int file, int patience)
{
    QElapsedTimer waited;
    waited.start();
    while (::flock(file, LOCK_EX | LOCK_NB) != 0) {
        if ((errno != EWOULDBLOCK && errno != EINTR) || waited.hasExpired(patience))
            return false;
        QThread::msleep(pollInterval);
    }
    return true;
}

} // namespace

ProcessLock::ProcessLock(const QString &name, int patience)
{
    // The file stays when the lock is let go: without it there would be two locks, one on a file
    // that is gone and one on the next of that name.
    const QString path = QDir::tempPath() + QLatin1Char('/') + name + QStringLiteral(".lock");
    const int file = ::open(QFile::encodeName(path).constData(),
                            O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
    handle = file;
    held = file >= 0 && take(file, patience);
}

ProcessLock::~ProcessLock()
{
    if (handle >= 0)
        ::close(int(handle));
}
