#pragma once

#include <QtGlobal>

#include <functional>

/// Learns how far an archive is, on the thread that packs it. Either function may be empty.
struct ProgressSink
{
    std::function<void(qint64 bytes)> expect;  ///< all that will be read; before the first file
    std::function<void(qint64 bytes)> advance; ///< so much was packed since the last call
};
