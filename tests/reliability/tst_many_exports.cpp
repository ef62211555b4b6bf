#include "FullJob.h"
#include "SeededRandom.h"
#include "Text.h"

#include <vector>

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

using Flag = std::atomic<bool> CConfiguration::*;

/// The flags that choose an item, that of the SDK logs first.
const std::vector<Flag> flags = [] {
    std::vector<Flag> all{&CConfiguration::sdkLog};
    for (const ExportItem &item : exportItems)
        all.push_back(item.isChosen);
    return all;
}();

/// The flag that brings an entry, by the rules of the staging folder.
Flag flagOf(const QString &entry)
{
    static const QMap<QString, Flag> brought{
        {text("SDKLOG/"), &CConfiguration::sdkLog},
        {text("ApplicationEvents.evtx"), &CConfiguration::systemLog},
        {text("SystemEvents.evtx"), &CConfiguration::systemLog},
        {text("SystemInfo.txt"), &CConfiguration::systemInfo},
        {text("NICInfo.txt"), &CConfiguration::nicInfo},
        {text("SystemDmp.zip"), &CConfiguration::systemDump},
        {text("ClientDump.zip"), &CConfiguration::clientDump},
    };
    for (auto flag = brought.begin(); flag != brought.end(); ++flag) {
        if (entry.startsWith(flag.key()))
            return flag.value();
    }
    qFatal("%s comes from nowhere", qPrintable(entry));
}

/// A choice of items: which flags are set, and what the user chose besides. Its number has a bit
/// for each.
struct Choice
{
    explicit Choice(std::size_t number)
        : bits(number)
        , chosenLog((number >> flags.size() & 1) != 0)
        , sdkLogOnly((number >> (flags.size() + 1) & 1) != 0)
    {
    }

    [[nodiscard]] static std::size_t count() { return std::size_t(1) << (flags.size() + 2); }

    void setFlags() const
    {
        for (std::size_t i = 0; i < flags.size(); ++i)
            hub().*flags[i] = (bits >> i & 1) != 0;
    }

    [[nodiscard]] bool copiesLogs() const { return chosenLog || hub().sdkLog; }

    /// What is left of the whole while the flags are set. Only a request that copies logs heeds the
    /// wish for nothing else.
    [[nodiscard]] Contents partOf(const Contents &whole) const
    {
        Contents part;
        for (auto entry = whole.begin(); entry != whole.end(); ++entry) {
            const Flag flag = flagOf(entry.key());
            const bool isLog = flag == &CConfiguration::sdkLog;
            const bool isChosenLog = entry.key() == text("SDKLOG/a.log");
            const bool wanted = isLog ? copiesLogs() && (chosenLog || !isChosenLog)
                                      : hub().*flag && !(sdkLogOnly && copiesLogs());
            if (wanted)
                part.insert(entry.key(), entry.value());
        }
        return part;
    }

    std::size_t bits;
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
    for (std::size_t number = 0; number < Choice::count(); ++number) {
        const Choice choice(number);
        choice.setFlags();
        QFile::remove(job.f.zip());
        job.f.worker.setSdkLogOnly(choice.sdkLogOnly);
        QVERIFY(job.f.exportAndWait(choice.chosenLog ? QStringList(job.log) : QStringList()));
        QVERIFY2(job.packed(&kept) == choice.partOf(job.whole),
                 qPrintable(QString::number(number)));
        QVERIFY(!QFileInfo::exists(job.f.staging()));
    }
    QVERIFY(kept.count() >= 256); // six flags, two further choices
    QCOMPARE(kept.complaint(), QString());
}

QTEST_GUILESS_MAIN(ManyExports)
#include "tst_many_exports.moc"
