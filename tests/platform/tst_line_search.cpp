#include "DebugCapture.h"
#include "Faults.h"
#include "FindstrExpression.h"
#include "FindstrPattern.h"
#include "LineSearch.h"
#include "PatternFinder.h"
#include "ScratchFolder.h"

#include <QProcess>
#include <QtTest>

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

class LineSearchTest : public QObject
{
    Q_OBJECT

private slots:
    void understandsFindstrsExpressions_data();
    void understandsFindstrsExpressions();
    void takesEveryLineEndForAnEnd();
    void printsAMatchingLineOnce();
    void searchesTheLastLineWithoutALineFeed();
    void handsOutLinesInPiecesOf511Bytes_data();
    void handsOutLinesInPiecesOf511Bytes();
    void findsLinesOfTenMegabytes();
    void keepsZeroBytesInTheFileFromHidingWhatFollows();
    void saysWhenTheFileCannotBeSearched();
    void cannotSearchWithoutPermission();
    void endsWhereAFileWasCutMeanwhile();
    void endsWhenItIsStopped();
    void saysWhenAFileCannotBeReadAnyFurther();
    void matchesNothingWithoutAnExpression();
    void survivesExpressionsOfTenThousandCharacters_data();
    void survivesExpressionsOfTenThousandCharacters();
    void takesAPatternThatIsTooLargeAsFoundEverywhere();
    void saysPerhapsOnceASearchHasFailed();
    void stepsGrowWithTheLineNotWithItsSquare_data();
    void stepsGrowWithTheLineNotWithItsSquare();
    void countedStepsShowWhatBacktrackingWouldCost();

private:
    QByteArrayList search(const QByteArray &keyword, const QByteArray &contents);

    ScratchFolder scratch;
};

QByteArrayList LineSearchTest::search(const QByteArray &keyword, const QByteArray &contents)
{
    QByteArrayList pieces;
    const QString path = scratch.file(QStringLiteral("searched in.log"), contents);
    const bool done = systemLineSearch(keyword.toStdString(), path,
                                       [&pieces](const char *piece) { pieces.append(piece); });
    return done ? pieces : QByteArrayList{"not done"};
}

void LineSearchTest::understandsFindstrsExpressions_data()
{
    QTest::addColumn<QByteArray>("keyword");
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<bool>("matches");

    const auto row = [](const char *what, const char *keyword, const char *line, bool matches) {
        QTest::addRow("%s: %s in %s", what, keyword, line)
            << QByteArray(keyword) << QByteArray(line) << matches;
    };
    row("plain", "bc", "abcd", true);
    row("plain", "bd", "abcd", false);
    for (const char *plain : {"+", "?", "(", ")", "{", "}", "|", "\"", "&", "%"}) {
        row("not special", plain, (std::string("a") + plain).c_str(), true);
        row("not special", plain, "a", false);
    }
    row("no alternation", "a|b", "a", false);
    row("any byte", "a.c", "axc", true);
    row("any byte", "a.c", "ac", false);
    row("repeated", "ab*c", "ac", true);
    row("repeated", "ab*c", "abbbc", true);
    row("repeated", "ab*c", "abxc", false);
    row("repeated class", "x[0-9]*y", "x123y", true);
    row("repeated class", "x[0-9]*y", "x12a3y", false);
    row("nothing is enough", "\\.*", "abc", true);
    row("nothing to repeat", "*a", "*a", true);
    row("nothing to repeat", "*a", "a", false);
    row("nothing to repeat", "^*a", "*a", true);
    row("repeated twice", "a**b", "aab", true);
    row("line start", "^ab", "abc", true);
    row("line start", "^ab", "cab", false);
    row("plain elsewhere", "a^bc", "a^bc", true);
    row("plain elsewhere", "a^bc", "abc", false);
    row("line end", "bc$", "abc", true);
    row("line end", "bc$", "bca", false);
    row("plain elsewhere", "ab$c", "ab$c", true);
    row("plain elsewhere", "ab$c", "abc", false);
    row("whole line", "^abc$", "abc", true);
    row("whole line", "^abc$", "abcd", false);
    row("empty line", "^$", "a", false);
    row("escape", "\\.bc", "abc", false);
    row("escape", "\\.bc", "a.bc", true);
    row("escape", "\\*", "a*", true);
    row("escape", "a\\$", "a$b", true);
    row("escape", "\\[a]", "[a]", true);
    row("escape", "\\\\", "C:\\", true);
    row("escape at the end", "C:\\", "C:\\", true);
    row("word start", "\\<c", "cab", true);
    row("word start", "\\<c", "abc", false);
    row("word start", "\\<c", "a c", true);
    row("word end", "c\\>", "abc", true);
    row("word end", "c\\>", "cab", false);
    row("word", "\\<log\\>", "a log line", true);
    row("word", "\\<log\\>", "a log_line", false);
    row("several", "foo bar", "has foo", true);
    row("several", "foo bar", "has bar", true);
    row("several", "foo bar", "has baz", false);
    row("several", "  foo   bar ", "bar", true);
    row("case", "Foo", "foo", false);
    row("class", "[abc]x", "bx", true);
    row("class", "[abc]x", "dx", false);
    row("negated class", "[^abc]x", "dx", true);
    row("negated class", "[^abc]x", "bx", false);
    row("range", "[a-c]x", "cx", true);
    row("range", "[a-c]x", "dx", false);
    row("range by byte", "[A-z]x", "_x", true);
    row("reversed range", "[c-a]", "b", false);
    row("hyphen at the end", "[a-]", "-", true);
    row("hyphen at the start", "[-a]", "-", true);
    row("escaped bracket", "[\\]]", "]", true);
    row("empty class", "[]", "[]", false);
    row("empty class", "[]a]", "a]", false);
    row("negated empty class", "^[^]$", "a", true);
    row("unterminated class", "[abc", "a", false);
    row("unterminated class", "[abc", "[abc", false);
    row("unterminated class beside another", "[abc def", "def", true);
    row("bytes, not letters", "^a.b$",
        "a\xc3\xa4"
        "b",
        false);
    row("bytes, not letters", "^a..b$",
        "a\xc3\xa4"
        "b",
        true);
    row("worst case", ".*.*.*x", "abcx", true);
    row("worst case", ".*.*.*x", "abc", false);
}

