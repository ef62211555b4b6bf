#include "Diagnostics.h"
#include "FullJob.h"

#include <functional>
#include <new>
#include <stdexcept>
#include <utility>
#include <vector>

Q_DECLARE_METATYPE(std::function<void(FullJob &)>)

/// A job with every item: its exact output and contents, without faults and when one item after the
/// other fails.
class AllItems : public QObject
{
    Q_OBJECT

private slots:
    void standInTheTableInTheirOrderWithTheirWords();
    void areQueriedInTheirOrder();
    void printTheirWordsWhenTheyFail_data();
    void printTheirWordsWhenTheyFail();
    void oneFaultTakesNothingElseAway_data();
    void oneFaultTakesNothingElseAway();
    void everyFaultAtOnceStillMakesAZip();
    void theNextExportAfterAFaultIsWhole();
    void logsWhyAnItemFailed_data();
    void logsWhyAnItemFailed();
    void cleanupTestCase();

private:
    KeptZips zips; ///< from all tests
};

namespace {

using Contents = ExportFixture::Contents;

struct Fault
{
    const char *name;
    std::function<void(FullJob &)> make; ///< also adjusts the expected contents
    QStringList printed;                 ///< by the items
};

std::function<void(FullJob &)> failingModules(MemoryModuleList::Query query)
{
    return [query](FullJob &job) {
        job.machine.modules = {query, {}};
        QByteArray &report = job.whole["SystemInfo.txt"];
        report.truncate(report.indexOf("PartNumber"));
    };
}

template <typename Problem>
void throwAt(FullJob &job, const char *failing)
{
    job.machine.beforeQuery = [failing](const QString &probe) {
        if (probe == failing)
            throw Problem();
    };
}

struct Broken : std::runtime_error
{
    Broken()
        : std::runtime_error("broken")
    {
    }
};

QVector<Fault> eventLogFaults()
{
    return {
        {"Application refused",
         [](FullJob &job) {
             job.machine.refusedChannel = "Application";
             job.drop("ApplicationEvents");
             job.drop("SystemEvents");
         },
         {"saveEventLog failed!"}},
        {"System refused",
         [](FullJob &job) {
             job.machine.refusedChannel = "System";
             job.drop("SystemEvents");
         },
         {"saveEventLog failed!"}},
        {"event log throws",
         [](FullJob &job) {
             throwAt<Broken>(job, "Application");
             job.drop("ApplicationEvents");
             job.drop("SystemEvents");
         },
         {"saveEventLog failed!"}},
    };
}

QVector<Fault> systemInfoFaults()
{
    using Query = MemoryModuleList::Query;
    return {
        {"no memory status",
         [](FullJob &job) {
             job.machine.memory = {};
             job.whole["SystemInfo.txt"].clear();
         },
         {"Failed to get memory status.", "saveSysInfo failed!"}},
        {"memory throws",
         [](FullJob &job) {
             throwAt<std::bad_alloc>(job, "memory");
             job.whole["SystemInfo.txt"].clear();
         },
         {"saveSysInfo failed!"}},
        {"memory throws something of its own",
         [](FullJob &job) {
             throwAt<int>(job, "memory");
             job.whole["SystemInfo.txt"].clear();
         },
         {"saveSysInfo failed!"}},
        {"COM library", failingModules(Query::Library), {"COM库初始化失败"}},
        {"WMI locator", failingModules(Query::Locator), {"WbemLocator创建失败"}},
        {"WMI connection", failingModules(Query::Connection), {"WMI服务连接失败"}},
        {"WMI proxy", failingModules(Query::Proxy), {"设置代理失败"}},
        {"WMI query", failingModules(Query::Execution), {"查询执行失败"}},
    };
}

QVector<Fault> adapterFaults()
{
    return {
        {"adapter query",
         [](FullJob &job) {
             job.machine.adapters.error = 1450;
             job.whole["NICInfo.txt"] =
                 "Call to GetAdaptersAddresses failed with error code: 1450\n";
         },
         {}},
        {"adapters throw",
         [](FullJob &job) {
             throwAt<Broken>(job, "adapters");
             job.whole["NICInfo.txt"].clear();
         },
         {"saveNICInfo failed!"}},
    };
}

QVector<Fault> dumpFaults()
{
    return {
        {"no kernel dump",
         [](FullJob &job) {
             QFile::remove(job.kernelDump);
             job.drop("SystemDmp.zip/" + entryOf(job.kernelDump));
         },
         {noKernelDump}},
        {"no small dump",
         [](FullJob &job) {
             QFile::remove(job.smallDump);
             job.drop("SystemDmp.zip/" + entryOf(job.smallDump));
         },
         {noSmallDump}},
        {"system dumps throw",
         [](FullJob &job) {
             throwAt<Broken>(job, "crashDumpPaths");
             job.drop("SystemDmp.zip");
         },
         {"saveEventLog failed!"}}, // on purpose: see exportItems
        {"no client dump",
         [](FullJob &job) {
             QFile::remove(job.f.base() + "QZviewer/client.dmp");
             job.drop("ClientDump.zip");
         },
         {}},
    };
}

QVector<Fault> faults()
{
    return QVector<Fault>{{"none", [](FullJob &) {}, {}}} + eventLogFaults() + systemInfoFaults() +
           adapterFaults() + dumpFaults();
}

} // namespace

