#include "ViewerFixture.h"

#include <QHeaderView>
#include <QScrollBar>

namespace {

constexpr int manyLines = 1000;

/// Numbered lines, alternating between INFO and WARN.
QByteArrayList twoLevels()
{
    QByteArrayList lines;
    for (int i = 0; i < manyLines; ++i)
        lines.append(logLine(i % 2 == 0 ? "INFO" : "WARN", QByteArray::number(i)));
    return lines;
}

/// The positions of the visible rows, by row number.
QMap<int, int> inSight(const QTableWidget &table)
{
    QMap<int, int> positions;
    for (int y = 0; y < table.viewport()->height(); ++y) {
        if (const int row = table.rowAt(y); row >= 0)
            positions.insert(row, table.rowViewportPosition(row));
    }
    return positions;
}

} // namespace

class LogViewerFilter : public QObject
{
    Q_OBJECT

private slots:
    void hidesExactlyTheRowsOfALevelAndShowsThemAgain_data();
    void hidesExactlyTheRowsOfALevelAndShowsThemAgain();
    void neverHidesFatalAndUnstructuredRows();
    void comparesTheLevelExactly();
    void filtersRowsWhileTheWindowIsShown();
    void keepsThePlace_data();
    void keepsThePlace();
    void keepsTheNextLineInPlaceOfAHiddenOne();
    void keepsTheCurrentLine();
    void hidesAColumnAndShowsItAgain_data();
    void hidesAColumnAndShowsItAgain();
    void setsTheColumnWidthsAtEveryColumnChange();
    void hidesAllColumnsForAnActionWithDataFive();
    void ignoresActionsOfOtherData();
};

void LogViewerFilter::hidesExactlyTheRowsOfALevelAndShowsThemAgain_data()
{
    QTest::addColumn<int>("row");

    QTest::newRow("checkBoxINFO") << 0;
    QTest::newRow("checkBoxDEBUG") << 1;
    QTest::newRow("checkBoxWARN") << 2;
    QTest::newRow("checkBoxERROR") << 3;
}

void LogViewerFilter::hidesExactlyTheRowsOfALevelAndShowsThemAgain()
{
    QFETCH(int, row);
    ViewerFixture f;
    QVERIFY(f.openData("every_level.log"));
    auto *const box = f.find<QCheckBox>(QTest::currentDataTag());
    box->click();
    QCOMPARE(f.hiddenRows(), QList<int>{row});
    box->click();
    QCOMPARE(f.hiddenRows(), QList<int>());
}

void LogViewerFilter::neverHidesFatalAndUnstructuredRows()
{
    ViewerFixture f;
    QVERIFY(f.openLines({logLine("FATAL"), "no level", logLine("info"), logLine("INFO")}));
    for (const char *box : {"checkBoxINFO", "checkBoxERROR", "checkBoxWARN", "checkBoxDEBUG"})
        f.find<QCheckBox>(box)->click();
    QCOMPARE(f.hiddenRows(), QList<int>{3});
}

void LogViewerFilter::comparesTheLevelExactly()
{
    ViewerFixture f;
    QVERIFY(f.openLines({logLine("INFO"), logLine("INFO")}));
    f.table().item(1, 1)->setText("INFO ");
    f.find<QCheckBox>("checkBoxINFO")->click();
    QCOMPARE(f.hiddenRows(), QList<int>{0});
}

void LogViewerFilter::filtersRowsWhileTheWindowIsShown()
{
    ViewerFixture f;
    QVERIFY(f.openLines(QByteArrayList{logLine("DEBUG"), logLine("INFO")} +
                        QByteArrayList{logLine("DEBUG"), logLine("WARN")}));
    QVERIFY(f.show());
    f.find<QCheckBox>("checkBoxDEBUG")->click();
    QTRY_COMPARE(f.table().rowViewportPosition(1), 0);
    QCOMPARE(f.table().rowViewportPosition(3), 32);
    QCOMPARE(f.table().itemAt(10, 10)->row(), 1);
    QVERIFY(f.table().verticalHeader()->updatesEnabled());
    f.find<QCheckBox>("checkBoxDEBUG")->click();
    QTRY_COMPARE(f.table().rowViewportPosition(3), 96);
}

void LogViewerFilter::keepsThePlace_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("first line") << 1;
    QTest::newRow("middle") << 501;
    QTest::newRow("near the end") << manyLines - 31;
}

