#pragma once

#include <QtGlobal>

#include <functional>

/// Called with the number of bytes that a step has just read, on the thread that carries it out.
/// May be empty.
using ProgressSink = std::function<void(qint64 bytes)>;
