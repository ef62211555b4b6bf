#include "SdkLogFiles.h"

#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>

QVector<SdkLogFile> newestSdkLogFiles(const QString &folder, int limit)
{
    struct Found
    {
        qint64 modified; // milliseconds since the epoch: cheaper to compare than a QDateTime
        QFileInfo file;
    };
    QVector<Found> found;
    QDirIterator walk(folder, QDir::Files | QDir::NoSymLinks | QDir::NoDotAndDotDot);
    while (walk.hasNext()) {
        walk.next();
        if (walk.fileName().contains(QLatin1String(".log")))
            found.append({walk.fileInfo().lastModified().toMSecsSinceEpoch(), walk.fileInfo()});
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const Found &a, const Found &b) { return a.modified > b.modified; });

    QVector<SdkLogFile> files;
    for (int i = 0; i < qMin(limit, found.size()); ++i) {
        const QFileInfo &file = found.at(i).file;
        files.append({file.absoluteFilePath(), file.fileName(), file.lastModified(), file.size()});
    }
    return files;
}
