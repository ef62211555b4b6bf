// The log viewer: loading 100,000 lines (12 MB), hiding a level, copying all lines, the line
// splitter, search.

#include "FreeMemory.h"
#include "LogLine.h"
#include "LogRows.h"
#include "LogViewer.h"
#include "Ratios.h"
#include "SampleLog.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTimer>

#include <malloc.h>

#include <atomic>
#include <memory>

namespace {

constexpr int lineCount = 100000;
constexpr int lineBytes = 120;

/// A log of @p lines lines. There are two, because the viewer does not reload the same path.
QString logPath(int lines, bool second)
{
    static const QTemporaryDir dir;
    const QString path = QStringLiteral("%1/%2_%3.log").arg(dir.path()).arg(lines).arg(int(second));
    QFile file(path);
    if (!file.exists() && file.open(QIODevice::WriteOnly))
        file.write(sampleLog(lines));
    return path;
}

QTableWidget &tableOf(const LogViewer &viewer)
{
    return *viewer.findChild<QTableWidget *>(QStringLiteral("tableWidget"));
}

struct RowTexts
{
    QString line;
    std::array<QString, LogRows::ColumnCount> cells;
};

std::vector<RowTexts> readyMadeTexts()
{
    const QString levels[] = {QStringLiteral("INFO"), QStringLiteral("DEBUG"),
                              QStringLiteral("WARN"), QStringLiteral("ERROR")};
    const QString sources[] = {QStringLiteral("CameraClient"), QStringLiteral("StreamReceiver"),
                               QStringLiteral("GvcpChannel")};
    const QList<QByteArray> lines = sampleLog(lineCount).split('\n');
    std::vector<RowTexts> texts(lineCount);
    for (int i = 0; i < lineCount; ++i) {
        RowTexts &row = texts[std::size_t(i)];
        row.line = QString::fromLatin1(lines.at(i));
        const QString message = row.line.mid(row.line.lastIndexOf(QLatin1Char(']')) + 1);
        row.cells = {row.line.left(23), levels[i % 4], sources[i % 3], message};
    }
    return texts;
}

void fill(QTableWidget &table, const std::vector<RowTexts> &texts)
{
    const ModelSignalBlocker silent(table);
    for (int row = 0; row < lineCount; ++row) {
        const RowTexts &text = texts[std::size_t(row)];
        for (int column = 0; column < LogRows::ColumnCount; ++column) {
            auto *item = new QTableWidgetItem(text.cells[std::size_t(column)]);
            item->setToolTip(text.line);
            table.setItem(row, column, item);
        }
    }
}

/// Empties the table and makes the heap merge the freed blocks: otherwise it would do so at the
/// next large request, which only one of the compared benchmarks makes.
void clear(QTableWidget &table)
{
    table.clearContents();
    malloc_trim(0);
}

/// The baseline: the same items from existing strings.
void readyMadeItems(benchmark::State &state)
{
    const std::vector<RowTexts> texts = readyMadeTexts();
    LogViewer viewer(nullptr);
    QTableWidget &table = tableOf(viewer);
    for (auto _ : state) {
        state.PauseTiming();
        clear(table);
        state.ResumeTiming();
        fill(table, texts);
    }
}
BENCHMARK(readyMadeItems)->Unit(benchmark::kMillisecond);

void load(benchmark::State &state)
{
    LogViewer viewer(nullptr);
    bool second = false;
    for (auto _ : state) {
        state.PauseTiming();
        const std::string path = logPath(lineCount, second).toStdString();
        second = !second;
        clear(tableOf(viewer));
        state.ResumeTiming();
        if (!viewer.openLogFile(path))
            state.SkipWithError("not loaded");
    }
}
BENCHMARK(load)->Unit(benchmark::kMillisecond);

/// Hiding and showing a level in a visible window until the table is repainted.
void hideAndShow(benchmark::State &state)
{
    const auto lines = int(state.range(0));
    LogViewer viewer(nullptr);
    viewer.openLogFile(logPath(lines, false).toStdString());
    viewer.show();
    QCoreApplication::processEvents();
    auto *const box = viewer.findChild<QCheckBox *>(QStringLiteral("checkBoxINFO"));
    for (auto _ : state) {
        box->click();
        QCoreApplication::processEvents();
        box->click();
        QCoreApplication::processEvents();
    }
}
BENCHMARK(hideAndShow)->Arg(lineCount / 10)->Arg(lineCount)->Unit(benchmark::kMillisecond);

void copyAll(benchmark::State &state)
{
    LogViewer viewer(nullptr);
    viewer.openLogFile(logPath(lineCount, false).toStdString());
    for (auto _ : state)
        QMetaObject::invokeMethod(&viewer, "onActionCopyAllTriggered");
}
BENCHMARK(copyAll)->Unit(benchmark::kMillisecond);

void splitLines(benchmark::State &state)
{
    const QByteArray text = sampleLog(lineCount);
    for (auto _ : state) {
        std::string_view rest(text.constData(), std::size_t(text.size()));
        while (!rest.empty()) {
            const std::size_t end = rest.find('\n');
            benchmark::DoNotOptimize(splitLogLine(rest.substr(0, end)));
            rest.remove_prefix(end + 1);
        }
    }
    state.SetBytesProcessed(state.iterations() * text.size());
}
BENCHMARK(splitLines)->Unit(benchmark::kMillisecond);

void construct(benchmark::State &state)
{
    for (auto _ : state)
        const LogViewer viewer(nullptr);
}
BENCHMARK(construct)->Unit(benchmark::kMillisecond);

/// The longest time in seconds that a step of @p work blocked the event loop.
template <typename Work>
double longestGap(Work work)
{
    QElapsedTimer sinceEvent;
    qint64 longest = 0;
    QTimer timer;
    timer.callOnTimeout(
        [&] { longest = qMax(longest, sinceEvent.nsecsElapsed()), sinceEvent.start(); });
    timer.start(0);
    sinceEvent.start();
    work();
    QCoreApplication::processEvents();
    return double(longest) / 1e9;
}

struct LoadedViewer
{
    LoadedViewer()
    {
        viewer.openLogFile(logPath(lineCount, false).toStdString());
        viewer.show();
        QCoreApplication::processEvents();
    }

