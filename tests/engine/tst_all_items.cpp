#include "ExportFixture.h"
#include "MadeUpMachine.h"

#include <functional>
#include <new>
#include <stdexcept>

/// The whole job with every item chosen: what it prints and what it packs, word for word, when all
/// goes well and when one item after the other fails.
class AllItems : public QObject
{
    Q_OBJECT

private slots:
    void areAskedForInTheirOrder();
    void oneFaultTakesNothingElseAway_data();
    void oneFaultTakesNothingElseAway();
    void everyFaultAtOnceStillMakesAZip();
    void theNextExportAfterAFaultIsWhole();
};

namespace {

using Contents = ExportFixture::Contents;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

struct Job
{
    Job()
    {
        machine.memory = MemoryStatus{50, quint64(8) << 30, quint64(4) << 30};
        machine.modules.modules = {{"PART", 8388608, 3200}};
        NetworkAdapter adapter;
        adapter.name = text("eth0");
        adapter.hardwareAddress = QByteArray::fromHex("020304050607");
        adapter.mtu = 1500;
        machine.adapters.adapters = {adapter};
        kernelDump = f.scratch.file(text("Memory.dmp"), "kernel");
        smallDump = f.scratch.file(text("Minidumps/a.dmp"), "small");
        machine.dumps = {kernelDump, kernelDump, f.scratch.path(text("Minidumps/")), text(".dmp"),
                         false};
        f.log(text("client.dmp"), "client");
        whole = {{text("ApplicationEvents.evtx"), "events of Application"},
                 {text("ClientDump.zip/client.dmp"), "client"},
                 {text("NICInfo.txt"), "Adapter: eth0\nMAC: 02-03-04-05-06-07\nMTU: 1500 bytes\n"
                                       "TransmitLinkSpeed: 0 Mbps\nReceiveLinkSpeed: 0 Mbps\n"
                                       "Status: Inactive\n\n"},
                 {text("SDKLOG/a.log"), "line\n"},
                 {text("SystemDmp.zip/") + inside(kernelDump), "kernel"},
                 {text("SystemDmp.zip/") + inside(smallDump), "small"},
                 {text("SystemEvents.evtx"), "events of System"},
                 {text("SystemInfo.txt"),
                  "Memory Load: 50%\nTotal Physical Memory: 8192 MB\n"
                  "Available Physical Memory: 4096 MB\n"
                  "PartNumber: PART\nCapacity: 8388608 Kb\nSpeed: 3200 MHz\n"}};
        CConfiguration &hub = *CConfiguration::instance();
        for (std::atomic<bool> *flag : {&hub.systemLog, &hub.sdkLog, &hub.nicInfo, &hub.systemInfo,
                                        &hub.systemDump, &hub.clientDump})
            *flag = true;
    }

    /// The name of a file in a dump archive as the reader lists it.
    static QString inside(const QString &path)
    {
        return path.startsWith(QLatin1Char('/')) ? path.mid(1) : path;
    }

    void drop(const QString &prefix)
    {
        for (const QString &name : whole.keys()) {
            if (name.startsWith(prefix))
                whole.remove(name);
        }
    }

    bool run()
    {
        f.choose({f.log(text("a.log"))});
        f.worker.enqueueExport(f.zip());
        return f.answers();
    }

    /// What was packed, the dump archives by their contents.
    Contents packed()
    {
        Contents contents = zipContents(f.zip());
        for (const QString &archive : {text("ClientDump.zip"), text("SystemDmp.zip")}) {
            if (!contents.contains(archive))
                continue;
            const Contents inner =
                zipContents(f.scratch.file(text("inner.zip"), contents.take(archive)));
            for (auto entry = inner.begin(); entry != inner.end(); ++entry)
                contents.insert(archive + QLatin1Char('/') + entry.key(), entry.value());
        }
        return contents;
    }

    /// What is printed when the items print @p byItems: the copy of the log before that, each file
    /// that is packed after it.
    QStringList printed(const QStringList &byItems)
    {
        QStringList lines = QStringList(text("true")) + byItems;
        for (const QString &name : zipEntryNames(f.zip())) {
            const QString folder =
                name.startsWith(text("SDKLOG/")) ? f.staging() + text("/SDKLOG") : f.staging();
            lines.append(text("\"%1\" \"%2\" \"%3\"").arg(name, folder, f.staging()));
        }
        return lines;
    }

    MadeUpMachine machine;
    ExportFixture f{machine.questions()};
    QString kernelDump;
    QString smallDump;
    Contents whole; ///< what the zip is to hold
};

struct Fault
{
    const char *name;
    std::function<void(Job &)> make; ///< also takes away from the whole what it costs
    QStringList printed;             ///< by the items
};

const char *const noKernelDump = "蓝屏日志文件Memory.dmp不存在";
const char *const noSmallDump = "蓝屏日志文件Minidumps不存在";

std::function<void(Job &)> failingModules(MemoryModuleList::Query query)
{
    return [query](Job &job) {
        job.machine.modules = {query, {}};
        QByteArray &report = job.whole[text("SystemInfo.txt")];
        report.truncate(report.indexOf("PartNumber"));
    };
}

template <typename Problem>
void throwAt(Job &job, const char *question)
{
    job.machine.ask = [question](const QString &asked) {
        if (asked == QLatin1String(question))
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
         [](Job &job) {
             job.machine.refusedChannel = text("Application");
             job.drop(text("ApplicationEvents"));
             job.drop(text("SystemEvents"));
         },
         {text("saveEventLog failed!")}},
        {"System refused",
         [](Job &job) {
             job.machine.refusedChannel = text("System");
             job.drop(text("SystemEvents"));
         },
         {text("saveEventLog failed!")}},
        {"event log throws",
         [](Job &job) {
             throwAt<Broken>(job, "Application");
             job.drop(text("ApplicationEvents"));
             job.drop(text("SystemEvents"));
         },
         {text("item given up: broken"), text("saveEventLog failed!")}},
    };
}

