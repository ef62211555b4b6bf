#include "RowTable.h"

#include <QApplication>
#include <QTest>

class RowTableTest : public QObject
{
    Q_OBJECT

private slots:
    void selectsTheRowOfTheCursorWhenTabLeadsToIt();
    void keepsTheCursorInAColumnThatShowsText();
};

namespace {

/// Two rows of one text each, in the last column, and a spare row.
struct Fixture
{
    Fixture()
    {
        table.setUpColumns({50});
        table.setRowCount(3);
        for (int row = 0; row < 2; ++row)
            table.setItem(row, 1, new QTableWidgetItem(QString::number(row)));
    }

    RowTable table{nullptr};
};

void focus(RowTable &table, Qt::FocusReason reason)
{
    QFocusEvent event(QEvent::FocusIn, reason);
    QCoreApplication::sendEvent(&table, &event);
}

} // namespace

void RowTableTest::selectsTheRowOfTheCursorWhenTabLeadsToIt()
{
    Fixture f;
    f.table.setCurrentCell(1, 1, QItemSelectionModel::NoUpdate);
    focus(f.table, Qt::MouseFocusReason);
    QVERIFY(!f.table.selectionModel()->hasSelection());
    focus(f.table, Qt::TabFocusReason);
    QVERIFY(f.table.selectionModel()->isRowSelected(1, {}));
    f.table.selectRow(0);
    f.table.setCurrentCell(1, 1, QItemSelectionModel::NoUpdate);
    focus(f.table, Qt::BacktabFocusReason);
    QVERIFY(f.table.selectionModel()->isRowSelected(0, {}));
    QVERIFY(!f.table.selectionModel()->isRowSelected(1, {}));
}

void RowTableTest::keepsTheCursorInAColumnThatShowsText()
{
    Fixture f;
    f.table.setCurrentCell(0, 0);
    QCOMPARE(f.table.currentColumn(), 1);
}

QTEST_MAIN(RowTableTest)
#include "tst_row_table.moc"
