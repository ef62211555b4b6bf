#include "CTableWidget.h"

#include <QTest>

class TableCursor : public QObject
{
    Q_OBJECT

private slots:
    void isATableWithoutSignalsAndSlots();
    void becomesAnArrowWhenTheMouseEnters();
    void isNotSetBefore();
};

void TableCursor::isATableWithoutSignalsAndSlots()
{
    QCOMPARE(CTableWidget::staticMetaObject.superClass(), &QTableWidget::staticMetaObject);
    QCOMPARE(CTableWidget::staticMetaObject.methodCount(),
             QTableWidget::staticMetaObject.methodCount());
}

void TableCursor::becomesAnArrowWhenTheMouseEnters()
{
    QWidget frame;
    CTableWidget table(&frame);
    frame.setCursor(Qt::SizeHorCursor); // as a frame does when the mouse crosses its edge
    QCOMPARE(table.cursor().shape(), Qt::SizeHorCursor);
    QEvent enter(QEvent::Enter);
    QCoreApplication::sendEvent(&table, &enter);
    QCOMPARE(table.cursor().shape(), Qt::ArrowCursor);
    QCOMPARE(frame.cursor().shape(), Qt::SizeHorCursor);
}

void TableCursor::isNotSetBefore()
{
    const CTableWidget table(nullptr);
    QVERIFY(!table.testAttribute(Qt::WA_SetCursor));
}

QTEST_MAIN(TableCursor)
#include "tst_table_cursor.moc"
