#include "FileCopies.h"

#include "Faults.h"
#include "ScratchFolder.h"

#include <QProcess>
#include <QTest>
#include <QThread>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>

/// Copies made in parallel and reported in order.
class FileCopiesTest : public QObject
{
    Q_OBJECT

private slots:
    void copiesEveryFile();
    void copiesNothingOverAFileThatIsThere();
    void returnsWhyAFileWasNotCopied();
    void refusesAPipeWithoutWaitingForItsWriter();
    void refusesADevice();
    void copiesWhatALinkLeadsTo();

    void reportsInTheOrderOfTheListWhenTheFirstIsSlow();
    void reportsOnTheCallersThread();
    void makesFourAtATimeAndNoMore();
    void makesTheFirstOfTwoWithOneTargetFirst_data();
    void makesTheFirstOfTwoWithOneTargetFirst();
    void reportsACopyThatRunsOutOfMemory();
    void reportsNothingForAnEmptyList();
};

namespace {

/// A counter that other threads can wait for.
class Counter
{
public:
    void add(int number)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        count += number;
        most = qMax(most, count);
        changed.notify_all();
    }

    /// Returns false on timeout; the default is only exceeded on failure.
    bool reaches(int number, std::chrono::milliseconds time = std::chrono::seconds(20))
    {
        std::unique_lock<std::mutex> lock(mutex);
        return changed.wait_for(lock, time, [&] { return most >= number; });
    }

    int maximum()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return most;
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    int count = 0;
    int most = 0;
};

/// Copies of @p names, each with its own target.
QVector<FileCopy> copiesOf(const QStringList &names)
{
    QVector<FileCopy> copies;
    for (const QString &name : names)
        copies.append({name, "to/" + name});
    return copies;
}

} // namespace

void FileCopiesTest::copiesEveryFile()
{
    ScratchFolder scratch;
    const QString target = scratch.folder("to");
    QVector<FileCopy> copies;
    for (int i = 0; i < 50; ++i)
        copies.append({scratch.file(QString("%1.log").arg(i), QByteArray::number(i)),
                       target + QString("/%1").arg(i)});
    int copied = 0;
    copyFiles(copies,
              [&](const FileCopy &, const CopyResult &result) { copied += result.copied ? 1 : 0; });
    QCOMPARE(copied, 50);
    for (int i = 0; i < 50; ++i)
        QCOMPARE(scratch.read(QString("to/%1").arg(i)), QByteArray::number(i));
}

void FileCopiesTest::copiesNothingOverAFileThatIsThere()
{
    ScratchFolder scratch;
    const CopyResult result = copyFile({scratch.file("a", "new"), scratch.file("b", "old")});
    QVERIFY(!result.copied);
    QVERIFY(!result.failure.isEmpty());
    QCOMPARE(scratch.read("b"), QByteArray("old"));
}

void FileCopiesTest::returnsWhyAFileWasNotCopied()
{
    ScratchFolder scratch;
    const CopyResult missing = copyFile({scratch.path("missing"), scratch.path("b")});
    QVERIFY(!missing.copied);
    QVERIFY(!missing.failure.isEmpty());
    const CopyResult good = copyFile({scratch.file("a"), scratch.path("b")});
    QVERIFY(good.copied);
    QCOMPARE(good.failure, QString());
}

void FileCopiesTest::refusesAPipeWithoutWaitingForItsWriter()
{
    ScratchFolder scratch;
    const QString pipe = scratch.path("pipe.log");
    if (QProcess::execute("mkfifo", {pipe}) != 0)
        QSKIP("there are no named pipes in folders on this system");
    const CopyResult result = copyFile({pipe, scratch.path("b")});
    QVERIFY(!result.copied);
    QCOMPARE(result.failure, "not a regular file");
    QVERIFY(!QFile::exists(scratch.path("b")));
}

void FileCopiesTest::refusesADevice()
{
    if (!QFile::exists("/dev/null"))
        QSKIP("there are no device files on this system");
    ScratchFolder scratch;
    const CopyResult result = copyFile({"/dev/null", scratch.path("b")});
    QVERIFY(!result.copied);
    QCOMPARE(result.failure, "not a regular file");
    QVERIFY(!QFile::exists(scratch.path("b")));
}

