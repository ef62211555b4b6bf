#include "JournalScript.h"
#include "MemoryPeak.h"

#include <QFileInfo>
#include <QStorageInfo>
#include <QTest>

class LargeJournal : public QObject
{
    Q_OBJECT

private slots:
    void aGigabyteGoesToTheFileAndNotThroughMemory();
    void threeGibibytesAreTakenWhole();
};

void LargeJournal::aGigabyteGoesToTheFileAndNotThroughMemory()
{
    JournalScript script("exec head -c 1073741824 /dev/zero");
    if (QStorageInfo(script.scratch.path()).bytesAvailable() < qint64(2) << 30)
        QSKIP("less than 2 GiB free on this disk");
    const MemoryPeak memory;
    QVERIFY(script.exportAndWait("System"));
    QCOMPARE(QFileInfo(script.target()).size(), qint64(1) << 30);
    QVERIFY2(memory.growth() < 50'000'000, qPrintable(QString::number(memory.growth())));
}

void LargeJournal::threeGibibytesAreTakenWhole()
{
    JournalScript script("exec truncate --size=3G /proc/self/fd/1"); // a sparse file
    const MemoryPeak memory;
    QVERIFY(script.exportAndWait("System"));
    QCOMPARE(QFileInfo(script.target()).size(), qint64(3) << 30);
    QVERIFY2(memory.growth() < 50'000'000, qPrintable(QString::number(memory.growth())));
}

QTEST_GUILESS_MAIN(LargeJournal)
#include "tst_large_journal.moc"
