// The line filter on a log of 156 MB with 1.4 % matching lines, compared with grep counting the
// matches of the same expression; and worst-case expressions on long lines, where the time must be
// linear.

#include "LineFilter.h"
#include "LineSearch.h"
#include "Ratios.h"
#include "SampleLog.h"

#include <benchmark/benchmark.h>

#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>
#include <string>

#include <sys/resource.h>

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

/// CPU time of all finished child processes, in seconds.
double childrensTime()
{
    struct rusage usage = {};
    getrusage(RUSAGE_CHILDREN, &usage);
    const auto seconds = [](const timeval &time) {
        return double(time.tv_sec) + double(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

void grep(benchmark::State &state, const char *expression)
{
    // The C locale makes grep match bytes, as the filter does. With output to /dev/null grep would
    // stop at the first match.
    const QByteArray command = "LC_ALL=C exec grep -c '" + QByteArray(expression) + "' '" +
                               QFile::encodeName(bigLog()) + "' >'" +
                               QFile::encodeName(folder().filePath(QStringLiteral("count"))) + '\'';
    for (auto _ : state) {
        const double before = childrensTime();
        // Exit code 1: no match.
        if (std::system(command.constData()) / 256 > 1)
            state.SkipWithError("no grep");
        state.SetIterationTime(childrensTime() - before);
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

#define BOTH(name, ours, grepsOwn)                                                                 \
    BENCHMARK_CAPTURE(grep, name, grepsOwn)->Unit(benchmark::kMillisecond)->UseManualTime();       \
    BENCHMARK_CAPTURE(filter, name, ours)->Unit(benchmark::kMillisecond)

BOTH(gap, "ERROR.*timeout", "ERROR.*timeout");
BOTH(word, "\\<timeout\\>", "\\<timeout\\>");
BOTH(digits, "1[0-9]*0.ms", "1[0-9]*0.ms");
BOTH(classes, "rx*e[a-f]*d", "rx*e[a-f]*d");
BOTH(letters, "e.*r.*q", "e.*r.*q");
BOTH(lineStart, "^2024.*WARN", "^2024.*WARN");
BOTH(several, "ERROR WARN", "ERROR\\|WARN");
BOTH(nothing, "nosuchtext", "nosuchtext");

/// Lines of "a" only, 40 million bytes in total.
void worstCase(benchmark::State &state, const char *expression)
{
    constexpr std::size_t bytes = 40'000'000;
    const auto lines = std::size_t(state.range(0));
    std::string text(bytes, 'a');
    for (std::size_t i = 1; i <= lines; ++i)
        text[i * (bytes / lines) - 1] = '\n';
    const LineFilter search(expression);
    for (auto _ : state)
        search.forEachLine(text, [](std::string_view) {});
}

#define WORST(name, expression)                                                                    \
    BENCHMARK_CAPTURE(worstCase, name, expression)->Arg(10)->Arg(1)->Unit(benchmark::kMillisecond)

WORST(gaps, ".*.*.*x");
WORST(between, "a.*a.*a.*x");
WORST(classes, "aa*[ab]*a*x");

} // namespace

int main(int argc, char **argv)
{
    const char *const tenLines = "in ten lines of 4 MB";
    return runAndCompare(
        argc, argv,
        {{{"search 'ERROR.*timeout' in 156 MB", "filter/gap", "grep -c", "grep/gap", 1.5},
          {"search '\\<timeout\\>'", "filter/word", "grep -c", "grep/word", 1.5},
          {"search '1[0-9]*0.ms'", "filter/digits", "grep -c", "grep/digits", 1.5},
          {"search 'rx*e[a-f]*d'", "filter/classes", "grep -c", "grep/classes", 1.5},
          {"search 'e.*r.*q'", "filter/letters", "grep -c", "grep/letters", 1.5},
          {"search '^2024.*WARN'", "filter/lineStart", "grep -c", "grep/lineStart", 1.5},
          {"search 'ERROR WARN'", "filter/several", "grep -c 'ERROR\\|WARN'", "grep/several", 1.5},
          {"search for what is not there", "filter/nothing", "grep -c", "grep/nothing", 1.5},
          {"'.*.*.*x' in a line of 40 MB", "worstCase/gaps/1", tenLines, "worstCase/gaps/10", 1.2},
          {"'a.*a.*a.*x' in a line of 40 MB", "worstCase/between/1", tenLines,
           "worstCase/between/10", 1.2},
          {"'aa*[ab]*a*x' in a line of 40 MB", "worstCase/classes/1", tenLines,
           "worstCase/classes/10", 1.2}}});
}
