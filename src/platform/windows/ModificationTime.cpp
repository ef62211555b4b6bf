#include "ModificationTime.h"

#include <QDateTime>
#include <QFileInfo>

qint64 modificationTime(const QFileInfo &file)
{
    // Already known from listing the folder.
    const QDateTime time = file.lastModified();
    return time.isValid() ? time.toMSecsSinceEpoch() : 0;
}
