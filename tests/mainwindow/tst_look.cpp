#include "CWaitDialog.h"
#include "CommonMessageBox.h"
#include "ExportInfoDlg.h"
#include "LogSettingsDlg.h"
#include "LogViewer.h"
#include "MainWindowFixture.h"

#include <QAbstractButton>
#include <QFileDialog>
#include <QLabel>
#include <QLibraryInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QStyleOption>

/// Whether all texts fit, in both languages.
class Look : public QObject
{
    Q_OBJECT

private slots:
    void cutsNoText_data();
    void cutsNoText();
    void cutsNoTitleOfAColumn_data();
    void cutsNoTitleOfAColumn();
    void showsLongSourcesWhole_data();
    void showsLongSourcesWhole();
    void showsTheWholeSourceAndPathInToolTips();
    void hasToolTipsInTheLanguage();
    void leavesThePicturesOfTheFolderButtonsTheirSize();
    void putsTheHeadersBoxAboveTheRowsBoxes();
    void startsTheScrollBarsBelowTheHeaders();
    void hasTheToolkitsOwnTextsInTheLanguage();
};

namespace {

const QString longName = "a_camera_client_with_a_name_that_nobody_would_give_to_it";

void addLanguages()
{
    QTest::addColumn<QByteArray>("language");
    QTest::newRow("English") << QByteArray("1");
    QTest::newRow("Chinese") << QByteArray("0");
}

/// Lays the window out as if shown.
void layOut(QWidget &window)
{
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
}

QString textOf(const QWidget &widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(&widget))
        return label->wordWrap() ? QString() : label->text();
    if (const auto *button = qobject_cast<const QAbstractButton *>(&widget))
        return button->text();
    return {};
}

/// The widgets that are narrower than their texts.
QStringList cutTexts(QWidget &window)
{
    layOut(window);
    QStringList cut;
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        const QString text = textOf(*widget);
        const bool ownWindow = widget->window() != &window;
        if (text.isEmpty() || ownWindow || !widget->isVisible())
            continue;
        const int frame =
            widget->inherits("QCheckBox") || widget->inherits("QRadioButton") ? 20 : 0;
        if (widget->width() < widget->fontMetrics().horizontalAdvance(text) + frame ||
            widget->height() < widget->fontMetrics().tightBoundingRect(text).height())
            cut.append(widget->objectName() + ' ' + text);
    }
    window.hide();
    return cut;
}

} // namespace

void Look::cutsNoText_data()
{
    addLanguages();
}

