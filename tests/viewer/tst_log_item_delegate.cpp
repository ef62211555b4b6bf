#include "LogItemDelegate.h"

#include <QtTest>

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
    const QString text = QStringLiteral(" frame <b>received</b> ");
    QCOMPARE(delegate.displayText(text, QLocale::c()), text);
}

void LogItemDelegateTest::showsNoMoreOfALongTextThanCanBeSeen()
{
    const LogItemDelegate delegate;
    const QString text(10'000'000, QLatin1Char('x'));
    QVERIFY(delegate.displayText(text, QLocale::c()).size() < 5000);
}

void LogItemDelegateTest::cutsNoCharacterInHalves()
{
    const LogItemDelegate delegate;
    const QString faces = QString::fromUtf8("😀").repeated(5000);
    for (const QString &before : {QString(), QStringLiteral("x")}) {
        const QString shown = delegate.displayText(before + faces, QLocale::c());
        QVERIFY(!shown.at(shown.size() - 2).isHighSurrogate()); // before the ellipsis
    }
}

void LogItemDelegateTest::showsNoSecondLineForATrailingLineFeed()
{
    const LogItemDelegate delegate;
    QCOMPARE(delegate.displayText(QStringLiteral("found\n"), QLocale::c()),
             QStringLiteral("found"));
}

QTEST_MAIN(LogItemDelegateTest)
#include "tst_log_item_delegate.moc"
