#pragma once

#include <QByteArray>
#include <QDateTime>

class SampleRandom;

/// A log as the SDK writes it for @p process: lines of time, level, thread, source and message in
/// all five levels, and between them lines without that shape (a heading, statistics, stack
/// traces). It has @p lines lines, each ended by a line feed, at least one; the times run over some
/// hours and stay before @p end.
[[nodiscard]] QByteArray sampleLog(const QByteArray &process, const QDateTime &end, int lines,
                                   SampleRandom &random);

/// How much time the lines of one log are spread over, in milliseconds.
constexpr qint64 sampleLogSpan = 6LL * 3600 * 1000;
