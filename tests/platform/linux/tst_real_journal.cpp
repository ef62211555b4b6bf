#include "DebugCapture.h"
#include "JournalScript.h"

#include <QFileInfo>
#include <QProcess>
#include <QTest>

#include <unistd.h>

/// A real journal, exported by the system's journalctl.
class RealJournal : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void isExportedUnchanged_data();
    void isExportedUnchanged();
};

namespace {

constexpr int eventCount = 300;
constexpr const char *journalMaker = "/lib/systemd/systemd-journal-remote";

/// Events in the journal's export format, the first with a binary multi-line message.
QByteArray events()
{
    QByteArray all;
    for (int i = 0; i < eventCount; ++i) {
        all += "__REALTIME_TIMESTAMP=" + QByteArray::number(qint64(1700000000000000) + i) +
               "\n__MONOTONIC_TIMESTAMP=" + QByteArray::number(1000 + i) +
               "\n_BOOT_ID=0123456789abcdef0123456789abcdef\nPRIORITY=6\n";
        if (i == 0)
            all += QByteArray("MESSAGE\n\x0b\0\0\0\0\0\0\0one\n\0\xff\ntwo\n\n", 28);
        else
            all += "MESSAGE=frame " + QByteArray::number(i) + '\n';
        all += '\n';
    }
    return all;
}

/// A journal of these events, and a journalctl that reads only this journal.
class MadeJournal
{
public:
    /// @p fileName determines whose journal it is.
    explicit MadeJournal(const QString &fileName)
    {
        QProcess maker;
        maker.start(QString::fromUtf8(journalMaker),
                    {"--output=" + folder.path(fileName), folder.file("events.txt", events())});
        made = maker.waitForFinished() && maker.exitCode() == 0 &&
               QFileInfo(folder.path(fileName)).size() > 0;
    }

    [[nodiscard]] QByteArray wrapper() const
    {
        return "exec journalctl --directory='" + folder.path().toUtf8() + "' \"$@\"";
    }

    /// The export by journalctl itself.
    [[nodiscard]] QByteArray exported() const
    {
        QProcess journalctl;
        journalctl.start("journalctl", {"--directory=" + folder.path(), "--output=export"});
        journalctl.waitForFinished();
        return journalctl.readAllStandardOutput();
    }

    bool made = false;

private:
    ScratchFolder folder;
};

} // namespace

void RealJournal::initTestCase()
{
    if (!QFileInfo(QString::fromUtf8(journalMaker)).isExecutable())
        QSKIP("systemd-journal-remote, which makes journals, is missing");
}

void RealJournal::isExportedUnchanged_data()
{
    QTest::addColumn<QString>("channel");
    QTest::addColumn<QString>("fileName");
    QTest::newRow("system's") << "System"
                              << "system.journal";
    QTest::newRow("user's") << "Application" << QString("user-%1.journal").arg(getuid());
}

void RealJournal::isExportedUnchanged()
{
    QFETCH(QString, channel);
    QFETCH(QString, fileName);
    const MadeJournal journal(fileName);
    QVERIFY(journal.made);
    JournalScript script(journal.wrapper());
    QVERIFY(script.exportAndWait(channel));
    const QByteArray exported = script.scratch.read("events");
    QCOMPARE(exported, journal.exported());
    QCOMPARE(exported.count("\nMESSAGE=frame "), eventCount - 1);
    QVERIFY(exported.contains(QByteArray("one\n\0\xff\ntwo\n", 11)));
}

QTEST_GUILESS_MAIN(RealJournal)
#include "tst_real_journal.moc"
