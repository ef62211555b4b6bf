#include "LogConfig.h"
#include "Machine.h"
#include "MemoryStatus.h"
#include "ScratchFolder.h"
#include "SettingsFixture.h"

#include <QTimer>

/// A properties file of 100 MB or more, such as a log file chosen by mistake.
class HugeLogConfig : public QObject
{
    Q_OBJECT

private slots:
    void isRewritten();
    void isReadAndRewrittenBeyondTwoGibibytes();
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

void HugeLogConfig::isReadAndRewrittenBeyondTwoGibibytes()
{
    constexpr qint64 gibibyte = 1024LL * 1024 * 1024;
    if (isSanitized() || memoryStatus().value_or(MemoryStatus()).available < quint64(6 * gibibyte))
        QSKIP("not enough memory for the file and its rewritten copy");
    SettingsFixture f;
    const QString path = f.scratch.sparseFile(SettingsFixture::defaultName(), 2 * gibibyte);
    const QByteArray atEnd = "\nlog4cpp.rootCategory = DEBUG\nlog4cpp.category.qzsdk\n";
    QFile file(path);
    QVERIFY(file.open(QIODevice::Append) && file.write(atEnd) == atEnd.size());
    file.close();
    f.open();
    QCOMPARE(f.shownLevel(), "DEBUG");
    f.radio("radioFATAL")->click();
    QCOMPARE(hub().logLevel, 2U);
    QVERIFY(file.open(QIODevice::ReadOnly) && file.seek(2 * gibibyte));
    QCOMPARE(unixLines(file.readAll()), '\n' + fatalFile);
}

void HugeLogConfig::leavesTheWindowsUsableWhileItIsRetried()
{
    SettingsFixture f;
    const QString path = f.properties(filler()); // without level lines, so it is retried
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
    QCOMPARE(f.shownLevel(), "INFO");
}

QTEST_MAIN(HugeLogConfig)
#include "tst_huge_log_config.moc"
