#pragma once

#include "ExportFixture.h"
#include "ExportItems.h"
#include "FakeSystem.h"
#include "SystemDumps.h"
#include "ZipTools.h"

/// A worker on a fake system with every item chosen, and the expected contents of its zip.
struct FullJob
{
    using Contents = ExportFixture::Contents;

    /// @p filling is appended to every file, for jobs of any size.
    explicit FullJob(const QByteArray &filling = {})
    {
        machine.filling = filling;
        machine.memory = MemoryStatus{50, quint64(8) << 30, quint64(4) << 30};
        machine.modules.modules = {{"PART", 8388608, 3200}};
        NetworkAdapter adapter;
        adapter.name = "eth0";
        adapter.hardwareAddress = QByteArray::fromHex("020304050607");
        adapter.mtu = 1500;
        machine.adapters.adapters = {adapter};
        kernelDump = f.scratch.file("Memory.dmp", "kernel" + filling);
        smallDump = f.scratch.file("Minidumps/a.dmp", "small" + filling);
        machine.dumps = {kernelDump, kernelDump, f.scratch.path("Minidumps/"), ".dmp", false};
        f.log("client.dmp", "client" + filling);
        log = f.log("a.log", "line\n" + filling);
        whole = {{"ApplicationEvents.evtx", "events of Application" + filling},
                 {"ClientDump.zip/client.dmp", "client" + filling},
                 {"NICInfo.txt", "Adapter: eth0\nMAC: 02-03-04-05-06-07\nMTU: 1500 bytes\n"
                                 "TransmitLinkSpeed: 0 Mbps\nReceiveLinkSpeed: 0 Mbps\n"
                                 "Status: Inactive\n\n"},
                 {"SDKLOG/a.log", "line\n" + filling},
                 {"SystemDmp.zip/" + entryOf(kernelDump), "kernel" + filling},
                 {"SystemDmp.zip/" + entryOf(smallDump), "small" + filling},
                 {"SystemEvents.evtx", "events of System" + filling},
                 {"SystemInfo.txt", "Memory Load: 50%\nTotal Physical Memory: 8192 MB\n"
                                    "Available Physical Memory: 4096 MB\n"
                                    "PartNumber: PART\nCapacity: 8388608 Kb\nSpeed: 3200 MHz\n"}};
        chooseEveryItem();
    }

    static void chooseEveryItem()
    {
        hub().sdkLog = true;
        for (const ExportItem &item : exportItems)
            hub().*item.isChosen = true;
    }

    /// Removes entries that a fault costs from the expected contents.
    void drop(const QString &prefix)
    {
        for (const QString &name : whole.keys()) {
            if (name.startsWith(prefix))
                whole.remove(name);
        }
    }

    void request()
    {
        f.choose({log});
        f.worker.enqueueExport(f.zip());
    }

    /// Waits for the answer, or for the output of a request that is dropped without one.
    bool settles()
    {
        if (!f.worker.isRunning())
            f.worker.start();
        const bool settled = QTest::qWaitFor(
            [this] {
                return f.answered > 0 || f.output.contains("mkdir failed") ||
                       f.output.contains("mkpath failed");
            },
            ExportFixture::patience);
        f.answered = 0;
        return settled;
    }

    bool run() { return f.exportAndWait({log}); }

    /// The contents of the zip, with dump archives unpacked. Copies of all zips go to @p kept.
    Contents packed(KeptZips *kept = nullptr)
    {
        const auto read = [kept](const QString &zip) {
            if (kept != nullptr)
                kept->keep(zip);
            return zipContents(zip);
        };
        Contents contents = read(f.zip());
        for (const char *archive : {"ClientDump.zip", "SystemDmp.zip"}) {
            if (!contents.contains(archive))
                continue;
            const Contents inner = read(f.scratch.file("inner.zip", contents.take(archive)));
            for (auto entry = inner.begin(); entry != inner.end(); ++entry)
                contents.insert(QString("%1/%2").arg(archive, entry.key()), entry.value());
        }
        return contents;
    }

    /// The expected output if the items print @p byItems: first the result of copying the log, last
    /// the packed files.
    QStringList printed(const QStringList &byItems)
    {
        QStringList lines = QStringList("true") + byItems;
        for (const QString &name : zipEntryNames(f.zip())) {
            const QString folder =
                name.startsWith("SDKLOG/") ? f.staging() + "/SDKLOG" : f.staging();
            lines.append(QString("\"%1\" \"%2\" \"%3\"").arg(name, folder, f.staging()));
        }
        return lines;
    }

    FakeSystem machine;
    ExportFixture f{machine.probes()};
    QString kernelDump;
    QString smallDump;
    QString log;    ///< the chosen log
    Contents whole; ///< expected contents of the zip
};
