#pragma once

#include <QString>

#include <functional>

// What the answers of this folder are made of, for those who want to look on.

/// Exports a log: channel path, query, target path, flags. Returns whether it could.
using ExportLog =
    std::function<bool(const wchar_t *, const wchar_t *, const wchar_t *, unsigned long)>;

/// Exports every event of @p channel by @p exportLog.
[[nodiscard]] bool exportEventLogBy(const ExportLog &exportLog, const QString &channel,
                                    const QString &target);
