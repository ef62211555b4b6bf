#include "FindstrAutomaton.h"
#include "FindstrMatcher.h"
#include "LineFilter.h"
#include "SlowFindstr.h"

#include <QtTest>

#include <random>
#include <string>
#include <vector>

namespace {

std::string keywordOf(std::mt19937 &random)
{
    // Pieces rather than characters, so that most keywords mean something.
    static const std::vector<std::string> pieces = {
        "a",     "b",   "a",    "b",        "x",      "_",    "-",      ".",    ".",
        "*",     "*",   "*",    ".*",       "^",      "$",    "[ab]",   "[^a]", "[a-x]",
        "[b-a]", "[]",  "[^]",  "[^-]",     "[a\\]]", "[-a]", "[\\^a]", "[",    "]",
        "\\",    "\\<", "\\>",  "\\.",      "\\*",    "\\\\", "\\$",    "\\^",  " ",
        "\"",    "+",   "\xc3", "\xc3\xa4", "\r",     "[^b]*"};
    std::string keyword;
    const auto count = 1 + random() % 9;
    for (unsigned i = 0; i < count; ++i)
        keyword += pieces[random() % pieces.size()];
    return keyword;
}

std::string lineOf(std::mt19937 &random)
{
    static const std::string bytes("aaaabbbbxx_-.*^$[]\\<> \"+\xc3\xa4\r\0", 27);
    std::string line;
    const auto length = random() % 12;
    for (unsigned i = 0; i < length; ++i)
        line += bytes[random() % bytes.size()];
    // A line's own last CR would be taken for a part of its end.
    while (!line.empty() && line.back() == '\r')
        line.pop_back();
    return line;
}

struct Text
{
    std::vector<std::string> lines;
    std::string bytes;
};

Text textOf(std::mt19937 &random)
{
    Text text;
    for (int i = 0; i < 40; ++i)
        text.lines.push_back(lineOf(random));
    text.lines.back() += 'a';
    for (const std::string &line : text.lines)
        text.bytes += line + '\n';
    if (random() % 2 == 0)
        text.bytes.pop_back();
    return text;
}

std::string found(LineFilter &filter, const std::string &bytes)
{
    std::string result;
    filter.forEachLine(bytes, [&result](std::string_view line) { result.append(line); });
    return result;
}

std::string expected(const std::string &keyword, const Text &text)
{
    std::string result;
    std::size_t pos = 0;
    for (const std::string &line : text.lines) {
        if (slowFindstrMatches(keyword, line))
            result += text.bytes.substr(pos, line.size() + 1);
        pos += line.size() + 1;
    }
    return result;
}

} // namespace

class LineSearchAgainstSlowMatcher : public QObject
{
    Q_OBJECT

private slots:
    void slowMatcherKnowsTheTable_data();
    void slowMatcherKnowsTheTable();
    void findsTheSameLines_data();
    void findsTheSameLines();
    void matcherAndAutomatonAgree();
    void goesOnWhereTheAutomatonGivesUp();
};

void LineSearchAgainstSlowMatcher::slowMatcherKnowsTheTable_data()
{
    QTest::addColumn<QByteArray>("keyword");
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<bool>("matches");

    const auto row = [](const char *keyword, const char *line, bool matches) {
        QTest::addRow("%s in %s", keyword, line)
            << QByteArray(keyword) << QByteArray(line) << matches;
    };
    row("\\.*", "abc", true);
    row("a^bc", "a^bc", true);
    row("ab$c", "ab$c", true);
    row("\\.bc", "abc", false);
    row("\\<c", "cab", true);
    row("\\<c", "abc", false);
    row("foo bar", "a bar", true);
    row("[a", "a", false);
    row("A", "a", false);
    row("^b", "ab", false);
    row("a$", "ab", false);
    row("[^a]", "aaa", false);
}

void LineSearchAgainstSlowMatcher::slowMatcherKnowsTheTable()
{
    QFETCH(QByteArray, keyword);
    QFETCH(QByteArray, line);
    QTEST(slowFindstrMatches(keyword.toStdString(), line.toStdString()), "matches");
}

