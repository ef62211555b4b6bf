#include "CConfiguration.h"
#include "CMenuEx.h"
#include "CQZLineEdit.h"
#include "CTableWidget.h"
#include "CommonTitleBar.h"
#include "ViewerFixture.h"

#include <QActionGroup>
#include <QFontMetrics>
#include <QFrame>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLabel>
#include <QTextDocument>
#include <QToolTip>
#include <QTranslator>

class LogViewerWindow : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsSlotsInOrder();
    void connectsItsFormWithoutAWarning();
    void hasTheFormsWidgets();
    void setsUpItsTitleBar();
    void setsUpItsTable();
    void givesTheTableTheFocus();
    void namesItsColumnsAndActions();
    void elidesTheTextsOfTheFilterMenu();
    void showsTheFilterMenuUnderItsButton();
    void keepsTheFilterMenuOpenWhileColumnsAreTicked();
    void showsTheContextMenuOnALineAndWritesIt();
    void showsNoContextMenuOnEmptySpace();
    void showsAWholeLineUnchangedInItsToolTip();
    void speaksTheLanguageInstalled_data();
    void speaksTheLanguageInstalled();
    void keepsItsTableWhenItIsClosed();
    void reachesTheLevelBoxesByKeyboard();
    void resizesAtItsEdges();

private:
    static QMenu *contextMenu(const ViewerFixture &f);
    static QPoint shownAt(const QPoint &point);
};

QMenu *LogViewerWindow::contextMenu(const ViewerFixture &f)
{
    return qobject_cast<QMenu *>(f.find<QAction>("actionCopyAll")->associatedWidgets().value(0));
}

/// The position of a menu moved to @p point: the platform may add its frame.
QPoint LogViewerWindow::shownAt(const QPoint &point)
{
    QMenu menu;
    menu.addAction("entry");
    menu.move(point);
    menu.show();
    return menu.pos();
}

void LogViewerWindow::declaresItsSlotsInOrder()
{
    const QMetaObject &meta = LogViewer::staticMetaObject;
    QByteArrayList slotsFound;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Slot);
        slotsFound.append(meta.method(i).methodSignature());
    }
    QCOMPARE(slotsFound,
             QByteArrayList({"onActionFilter(QAction*)", "on_btnFilter_clicked()",
                             "on_checkBoxINFO_clicked(bool)", "on_checkBoxERROR_clicked(bool)",
                             "on_checkBoxWARN_clicked(bool)", "on_checkBoxDEBUG_clicked(bool)",
                             "on_tableWidget_customContextMenuRequested(QPoint)",
                             "on_btnSearch_clicked()", "onLineEditEnterPressed()",
                             "onActionCopyAllTriggered()", "onActionCopySelectedTriggered()"}));
}

void LogViewerWindow::connectsItsFormWithoutAWarning()
{
    const ViewerFixture f;
    QCOMPARE(f.output.lines(), QStringList());
}

void LogViewerWindow::hasTheFormsWidgets()
{
    const ViewerFixture f;
    QCOMPARE(f.find<QFrame>("line")->frameShape(), QFrame::HLine);
    for (const char *level : {"INFO", "ERROR", "WARN", "DEBUG"}) {
        auto *const box = f.find<QCheckBox>((QByteArray("checkBox") + level).constData());
        QCOMPARE(box->text(), QString::fromLatin1(level));
        QVERIFY(box->isChecked());
        QCOMPARE(box->minimumHeight(), 14);
        QCOMPARE(box->maximumHeight(), 14);
    }
    QCOMPARE(f.find<CQZLineEdit>("lineEdit")->minimumSize(), QSize(250, 25));
    QVERIFY(f.find<CQZLineEdit>("lineEdit")->text().isEmpty());
    QVERIFY(f.find<QPushButton>("btnSearch")->text().isEmpty());
    QVERIFY(!f.find<QPushButton>("btnSearch")->accessibleName().isEmpty());
    auto *const filter = f.find<QToolButton>("btnFilter");
    QVERIFY(filter->text().isEmpty());
    QVERIFY(!filter->accessibleName().isEmpty());
    QCOMPARE(filter->toolTip(), "More");
    QCOMPARE(filter->popupMode(), QToolButton::InstantPopup);
    QCOMPARE(f.table().metaObject()->className(), "CTableWidget");
    QVERIFY(!f.viewer.windowIcon().isNull());
    QCOMPARE(f.viewer.windowModality(), Qt::NonModal);
    QCOMPARE(f.viewer.minimumWidth(), 750);
    QCOMPARE(f.viewer.maximumSize(), QSize(10'000, 10'000));
}

