#include "EventCount.h"
#include "ViewerFixture.h"

/// Keyboard use of the viewer, in an active window.
class LogViewerKeys : public QObject
{
    Q_OBJECT

private slots:
    void movesByKeys();
    void movesOverHiddenRowsByKeys();
    void ctrlHomeAndEndLeadToTheFirstAndTheLastLine();
    void shiftHomeAndEndSelectToTheFirstAndTheLastLine_data();
    void shiftHomeAndEndSelectToTheFirstAndTheLastLine();
    void staysOffTheSpareRows_data();
    void staysOffTheSpareRows();
    void findKeyLeadsToTheSearchField();
    void closesByKey_data();
    void closesByKey();
    void escapeClosesAnOpenMenuFirst();
    void readsTheLogAgainByKey_data();
    void readsTheLogAgainByKey();
    void readsNothingByKeyBeforeAFileIsOpen();
};

namespace {

QByteArrayList numberedLines(int count)
{
    QByteArrayList result;
    for (int i = 0; i < count; ++i)
        result.append(logLine("INFO", QByteArray::number(i)));
    return result;
}

/// Sets the focus on the table, with this row current.
bool focusTable(ViewerFixture &f, int row = -1)
{
    const bool active = f.activate();
    f.table().setFocus();
    if (row >= 0)
        f.table().setCurrentIndex(f.table().model()->index(row, 0));
    return active;
}

QList<int> selectedRows(const QTableWidget &table)
{
    QList<int> rows;
    for (const QModelIndex &index : table.selectionModel()->selectedRows())
        rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

} // namespace

void LogViewerKeys::movesByKeys()
{
    ViewerFixture f;
    QVERIFY(f.openLines(numberedLines(500)));
    QVERIFY(focusTable(f));
    QTest::keyClick(&f.table(), Qt::Key_End);
    QCOMPARE(f.table().currentRow(), 499);
    QTest::keyClick(&f.table(), Qt::Key_PageUp);
    const int above = f.table().currentRow();
    QVERIFY(above > 450 && above < 495);
    QTest::keyClick(&f.table(), Qt::Key_Home);
    QCOMPARE(f.table().currentRow(), 0);
    QTest::keyClick(&f.table(), Qt::Key_PageDown);
    QVERIFY(f.table().currentRow() > 5 && f.table().currentRow() < 50);
}

void LogViewerKeys::movesOverHiddenRowsByKeys()
{
    ViewerFixture f;
    QVERIFY(f.openLines({logLine("DEBUG"), logLine("INFO"), logLine("WARN"), logLine("DEBUG")}));
    f.find<QCheckBox>("checkBoxDEBUG")->click();
    QVERIFY(focusTable(f));
    QTest::keyClick(&f.table(), Qt::Key_End);
    QCOMPARE(f.table().currentRow(), 2);
    QTest::keyClick(&f.table(), Qt::Key_Home);
    QCOMPARE(f.table().currentRow(), 1);
}

void LogViewerKeys::ctrlHomeAndEndLeadToTheFirstAndTheLastLine()
{
    ViewerFixture f;
    QVERIFY(f.openLines(numberedLines(500)));
    QVERIFY(focusTable(f, 200));
    QTest::keyClick(&f.table(), Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(f.table().currentRow(), 499);
    QCOMPARE(selectedRows(f.table()), QList<int>{499});
    QTest::keyClick(&f.table(), Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(f.table().currentRow(), 0);
    QCOMPARE(selectedRows(f.table()), QList<int>{0});
}

void LogViewerKeys::shiftHomeAndEndSelectToTheFirstAndTheLastLine_data()
{
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("Shift") << Qt::KeyboardModifiers(Qt::ShiftModifier);
    QTest::newRow("Ctrl and Shift") << (Qt::ShiftModifier | Qt::ControlModifier);
}

void LogViewerKeys::shiftHomeAndEndSelectToTheFirstAndTheLastLine()
{
    QFETCH(Qt::KeyboardModifiers, modifiers);
    ViewerFixture f;
    QVERIFY(f.openLines(numberedLines(100)));
    QVERIFY(focusTable(f, 97));
    QTest::keyClick(&f.table(), Qt::Key_End, modifiers);
    QCOMPARE(selectedRows(f.table()), QList<int>({97, 98, 99}));
    QTest::keyClick(&f.table(), Qt::Key_Home);
    QTest::keyClick(&f.table(), Qt::Key_Down);
    QTest::keyClick(&f.table(), Qt::Key_Down);
    QTest::keyClick(&f.table(), Qt::Key_Home, modifiers);
    QCOMPARE(selectedRows(f.table()), QList<int>({0, 1, 2}));
    QCOMPARE(f.table().currentRow(), 0);
}

void LogViewerKeys::staysOffTheSpareRows_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Down") << Qt::Key_Down;
    QTest::newRow("PageDown") << Qt::Key_PageDown;
}

void LogViewerKeys::staysOffTheSpareRows()
{
    QFETCH(Qt::Key, key);
    ViewerFixture f;
    QVERIFY(f.openLines(numberedLines(3)));
    QVERIFY(focusTable(f, 1));
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(&f.table(), key);
    QCOMPARE(f.table().currentRow(), 2);
}

void LogViewerKeys::findKeyLeadsToTheSearchField()
{
    ViewerFixture f;
    QVERIFY(focusTable(f));
    QTest::keySequence(&f.table(), QKeySequence::Find);
    QVERIFY(f.find<QLineEdit>("lineEdit")->hasFocus());
}

void LogViewerKeys::closesByKey_data()
{
    QTest::addColumn<QString>("focus");
    QTest::addColumn<QKeySequence>("keys");
    for (const char *focus : {"tableWidget", "lineEdit", "checkBoxINFO", "btnFilter"}) {
        QTest::addRow("Escape in %s", focus) << focus << QKeySequence(Qt::Key_Escape);
        QTest::addRow("Ctrl+W in %s", focus) << focus << QKeySequence("Ctrl+W");
    }
}

void LogViewerKeys::closesByKey()
{
    QFETCH(QString, focus);
    QFETCH(QKeySequence, keys);
    ViewerFixture f;
    QVERIFY(f.openLines({"one"}));
    QVERIFY(f.activate());
    auto *const widget = f.find<QWidget>(focus.toLatin1().constData());
    widget->setFocus();
    const EventCount closings(f.viewer, QEvent::Close);
    QTest::keySequence(widget, keys);
    QVERIFY(f.viewer.isHidden());
    QCOMPARE(closings.count, 1);
    QCOMPARE(f.text(0, 3), "one");
}

void LogViewerKeys::escapeClosesAnOpenMenuFirst()
{
    ViewerFixture f;
    QVERIFY(f.activate());
    f.call("on_btnFilter_clicked");
    auto *const menu = f.find<QMenu>("menuFilter");
    QTest::keyClick(menu, Qt::Key_Escape);
    QVERIFY(!menu->isVisible());
    QVERIFY(f.viewer.isVisible());
}

void LogViewerKeys::readsTheLogAgainByKey_data()
{
    QTest::addColumn<bool>("searched");
    QTest::newRow("without a search") << false;
    QTest::newRow("after a search") << true;
}

void LogViewerKeys::readsTheLogAgainByKey()
{
    QFETCH(bool, searched);
    ViewerFixture f([](const auto &...) { return true; });
    QVERIFY(f.open(f.folder.file("a.log", "one\n")));
    QVERIFY(f.activate());
    if (searched)
        f.search("x");
    f.folder.file("a.log", "one\ntwo\n");
    f.output.take();
    QTest::keyClick(f.find<QLineEdit>("lineEdit"), Qt::Key_F5);
    QCOMPARE(f.filledRows(), 2);
    QCOMPARE(f.table().rowCount(), 7);
    QVERIFY2(f.output.lines().isEmpty(), "the count is written by opening a file only");
}

void LogViewerKeys::readsNothingByKeyBeforeAFileIsOpen()
{
    ViewerFixture f;
    QVERIFY(focusTable(f));
    QTest::keyClick(&f.table(), Qt::Key_F5);
    QVERIFY(f.output.lines().isEmpty());
}

QTEST_MAIN(LogViewerKeys)
#include "tst_log_viewer_keys.moc"
