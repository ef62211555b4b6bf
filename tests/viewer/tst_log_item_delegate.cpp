#include "LogItemDelegate.h"

#include <QHelpEvent>
#include <QTableWidget>
#include <QToolTip>
#include <QtTest>

class LogItemDelegateTest : public QObject
{
    Q_OBJECT

private slots:
    void showsAnOrdinaryTextAsItIs();
    void showsNoMoreOfALongTextThanCanBeSeen();
    void cutsNoCharacterInHalves();
    void showsNoSecondLineForATrailingLineFeed();
    void showsMarkupInToolTipsAsText();
    void cutsToolTipsOfLongLines();
    void showsNoToolTipWhereThereIsNone();
    void leavesOtherHelpToTheView();

private:
    QString toolTipOf(const QString &line);
};

QString LogItemDelegateTest::toolTipOf(const QString &line)
{
    QTableWidget table(1, 1);
    auto *const item = new QTableWidgetItem;
    item->setToolTip(line);
    table.setItem(0, 0, item);
    table.show();
    LogItemDelegate delegate;
    QHelpEvent event(QEvent::ToolTip, QPoint(5, 5), table.mapToGlobal(QPoint(5, 5)));
    delegate.helpEvent(&event, &table, QStyleOptionViewItem(), table.model()->index(0, 0));
    const QString shown = QToolTip::isVisible() ? QToolTip::text() : QString();
    QToolTip::hideText();
    return shown;
}

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

void LogItemDelegateTest::showsMarkupInToolTipsAsText()
{
    const QString tip = toolTipOf(QStringLiteral("<b>bold</b>  &amp;"));
    QVERIFY(tip.contains(QStringLiteral("&lt;b&gt;bold&lt;/b&gt;  &amp;amp;")));
    QVERIFY(tip.contains(QStringLiteral("pre-wrap")));
}

void LogItemDelegateTest::cutsToolTipsOfLongLines()
{
    const QString tip = toolTipOf(QString(10'000'000, QLatin1Char('x')));
    QVERIFY(tip.size() > 1000);
    QVERIFY(tip.size() < 2000); // more would not fit on a small screen
}

void LogItemDelegateTest::showsNoToolTipWhereThereIsNone()
{
    QCOMPARE(toolTipOf(QString()), QString());
}

void LogItemDelegateTest::leavesOtherHelpToTheView()
{
    QTableWidget table(1, 1);
    auto *const item = new QTableWidgetItem;
    item->setToolTip(QStringLiteral("tip"));
    table.setItem(0, 0, item);
    LogItemDelegate delegate;
    QHelpEvent asked(QEvent::QueryWhatsThis, QPoint(5, 5), QPoint(5, 5));
    const QModelIndex index = table.model()->index(0, 0);
    QVERIFY(!delegate.helpEvent(&asked, &table, QStyleOptionViewItem(), index));
    item->setWhatsThis(QStringLiteral("this"));
    QVERIFY(delegate.helpEvent(&asked, &table, QStyleOptionViewItem(), index));
    QVERIFY(!QToolTip::isVisible());
}

QTEST_MAIN(LogItemDelegateTest)
#include "tst_log_item_delegate.moc"