void LineSearchTest::understandsFindstrsExpressions()
{
    QFETCH(QByteArray, keyword);
    QFETCH(QByteArray, line);
    QFETCH(bool, matches);
    const QByteArray printed = line + '\n';
    QCOMPARE(search(keyword, line + '\n'), matches ? QByteArrayList{printed} : QByteArrayList());
    // The lines around it make no difference, whether the keyword finds them or not.
    const QByteArrayList among = search(keyword, "~\n" + line + "\r\n\n~\n");
    QCOMPARE(among.contains(printed), matches);
}

void LineSearchTest::takesEveryLineEndForAnEnd()
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

void LineSearchTest::handsOutLinesInPiecesOf511Bytes_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<QList<int>>("pieces");

    QTest::newRow("with its line feed just fitting") << 510 << QList<int>{511};
    QTest::newRow("line feed left over") << 511 << QList<int>{511, 1};
    QTest::newRow("one byte more") << 512 << QList<int>{511, 2};
    QTest::newRow("three pieces") << 1200 << QList<int>{511, 511, 179};
}

void LineSearchTest::handsOutLinesInPiecesOf511Bytes()
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

void LineSearchTest::saysWhenTheFileCannotBeSearched()
{
    const PieceSink none = [](const char * /*piece*/) { QFAIL("nothing to find"); };
    QVERIFY(!systemLineSearch("x", scratch.path(QStringLiteral("missing.log")), none));
    QVERIFY(!systemLineSearch("x", scratch.folder(QStringLiteral("folder.log")), none));
    QVERIFY(!systemLineSearch("x", QString(), none));
    const QString pipe = scratch.path(QStringLiteral("pipe.log"));
    QCOMPARE(QProcess::execute(QStringLiteral("mkfifo"), {pipe}), 0);
    QVERIFY(!systemLineSearch("x", pipe, none));
}

void LineSearchTest::cannotSearchWithoutPermission()
{
    if (!OrdinaryUser::available())
        QSKIP("permissions cannot be tested here");
    const QString path = scratch.file(QStringLiteral("locked.log"), "a\n");
    QVERIFY(QFile::setPermissions(path, QFileDevice::Permissions()));
    const OrdinaryUser user;
    QVERIFY(!systemLineSearch("a", path, [](const char * /*piece*/) { QFAIL("a line"); }));
}

