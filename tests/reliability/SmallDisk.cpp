#include "SmallDisk.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace {

QString failure(const char *what)
{
    return QString("%1: %2").arg(what, QString::fromUtf8(strerror(errno)));
}

void insist(bool done, const char *what)
{
    if (!done)
        qFatal("%s", qPrintable(failure(what)));
}

bool writeText(const char *path, const QByteArray &text)
{
    QFile file(QString::fromLatin1(path));
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
           file.write(text) == text.size();
}

/// Makes this user root of a namespace of its own.
QString becomeRootOfOneself()
{
    const QByteArray user = QByteArray::number(uint(geteuid()));
    const QByteArray group = QByteArray::number(uint(getegid()));
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return failure("no namespaces for this user");
    if (!writeText("/proc/self/setgroups", "deny") ||
        !writeText("/proc/self/uid_map", "0 " + user + " 1") ||
        !writeText("/proc/self/gid_map", "0 " + group + " 1"))
        return failure("no namespaces for this user");
    return {};
}

struct statvfs status(const QString &path)
{
    struct statvfs result = {};
    insist(statvfs(QFile::encodeName(path).constData(), &result) == 0, "statvfs");
    return result;
}

} // namespace

QString SmallDisk::prepare()
{
    if (geteuid() != 0) {
        const QString trouble = becomeRootOfOneself();
        if (!trouble.isEmpty())
            return trouble;
    } else if (unshare(CLONE_NEWNS) != 0) {
        return failure("no mounts of one's own");
    }
    if (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        return failure("no private mounts, as in a chroot that is not a mount point");
    return {};
}

SmallDisk::SmallDisk(qint64 bytes, int files)
    : temporaryBefore(qgetenv("TMPDIR"))
    , options(QString("size=%1,nr_inodes=%2,mode=1777").arg(bytes).arg(files))
{
    const QByteArray path = QFile::encodeName(mountPoint.path());
    if (mount("none", path.constData(), "tmpfs", 0, options.toLatin1().constData()) != 0)
        problem = failure("no small disk");
    else
        qputenv("TMPDIR", path);
}

SmallDisk::~SmallDisk()
{
    if (!problem.isEmpty())
        return;
    temporaryBefore.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", temporaryBefore);
    umount2(QFile::encodeName(mountPoint.path()).constData(), MNT_DETACH);
}

qint64 SmallDisk::freeBytes() const
{
    const auto now = status(mountPoint.path());
    return qint64(now.f_bfree) * qint64(now.f_bsize);
}

qint64 SmallDisk::freeFiles() const
{
    return qint64(status(mountPoint.path()).f_ffree);
}

void SmallDisk::leaveBytes(qint64 bytes)
{
    const qint64 taken = freeBytes() - bytes;
    if (taken <= 0)
        return;
    const QByteArray path = QFile::encodeName(mountPoint.path()) + "/ballast";
    const int file = ::open(path.constData(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    insist(file >= 0 && posix_fallocate(file, 0, taken) == 0, "ballast");
    ::close(file);
}

void SmallDisk::leaveFiles(qint64 files)
{
    const QString folder = mountPoint.filePath("ballasts");
    insist(QDir().mkpath(folder), "ballast folder");
    for (int i = 0; freeFiles() > files; ++i) {
        QFile file(QString("%1/%2").arg(folder).arg(i));
        insist(file.open(QIODevice::WriteOnly), "ballast file");
    }
}

void SmallDisk::makeRoom()
{
    QFile::remove(mountPoint.filePath("ballast"));
    QDir(mountPoint.filePath("ballasts")).removeRecursively();
}

void SmallDisk::setReadOnly(bool on)
{
    insist(mount("none", QFile::encodeName(mountPoint.path()).constData(), "tmpfs",
                 MS_REMOUNT | (on ? MS_RDONLY : 0), options.toLatin1().constData()) == 0,
           "remount");
}
