#include "FullJob.h"
#include "SeededRandom.h"

#include <vector>

/// Many exports: queued together, dropped at the end, and all combinations of items.
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

/// The flags of all items, SDK logs first.
const std::vector<Flag> flags = [] {
    std::vector<Flag> all{&CConfiguration::sdkLog};
    for (const ExportItem &item : exportItems)
        all.push_back(item.isChosen);
    return all;
}();

/// The flag that an entry depends on.
Flag flagOf(const QString &entry)
{
    static const QMap<QString, Flag> brought{
        {"SDKLOG/", &CConfiguration::sdkLog},
        {"ApplicationEvents.evtx", &CConfiguration::systemLog},
        {"SystemEvents.evtx", &CConfiguration::systemLog},
        {"SystemInfo.txt", &CConfiguration::systemInfo},
        {"NICInfo.txt", &CConfiguration::nicInfo},
        {"SystemDmp.zip", &CConfiguration::systemDump},
        {"ClientDump.zip", &CConfiguration::clientDump},
    };
    for (auto flag = brought.begin(); flag != brought.end(); ++flag) {
        if (entry.startsWith(flag.key()))
            return flag.value();
    }
    qFatal("unexpected entry %s", qPrintable(entry));
}

/// A combination of flags and of what the user chose, encoded in the bits of a number.
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

    /// The expected part of @p whole. Only a request that copies logs honours the logs-only flag.
    [[nodiscard]] Contents partOf(const Contents &whole) const
    {
        Contents part;
        for (auto entry = whole.begin(); entry != whole.end(); ++entry) {
            const Flag flag = flagOf(entry.key());
            const bool isLog = flag == &CConfiguration::sdkLog;
            const bool isChosenLog = entry.key() == "SDKLOG/a.log";
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
    const auto zip = [&](int i) { return job.f.scratch.path(QString("%1.zip").arg(i)); };
    job.f.choose({job.log});
    for (int i = 0; i < count; ++i)
        job.f.worker.enqueueExport(zip(i));
    QVERIFY(job.f.waitForExports(count, 240000));

    KeptZips kept;
    const QStringList names = zipEntryNames(zip(0));
    for (int i = 0; i < count; ++i) {
        kept.keep(zip(i));
        // The first request took the chosen log; everything else is in each zip.
        QStringList expected = names;
        if (i > 0)
            expected.removeAll("SDKLOG/a.log");
        QCOMPARE(zipEntryNames(zip(i)), expected);
    }
    QVERIFY(names.contains("SDKLOG/a.log"));
    QCOMPARE(kept.count(), count);
    QCOMPARE(kept.complaint(), QString());
    QVERIFY(!QFileInfo::exists(job.f.staging()));
    QVERIFY(job.run());
    QCOMPARE(difference(job.packed(), job.whole), QString());
}

void ManyExports::twoHundredAreQueuedWhileTheWorkerGoes()
{
    ScratchFolder zips;
    const auto zip = [&](int i) { return zips.path(QString("%1.zip").arg(i)); };
    int dropped = 0;
    {
        FullJob job;
        for (int i = 0; i < manyRequests; ++i)
            job.f.worker.enqueueExport(zip(i));
        QVERIFY(job.f.waitForExports());
        job.f.worker.setRunning(false);
        QVERIFY(job.f.worker.wait(ExportFixture::patience)); // only the current request is finished
        QVERIFY(!QFileInfo::exists(job.f.staging()));
        while (dropped < manyRequests && !QFileInfo::exists(zip(manyRequests - 1 - dropped)))
            ++dropped;
    }
    // Each zip is complete or missing.
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
    job.f.log("gentl_cxp_log/g.txt", "gentl");
    job.whole["SDKLOG/gentl_cxp_log/g.txt"] = "gentl";
    // Only the dump archives are zips, which exist whenever their flag is set.
    KeptZips kept;
    for (std::size_t number = 0; number < Choice::count(); ++number) {
        const Choice choice(number);
        choice.setFlags();
        QFile::remove(job.f.zip());
        job.f.worker.setSdkLogOnly(choice.sdkLogOnly);
        QVERIFY(job.f.exportAndWait(choice.chosenLog ? QStringList(job.log) : QStringList()));
        QCOMPARE(difference(job.packed(&kept), choice.partOf(job.whole)), QString());
        QVERIFY(!QFileInfo::exists(job.f.staging()));
    }
    QVERIFY(kept.count() >= int(Choice::count()));
    QCOMPARE(kept.complaint(), QString());
}

QTEST_GUILESS_MAIN(ManyExports)
#include "tst_many_exports.moc"
