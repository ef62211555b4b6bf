#pragma once

#include <QString>

#include <string>
#include <vector>

struct ZipEntry
{
    std::string name; ///< the bytes that stand in the zip
    std::string contents;
};

/// All entries of the zip at @p path in their order, as a reader of another maker sees them. It is
/// a finding when there is anything wrong with the zip.
[[nodiscard]] std::vector<ZipEntry> listZip(const QString &path);
