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

/// The @p limit files of @p folder that were modified last, newest first, whose names contain
/// ".log" in small letters. Names in ascending order decide between equal times. Sub-folders and
/// links are left out; a missing folder has no files.
[[nodiscard]] QVector<SdkLogFile> newestSdkLogFiles(const QString &folder, int limit);