    void search()
    {
        viewer.findChild<QLineEdit *>(QStringLiteral("lineEdit"))->setText(QStringLiteral("."));
        QMetaObject::invokeMethod(&viewer, "on_btnSearch_clicked");
    }

    LogViewer viewer{nullptr};
};

/// Every line matches.
void searchAll(benchmark::State &state)
{
    LoadedViewer f;
    for (auto _ : state)
        f.search();
}
BENCHMARK(searchAll)->Unit(benchmark::kMillisecond)->UseRealTime();

/// The baseline of searchAll(): loading a log in a window that shows another one.
void loadAgain(benchmark::State &state)
{
    LoadedViewer f;
    bool second = true;
    for (auto _ : state) {
        f.viewer.openLogFile(logPath(lineCount, second).toStdString());
        second = !second;
    }
}
BENCHMARK(loadAgain)->Unit(benchmark::kMillisecond)->UseRealTime();

void gapOfLoad(benchmark::State &state)
{
    LoadedViewer f;
    bool second = true;
    for (auto _ : state) {
        const std::string path = logPath(lineCount, second).toStdString();
        state.SetIterationTime(longestGap([&] { f.viewer.openLogFile(path); }));
        second = !second;
    }
}
BENCHMARK(gapOfLoad)->Unit(benchmark::kMillisecond)->UseManualTime();

void gapOfSearch(benchmark::State &state)
{
    LoadedViewer f;
    for (auto _ : state)
        state.SetIterationTime(longestGap([&f] { f.search(); }));
}
BENCHMARK(gapOfSearch)->Unit(benchmark::kMillisecond)->UseManualTime();

void gapOfFilter(benchmark::State &state)
{
    LoadedViewer f;
    auto *const box = f.viewer.findChild<QCheckBox *>(QStringLiteral("checkBoxINFO"));
    for (auto _ : state)
        state.SetIterationTime(longestGap([box] { box->click(); }));
}
BENCHMARK(gapOfFilter)->Unit(benchmark::kMillisecond)->UseManualTime();

void gapOfCopy(benchmark::State &state)
{
    LoadedViewer f;
    for (auto _ : state)
        state.SetIterationTime(
            longestGap([&f] { QMetaObject::invokeMethod(&f.viewer, "onActionCopyAllTriggered"); }));
}
BENCHMARK(gapOfCopy)->Unit(benchmark::kMillisecond)->UseManualTime();

/// The number of searches started by pressing Enter 20 times: one, and one more for the rest.
void countSearches()
{
    const auto begun = std::make_shared<std::atomic<int>>(0);
    LogViewer viewer(nullptr, [begun](const std::string &, const QString &, const PieceSink &sink,
                                      const SearchStop &stop) {
        ++*begun;
        for (int i = 1; i < lineCount && !stop; ++i) // a full table stops it
            sink("2024-03-02 12:00:00.250 INFO [1] [Camera] found\n");
        return true;
    });
    viewer.show();
    auto *const field = viewer.findChild<QLineEdit *>(QStringLiteral("lineEdit"));
    field->setText(QStringLiteral("x"));
    for (int i = 0; i < 19; ++i)
        QTimer::singleShot(i, &viewer, [field] { emit field->returnPressed(); });
    emit field->returnPressed();
    const int searches = *begun;
    print({"searches that 20 Enters in a row begin",
           std::to_string(searches),
           {},
           {},
           0,
           "<= 2",
           searches <= 2 ? Row::Met::Yes : Row::Met::No});
}

double allocatedBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return double(info.uordblks + info.hblkhd);
}

