// The line search: the filter on a log of 150 MB in which 1.4 % of the lines match, against grep
// counting the lines of the same expression; and worst-case expressions on one long line, ten times
// as long. Run it as build/bench/bin/bench_line_search, or all benchmarks with ./bench.

#include "LineSearch.h"
#include "Ratios.h"
#include "SampleLog.h"

#include <benchmark/benchmark.h>

#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>

namespace {

const QTemporaryDir &folder()
{
    static const QTemporaryDir dir;
    return dir;
}

QString written(const char *name, const QByteArray &text, int times)
{
    QFile file(folder().filePath(QLatin1String(name)));
    if (!file.exists() && file.open(QIODevice::WriteOnly)) {
        for (int i = 0; i < times; ++i)
            file.write(text);
    }
    return file.fileName();
}

QString bigLog()
{
    static const QString path = written("big.log", sampleLog(100'000), 13); // 156 MB
    return path;
}

void grep(benchmark::State &state, const char *expression)
{
    // Into a file: grep stops at the first match when it finds its output thrown away.
    const QByteArray command = "grep -c '" + QByteArray(expression) + "' '" +
                               QFile::encodeName(bigLog()) + "' >'" +
                               QFile::encodeName(folder().filePath(QStringLiteral("count"))) + '\'';
    for (auto _ : state) {
        // 1: no line matches.
        if (std::system(command.constData()) / 256 > 1)
            state.SkipWithError("no grep");
    }
}

void filter(benchmark::State &state, const char *expression)
{
    const QString path = bigLog();
    qint64 pieces = 0;
    for (auto _ : state) {
        pieces = 0;
        systemLineSearch(expression, path, [&pieces](const char *) { ++pieces; });
    }
    state.counters["lines"] = double(pieces);
}

#define BOTH(name, expression)                                                                     \
    BENCHMARK_CAPTURE(grep, name, expression)->Unit(benchmark::kMillisecond);                      \
    BENCHMARK_CAPTURE(filter, name, expression)->Unit(benchmark::kMillisecond)

BOTH(gap, "ERROR.*timeout");
BOTH(word, "\\<timeout\\>");
BOTH(digits, "1[0-9]*0.ms");
BOTH(repeated, "rx*e[a-f]*d");
BOTH(nothing, "nosuchtext");

/// One line of nothing but "a", 4 or 40 million bytes.
void worstCase(benchmark::State &state, const char *expression)
{
    const auto size = int(state.range(0));
    const QString path = written(QByteArray::number(size).constData(), QByteArray(size, 'a'), 1);
    for (auto _ : state)
        systemLineSearch(expression, path, [](const char *) {});
}

#define WORST(name, expression)                                                                    \
    BENCHMARK_CAPTURE(worstCase, name, expression)                                                 \
        ->Arg(4'000'000)                                                                           \
        ->Arg(40'000'000)                                                                          \
        ->Unit(benchmark::kMillisecond)

WORST(gaps, ".*.*.*x");
WORST(between, "a.*a.*a.*x");
WORST(classes, "aa*[ab]*a*x");

} // namespace

int main(int argc, char **argv)
{
    return runAndCompare(
        argc, argv,
        {{"search 'ERROR.*timeout' in 150 MB / grep -c", "filter/gap", "grep/gap", 1.5},
         {"search '\\<timeout\\>' in 150 MB / grep -c", "filter/word", "grep/word", 1.5},
         {"search with two repeated classes / grep -c", "filter/repeated", "grep/repeated", 1.5},
         {"search for nothing there / grep -c", "filter/nothing", "grep/nothing", 1.5},
         {"'.*.*.*x', ten times the line", "worstCase/gaps/40000000", "worstCase/gaps/4000000", 12},
         {"'a.*a.*a.*x', ten times the line", "worstCase/between/40000000",
          "worstCase/between/4000000", 12},
         {"'aa*[ab]*a*x', ten times the line", "worstCase/classes/40000000",
          "worstCase/classes/4000000", 12}});
}
