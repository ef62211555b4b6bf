#pragma once

#include <QString>

#include <string>
#include <vector>

struct ZipEntry
{
    std::string name; ///< raw bytes
    std::string contents;
};

/// All entries of the zip at @p path, in order, as read by an independent reader. Any error in the
/// zip is a finding.
[[nodiscard]] std::vector<ZipEntry> listZip(const QString &path);
