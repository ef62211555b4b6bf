#include "LineFilter.h"

#include <QTest>

#include <string>

class LineFilterTest : public QObject
{
    Q_OBJECT

private slots:
    void matchesLongExpressions();
    void matchesManyRepetitions();
    void findsALineOnceWhateverMatches();
    void needsNoMoreTimeForARareExpressionBesideACommonOne();
    void takesTimeInProportionToTheLine_data();
    void takesTimeInProportionToTheLine();
};

namespace {

std::size_t linesIn(const std::string &keyword, std::string_view text)
{
    std::size_t count = 0;
    LineFilter(keyword).forEachLine(text, [&count](std::string_view) { ++count; });
    return count;
}

bool matches(const std::string &keyword, std::string_view line)
{
    return linesIn(keyword, line) == 1;
}

} // namespace

void LineFilterTest::matchesLongExpressions()
{
    for (const std::size_t length : {63U, 64U, 65U, 128U, 200U}) {
        const std::string text(length, 'a');
        QVERIFY(matches(text + "b", text + "b"));
        QVERIFY(matches(text + "b", "aaa" + text + "bb"));
        QVERIFY(!matches(text + "b", text));
        QVERIFY(!matches(text + "b", text.substr(1) + "b"));
    }
}

void LineFilterTest::matchesManyRepetitions()
{
    std::string optional;
    for (int i = 0; i < 150; ++i)
        optional += i % 2 == 0 ? "a*" : "b*";
    QVERIFY(matches("^x" + optional + "y$", "xy"));
    QVERIFY(matches("^x" + optional + "y$", "xababaaabby"));
    QVERIFY(!matches("^x" + optional + "y$", "xabcby"));
    QVERIFY(matches("^" + optional + "$", "\n"));
    QVERIFY(!matches("^" + optional + "$", "c"));
}

void LineFilterTest::findsALineOnceWhateverMatches()
{
    QCOMPARE(linesIn("a b ^ $ a", "ab\n\nba\n"), std::size_t(3));
    QCOMPARE(linesIn("zz b \\<a", "a\nb a\nzz\nca\n"), std::size_t(3));
}

void LineFilterTest::needsNoMoreTimeForARareExpressionBesideACommonOne()
{
    std::string text;
    for (int i = 0; i < 200'000; ++i)
        text += "common\n";
    text += "rare\n";
    // Searching for the rare expression again after each line would exceed the test's time limit.
    QCOMPARE(linesIn("common [rs]are", text), std::size_t(200'001));
}

void LineFilterTest::takesTimeInProportionToTheLine_data()
{
    QTest::addColumn<QByteArray>("keyword");

    for (const char *keyword :
         {".*.*.*x", "a.*a.*a.*x", "aa*x", "^a*a*a*x", "a[ab]*a[ab]*x$", ".*a.*$x", "a.*x$",
          "\\<a.*\\<b.*x", "a.a.a.*x", "x.*a", "a\\<a", "a\\>a*\\<", "\\<\\>"})
        QTest::newRow(keyword) << QByteArray(keyword);
}

void LineFilterTest::takesTimeInProportionToTheLine()
{
    QFETCH(QByteArray, keyword);
    // Quadratic time would exceed the test's time limit.
    const std::string line(4'000'000, 'a');
    QVERIFY(!matches(keyword.toStdString(), line));
}

QTEST_APPLESS_MAIN(LineFilterTest)
#include "tst_line_filter.moc"
