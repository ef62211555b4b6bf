#include "DebugCapture.h"
#include "windows/Win32Seams.h"

#include <QTest>

/// The call that exports a channel.
class EventLogArguments : public QObject
{
    Q_OBJECT

private slots:
    void areChannelEveryEventTargetAndChannelPath();
    void resultIsTheSystems_data();
    void resultIsTheSystems();
};

void EventLogArguments::areChannelEveryEventTargetAndChannelPath()
{
    int calls = 0;
    const ExportLog look = [&](const wchar_t *channel, const wchar_t *query, const wchar_t *target,
                               unsigned long flags) {
        ++calls;
        return QString::fromWCharArray(channel) == "Application" &&
               QString::fromWCharArray(query) == "*" &&
               QString::fromWCharArray(target) == "C:\\用户\\ApplicationEvents.evtx" && flags == 1;
    };
    QVERIFY(exportEventLogBy(look, "Application", "C:/用户/ApplicationEvents.evtx"));
    QCOMPARE(calls, 1);
}

void EventLogArguments::resultIsTheSystems_data()
{
    QTest::addColumn<bool>("result");
    QTest::newRow("done") << true;
    QTest::newRow("refused") << false;
}

void EventLogArguments::resultIsTheSystems()
{
    QFETCH(bool, result);
    const ExportLog answer = [&](auto...) { return result; };
    const DebugCapture output;
    QCOMPARE(exportEventLogBy(answer, "System", "C:/a.evtx"), result);
    QVERIFY(output.lines().isEmpty()); // the caller reports the failure
}

QTEST_GUILESS_MAIN(EventLogArguments)
#include "tst_event_log_arguments.moc"
