#include "Faults.h"
#include "FileTable.h"
#include "MainWindowFixture.h"
#include "QUserCheckBox.h"
#include "SdkLogFiles.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QHelpEvent>
#include <QMenu>
#include <QScreen>
#include <QSignalSpy>
#include <QTextDocument>
#include <QToolTip>
#include <QWindow>

class SdkLogTable : public QObject
{
    Q_OBJECT

private slots:
    void isSetUpAsAFileList();
    void listsTimeNameAndSizeNewestFirst();
    void listsLogsOfEqualTimeByName();
    void sortsByMilliseconds();
    void carriesThePathAsToolTipOfEachItem();
    void roundsSizesUpSoThatAnEmptyFileHasOneKilobyte_data();
    void roundsSizesUpSoThatAnEmptyFileHasOneKilobyte();
    void listsEveryNameThatContainsDotLog();
    void listsNeitherFoldersNorLinks();
    void listsTheFiftyNewestOfSixty();
    void prefersTheClientsSource();
    void takesTheFirstSourceWithoutTheClients();
    void printsAndFillsWhenTheSourceChanges();
    void staysEmptyWithoutAnSdkFolder();
    void staysEmptyWithAnSdkFolderWithoutSources();
    void showsNothingForASourceThatVanished();
    void checksRowsAndHeaderAsTheHubSays();
    void unchecksTheHeaderWhenARowIsUnchecked();
    void leavesTheHeaderUncheckedWhenEveryRowIsCheckedByHand();
    void setsEveryRowByTheHeader();
    void putsTheRowBoxesInTheMiddleOfTheirCells();
    void showsTheContextMenuForAnItemOnly();
    void keepsTheContextMenuOnTheScreen();
    void remembersTheEnteredItemAndReportsNone();
    void movesToNoSpareRowByAnyKey_data();
    void movesToNoSpareRowByAnyKey();
    void movesNowhereInAnEmptyList();
    void reloadsTheListOfTheOnlySourceByF5();
    void ticksEveryRowByF5();
    void keepsTheCursorOnItsFileWhenTheListIsReloaded();
    void showsThatTheFolderHasNoLogs_data();
    void showsThatTheFolderHasNoLogs();
    void drawsTheHintInAnEmptyListOnly();
    void showsNamesInToolTipsAsTheyAre();
};

namespace {

void show(const MainWindowFixture &f)
{
    f.window->show();
    f.table()->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
}

const QMenu *contextMenu(const MainWindowFixture &f)
{
    return qobject_cast<QMenu *>(f.find<QAction>("actionExportAll")->parent());
}

const QDateTime noon(QDate(2026, 3, 5), QTime(12, 0, 7));

} // namespace

void SdkLogTable::isSetUpAsAFileList()
{
    MainWindowFixture f;
    f.open();
    const CTableWidget &table = *f.table();
    QVERIFY(table.horizontalHeader()->inherits("QCheckBoxHeader"));
    QCOMPARE(table.columnCount(), 4);
    QCOMPARE(table.rowCount(), 50);
    QVERIFY(table.verticalHeader()->isHidden());
    QCOMPARE(table.verticalHeader()->defaultSectionSize(), 32);
    QCOMPARE(table.rowHeight(0), 32);
    QCOMPARE(table.rowHeight(49), 32);
    QCOMPARE(table.columnWidth(0), 40);
    QCOMPARE(table.columnWidth(1), 250);
    QCOMPARE(table.columnWidth(2), 300);
    QVERIFY(table.horizontalHeader()->stretchLastSection());
    QCOMPARE(table.horizontalHeader()->textElideMode(), Qt::ElideRight);
    QVERIFY(!table.horizontalHeader()->highlightSections());
    QVERIFY(!table.wordWrap());
    QCOMPARE(table.horizontalScrollMode(), QAbstractItemView::ScrollPerPixel);
    QVERIFY(table.alternatingRowColors());
    QCOMPARE(table.editTriggers(), QAbstractItemView::NoEditTriggers);
    QCOMPARE(table.selectionBehavior(), QAbstractItemView::SelectRows);
    QCOMPARE(table.contextMenuPolicy(), Qt::CustomContextMenu);
}

