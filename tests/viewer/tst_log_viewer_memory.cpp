#include "Machine.h"
#include "MemoryLimit.h"
#include "ViewerFixture.h"

#include <new>

/// The memory of a large log is returned to the system when the log is no longer shown. Lines for
/// which there is too little memory are left out as a whole.
class LogViewerMemory : public QObject
{
    Q_OBJECT

private slots:
    // First: no freed memory yet.
    void leavesARowEmptyWhenThereIsTooLittleMemoryForItsSource();
    void givesBackTheMemoryOfALargeLog_data();
    void givesBackTheMemoryOfALargeLog();
};

namespace {

constexpr const char *whySkipped = "a sanitizer keeps freed memory";

/// Resident memory of this process in bytes.
qint64 residentMemory()
{
    QFile status("/proc/self/statm");
    return status.open(QIODevice::ReadOnly)
               ? status.readAll().split(' ').value(1).toLongLong() * 4096
               : 0;
}

QByteArray lineWithSource(int bytes)
{
    return "2024-03-02 12:00:00.250 INFO [00123] [" + QByteArray(bytes, 'x') + "] sent";
}

} // namespace

void LogViewerMemory::leavesARowEmptyWhenThereIsTooLittleMemoryForItsSource()
{
    if (isSanitized())
        QSKIP(whySkipped);
    constexpr int size = 40'000'000;
    const QByteArray line = lineWithSource(size);
    ViewerFixture f;
    {
        // The line's text takes twice its size, the source's text the same again.
        const MemoryLimit limit(size * 7LL / 2);
        QVERIFY_EXCEPTION_THROWN(f.viewer.parseLogLine(line.constData(), 0), std::bad_alloc);
    }
    QCOMPARE(f.row(0), messageOnly("no item"));
    f.viewer.parseLogLine(line.constData(), 0);
    QCOMPARE(f.text(0, 2).size(), size);
}

void LogViewerMemory::givesBackTheMemoryOfALargeLog_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("keyword");
    const QByteArray lines = (logLine("INFO", QByteArray(400, 'x')) + '\n').repeated(100'000);
    QTest::newRow("by opening a small one") << lines << QString();
    QTest::newRow("by a search") << lines << "nothing like it";
    QTest::newRow("with a long source") << lineWithSource(30'000'000) + '\n' << QString();
}

void LogViewerMemory::givesBackTheMemoryOfALargeLog()
{
    if (isSanitized())
        QSKIP(whySkipped);
    QFETCH(QByteArray, contents);
    QFETCH(QString, keyword);
    ViewerFixture f;
    const QString large = f.folder.file("large.log", contents);
    QVERIFY(f.openLines({"small"}));
    const qint64 before = residentMemory();
    QVERIFY(f.open(large));
    const qint64 grown = residentMemory() - before;
    QVERIFY(grown > 100'000'000);
    if (keyword.isEmpty())
        QVERIFY(f.openLines({"small"}));
    else
        f.search(keyword);
    const qint64 kept = residentMemory() - before;
    QVERIFY2(kept < grown / 5, QByteArray::number(double(kept) / double(grown)).constData());
}

QTEST_MAIN(LogViewerMemory)
#include "tst_log_viewer_memory.moc"
