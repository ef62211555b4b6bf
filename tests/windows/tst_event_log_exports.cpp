#include "Diagnostics.h"
#include "ExportFixture.h"

/// Export of event logs through a replacement of the system's library, which can be made to fail.
class EventLogExports : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void writesBothChannels_data();
    void writesBothChannels();
    void takesTheNextFreeName();
    void aRefusedChannelLeavesNoFile_data();
    void aRefusedChannelLeavesNoFile();
    void goesIntoTheZip();
};

namespace {

const QByteArray refusedChannel = "VANTREL_REFUSED_CHANNEL";
const QByteArray refusal = "VANTREL_REFUSAL";
const QByteArray halfExport = "VANTREL_HALF_EXPORT";

/// What the replacement writes if its arguments are correct.
QByteArray eventsOf(const char *channel)
{
    return QByteArray("events of ") + channel + " by * with 1\n";
}

} // namespace

void EventLogExports::cleanup()
{
    for (const QByteArray &variable : {refusedChannel, refusal, halfExport})
        qunsetenv(variable.constData());
}

void EventLogExports::writesBothChannels_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("Latin") << "staging";
    QTest::newRow("Chinese") << "用户 张三/暂存";
    QTest::newRow("beyond every code page") << "相機 한국 éŚ";
}

void EventLogExports::writesBothChannels()
{
    QFETCH(QString, name);
    ExportFixture f;
    QVERIFY(f.worker.saveEventLog(f.scratch.folder(name)));
    QCOMPARE(f.scratch.read(name + "/ApplicationEvents.evtx"), eventsOf("Application"));
    QCOMPARE(f.scratch.read(name + "/SystemEvents.evtx"), eventsOf("System"));
}

void EventLogExports::takesTheNextFreeName()
{
    ExportFixture f;
    f.scratch.file("staging/ApplicationEvents.evtx", "taken");
    QVERIFY(f.worker.saveEventLog(f.scratch.path("staging")));
    QCOMPARE(f.scratch.read("staging/ApplicationEvents.evtx"), QByteArray("taken"));
    QCOMPARE(f.scratch.read("staging/ApplicationEvents(1).evtx"), eventsOf("Application"));
}

void EventLogExports::aRefusedChannelLeavesNoFile_data()
{
    QTest::addColumn<QByteArray>("channel");
    QTest::addColumn<QByteArray>("error");
    QTest::addColumn<bool>("afterAHalf");
    QTest::addColumn<QStringList>("left");

    const QStringList first{"ApplicationEvents.evtx"};
    QTest::newRow("no right to the first")
        << QByteArray("Application") << QByteArray("5") << false << QStringList();
    QTest::newRow("no right to the second")
        << QByteArray("System") << QByteArray("5") << false << first;
    QTest::newRow("a channel that is missing")
        << QByteArray("System") << QByteArray("15007") << false << first;
    QTest::newRow("half the first")
        << QByteArray("Application") << QByteArray("112") << true << QStringList();
    QTest::newRow("half the second") << QByteArray("System") << QByteArray("112") << true << first;
}

void EventLogExports::aRefusedChannelLeavesNoFile()
{
    QFETCH(QByteArray, channel);
    QFETCH(QByteArray, error);
    QFETCH(bool, afterAHalf);
    QFETCH(QStringList, left);
    qputenv(refusedChannel.constData(), channel);
    qputenv(refusal.constData(), error);
    if (afterAHalf)
        qputenv(halfExport.constData(), "1");
    ExportFixture f;
    const QString folder = f.scratch.folder("staging");
    const Diagnostics on;
    QVERIFY(!f.worker.saveEventLog(folder));
    QCOMPARE(QDir(folder).entryList(QDir::Files), left);
    QCOMPARE(f.output.lines(),
             QStringList(QString("not exported: \"%1\" error %2")
                             .arg(QString::fromLatin1(channel), QString::fromLatin1(error))));
}

void EventLogExports::goesIntoTheZip()
{
    ExportFixture f;
    hub().sdkLog = false;
    hub().systemLog = true;
    f.worker.enqueueExport(f.zip());
    QVERIFY(f.waitForExports());
    const ExportFixture::Contents contents = zipContents(f.zip());
    QCOMPARE(contents.value("ApplicationEvents.evtx"), eventsOf("Application"));
    QCOMPARE(contents.value("SystemEvents.evtx"), eventsOf("System"));
}

QTEST_GUILESS_MAIN(EventLogExports)
#include "tst_event_log_exports.moc"