void SdkLogTable::listsTimeNameAndSizeNewestFirst()
{
    MainWindowFixture f;
    f.log("QZviewer/middle.log", "x", noon.addSecs(-60));
    f.log("QZviewer/oldest.log", "x", noon.addDays(-1));
    f.log("QZviewer/newest.log", "x", noon);
    f.open();
    QCOMPARE(f.listedNames(), QStringList({"newest.log", "middle.log", "oldest.log"}));
    QCOMPARE(f.cell(0, 1), "2026-03-05 12:00:07");
    QCOMPARE(f.cell(2, 1), "2026-03-04 12:00:07");
    QCOMPARE(f.cell(0, 3), "1 KB");
    QCOMPARE(f.table()->item(0, 0), nullptr);
}

void SdkLogTable::listsLogsOfEqualTimeByName()
{
    MainWindowFixture f;
    QStringList expected;
    for (int i = 0; i < 60; ++i) {
        // In another order than by name: 7 and 60 are coprime.
        f.log(QString("QZviewer/%1.log").arg(i * 7 % 60, 2, 10, QChar('0')), "x", noon);
        if (i < 50)
            expected.append(QString("%1.log").arg(i, 2, 10, QChar('0')));
    }
    f.open();
    QCOMPARE(f.listedNames(), expected);
}

void SdkLogTable::sortsByMilliseconds()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log", "x", noon);
    f.log("QZviewer/c.log", "x", noon.addMSecs(2));
    f.log("QZviewer/b.log", "x", noon.addMSecs(1));
    f.open();
    QCOMPARE(f.listedNames(), QStringList({"c.log", "b.log", "a.log"}));
}

void SdkLogTable::carriesThePathAsToolTipOfEachItem()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log");
    f.open();
    for (int column = 1; column <= 3; ++column)
        QCOMPARE(QDir::cleanPath(f.table()->item(0, column)->toolTip()),
                 f.home.path("QZSDK/QZviewer/a.log"));
    QVERIFY(QFileInfo(f.table()->item(0, 1)->toolTip()).isAbsolute());
}

void SdkLogTable::roundsSizesUpSoThatAnEmptyFileHasOneKilobyte_data()
{
    QTest::addColumn<int>("bytes");
    QTest::addColumn<QString>("shown");
    QTest::newRow("empty") << 0 << "1 KB";
    QTest::newRow("one byte short of a kilobyte") << 1023 << "1 KB";
    QTest::newRow("a kilobyte exactly shows two") << 1024 << "2 KB";
    QTest::newRow("larger") << 102400 << "101 KB";
}

void SdkLogTable::roundsSizesUpSoThatAnEmptyFileHasOneKilobyte()
{
    QFETCH(int, bytes);
    MainWindowFixture f;
    f.log("QZviewer/a.log", QByteArray(bytes, 'x'));
    f.open();
    QTEST(f.cell(0, 3), "shown");
}

void SdkLogTable::listsEveryNameThatContainsDotLog()
{
    MainWindowFixture f;
    int seconds = 0;
    for (const char *name :
         {"x.log", "x.log.bak", "a.log.1", ".log.txt", "upper.LOG", "xlog", "x.txt"})
        f.log(QString("QZviewer/") + name, "x", noon.addSecs(-seconds++));
    f.open();
    // Names with a leading dot are hidden on some systems and not listed there.
    QStringList names = f.listedNames();
    names.removeAll(".log.txt");
    QCOMPARE(names, QStringList({"x.log", "x.log.bak", "a.log.1"}));
}

void SdkLogTable::listsNeitherFoldersNorLinks()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log");
    f.log("QZviewer/folder.log/inside.log");
    if (!makeLink(f.home.path("QZSDK/QZviewer/a.log"), f.home.path("QZSDK/QZviewer/link.log")))
        QSKIP("links cannot be created on this system");
    f.open();
    QCOMPARE(f.listedNames(), QStringList("a.log"));
}

void SdkLogTable::listsTheFiftyNewestOfSixty()
{
    MainWindowFixture f;
    QStringList expected;
    for (int i = 0; i < 60; ++i) {
        const QString name = QString("%1.log").arg(i, 2, 10, QChar('0'));
        f.log("QZviewer/" + name, "x", noon.addSecs(-i));
        if (i < 50)
            expected.append(name);
    }
    f.open();
    QCOMPARE(f.listedNames(), expected);
    QCOMPARE(f.table()->rowCount(), 50);
    QCOMPARE(newestSdkLogFiles(f.home.path("QZSDK/QZviewer"), 50).size(), 50);
}

