#include "LogItemDelegate.h"

#include <QTest>

class LogItemDelegateTest : public QObject
{
    Q_OBJECT

private slots:
    void showsAnOrdinaryTextAsItIs();
    void showsNoMoreOfALongTextThanCanBeSeen();
    void cutsNoCharacterInHalves();
    void showsNoSecondLineForATrailingLineFeed();
};

void LogItemDelegateTest::showsAnOrdinaryTextAsItIs()
{
    const LogItemDelegate delegate;
    const QString text = " frame <b>received</b> ";
    QCOMPARE(delegate.displayText(text, QLocale::c()), text);
}

void LogItemDelegateTest::showsNoMoreOfALongTextThanCanBeSeen()
{
    const LogItemDelegate delegate;
    const QString text(10'000'000, 'x');
    QVERIFY(delegate.displayText(text, QLocale::c()).size() < 5000);
}

void LogItemDelegateTest::cutsNoCharacterInHalves()
{
    const LogItemDelegate delegate;
    const QString faces = QString("😀").repeated(5000);
    for (const char *before : {"", "x"}) {
        const QString shown = delegate.displayText(before + faces, QLocale::c());
        QVERIFY(!shown.at(shown.size() - 2).isHighSurrogate()); // before the ellipsis
    }
}

void LogItemDelegateTest::showsNoSecondLineForATrailingLineFeed()
{
    const LogItemDelegate delegate;
    QCOMPARE(delegate.displayText("found\n", QLocale::c()), "found");
}

QTEST_MAIN(LogItemDelegateTest)
#include "tst_log_item_delegate.moc"
