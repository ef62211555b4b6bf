#pragma once

#include <QDateTime>
#include <QString>
#include <QVector>

struct SdkLogFile
{
    QString path; ///< absolute
    QString name;
    QDateTime modified;
    qint64 size; ///< bytes
};

/// The @p limit most recently modified files of @p folder whose names contain ".log" in lower case,
/// newest first. Files with equal times are sorted by name. Subfolders and links are left out; a
/// missing folder has no files.
[[nodiscard]] QVector<SdkLogFile> newestSdkLogFiles(const QString &folder, int limit);
