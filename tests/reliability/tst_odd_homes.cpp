#include "ProgramFixture.h"

/// The program as a process with unusual home folders and clocks.
class OddHomes : public QObject
{
    Q_OBJECT

private slots:
    void exportsFromAHomeOfEveryName_data();
    void exportsFromAHomeOfEveryName();
    void exportsWhileTheClockIsSetBack_data();
    void exportsWhileTheClockIsSetBack();
};

namespace {

/// The date and hour in the first entry's header.
QByteArray zipTime(const QString &zip)
{
    const QByteArray stored = ProgramFixture::read(zip).mid(10, 4);
    return stored.mid(2) + char(quint8(stored.at(1)) >> 3);
}

} // namespace

void OddHomes::exportsFromAHomeOfEveryName_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks") << "  a home  with blanks";
    QTest::newRow("beyond ASCII") << "Zoë Müller-Ångström";
    QTest::newRow("Chinese") << "用户 的 家";
    QTest::newRow("beyond 16 bits") << "🏠 home 📷";
    QTest::newRow("quotes") << "it's \"home\"";
    QTest::newRow("percent signs") << "100%20 %1 %s";
    QTest::newRow("long") << QString(240, 'h');
}

void OddHomes::exportsFromAHomeOfEveryName()
{
    QFETCH(QString, name);
    ProgramFixture f(name);
    f.layOutLogs(2, 5000);
    const QString zip = f.path("QZSDK/UserLogInfo.zip");
    const auto program = f.start({zip});
    QCOMPARE(program->exitCode(), 0);
    QCOMPARE(program->output(), (QByteArrayList{"exporting", "exported"}));
    KeptZips kept;
    kept.keep(zip);
    QCOMPARE(logsIn(zipContents(zip)), f.logs);
    QCOMPARE(kept.complaint(), QString());
    QVERIFY(f.nothingIsLost());
    QVERIFY(!QFileInfo::exists(f.path("QZSDK/LogInfo")));
}

void OddHomes::exportsWhileTheClockIsSetBack_data()
{
    QTest::addColumn<QByteArray>("clock");
    QTest::newRow("an hour") << QByteArray("-1h");
    QTest::newRow("ten years") << QByteArray("-10y");
    QTest::newRow("before the times of zips") << QByteArray("@1975-06-01 12:00:00");
    QTest::newRow("to the beginning") << QByteArray("@1970-01-01 00:00:05");
    QTest::newRow("far ahead") << QByteArray("+30y");
}

void OddHomes::exportsWhileTheClockIsSetBack()
{
    const QString library = VANTREL_CLOCK_LIBRARY;
    if (library.isEmpty())
        QSKIP("no clock that can be set for one program, or no room for it beside a sanitizer");
    QFETCH(QByteArray, clock);
    ProgramFixture f;
    f.layOutLogs(2, 5000);
    QStringList zips;
    for (int i = 0; i < 20; ++i)
        zips.append(f.path(QString("QZSDK/%1.zip").arg(i)));
    const QString setting = f.scratch.file("clock", "+0");
    const auto program = f.start(zips, {{"LD_PRELOAD", library},
                                        {"FAKETIME_TIMESTAMP_FILE", setting},
                                        {"FAKETIME_NO_CACHE", "1"},
                                        {"FAKETIME_DONT_FAKE_MONOTONIC", "1"},
                                        {"NO_FAKE_STAT", "1"}});
    QVERIFY(program->waitForOutput("exported"));
    f.scratch.file("clock", clock); // between or during exports
    QCOMPARE(program->exitCode(), 0);
    QCOMPARE(program->output().count("exported"), zips.size());
    KeptZips kept;
    for (const QString &path : zips) {
        kept.keep(path);
        QCOMPARE(logsIn(zipContents(path)), f.logs);
    }
    QCOMPARE(kept.count(), zips.size());
    QCOMPARE(kept.complaint(), QString());
    QVERIFY(f.nothingIsLost());
    // The zips' times show that the clock was changed.
    QVERIFY(zipTime(zips.last()) != zipTime(zips.first()));
}

QTEST_GUILESS_MAIN(OddHomes)
#include "tst_odd_homes.moc"
