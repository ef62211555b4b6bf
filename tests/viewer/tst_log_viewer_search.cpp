#include "ViewerFixture.h"

namespace {

/// A search that records its arguments and returns fixed pieces.
struct FakeSearch
{
    struct Call
    {
        std::string keyword;
        QString path;
    };

    LineSearch lineSearch()
    {
        return [this](const std::string &keyword, const QString &path, const PieceSink &sink,
                      const SearchStop & /*stop*/) {
            calls.append({keyword, path});
            for (const QByteArray &piece : qAsConst(pieces))
                sink(piece.constData());
            return starts;
        };
    }

    QList<Call> calls;
    QByteArrayList pieces;
    bool starts = true;
};

/// A viewer with this search.
struct Fixture : FakeSearch, ViewerFixture
{
    explicit Fixture(const QByteArrayList &found = {})
        : ViewerFixture(lineSearch())
    {
        pieces = found;
    }
};

} // namespace

class LogViewerSearch : public QObject
{
    Q_OBJECT

private slots:
    void doesNothingWithAnEmptyField();
    void enterOnAnEmptyFieldRightAfterStartDoesNothing();
    void searchesForTheKeywordAsTypedInTheShownFile();
    void showsTheLinesFoundFromTheFirstRowOn();
    void showsTheFirstLineFoundWhereverTheTableWasScrolled();
    void leavesTheRowCountAsItIs();
    void showsNoRowsBeyondTheTable();
    void leavesAnEmptyTableWithoutMatches();
    void printsWhenTheSearchCannotBeRun();
    void keepsTheLineFeedOfALineFoundInItsToolTip();
    void ignoresALevelDirectlyBeforeTheLineFeed();
    void keepsRowsHiddenThatWereHiddenBefore();
    void enterSearchesToo();
    void enterOnAnEmptyFieldAfterASearchReloadsTheFile();
    void enterOnAnEmptyFieldReloadsEveryTime();
    void enterOnAnEmptyFieldReloadsAfterTheWindowWasClosed();
    void enterOnAnEmptyFieldReloadsAnotherFileOpenedAfterASearch();
    void reloadPrintsWhenTheFileIsGone();
    void findsLinesByTheSystemsOwnSearch();
    void showsALongLineInPiecesOf511Bytes();
    void findsTheLastLineWithoutALineFeed();
    void survivesHostileKeywords_data();
    void survivesHostileKeywords();
};

void LogViewerSearch::doesNothingWithAnEmptyField()
{
    Fixture f;
    QVERIFY(f.openLines({"one"}));
    f.search(QString());
    QVERIFY(f.calls.isEmpty());
    QCOMPARE(f.filledRows(), 1);
}

