#include "ExportFixture.h"
#include "ExportItems.h"
#include "ZipTools.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>

#include <cstdlib>

/// A full export of the real machine, compared with the output of other programs.
class ThisMachine : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void adaptersAreThoseOfIp();
    void memoryIsThatOfFree();
    void eventsAreThoseOfTheJournal_data();
    void eventsAreThoseOfTheJournal();
    void theZipIsTestedAndListedByUnzip();
    void cleanupTestCase();
};

namespace {

struct Run
{
    bool done = false;
    QByteArray output;
};

Run run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    const bool ended = process.waitForFinished(60000);
    return {ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0,
            process.readAllStandardOutput()};
}

bool exists(const QString &program)
{
    return !QStandardPaths::findExecutable(program).isEmpty();
}

std::unique_ptr<ExportFixture> fixture;
ExportFixture::Contents contents;

/// The report's block about an adapter, from the output of `ip`. Speeds are left out, because `ip`
/// does not report them.
QByteArray blockOf(const QJsonObject &link)
{
    QByteArray block = "Adapter: " + link["ifname"].toString().toUtf8() + "\nMAC: ";
    if (link["link_type"].toString() != "loopback") {
        const QByteArray address = link["address"].toString().toUtf8();
        block += address.isEmpty() ? QByteArray() : QByteArray(address).replace(':', '-') + '\n';
    }
    for (const QJsonValue &value : link["addr_info"].toArray()) {
        if (value["family"].toString() == "inet")
            block += "IPv4: " + value["local"].toString().toUtf8() + '\n';
    }
    block += "MTU: " + QByteArray::number(link["mtu"].toInt()) + " bytes\n";
    const QString state = link["operstate"].toString();
    const bool up =
        state == "UP" || (state == "UNKNOWN" && link["flags"].toArray().contains("LOWER_UP"));
    return block + (up ? "Status: Active\n\n" : "Status: Inactive\n\n");
}

qint64 figure(const QByteArray &report, const char *label)
{
    const QRegularExpression line(QString("^%1: (\\d+)").arg(label),
                                  QRegularExpression::MultilineOption);
    return line.match(QString::fromUtf8(report)).captured(1).toLongLong();
}

} // namespace

void ThisMachine::initTestCase()
{
    fixture = std::make_unique<ExportFixture>();
    for (const ExportItem &item : exportItems)
        hub().*item.isChosen = true;
    fixture->worker.enqueueExport(fixture->zip());
    QVERIFY(fixture->waitForExports(1, 250000));
    contents = verifiedZipContents(fixture->zip());
}

void ThisMachine::adaptersAreThoseOfIp()
{
    QVERIFY(contents.contains("NICInfo.txt"));
    QVERIFY2(exists("ip"), "iproute2 is missing");
    const Run ip = run("ip", {"-j", "address"});
    QVERIFY(ip.done);
    QStringList expected;
    for (const QJsonValue &link : QJsonDocument::fromJson(ip.output).array())
        expected.append(QString::fromUtf8(blockOf(link.toObject())));
    QString report = QString::fromUtf8(contents["NICInfo.txt"]);
    report.remove(QRegularExpression("(Transmit|Receive)LinkSpeed: \\d+ Mbps\n"));
    QStringList blocks = report.split("\n\n", Qt::SkipEmptyParts);
    for (QString &block : blocks)
        block += "\n\n";
    expected.sort();
    blocks.sort();
    QCOMPARE(blocks, expected);
}

void ThisMachine::memoryIsThatOfFree()
{
    const QByteArray report = contents["SystemInfo.txt"];
    QVERIFY2(exists("free"), "procps is missing");
    const Run free = run("free", {"--mebi"});
    QVERIFY(free.done);
    const QList<QByteArray> row = free.output.split('\n').value(1).simplified().split(' ');
    QCOMPARE(figure(report, "Total Physical Memory"), row.value(1).toLongLong());
    const qint64 available = figure(report, "Available Physical Memory");
    // Memory use changes between the two queries.
    QVERIFY2(std::llabs(available - row.value(6).toLongLong()) < 2048, report.constData());
    const qint64 used = 100 - available * 100 / figure(report, "Total Physical Memory");
    QVERIFY(std::llabs(figure(report, "Memory Load") - used) <= 1);
}

void ThisMachine::eventsAreThoseOfTheJournal_data()
{
    QTest::addColumn<QString>("side");
    QTest::addColumn<QString>("entry");
    QTest::newRow("user's") << "--user"
                            << "ApplicationEvents.evtx";
    QTest::newRow("system's") << "--system"
                              << "SystemEvents.evtx";
}

void ThisMachine::eventsAreThoseOfTheJournal()
{
    QFETCH(QString, side);
    QFETCH(QString, entry);
    const Run journal = run("journalctl", {side, "-o", "export", "--no-pager"});
    if (!journal.done || journal.output.isEmpty()) {
        QVERIFY(!contents.contains(entry));
        QSKIP("no such events here, and none in the zip");
    }
    // The journal grows, but only at its end.
    QVERIFY(!contents[entry].isEmpty());
    QVERIFY(journal.output.startsWith(contents[entry]));
}

void ThisMachine::theZipIsTestedAndListedByUnzip()
{
    QVERIFY2(exists("unzip"), "unzip is missing");
    QVERIFY(run("unzip", {"-tqq", fixture->zip()}).done);
    const Run list = run("unzip", {"-Z1", fixture->zip()});
    QVERIFY(list.done);
    const QStringList listed = QString::fromUtf8(list.output).split('\n', Qt::SkipEmptyParts);
    QCOMPARE(listed, zipEntryNames(fixture->zip()));
    for (const char *always : {"ClientDump.zip", "NICInfo.txt", "SystemDmp.zip", "SystemInfo.txt"})
        QVERIFY2(listed.contains(always), always);
}

void ThisMachine::cleanupTestCase()
{
    fixture.reset();
}

QTEST_GUILESS_MAIN(ThisMachine)
#include "tst_this_machine.moc"
