#include "Faults.h"

#include <QFile>

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

namespace {

constexpr uid_t nobody = 65534;

void limitFileSize(rlim_t bytes)
{
    rlimit limit{};
    if (getrlimit(RLIMIT_FSIZE, &limit) != 0)
        qFatal("cannot read the file size limit");
    limit.rlim_cur = bytes;
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
        qFatal("cannot set the file size limit");
}

} // namespace

OrdinaryUser::OrdinaryUser()
{
    if (geteuid() != 0)
        return;
    if (setegid(nobody) != 0 || seteuid(nobody) != 0)
        qFatal("cannot become an ordinary user");
    dropped = true;
}

OrdinaryUser::~OrdinaryUser()
{
    if (dropped && (seteuid(0) != 0 || setegid(0) != 0))
        qFatal("cannot become root again");
}

bool OrdinaryUser::available()
{
    return true;
}

bool makeLink(const QString &target, const QString &link)
{
    return QFile::link(target, link);
}

FileSizeLimit::FileSizeLimit(long bytes)
{
    // Without this the first write over the limit would end the program.
    std::signal(SIGXFSZ, SIG_IGN);
    limitFileSize(rlim_t(bytes));
}

FileSizeLimit::~FileSizeLimit()
{
    limitFileSize(RLIM_INFINITY);
}

bool FileSizeLimit::available()
{
    return true;
}