void SdkLogTable::prefersTheClientsSource()
{
    MainWindowFixture f;
    f.log("another/other.log");
    f.log("QZviewer/a.log");
    f.log("zebra/z.log");
    f.open();
    const auto *combo = f.find<CComboBoxEx>("comboSource");
    QCOMPARE(combo->currentText(), "QZviewer");
    QCOMPARE(f.listedNames(), QStringList("a.log"));
    QStringList offered;
    for (int i = 0; i < combo->count(); ++i)
        offered.append(combo->itemText(i));
    QCOMPARE(offered,
             QDir(f.home.path("QZSDK")).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::NoSort));
}

void SdkLogTable::takesTheFirstSourceWithoutTheClients()
{
    MainWindowFixture f;
    f.log("qzviewer/other.log"); // names are case-sensitive
    f.open();
    QCOMPARE(f.find<CComboBoxEx>("comboSource")->currentText(), "qzviewer");
    QCOMPARE(f.listedNames(), QStringList("other.log"));
}

void SdkLogTable::printsAndFillsWhenTheSourceChanges()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log");
    f.log("other/b.log");
    f.open();
    f.output.take();
    f.find<CComboBoxEx>("comboSource")->setCurrentText("other");
    QCOMPARE(f.output.lines(), QStringList("\"other\""));
    QCOMPARE(f.listedNames(), QStringList("b.log"));
    QVERIFY(f.box(0) != nullptr);
    QCOMPARE(f.box(1), nullptr);
}

void SdkLogTable::staysEmptyWithoutAnSdkFolder()
{
    MainWindowFixture f;
    f.open();
    QCOMPARE(f.find<CComboBoxEx>("comboSource")->count(), 0);
    QCOMPARE(f.listedNames(), QStringList());
    QCOMPARE(f.table()->rowCount(), 50);
}

void SdkLogTable::staysEmptyWithAnSdkFolderWithoutSources()
{
    MainWindowFixture f;
    f.log("stray.log"); // in the SDK folder itself, not in a source
    f.open();
    QCOMPARE(f.find<CComboBoxEx>("comboSource")->count(), 0);
    QCOMPARE(f.listedNames(), QStringList());
}

void SdkLogTable::showsNothingForASourceThatVanished()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log");
    f.log("other/b.log");
    f.open();
    QVERIFY(QDir(f.home.path("QZSDK/other")).removeRecursively());
    f.find<CComboBoxEx>("comboSource")->setCurrentText("other");
    QCOMPARE(f.listedNames(), QStringList());
    QCOMPARE(f.box(0), nullptr);
}

void SdkLogTable::checksRowsAndHeaderAsTheHubSays()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log");
    f.log("other/b.log");
    f.open();
    QVERIFY(f.headerBox()->isChecked());
    QVERIFY(f.box(0)->isChecked());
    hub().sdkLog = false;
    f.find<CComboBoxEx>("comboSource")->setCurrentText("other");
    QVERIFY(!f.headerBox()->isChecked());
    QVERIFY(!f.box(0)->isChecked());
}

void SdkLogTable::unchecksTheHeaderWhenARowIsUnchecked()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log");
    f.log("QZviewer/b.log");
    f.open();
    f.box(1)->click();
    QVERIFY(!f.headerBox()->isChecked());
    QVERIFY(f.box(0)->isChecked());
}

void SdkLogTable::leavesTheHeaderUncheckedWhenEveryRowIsCheckedByHand()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log");
    f.open();
    f.box(0)->click();
    f.box(0)->click();
    QVERIFY(f.box(0)->isChecked());
    QVERIFY(!f.headerBox()->isChecked());
}

void SdkLogTable::setsEveryRowByTheHeader()
{
    MainWindowFixture f;
    for (const char *name : {"QZviewer/a.log", "QZviewer/b.log", "QZviewer/c.log"})
        f.log(name);
    f.open();
    QSignalSpy changes(f.box(2), &QCheckBox::stateChanged);
    f.headerBox()->click();
    for (int row = 0; row < 3; ++row)
        QVERIFY(!f.box(row)->isChecked());
    QCOMPARE(changes.count(), 1);
    f.headerBox()->click();
    for (int row = 0; row < 3; ++row)
        QVERIFY(f.box(row)->isChecked());
    QVERIFY(f.headerBox()->isChecked());
}

