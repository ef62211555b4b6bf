#include "ReadableFile.h"

#include <QFile>

bool isReadable(const QString &path)
{
    return QFile(path).open(QIODevice::ReadOnly);
}
