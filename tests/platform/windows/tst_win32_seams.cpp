#include "ComSecurity.h"
#include "CrashDumpPaths.h"
#include "EventLog.h"
#include "MemoryModules.h"
#include "MemoryStatus.h"
#include "NetworkAdapters.h"
#include "ScratchFolder.h"

#include <QFileInfo>
#include <QTest>
#include <QThread>

#include <memory>

/// Results of this Windows that hold on every machine.
class WindowsQueries : public QObject
{
    Q_OBJECT

private slots:
    void adaptersHaveNamesAndAddresses();
    void memoryIsThereAndNotAllOfItIsFree();
    void comSecurityIsSetUpOnce();
    void modulesCanBeAskedForAgainAndAgainOnAWorker();
    void anExportedChannelIsAFileAndARefusedOneNone();
    void dumpsLieWhereWindowsPutsThem();
};

void WindowsQueries::adaptersHaveNamesAndAddresses()
{
    const AdapterList list = networkAdapters();
    QCOMPARE(list.error, 0U);
    QVERIFY(!list.adapters.isEmpty());
    for (const NetworkAdapter &adapter : list.adapters) {
        QVERIFY(!adapter.name.isEmpty());
        QVERIFY(adapter.hardwareAddress.size() <= 8);
        for (const NetworkAddress &address : adapter.addresses) {
            QCOMPARE(address.family, NetworkAddress::Family::IPv4);
            QCOMPARE(address.text.count('.'), 3);
        }
    }
}

void WindowsQueries::memoryIsThereAndNotAllOfItIsFree()
{
    const std::optional<MemoryStatus> status = memoryStatus();
    QVERIFY(status);
    QVERIFY(status->total > 0);
    QVERIFY(status->available < status->total);
    QVERIFY(status->load <= 100);
}

void WindowsQueries::comSecurityIsSetUpOnce()
{
    const qint32 first = setUpComSecurity();
    QCOMPARE(setUpComSecurity(), first);
}

void WindowsQueries::modulesCanBeAskedForAgainAndAgainOnAWorker()
{
    if (setUpComSecurity() < 0)
        QSKIP("this system refuses to set up COM security");
    QVector<int> counts;
    const std::unique_ptr<QThread> worker(QThread::create([&] {
        for (int i = 0; i < 10; ++i) {
            const MemoryModuleList list = memoryModules();
            counts.append(list.query == MemoryModuleList::Query::Complete ? list.modules.size()
                                                                          : -int(list.query));
        }
    }));
    worker->start();
    QVERIFY(worker->wait(60000));
    QCOMPARE(counts.size(), 10);
    QVERIFY2(counts.first() >= 0, qPrintable(QString::number(counts.first())));
    QCOMPARE(counts.count(counts.first()), 10);
}

void WindowsQueries::anExportedChannelIsAFileAndARefusedOneNone()
{
    const ScratchFolder scratch;
    const QString application = scratch.path("Application.evtx");
    const bool isExported = exportEventLog("Application", application);
    QCOMPARE(QFileInfo(application).size() > 0, isExported);
    const QString unknown = scratch.path("unknown.evtx");
    QVERIFY(!exportEventLog("no such channel", unknown));
    QVERIFY(!QFileInfo::exists(unknown));
}

void WindowsQueries::dumpsLieWhereWindowsPutsThem()
{
    const CrashDumpPaths paths = crashDumpPaths();
    QCOMPARE(paths.kernelDumpTestPath, "C:\\Windows\\Memory.dmp");
    QCOMPARE(paths.kernelDump, "C:/Windows/MEMORY.DMP");
    QCOMPARE(paths.minidumps, "C:/Windows/Minidumps/");
    QCOMPARE(paths.minidumpNamePart, ".dmp");
    QVERIFY(!paths.unreadableIsMissing);
}

QTEST_GUILESS_MAIN(WindowsQueries)
#include "tst_win32_seams.moc"
