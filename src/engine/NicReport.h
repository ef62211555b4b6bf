#pragma once

#include <QByteArray>

struct AdapterList;

/// The network adapters as text in UTF-8, a block for each, in the list's order. Of a failed query
/// it tells the error code. Speeds are whole megabits per second, rounded down.
[[nodiscard]] QByteArray nicReport(const AdapterList &list);
