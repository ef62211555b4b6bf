#include "LineSearch.h"
#include "ScratchFolder.h"

#include <QTest>

class LongKeywords : public QObject
{
    Q_OBJECT

private slots:
    void survivesExpressionsOfTenThousandCharacters_data();
    void survivesExpressionsOfTenThousandCharacters();
    void cannotSearchForAnExpressionThatIsTooLarge();

private:
    ScratchFolder scratch;
};

void LongKeywords::survivesExpressionsOfTenThousandCharacters_data()
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

void LongKeywords::survivesExpressionsOfTenThousandCharacters()
{
    QFETCH(QByteArray, keyword);
    QFETCH(QByteArray, line);
    const QString path = scratch.file("a.log", "other\n" + line + "\nother\n");
    QByteArray found;
    QVERIFY(systemLineSearch(keyword.toStdString(), path,
                             [&found](const char *piece) { found += piece; }));
    QCOMPARE(found, line.isEmpty() ? QByteArray() : line + '\n');
}

void LongKeywords::cannotSearchForAnExpressionThatIsTooLarge()
{
    const std::string keyword =
        "a " + QByteArray("[acegikmoqsuwy]").repeated(300'000).toStdString();
    const QString path = scratch.file("a.log", "a\n");
    QVERIFY(!systemLineSearch(keyword, path, [](const char * /*piece*/) { QFAIL("a line"); }));
}

QTEST_APPLESS_MAIN(LongKeywords)
#include "tst_long_keywords.moc"
