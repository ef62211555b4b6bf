#include "SdkLogFiles.h"

#include "ModificationTime.h"

#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>

QVector<SdkLogFile> newestSdkLogFiles(const QString &folder, int limit)
{
    struct Found
    {
        qint64 modified;
        QFileInfo file;
    };
    QVector<Found> found;
    QDirIterator walk(folder, QDir::Files | QDir::NoSymLinks | QDir::NoDotAndDotDot);
    while (walk.hasNext()) {
        walk.next();
        if (walk.fileName().contains(QLatin1String(".log")))
            found.append({modificationTime(walk.fileInfo()), walk.fileInfo()});
    }
    const auto listedEnd = found.begin() + qMin(limit, found.size());
    std::partial_sort(found.begin(), listedEnd, found.end(), [](const Found &a, const Found &b) {
        return a.modified != b.modified ? a.modified > b.modified
                                        : a.file.fileName() < b.file.fileName();
    });

    QVector<SdkLogFile> files;
    for (auto listed = found.begin(); listed != listedEnd; ++listed) {
        const QFileInfo &file = listed->file;
        files.append({file.absoluteFilePath(), file.fileName(), file.lastModified(), file.size()});
    }
    return files;
}
