#pragma once

#include <QDateTime>
#include <QString>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

/// The SDK's properties file on the disk, of whatever size memory allows. Any thread.
namespace PropertiesFile {

/// All bytes of the file at @p path; nothing when it cannot be opened, read to its end or held in
/// memory. Folders, pipes and devices count as files that cannot be opened.
[[nodiscard]] std::optional<std::string> read(const QString &path);

/// Whether the existing file at @p path may be written.
[[nodiscard]] bool isWritable(const QString &path);

/// Gives the existing file at @p path the contents @p bytes, in place: on most file systems an
/// overwritten part needs no new room, so that only growth can fail on a full disk. False when it
/// could not be done entirely; a missing file is not made.
[[nodiscard]] bool overwrite(const QString &path, std::string_view bytes);

/// Size in bytes and time of the last change: what tells that a file was written, without reading
/// it.
using Stamp = std::pair<qint64, QDateTime>;
[[nodiscard]] Stamp stamp(const QString &path);

/// The above, for a test to put others in their places.
struct Disk
{
    std::function<std::optional<std::string>(const QString &path)> read = PropertiesFile::read;
    std::function<bool(const QString &path, std::string_view bytes)> overwrite =
        PropertiesFile::overwrite;
    std::function<Stamp(const QString &path)> stamp = PropertiesFile::stamp;
};

} // namespace PropertiesFile
