#pragma once

#include "ProgressSink.h"

#include <QString>

#include <functional>
#include <vector>

class ZipTarget;

/// A file to add to a zip.
struct FileToPack
{
    QString name; ///< entry name
    QString path;
    qint64 size;                  ///< bytes; the rest of a file that grows is left out
    std::function<void()> packed; ///< called after success or failure; may be empty
};

/// Writes a complete zip of any size, with any number of files of any size, in Zip64 format. Works
/// in blocks: memory use does not depend on sizes. An unreadable file becomes an empty or truncated
/// entry. @p target must be open and empty; its fail() is called if the zip cannot be written. @p
/// progress receives bytes as they are read. Any thread.
void writeLargeZip(const std::vector<FileToPack> &files, ZipTarget &target,
                   const ProgressSink &progress);