void LogViewerFilter::keepsThePlace()
{
    QFETCH(int, row);
    ViewerFixture f;
    QVERIFY(f.openLines(twoLevels()));
    QVERIFY(f.show());
    f.table().verticalScrollBar()->setValue(row);
    QCOMPARE(f.table().rowAt(0), row);
    auto *const box = f.find<QCheckBox>("checkBoxINFO");
    QTest::mouseClick(box, Qt::LeftButton, {}, box->rect().center());
    QCOMPARE(f.table().rowAt(0), row);
    QCOMPARE(f.table().rowViewportPosition(row), 0);
    QCOMPARE(f.table().rowViewportPosition(row + 2), 32);
    const QMap<int, int> hidden = inSight(f.table());
    QCoreApplication::processEvents(); // updates the table's layout
    QCOMPARE(inSight(f.table()), hidden);
    box->click();
    QCoreApplication::processEvents();
    QCOMPARE(f.table().rowAt(0), row);
    QCOMPARE(f.table().rowViewportPosition(row), 0);
    QCOMPARE(f.table().rowViewportPosition(row + 1), 32);
}

void LogViewerFilter::keepsTheNextLineInPlaceOfAHiddenOne()
{
    ViewerFixture f;
    QVERIFY(f.openLines(twoLevels()));
    QVERIFY(f.show());
    f.table().verticalScrollBar()->setValue(500);
    f.find<QCheckBox>("checkBoxINFO")->click();
    QCoreApplication::processEvents();
    QCOMPARE(f.table().rowAt(0), 501);
    f.find<QCheckBox>("checkBoxINFO")->click();
    QCoreApplication::processEvents();
    QCOMPARE(f.table().rowAt(0), 501);
}

void LogViewerFilter::keepsTheCurrentLine()
{
    ViewerFixture f;
    QVERIFY(f.openLines(twoLevels()));
    QVERIFY(f.activate());
    f.table().setFocus();
    f.table().setCurrentCell(500, 0);
    for (int i = 0; i < 2; ++i) {
        f.find<QCheckBox>("checkBoxINFO")->click();
        QCoreApplication::processEvents();
        QCOMPARE(f.table().currentRow(), 500);
        QVERIFY(f.table().item(500, 3)->isSelected());
    }
    f.find<QCheckBox>("checkBoxINFO")->click();
    QTest::keyClick(&f.table(), Qt::Key_Down);
    QCOMPARE(f.table().currentRow(), 501);
}

void LogViewerFilter::hidesAColumnAndShowsItAgain_data()
{
    QTest::addColumn<int>("column");
    for (int column = 0; column < 4; ++column)
        QTest::newRow(QByteArray::number(column).constData()) << column;
}

void LogViewerFilter::hidesAColumnAndShowsItAgain()
{
    QFETCH(int, column);
    ViewerFixture f;
    QAction *const action = f.find<QMenu>("menuFilter")->actions().at(column);
    action->trigger();
    for (int i = 0; i < 4; ++i)
        QCOMPARE(f.table().isColumnHidden(i), i == column);
    action->trigger();
    for (int i = 0; i < 4; ++i)
        QVERIFY(!f.table().isColumnHidden(i));
}

void LogViewerFilter::setsTheColumnWidthsAtEveryColumnChange()
{
    ViewerFixture f;
    for (int column = 0; column < 3; ++column)
        f.table().setColumnWidth(column, 300);
    QAction *const action = f.find<QMenu>("menuFilter")->actions().at(2);
    action->trigger();
    action->trigger();
    QCOMPARE(f.table().horizontalHeader()->defaultSectionSize(), 80);
    QCOMPARE(f.table().columnWidth(0), 160);
    QCOMPARE(f.table().columnWidth(1), 65);
    QCOMPARE(f.table().columnWidth(2), 150);
    QVERIFY(f.table().columnWidth(3) >= 370);
    QVERIFY(f.table().horizontalHeader()->stretchLastSection());
}

void LogViewerFilter::hidesAllColumnsForAnActionWithDataFive()
{
    ViewerFixture f;
    const QList<QAction *> actions = f.find<QMenu>("menuFilter")->actions();
    QAction all;
    all.setData(5);
    all.setCheckable(true);
    for (const bool shown : {false, true}) {
        all.setChecked(shown);
        QVERIFY(QMetaObject::invokeMethod(&f.viewer, "onActionFilter", Q_ARG(QAction *, &all)));
        for (int column = 0; column < 4; ++column) {
            QCOMPARE(f.table().isColumnHidden(column), !shown);
            QCOMPARE(actions.at(column)->isChecked(), shown);
        }
    }
}

void LogViewerFilter::ignoresActionsOfOtherData()
{
    ViewerFixture f;
    for (const int data : {0, 6}) {
        QAction other;
        other.setData(data);
        other.setCheckable(true);
        QVERIFY(QMetaObject::invokeMethod(&f.viewer, "onActionFilter", Q_ARG(QAction *, &other)));
        for (int column = 0; column < 4; ++column)
            QVERIFY(!f.table().isColumnHidden(column));
    }
}

QTEST_MAIN(LogViewerFilter)
#include "tst_log_viewer_filter.moc"
