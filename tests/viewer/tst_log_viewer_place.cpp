#include "ViewerFixture.h"

#include <QScrollBar>

/// Reloading the log keeps the line that the user is looking at.
class LogViewerPlace : public QObject
{
    Q_OBJECT

private slots:
    void leadsFromAHitToItsPlaceInTheLog();
    void leadsToALineWrittenSinceTheLogWasRead();
    void leadsToTheSameOneOfEqualLines_data();
    void leadsToTheSameOneOfEqualLines();
    void takesTheFirstHitInSightWhereNoneIsCurrent();
    void takesTheFirstHitInSightForACurrentRowWithoutALine();
    void findsALongLineFromEachOfItsPieces_data();
    void findsALongLineFromEachOfItsPieces();
    void findsALineWithAZeroByteAndTheNextOne_data();
    void findsALineWithAZeroByteAndTheNextOne();
    void showsTheNextLineInPlaceOfAHiddenOne();
    void startsAtTheTopAfterASearchWithoutMatches();
    void startsAtTheTopWhenTheLineIsGone();
    void keepsItsPlaceWhenTheLogIsReloaded();
    void staysAtTheTopOfATruncatedLog();
    void staysAtTheEndOfAShortenedLog();
};

namespace {

constexpr int manyLines = 1000;

/// Every tenth line is an error.
QByteArrayList someErrors()
{
    QByteArrayList lines;
    for (int i = 0; i < manyLines; ++i)
        lines.append(logLine(i % 10 == 3 ? "ERROR" : "INFO", QByteArray::number(i)));
    return lines;
}

bool isInSight(const QTableWidget &table, int row)
{
    const int y = table.rowViewportPosition(row);
    return y >= 0 && y + table.rowHeight(row) <= table.viewport()->height() &&
           table.rowAt(y + 1) == row;
}

/// Whether the keyboard cursor is on the first row without selecting it, and the row is in sight.
bool startsAtTheTop(const QTableWidget &table)
{
    return table.currentRow() == 0 && table.selectedItems().isEmpty() && isInSight(table, 0);
}

/// A search that returns these lines in pieces of 511 bytes, each up to its first zero byte.
LineSearch finding(const QByteArrayList &lines)
{
    return
        [lines](const std::string &, const QString &, const PieceSink &sink, const SearchStop &) {
            for (const QByteArray &line : lines) {
                const QByteArray whole = line + '\n';
                for (int from = 0; from < whole.size(); from += 511)
                    sink(whole.mid(from, 511).constData());
            }
            return true;
        };
}

} // namespace

void LogViewerPlace::leadsFromAHitToItsPlaceInTheLog()
{
    ViewerFixture f;
    QVERIFY(f.openLines(someErrors()));
    QVERIFY(f.activate());
    f.pressEnter("ERROR");
    QCOMPARE(f.filledRows(), manyLines / 10);
    f.table().scrollToItem(f.table().item(50, 0));
    QTest::mouseClick(f.table().viewport(), Qt::LeftButton, {},
                      f.table().visualItemRect(f.table().item(50, 3)).center());
    f.pressEnter(QString());
    QCOMPARE(f.filledRows(), manyLines);
    QCOMPARE(f.table().currentRow(), 503);
    QVERIFY(f.table().item(503, 3)->isSelected());
    QCOMPARE(f.table().selectedItems().size(), 4);
    QVERIFY(isInSight(f.table(), 503));
    QVERIFY2(isInSight(f.table(), 500) && isInSight(f.table(), 506), "no context");
    QCoreApplication::processEvents(); // updates the table's layout
    QVERIFY(isInSight(f.table(), 503));
}

void LogViewerPlace::leadsToALineWrittenSinceTheLogWasRead()
{
    const QByteArrayList lines = someErrors();
    ViewerFixture f(finding({lines.at(703)}));
    const QString path = f.folder.file("a.log", lines.mid(0, 20).join('\n') + '\n');
    QVERIFY(f.open(path));
    QVERIFY(f.activate());
    f.folder.file("a.log", lines.join('\n') + '\n');
    f.search("x");
    f.table().setCurrentCell(0, 3);
    f.pressEnter(QString());
    QCOMPARE(f.table().currentRow(), 703);
    QVERIFY(isInSight(f.table(), 703));
}

