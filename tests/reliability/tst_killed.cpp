#include "ProgramFixture.h"
#include "SeededRandom.h"

#include <QElapsedTimer>
#include <QRegularExpression>

/// The program is killed at a random moment of an export. The next start is normal, its export is
/// complete, and no user file is lost.
class Killed : public QObject
{
    Q_OBJECT

private slots:
    void atRandomMomentsOfAnExport();
};

namespace {

/// Entries of @p contents that neither a complete nor a killed export produces. A killed one may
/// leave partial copies under temporary names and partial event logs.
QStringList unexpected(const ProgramFixture::Contents &contents, const QStringList &usual)
{
    static const QRegularExpression left(
        R"(/qt_temp\.\w+$|^(Application|System)Events(\(\d+\))?\.evtx$)");
    QStringList names;
    for (const QString &name : contents.keys()) {
        if (!usual.contains(name) && !left.match(name).hasMatch())
            names.append(name);
    }
    return names;
}

} // namespace

void Killed::atRandomMomentsOfAnExport()
{
    QRandomGenerator chance = seededRandom();
    ProgramFixture f("Zoë's 家 home");
    f.layOutLogs(8, 250'000);
    KeptZips kept;
    const QString zip = f.path("QZSDK/UserLogInfo.zip");
    const QString second = f.path("QZSDK/second.zip");

    // The duration and contents of an undisturbed export.
    const auto undisturbed = f.start({zip});
    QVERIFY(undisturbed->waitForOutput("exporting"));
    QElapsedTimer time;
    time.start();
    QVERIFY(undisturbed->waitForOutput("exported"));
    const int duration = int(time.elapsed()) + 1;
    QCOMPARE(undisturbed->exitCode(), 0);
    const QStringList usual = zipEntryNames(zip);
    QCOMPARE(logsIn(zipContents(zip)), f.logs);

    int inTheMidst = 0;
    const int kills = times("VANTREL_KILLS", 20);
    for (int i = 0; i < kills; ++i) {
        {
            const auto killed = f.start({zip});
            QVERIFY(killed->waitForOutput("exporting"));
            const int moment = chance.bounded(duration);
            if (!QTest::qWaitFor([&] { return killed->output().contains("exported"); }, moment))
                killed->kill();
        }
        inTheMidst += QFileInfo::exists(f.path("QZSDK/LogInfo")) ? 1 : 0;
        QVERIFY(f.nothingIsLost());

        const auto next = f.start({zip, second});
        QCOMPARE(next->exitCode(), 0);
        QCOMPARE(next->output(),
                 (QByteArrayList{"exporting", "exported", "exporting", "exported"}));
        QVERIFY(f.nothingIsLost());
        QVERIFY(!QFileInfo::exists(f.path("QZSDK/LogInfo")));
        const auto contents = zipContents(zip);
        QCOMPARE(unexpected(contents, usual).join(' '), QString());
        for (const QString &name : usual)
            QVERIFY2(contents.contains(name), qPrintable(name));
        for (auto log = f.logs.begin(); log != f.logs.end(); ++log)
            QVERIFY2(contents.value(log.key()) == log.value(), qPrintable(log.key()));
        // The second export after the kill has no leftovers.
        QCOMPARE(zipEntryNames(second), usual);
        QCOMPARE(logsIn(zipContents(second)), f.logs);
        QCOMPARE(zipContents(second).value("SystemInfo.txt").count("Memory Load"), 1);
        kept.keep(zip);
        kept.keep(second);
    }
    QCOMPARE(kept.complaint(), QString());
    qInfo("%d of the kills left a staging folder", inTheMidst);
    QVERIFY(inTheMidst > 0 || kills < 20); // a few kills may all miss the export
}

QTEST_GUILESS_MAIN(Killed)
#include "tst_killed.moc"
