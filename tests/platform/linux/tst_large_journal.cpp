#include "JournalScript.h"

#include <QFileInfo>
#include <QStorageInfo>
#include <QtTest>

class LargeJournal : public QObject
{
    Q_OBJECT

private slots:
    void aGigabyteGoesToTheFileAndNotThroughMemory();
};

namespace {

/// What this process has taken of the memory at most, kB.
long memoryPeak()
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).simplified().split(' ').first().toLong();
    }
    return -1;
}

} // namespace

void LargeJournal::aGigabyteGoesToTheFileAndNotThroughMemory()
{
    JournalScript script("exec head -c 1073741824 /dev/zero");
    if (QStorageInfo(script.scratch.path()).bytesAvailable() < qint64(2) << 30)
        QSKIP("less than 2 GiB free on this disk");
    const long before = memoryPeak();
    QVERIFY(script.exportAndWait(QStringLiteral("System")));
    QCOMPARE(QFileInfo(script.target()).size(), qint64(1) << 30);
    QVERIFY2(memoryPeak() - before < 50'000, qPrintable(QString::number(memoryPeak() - before)));
}

QTEST_GUILESS_MAIN(LargeJournal)
#include "tst_large_journal.moc"
