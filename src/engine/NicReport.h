#pragma once

#include <QByteArray>

struct AdapterList;

/// The network adapters as UTF-8 text, one block per adapter, in list order; for a failed query,
/// its error code. Speeds are in whole megabits per second, rounded down.
[[nodiscard]] QByteArray nicReport(const AdapterList &list);
