#pragma once

#include "NetworkAdapters.h"

#include <functional>

// What the answers of this folder are made of, for those who want to look on.

/// Exports a log: channel path, query, target path, flags. Returns whether it could.
using ExportLog =
    std::function<bool(const wchar_t *, const wchar_t *, const wchar_t *, unsigned long)>;

/// Exports every event of @p channel by @p exportLog.
[[nodiscard]] bool exportEventLogBy(const ExportLog &exportLog, const QString &channel,
                                    const QString &target);

/// Lists adapters: address family, flags, room for what is found, its size in bytes. Returns an
/// error code of the system.
using ListAdapters =
    std::function<unsigned long(unsigned long, unsigned long, void *, unsigned long *)>;

/// What @p list finds.
[[nodiscard]] AdapterList networkAdaptersBy(const ListAdapters &list);