void LogViewerPlace::leadsToTheSameOneOfEqualLines_data()
{
    QTest::addColumn<int>("hit");
    QTest::newRow("first") << 0;
    QTest::newRow("second") << 1;
    QTest::newRow("last") << 2;
}

void LogViewerPlace::leadsToTheSameOneOfEqualLines()
{
    QFETCH(int, hit);
    QByteArrayList lines = someErrors();
    for (const int row : {100, 400, 900})
        lines[row] = "again";
    ViewerFixture f(finding({"again", "again", "again"}));
    QVERIFY(f.openLines(lines));
    QVERIFY(f.activate());
    f.search("again");
    f.table().setCurrentCell(hit, 3);
    f.pressEnter(QString());
    QCOMPARE(f.table().currentRow(), QList<int>({100, 400, 900}).at(hit));
    QVERIFY(isInSight(f.table(), f.table().currentRow()));
}

void LogViewerPlace::takesTheFirstHitInSightWhereNoneIsCurrent()
{
    const QByteArrayList lines = someErrors();
    ViewerFixture f(finding(lines.mid(200, 300)));
    QVERIFY(f.openLines(lines));
    QVERIFY(f.activate());
    f.search("x");
    QCOMPARE(f.table().currentRow(), -1);
    f.table().verticalScrollBar()->setValue(40);
    f.pressEnter(QString());
    QCOMPARE(f.table().currentRow(), 240);
    QVERIFY(isInSight(f.table(), 240));
}

void LogViewerPlace::takesTheFirstHitInSightForACurrentRowWithoutALine()
{
    const QByteArrayList lines = someErrors();
    ViewerFixture f(finding(lines.mid(200, 2)));
    QVERIFY(f.openLines(lines));
    QVERIFY(f.activate());
    f.search("x");
    f.table().setCurrentCell(5, 0);
    f.pressEnter(QString());
    QCOMPARE(f.table().currentRow(), 200);
}

void LogViewerPlace::findsALongLineFromEachOfItsPieces_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("pieces");
    QTest::newRow("English") << logLine("ERROR", QByteArray(1200, 'x')) << 3;
    QTest::newRow("Chinese") << logLine("ERROR", QByteArray("相机").repeated(200)) << 3;
    const QByteArray head = logLine("ERROR", "");
    QTest::newRow("a line feed alone in its piece")
        << head + QByteArray(511 - head.size(), 'x') << 2;
    const QByteArray mark = "\xef\xbb\xbf";
    QTest::newRow("English after a byte order mark") << mark + head + QByteArray(1200, 'x') << 3;
    QTest::newRow("Chinese after a byte order mark")
        << mark + head + QByteArray("相机").repeated(200) << 3;
    QTest::newRow("a zero byte in the last piece")
        << head + QByteArray(600, 'x') + '\0' + QByteArray(200, 'x') << 2;
}

void LogViewerPlace::findsALongLineFromEachOfItsPieces()
{
    QFETCH(QByteArray, line);
    QFETCH(int, pieces);
    QByteArrayList lines = someErrors();
    lines[300] = line;
    lines[600] = line;
    ViewerFixture f(finding({lines.at(3), line, line, lines.at(903)}));
    QVERIFY(f.openLines(lines));
    QVERIFY(f.activate());
    for (int piece = 0; piece < pieces; ++piece) {
        f.search("x");
        QCOMPARE(f.filledRows(), 2 + 2 * pieces);
        f.table().setCurrentCell(1 + pieces + piece, 3);
        f.pressEnter(QString());
        QCOMPARE(f.table().currentRow(), 600);
    }
}

void LogViewerPlace::findsALineWithAZeroByteAndTheNextOne_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("short") << QByteArray("x\0y", 3);
    QTest::newRow("at its start") << QByteArray("\0x", 2);
    QTest::newRow("at the end of a piece") << QByteArray(509, 'x') + '\0';
    QTest::newRow("after invalid UTF-8") << QByteArray(300, '\xff') + '\0';
}

