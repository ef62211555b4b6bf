#pragma once

#include <QByteArray>
#include <QDateTime>

class SampleRandom;

/// A log in the SDK's format for @p process: lines with time, level, thread, source and message in
/// all five levels, and unstructured lines in between (a heading, statistics, stack traces). It has
/// @p lines lines, at least one; times span some hours and end before @p end.
[[nodiscard]] QByteArray sampleLog(const QByteArray &process, const QDateTime &end, int lines,
                                   SampleRandom &random);

/// The time span of one log in milliseconds.
constexpr qint64 sampleLogSpan = 6LL * 3600 * 1000;
