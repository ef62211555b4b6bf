#pragma once

#include <QString>
#include <QVector>

#include <functional>

struct FileCopy
{
    QString from;
    QString to;
};

struct CopyResult
{
    bool copied = false;
    QString failure; ///< why not
};

/// Copies a regular file, unless the target exists. A pipe or a device is refused at once, without
/// waiting for anything. Any thread.
[[nodiscard]] CopyResult copyFile(const FileCopy &copy);

/// Makes @p copies, four at a time, and returns when all are made. @p report gets each result on
/// the caller's thread, in the order of the list, as soon as it and all before it are known. Of two
/// copies with the same target, or targets that differ in case alone, the first is made first.
///
/// @p copyOne is called on other threads.
void copyFiles(const QVector<FileCopy> &copies,
               const std::function<void(const FileCopy &, const CopyResult &)> &report,
               const std::function<CopyResult(const FileCopy &)> &copyOne = copyFile);
