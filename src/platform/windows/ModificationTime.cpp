#include "ModificationTime.h"

#include <QDateTime>
#include <QFileInfo>

qint64 modificationTime(const QFileInfo &file)
{
    // Listing a folder has brought the time along.
    const QDateTime time = file.lastModified();
    return time.isValid() ? time.toMSecsSinceEpoch() : 0;
}