std::string megabytes(double bytes)
{
    return QString::number(bytes / 1e6, 'f', 1).toStdString() + " MB";
}

void compareMemory()
{
    LogViewer viewer(nullptr);
    const std::string path = logPath(lineCount, false).toStdString();
    const double before = allocatedBytes();
    viewer.openLogFile(path);
    const double loaded = allocatedBytes() - before;
    QTableWidget &table = tableOf(viewer);
    table.clearContents();
    const double cleared = allocatedBytes();
    {
        const std::vector<RowTexts> texts = readyMadeTexts();
        fill(table, texts);
    }
    const double floor = allocatedBytes() - cleared;
    const double ratio = loaded / floor;
    print({"memory after loading 100,000 lines", megabytes(loaded), "ready-made items",
           megabytes(floor), ratio, "<= 1.30", ratio <= 1.3 ? Row::Met::Yes : Row::Met::No});
}

} // namespace

int main(int argc, char **argv)
{
    mergeFreedBlocksImmediately();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    const int result = runAndCompare(
        argc, argv,
        {{{"load of 100,000 lines (12 MB)", "load", "ready-made items", "readyMadeItems", 1.2},
          {"search with 100,000 lines found", "searchAll", "load", "loadAgain", 1.3, Clock::Wall},
          {"one level of 100,000 rows hidden, shown", "hideAndShow/100000", "of 10,000 rows",
           "hideAndShow/10000", 12}},
         {{"one level of 100,000 rows hidden or shown", "hideAndShow/100000", 20, 2},
          {"copy all of 100,000 rows", "copyAll", 60},
          {"longest gap between events: search, 100,000 found", "gapOfSearch", 50},
          {"longest gap between events: level filter", "gapOfFilter", 50},
          {"longest gap between events: copy all", "gapOfCopy", 100},
          {"longest gap between events: load", "gapOfLoad", 0}},
         {{"line splitter", "splitLines", lineCount * lineBytes, 300}}});
    countSearches();
    compareMemory();
    return result;
}
