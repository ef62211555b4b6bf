#include "LogConfig.h"
#include "LogLevelRewrite.h"
#include "ScratchFolder.h"
#include "SettingsFixture.h"

#include <QTimer>

/// A properties file of 100 MB: nobody has one, somebody will choose a log file by mistake.
class HugeLogConfig : public QObject
{
    Q_OBJECT

private slots:
    void isRewritten();
    void leavesTheWindowsUsableWhileItIsRetried();
};

namespace {

QByteArray filler()
{
    return QByteArray("2024-01-01 00:00:00,000 INFO [1] [qzsdk] one of very many lines of a log\n")
        .repeated(1400000);
}

} // namespace

void HugeLogConfig::isRewritten()
{
    const QByteArray lines = filler();
    QVERIFY(lines.size() > 100 * 1000 * 1000);
    const QByteArray comment = "\n# in the middle\n";
    SettingsFixture f;
    f.open(lines + "log4cpp.rootCategory = INFO\n" + comment +
           "log4cpp.category.qzsdk = INFO, a_qzsdk\nlast");
    f.radio("radioDEBUG")->click();
    QCOMPARE(hub().logLevel, 1U);
    const QByteArray expected = lines + "log4cpp.rootCategory = DEBUG\n" + comment +
                                "log4cpp.category.qzsdk = DEBUG, a_qzsdk\nlast";
    QVERIFY(unixLines(f.written()) == expected);
}

void HugeLogConfig::leavesTheWindowsUsableWhileItIsRetried()
{
    SettingsFixture f;
    const QString path = f.properties(filler()); // no marker: retried
    f.open();
    int ticks = 0;
    QTimer clock;
    connect(&clock, &QTimer::timeout, &clock, [&] {
        if (++ticks == 100)
            QVERIFY(QFile::remove(path));
    });
    clock.start(10);
    f.radio("radioDEBUG")->click();
    QVERIFY(ticks >= 100);
    QCOMPARE(f.shownLevel(), QStringLiteral("INFO"));
}

QTEST_MAIN(HugeLogConfig)
#include "tst_huge_log_config.moc"
