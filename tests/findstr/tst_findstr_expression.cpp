#include "FindstrExpression.h"

#include <QTest>

class FindstrExpressionTest : public QObject
{
    Q_OBJECT

private slots:
    void splitsTheKeywordAtBlanksOnly_data();
    void splitsTheKeywordAtBlanksOnly();
    void neverAcceptsALineFeed();
    void treatsAsciiLettersDigitsAndUnderscoresAsWords();
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

void FindstrExpressionTest::neverAcceptsALineFeed()
{
    for (const char *keyword : {"\n", ".", "[^a]", "[\x01-\x7f]", "\\\n"}) {
        const auto expressions = parseFindstr(keyword);
        QVERIFY(!expressions.front().items.front().bytes['\n']);
    }
}

void FindstrExpressionTest::treatsAsciiLettersDigitsAndUnderscoresAsWords()
{
    const ByteSet words = wordBytes();
    QCOMPARE(words.count(), std::size_t(26 + 26 + 10 + 1));
    for (const char c : {'0', '9', 'A', 'Z', '_', 'a', 'z'})
        QVERIFY(words[static_cast<unsigned char>(c)]);
}

QTEST_APPLESS_MAIN(FindstrExpressionTest)
#include "tst_findstr_expression.moc"