void Look::cutsNoText()
{
    QFETCH(QByteArray, language);
    MainWindowFixture f;
    f.useLanguage(language);
    f.open();
    QCOMPARE(cutTexts(*f.window), QStringList());
    QCOMPARE(cutTexts(*f.find<LogViewer>("LogViewer")), QStringList());
    QCOMPARE(cutTexts(*f.find<LogSettingsDlg>("LogSettingsDlg")), QStringList());
    CWaitDialog wait(nullptr);
    wait.setTitle("Export");
    QCOMPARE(cutTexts(wait), QStringList());
    CommonMessageBox question("Really?", QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(cutTexts(question), QStringList());
    layOut(*f.window);
    auto *notice = f.find<ExportInfoDlg>("ExportInfoDlg");
    notice->setMode(1); // the only mode in use
    notice->show();
    QCoreApplication::sendPostedEvents();
    for (const char *name : {"label_text", "btnView"}) {
        const auto *part = notice->findChild<QWidget *>(QString::fromLatin1(name));
        QVERIFY2(part->width() >= part->fontMetrics().horizontalAdvance(textOf(*part)), name);
    }
}

void Look::cutsNoTitleOfAColumn_data()
{
    addLanguages();
}

void Look::cutsNoTitleOfAColumn()
{
    QFETCH(QByteArray, language);
    MainWindowFixture f;
    f.useLanguage(language);
    f.open();
    layOut(*f.window);
    auto *viewer = f.find<LogViewer>("LogViewer");
    layOut(*viewer);
    const auto *lines = viewer->findChild<CTableWidget *>();
    for (const QTableWidget *table :
         {static_cast<const QTableWidget *>(f.table()), static_cast<const QTableWidget *>(lines)}) {
        const QHeaderView *header = table->horizontalHeader();
        for (int i = 0; i < header->count(); ++i) {
            const QString title = table->horizontalHeaderItem(i)->text();
            const int padding = 6; // in the level column, the only narrow one
            QVERIFY2(header->sectionSize(i) >=
                         header->fontMetrics().horizontalAdvance(title) + padding,
                     qPrintable(title));
        }
    }
}

void Look::showsLongSourcesWhole_data()
{
    QTest::addColumn<int>("others");
    QTest::newRow("alone") << 0;
    QTest::newRow("beside a scroll bar") << 30;
}

void Look::showsLongSourcesWhole()
{
    QFETCH(int, others);
    MainWindowFixture f;
    f.log(longName + "/a.log");
    for (int i = 0; i < others; ++i)
        f.log(QString("source %1/a.log").arg(i));
    f.open();
    layOut(*f.window);
    auto *box = f.find<CComboBoxEx>("comboSource");
    QCOMPARE(box->width(), 250);
    box->showPopup();
    QTRY_VERIFY(box->view()->isVisible());
    QCOMPARE(box->view()->verticalScrollBar()->isVisible(), others > 0);
    QVERIFY(box->view()->viewport()->width() >= box->view()->sizeHintForColumn(0));
    box->hidePopup();
}

void Look::showsTheWholeSourceAndPathInToolTips()
{
    MainWindowFixture f;
    f.log(longName + "/a.log");
    f.log("QZviewer/a.log");
    f.open();
    auto *box = f.find<CComboBoxEx>("comboSource");
    QCOMPARE(box->toolTip(), "QZviewer");
    box->setCurrentText(longName);
    QCOMPARE(box->toolTip(), longName);
    auto *path = f.find<QLineEdit>("lineEditPath");
    QCOMPARE(path->toolTip(), path->text());
    path->setText("/elsewhere.zip");
    QCOMPARE(path->toolTip(), path->text());
}

void Look::hasToolTipsInTheLanguage()
{
    const auto toolTips = [](const QByteArray &language) {
        MainWindowFixture f;
        f.useLanguage(language);
        f.open();
        return QStringList{f.find<QPushButton>("btnSettings")->toolTip(),
                           f.find<QPushButton>("btnSetExportPath")->toolTip()};
    };
    QCOMPARE(toolTips("1"), QStringList({"Log Level Setting", "Save ZIP File"}));
    QCOMPARE(toolTips("0"), QStringList({"日志等级", "保存ZIP压缩包"}));
}

void Look::leavesThePicturesOfTheFolderButtonsTheirSize()
{
    MainWindowFixture f;
    f.open();
    layOut(*f.window);
    f.window->activateWindow();
    auto *button = f.find<QPushButton>("btnSetExportPath");
    // A pixel of the picture's lower edge, inside the focus outline.
    const auto stroke = [button] { return button->grab().toImage().pixel(13, 19); };
    const QRgb atRest = stroke();
    button->setFocus(Qt::TabFocusReason);
    QTRY_VERIFY(button->hasFocus());
    QCOMPARE(stroke(), atRest);
}

void Look::putsTheHeadersBoxAboveTheRowsBoxes()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log");
    f.open();
    layOut(*f.window);
    f.window->grab(); // the header positions its check box when painted
    const auto middle = [&f](const QCheckBox *box) {
        QStyleOptionButton option;
        option.initFrom(box);
        const QRect mark = box->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, box);
        return box->mapTo(f.window.get(), mark.topLeft()).x() * 2 + mark.width();
    };
    QCOMPARE(middle(f.headerBox()), middle(f.box(0)));
}

void Look::startsTheScrollBarsBelowTheHeaders()
{
    MainWindowFixture f;
    f.open();
    layOut(*f.window);
    auto *viewer = f.find<LogViewer>("LogViewer");
    layOut(*viewer);
    for (const QTableWidget *table :
         {f.window->findChild<QTableWidget *>(), viewer->findChild<QTableWidget *>()}) {
        const QScrollBar *bar = table->verticalScrollBar();
        QVERIFY(bar->isVisible());
        QStyleOptionSlider option;
        option.initFrom(bar);
        option.orientation = Qt::Vertical;
        const QRect groove = bar->style()->subControlRect(QStyle::CC_ScrollBar, &option,
                                                          QStyle::SC_ScrollBarGroove, bar);
        QVERIFY(groove.top() >= table->horizontalHeader()->height());
    }
}

void Look::hasTheToolkitsOwnTextsInTheLanguage()
{
    if (!QFile::exists(QLibraryInfo::location(QLibraryInfo::TranslationsPath) + "/qtbase_zh_CN.qm"))
        QSKIP("Qt's catalogues are not installed: this system has a file dialog of its own");
    for (const bool english : {true, false}) {
        MainWindowFixture f;
        f.useLanguage(english ? "1" : "0");
        f.open();
        QCOMPARE(QFileDialog::tr("Look in:"), english ? "Look in:" : "查找范围：");
    }
}

QTEST_MAIN(Look)
#include "tst_look.moc"
