#pragma once

#include "ProgressSink.h"

#include <QString>

#include <functional>
#include <vector>

class ZipTarget;

/// A file that becomes an entry of a zip.
struct FileToPack
{
    QString name; ///< of the entry
    QString path;
    qint64 size;                  ///< no more bytes of it are packed
    std::function<void()> packed; ///< called once that was done, or tried; may be empty
};

/// Writes a whole zip of any size, with files of any size and any number of them, in the zip64
/// format. It goes block by block, so the memory that it takes does not depend on the sizes. A file
/// that cannot be read becomes an empty entry, or ends where it could no longer be read. @p target
/// is open and empty; it is made to fail when the zip could not be written. @p progress is given
/// the bytes as they are read. Any thread.
void writeLargeZip(const std::vector<FileToPack> &files, ZipTarget &target,
                   const ProgressSink &progress);
