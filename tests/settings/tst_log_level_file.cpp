#include "LogConfig.h"
#include "LogLevelFile.h"

#include <QTemporaryFile>
#include <QTest>

#include <limits>

/// The text of a properties file: reading and setting its level.
class LogLevelFileText : public QObject
{
    Q_OBJECT

private slots:
    void readsTheLevelOfTheFirstRootLine_data();
    void readsTheLevelOfTheFirstRootLine();
    void writesTheLinesOfEachLevel_data();
    void writesTheLinesOfEachLevel();
    void dropsAnAppenderFromTheRootLine();
    void activatesACommentedRootLine();
    void replacesEveryMatchingLine();
    void treatsALineWithBothMarkersAsARootLine();
    void seesMarkersInTheMiddleOfALine();
    void looksForMarkersInTheirExactSpelling();
    void reportsWhichMarkerIsMissing_data();
    void reportsWhichMarkerIsMissing();
    void keepsTheFinalLineFeedAsItWas_data();
    void keepsTheFinalLineFeedAsItWas();
    void leavesEmptyLinesForALevelOutOfRange_data();
    void leavesEmptyLinesForALevelOutOfRange();
    void keepsBytesOfEveryKind();
    void takesOnlyTheCarriageReturnsOfLineEnds();
    void endsLinesAsThePlatformDoes();
    void handlesEveryTextOfThreePieces();
};

namespace {

struct Text
{
    QByteArray text;
    bool rootReplaced;
    bool categoryReplaced;
};

Text rewritten(const QByteArray &text, int level, std::string_view lineEnd = "\n")
{
    const auto result = LogLevelFile::rewritten(text.toStdString(), level, lineEnd);
    return {QByteArray::fromStdString(result.bytes), result.rootReplaced, result.categoryReplaced};
}

} // namespace

void LogLevelFileText::readsTheLevelOfTheFirstRootLine_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("level"); // -1: none

    QTest::newRow("INFO") << QByteArray("log4cpp.rootCategory = INFO") << 0;
    QTest::newRow("DEBUG") << QByteArray("log4cpp.rootCategory = DEBUG\n") << 1;
    QTest::newRow("FATAL") << QByteArray("log4cpp.rootCategory=FATAL, a\r\n") << 2;
    QTest::newRow("WARN") << QByteArray("log4cpp.rootCategory = WARN\n") << -1;
    QTest::newRow("ERROR") << QByteArray("log4cpp.rootCategory = ERROR, a_root\n") << -1;
    QTest::newRow("lower case") << QByteArray("log4cpp.rootCategory = debug\n") << -1;
    QTest::newRow("DEBUG with an appender whose name contains INFO, on purpose INFO")
        << QByteArray("log4cpp.rootCategory = DEBUG, INFOFILE\n") << 0;
    QTest::newRow("FATAL with an appender whose name contains DEBUG, on purpose DEBUG")
        << QByteArray("log4cpp.rootCategory = FATAL, a_DEBUG\n") << 1;
    QTest::newRow("on a later line")
        << QByteArray("# INFO\n\nlog4cpp.rootCategory = FATAL\nDEBUG\n") << 2;
    QTest::newRow("only the first of two root lines")
        << QByteArray("log4cpp.rootCategory = WARN\nlog4cpp.rootCategory = INFO\n") << -1;
    QTest::newRow("a commented line counts, on purpose")
        << QByteArray("#log4cpp.rootCategory = DEBUG\nlog4cpp.rootCategory = INFO\n") << 1;
    QTest::newRow("a name before the marker")
        << QByteArray("# FATAL or log4cpp.rootCategory\n") << 2;
    QTest::newRow("only a category line")
        << QByteArray("log4cpp.category.qzsdk = DEBUG, a_qzsdk\n") << -1;
    QTest::newRow("nothing") << QByteArray() << -1;
    QTest::newRow("zero bytes around")
        << QByteArrayLiteral("\0\0\nlog4cpp.rootCategory\0DEBUG\0\n") << 1;
}

void LogLevelFileText::readsTheLevelOfTheFirstRootLine()
{
    QFETCH(QByteArray, text);
    QFETCH(int, level);
    QCOMPARE(LogLevelFile::levelNamedIn(text.toStdString()).value_or(-1), level);
}

