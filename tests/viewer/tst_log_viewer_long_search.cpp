#include "ViewerFixture.h"

#include <QDeadlineTimer>
#include <QDialog>
#include <QProcess>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>

namespace {

constexpr int patience = 60'000; // milliseconds; only exceeded on failure

void yieldUntil(const std::function<bool()> &condition)
{
    const QDeadlineTimer deadline(patience);
    while (!condition() && !deadline.hasExpired())
        std::this_thread::yield();
}

/// A search that finds one line, its keyword. With the keyword "endless" it then continues until
/// stopped; with "deaf", until released. The state shared with its threads outlives it.
class SlowSearch
{
public:
    struct State
    {
        std::atomic<int> started{0};
        std::atomic<int> stopped{0};
        std::atomic<int> ended{0};
        std::atomic<bool> isReleased{false};
    };

    ~SlowSearch()
    {
        state->isReleased = true;
        yieldUntil([this] { return state->ended == state->started; });
    }

    [[nodiscard]] LineSearch lineSearch() const
    {
        return [state = state](const std::string &keyword, const QString & /*path*/,
                               const PieceSink &sink, const SearchStop &stop) {
            ++state->started;
            sink((keyword + '\n').c_str());
            if (keyword == "endless")
                yieldUntil([&] { return bool(stop); });
            if (keyword == "deaf")
                yieldUntil([&] { return bool(state->isReleased); });
            state->stopped += stop ? 1 : 0;
            if (stop)
                sink("too late\n");
            ++state->ended;
            return true;
        };
    }

    const std::shared_ptr<State> state = std::make_shared<State>();
};

/// A viewer with this search and a file of two lines.
struct Fixture : SlowSearch, ViewerFixture
{
    Fixture()
        : ViewerFixture(lineSearch())
        , opened(openLines({"one", "two"}))
    {
        timer.callOnTimeout(&viewer, [this] { look(); });
    }

    /// Calls @p action once, from the event loop, as soon as the table shows @p line.
    void whenShown(const QString &line, const std::function<void()> &action)
    {
        awaited = line + '\n';
        then = action;
        timer.start(0);
    }

    const bool opened;

private:
    void look()
    {
        if (text(0, 3) == awaited) {
            timer.stop();
            const std::function<void()> action = then; // it may call whenShown() again
            action();
        }
    }

    QString awaited;
    std::function<void()> then;
    QTimer timer;
};

const QString endless = "endless";
const QString deaf = "deaf";
const QString next = "next";

} // namespace

class LogViewerLongSearch : public QObject
{
    Q_OBJECT

private slots:
    void endsTheSearchWhenTheTableIsFull();
    void keepsTheWindowAlive();
    void keepsTheWindowAliveWhileManyLinesAreShown();
    void keepsTheWindowAliveWhileAFullTableIsEmptied();
    void showsWhatWasFoundBeforeTheEnd();
    void aNewSearchTakesOver();
    void manyNewSearchesEndInTheLastOne();
    void aSearchThatCannotBeStoppedKeepsNobodyWaiting();
    void aSearchGoesOnInANestedEventLoop();
    void openingAFileTakesOver();
    void readingTheLogAgainTakesOver();
    void readingTheLogAgainLeadsToALineFoundSoFar();
    void searchingAgainAfterOpeningAFileTakesOver();
    void openingTheShownFileChangesNothing();
    void closingTheWindowLetsTheSearchGoOn();
    void closingTheLastWindowEndsTheSearch();
    void closingTheLastWindowWaitsForNoSearch();
    void closingTheMainWindowWaitsForNoSearch();
    void theProgramEndsWhileASearchGoesOn();
};

void LogViewerLongSearch::endsTheSearchWhenTheTableIsFull()
{
    const auto wasStopped = std::make_shared<std::atomic<bool>>(false);
    ViewerFixture f([wasStopped](const std::string &, const QString &, const PieceSink &sink,
                                 const SearchStop &stop) {
        yieldUntil([&] {
            sink("x\n");
            return bool(stop);
        });
        *wasStopped = bool(stop);
        return true;
    });
    QVERIFY(f.openLines({"one"}));
    f.search("x");
    QVERIFY(*wasStopped);
    QCOMPARE(f.table().rowCount(), 6);
    QCOMPARE(f.filledRows(), 6);
}

void LogViewerLongSearch::keepsTheWindowAlive()
{
    Fixture f;
    QVERIFY(f.opened);
    bool wasAlive = false;
    QTimer::singleShot(0, &f.viewer, [&] {
        wasAlive = f.state->ended == 0;
        f.state->isReleased = true;
    });
    f.search(deaf);
    QVERIFY(wasAlive);
}

