#include "LineFilter.h"
#include "SlowFindstr.h"

#include <QTest>

#include <random>
#include <string>
#include <vector>

namespace {

std::string keywordOf(std::mt19937 &random)
{
    // Pieces instead of single characters, so that most keywords are meaningful.
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
    // A CR at the end of a line would count as part of the line end.
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

std::string found(const LineFilter &filter, const std::string &bytes)
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

class LineFilterAgainstSlowMatcher : public QObject
{
    Q_OBJECT

private slots:
    void slowMatcherFollowsTheTable_data();
    void slowMatcherFollowsTheTable();
    void findsTheSameLines();
    void continuesWithTooManyStates();
};

void LineFilterAgainstSlowMatcher::slowMatcherFollowsTheTable_data()
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

void LineFilterAgainstSlowMatcher::slowMatcherFollowsTheTable()
{
    QFETCH(QByteArray, keyword);
    QFETCH(QByteArray, line);
    QTEST(slowFindstrMatches(keyword.toStdString(), line.toStdString()), "matches");
}

void LineFilterAgainstSlowMatcher::findsTheSameLines()
{
    std::mt19937 random(20240607);
    constexpr int keywords = 16'000;
    int selective = 0;
    for (int i = 0; i < keywords; ++i) {
        const std::string keyword = keywordOf(random);
        const Text text = textOf(random);
        const LineFilter filter(keyword);
        const std::string wanted = expected(keyword, text);
        const std::string got = found(filter, text.bytes);
        selective += wanted.empty() || wanted == text.bytes ? 0 : 1;
        if (got != wanted)
            qWarning() << "keyword" << QByteArray::fromStdString(keyword) << "text"
                       << QByteArray::fromStdString(text.bytes);
        QCOMPARE(QByteArray::fromStdString(got), QByteArray::fromStdString(wanted));
    }
    // Keywords that match everything or nothing would prove little.
    QVERIFY2(selective > keywords / 4, qPrintable(QString::number(selective)));
}

void LineFilterAgainstSlowMatcher::continuesWithTooManyStates()
{
    // A DFA would need a million states to remember which of the last 20 bytes were an "a".
    std::string keyword = "[ab]b*a";
    for (int i = 0; i < 19; ++i)
        keyword += "[ab]";
    keyword += 'c';
    std::mt19937 random(20240609);
    Text text;
    for (int i = 0; i < 8000; ++i) {
        std::string line;
        for (int j = 0; j < 40; ++j)
            line += "ab"[random() % 2];
        text.lines.push_back(line + (i % 3 == 0 ? "c" : "d"));
        text.bytes += text.lines.back() + '\n';
    }
    const std::string wanted = expected(keyword, text);
    QVERIFY(!wanted.empty() && wanted != text.bytes);
    QCOMPARE(found(LineFilter(keyword), text.bytes), wanted);
}

QTEST_APPLESS_MAIN(LineFilterAgainstSlowMatcher)
#include "tst_line_filter_against_slow_matcher.moc"
