#include "Machine.h"
#include "ViewerFixture.h"

/// The memory of a large log is returned to the system when the log is no longer shown.
class LogViewerMemory : public QObject
{
    Q_OBJECT

private slots:
    void givesBackTheMemoryOfALargeLog_data();
    void givesBackTheMemoryOfALargeLog();
};

namespace {

/// Resident memory of this process in bytes.
qint64 residentMemory()
{
    QFile status("/proc/self/statm");
    return status.open(QIODevice::ReadOnly)
               ? status.readAll().split(' ').value(1).toLongLong() * 4096
               : 0;
}

} // namespace

void LogViewerMemory::givesBackTheMemoryOfALargeLog_data()
{
    QTest::addColumn<QString>("keyword");
    QTest::newRow("by opening a small one") << QString();
    QTest::newRow("by a search") << "nothing like it";
}

void LogViewerMemory::givesBackTheMemoryOfALargeLog()
{
    if (isSanitized())
        QSKIP("a sanitizer keeps freed memory");
    QFETCH(QString, keyword);
    ViewerFixture f;
    const QString large = f.folder.file(
        "large.log", (logLine("INFO", QByteArray(400, 'x')) + '\n').repeated(100'000));
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
