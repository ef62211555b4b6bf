#pragma once

#include <QtGlobal>

#include <functional>

/// Receives the progress of an archive on the thread that packs it. Either function may be empty.
struct ProgressSink
{
    std::function<void(qint64 bytes)> expect;  ///< total size; called before the first file
    std::function<void(qint64 bytes)> advance; ///< bytes packed since the last call
};
