#include "DebugCapture.h"
#include "Diagnostics.h"
#include "Faults.h"
#include "LineSearch.h"
#include "ScratchFolder.h"

#include <QProcess>
#include <QTest>

class LineSearchTest : public QObject
{
    Q_OBJECT

private slots:
    void understandsFindstrsExpressions_data();
    void understandsFindstrsExpressions();
    void acceptsEveryLineEnd();
    void printsAMatchingLineOnce();
    void searchesTheLastLineWithoutALineFeed();
    void returnsLinesInPiecesOf511Bytes_data();
    void returnsLinesInPiecesOf511Bytes();
    void findsLinesOfTenMegabytes();
    void keepsZeroBytesInTheFileFromHidingWhatFollows();
    void failsWhenTheFileCannotBeSearched();
    void cannotSearchWithoutPermission();
    void endsWhereAFileWasTruncatedMeanwhile();
    void endsWhenItIsStopped();
    void logsWhenReadingFails();
    void matchesNothingWithoutAnExpression();

private:
    QByteArrayList search(const QByteArray &keyword, const QByteArray &contents);

    ScratchFolder scratch;
};

QByteArrayList LineSearchTest::search(const QByteArray &keyword, const QByteArray &contents)
{
    QByteArrayList pieces;
    const QString path = scratch.file("searched in.log", contents);
    const bool done = systemLineSearch(keyword.toStdString(), path,
                                       [&pieces](const char *piece) { pieces.append(piece); });
    return done ? pieces : QByteArrayList{"not done"};
}

namespace {

void addRow(const char *what, const char *keyword, const char *line, bool matches)
{
    QTest::addRow("%s: %s in %s", what, keyword, line)
        << QByteArray(keyword) << QByteArray(line) << matches;
}

/// Single bytes and repetitions.
void addCharacters()
{
    addRow("plain", "bc", "abcd", true);
    addRow("plain", "bd", "abcd", false);
    for (const char *plain : {"+", "?", "(", ")", "{", "}", "|", "\"", "&", "%"}) {
        addRow("not special", plain, (std::string("a") + plain).c_str(), true);
        addRow("not special", plain, "a", false);
    }
    addRow("no alternation", "a|b", "a", false);
    addRow("any byte", "a.c", "axc", true);
    addRow("any byte", "a.c", "ac", false);
    addRow("repeated", "ab*c", "ac", true);
    addRow("repeated", "ab*c", "abbbc", true);
    addRow("repeated", "ab*c", "abxc", false);
    addRow("repeated class", "x[0-9]*y", "x123y", true);
    addRow("repeated class", "x[0-9]*y", "x12a3y", false);
    addRow("nothing is enough", "\\.*", "abc", true);
    addRow("nothing to repeat", "*a", "*a", true);
    addRow("nothing to repeat", "*a", "a", false);
    addRow("nothing to repeat", "^*a", "*a", true);
    addRow("repeated twice", "a**b", "aab", true);
}

/// Line and word borders, and escapes.
void addPlaces()
{
    addRow("line start", "^ab", "abc", true);
    addRow("line start", "^ab", "cab", false);
    addRow("plain elsewhere", "a^bc", "a^bc", true);
    addRow("plain elsewhere", "a^bc", "abc", false);
    addRow("line end", "bc$", "abc", true);
    addRow("line end", "bc$", "bca", false);
    addRow("plain elsewhere", "ab$c", "ab$c", true);
    addRow("plain elsewhere", "ab$c", "abc", false);
    addRow("whole line", "^abc$", "abc", true);
    addRow("whole line", "^abc$", "abcd", false);
    addRow("empty line", "^$", "a", false);
    addRow("escape", "\\.bc", "abc", false);
    addRow("escape", "\\.bc", "a.bc", true);
    addRow("escape", "\\*", "a*", true);
    addRow("escape", "a\\$", "a$b", true);
    addRow("escape", "\\[a]", "[a]", true);
    addRow("escape", "\\\\", "C:\\", true);
    addRow("escape at the end", "C:\\", "C:\\", true);
    addRow("word start", "\\<c", "cab", true);
    addRow("word start", "\\<c", "abc", false);
    addRow("word start", "\\<c", "a c", true);
    addRow("word end", "c\\>", "abc", true);
    addRow("word end", "c\\>", "cab", false);
    addRow("word", "\\<log\\>", "a log line", true);
    addRow("word", "\\<log\\>", "a log_line", false);
}

/// Several expressions, and classes.
void addSets()
{
    addRow("several", "foo bar", "has foo", true);
    addRow("several", "foo bar", "has bar", true);
    addRow("several", "foo bar", "has baz", false);
    addRow("several", "  foo   bar ", "bar", true);
    addRow("case", "Foo", "foo", false);
    addRow("class", "[abc]x", "bx", true);
    addRow("class", "[abc]x", "dx", false);
    addRow("negated class", "[^abc]x", "dx", true);
    addRow("negated class", "[^abc]x", "bx", false);
    addRow("range", "[a-c]x", "cx", true);
    addRow("range", "[a-c]x", "dx", false);
    addRow("range by byte", "[A-z]x", "_x", true);
    addRow("reversed range", "[c-a]", "b", false);
    addRow("hyphen at the end", "[a-]", "-", true);
    addRow("hyphen at the start", "[-a]", "-", true);
    addRow("escaped bracket", "[\\]]", "]", true);
    addRow("empty class", "[]", "[]", false);
    addRow("empty class", "[]a]", "a]", false);
    addRow("negated empty class", "^[^]$", "a", true);
    addRow("unterminated class", "[abc", "a", false);
    addRow("unterminated class", "[abc", "[abc", false);
    addRow("unterminated class beside another", "[abc def", "def", true);
    addRow("bytes, not letters", "^a.b$",
           "a\xc3\xa4"
           "b",
           false);
    addRow("bytes, not letters", "^a..b$",
           "a\xc3\xa4"
           "b",
           true);
    addRow("worst case", ".*.*.*x", "abcx", true);
    addRow("worst case", ".*.*.*x", "abc", false);
}

} // namespace