void LogViewerWindow::setsUpItsTitleBar()
{
    ViewerFixture f;
    f.viewer.show();
    auto *const bar = f.find<CommonTitleBar>("mainTitleBar");
    QCOMPARE(bar->minimumHeight(), 36);
    QCOMPARE(bar->maximumHeight(), 36);
    QCOMPARE(bar->findChild<QLabel *>("lbTitle")->text(), "LogViewer");
    QVERIFY(bar->findChild<QToolButton *>("btnMax")->isHidden());
    QVERIFY(bar->findChild<QToolButton *>("btnMin")->isHidden());
    QVERIFY(bar->findChild<QToolButton *>("btnClose")->isVisible());
    const QRect before = f.viewer.geometry();
    bar->showMaxRestore();
    QVERIFY2(f.viewer.geometry() != before, "it may be maximised, by a double click");
    bar->showMaxRestore();
    QCOMPARE(f.viewer.geometry(), before);
}

void LogViewerWindow::setsUpItsTable()
{
    const ViewerFixture f;
    const QTableWidget &table = f.table();
    QCOMPARE(table.columnCount(), 4);
    QCOMPARE(table.rowCount(), 100'000);
    QVERIFY(table.verticalHeader()->isHidden());
    QCOMPARE(table.verticalHeader()->defaultSectionSize(), 32);
    QCOMPARE(table.rowHeight(0), 32);
    QCOMPARE(table.rowHeight(99'999), 32);
    QCOMPARE(table.columnWidth(0), 160);
    QCOMPARE(table.columnWidth(1), 65);
    QCOMPARE(table.columnWidth(2), 150);
    QVERIFY(table.horizontalHeader()->stretchLastSection());
    QCOMPARE(table.horizontalHeader()->textElideMode(), Qt::ElideRight);
    QVERIFY(!table.horizontalHeader()->highlightSections());
    QCOMPARE(table.horizontalScrollMode(), QAbstractItemView::ScrollPerPixel);
    QVERIFY(table.alternatingRowColors());
    QCOMPARE(table.editTriggers(), QAbstractItemView::NoEditTriggers);
    QCOMPARE(table.selectionBehavior(), QAbstractItemView::SelectRows);
    QVERIFY(!table.wordWrap());
    QCOMPARE(table.contextMenuPolicy(), Qt::CustomContextMenu);
}

void LogViewerWindow::givesTheTableTheFocus()
{
    const ViewerFixture f;
    QCOMPARE(f.viewer.focusWidget(), &f.table());
}

void LogViewerWindow::namesItsColumnsAndActions()
{
    const ViewerFixture f;
    const QStringList names{"Log Timestamp", "Log Level", "Log Source", "Log Message"};
    const auto *const menu = f.find<CMenuEx>("menuFilter");
    const QList<QAction *> actions = menu->actions();
    QCOMPARE(actions.size(), 4);
    QCOMPARE(menu->minimumWidth(), 180);
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(f.table().horizontalHeaderItem(i)->text(), names.at(i));
        QCOMPARE(actions.at(i)->data().toInt(), i + 1);
        QVERIFY(actions.at(i)->isCheckable());
        QVERIFY(actions.at(i)->isChecked());
        QVERIFY(!actions.at(i)->actionGroup()->isExclusive());
    }
    QCOMPARE(contextMenu(f)->actions().size(), 2);
    QCOMPARE(f.find<QAction>("actionCopyAll")->text(), "CopyAll");
    QCOMPARE(f.find<QAction>("actionCopySelected")->text(), "CopySelected");
}

void LogViewerWindow::elidesTheTextsOfTheFilterMenu()
{
    ViewerFixture f;
    auto *const menu = f.find<CMenuEx>("menuFilter");
    QFont font = menu->font();
    font.setPixelSize(40);
    menu->setFont(font);
    f.viewer.retranslate();
    const QString name = "Log Timestamp";
    const QString elided = QFontMetrics(font).elidedText(name, Qt::ElideRight, 115);
    QVERIFY(elided != name);
    QCOMPARE(menu->actions().at(0)->text(), elided);
    QCOMPARE(f.table().horizontalHeaderItem(0)->text(), name);
}

void LogViewerWindow::showsTheFilterMenuUnderItsButton()
{
    ViewerFixture f;
    f.viewer.move(20, 20);
    QVERIFY(f.show());
    auto *const button = f.find<QToolButton>("btnFilter");
    auto *const menu = f.find<CMenuEx>("menuFilter");
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(menu->isVisible());
    const QRect place(button->mapToGlobal(QPoint(0, 0)), button->size());
    QCOMPARE(menu->pos(), shownAt(CConfiguration::fitOnScreen(place, menu->sizeHint())));
    menu->hide();
}

void LogViewerWindow::keepsTheFilterMenuOpenWhileColumnsAreTicked()
{
    ViewerFixture f;
    f.viewer.show();
    auto *const menu = f.find<CMenuEx>("menuFilter");
    f.call("on_btnFilter_clicked");
    for (const int column : {1, 2}) {
        const QPoint entry = menu->actionGeometry(menu->actions().at(column)).center();
        QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, entry);
        QVERIFY(f.table().isColumnHidden(column));
        QVERIFY(menu->isVisible());
    }
    menu->hide();
}

void LogViewerWindow::showsTheContextMenuOnALineAndWritesIt()
{
    ViewerFixture f;
    QVERIFY(f.openLines({logLine("INFO"), logLine("WARN")}));
    QVERIFY(f.show());
    f.output.take();
    const QPoint pos = f.table().visualItemRect(f.table().item(1, 3)).center();
    emit f.table().customContextMenuRequested(pos);
    QMenu *const menu = contextMenu(f);
    QVERIFY(menu->isVisible());
    const QPoint point = f.table().viewport()->mapToGlobal(pos);
    QCOMPARE(menu->pos(), shownAt(CConfiguration::fitOnScreen(point, menu->sizeHint())));
    QCOMPARE(f.output.take(), QStringList{'"' + QString::fromLatin1(logLine("WARN")) + '"'});
    menu->hide();
}

void LogViewerWindow::showsNoContextMenuOnEmptySpace()
{
    ViewerFixture f;
    QVERIFY(f.openLines({logLine("INFO")}));
    QVERIFY(f.show());
    f.output.take();
    // A spare row, and the space below all rows.
    for (const int y : {3 * 32 + 5, 8 * 32})
        emit f.table().customContextMenuRequested(QPoint(20, y));
    QVERIFY(!contextMenu(f)->isVisible());
    QVERIFY(f.output.lines().isEmpty());
}

void LogViewerWindow::showsAWholeLineUnchangedInItsToolTip()
{
    ViewerFixture f;
    const QByteArray line =
        logLine("INFO", "<b>bold</b>  <img src='x'> &amp; " + QByteArray(500, 'x'));
    QVERIFY(f.openLines({line}));
    QVERIFY(f.show());
    const QPoint pos = f.table().visualItemRect(f.table().item(0, 3)).center();
    QHelpEvent event(QEvent::ToolTip, pos, f.table().viewport()->mapToGlobal(pos));
    QCoreApplication::sendEvent(f.table().viewport(), &event);
    QVERIFY(QToolTip::isVisible());
    QTextDocument shown;
    shown.setHtml(QToolTip::text());
    QCOMPARE(shown.toPlainText().remove('\n').toLatin1(), line);
    QVERIFY(shown.toPlainText().count('\n') > 1);
    QToolTip::hideText();
}

void LogViewerWindow::speaksTheLanguageInstalled_data()
{
    QTest::addColumn<QString>("catalogue");
    QTest::addColumn<QStringList>("texts");

    QTest::newRow("English") << ":/Linguist_EN.qm"
                             << QStringList{"LogViewer", "More",        "Log Timestamp",
                                            "Log Level", "Log Source",  "Log Message",
                                            "CopyAll",   "CopySelected"};
    QTest::newRow("Chinese") << ":/Linguist_CN.qm"
                             << QStringList{"日志浏览", "更多",     "日志时间",     "日志等级",
                                            "日志来源", "日志内容", "拷贝所有日志", "拷贝选择日志"};
}

void LogViewerWindow::speaksTheLanguageInstalled()
{
    QFETCH(QString, catalogue);
    ViewerFixture f;
    QTranslator translator;
    QVERIFY(translator.load(catalogue));
    QVERIFY(QCoreApplication::installTranslator(&translator));
    f.viewer.retranslate();
    QStringList texts{f.find<QLabel>("lbTitle")->text(),
                      f.find<QToolButton>("btnFilter")->toolTip()};
    for (int i = 0; i < 4; ++i) {
        texts.append(f.table().horizontalHeaderItem(i)->text());
        const QMenu &menu = *f.find<QMenu>("menuFilter");
        QCOMPARE(menu.actions().at(i)->text(),
                 menu.fontMetrics().elidedText(texts.last(), Qt::ElideRight, 115));
    }
    texts.append(f.find<QAction>("actionCopyAll")->text());
    texts.append(f.find<QAction>("actionCopySelected")->text());
    QTEST(texts, "texts");
    QCOMPARE(f.viewer.windowTitle(), texts.first());
    for (const char *level : {"INFO", "ERROR", "WARN", "DEBUG"})
        QCOMPARE(f.find<QCheckBox>((QByteArray("checkBox") + level).constData())->text(),
                 QString::fromLatin1(level));
    QCoreApplication::removeTranslator(&translator);
}

void LogViewerWindow::keepsItsTableWhenItIsClosed()
{
    ViewerFixture f;
    const QString path = f.folder.file("a.log", "one\n");
    QVERIFY(f.open(path));
    f.viewer.show();
    QVERIFY(f.viewer.close());
    QVERIFY(f.viewer.isHidden());
    QCOMPARE(f.text(0, 3), "one");
    QVERIFY(!f.open(path));
    QCOMPARE(f.text(0, 3), "one");
}

void LogViewerWindow::reachesTheLevelBoxesByKeyboard()
{
    ViewerFixture f;
    QVERIFY(f.openData("every_level.log"));
    QVERIFY(f.activate());
    f.find<QToolButton>("btnClose")->setFocus(); // precedes them in the tab order
    for (const char *box : {"checkBoxINFO", "checkBoxERROR", "checkBoxWARN", "checkBoxDEBUG"}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget()->objectName(), box);
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QCOMPARE(f.hiddenRows(), QList<int>{1});
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(f.find<QLineEdit>("lineEdit")->hasFocus());
}

void LogViewerWindow::resizesAtItsEdges()
{
    ViewerFixture f;
    f.viewer.move(50, 50);
    QVERIFY(f.show());
    QTest::mouseMove(&f.viewer, QPoint(1, 1));
    QTRY_COMPARE(f.viewer.cursor().shape(), Qt::SizeFDiagCursor);
}

QTEST_MAIN(LogViewerWindow)
#include "tst_log_viewer_window.moc"
