#include "FindstrCommand.h"

#include <QTest>

class FindstrCommandTest : public QObject
{
    Q_OBJECT

private slots:
    void combinesKeywordAndPath();
    void beginsWithTwelveFixedCharacters();
    void convertsForwardSlashesOfThePath();
    void keepsForwardSlashesOfTheKeyword();
    void addsNoQuotingToAKeywordWithQuotes();
    void doesNotQuoteAPathWithBlanks();
};

void FindstrCommandTest::combinesKeywordAndPath()
{
    QCOMPARE(findstrCommand("ERROR.*timeout", "C:\\logs\\a.log"),
             std::string("findstr /r \"ERROR.*timeout\" C:\\logs\\a.log "));
}

void FindstrCommandTest::beginsWithTwelveFixedCharacters()
{
    QCOMPARE(findstrCommand("x", "y").substr(0, 12), std::string("findstr /r \""));
    QCOMPARE(findstrCommand("", ""), std::string("findstr /r \"\"  "));
}

void FindstrCommandTest::convertsForwardSlashesOfThePath()
{
    QCOMPARE(findstrCommand("x", "C:/Users/me/QZSDK/a/b.log"),
             std::string("findstr /r \"x\" C:\\Users\\me\\QZSDK\\a\\b.log "));
}

void FindstrCommandTest::keepsForwardSlashesOfTheKeyword()
{
    QCOMPARE(findstrCommand("a/b", "c/d"), std::string("findstr /r \"a/b\" c\\d "));
}

void FindstrCommandTest::addsNoQuotingToAKeywordWithQuotes()
{
    QCOMPARE(findstrCommand("say \"hi\" & go", "a.log"),
             std::string("findstr /r \"say \"hi\" & go\" a.log "));
}

void FindstrCommandTest::doesNotQuoteAPathWithBlanks()
{
    QCOMPARE(findstrCommand("x", "C:/My Logs/a.log"),
             std::string("findstr /r \"x\" C:\\My Logs\\a.log "));
}

QTEST_APPLESS_MAIN(FindstrCommandTest)
#include "tst_findstr_command.moc"
