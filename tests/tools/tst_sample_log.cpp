#include "SampleLog.h"
#include "SampleRandom.h"

#include <QRegularExpression>
#include <QTest>

class SampleLogTest : public QObject
{
    Q_OBJECT

private slots:
    void isTheSameForTheSameSeed();
    void hasTheNumberOfLinesThatWasAskedFor_data();
    void hasTheNumberOfLinesThatWasAskedFor();
    void hasAllFiveLevelsAndSeveralSources();
    void hasLinesWithoutTheUsualShape();
    void hasTimesThatRiseAndStayBeforeTheEnd();
    void isValidUtf8();
};

namespace {

const QDateTime end(QDate(2025, 3, 14), QTime(1, 30), Qt::UTC);

QByteArray log(int lines, quint32 seed = 7)
{
    SampleRandom random(seed);
    return sampleLog("QZviewer", end, lines, random);
}

QRegularExpression usualShape()
{
    return QRegularExpression(
        R"(^(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d,\d{3}) (INFO|DEBUG|WARN|ERROR|FATAL) )"
        R"(\[\d+\] \[([a-z.]+)\] .+$)");
}

} // namespace

void SampleLogTest::isTheSameForTheSameSeed()
{
    QCOMPARE(log(500), log(500));
    QVERIFY(log(500) != log(500, 8));
}

void SampleLogTest::hasTheNumberOfLinesThatWasAskedFor_data()
{
    QTest::addColumn<int>("lines");
    for (int lines : {1, 2, 3, 100, 4321})
        QTest::addRow("%d", lines) << lines;
}

void SampleLogTest::hasTheNumberOfLinesThatWasAskedFor()
{
    QFETCH(int, lines);
    const QByteArray text = log(lines);
    QCOMPARE(text.count('\n'), lines);
    QVERIFY(text.endsWith('\n'));
}

void SampleLogTest::hasAllFiveLevelsAndSeveralSources()
{
    QSet<QString> levels;
    QSet<QString> sources;
    auto matches = QRegularExpression(usualShape().pattern(), QRegularExpression::MultilineOption)
                       .globalMatch(QString::fromUtf8(log(5000)));
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        levels.insert(match.captured(2));
        sources.insert(match.captured(3));
    }
    QCOMPARE(levels.size(), 5);
    QVERIFY2(sources.size() >= 4, qPrintable(QString::number(sources.size())));
}

void SampleLogTest::hasLinesWithoutTheUsualShape()
{
    const QRegularExpression shape = usualShape();
    int usual = 0;
    int traces = 0;
    int others = 0;
    const QStringList lines = QString::fromUtf8(log(5000)).split('\n');
    for (const QString &line : lines) {
        if (shape.match(line).hasMatch())
            ++usual;
        else if (line.startsWith("    #"))
            ++traces;
        else
            ++others;
    }
    QVERIFY2(usual > 4000, qPrintable(QString::number(usual)));
    QVERIFY2(traces > 10, qPrintable(QString::number(traces)));
    QVERIFY2(others > 10, qPrintable(QString::number(others)));
}

void SampleLogTest::hasTimesThatRiseAndStayBeforeTheEnd()
{
    QString last = end.addMSecs(-sampleLogSpan).toString("yyyy-MM-dd HH:mm:ss,zzz");
    auto matches = QRegularExpression(usualShape().pattern(), QRegularExpression::MultilineOption)
                       .globalMatch(QString::fromUtf8(log(2000)));
    QVERIFY(matches.hasNext());
    while (matches.hasNext()) {
        const QString time = matches.next().captured(1);
        QVERIFY2(time >= last, qPrintable(time + " after " + last));
        last = time;
    }
    QVERIFY(last < end.toString("yyyy-MM-dd HH:mm:ss,zzz"));
}

void SampleLogTest::isValidUtf8()
{
    const QByteArray text = log(3000);
    QVERIFY(text.contains("\xe7\x9b\xb8\xe6\x9c\xba")); // "camera" in Chinese
    QCOMPARE(QString::fromUtf8(text).toUtf8(), text);
}

QTEST_GUILESS_MAIN(SampleLogTest)
#include "tst_sample_log.moc"
