#pragma once

#include <QDateTime>
#include <QString>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

/// The SDK's properties file on disk. Its size is limited only by memory. Any thread.
namespace PropertiesFile {

/// The contents of the file at @p path; nullopt if it cannot be opened, read completely or held in
/// memory. Folders, pipes and devices cannot be opened.
[[nodiscard]] std::optional<std::string> read(const QString &path);

/// Whether the existing file at @p path can be opened for writing.
[[nodiscard]] bool isWritable(const QString &path);

/// Overwrites the existing file at @p path with @p bytes, in place: on most file systems only
/// growth needs disk space. Returns false if not all of it could be written. Does not create a
/// missing file.
[[nodiscard]] bool overwrite(const QString &path, std::string_view bytes);

/// Size in bytes and modification time, to detect changes without reading the file.
using Stamp = std::pair<qint64, QDateTime>;
[[nodiscard]] Stamp stamp(const QString &path);

/// These functions as members, which tests replace.
struct Disk
{
    std::function<std::optional<std::string>(const QString &path)> read = PropertiesFile::read;
    std::function<bool(const QString &path, std::string_view bytes)> overwrite =
        PropertiesFile::overwrite;
    std::function<Stamp(const QString &path)> stamp = PropertiesFile::stamp;
};

} // namespace PropertiesFile
