#include "FindstrExpression.h"
#include "FindstrMatcher.h"
#include "FindstrPattern.h"

#include <QtTest>

#include <string>

namespace {

std::string patternOf(const char *keyword)
{
    const auto expressions = parseFindstr(keyword);
    return expressions.size() == 1 ? toPattern(simplified(expressions.front())).text
                                   : "not one expression";
}

bool isExact(const char *keyword)
{
    return toPattern(simplified(parseFindstr(keyword).front())).exact;
}

void addTranslationColumns()
{
    QTest::addColumn<QByteArray>("keyword");
    QTest::addColumn<QByteArray>("pattern");
}

void addTranslation(const char *keyword, const char *pattern)
{
    QTest::newRow(keyword) << QByteArray(keyword) << QByteArray(pattern);
}

void checkTranslation()
{
    QFETCH(QByteArray, keyword);
    QFETCH(QByteArray, pattern);
    QCOMPARE(QByteArray::fromStdString(patternOf(keyword.constData())), pattern);
}

bool matcherFinds(const std::string &keyword, std::string_view line)
{
    const auto expressions = parseFindstr(keyword);
    return FindstrMatcher(expressions.front()).matches(line);
}

} // namespace

class FindstrExpressionTest : public QObject
{
    Q_OBJECT

private slots:
    void splitsTheKeywordAtBlanksOnly_data();
    void splitsTheKeywordAtBlanksOnly();
    void translates_data();
    void translates();
    void looksForNoMoreThanNeeded_data();
    void looksForNoMoreThanNeeded();
    void saysWhetherThePatternIsExact();
    void neverAcceptsALineFeed();
    void matcherFollowsExpressionsLongerThanAMachineWord();
    void matcherSkipsRunsAcrossMachineWords();
};

void FindstrExpressionTest::splitsTheKeywordAtBlanksOnly_data()
{
    QTest::addColumn<QByteArray>("keyword");
    QTest::addColumn<int>("expressions");

    QTest::newRow("none") << QByteArray() << 0;
    QTest::newRow("only blanks") << QByteArray("   ") << 0;
    QTest::newRow("one") << QByteArray("foo") << 1;
    QTest::newRow("two") << QByteArray("foo bar") << 2;
    QTest::newRow("blanks around") << QByteArray("  foo   bar ") << 2;
    QTest::newRow("a tab is plain") << QByteArray("foo\tbar") << 1;
    QTest::newRow("a blank ends a class too") << QByteArray("[a b]") << 1;
    QTest::newRow("unterminated class left out") << QByteArray("foo [ba") << 1;
    QTest::newRow("nothing but a bracket") << QByteArray("[") << 0;
    QTest::newRow("a negation alone does not end") << QByteArray("[^") << 0;
    QTest::newRow("an escaped bracket does not end it") << QByteArray("[a\\]") << 0;
}

void FindstrExpressionTest::splitsTheKeywordAtBlanksOnly()
{
    QFETCH(QByteArray, keyword);
    QTEST(int(parseFindstr(keyword.toStdString()).size()), "expressions");
}

void FindstrExpressionTest::translates_data()
{
    addTranslationColumns();
    addTranslation("abc", "abc");
    addTranslation("a.c", "a[^\\n]c");
    addTranslation("^abc$", "^abc$");
    addTranslation("a^b$c", "a\\x5eb\\x24c");
    addTranslation("+?(){}|", "\\x2b\\x3f\\x28\\x29\\x7b\\x7d\\x7c");
    addTranslation("[a-c_x]", "[_a-cx]");
    addTranslation("[^a]", "[\\x00-\\x09\\x0b-\\x60b-\\xff]");
    addTranslation("[]x", "(?!)x");
    addTranslation("[^]", "[^\\n]");
    addTranslation("\\.\\*", "\\x2e\\x2a");
    addTranslation("\\<c\\>", "\\b(?=\\w)c\\b(?<=\\w)");
    addTranslation("a\\", "a\\x5c");
    addTranslation("a.*b", "a(?:(?>[^\\n]*?b)|[^\\n]*+(*SKIP)(*FAIL))");
    addTranslation("^a.*b$", "^a(?>[^\\n]*?b$)");
    addTranslation("ax*b", "a(?:(?>[^\\n]*?b)|[^\\n]*+(*SKIP)(*FAIL))");
}

void FindstrExpressionTest::translates()
{
    checkTranslation();
}

void FindstrExpressionTest::looksForNoMoreThanNeeded_data()
{
    addTranslationColumns();
    addTranslation(".*.*.*x", "x");
    addTranslation("x.*.*.*", "x");
    addTranslation("^.*x.*$", "x");
    addTranslation("a*b*c*", "");
    addTranslation("^a*b", "^(?>[^\\n]*?b)");
    addTranslation("a.*.*.*b", "a(?:(?>[^\\n]*?b)|[^\\n]*+(*SKIP)(*FAIL))");
    addTranslation("a[xy]*x*b", "a(?:(?>[^\\n]*?b)|[^\\n]*+(*SKIP)(*FAIL))");
}

void FindstrExpressionTest::looksForNoMoreThanNeeded()
{
    checkTranslation();
}

void FindstrExpressionTest::saysWhetherThePatternIsExact()
{
    QVERIFY(isExact("abc"));
    QVERIFY(isExact("a.*b[0-9]"));
    QVERIFY(isExact("a*b"));
    QVERIFY(isExact("^x*.*b"));
    QVERIFY(!isExact("ab*c"));
    QVERIFY(!isExact("^b*c"));
}

void FindstrExpressionTest::neverAcceptsALineFeed()
{
    for (const char *keyword : {"\n", ".", "[^a]", "[\x01-\x7f]", "\\\n"}) {
        const auto expressions = parseFindstr(keyword);
        QVERIFY(!expressions.front().items.front().bytes['\n']);
    }
    QCOMPARE(patternOf("\n"), std::string("(?!)"));
}

void FindstrExpressionTest::matcherFollowsExpressionsLongerThanAMachineWord()
{
    for (const std::size_t length : {63U, 64U, 65U, 128U, 200U}) {
        const std::string text(length, 'a');
        QVERIFY(matcherFinds(text + "b", text + "b"));
        QVERIFY(matcherFinds(text + "b", "aaa" + text + "bb"));
        QVERIFY(!matcherFinds(text + "b", text));
        QVERIFY(!matcherFinds(text + "b", text.substr(1) + "b"));
    }
}

void FindstrExpressionTest::matcherSkipsRunsAcrossMachineWords()
{
    std::string optional;
    for (int i = 0; i < 150; ++i)
        optional += i % 2 == 0 ? "a*" : "b*";
    QVERIFY(matcherFinds("^x" + optional + "y$", "xy"));
    QVERIFY(matcherFinds("^x" + optional + "y$", "xababaaabby"));
    QVERIFY(!matcherFinds("^x" + optional + "y$", "xabcby"));
    QVERIFY(matcherFinds("^" + optional + "$", ""));
    QVERIFY(!matcherFinds("^" + optional + "$", "c"));
}

QTEST_APPLESS_MAIN(FindstrExpressionTest)
#include "tst_findstr_expression.moc"