void LogViewerPlace::findsALineWithAZeroByteAndTheNextOne()
{
    QFETCH(QByteArray, line);
    const QByteArrayList lines{line, "x z", "x", line, "x"};
    ViewerFixture f(finding(lines));
    QVERIFY(f.openLines(QByteArrayList{"first"} + lines));
    QVERIFY(f.activate());
    for (int hit = 0; hit < lines.size(); ++hit) {
        f.search("x");
        f.table().setCurrentCell(hit, 3);
        f.pressEnter(QString());
        QCOMPARE(f.table().currentRow(), 1 + hit);
    }
}

void LogViewerPlace::showsTheNextLineInPlaceOfAHiddenOne()
{
    const QByteArrayList lines = someErrors();
    ViewerFixture f(finding({lines.at(503)}));
    QVERIFY(f.openLines(lines));
    QVERIFY(f.activate());
    f.find<QCheckBox>("checkBoxERROR")->click();
    f.search("x");
    f.table().setCurrentCell(0, 3);
    f.pressEnter(QString());
    QCOMPARE(f.table().currentRow(), 503);
    QVERIFY(isInSight(f.table(), 504));
}

void LogViewerPlace::startsAtTheTopAfterASearchWithoutMatches()
{
    ViewerFixture f(finding({}));
    QVERIFY(f.openLines(someErrors()));
    QVERIFY(f.activate());
    f.table().scrollToBottom();
    f.search("x");
    f.pressEnter(QString());
    QVERIFY(startsAtTheTop(f.table()));
}

void LogViewerPlace::startsAtTheTopWhenTheLineIsGone()
{
    ViewerFixture f(finding({"gone"}));
    QVERIFY(f.openLines(someErrors()));
    QVERIFY(f.activate());
    f.search("x");
    f.table().setCurrentCell(0, 3);
    f.pressEnter(QString());
    QVERIFY(startsAtTheTop(f.table()));
}

void LogViewerPlace::keepsItsPlaceWhenTheLogIsReloaded()
{
    ViewerFixture f;
    const QByteArray text = someErrors().join('\n') + '\n';
    QVERIFY(f.open(f.folder.file("a.log", text)));
    QVERIFY(f.activate());
    f.find<QCheckBox>("checkBoxERROR")->click();
    f.table().setCurrentCell(711, 3);
    f.table().verticalScrollBar()->setValue(f.table().verticalScrollBar()->maximum());
    const int top = f.table().rowAt(0);
    f.folder.file("a.log", text + text);
    QTest::keyClick(&f.table(), Qt::Key_F5);
    QCOMPARE(f.filledRows(), 2 * manyLines);
    QCOMPARE(f.table().currentRow(), 711);
    QCOMPARE(f.table().rowAt(0), top);
    QCoreApplication::processEvents(); // updates the table's layout
    QCOMPARE(f.table().rowAt(0), top);
}

void LogViewerPlace::staysAtTheTopOfATruncatedLog()
{
    ViewerFixture f;
    QVERIFY(f.open(f.folder.file("a.log", someErrors().join('\n') + '\n')));
    QVERIFY(f.activate());
    f.table().setCurrentCell(900, 3);
    f.folder.file("a.log", "one\n");
    QTest::keyClick(&f.table(), Qt::Key_F5);
    QCOMPARE(f.table().rowCount(), 6);
    QVERIFY(startsAtTheTop(f.table()));
}

void LogViewerPlace::staysAtTheEndOfAShortenedLog()
{
    ViewerFixture f;
    const QByteArrayList lines = someErrors();
    QVERIFY(f.open(f.folder.file("a.log", lines.join('\n') + '\n')));
    QVERIFY(f.activate());
    f.table().setCurrentCell(900, 3);
    f.folder.file("a.log", lines.mid(0, 500).join('\n') + '\n');
    QTest::keyClick(&f.table(), Qt::Key_F5);
    QCOMPARE(f.table().currentRow(), 0);
    QCoreApplication::processEvents(); // updates the table's layout
    QVERIFY(isInSight(f.table(), 499));
}

QTEST_MAIN(LogViewerPlace)
#include "tst_log_viewer_place.moc"
