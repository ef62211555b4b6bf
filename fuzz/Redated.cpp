#include "Redated.h"

#include "Fuzz.h"

#include <QFile>

void redate(const ScratchFolder &folder, const QString &name)
{
    static qint64 now = 0;
    now += 1000;
    QFile file(folder.path(name));
    demand(file.open(QIODevice::ReadWrite) && file.setFileTime(QDateTime::fromMSecsSinceEpoch(now),
                                                               QFileDevice::FileModificationTime),
           "the file can be dated");
}
