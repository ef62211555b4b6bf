#include "DebugCapture.h"
#include "Diagnostics.h"
#include "FakeWmi.h"
#include "MemoryModules.h"

#include <QTest>
#include <QThread>

#include <memory>

#include <wbemcli.h>

Q_DECLARE_METATYPE(MemoryModuleList::Query)
Q_DECLARE_METATYPE(HRESULT FakeWmi::*)

using Query = MemoryModuleList::Query;

/// The WMI calls that query the memory modules.
class MemoryModulesByWmi : public QObject
{
    Q_OBJECT

private slots:
    void asksAsFixed();
    void readsEveryModule();
    void takesTheCapacitysSlotWhateverItHolds();
    void givesPartNumbersInTheSystemsCodePage();
    void leavesWhatAModuleDoesNotTellEmpty();
    void noModuleIsNoFailure();
    void saysWhereItFailed_data();
    void saysWhereItFailed();
    void aQueryThatBreaksIsNotComplete();
    void needsTheMultithreadedApartment();
};

namespace {

/// Objects that remain after a query: the class factory.
constexpr int factoryAlone = 1;

FakeWmi::Module fullModule(const QString &partNumber, qint32 speed)
{
    return {partNumber, "17179869184", speed};
}

} // namespace

void MemoryModulesByWmi::asksAsFixed()
{
    FakeWmi wmi;
    wmi.modules = {fullModule("one", 3200)};
    QCOMPARE(memoryModules().query, Query::Complete);
    QCOMPARE(wmi.calls,
             QStringList({"CreateInstance", "ConnectServer ROOT\\CIMV2 none none none 0 none",
                          "SetBlanket 10 0 none 3 3 none 0",
                          "ExecQuery WQL \"SELECT * FROM Win32_PhysicalMemory\" 48", "Next -1 1",
                          "Next -1 1"}));
    QCOMPARE(wmi.unexpected, QStringList());
    QCOMPARE(wmi.living, factoryAlone);
}

void MemoryModulesByWmi::readsEveryModule()
{
    FakeWmi wmi;
    wmi.modules = {fullModule("one", 3200), fullModule("two", 2666)};
    const MemoryModuleList list = memoryModules();
    QCOMPARE(list.query, Query::Complete);
    QCOMPARE(list.modules.size(), 2);
    QCOMPARE(list.modules.at(0).partNumber, QByteArray("one"));
    QCOMPARE(list.modules.at(0).speed, 3200);
    QCOMPARE(list.modules.at(1).partNumber, QByteArray("two"));
    QCOMPARE(list.modules.at(1).speed, 2666);
    QCOMPARE(wmi.living, factoryAlone);
}

void MemoryModulesByWmi::takesTheCapacitysSlotWhateverItHolds()
{
    FakeWmi wmi;
    wmi.modules = {fullModule("one", 3200)};
    const MemoryModuleList list = memoryModules();
    QCOMPARE(wmi.capacities.size(), 1);
    QCOMPARE(list.modules.at(0).capacity, wmi.capacities.at(0));
}

void MemoryModulesByWmi::givesPartNumbersInTheSystemsCodePage()
{
    FakeWmi wmi;
    wmi.modules = {fullModule("内存é", 3200)};
    const QByteArray inGbk = "\xC4\xDA\xB4\xE6\xA8\xA6";
    const bool chinese = PRIMARYLANGID(GetSystemDefaultLangID()) == LANG_CHINESE;
    QCOMPARE(memoryModules().modules.at(0).partNumber, chinese ? inGbk : QByteArray("??\xE9"));
}

void MemoryModulesByWmi::leavesWhatAModuleDoesNotTellEmpty()
{
    FakeWmi wmi;
    wmi.modules = {FakeWmi::Module()};
    const MemoryModuleList list = memoryModules();
    QCOMPARE(list.query, Query::Complete);
    QCOMPARE(list.modules.size(), 1);
    QCOMPARE(list.modules.at(0).partNumber, QByteArray());
    QCOMPARE(list.modules.at(0).capacity, 0);
    QCOMPARE(list.modules.at(0).speed, 0);
}

void MemoryModulesByWmi::noModuleIsNoFailure()
{
    FakeWmi wmi;
    const MemoryModuleList list = memoryModules();
    QCOMPARE(list.query, Query::Complete);
    QVERIFY(list.modules.isEmpty());
    QCOMPARE(wmi.living, factoryAlone);
}

void MemoryModulesByWmi::saysWhereItFailed_data()
{
    QTest::addColumn<HRESULT FakeWmi::*>("call");
    QTest::addColumn<Query>("where");
    QTest::newRow("locator") << &FakeWmi::creation << Query::Locator;
    QTest::newRow("connection") << &FakeWmi::connection << Query::Connection;
    QTest::newRow("proxy") << &FakeWmi::blanket << Query::Proxy;
    QTest::newRow("query") << &FakeWmi::query << Query::Execution;
}

void MemoryModulesByWmi::saysWhereItFailed()
{
    QFETCH(HRESULT FakeWmi::*, call);
    QFETCH(Query, where);
    FakeWmi wmi;
    wmi.modules = {fullModule("one", 3200)};
    wmi.*call = E_ACCESSDENIED;
    const MemoryModuleList list = memoryModules();
    QCOMPARE(list.query, where);
    QVERIFY(list.modules.isEmpty());
    QCOMPARE(wmi.unexpected, QStringList());
    QCOMPARE(wmi.living, factoryAlone);
}

void MemoryModulesByWmi::aQueryThatBreaksIsNotComplete()
{
    FakeWmi wmi;
    wmi.modules = {fullModule("one", 3200)};
    wmi.end = static_cast<HRESULT>(WBEM_E_TRANSPORT_FAILURE);
    const DebugCapture output;
    const Diagnostics on;
    const MemoryModuleList list = memoryModules();
    QCOMPARE(list.query, Query::Enumeration);
    QCOMPARE(list.modules.size(), 1);
    QCOMPARE(output.lines(), QStringList("memory modules end early: 0x80041015"));
    QCOMPARE(wmi.living, factoryAlone);
}

void MemoryModulesByWmi::needsTheMultithreadedApartment()
{
    MemoryModuleList list;
    HRESULT first = E_FAIL;
    HRESULT second = E_FAIL;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        first = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        list = memoryModules();
        second = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        CoUninitialize();
        CoUninitialize();
    }));
    thread->start();
    QVERIFY(thread->wait(60'000));
    QCOMPARE(first, S_OK);
    QCOMPARE(list.query, Query::Library);
    QVERIFY(list.modules.isEmpty());
    QCOMPARE(second, S_FALSE); // the thread is still in its apartment
}

QTEST_GUILESS_MAIN(MemoryModulesByWmi)
#include "tst_memory_modules.moc"