void LogLevelFileText::writesTheLinesOfEachLevel_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<QByteArray>("expected");

    QTest::newRow("INFO") << 0
                          << QByteArray("a\nlog4cpp.rootCategory = INFO\nb\n"
                                        "log4cpp.category.qzsdk = INFO, a_qzsdk\n\nc\n");
    QTest::newRow("DEBUG") << 1
                           << QByteArray("a\nlog4cpp.rootCategory = DEBUG\nb\n"
                                         "log4cpp.category.qzsdk = DEBUG, a_qzsdk\n\nc\n");
    QTest::newRow("FATAL") << 2
                           << QByteArray("a\nlog4cpp.rootCategory = FATAL\nb\n"
                                         "log4cpp.category.qzsdk = FATAL, a_qzsdk\n\nc\n");
}

void LogLevelFileText::writesTheLinesOfEachLevel()
{
    QFETCH(int, level);
    QFETCH(QByteArray, expected);
    const auto result =
        rewritten("a\nlog4cpp.rootCategory=WARN\nb\nlog4cpp.category.qzsdk=NOTICE\n\nc\n", level);
    QCOMPARE(result.text, expected);
    QVERIFY(result.rootReplaced);
    QVERIFY(result.categoryReplaced);
}

void LogLevelFileText::dropsAnAppenderFromTheRootLine()
{
    QCOMPARE(rewritten("log4cpp.rootCategory = DEBUG, a_root\n", 0).text,
             QByteArray("log4cpp.rootCategory = INFO\n"));
}

void LogLevelFileText::activatesACommentedRootLine()
{
    QCOMPARE(rewritten("# log4cpp.rootCategory = DEBUG\n", 2).text,
             QByteArray("log4cpp.rootCategory = FATAL\n"));
}

void LogLevelFileText::replacesEveryMatchingLine()
{
    const auto result = rewritten("log4cpp.rootCategory = WARN\n"
                                  "log4cpp.category.qzsdk = WARN\n"
                                  "log4cpp.category.qzsdk.net = ERROR, a_net\n"
                                  "#log4cpp.rootCategory = INFO\n",
                                  1);
    QCOMPARE(result.text, QByteArray("log4cpp.rootCategory = DEBUG\n"
                                     "log4cpp.category.qzsdk = DEBUG, a_qzsdk\n"
                                     "log4cpp.category.qzsdk = DEBUG, a_qzsdk\n"
                                     "log4cpp.rootCategory = DEBUG\n"));
}

void LogLevelFileText::treatsALineWithBothMarkersAsARootLine()
{
    const auto result = rewritten("log4cpp.category.qzsdk log4cpp.rootCategory\n", 0);
    QCOMPARE(result.text, QByteArray("log4cpp.rootCategory = INFO\n"));
    QVERIFY(result.rootReplaced);
    QVERIFY(!result.categoryReplaced);
}

void LogLevelFileText::seesMarkersInTheMiddleOfALine()
{
    QCOMPARE(rewritten("x log4cpp.rootCategoryY z\n\tlog4cpp.category.qzsdk2\n", 0).text, infoFile);
}

void LogLevelFileText::looksForMarkersInTheirExactSpelling()
{
    const QByteArray text = "log4cpp.rootcategory = INFO\nlog4cpp.category.QZSDK = INFO\n"
                            "log4cpp.\nrootCategory\nlog4cpp.category.qzsd\n";
    const auto result = rewritten(text, 2);
    QCOMPARE(result.text, text);
    QVERIFY(!result.rootReplaced);
    QVERIFY(!result.categoryReplaced);
}

void LogLevelFileText::reportsWhichMarkerIsMissing_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("root");
    QTest::addColumn<bool>("category");

    QTest::newRow("both there") << infoFile << true << true;
    QTest::newRow("no category line") << QByteArray("log4cpp.rootCategory\n") << true << false;
    QTest::newRow("no root line") << QByteArray("log4cpp.category.qzsdk") << false << true;
    QTest::newRow("neither") << QByteArray("a=b\n") << false << false;
    QTest::newRow("nothing at all") << QByteArray() << false << false;
}

void LogLevelFileText::reportsWhichMarkerIsMissing()
{
    QFETCH(QByteArray, text);
    const auto result = rewritten(text, 1);
    QTEST(result.rootReplaced, "root");
    QTEST(result.categoryReplaced, "category");
}

