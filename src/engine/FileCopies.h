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
    QString failure; ///< reason if not copied
};

/// Copies a regular file unless the target exists. Rejects pipes and devices without blocking. Any
/// thread.
[[nodiscard]] CopyResult copyFile(const FileCopy &copy);

/// Makes @p copies, four at a time, and returns when all are finished. Calls @p report on the
/// caller's thread in list order, as soon as a result and all earlier ones are known. Copies whose
/// targets are equal or differ only in case are made one after the other, in list order.
///
/// Calls @p copyOne on other threads.
void copyFiles(const QVector<FileCopy> &copies,
               const std::function<void(const FileCopy &, const CopyResult &)> &report,
               const std::function<CopyResult(const FileCopy &)> &copyOne = copyFile);