void LineSearchTest::understandsFindstrsExpressions_data()
{
    QTest::addColumn<QByteArray>("keyword");
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<bool>("matches");
    addCharacters();
    addPlaces();
    addSets();
}

void LineSearchTest::understandsFindstrsExpressions()
{
    QFETCH(QByteArray, keyword);
    QFETCH(QByteArray, line);
    QFETCH(bool, matches);
    const QByteArray printed = line + '\n';
    QCOMPARE(search(keyword, line + '\n'), matches ? QByteArrayList{printed} : QByteArrayList());
    // Other lines around it make no difference, whether they match or not.
    const QByteArrayList among = search(keyword, "~\n" + line + "\r\n\n~\n");
    QCOMPARE(among.contains(printed), matches);
}

void LineSearchTest::acceptsEveryLineEnd()
{
    QCOMPARE(search("b$", "ab\r\nab\nabc\nab"), QByteArrayList({"ab\n", "ab\n", "ab"}));
    QCOMPARE(search("b.", "ab\r\nab\n"), QByteArrayList());
    QCOMPARE(search("^$", "a\r\n\r\n\nb"), QByteArrayList({"\n", "\n"}));
    QCOMPARE(search("a.b", "a\rb\n"), QByteArrayList({"a\rb\n"}));
}

void LineSearchTest::printsAMatchingLineOnce()
{
    QCOMPARE(search("a b c aa", "abcabc aa\nx\ncab\n"), QByteArrayList({"abcabc aa\n", "cab\n"}));
}

void LineSearchTest::searchesTheLastLineWithoutALineFeed()
{
    QCOMPARE(search("b", "a\nb"), QByteArrayList({"b"}));
    QCOMPARE(search("x*", "a\nb"), QByteArrayList({"a\n", "b"}));
    QCOMPARE(search("x*", "a\n"), QByteArrayList({"a\n"}));
    QCOMPARE(search("x*", ""), QByteArrayList());
}

void LineSearchTest::returnsLinesInPiecesOf511Bytes_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<QList<int>>("pieces");

    QTest::newRow("with its line feed just fitting") << 510 << QList<int>{511};
    QTest::newRow("line feed left over") << 511 << QList<int>{511, 1};
    QTest::newRow("one byte more") << 512 << QList<int>{511, 2};
    QTest::newRow("three pieces") << 1200 << QList<int>{511, 511, 179};
}