QVector<Fault> systemInfoFaults()
{
    using Query = MemoryModuleList::Query;
    return {
        {"no memory status",
         [](Job &job) {
             job.machine.memory = {};
             job.whole[text("SystemInfo.txt")].clear();
         },
         {text("Failed to get memory status."), text("saveSysInfo failed!")}},
        {"memory throws",
         [](Job &job) {
             throwAt<std::bad_alloc>(job, "memory");
             job.whole[text("SystemInfo.txt")].clear();
         },
         {text("item given up: std::bad_alloc"), text("saveSysInfo failed!")}},
        {"memory throws something of its own",
         [](Job &job) {
             throwAt<int>(job, "memory");
             job.whole[text("SystemInfo.txt")].clear();
         },
         {text("item given up"), text("saveSysInfo failed!")}},
        {"COM library", failingModules(Query::Library), {text("COM库初始化失败")}},
        {"WMI locator", failingModules(Query::Locator), {text("WbemLocator创建失败")}},
        {"WMI connection", failingModules(Query::Connection), {text("WMI服务连接失败")}},
        {"WMI proxy", failingModules(Query::Proxy), {text("设置代理失败")}},
        {"WMI query", failingModules(Query::Execution), {text("查询执行失败")}},
    };
}

QVector<Fault> adapterFaults()
{
    return {
        {"adapter query",
         [](Job &job) {
             job.machine.adapters.error = 1450;
             job.whole[text("NICInfo.txt")] =
                 "Call to GetAdaptersAddresses failed with error code: 1450\n";
         },
         {}},
        {"adapters throw",
         [](Job &job) {
             throwAt<Broken>(job, "adapters");
             job.whole[text("NICInfo.txt")].clear();
         },
         {text("item given up: broken"), text("saveNICInfo failed!")}},
    };
}

QVector<Fault> dumpFaults()
{
    return {
        {"no kernel dump",
         [](Job &job) {
             QFile::remove(job.kernelDump);
             job.drop(text("SystemDmp.zip/") + Job::inside(job.kernelDump));
         },
         {text(noKernelDump)}},
        {"no small dump",
         [](Job &job) {
             QFile::remove(job.smallDump);
             job.drop(text("SystemDmp.zip/") + Job::inside(job.smallDump));
         },
         {text(noSmallDump)}},
        {"system dumps throw",
         [](Job &job) {
             throwAt<Broken>(job, "dumpPlaces");
             job.drop(text("SystemDmp.zip"));
         },
         {text("item given up: broken"),
          text("saveEventLog failed!")}}, // not a slip: see the worker
        {"no client dump",
         [](Job &job) {
             QFile::remove(job.f.base() + text("QZviewer/client.dmp"));
             job.drop(text("ClientDump.zip"));
         },
         {}},
    };
}

QVector<Fault> faults()
{
    return QVector<Fault>{{"none", [](Job &) {}, {}}} + eventLogFaults() + systemInfoFaults() +
           adapterFaults() + dumpFaults();
}

} // namespace

void AllItems::areAskedForInTheirOrder()
{
    Job job;
    QVERIFY(job.run());
    job.machine.asked.removeDuplicates();
    QCOMPARE(job.machine.asked,
             QStringList({text("comSecurity"), text("Application"), text("System"), text("memory"),
                          text("memoryModules"), text("adapters"), text("dumpPlaces")}));
    QCOMPARE(zipEntryNames(job.f.zip()),
             QStringList({text("ApplicationEvents.evtx"), text("ClientDump.zip"),
                          text("NICInfo.txt"), text("SDKLOG/a.log"), text("SystemDmp.zip"),
                          text("SystemEvents.evtx"), text("SystemInfo.txt")}));
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
    Job job;
    fault.make(job);
    QVERIFY(job.run());
    QCOMPARE(job.f.output.lines(), job.printed(fault.printed));
    QCOMPARE(job.packed(), job.whole);
    QVERIFY(!QFileInfo::exists(job.f.staging()));
}

void AllItems::everyFaultAtOnceStillMakesAZip()
{
    Job job;
    job.machine.refusedChannel = text("Application");
    job.machine.memory = {};
    job.machine.adapters.error = 1;
    job.machine.dumps = {};
    job.machine.dumps.smallDumps = job.f.scratch.path(text("nowhere"));
    QVERIFY(QFile::remove(job.f.base() + text("QZviewer/client.dmp")));
    QVERIFY(job.run());
    QCOMPARE(job.f.output.lines(),
             job.printed({text("saveEventLog failed!"), text("Failed to get memory status."),
                          text("saveSysInfo failed!"), text(noKernelDump), text(noSmallDump)}));
    QCOMPARE(job.packed(), (Contents{{text("NICInfo.txt"),
                                      "Call to GetAdaptersAddresses failed with error code: 1\n"},
                                     {text("SDKLOG/a.log"), "line\n"},
                                     {text("SystemInfo.txt"), {}}}));
}

void AllItems::theNextExportAfterAFaultIsWhole()
{
    Job job;
    job.machine.ask = [](const QString &) { throw Broken(); };
    QVERIFY(job.run());
    QCOMPARE(job.f.output.take().filter(text("item given up: broken")).size(), 4);
    job.machine.ask = [](const QString &) {};
    QVERIFY(job.run());
    QCOMPARE(job.f.output.lines(), job.printed({}));
    QCOMPARE(job.packed(), job.whole);
}

QTEST_GUILESS_MAIN(AllItems)
#include "tst_all_items.moc"