void SdkLogTable::putsTheRowBoxesInTheMiddleOfTheirCells()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log");
    f.log("QZviewer/b.log");
    f.open();
    for (int row = 0; row < 2; ++row) {
        const QWidget *cell = f.table()->cellWidget(row, 0);
        QCOMPARE(QByteArray(cell->metaObject()->className()), QByteArray("QWidget"));
        const auto *layout = qobject_cast<const QHBoxLayout *>(cell->layout());
        QVERIFY(layout != nullptr);
        QCOMPARE(layout->contentsMargins(), QMargins());
        QCOMPARE(layout->alignment(), Qt::AlignCenter);
        const auto *box = qobject_cast<const QUserCheckBox *>(cell->children().constLast());
        QVERIFY(box != nullptr);
        QCOMPARE(box->tableRow(), row);
    }
}

void SdkLogTable::showsTheContextMenuForAnItemOnly()
{
    MainWindowFixture f;
    const QString path = f.log("QZviewer/a.log");
    f.open();
    f.window->show();
    QVERIFY(QTest::qWaitForWindowExposed(f.window.get()));
    const QMenu *menu = contextMenu(f);
    QVERIFY(menu != nullptr);
    f.output.take();

    const QRect empty = f.table()->visualRect(f.table()->model()->index(5, 1));
    emit f.table()->customContextMenuRequested(empty.center());
    QVERIFY(!menu->isVisible());
    QVERIFY(f.output.lines().isEmpty());

    const QPoint at = f.table()->visualItemRect(f.table()->item(0, 1)).center();
    const QPoint expected =
        CConfiguration::fitOnScreen(f.table()->mapToGlobal(at), menu->sizeHint());
    emit f.table()->customContextMenuRequested(at);
    QVERIFY(menu->isVisible());
    QVERIFY2(f.output.lines().size() == 1, qPrintable(f.output.lines().join('\n')));
    QVERIFY(f.output.lines().constFirst().endsWith("a.log\""));
    // Including the frame, which some platforms add to all windows and QMenu::pos() excludes.
    QCOMPARE(menu->windowHandle()->framePosition(), expected);
}

void SdkLogTable::keepsTheContextMenuOnTheScreen()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log");
    f.open();
    f.window->show();
    QVERIFY(QTest::qWaitForWindowExposed(f.window.get()));
    const QMenu *menu = contextMenu(f);
    QVERIFY(menu != nullptr);
    const QPoint at = f.table()->visualItemRect(f.table()->item(0, 1)).center();
    const QPoint corner =
        QGuiApplication::primaryScreen()->geometry().bottomRight() - QPoint(10, 10);
    f.window->move(f.window->pos() + corner - f.table()->mapToGlobal(at));
    QTRY_COMPARE(f.table()->mapToGlobal(at), corner);

    const QPoint expected = CConfiguration::fitOnScreen(corner, menu->sizeHint());
    QVERIFY(expected.x() < corner.x() && expected.y() < corner.y());
    emit f.table()->customContextMenuRequested(at);
    QCOMPARE(menu->windowHandle()->framePosition(), expected);
}

void SdkLogTable::remembersTheEnteredItemAndReportsNone()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log");
    f.open();
    f.output.take();
    emit f.table()->itemEntered(f.table()->item(0, 1));
    QVERIFY(f.output.lines().isEmpty());
    emit f.table()->itemEntered(nullptr);
    QCOMPARE(f.output.lines(), QStringList("item is null."));
}

void SdkLogTable::movesToNoSpareRowByAnyKey_data()
{
    QTest::addColumn<QList<int>>("keys");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<int>("row");
    QTest::newRow("End") << QList<int>{Qt::Key_End} << int(Qt::NoModifier) << 2;
    QTest::newRow("Ctrl+End") << QList<int>{Qt::Key_End} << int(Qt::ControlModifier) << 2;
    QTest::newRow("Page Down") << QList<int>{Qt::Key_PageDown} << int(Qt::NoModifier) << 2;
    QTest::newRow("Down") << QList<int>{Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Down}
                          << int(Qt::NoModifier) << 2;
    QTest::newRow("Home") << QList<int>{Qt::Key_End, Qt::Key_Home} << int(Qt::NoModifier) << 0;
}

