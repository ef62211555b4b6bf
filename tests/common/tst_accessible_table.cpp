#include "AccessibleControls.h"
#include "FileTable.h"

#include <QHeaderView>
#include <QTest>

/// Queries of a table with check boxes that only some assistive tools make.
class AccessibleTable : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void findsTheCellAtAPoint();
    void reportsWhereCellsAndHeadersAre();
    void reportsWhatCellsAndHeadersAre();
    void reportsWhichCellHasTheFocus();
    void reportsWhichCellsAreSelected();
    void selectsNoColumns();
    void knowsNoChildThatIsNotItsOwn();
    void hasCellsWithoutChildren();
};

namespace {

QAccessibleTableInterface *tableOf(FileTable &f)
{
    return seen(&f.table)->tableInterface();
}

} // namespace

void AccessibleTable::initTestCase()
{
    installAccessibleControls();
}

void AccessibleTable::findsTheCellAtAPoint()
{
    FileTable f;
    const QRect place = f.cell(1, 2)->rect();
    QAccessibleInterface *found = seen(&f.table)->childAt(place.center().x(), place.center().y());
    QCOMPARE(found, f.cell(1, 2));
    QCOMPARE(found->text(QAccessible::Name), "1.log");
    QVERIFY(seen(&f.table)->childAt(-10000, -10000) == nullptr);
}

void AccessibleTable::reportsWhereCellsAndHeadersAre()
{
    FileTable f;
    const QHeaderView *header = f.table.horizontalHeader();
    const QRect expected(header->mapToGlobal(QPoint(header->sectionViewportPosition(1), 0)),
                         QSize(header->sectionSize(1), header->height()));
    QCOMPARE(f.cell(-1, 1)->rect(), expected);
    // The header's check box is in its first section.
    QCOMPARE(f.cell(-1, 0)->rect().size(), QSize(header->sectionSize(0), header->height()));
    QVERIFY(f.cell(0, -1)->rect().isEmpty()); // row headers are hidden
    QVERIFY(seen(&f.table)->rect().contains(f.cell(0, 1)->rect()));
}

void AccessibleTable::reportsWhatCellsAndHeadersAre()
{
    FileTable f;
    QCOMPARE(f.cell(0, 1)->role(), QAccessible::Cell);
    QCOMPARE(f.cell(-1, 1)->role(), QAccessible::ColumnHeader);
    QCOMPARE(f.cell(0, -1)->role(), QAccessible::RowHeader);
    QCOMPARE(f.cell(-1, -1)->role(), QAccessible::Pane);
    QVERIFY(f.cell(-1, 1)->tableCellInterface() == nullptr);
    QVERIFY(f.cell(0, -1)->state().invisible);
    QVERIFY(!f.cell(0, 1)->state().invisible);
    QCOMPARE(tableOf(f)->columnDescription(2), "Name");
    QCOMPARE(tableOf(f)->rowDescription(0), QString());
    QVERIFY(tableOf(f)->caption() == nullptr);
    QVERIFY(tableOf(f)->summary() == nullptr);
}

void AccessibleTable::reportsWhichCellHasTheFocus()
{
    FileTable f;
    f.table.setCurrentCell(1, 2);
    QVERIFY(seen(&f.table)->focusChild() == nullptr);
    QVERIFY(!f.cell(1, 2)->state().focused);
    QApplication::setActiveWindow(&f.table);
    f.table.setFocus();
    QTRY_VERIFY(f.table.hasFocus());
    QCOMPARE(seen(&f.table)->focusChild(), f.cell(1, 2));
    QVERIFY(f.cell(1, 2)->state().focused);
    f.table.setCurrentIndex({});
    QVERIFY(seen(&f.table)->focusChild() == nullptr);
}

void AccessibleTable::reportsWhichCellsAreSelected()
{
    FileTable f;
    QCOMPARE(tableOf(f)->selectedCells().size(), 0);
    f.table.selectRow(1);
    const QList<QAccessibleInterface *> selected = tableOf(f)->selectedCells();
    QCOMPARE(selected.size(), 3);
    for (int column = 0; column < 3; ++column)
        QVERIFY(selected.contains(f.cell(1, column)));
    QCOMPARE(tableOf(f)->selectedColumnCount(), 0);
    f.table.selectAll();
    QCOMPARE(tableOf(f)->selectedColumns(), (QList<int>{0, 1, 2}));
    QVERIFY(tableOf(f)->isColumnSelected(1));
}

void AccessibleTable::selectsNoColumns()
{
    FileTable f;
    QVERIFY(!tableOf(f)->selectColumn(1));
    QVERIFY(!f.table.selectionModel()->hasSelection());
    f.table.selectAll();
    QVERIFY(!tableOf(f)->unselectColumn(1));
    QVERIFY(tableOf(f)->isColumnSelected(1));
}

void AccessibleTable::knowsNoChildThatIsNotItsOwn()
{
    FileTable f;
    QCOMPARE(seen(&f.table)->indexOfChild(nullptr), -1);
    QWidget other;
    QCOMPARE(seen(&f.table)->indexOfChild(seen(&other)), -1);
}

void AccessibleTable::hasCellsWithoutChildren()
{
    FileTable f;
    QAccessibleInterface *cell = f.cell(1, 1);
    QCOMPARE(cell->parent(), seen(&f.table));
    QVERIFY(cell->isValid());
    QCOMPARE(cell->window(), f.table.windowHandle());
    QVERIFY(cell->object() == nullptr);
    QCOMPARE(cell->childCount(), 0);
    QVERIFY(cell->child(0) == nullptr);
    QVERIFY(cell->childAt(0, 0) == nullptr);
    QCOMPARE(cell->indexOfChild(seen(&f.table)), -1);
    cell->setText(QAccessible::Name, "other");
    QCOMPARE(cell->text(QAccessible::Name), "time 1");

    QAccessibleTableCellInterface *place = cell->tableCellInterface();
    QCOMPARE(place->rowExtent(), 1);
    QCOMPARE(place->columnExtent(), 1);
    QVERIFY(place->rowHeaderCells().isEmpty());
    QCOMPARE(place->columnHeaderCells(), QList<QAccessibleInterface *>{f.cell(-1, 1)});

    cell->actionInterface()->doAction("fly");
    QVERIFY(cell->actionInterface()
                ->keyBindingsForAction(QAccessibleActionInterface::toggleAction())
                .isEmpty());
    QVERIFY(!f.boxes[1]->isChecked());
}

QTEST_MAIN(AccessibleTable)
#include "tst_accessible_table.moc"