void LineSearchAgainstSlowMatcher::findsTheSameLines_data()
{
    QTest::addColumn<bool>("machineCode");

    QTest::newRow("machine code") << true;
    QTest::newRow("interpreter") << false;
}

void LineSearchAgainstSlowMatcher::findsTheSameLines()
{
    QFETCH(bool, machineCode);
    std::mt19937 random(20240607);
    constexpr int keywords = 8000;
    int selective = 0;
    for (int i = 0; i < keywords; ++i) {
        const std::string keyword = keywordOf(random);
        const Text text = textOf(random);
        LineFilter filter(keyword, machineCode ? PatternFinder::Use::MachineCode
                                               : PatternFinder::Use::Interpreter);
        const std::string wanted = expected(keyword, text);
        const std::string got = found(filter, text.bytes);
        selective += wanted.empty() || wanted == text.bytes ? 0 : 1;
        if (got != wanted)
            qWarning() << "keyword" << QByteArray::fromStdString(keyword) << "text"
                       << QByteArray::fromStdString(text.bytes);
        QCOMPARE(QByteArray::fromStdString(got), QByteArray::fromStdString(wanted));
    }
    // Keywords that select everything or nothing would prove little.
    QVERIFY2(selective > keywords / 4, qPrintable(QString::number(selective)));
}

void LineSearchAgainstSlowMatcher::matcherAndAutomatonAgree()
{
    std::mt19937 random(20240608);
    constexpr int keywords = 8000;
    int byAutomaton = 0;
    for (int i = 0; i < keywords; ++i) {
        const std::string keyword = keywordOf(random);
        const std::string line = lineOf(random);
        bool matches = false;
        for (FindstrExpression &parsed : parseFindstr(keyword)) {
            const FindstrExpression expression = simplified(std::move(parsed));
            const bool one = FindstrMatcher(expression).matches(line);
            matches = matches || one;
            FindstrAutomaton automaton(expression);
            if (!automaton.isUsable())
                continue; // the keyword has borders of words
            ++byAutomaton;
            const std::string before = "~\n"; // most expressions do not match this line
            const bool skips = automaton.find(before, 0) == std::string::npos;
            const std::size_t from = skips ? 0 : before.size();
            const std::size_t place = automaton.find(before + line + '\n', from);
            QCOMPARE(place != std::string::npos, one);
            QVERIFY(!one || (place >= before.size() && place <= before.size() + line.size()));
            if (!line.empty())
                QCOMPARE(automaton.find(line, 0) != std::string::npos, one);
        }
        QCOMPARE(matches, slowFindstrMatches(keyword, line));
    }
    QVERIFY2(byAutomaton > keywords / 2, qPrintable(QString::number(byAutomaton)));
}

void LineSearchAgainstSlowMatcher::goesOnWhereTheAutomatonGivesUp()
{
    // Which of the last twelve bytes were an "a": 4096 states.
    std::string keyword = "[ab]b*a";
    for (int i = 0; i < 11; ++i)
        keyword += "[ab]";
    keyword += 'c';
    std::mt19937 random(20240609);
    Text text;
    for (int i = 0; i < 2000; ++i) {
        std::string line;
        for (int j = 0; j < 20; ++j)
            line += "ab"[random() % 2];
        text.lines.push_back(line + (i % 3 == 0 ? "c" : "d"));
        text.bytes += text.lines.back() + '\n';
    }
    FindstrAutomaton automaton(simplified(parseFindstr(keyword).front()));
    std::size_t place = automaton.find(text.bytes, 0);
    QVERIFY(place != std::string::npos);
    while (place != std::string::npos)
        place = automaton.find(text.bytes, text.bytes.find('\n', place) + 1);
    QVERIFY2(!automaton.isUsable(), "the text was to need too many states");

    LineFilter filter(keyword);
    const std::string wanted = expected(keyword, text);
    QVERIFY(!wanted.empty() && wanted != text.bytes);
    QCOMPARE(found(filter, text.bytes), wanted);
    QCOMPARE(found(filter, text.bytes), wanted);
}

QTEST_APPLESS_MAIN(LineSearchAgainstSlowMatcher)
#include "tst_line_search_against_slow_matcher.moc"