void LogViewerSearch::enterOnAnEmptyFieldRightAfterStartDoesNothing()
{
    Fixture f;
    f.pressEnter(QString());
    QVERIFY(f.calls.isEmpty());
    QVERIFY(f.output.lines().isEmpty());
    QCOMPARE(f.table().rowCount(), 100'000);
    const QString path = f.folder.file("a.log", "one\n");
    QVERIFY(f.open(path));
    f.folder.file("a.log", "two\n");
    f.pressEnter(QString());
    QCOMPARE(f.text(0, 3), "one");
}

void LogViewerSearch::searchesForTheKeywordAsTypedInTheShownFile()
{
    Fixture f;
    const QString path = f.folder.file("a.log", "one\n");
    QVERIFY(f.open(path));
    const QString keyword = " say \"hi\" \\ [ä.* ";
    f.search(keyword);
    QCOMPARE(f.calls.size(), 1);
    QCOMPARE(f.calls.first().keyword, keyword.toStdString());
    QCOMPARE(f.calls.first().path, path);
}

void LogViewerSearch::showsTheLinesFoundFromTheFirstRowOn()
{
    Fixture f({logLine("ERROR", "first") + '\n', "unstructured\n"});
    QVERIFY(f.openLines({"one", "two", "three"}));
    f.search("x");
    QCOMPARE(f.filledRows(), 2);
    QCOMPARE(f.text(0, 1), "ERROR");
    QCOMPARE(f.text(0, 3), " first");
    QCOMPARE(f.row(1), messageOnly("unstructured\n"));
}

void LogViewerSearch::showsTheFirstLineFoundWhereverTheTableWasScrolled()
{
    Fixture f({"found\n"});
    QVERIFY(f.open(f.folder.file("a.log", QByteArray("x\n").repeated(1000))));
    f.viewer.show();
    f.table().scrollToBottom();
    QVERIFY(f.table().rowAt(0) > 0);
    f.search("x");
    QCOMPARE(f.table().rowAt(0), 0);
}

void LogViewerSearch::leavesTheRowCountAsItIs()
{
    Fixture f({"a\n"});
    QVERIFY(f.openLines({"one", "two", "three"}));
    f.search("x");
    QCOMPARE(f.table().rowCount(), 8);
}

void LogViewerSearch::showsNoRowsBeyondTheTable()
{
    Fixture f({"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"});
    QVERIFY(f.openLines({"one"}));
    f.search("x");
    QCOMPARE(f.table().rowCount(), 6);
    QCOMPARE(f.filledRows(), 6);
    QCOMPARE(f.text(5, 3), "5");
}

void LogViewerSearch::leavesAnEmptyTableWithoutMatches()
{
    Fixture f;
    QVERIFY(f.openLines({"one"}));
    f.output.take();
    f.search("x");
    QCOMPARE(f.filledRows(), 0);
    QVERIFY(f.output.lines().isEmpty());
}

void LogViewerSearch::printsWhenTheSearchCannotBeRun()
{
    Fixture f;
    f.starts = false;
    QVERIFY(f.openLines({"one"}));
    f.output.take();
    f.search("x");
    QCOMPARE(f.output.lines(), QStringList{"Failed to execute findstr command."});
    QCOMPARE(f.filledRows(), 0);
}

void LogViewerSearch::keepsTheLineFeedOfALineFoundInItsToolTip()
{
    Fixture f({logLine("INFO") + '\n'});
    QVERIFY(f.openLines({"one"}));
    f.search("x");
    QCOMPARE(f.tip(0, 0), QString::fromLatin1(logLine("INFO") + '\n'));
    QCOMPARE(f.text(0, 3), " frame received");
}

void LogViewerSearch::ignoresALevelDirectlyBeforeTheLineFeed()
{
    Fixture f({"d t INFO\n", "d t INFO"});
    QVERIFY(f.openLines({"one"}));
    f.search("x");
    QCOMPARE(f.row(0), messageOnly("d t INFO\n"));
    QCOMPARE(f.text(1, 1), "INFO");
}

void LogViewerSearch::keepsRowsHiddenThatWereHiddenBefore()
{
    Fixture f({"a\n", "b\n", "c\n"});
    QVERIFY(f.openLines({logLine("INFO"), logLine("WARN")}));
    f.find<QCheckBox>("checkBoxWARN")->click();
    f.search("x");
    QCOMPARE(f.hiddenRows(), QList<int>{1});
}

void LogViewerSearch::enterSearchesToo()
{
    Fixture f({"found\n"});
    QVERIFY(f.openLines({"one"}));
    f.pressEnter("key");
    QCOMPARE(f.calls.size(), 1);
    QCOMPARE(f.calls.first().keyword, std::string("key"));
    QCOMPARE(f.text(0, 3), "found\n");
}

void LogViewerSearch::enterOnAnEmptyFieldAfterASearchReloadsTheFile()
{
    Fixture f;
    const QString path = f.folder.file("a.log", "one\n");
    QVERIFY(f.open(path));
    f.search("x");
    QCOMPARE(f.filledRows(), 0);
    f.folder.file("a.log", "one\ntwo\nunfinished");
    f.output.take();
    f.pressEnter(QString());
    QCOMPARE(f.filledRows(), 2);
    QCOMPARE(f.table().rowCount(), 7);
    QVERIFY2(f.output.lines().isEmpty(), "the count is written by opening a file only");
    QCOMPARE(f.calls.size(), 1);
}

void LogViewerSearch::enterOnAnEmptyFieldReloadsEveryTime()
{
    Fixture f;
    const QString path = f.folder.file("a.log", "one\n");
    QVERIFY(f.open(path));
    f.search("x");
    for (const char *contents : {"two\n", "three\n"}) {
        f.folder.file("a.log", contents);
        f.pressEnter(QString());
        QCOMPARE(f.text(0, 3) + '\n', QString::fromLatin1(contents));
    }
}

void LogViewerSearch::enterOnAnEmptyFieldReloadsAfterTheWindowWasClosed()
{
    Fixture f;
    const QString path = f.folder.file("a.log", "one\n");
    QVERIFY(f.open(path));
    QVERIFY(f.show());
    f.search("x");
    QVERIFY(f.viewer.close());
    f.folder.file("a.log", "two\n");
    QVERIFY(f.show());
    f.pressEnter(QString());
    QCOMPARE(f.text(0, 3), "two");
}

void LogViewerSearch::enterOnAnEmptyFieldReloadsAnotherFileOpenedAfterASearch()
{
    Fixture f;
    QVERIFY(f.openLines({"one"}));
    f.search("x");
    const QString path = f.folder.file("b.log", "two\n");
    QVERIFY(f.open(path));
    f.folder.file("b.log", "three\n");
    f.pressEnter(QString());
    QCOMPARE(f.text(0, 3), "three");
}

void LogViewerSearch::reloadPrintsWhenTheFileIsGone()
{
    Fixture f;
    const QString path = f.folder.file("a.log", "one\n");
    QVERIFY(f.open(path));
    f.search("x");
    QVERIFY(QFile::remove(path));
    f.output.take();
    f.pressEnter(QString());
    QCOMPARE(f.output.lines(), QStringList{"Failed to open file."});
    QCOMPARE(f.table().rowCount(), 100'000);
}

void LogViewerSearch::findsLinesByTheSystemsOwnSearch()
{
    ViewerFixture f;
    QVERIFY(f.openData("every_level.log"));
    f.search("WARN ERROR");
    QCOMPARE(f.filledRows(), 2);
    QCOMPARE(f.text(0, 1), "WARN");
    QCOMPARE(f.text(1, 1), "ERROR");
    f.search("^2024.*FATAL.*frame.received$");
    QCOMPARE(f.filledRows(), 1);
    QCOMPARE(f.text(0, 1), "FATAL");
}

void LogViewerSearch::showsALongLineInPiecesOf511Bytes()
{
    ViewerFixture f;
    const QByteArray line = logLine("INFO", QByteArray(1000, 'x'));
    QVERIFY(f.openLines({line, "y"}));
    f.search("xxx");
    QCOMPARE(f.filledRows(), 3);
    QCOMPARE(f.tip(0, 0).toLatin1(), line.left(511));
    QCOMPARE(f.row(1), messageOnly(QString::fromLatin1(line.mid(511, 511))));
    QCOMPARE(f.text(2, 3).toLatin1(), line.mid(1022) + '\n');
}

void LogViewerSearch::findsTheLastLineWithoutALineFeed()
{
    ViewerFixture f;
    QVERIFY(f.openData("last_line_without_line_feed.log"));
    f.search("12:00:02");
    QCOMPARE(f.filledRows(), 1);
    QVERIFY(!f.tip(0, 0).endsWith('\n'));
}

void LogViewerSearch::survivesHostileKeywords_data()
{
    QTest::addColumn<QString>("keyword");

    QTest::newRow("unterminated class") << "[abc";
    QTest::newRow("empty class") << "[]";
    QTest::newRow("only blanks") << "   ";
    QTest::newRow("10,000 characters") << QString("a*b[c-d]$.").repeated(1000);
    QTest::newRow("a quote") << "\"";
    QTest::newRow("shell words") << "\"; rm -rf * #`id`$(id)|&";
}

void LogViewerSearch::survivesHostileKeywords()
{
    QFETCH(QString, keyword);
    ViewerFixture f;
    QVERIFY(f.openData("every_level.log"));
    f.search(keyword);
    QCOMPARE(f.filledRows(), 0);
    QVERIFY(!f.output.contains("Failed to execute findstr command."));
}

QTEST_MAIN(LogViewerSearch)
#include "tst_log_viewer_search.moc"
