#include "LogLine.h"
#include "StreamedLine.h"

#include <QTest>

#include <random>
#include <string>
#include <vector>

namespace {

std::string randomLine(std::mt19937 &random)
{
    static const std::vector<std::string> pieces = {
        "2024-03-02", "12:00:00.250", "INFO",  "DEBUG", "WARN", "ERROR", "FATAL",
        "info",       "INFOX",        " ",     " ",     " ",    " ",     "[",
        "]",          "[7]",          "[src]", "\t",    "\n",   "\r",    "\v",
        "\f",         "text",         "\xc3"};
    // Mostly valid beginnings, because other lines are rejected at the third word.
    std::string line = random() % 4 != 0 ? "d t INFO " : "";
    const auto count = random() % 10;
    for (unsigned i = 0; i < count; ++i)
        line += pieces[random() % pieces.size()];
    return line;
}

} // namespace

class LogLineTest : public QObject
{
    Q_OBJECT

private slots:
    void splitsAUsualLineIntoItsFields();
    void tellsStructuredLinesFromOthers_data();
    void tellsStructuredLinesFromOthers();
    void leavesMissingFieldsEmpty_data();
    void leavesMissingFieldsEmpty();
    void takesAnyCharacterForABracketAndSkipsWhiteSpaceBeforeIt();
    void leavesTheLineFeedOutOfTheMessageOnly();
    void splitsGeneratedLinesAsAStreamDoes();
};

void LogLineTest::splitsAUsualLineIntoItsFields()
{
    const LogLine line =
        splitLogLine("2024-03-02 12:00:00.250 INFO [00123] [CameraClient] frame received");
    QVERIFY(line.structured);
    QVERIFY(line.timestamp == "2024-03-02 12:00:00.250");
    QVERIFY(line.level == "INFO");
    QVERIFY(line.source == "CameraClient");
    QVERIFY(line.message == " frame received");
}

void LogLineTest::tellsStructuredLinesFromOthers_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<bool>("structured");

    for (const char *level : {"INFO", "DEBUG", "WARN", "ERROR", "FATAL"})
        QTest::newRow(level) << QByteArray("d t ") + level + " [1] [s] m" << true;
    QTest::newRow("lower case") << QByteArray("d t info [1] [s] m") << false;
    QTest::newRow("longer word") << QByteArray("d t INFOS [1] [s] m") << false;
    QTest::newRow("unknown level") << QByteArray("d t TRACE [1] [s] m") << false;
    QTest::newRow("leading blank") << QByteArray(" d t INFO [1] [s] m") << false;
    QTest::newRow("two blanks before the time") << QByteArray("d  t INFO [1] [s] m") << false;
    QTest::newRow("two blanks before the level") << QByteArray("d t  INFO [1] [s] m") << false;
    QTest::newRow("tabs") << QByteArray("d\tt\tINFO\t[1] [s] m") << false;
    QTest::newRow("level too early") << QByteArray("d INFO [1] [s] m") << false;
    QTest::newRow("nothing behind the level") << QByteArray("d t INFO") << true;
    QTest::newRow("line feed at the level") << QByteArray("d t INFO\n") << false;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("blanks") << QByteArray("      ") << false;
}

void LogLineTest::tellsStructuredLinesFromOthers()
{
    QFETCH(QByteArray, line);
    QTEST(splitLogLine(line.toStdString()).structured, "structured");
}

void LogLineTest::leavesMissingFieldsEmpty_data()
{
    QTest::addColumn<QByteArray>("rest");
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QByteArray>("message");

    QTest::newRow("no brackets") << QByteArray("hello world") << QByteArray() << QByteArray();
    QTest::newRow("one field") << QByteArray("[1]") << QByteArray() << QByteArray();
    QTest::newRow("one field and a text")
        << QByteArray("[1] text") << QByteArray("ext") << QByteArray();
    QTest::newRow("source unfinished")
        << QByteArray("[1] [src") << QByteArray("src") << QByteArray();
    QTest::newRow("no message") << QByteArray("[1] [src]") << QByteArray("src") << QByteArray();
    QTest::newRow("empty fields") << QByteArray("[] [] m") << QByteArray() << QByteArray(" m");
}

void LogLineTest::leavesMissingFieldsEmpty()
{
    QFETCH(QByteArray, rest);
    const std::string text = "d t INFO " + rest.toStdString();
    const LogLine line = splitLogLine(text);
    QVERIFY(line.structured);
    QTEST(QByteArray(line.source.data(), int(line.source.size())), "source");
    QTEST(QByteArray(line.message.data(), int(line.message.size())), "message");
}

void LogLineTest::takesAnyCharacterForABracketAndSkipsWhiteSpaceBeforeIt()
{
    const LogLine line = splitLogLine("d t INFO \t (1] \v\f (src]message] more");
    QVERIFY(line.source == "src");
    QVERIFY(line.message == "message] more");
}

void LogLineTest::leavesTheLineFeedOutOfTheMessageOnly()
{
    QVERIFY(splitLogLine("d t INFO [1] [s] m\n").message == " m");
    QVERIFY(splitLogLine("d t INFO [1] [s\n").source == "s\n");
}

void LogLineTest::splitsGeneratedLinesAsAStreamDoes()
{
    std::mt19937 random(311);
    int structured = 0;
    for (int i = 0; i < 20'000; ++i) {
        const std::string text = randomLine(random);
        const StreamedLine expected = readAsStream(text);
        const LogLine line = splitLogLine(text);
        const bool same = line.structured == expected.structured &&
                          line.timestamp == expected.timestamp && line.level == expected.level &&
                          line.source == expected.source && line.message == expected.message;
        QVERIFY2(same, QByteArray::fromStdString(text).toPercentEncoding(" []").constData());
        structured += line.structured ? 1 : 0;
    }
    QVERIFY(structured > 10'000);
}

QTEST_APPLESS_MAIN(LogLineTest)
#include "tst_log_line.moc"
