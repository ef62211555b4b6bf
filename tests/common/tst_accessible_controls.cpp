#include "AccessibleControls.h"
#include "CTableWidget.h"
#include "FileTable.h"

#include <QAccessible>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

/// Accessible interfaces, queried as the bridges to assistive tools do.
class AccessibleControls : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void toggleABoxAsAClickDoes();
    void toggleARadioButtonAsAClickDoes();
    void offerNothingWhileDisabled();
    void pressAToolButtonThatOpensItsMenuItself();
    void nameAButtonByItsTextUnlessItHasAName();
    void showTheBoxInEachRow();
    void showTheBoxAboveTheRows();
    void numberTheCellsRowByRow();
    void reportWhichRowsAreTicked();
    void pressACellAsADoubleClickDoes();
    void toggleACellToTickItsRow();
    void toggleACellToSelectItsRowWhereThereAreNoBoxes();
    void selectAndUnselectRows();
    void followATableThatGrows();
    void endWithTheTable();
};

namespace {

QString nameOf(QAccessibleInterface *accessible)
{
    return accessible != nullptr ? accessible->text(QAccessible::Name) : "(none)";
}

const QString toggle = QAccessibleActionInterface::toggleAction();
const QString press = QAccessibleActionInterface::pressAction();

} // namespace

void AccessibleControls::initTestCase()
{
    installAccessibleControls();
}

void AccessibleControls::toggleABoxAsAClickDoes()
{
    QCheckBox box("System Log");
    const QSignalSpy clicked(&box, &QCheckBox::clicked);
    QCOMPARE(seen(&box)->role(), QAccessible::CheckBox);
    QVERIFY(seen(&box)->state().checkable);
    QVERIFY(!seen(&box)->state().checked);

    seen(&box)->actionInterface()->doAction(toggle);
    QTRY_COMPARE(clicked.count(), 1);
    QVERIFY(seen(&box)->state().checked);
}

void AccessibleControls::toggleARadioButtonAsAClickDoes()
{
    QRadioButton button("DEBUG");
    const QSignalSpy clicked(&button, &QRadioButton::clicked);
    QCOMPARE(seen(&button)->role(), QAccessible::RadioButton);
    seen(&button)->actionInterface()->doAction(toggle);
    QTRY_COMPARE(clicked.count(), 1);
    QVERIFY(button.isChecked());
}

void AccessibleControls::offerNothingWhileDisabled()
{
    QCheckBox box;
    QVERIFY(seen(&box)->actionInterface()->actionNames().contains(toggle));
    box.setEnabled(false);
    QVERIFY(!seen(&box)->actionInterface()->actionNames().contains(toggle));
}

void AccessibleControls::pressAToolButtonThatOpensItsMenuItself()
{
    QToolButton button;
    button.setPopupMode(QToolButton::InstantPopup);
    const QSignalSpy clicked(&button, &QToolButton::clicked);
    QCOMPARE(seen(&button)->role(), QAccessible::Button);
    QCOMPARE(seen(&button)->actionInterface()->actionNames().first(), press);
    seen(&button)->actionInterface()->doAction(press);
    QTRY_COMPARE(clicked.count(), 1);
}

void AccessibleControls::nameAButtonByItsTextUnlessItHasAName()
{
    QCheckBox box("INFO");
    QCOMPARE(nameOf(seen(&box)), "INFO");
    box.setAccessibleName("a.log");
    QCOMPARE(nameOf(seen(&box)), "a.log");
}

void AccessibleControls::showTheBoxInEachRow()
{
    FileTable f;
    for (int row = 0; row < 2; ++row) {
        QAccessibleInterface *cell = f.cell(row, 0);
        QCOMPARE(cell->childCount(), 1);
        QCOMPARE(cell->child(0)->object(), f.boxes[row]);
        // From child to parent.
        QCOMPARE(seen(f.boxes[row])->parent(), cell);
        QCOMPARE(cell->parent(), seen(&f.table));
        QCOMPARE(cell->role(), QAccessible::Cell);
        QCOMPARE(cell->tableCellInterface()->rowIndex(), row);
        QCOMPARE(nameOf(cell), nameOf(cell->child(0)));
        QCOMPARE(cell->indexOfChild(cell->child(0)), 0);
        const QPoint centre = cell->child(0)->rect().center();
        QCOMPARE(cell->childAt(centre.x(), centre.y()), cell->child(0));
    }
    QCOMPARE(f.cell(2, 0)->childCount(), 0);
}