void LogViewerLongSearch::keepsTheWindowAliveWhileManyLinesAreShown()
{
    constexpr int lines = 100'000;
    const auto areFound = std::make_shared<std::atomic<bool>>(false);
    ViewerFixture f([areFound](const std::string &, const QString &, const PieceSink &sink,
                               const SearchStop &) {
        const QByteArray line = logLine("INFO") + '\n';
        for (int i = 0; i < lines; ++i)
            sink(line.constData());
        *areFound = true;
        return true;
    });
    QCOMPARE(f.table().rowCount(), lines);
    // Counts events once the matches only have to be shown.
    int steps = 0;
    QTimer timer;
    timer.callOnTimeout(&f.viewer, [&] { steps += *areFound ? 1 : 0; });
    timer.start(0);
    f.search("x");
    QCOMPARE(f.filledRows(), lines);
    QVERIFY2(steps >= 3, QByteArray::number(steps).constData());
}

void LogViewerLongSearch::keepsTheWindowAliveWhileAFullTableIsEmptied()
{
    constexpr int lines = 100;
    struct SlowCell : QTableWidgetItem
    {
        ~SlowCell() override { QThread::msleep(1); } // as long as 1,000 cells on a fast machine
    };
    ViewerFixture f([](const auto &...) { return true; });
    QVERIFY(f.open(f.folder.file("a.log", (logLine("INFO") + '\n').repeated(lines))));
    for (int row = 0; row < lines; ++row)
        f.table().setItem(row, 3, new SlowCell);
    bool wasPartlyEmpty = false;
    QTimer timer;
    timer.callOnTimeout(&f.viewer, [&] {
        if (f.table().item(0, 3) == nullptr && f.table().item(lines - 1, 3) != nullptr)
            wasPartlyEmpty = true;
    });
    timer.start(0);
    f.search("x");
    QCOMPARE(f.filledRows(), 0);
    QVERIFY(wasPartlyEmpty);
}

void LogViewerLongSearch::showsWhatWasFoundBeforeTheEnd()
{
    Fixture f;
    QVERIFY(f.opened);
    Qt::CursorShape cursor = Qt::ArrowCursor;
    f.whenShown(endless, [&] {
        cursor = f.table().viewport()->cursor().shape();
        f.search(next);
    });
    f.search(endless);
    QCOMPARE(cursor, Qt::BusyCursor);
    QCOMPARE(f.table().viewport()->cursor().shape(), Qt::ArrowCursor);
}

void LogViewerLongSearch::aNewSearchTakesOver()
{
    Fixture f;
    QVERIFY(f.opened);
    f.whenShown(endless, [&f] { f.search(next); });
    f.search(endless);
    QTRY_COMPARE(int(f.state->stopped), 1);
    QCOMPARE(f.filledRows(), 1);
    QCOMPARE(f.text(0, 3), "next\n");
}

void LogViewerLongSearch::manyNewSearchesEndInTheLastOne()
{
    Fixture f;
    QVERIFY(f.opened);
    int startedMeanwhile = 0;
    f.whenShown(endless, [&] {
        for (int i = 0; i < 20; ++i)
            f.pressEnter(endless);
        f.pressEnter(next);
        startedMeanwhile = f.state->started;
    });
    f.pressEnter(endless);
    QCOMPARE(startedMeanwhile, 1);
    QCOMPARE(int(f.state->started), 2);
    QCOMPARE(f.filledRows(), 1);
    QCOMPARE(f.text(0, 3), "next\n");
}

void LogViewerLongSearch::aSearchThatCannotBeStoppedKeepsNobodyWaiting()
{
    Fixture f;
    QVERIFY(f.opened);
    f.whenShown(deaf, [&f] { f.search(next); });
    f.search(deaf);
    QCOMPARE(int(f.state->started), 2);
    QTRY_COMPARE(int(f.state->ended), 1);
    QCOMPARE(f.text(0, 3), "next\n");
    f.state->isReleased = true;
    QTRY_COMPARE(int(f.state->ended), 2);
    QCOMPARE(f.filledRows(), 1);
}

void LogViewerLongSearch::aSearchGoesOnInANestedEventLoop()
{
    Fixture f;
    QVERIFY(f.opened);
    QStringList shown;
    f.whenShown(endless, [&] {
        QEventLoop nested; // as of a dialog
        f.whenShown(next, [&] {
            shown += f.text(0, 3);
            f.search("another");
            f.whenShown("another", [&] {
                shown += f.text(0, 3);
                nested.quit();
            });
        });
        f.search(next);
        QTimer::singleShot(patience, &nested, &QEventLoop::quit);
        nested.exec();
    });
    f.search(endless);
    QCOMPARE(shown, QStringList({"next\n", "another\n"}));
    QCOMPARE(int(f.state->started), 3);
}

void LogViewerLongSearch::openingAFileTakesOver()
{
    Fixture f;
    QVERIFY(f.opened);
    bool opened = false;
    f.whenShown(endless, [&] { opened = f.openLines({"three", "four"}); });
    f.search(endless);
    QVERIFY(opened);
    QTRY_COMPARE(int(f.state->stopped), 1);
    QCOMPARE(f.filledRows(), 2);
    QCOMPARE(f.text(0, 3), "three");
    QCOMPARE(f.text(1, 3), "four");
}

void LogViewerLongSearch::readingTheLogAgainTakesOver()
{
    Fixture f;
    QVERIFY(f.opened);
    f.whenShown(endless, [&f] { f.pressEnter(QString()); });
    f.search(endless);
    QTRY_COMPARE(int(f.state->stopped), 1);
    QCOMPARE(f.filledRows(), 2);
    QCOMPARE(f.text(0, 3), "one");
}