void AllItems::standInTheTableInTheirOrderWithTheirWords()
{
    QStringList words;
    std::vector<std::atomic<bool> CConfiguration::*> flags;
    for (const ExportItem &item : exportItems) {
        flags.push_back(item.isChosen);
        words.append(item.failureText);
    }
    QVERIFY(flags ==
            (std::vector<std::atomic<bool> CConfiguration::*>{
                &CConfiguration::systemLog, &CConfiguration::systemInfo, &CConfiguration::nicInfo,
                &CConfiguration::systemDump, &CConfiguration::clientDump}));
    // The system dump prints the text of the event log.
    QCOMPARE(words, QStringList({"saveEventLog failed!", "saveSysInfo failed!",
                                 "saveNICInfo failed!", "saveEventLog failed!", QString()}));
}

void AllItems::printTheirWordsWhenTheyFail_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < int(std::size(exportItems)); ++i)
        QTest::addRow("item %d", i + 1) << i;
}

void AllItems::printTheirWordsWhenTheyFail()
{
    QFETCH(int, index);
    const ExportItem &failing = exportItems[index];
    FullJob job;
    for (const ExportItem &item : exportItems)
        hub().*item.isChosen = item.isChosen == failing.isChosen;
    job.machine.beforeQuery = [](const QString &) { throw Broken(); };
    QVERIFY(job.run());
    QCOMPARE(job.f.output.lines(),
             job.printed(failing.failureText != nullptr ? QStringList(failing.failureText)
                                                        : QStringList()));
}

void AllItems::areQueriedInTheirOrder()
{
    FullJob job;
    QVERIFY(job.run());
    job.machine.calledProbes.removeDuplicates();
    QCOMPARE(job.machine.calledProbes,
             QStringList({"comSecurity", "Application", "System", "memory", "memoryModules",
                          "adapters", "crashDumpPaths"}));
    QCOMPARE(zipEntryNames(job.f.zip()),
             QStringList({"ApplicationEvents.evtx", "ClientDump.zip", "NICInfo.txt", "SDKLOG/a.log",
                          "SystemDmp.zip", "SystemEvents.evtx", "SystemInfo.txt"}));
    QCOMPARE(difference(job.packed(&zips), job.whole), QString());
}

void AllItems::oneFaultTakesNothingElseAway_data()
{
    QTest::addColumn<int>("index");
    const QVector<Fault> all = faults();
    for (int i = 0; i < all.size(); ++i)
        QTest::newRow(all[i].name) << i;
}

void AllItems::oneFaultTakesNothingElseAway()
{
    QFETCH(int, index);
    const Fault fault = faults().at(index);
    FullJob job;
    fault.make(job);
    QVERIFY(job.run());
    QCOMPARE(job.f.output.lines(), job.printed(fault.printed));
    QCOMPARE(difference(job.packed(&zips), job.whole), QString());
    QVERIFY(!QFileInfo::exists(job.f.staging()));
}

void AllItems::everyFaultAtOnceStillMakesAZip()
{
    FullJob job;
    job.machine.refusedChannel = "Application";
    job.machine.memory = {};
    job.machine.adapters.error = 1;
    job.machine.dumps = {};
    job.machine.dumps.minidumps = job.f.scratch.path("nowhere");
    QVERIFY(QFile::remove(job.f.base() + "QZviewer/client.dmp"));
    QVERIFY(job.run());
    QCOMPARE(job.f.output.lines(),
             job.printed({"saveEventLog failed!", "Failed to get memory status.",
                          "saveSysInfo failed!", noKernelDump, noSmallDump}));
    QCOMPARE(job.packed(&zips),
             (Contents{{"NICInfo.txt", "Call to GetAdaptersAddresses failed with error code: 1\n"},
                       {"SDKLOG/a.log", "line\n"},
                       {"SystemInfo.txt", {}}}));
}

void AllItems::theNextExportAfterAFaultIsWhole()
{
    FullJob job;
    job.machine.beforeQuery = [](const QString &) { throw Broken(); };
    QVERIFY(job.run());
    QCOMPARE(job.f.output.take(), job.printed({"saveEventLog failed!", "saveSysInfo failed!",
                                               "saveNICInfo failed!", "saveEventLog failed!"}));
    job.machine.beforeQuery = [](const QString &) {};
    QVERIFY(job.run());
    QCOMPARE(job.f.output.lines(), job.printed({}));
    QCOMPARE(difference(job.packed(&zips), job.whole), QString());
}

void AllItems::logsWhyAnItemFailed_data()
{
    QTest::addColumn<std::function<void(FullJob &)>>("fail");
    QTest::addColumn<QString>("logged");
    const auto row = [](const char *name, std::function<void(FullJob &)> fail, const char *logged) {
        QTest::newRow(name) << std::move(fail) << logged;
    };
    row(
        "an error", [](FullJob &job) { throwAt<Broken>(job, "adapters"); }, "item failed: broken");
    row(
        "no memory", [](FullJob &job) { throwAt<std::bad_alloc>(job, "adapters"); },
        "item failed: std::bad_alloc");
    row(
        "a number", [](FullJob &job) { throwAt<int>(job, "adapters"); }, "item failed");
}

void AllItems::logsWhyAnItemFailed()
{
    QFETCH(std::function<void(FullJob &)>, fail);
    QFETCH(QString, logged);
    const Diagnostics diagnostics;
    FullJob job;
    fail(job);
    QVERIFY(job.run());
    QCOMPARE(job.f.output.lines(), job.printed({logged, "saveNICInfo failed!"}));
}

void AllItems::cleanupTestCase()
{
    QVERIFY(zips.count() > 0);
    QCOMPARE(zips.complaint(), QString());
}

QTEST_GUILESS_MAIN(AllItems)
#include "tst_all_items.moc"
