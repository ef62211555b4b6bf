#pragma once

#include "NetworkAdapters.h"

#include <functional>

// This folder's queries with their system calls as parameters, for tests.

/// Exports a log; parameters: channel path, query, target path, flags. Returns whether it
/// succeeded.
using ExportLog =
    std::function<bool(const wchar_t *, const wchar_t *, const wchar_t *, unsigned long)>;

/// Exports all events of @p channel by @p exportLog.
[[nodiscard]] bool exportEventLogBy(const ExportLog &exportLog, const QString &channel,
                                    const QString &target);

/// Lists adapters; parameters: address family, flags, buffer, its size in bytes. Returns a system
/// error code.
using ListAdapters =
    std::function<unsigned long(unsigned long, unsigned long, void *, unsigned long *)>;

/// The adapters that @p list returns.
[[nodiscard]] AdapterList networkAdaptersBy(const ListAdapters &list);
