#pragma once

#include <QString>

#include <functional>

/// A path in @p folder, @p base + @p extension, that no file takes yet; "(1)", "(2)" and so on,
/// without end, stand behind the base where names are taken.
[[nodiscard]] QString uniqueFilePath(const QString &folder, const QString &base,
                                     const QString &extension);

/// Exports the application's and then the system's events into @p folder by @p exportChannel, which
/// is given the channel and the file to write. False at the first that fails.
[[nodiscard]] bool exportEventLogs(
    const QString &folder,
    const std::function<bool(const QString &channel, const QString &target)> &exportChannel);