void AccessibleControls::showTheBoxAboveTheRows()
{
    FileTable f;
    auto *box = f.table.horizontalHeader()->findChild<QCheckBox *>();
    QAccessibleInterface *header = seen(box)->parent();
    QCOMPARE(header->role(), QAccessible::ColumnHeader);
    QCOMPARE(header->parent(), seen(&f.table));
    QCOMPARE(seen(&f.table)->child(1), header);
    QVERIFY(!nameOf(seen(box)).isEmpty());
    QCOMPARE(f.cell(0, 0)->tableCellInterface()->columnHeaderCells(),
             QList<QAccessibleInterface *>{header});
}

void AccessibleControls::numberTheCellsRowByRow()
{
    FileTable f;
    QAccessibleInterface *table = seen(&f.table);
    QCOMPARE(table->role(), QAccessible::Table);
    QCOMPARE(table->childCount(), (3 + 1) * (3 + 1)); // headers included
    for (int i = 0; i < table->childCount(); ++i) {
        QVERIFY(table->child(i) != nullptr);
        QCOMPARE(table->indexOfChild(table->child(i)), i);
    }
    QCOMPARE(table->child(-1), nullptr);
    QCOMPARE(table->child(table->childCount()), nullptr);
    QCOMPARE(nameOf(table->child(2)), "Time");
    QCOMPARE(nameOf(table->child(4 + 2)), "time 0");
    QCOMPARE(nameOf(f.cell(1, 2)), "1.log");
    QCOMPARE(f.cell(1, 3), nullptr);
    QCOMPARE(f.cell(3, 1), nullptr);
}

void AccessibleControls::reportWhichRowsAreTicked()
{
    FileTable f;
    f.boxes[1]->setChecked(true);
    for (int column = 0; column < 3; ++column) {
        QVERIFY(!f.cell(0, column)->state().checked);
        QVERIFY(f.cell(1, column)->state().checked);
        QVERIFY(!f.cell(2, column)->state().checkable);
    }
}

void AccessibleControls::pressACellAsADoubleClickDoes()
{
    FileTable f;
    const QSignalSpy doubleClicked(&f.table, &QTableWidget::cellDoubleClicked);
    f.cell(1, 2)->actionInterface()->doAction(press);
    QCOMPARE(doubleClicked.count(), 1);
    QCOMPARE(doubleClicked.first(), (QVariantList{1, 2}));
    QCOMPARE(f.cell(2, 2)->actionInterface()->actionNames(), QStringList());
}

void AccessibleControls::toggleACellToTickItsRow()
{
    FileTable f;
    const QSignalSpy clicked(f.boxes[1], &QCheckBox::clicked);
    f.cell(1, 2)->actionInterface()->doAction(toggle);
    QTRY_COMPARE(clicked.count(), 1);
    QVERIFY(f.boxes[1]->isChecked());
    QVERIFY(!f.boxes[0]->isChecked());
}

void AccessibleControls::toggleACellToSelectItsRowWhereThereAreNoBoxes()
{
    CTableWidget table(nullptr);
    table.setColumnCount(1);
    table.setRowCount(2);
    table.setItem(1, 0, new QTableWidgetItem("a line"));
    QAccessibleInterface *cell = seen(&table)->tableInterface()->cellAt(1, 0);
    cell->actionInterface()->doAction(toggle);
    QVERIFY(cell->tableCellInterface()->isSelected());
    cell->actionInterface()->doAction(toggle);
    QVERIFY(!cell->tableCellInterface()->isSelected());
}

void AccessibleControls::selectAndUnselectRows()
{
    FileTable f;
    QAccessibleTableInterface *table = seen(&f.table)->tableInterface();
    QVERIFY(table->selectRow(1));
    QCOMPARE(table->selectedRows(), QList<int>{1});
    QCOMPARE(table->selectedCellCount(), 3);
    QVERIFY(table->isRowSelected(1));
    QVERIFY(table->unselectRow(1));
    QCOMPARE(table->selectedRowCount(), 0);
    QVERIFY(!table->selectRow(3));
    QVERIFY(!table->unselectRow(-1));
}

void AccessibleControls::followATableThatGrows()
{
    FileTable f;
    QAccessibleInterface *table = seen(&f.table);
    QCOMPARE(nameOf(table->child(4 + 2)), "time 0");
    f.table.insertColumn(0);
    QAccessibleTableModelChangeEvent grown(&f.table,
                                           QAccessibleTableModelChangeEvent::ColumnsInserted);
    table->tableInterface()->modelChange(&grown);
    QCOMPARE(nameOf(table->child(5 + 3)), "time 0");
}

void AccessibleControls::endWithTheTable()
{
    QAccessible::Id cell = 0;
    {
        FileTable f;
        cell = QAccessible::uniqueId(f.cell(0, 1));
        QVERIFY(QAccessible::accessibleInterface(cell) != nullptr);
    }
    QCOMPARE(QAccessible::accessibleInterface(cell), nullptr);
}

QTEST_MAIN(AccessibleControls)
#include "tst_accessible_controls.moc"