void LogViewerLongSearch::readingTheLogAgainLeadsToALineFoundSoFar()
{
    Fixture f;
    QVERIFY(f.openLines({"one", "two", "endless"}));
    f.whenShown(endless, [&f] {
        f.table().setCurrentCell(0, 3);
        f.pressEnter(QString());
    });
    f.search(endless);
    QCOMPARE(f.filledRows(), 3);
    QCOMPARE(f.table().currentRow(), 2);
}

void LogViewerLongSearch::searchingAgainAfterOpeningAFileTakesOver()
{
    Fixture f;
    QVERIFY(f.opened);
    f.whenShown(endless, [&f] {
        f.openLines({"three", "four"});
        f.search(deaf);
        f.whenShown(deaf, [&f] { f.state->isReleased = true; });
    });
    f.search(endless);
    QTRY_COMPARE(int(f.state->ended), 2);
    QCOMPARE(int(f.state->stopped), 1);
    QCOMPARE(f.filledRows(), 1);
    QCOMPARE(f.text(0, 3), "deaf\n");
}

void LogViewerLongSearch::openingTheShownFileChangesNothing()
{
    Fixture f;
    const QString path = f.folder.file("a.log", "one\n");
    QVERIFY(f.open(path));
    bool stillThere = false;
    f.whenShown(endless, [&] {
        const bool opened = f.open(path);
        stillThere = !opened && f.text(0, 3) == "endless\n";
        f.search(next);
    });
    f.search(endless);
    QVERIFY(stillThere);
}

void LogViewerLongSearch::closingTheWindowLetsTheSearchGoOn()
{
    Fixture f;
    QVERIFY(f.opened);
    QWidget other;
    other.show();
    QVERIFY(f.show());
    bool wentOn = false;
    f.whenShown(deaf, [&] {
        f.viewer.close();
        QTimer::singleShot(0, &f.viewer, [&] {
            wentOn = f.state->ended == 0;
            f.state->isReleased = true;
        });
    });
    f.search(deaf);
    QVERIFY(wentOn);
    QCOMPARE(int(f.state->stopped), 0);
    QCOMPARE(f.text(0, 3), "deaf\n");
}

void LogViewerLongSearch::closingTheLastWindowEndsTheSearch()
{
    Fixture f;
    QVERIFY(f.opened);
    f.viewer.show();
    f.whenShown(endless, [&f] { f.viewer.close(); });
    QTimer::singleShot(0, &f.viewer, [&f] { f.search(endless); });
    QCOMPARE(QApplication::exec(), 0); // returns when the last window closes
    QTRY_COMPARE(int(f.state->stopped), 1);
    QCOMPARE(f.text(0, 3), "endless\n");
}

void LogViewerLongSearch::closingTheLastWindowWaitsForNoSearch()
{
    const SlowSearch slow;
    {
        ViewerFixture f(slow.lineSearch());
        QVERIFY(f.openLines({"one"}));
        f.viewer.show();
        QTimer closer;
        closer.callOnTimeout(&f.viewer, [&] {
            if (slow.state->started > 0)
                f.viewer.close();
        });
        QTimer::singleShot(0, &f.viewer, [&] {
            closer.start(0);
            f.search(deaf);
        });
        QCOMPARE(QApplication::exec(), 0);
    }
    QCOMPARE(int(slow.state->ended), 0);
    slow.state->isReleased = true;
    QTRY_COMPARE(int(slow.state->stopped), 1);
}

void LogViewerLongSearch::closingTheMainWindowWaitsForNoSearch()
{
    const SlowSearch slow;
    {
        QDialog mainWindow;
        LogViewer viewer(&mainWindow, slow.lineSearch());
        ScratchFolder folder;
        QVERIFY(viewer.openLogFile(folder.file("a.log", "one\n").toStdString()));
        part<QLineEdit>(viewer, "lineEdit").setText(deaf);
        mainWindow.show();
        viewer.show();
        QTimer closer;
        closer.callOnTimeout(&viewer, [&] {
            if (slow.state->started > 0) {
                closer.stop();
                mainWindow.close();
            }
        });
        QTimer::singleShot(0, &viewer, [&] {
            closer.start(0);
            QMetaObject::invokeMethod(&viewer, "on_btnSearch_clicked");
        });
        QTimer::singleShot(patience / 10, qApp, [] { QCoreApplication::exit(1); });
        QCOMPARE(QApplication::exec(), 0);
    }
    QCOMPARE(int(slow.state->ended), 0);
}

void LogViewerLongSearch::theProgramEndsWhileASearchGoesOn()
{
    QProcess program;
    program.start(VANTREL_STUCK_SEARCH, QStringList());
    QVERIFY(program.waitForFinished(patience / 2));
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);
    QCOMPARE(program.readAllStandardOutput().trimmed(), QByteArray("searching"));
}

QTEST_MAIN(LogViewerLongSearch)
#include "tst_log_viewer_long_search.moc"
