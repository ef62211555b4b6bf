#include "PrivateFiles.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr mode_t ownersFile = S_IRUSR | S_IWUSR;

bool isRegular(int found, const struct stat &status)
{
    return found == 0 && S_ISREG(status.st_mode);
}

} // namespace

void makePrivateFile(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat status = {};
    if (isRegular(::lstat(name.constData(), &status), status))
        ::unlink(name.constData());
    const int file =
        ::open(name.constData(), O_WRONLY | O_CREAT | O_NONBLOCK | O_CLOEXEC, ownersFile);
    if (file < 0)
        return;
    // The umask may have taken rights away, and a file that could not be removed has others. A
    // device keeps its own.
    if (isRegular(::fstat(file, &status), status))
        ::fchmod(file, ownersFile);
    ::close(file);
}

bool makePrivateFolder(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    if (::mkdir(name.constData(), S_IRWXU) != 0 && errno != EEXIST)
        return false;
    struct stat status = {};
    if (::stat(name.constData(), &status) != 0 || !S_ISDIR(status.st_mode))
        return false;
    ::chmod(name.constData(), S_IRWXU); // of one that was there, or made under a strange umask
    return true;
}