void SdkLogTable::movesToNoSpareRowByAnyKey()
{
    QFETCH(QList<int>, keys);
    QFETCH(int, modifiers);
    MainWindowFixture f;
    for (const char *name : {"QZviewer/a.log", "QZviewer/b.log", "QZviewer/c.log"})
        f.log(name);
    f.open();
    show(f);
    for (int key : keys)
        QTest::keyClick(f.table(), Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    QTEST(f.table()->currentRow(), "row");
    QCOMPARE(f.table()->currentColumn(), 1);
}

void SdkLogTable::movesNowhereInAnEmptyList()
{
    MainWindowFixture f;
    f.home.folder("QZSDK/QZviewer");
    f.open();
    show(f);
    for (int key : {Qt::Key_Down, Qt::Key_End, Qt::Key_Home, Qt::Key_Return, Qt::Key_Space})
        QTest::keyClick(f.table(), Qt::Key(key));
    QVERIFY(!f.table()->currentIndex().isValid());
}

void SdkLogTable::reloadsTheListOfTheOnlySourceByF5()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log", "x", noon);
    f.open();
    show(f);
    f.output.take();
    f.log("QZviewer/b.log", "x", noon.addSecs(1));
    QTest::keyClick(f.window.get(), Qt::Key_F5);
    QCOMPARE(f.listedNames(), QStringList({"b.log", "a.log"}));
    QCOMPARE(f.output.lines(), QStringList());
}

void SdkLogTable::ticksEveryRowByF5()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log");
    f.open();
    show(f);
    f.box(0)->click();
    QVERIFY(!f.headerBox()->isChecked());
    QTest::keyClick(f.window.get(), Qt::Key_F5);
    QVERIFY(f.box(0)->isChecked());
    QVERIFY(f.headerBox()->isChecked());
}

void SdkLogTable::keepsTheCursorOnItsFileWhenTheListIsReloaded()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log", "x", noon);
    f.log("QZviewer/b.log", "x", noon.addSecs(-1));
    f.open();
    show(f);
    f.table()->setCurrentCell(1, 2);
    f.log("QZviewer/new.log", "x", noon.addSecs(1));
    QTest::keyClick(f.window.get(), Qt::Key_F5);
    QVERIFY(f.table()->currentItem() != nullptr);
    QCOMPARE(f.table()->currentItem()->text(), "b.log");
    QCOMPARE(f.table()->selectedItems().size(), 3);
    QVERIFY(f.table()->currentItem()->isSelected());
}

void SdkLogTable::showsThatTheFolderHasNoLogs_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QByteArray>("lang");
    QTest::addColumn<QString>("hint");
    const QString english = "The folder %1 has no logs.";
    const QString chinese = "文件夹 %1 中没有日志。";
    QTest::newRow("source") << "QZSDK/QZviewer" << QByteArray("1") << english;
    QTest::newRow("source, Chinese") << "QZSDK/QZviewer" << QByteArray("0") << chinese;
    QTest::newRow("no source") << "QZSDK" << QByteArray("1") << english;
}

void SdkLogTable::showsThatTheFolderHasNoLogs()
{
    QFETCH(QString, folder);
    QFETCH(QByteArray, lang);
    QFETCH(QString, hint);
    MainWindowFixture f;
    f.useLanguage(lang);
    f.home.folder(folder);
    f.open();
    QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(f.table());
    QCOMPARE(spoken->text(QAccessible::Description),
             hint.arg(QDir::toNativeSeparators(f.home.path(folder))));
}

void SdkLogTable::drawsTheHintInAnEmptyListOnly()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log");
    f.home.folder("QZSDK/empty");
    f.open();
    show(f);
    auto *table = f.find<FileTable>("tableWidget");
    const auto drawsHint = [table] {
        const QImage with = table->viewport()->grab().toImage();
        table->setHintWhenEmpty({});
        return table->viewport()->grab().toImage() != with;
    };
    QCOMPARE(table->accessibleDescription(), QString());
    QVERIFY(!drawsHint());
    f.find<CComboBoxEx>("comboSource")->setCurrentText("empty");
    QVERIFY(drawsHint());
}

void SdkLogTable::showsNamesInToolTipsAsTheyAre()
{
    MainWindowFixture f;
    f.log("QZviewer/&amp;.log");
    f.open();
    show(f);
    const QPoint at = f.table()->visualItemRect(f.table()->item(0, 2)).center();
    QHelpEvent help(QEvent::ToolTip, at, f.table()->viewport()->mapToGlobal(at));
    QCoreApplication::sendEvent(f.table()->viewport(), &help);
    QTextDocument shown;
    shown.setHtml(QToolTip::text());
    QVERIFY2(shown.toPlainText().remove(QChar::LineFeed).endsWith("&amp;.log"),
             qPrintable(shown.toPlainText()));
}

QTEST_MAIN(SdkLogTable)
#include "tst_sdk_log_table.moc"
