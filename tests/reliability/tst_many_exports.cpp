#include "FullJob.h"
#include "SeededRandom.h"
#include "Text.h"

/// Many exports: queued at once, given up at the end, and one of every kind.
class ManyExports : public QObject
{
    Q_OBJECT

private slots:
    void twoHundredAreQueuedAtOnce();
    void twoHundredAreQueuedWhileTheWorkerGoes();
    void everyChoiceOfItems();
};

namespace {

using Contents = FullJob::Contents;

const int manyRequests = 200;

/// The entries that each flag brings, by the rules of the staging folder.
QString flagOf(const QString &entry)
{
    static const QMap<QString, QString> flags{
        {text("SDKLOG/"), text("sdkLog")},
        {text("ApplicationEvents.evtx"), text("systemLog")},
        {text("SystemEvents.evtx"), text("systemLog")},
        {text("SystemInfo.txt"), text("systemInfo")},
        {text("NICInfo.txt"), text("nicInfo")},
        {text("SystemDmp.zip"), text("systemDump")},
        {text("ClientDump.zip"), text("clientDump")},
    };
    for (auto flag = flags.begin(); flag != flags.end(); ++flag) {
        if (entry.startsWith(flag.key()))
            return flag.value();
    }
    return text("no flag");
}

/// A choice of items: which flags are set, and what the user chose besides.
struct Choice
{
    explicit Choice(int number)
        : chosenLog((number & 64) != 0)
        , sdkLogOnly((number & 128) != 0)
    {
        const char *const names[]{"sdkLog",  "systemLog",  "systemInfo",
                                  "nicInfo", "systemDump", "clientDump"};
        for (int i = 0; i < 6; ++i) {
            if ((number & (1 << i)) != 0)
                flags.append(text(names[i]));
        }
    }

    void setFlags() const
    {
        hub().sdkLog = flags.contains(text("sdkLog"));
        hub().systemLog = flags.contains(text("systemLog"));
        hub().systemInfo = flags.contains(text("systemInfo"));
        hub().nicInfo = flags.contains(text("nicInfo"));
        hub().systemDump = flags.contains(text("systemDump"));
        hub().clientDump = flags.contains(text("clientDump"));
    }

    [[nodiscard]] bool copiesLogs() const { return chosenLog || flags.contains(text("sdkLog")); }

    /// What is left of the whole. Only a request that copies logs heeds the wish for nothing else.
    [[nodiscard]] Contents partOf(const Contents &whole) const
    {
        Contents part;
        for (auto entry = whole.begin(); entry != whole.end(); ++entry) {
            const QString flag = flagOf(entry.key());
            const bool isLog = flag == text("sdkLog");
            const bool isChosenLog = entry.key() == text("SDKLOG/a.log");
            const bool wanted = isLog ? copiesLogs() && (chosenLog || !isChosenLog)
                                      : flags.contains(flag) && !(sdkLogOnly && copiesLogs());
            if (wanted)
                part.insert(entry.key(), entry.value());
        }
        return part;
    }

    QStringList flags;
    bool chosenLog;
    bool sdkLogOnly;
};

} // namespace

void ManyExports::twoHundredAreQueuedAtOnce()
{
    FullJob job;
    const int count = times("VANTREL_QUEUED", manyRequests);
    const auto zip = [&](int i) { return job.f.scratch.path(text("%1.zip").arg(i)); };
    job.f.choose({job.log});
    for (int i = 0; i < count; ++i)
        job.f.worker.enqueueExport(zip(i));
    QVERIFY(job.f.waitForExports(count, 240000));

    KeptZips kept;
    const QStringList names = zipEntryNames(zip(0));
    for (int i = 0; i < count; ++i) {
        kept.keep(zip(i));
        // The first took the chosen log, all else is in each.
        QStringList expected = names;
        if (i > 0)
            expected.removeAll(text("SDKLOG/a.log"));
        QCOMPARE(zipEntryNames(zip(i)), expected);
    }
    QVERIFY(names.contains(text("SDKLOG/a.log")));
    QCOMPARE(kept.count(), count);
    QCOMPARE(kept.complaint(), QString());
    QVERIFY(!QFileInfo::exists(job.f.staging()));
    QVERIFY(job.run());
    QCOMPARE(job.packed(), job.whole);
}

void ManyExports::twoHundredAreQueuedWhileTheWorkerGoes()
{
    ScratchFolder zips;
    const auto zip = [&](int i) { return zips.path(text("%1.zip").arg(i)); };
    int dropped = 0;
    {
        FullJob job;
        for (int i = 0; i < manyRequests; ++i)
            job.f.worker.enqueueExport(zip(i));
        QVERIFY(job.f.waitForExports());
        job.f.worker.setRunning(false);
        QVERIFY(
            job.f.worker.wait(ExportFixture::patience)); // no longer than the request in hand takes
        QVERIFY(!QFileInfo::exists(job.f.staging()));
        while (dropped < manyRequests && !QFileInfo::exists(zip(manyRequests - 1 - dropped)))
            ++dropped;
    }
    // Each is there whole or not at all.
    KeptZips kept;
    for (int i = 0; i < manyRequests - dropped; ++i)
        kept.keep(zip(i));
    QVERIFY(dropped > 0);
    QCOMPARE(kept.count(), manyRequests - dropped);
    QCOMPARE(kept.complaint(), QString());
}

void ManyExports::everyChoiceOfItems()
{
    FullJob job;
    job.f.log(text("gentl_cxp_log/g.txt"), "gentl");
    job.whole[text("SDKLOG/gentl_cxp_log/g.txt")] = "gentl";
    // Only some entries are zips themselves, and those are always there when their flag is set.
    KeptZips kept;
    for (int number = 0; number < 256; ++number) {
        const Choice choice(number);
        choice.setFlags();
        QFile::remove(job.f.zip());
        job.f.worker.setSdkLogOnly(choice.sdkLogOnly);
        QVERIFY(job.f.exportAndWait(choice.chosenLog ? QStringList(job.log) : QStringList()));
        QVERIFY2(job.packed(&kept) == choice.partOf(job.whole),
                 qPrintable(QString::number(number)));
        QVERIFY(!QFileInfo::exists(job.f.staging()));
    }
    QVERIFY(kept.count() >= 256);
    QCOMPARE(kept.complaint(), QString());
}

QTEST_GUILESS_MAIN(ManyExports)
#include "tst_many_exports.moc"
