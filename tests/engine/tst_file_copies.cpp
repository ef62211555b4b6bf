#include "FileCopies.h"

#include "Faults.h"
#include "ScratchFolder.h"
#include "Text.h"

#include <QProcess>
#include <QThread>
#include <QtTest>

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
        copies.append({name, text("to/") + name});
    return copies;
}

} // namespace

void FileCopiesTest::copiesEveryFile()
{
    ScratchFolder scratch;
    const QString target = scratch.folder(text("to"));
    QVector<FileCopy> copies;
    for (int i = 0; i < 50; ++i)
        copies.append({scratch.file(text("%1.log").arg(i), QByteArray::number(i)),
                       target + text("/%1").arg(i)});
    int copied = 0;
    copyFiles(copies,
              [&](const FileCopy &, const CopyResult &result) { copied += result.copied ? 1 : 0; });
    QCOMPARE(copied, 50);
    for (int i = 0; i < 50; ++i)
        QCOMPARE(scratch.read(text("to/%1").arg(i)), QByteArray::number(i));
}

void FileCopiesTest::copiesNothingOverAFileThatIsThere()
{
    ScratchFolder scratch;
    const CopyResult result =
        copyFile({scratch.file(text("a"), "new"), scratch.file(text("b"), "old")});
    QVERIFY(!result.copied);
    QVERIFY(!result.failure.isEmpty());
    QCOMPARE(scratch.read(text("b")), QByteArray("old"));
}

void FileCopiesTest::returnsWhyAFileWasNotCopied()
{
    ScratchFolder scratch;
    const CopyResult missing = copyFile({scratch.path(text("missing")), scratch.path(text("b"))});
    QVERIFY(!missing.copied);
    QVERIFY(!missing.failure.isEmpty());
    const CopyResult good = copyFile({scratch.file(text("a")), scratch.path(text("b"))});
    QVERIFY(good.copied);
    QCOMPARE(good.failure, QString());
}

void FileCopiesTest::refusesAPipeWithoutWaitingForItsWriter()
{
    ScratchFolder scratch;
    const QString pipe = scratch.path(text("pipe.log"));
    if (QProcess::execute(text("mkfifo"), {pipe}) != 0)
        QSKIP("no pipes among files here");
    const CopyResult result = copyFile({pipe, scratch.path(text("b"))});
    QVERIFY(!result.copied);
    QCOMPARE(result.failure, text("not a regular file"));
    QVERIFY(!QFile::exists(scratch.path(text("b"))));
}

void FileCopiesTest::refusesADevice()
{
    if (!QFile::exists(text("/dev/null")))
        QSKIP("no devices among files here");
    ScratchFolder scratch;
    const CopyResult result = copyFile({text("/dev/null"), scratch.path(text("b"))});
    QVERIFY(!result.copied);
    QCOMPARE(result.failure, text("not a regular file"));
    QVERIFY(!QFile::exists(scratch.path(text("b"))));
}

void FileCopiesTest::copiesWhatALinkLeadsTo()
{
    ScratchFolder scratch;
    const QString link = scratch.path(text("link.log"));
    if (!makeLink(scratch.file(text("a.log"), "line\n"), link))
        QSKIP("this system makes no links for us");
    QVERIFY(copyFile({link, scratch.path(text("b"))}).copied);
    QCOMPARE(scratch.read(text("b")), QByteArray("line\n"));
}

void FileCopiesTest::reportsInTheOrderOfTheListWhenTheFirstIsSlow()
{
    const QStringList names{text("slow"), text("b"), text("fails"),
                            text("d"),    text("e"), text("f")};
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
            if (copy.from == text("slow"))
                wasLast = othersMade.reaches(5);
            else
                othersMade.add(1);
            return {copy.from != text("fails"), {}};
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
        copiesOf({text("a")}),
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
            if (copy.from == text("0")) // gives a fifth thread time to appear
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
    QTest::newRow("the same") << text("to/a.log") << text("to/a.log");
    // These are the same file on case-preserving, case-insensitive systems.
    QTest::newRow("differing in case") << text("to/a.log") << text("to/A.LOG");
}

void FileCopiesTest::makesTheFirstOfTwoWithOneTargetFirst()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    Counter othersMade;
    std::atomic<bool> firstIsMade{false};
    std::atomic<bool> secondCameAfterIt{false};
    copyFiles(
        QVector<FileCopy>{{text("1"), first}, {text("2"), second}} +
            copiesOf({text("3"), text("4"), text("5"), text("6")}),
        [](const FileCopy &, const CopyResult &) {},
        [&](const FileCopy &copy) -> CopyResult {
            if (copy.from == text("1")) {
                othersMade.reaches(4); // gives the second copy time to overtake the first
                firstIsMade = true;
            } else if (copy.from == text("2")) {
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
        copiesOf({text("a"), text("b"), text("c")}),
        [&](const FileCopy &copy, const CopyResult &result) {
            reports.append(copy.from + QLatin1Char(' ') + result.failure);
        },
        [](const FileCopy &copy) {
            if (copy.from == text("b"))
                throw std::bad_alloc();
            return CopyResult{true, {}};
        });
    QCOMPARE(reports, QStringList({text("a "), text("b out of memory"), text("c ")}));
}

void FileCopiesTest::reportsNothingForAnEmptyList()
{
    copyFiles({}, [](const FileCopy &, const CopyResult &) { QFAIL("there is nothing"); });
}

QTEST_GUILESS_MAIN(FileCopiesTest)
#include "tst_file_copies.moc"
