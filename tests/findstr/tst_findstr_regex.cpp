#include "FindstrRegex.h"

#include <QTest>

class FindstrRegexTest : public QObject
{
    Q_OBJECT

private slots:
    void translates_data();
    void translates();
    void restrictsTheByteAfterAWordBorder_data();
    void restrictsTheByteAfterAWordBorder();
    void growsInProportionToTheKeyword_data();
    void growsInProportionToTheKeyword();
};

namespace {

const char *const anything = "[\\x00-\\\t\\\x0b-\xff]";
const char *const noWord = "[\\x00-\\\t\\\x0b-\\/\\:-\\@\\[-\\^\\`\\{-\xff]";

void addColumns()
{
    QTest::addColumn<QByteArray>("keyword");
    QTest::addColumn<QByteArray>("regex");
}

void addRow(const char *keyword, const QByteArray &regex)
{
    QTest::newRow(keyword) << QByteArray(keyword) << "(?m)" + regex;
}

QByteArray regexOf(const QByteArray &keyword)
{
    const auto expressions = parseFindstr(keyword.toStdString());
    return expressions.size() == 1 ? QByteArray::fromStdString(toRegex(expressions.front()))
                                   : "not one expression";
}

void check()
{
    QFETCH(QByteArray, keyword);
    QTEST(regexOf(keyword), "regex");
}

} // namespace

void FindstrRegexTest::translates_data()
{
    addColumns();
    addRow("abc", "abc");
    addRow("a.c", QByteArray("a") + anything + "c");
    addRow("^abc$", "^abc$");
    addRow("a^b$c", "a\\^b\\$c");
    addRow("+?(){}|", "\\+\\?\\(\\)\\{\\}\\|");
    addRow("[a-c_x]", "[_a-cx]");
    addRow("[^a]", "[\\x00-\\\t\\\x0b-\\`b-\xff]");
    addRow("[]x", "[^\\x00-\\xff]x");
    addRow("\n", "[^\\x00-\\xff]");
    addRow("[^]", anything);
    addRow("\\.\\*", "\\.\\*");
    addRow("a\\", "a\\\\");
    addRow("\xc3\xa4", "\xc3\xa4");
    addRow("a.*b", QByteArray("a") + anything + "*b");
    addRow("ax*b", "ax*b");
    addRow("[]*b", "[^\\x00-\\xff]*b");
}

void FindstrRegexTest::translates()
{
    check();
}

void FindstrRegexTest::restrictsTheByteAfterAWordBorder_data()
{
    addColumns();
    const QByteArray any = anything;
    const QByteArray none = noWord;
    const QByteArray word = "[0-9A-Z_a-z]";
    addRow("\\<cd", "\\bcd");
    addRow("\\<[-c]d", "\\bcd");
    addRow("c\\>[-c]d", "c\\b\\-d");
    addRow("c\\>d", "c\\b[^\\x00-\\xff]");
    // A border at the end of the expression.
    addRow("c\\<", "c\\b(?:" + word + any + "*)$");
    addRow("c\\>", "c\\b(?:" + none + any + "*)?$");
    addRow("c\\<$", "c\\b[^\\x00-\\xff]$");
    addRow("c\\>$", "c\\b$");
    // The byte after the border is optional.
    addRow("\\<[-a]*b", "\\b(?:a[\\-a]*b|b)");
    addRow("\\<a*b*c", "\\b(?:(?:aa*|b)b*c|c)");
    addRow("c\\>-*$", "c\\b(?:\\-\\-*)?$");
    addRow("c\\<a*$", "c\\b(?:aa*)$");
    // Another border follows.
    addRow("\\<\\<a", "\\b\\ba");
    addRow("\\<a*\\<b", "\\b(?:aa*)?\\bb");
    addRow("\\<a*\\>-", "\\b(?:aa*)\\b\\-");
    addRow("\\<\\>-", "\\b[^\\x00-\\xff]\\b\\-");
}

void FindstrRegexTest::restrictsTheByteAfterAWordBorder()
{
    check();
}

void FindstrRegexTest::growsInProportionToTheKeyword_data()
{
    QTest::addColumn<QByteArray>("piece");

    for (const char *piece : {"a", ".", "a*", "\\<", "\\<a*", "\\<a*\\>.*", "a*b*\\<"})
        QTest::newRow(piece) << QByteArray(piece);
}

void FindstrRegexTest::growsInProportionToTheKeyword()
{
    QFETCH(QByteArray, piece);
    const auto sizeOf = [&piece](int times) {
        return regexOf("\\<" + piece.repeated(times)).size();
    };
    QVERIFY(sizeOf(2000) < 11 * sizeOf(200));
}

QTEST_APPLESS_MAIN(FindstrRegexTest)
#include "tst_findstr_regex.moc"
