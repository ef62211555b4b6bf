#include "PrivateFiles.h"

#include <QDir>
#include <QFileInfo>

void makePrivateFile(const QString & /*path*/) {}

bool makePrivateFolder(const QString &path)
{
    return QDir().mkdir(path) || QFileInfo(path).isDir();
}
