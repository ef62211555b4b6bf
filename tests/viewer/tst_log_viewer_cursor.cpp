#include "ViewerFixture.h"

#include <QContextMenuEvent>

/// The table's keyboard cursor is always on a cell with text.
class LogViewerCursor : public QObject
{
    Q_OBJECT

private slots:
    void scrollsByKeysWhateverColumnsAreHidden_data();
    void scrollsByKeysWhateverColumnsAreHidden();
    void leavesAColumnThatIsHidden();
    void staysOutOfSightWhenItsColumnIsHidden();
    void findsTheContextMenuOfEveryLineByKey();
    void findsAContextMenuByKeyOnceAFileIsOpen();
};

namespace {

constexpr int manyLines = 500;

QByteArrayList numberedLines()
{
    QByteArrayList lines;
    for (int i = 0; i < manyLines; ++i)
        lines.append(logLine("INFO", QByteArray::number(i)));
    return lines;
}

void hideColumn(const ViewerFixture &f, int column)
{
    f.find<QMenu>("menuFilter")->actions().at(column)->trigger();
}

bool focusTable(ViewerFixture &f)
{
    f.viewer.show();
    f.viewer.activateWindow();
    f.table().setFocus();
    return QTest::qWaitForWindowActive(&f.viewer);
}

/// Presses the Menu key.
void pressMenuKey(QTableWidget &table)
{
    QWidget *const viewport = table.viewport();
    const QPoint pos = table.inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, pos, viewport->mapToGlobal(pos));
    QCoreApplication::sendEvent(viewport, &event);
}

} // namespace

void LogViewerCursor::scrollsByKeysWhateverColumnsAreHidden_data()
{
    QTest::addColumn<QList<int>>("hidden");
    QTest::newRow("none") << QList<int>{};
    QTest::newRow("the first") << QList<int>{0};
    QTest::newRow("the first three") << QList<int>{0, 1, 2};
    QTest::newRow("the last") << QList<int>{3};
}

void LogViewerCursor::scrollsByKeysWhateverColumnsAreHidden()
{
    QFETCH(QList<int>, hidden);
    ViewerFixture f;
    QVERIFY(f.openLines(numberedLines()));
    QVERIFY(focusTable(f));
    for (const int column : hidden)
        hideColumn(f, column);
    const auto shows = [&](int row) {
        return f.table().viewport()->rect().intersects(QRect(
            0, f.table().rowViewportPosition(row), f.table().width(), f.table().rowHeight(row)));
    };
    QTest::keyClick(&f.table(), Qt::Key_End);
    QCOMPARE(f.table().currentRow(), manyLines - 1);
    QVERIFY(shows(manyLines - 1));
    QTest::keyClick(&f.table(), Qt::Key_Up);
    QCOMPARE(f.table().currentRow(), manyLines - 2);
    QTest::keyClick(&f.table(), Qt::Key_PageUp);
    QVERIFY(f.table().currentRow() < manyLines - 3);
    QVERIFY(shows(f.table().currentRow()));
    QTest::keyClick(&f.table(), Qt::Key_Home);
    QCOMPARE(f.table().currentRow(), 0);
    QVERIFY(shows(0));
}

void LogViewerCursor::leavesAColumnThatIsHidden()
{
    ViewerFixture f;
    QVERIFY(f.openLines({logLine("INFO"), logLine("WARN"), logLine("ERROR")}));
    QVERIFY(focusTable(f));
    QTest::keyClick(&f.table(), Qt::Key_Home);
    QCOMPARE(f.table().currentColumn(), 0);
    hideColumn(f, 0);
    QCOMPARE(f.table().currentColumn(), 1);
    QTest::keyClick(&f.table(), Qt::Key_Down);
    QCOMPARE(f.table().currentRow(), 1);
    QCOMPARE(f.table().selectedItems().size(), 3); // hidden cells are not selected
}

void LogViewerCursor::staysOutOfSightWhenItsColumnIsHidden()
{
    ViewerFixture f;
    QVERIFY(f.openLines(numberedLines()));
    QVERIFY(focusTable(f));
    QTest::keyClick(&f.table(), Qt::Key_Home);
    f.table().scrollToBottom();
    const int top = f.table().rowAt(0);
    hideColumn(f, 0);
    QCOMPARE(f.table().rowAt(0), top);
}

void LogViewerCursor::findsTheContextMenuOfEveryLineByKey()
{
    ViewerFixture f;
    const QByteArrayList lines{logLine("INFO"), "  at frame 3", logLine("WARN")};
    QVERIFY(f.openLines(lines));
    QVERIFY(focusTable(f));
    auto *const menu = qobject_cast<QMenu *>(f.find<QAction>("actionCopyAll")->parentWidget());
    QTest::keyClick(&f.table(), Qt::Key_Home);
    for (int row = 0; row < lines.size(); ++row) {
        QCOMPARE(f.table().currentRow(), row);
        f.output.take();
        pressMenuKey(f.table());
        QVERIFY(menu->isVisible());
        QCOMPARE(f.output.take(), QStringList{'"' + QString::fromLatin1(lines.at(row)) + '"'});
        menu->hide();
        QTest::keyClick(&f.table(), Qt::Key_Down);
    }
}

void LogViewerCursor::findsAContextMenuByKeyOnceAFileIsOpen()
{
    ViewerFixture f;
    QVERIFY(focusTable(f));
    QVERIFY(f.openLines({logLine("INFO"), logLine("WARN")}));
    QCOMPARE(f.table().currentRow(), 0);
    QVERIFY(f.table().selectedItems().isEmpty());
    pressMenuKey(f.table());
    auto *const menu = qobject_cast<QMenu *>(f.find<QAction>("actionCopyAll")->parentWidget());
    QVERIFY(menu->isVisible());
}

QTEST_MAIN(LogViewerCursor)
#include "tst_log_viewer_cursor.moc"