void LineSearchTest::endsWhereAFileWasCutMeanwhile()
{
    const QString path =
        scratch.file(QStringLiteral("shrinking.log"), QByteArray("x\n").repeated(1'000'000));
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
    const QString path = scratch.file(QStringLiteral("stopped.log"), text);
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

void LineSearchTest::saysWhenAFileCannotBeReadAnyFurther()
{
    const QString path = QStringLiteral("/proc/self/mem"); // a file whose first byte cannot be read
    const DebugCapture output;
    QVERIFY(systemLineSearch("a", path, [](const char * /*piece*/) { QFAIL("a line"); }));
    QCOMPARE(output.lines(), QStringList{QStringLiteral("read failed: ") + path});
}

void LineSearchTest::matchesNothingWithoutAnExpression()
{
    QCOMPARE(search("", "a\n\n"), QByteArrayList());
    QCOMPARE(search("   ", "a\n\n b\n"), QByteArrayList());
    QCOMPARE(search("[", "a\n[\n"), QByteArrayList());
}

void LineSearchTest::survivesExpressionsOfTenThousandCharacters_data()
{
    QTest::addColumn<QByteArray>("keyword");
    QTest::addColumn<QByteArray>("line");

    QTest::newRow("plain") << QByteArray(10'000, 'a') << QByteArray(10'000, 'a');
    QTest::newRow("any byte") << QByteArray(10'000, '.') << QByteArray(10'000, 'a');
    QTest::newRow("repetitions") << "x" + QByteArray("a*b*").repeated(2500) + "y"
                                 << QByteArray("xababy");
    QTest::newRow("gaps") << QByteArray("a.*b.*").repeated(1666) << QByteArray("ab").repeated(1666);
    QTest::newRow("classes") << QByteArray("[ab]").repeated(2500) << QByteArray(2500, 'b');
    QTest::newRow("many expressions") << QByteArray("zz ").repeated(3333) + "a" << QByteArray("a");
    QTest::newRow("words") << QByteArray("\\<a\\>").repeated(2000) + "*" << QByteArray();
}

void LineSearchTest::survivesExpressionsOfTenThousandCharacters()
{
    QFETCH(QByteArray, keyword);
    QFETCH(QByteArray, line);
    const QByteArray found = search(keyword, "other\n" + line + "\nother\n").join();
    QCOMPARE(found, line.isEmpty() ? QByteArray() : line + '\n');
}

void LineSearchTest::takesAPatternThatIsTooLargeAsFoundEverywhere()
{
    PatternFinder finder(QByteArray("[\\x01\\x03]").repeated(40'000).toStdString());
    QVERIFY(!finder.isUsable());
    QCOMPARE(finder.find("abc\n", 2), std::size_t(2));
}

void LineSearchTest::saysPerhapsOnceASearchHasFailed()
{
    // More to come back to than the library's machine code has room for.
    PatternFinder finder("(?:(a)|b)*c");
    QVERIFY(finder.isUsable());
    const std::string text(1'000'000, 'a');
    QCOMPARE(finder.find(text, 3), std::size_t(3));
    QVERIFY(!finder.isUsable());
    QCOMPARE(finder.find("x", 0), std::size_t(0));
}

void LineSearchTest::stepsGrowWithTheLineNotWithItsSquare_data()
{
    QTest::addColumn<QByteArray>("keyword");

    for (const char *keyword : {".*.*.*x", "a.*a.*a.*x", "aa*x", "^a*a*a*x", "a[ab]*a[ab]*x$",
                                ".*a.*$x", "a.*x$", "\\<a.*\\<b.*x", "a.a.a.*x", "x.*a"})
        QTest::newRow(keyword) << QByteArray(keyword);
}

namespace {

struct Steps
{
    const std::string &pattern;
    quint64 count = 0;
    quint64 lineLength = 0;
};

/// Called before each item of a pattern that the library's interpreter tries.
int countStep(pcre2_callout_block *block, void *data)
{
    auto &steps = *static_cast<Steps *>(data);
    const bool runsToTheEnd = steps.pattern.compare(block->pattern_position, 7, "[^\\n]*+") == 0;
    steps.count += runsToTheEnd ? steps.lineLength : 1;
    return 0;
}

/// How many bytes and items are looked at until the whole line is known not to match.
quint64 stepsToFail(const std::string &pattern, int length)
{
    const QByteArray line = QByteArray(length, 'a') + '\n';
    Steps steps{pattern, 0, quint64(length)};
    int error = 0;
    PCRE2_SIZE offset = 0;
    pcre2_code *code = pcre2_compile(reinterpret_cast<PCRE2_SPTR>(pattern.data()), pattern.size(),
                                     PCRE2_MULTILINE | PCRE2_NO_START_OPTIMIZE | PCRE2_AUTO_CALLOUT,
                                     &error, &offset, nullptr);
    pcre2_match_context *context = pcre2_match_context_create(nullptr);
    pcre2_set_callout(context, countStep, &steps);
    pcre2_match_data *match = pcre2_match_data_create(1, nullptr);
    const int result = pcre2_match(code, reinterpret_cast<PCRE2_SPTR>(line.data()),
                                   std::size_t(line.size()), 0, 0, match, context);
    pcre2_match_data_free(match);
    pcre2_match_context_free(context);
    pcre2_code_free(code);
    return result == PCRE2_ERROR_NOMATCH ? steps.count : 0;
}

quint64 stepsOf(const QByteArray &keyword, int length)
{
    const auto expression = simplified(parseFindstr(keyword.toStdString()).front());
    return stepsToFail(toPattern(expression).text, length);
}

} // namespace

void LineSearchTest::stepsGrowWithTheLineNotWithItsSquare()
{
    QFETCH(QByteArray, keyword);
    const quint64 steps = stepsOf(keyword, 1000);
    QVERIFY2(steps > 0, "the line was to be one that does not match");
    QVERIFY2(steps <= 20'000, qPrintable(QString::number(steps)));
    const quint64 more = stepsOf(keyword, 10'000);
    QVERIFY2(more <= 11 * steps, qPrintable(QString::number(more)));
}

void LineSearchTest::countedStepsShowWhatBacktrackingWouldCost()
{
    const std::string backtracking = "a[^\\n]*a[^\\n]*x";
    QVERIFY(stepsToFail(backtracking, 200) > 50 * stepsToFail(backtracking, 20));
}

QTEST_APPLESS_MAIN(LineSearchTest)
#include "tst_line_search.moc"
