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
    // The umask may have removed permissions, and a file that could not be unlinked has its old
    // ones. Devices keep theirs.
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
    ::chmod(name.constData(), S_IRWXU); // it may have existed, or the umask may be unusual
    return true;
}
