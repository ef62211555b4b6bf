#include "ModificationTime.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

qint64 modificationTime(const QFileInfo &file)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(file.filePath()).constData(), &status) != 0)
        return 0;
    return qint64(status.st_mtim.tv_sec) * 1000 + status.st_mtim.tv_nsec / 1000000;
}