void LineSearchTest::returnsLinesInPiecesOf511Bytes()
{
    QFETCH(int, length);
    for (const char *lineEnd : {"\n", "\r\n"}) {
        QList<int> sizes;
        const QByteArrayList pieces = search("x", QByteArray(length, 'x') + lineEnd);
        for (const QByteArray &piece : pieces)
            sizes.append(piece.size());
        QTEST(sizes, "pieces");
        QCOMPARE(pieces.join(), QByteArray(length, 'x') + '\n');
    }
}

void LineSearchTest::findsLinesOfTenMegabytes()
{
    const QByteArray line = QByteArray(10'000'000, 'a') + "needle";
    const QByteArray text = "short\n" + line + "\nneedle\n";
    QVERIFY(search("needle", text).join() == line + "\nneedle\n");
    QVERIFY(search("^a.*a.*needle$", text).join() == line + '\n');
    QVERIFY(search("aa*[0-9]", text).isEmpty());
    QVERIFY(search("a.*a.*a.*b", text).isEmpty());
}

void LineSearchTest::keepsZeroBytesInTheFileFromHidingWhatFollows()
{
    const QByteArray text("a\0b needle\nneedle\n", 18);
    QCOMPARE(search("needle", text), QByteArrayList({"a", "needle\n"}));
}

void LineSearchTest::failsWhenTheFileCannotBeSearched()
{
    const PieceSink none = [](const char * /*piece*/) { QFAIL("nothing to find"); };
    QVERIFY(!systemLineSearch("x", scratch.path("missing.log"), none));
    QVERIFY(!systemLineSearch("x", scratch.folder("folder.log"), none));
    QVERIFY(!systemLineSearch("x", QString(), none));
    const QString pipe = scratch.path("pipe.log");
    QCOMPARE(QProcess::execute("mkfifo", {pipe}), 0);
    QVERIFY(!systemLineSearch("x", pipe, none));
}

void LineSearchTest::cannotSearchWithoutPermission()
{
    if (!OrdinaryUser::available())
        QSKIP("permissions cannot be tested here");
    const QString path = scratch.file("locked.log", "a\n");
    QVERIFY(QFile::setPermissions(path, QFileDevice::Permissions()));
    const OrdinaryUser user;
    QVERIFY(!systemLineSearch("a", path, [](const char * /*piece*/) { QFAIL("a line"); }));
}

void LineSearchTest::endsWhereAFileWasTruncatedMeanwhile()
{
    const QString path = scratch.file("shrinking.log", QByteArray("x\n").repeated(1'000'000));
    int found = 0;
    QVERIFY(systemLineSearch("x", path, [&path, &found](const char * /*piece*/) {
        if (++found == 1)
            QVERIFY(QFile::resize(path, 0));
    }));
    QVERIFY(found > 0);
    QVERIFY(found < 1'000'000);
}

void LineSearchTest::endsWhenItIsStopped()
{
    const QByteArray text = QByteArray(2000, 'x') + '\n' + QByteArray("x\n").repeated(1'000'000);
    const QString path = scratch.file("stopped.log", text);
    for (int wanted : {2, 100, 200'000}) {
        SearchStop stop(false);
        int found = 0;
        const auto count = [&stop, &found, wanted](const char * /*piece*/) {
            if (++found == wanted)
                stop = true;
        };
        QVERIFY(systemLineSearch("x", path, count, stop));
        QCOMPARE(found, wanted);
    }
}

void LineSearchTest::logsWhenReadingFails()
{
    const QString path = "/proc/self/mem"; // opens, but cannot be read
    const Diagnostics diagnostics("vantrel.findstr");
    const DebugCapture output;
    QVERIFY(systemLineSearch("a", path, [](const char * /*piece*/) { QFAIL("a line"); }));
    QCOMPARE(output.lines(), QStringList{"read failed: " + path});
}

void LineSearchTest::matchesNothingWithoutAnExpression()
{
    QCOMPARE(search("", "a\n\n"), QByteArrayList());
    QCOMPARE(search("   ", "a\n\n b\n"), QByteArrayList());
    QCOMPARE(search("[", "a\n[\n"), QByteArrayList());
}

QTEST_APPLESS_MAIN(LineSearchTest)
#include "tst_line_search.moc"
