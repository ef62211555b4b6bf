#include "ViewerFixture.h"

#include <QDeadlineTimer>
#include <QTimer>

#include <functional>
#include <future>
#include <thread>

namespace {

constexpr int patience = 60'000; // milliseconds; only a broken search needs them

/// Lets the events that are waiting for the user interface's thread be handled during a search.
void duringTheSearch(const std::function<void()> &action)
{
    QTimer::singleShot(0, qApp, action);
}

bool untilStopped(const SearchStop &stop)
{
    const QDeadlineTimer deadline(patience);
    while (!stop && !deadline.hasExpired())
        std::this_thread::yield();
    return stop;
}

/// Finds one line, and with the keyword "endless" goes on until it is stopped.
struct EndlessSearch
{
    bool wasStopped = false;

    LineSearch search()
    {
        return [this](const std::string &keyword, const QString & /*path*/, const PieceSink &sink,
                      const SearchStop &stop) {
            sink((keyword + '\n').c_str());
            if (keyword == "endless") {
                wasStopped = untilStopped(stop);
                sink("too late\n");
            }
            return true;
        };
    }
};

} // namespace

class LogViewerLongSearch : public QObject
{
    Q_OBJECT

private slots:
    void endsTheSearchWhenTheTableIsFull();
    void keepsTheWindowAlive();
    void showsWhatWasFoundBeforeTheEnd();
    void aNewSearchTakesOver();
    void openingAFileTakesOver();
    void openingTheShownFileChangesNothing();
    void closingTheLastWindowEndsTheSearch();
};

void LogViewerLongSearch::endsTheSearchWhenTheTableIsFull()
{
    bool wasStopped = false;
    ViewerFixture f([&wasStopped](const std::string &, const QString &, const PieceSink &sink,
                                  const SearchStop &stop) {
        const QDeadlineTimer deadline(patience);
        while (!stop && !deadline.hasExpired())
            sink("x\n");
        wasStopped = stop;
        return true;
    });
    QVERIFY(f.openLines({"one"}));
    f.search(QStringLiteral("x"));
    QVERIFY(wasStopped);
    QCOMPARE(f.table().rowCount(), 6);
    QCOMPARE(f.filledRows(), 6);
}

void LogViewerLongSearch::keepsTheWindowAlive()
{
    std::promise<void> handled;
    bool wasAlive = false;
    ViewerFixture f([&handled, &wasAlive](const std::string &, const QString &, const PieceSink &,
                                          const SearchStop &) {
        wasAlive = handled.get_future().wait_for(std::chrono::milliseconds(patience)) ==
                   std::future_status::ready;
        return true;
    });
    QVERIFY(f.openLines({"one"}));
    duringTheSearch([&handled] { handled.set_value(); });
    f.search(QStringLiteral("x"));
    QVERIFY(wasAlive);
}

void LogViewerLongSearch::showsWhatWasFoundBeforeTheEnd()
{
    EndlessSearch endless;
    ViewerFixture f(endless.search());
    QVERIFY(f.openLines({"one"}));
    QString shown;
    Qt::CursorShape cursor = Qt::ArrowCursor;
    duringTheSearch([&] {
        shown = f.text(0, 3);
        cursor = f.table().viewport()->cursor().shape();
        f.search(QStringLiteral("next"));
    });
    f.search(QStringLiteral("endless"));
    QCOMPARE(shown, QStringLiteral("endless\n"));
    QCOMPARE(cursor, Qt::BusyCursor);
    QCOMPARE(f.table().viewport()->cursor().shape(), Qt::ArrowCursor);
}

void LogViewerLongSearch::aNewSearchTakesOver()
{
    EndlessSearch endless;
    ViewerFixture f(endless.search());
    QVERIFY(f.openLines({"one", "two"}));
    duringTheSearch([&f] { f.search(QStringLiteral("next")); });
    f.search(QStringLiteral("endless"));
    QVERIFY(endless.wasStopped);
    QCOMPARE(f.filledRows(), 1);
    QCOMPARE(f.text(0, 3), QStringLiteral("next\n"));
}

void LogViewerLongSearch::openingAFileTakesOver()
{
    EndlessSearch endless;
    ViewerFixture f(endless.search());
    QVERIFY(f.openLines({"one", "two"}));
    bool opened = false;
    duringTheSearch([&] { opened = f.openLines({"three", "four"}); });
    f.search(QStringLiteral("endless"));
    QVERIFY(opened);
    QVERIFY(endless.wasStopped);
    QCOMPARE(f.filledRows(), 2);
    QCOMPARE(f.text(0, 3), QStringLiteral("three"));
    QCOMPARE(f.text(1, 3), QStringLiteral("four"));
}

void LogViewerLongSearch::openingTheShownFileChangesNothing()
{
    EndlessSearch endless;
    ViewerFixture f(endless.search());
    const QString path = f.folder.file(QStringLiteral("a.log"), "one\n");
    QVERIFY(f.open(path));
    bool stillThere = false;
    duringTheSearch([&] {
        const bool opened = f.open(path);
        stillThere = !opened && f.text(0, 3) == QStringLiteral("endless\n");
        f.search(QStringLiteral("next"));
    });
    f.search(QStringLiteral("endless"));
    QVERIFY(stillThere);
}

void LogViewerLongSearch::closingTheLastWindowEndsTheSearch()
{
    EndlessSearch endless;
    ViewerFixture f(endless.search());
    QVERIFY(f.openLines({"one"}));
    f.viewer.show();
    QTimer::singleShot(0, qApp, [&f] {
        duringTheSearch([&f] { f.viewer.close(); });
        f.search(QStringLiteral("endless"));
    });
    QCOMPARE(QApplication::exec(), 0); // ends with the last window
    QVERIFY(endless.wasStopped);
    QCOMPARE(f.text(0, 3), QStringLiteral("endless\n"));
}

QTEST_MAIN(LogViewerLongSearch)
#include "tst_log_viewer_long_search.moc"