void FileCopiesTest::copiesWhatALinkLeadsTo()
{
    ScratchFolder scratch;
    const QString link = scratch.path("link.log");
    if (!makeLink(scratch.file("a.log", "line\n"), link))
        QSKIP("links cannot be created on this system");
    QVERIFY(copyFile({link, scratch.path("b")}).copied);
    QCOMPARE(scratch.read("b"), QByteArray("line\n"));
}

void FileCopiesTest::reportsInTheOrderOfTheListWhenTheFirstIsSlow()
{
    const QStringList names{"slow", "b", "fails", "d", "e", "f"};
    Counter othersMade;
    std::atomic<bool> wasLast{false};
    QStringList reported;
    QVector<bool> results;
    copyFiles(
        copiesOf(names),
        [&](const FileCopy &copy, const CopyResult &result) {
            reported.append(copy.from);
            results.append(result.copied);
        },
        [&](const FileCopy &copy) -> CopyResult {
            if (copy.from == "slow")
                wasLast = othersMade.reaches(5);
            else
                othersMade.add(1);
            return {copy.from != "fails", {}};
        });
    QVERIFY2(wasLast, "the others were made beside it");
    QCOMPARE(reported, names);
    QCOMPARE(results, QVector<bool>({true, true, false, true, true, true}));
}

void FileCopiesTest::reportsOnTheCallersThread()
{
    const QThread *caller = QThread::currentThread();
    bool isCallers = false;
    copyFiles(
        copiesOf({"a"}),
        [&](const FileCopy &, const CopyResult &) {
            isCallers = QThread::currentThread() == caller;
        },
        [](const FileCopy &) -> CopyResult {
            return {true, {}};
        });
    QVERIFY(isCallers);
}

void FileCopiesTest::makesFourAtATimeAndNoMore()
{
    QStringList names;
    for (int i = 0; i < 20; ++i)
        names.append(QString::number(i));
    Counter inFlight;
    std::atomic<int> tooFew{0};
    copyFiles(
        copiesOf(names), [](const FileCopy &, const CopyResult &) {},
        [&](const FileCopy &copy) -> CopyResult {
            inFlight.add(1);
            tooFew += inFlight.reaches(4) ? 0 : 1;
            if (copy.from == "0") // gives a fifth thread time to appear
                inFlight.reaches(5, std::chrono::milliseconds(100));
            inFlight.add(-1);
            return {true, {}};
        });
    QCOMPARE(tooFew.load(), 0);
    QCOMPARE(inFlight.maximum(), 4);
}

void FileCopiesTest::makesTheFirstOfTwoWithOneTargetFirst_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::newRow("the same") << "to/a.log"
                              << "to/a.log";
    // These are the same file on case-preserving, case-insensitive systems.
    QTest::newRow("differing in case") << "to/a.log"
                                       << "to/A.LOG";
}

void FileCopiesTest::makesTheFirstOfTwoWithOneTargetFirst()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    Counter othersMade;
    std::atomic<bool> firstIsMade{false};
    std::atomic<bool> secondCameAfterIt{false};
    copyFiles(
        QVector<FileCopy>{{"1", first}, {"2", second}} + copiesOf({"3", "4", "5", "6"}),
        [](const FileCopy &, const CopyResult &) {},
        [&](const FileCopy &copy) -> CopyResult {
            if (copy.from == "1") {
                othersMade.reaches(4); // gives the second copy time to overtake the first
                firstIsMade = true;
            } else if (copy.from == "2") {
                secondCameAfterIt = firstIsMade.load();
            } else {
                othersMade.add(1);
            }
            return {true, {}};
        });
    QVERIFY(secondCameAfterIt);
}

void FileCopiesTest::reportsACopyThatRunsOutOfMemory()
{
    QStringList reports;
    copyFiles(
        copiesOf({"a", "b", "c"}),
        [&](const FileCopy &copy, const CopyResult &result) {
            reports.append(copy.from + ' ' + result.failure);
        },
        [](const FileCopy &copy) {
            if (copy.from == "b")
                throw std::bad_alloc();
            return CopyResult{true, {}};
        });
    QCOMPARE(reports, QStringList({"a ", "b out of memory", "c "}));
}

void FileCopiesTest::reportsNothingForAnEmptyList()
{
    copyFiles({}, [](const FileCopy &, const CopyResult &) { QFAIL("there is nothing"); });
}

QTEST_GUILESS_MAIN(FileCopiesTest)
#include "tst_file_copies.moc"