void LogLevelFileText::keepsTheFinalLineFeedAsItWas_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("expected");

    QTest::newRow("line feed kept") << QByteArray(infoFile + "x\n") << QByteArray(infoFile + "x\n");
    QTest::newRow("none kept") << QByteArray(infoFile + "x") << QByteArray(infoFile + "x");
    QTest::newRow("empty last lines kept")
        << QByteArray(infoFile + "\n\n") << QByteArray(infoFile + "\n\n");
    QTest::newRow("a replaced last line gets one")
        << QByteArray("log4cpp.rootCategory\nlog4cpp.category.qzsdk") << infoFile;
    QTest::newRow("empty stays empty") << QByteArray() << QByteArray();
    QTest::newRow("a lone line feed stays") << QByteArray("\n") << QByteArray("\n");
}

void LogLevelFileText::keepsTheFinalLineFeedAsItWas()
{
    QFETCH(QByteArray, text);
    const auto result = rewritten(text, 0);
    QTEST(result.text, "expected");
}

void LogLevelFileText::leavesEmptyLinesForALevelOutOfRange_data()
{
    QTest::addColumn<int>("level");
    QTest::newRow("above") << 3;
    QTest::newRow("below") << -1;
    QTest::newRow("far above") << std::numeric_limits<int>::max();
    QTest::newRow("far below") << std::numeric_limits<int>::min();
}

void LogLevelFileText::leavesEmptyLinesForALevelOutOfRange()
{
    QFETCH(int, level);
    const auto result = rewritten("a\n" + infoFile + "b", level);
    QCOMPARE(result.text, QByteArray("a\n\n\nb"));
    QVERIFY(result.rootReplaced);
    QVERIFY(result.categoryReplaced);
}

void LogLevelFileText::keepsBytesOfEveryKind()
{
    QByteArray bytes;
    for (int i = 0; i < 1024; ++i)
        bytes.append(char(i * 7 + i / 256));
    const QByteArray text = bytes + '\n' + infoFile + bytes;
    const auto result = rewritten(text, 0);
    QCOMPARE(result.text, text);
    QVERIFY(result.rootReplaced && result.categoryReplaced);
}

void LogLevelFileText::takesOnlyTheCarriageReturnsOfLineEnds()
{
    QCOMPARE(rewritten("a\r\nb\rc\n\r\r\n\r", 0).text, QByteArray("a\nb\rc\n\r\n\r"));
    QCOMPARE(rewritten("a\nb\r\n" + infoFile + "c", 1, "\r\n").text,
             QByteArray("a\r\nb\r\nlog4cpp.rootCategory = DEBUG\r\n"
                        "log4cpp.category.qzsdk = DEBUG, a_qzsdk\r\nc"));
}

void LogLevelFileText::endsLinesAsThePlatformDoes()
{
    QTemporaryFile platform; // writes in text mode what this platform calls text
    QVERIFY(platform.open());
    platform.setTextModeEnabled(true);
    platform.write("\n");
    platform.setTextModeEnabled(false);
    QVERIFY(platform.seek(0));
    QCOMPARE(QByteArray::fromStdString(std::string(LogLevelFile::platformLineEnd())),
             platform.readAll());
}

// Compared with a plain implementation: split, replace, join.
void LogLevelFileText::handlesEveryTextOfThreePieces()
{
    const QList<QByteArray> pieces{
        "",   "\n",       "log4cpp.rootCategory", "log4cpp.category.qzsdk", "x",
        "\r", "log4cpp.", QByteArray(1, '\0')};
    for (const QByteArray &a : pieces) {
        for (const QByteArray &b : pieces) {
            for (const QByteArray &c : pieces) {
                const QByteArray text = a + b + c;
                const QList<QByteArray> lines = QByteArray(text).replace("\r\n", "\n").split('\n');
                QByteArray expected;
                for (int i = 0; i < lines.size(); ++i) {
                    if (lines[i].contains("log4cpp.rootCategory"))
                        expected += "log4cpp.rootCategory = FATAL\n";
                    else if (lines[i].contains("log4cpp.category.qzsdk"))
                        expected += "log4cpp.category.qzsdk = FATAL, a_qzsdk\n";
                    else
                        expected += lines[i] + (i + 1 < lines.size() ? "\n" : "");
                }
                QCOMPARE(rewritten(text, 2).text, expected);
            }
        }
    }
}

QTEST_APPLESS_MAIN(LogLevelFileText)
#include "tst_log_level_file.moc"
