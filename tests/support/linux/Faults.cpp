#include "Faults.h"

#include <QFile>

#include <csignal>
#include <grp.h>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr uid_t nobody = 65534;

/// Supplementary groups grant permissions too: a root login is usually in root's group.
std::vector<gid_t> furtherGroups;

bool takeFurtherGroups()
{
    const int count = getgroups(0, nullptr);
    if (count < 0)
        return false;
    furtherGroups.resize(size_t(count));
    return getgroups(count, furtherGroups.data()) == count && setgroups(0, nullptr) == 0;
}

bool giveFurtherGroupsBack()
{
    return setgroups(furtherGroups.size(), furtherGroups.data()) == 0;
}

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
    if (!takeFurtherGroups() || setegid(nobody) != 0 || seteuid(nobody) != 0)
        qFatal("cannot become an ordinary user");
    dropped = true;
}

OrdinaryUser::~OrdinaryUser()
{
    if (dropped && (seteuid(0) != 0 || setegid(0) != 0 || !giveFurtherGroupsBack()))
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
    // Otherwise the first write over the limit would end the program.
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
