#pragma once

#include <QString>

#include <functional>

/// Returns the path of a file in @p folder that does not exist: @p base + @p extension or, if that
/// is taken, with "(1)", "(2)" and so on after the base.
[[nodiscard]] QString uniqueFilePath(const QString &folder, const QString &base,
                                     const QString &extension);

/// Exports the Application channel and then the System channel to @p folder by @p exportChannel,
/// which takes the channel and the target file. Returns false at the first failure.
[[nodiscard]] bool exportEventLogs(
    const QString &folder,
    const std::function<bool(const QString &channel, const QString &target)> &exportChannel);
