#include "CQZLineEdit.h"
#include "CommonTitleBar.h"
#include "MainWindowFixture.h"
#include "Skin.h"
#include "WorkingFolder.h"

#include <QFileDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMetaMethod>
#include <QPushButton>
#include <QToolButton>

class MainWindowForm : public QObject
{
    Q_OBJECT

private slots:
    void isAFramelessDialogOfItsSizeWithTheIcon();
    void hasTheNamedWidgets_data();
    void hasTheNamedWidgets();
    void hasTheCheckBoxesOfTheExportPanel_data();
    void hasTheCheckBoxesOfTheExportPanel();
    void showsTheExportPathReadOnly();
    void hidesTheWindowButtonsButClose();
    void keepsTheHiddenDeleteButtonWithItsMissingIcon();
    void givesTheFolderButtonItsFourPictures();
    void givesTheFolderButtonThePicturesBesideTheProgram();
    void declaresItsSlots();
    void connectsByNameWithoutAWarning();
    void ownsOneOfEachWindow();
    void readsInEnglish();
    void readsInChinese();
    void speaksChineseToScreenReaders();
    void speaksEnglishWithoutAClient();
    void asksOnceForALogConfigFileWithoutAClient();
    void letsTheTabKeyFollowTheReadingOrder();
    void namesEveryControlForAScreenReader();
    void worksWithoutASkin();
    void everyWindowHasTheFontsOfTheLanguage_data();
    void everyWindowHasTheFontsOfTheLanguage();
};

namespace {

constexpr int any = QWIDGETSIZE_MAX;

} // namespace

void MainWindowForm::isAFramelessDialogOfItsSizeWithTheIcon()
{
    MainWindowFixture f;
    f.open();
    QCOMPARE(f.window->size(), QSize(751, 612));
    QCOMPARE(int(f.window->windowFlags()) & 0xfff, 0x803);
    QCOMPARE(f.window->parentWidget(), nullptr);
    QCOMPARE(f.window->windowModality(), Qt::NonModal);
    QVERIFY(!f.window->windowIcon().isNull());
    QCOMPARE(f.window->objectName(), "Vantrel");
    QVERIFY(f.window->inherits("CommonDialog"));
}

void MainWindowForm::hasTheNamedWidgets_data()
{
    QTest::addColumn<QByteArray>("className");
    QTest::addColumn<QSize>("smallest");
    QTest::addColumn<QSize>("largest");

    QTest::newRow("mainTitleBar") << QByteArray("CommonTitleBar") << QSize(0, 36) << QSize(any, 36);
    QTest::newRow("lbSource") << QByteArray("QLabel") << QSize(100, 0) << QSize(160, any);
    QTest::newRow("comboSource") << QByteArray("CComboBoxEx") << QSize(250, 26) << QSize(250, 26);
    // Its minimum size is set by the skin, for the picture.
    QTest::newRow("btnSettings") << QByteArray("QPushButton") << QSize(30, 30) << QSize(30, 30);
    QTest::newRow("tableWidget") << QByteArray("CTableWidget") << QSize(0, 120) << QSize(any, any);
    QTest::newRow("lbNotifyType") << QByteArray("QLabel") << QSize(88, 16) << QSize(88, 16);
    QTest::newRow("lbExport") << QByteArray("QLabel") << QSize(88, 26) << QSize(88, 26);
    QTest::newRow("lineEditPath") << QByteArray("CQZLineEdit") << QSize(350, 24) << QSize(any, 24);
    QTest::newRow("btnSetExportPath")
        << QByteArray("QPushButton") << QSize(26, 26) << QSize(26, 26);
    QTest::newRow("btnExport") << QByteArray("QPushButton") << QSize(80, 32) << QSize(80, 32);
}

void MainWindowForm::hasTheNamedWidgets()
{
    QFETCH(QByteArray, className);
    MainWindowFixture f;
    f.open();
    const QWidget *widget = f.find<QWidget>(QTest::currentDataTag());
    QCOMPARE(QByteArray(widget->metaObject()->className()), className);
    QTEST(widget->minimumSize(), "smallest");
    QTEST(widget->maximumSize(), "largest");
}

void MainWindowForm::hasTheCheckBoxesOfTheExportPanel_data()
{
    QTest::addColumn<QString>("english");
    QTest::addColumn<bool>("checked");
    QTest::addColumn<int>("widest");

    QTest::newRow("checkBoxSDKLog") << "SDK Log" << true << 80;
    QTest::newRow("checkBoxNICInfo") << "NIC Information" << false << any;
    QTest::newRow("checkBoxSystemLog") << "System Log" << false << any;
    QTest::newRow("checkBoxSystemInfo") << "System Information" << false << any;
    QTest::newRow("checkBoxSystemDump") << "System Dump" << false << any;
    QTest::newRow("checkBoxClientDump") << "Client Dump" << false << any;
}

void MainWindowForm::hasTheCheckBoxesOfTheExportPanel()
{
    MainWindowFixture f;
    f.open();
    const auto *box = f.find<QCheckBox>(QTest::currentDataTag());
    QTEST(box->text(), "english");
    QTEST(box->isChecked(), "checked");
    QTEST(box->maximumWidth(), "widest");
    QCOMPARE(box->minimumHeight(), 16);
    QCOMPARE(box->maximumHeight(), 16);
}

void MainWindowForm::showsTheExportPathReadOnly()
{
    MainWindowFixture f;
    f.open();
    const auto *path = f.find<CQZLineEdit>("lineEditPath");
    QVERIFY(path->isReadOnly());
    QCOMPARE(path->text(), f.home.path("QZSDK/UserLogInfo.zip"));
    QCOMPARE(hub().exportPath, path->text());
}

void MainWindowForm::hidesTheWindowButtonsButClose()
{
    MainWindowFixture f;
    f.open();
    auto *bar = f.find<CommonTitleBar>("mainTitleBar");
    const auto hidden = [bar](const char *name) {
        return bar->findChild<QToolButton *>(name)->isHidden();
    };
    QVERIFY(hidden("btnMin"));
    QVERIFY(hidden("btnMax"));
    QVERIFY(!hidden("btnClose"));

    const QRect before = f.window->geometry();
    QTest::mouseDClick(bar, Qt::LeftButton, Qt::NoModifier, QPoint(300, 18));
    QCOMPARE(f.window->geometry(), before);
}

void MainWindowForm::keepsTheHiddenDeleteButtonWithItsMissingIcon()
{
    MainWindowFixture f;
    f.open();
    const auto buttons = f.window->findChildren<QToolButton *>("btnDelete");
    QCOMPARE(buttons.size(), 1);
    QVERIFY(buttons.constFirst()->isHidden());
    QCOMPARE(buttons.constFirst()->minimumSize(), QSize(30, 30));
    QCOMPARE(buttons.constFirst()->maximumSize(), QSize(30, 30));
    QVERIFY(buttons.constFirst()->icon().pixmap(30).isNull());
}

void MainWindowForm::givesTheFolderButtonItsFourPictures()
{
    MainWindowFixture f;
    f.open();
    const QString sheet = f.find<QPushButton>("btnSetExportPath")->styleSheet();
    const QList<QPair<QString, QString>> states{
        {"", "Normal"}, {":hover", "Hover"}, {":pressed", "Pressed"}, {":disabled", "Disable"}};
    QStringList rules;
    for (const auto &state : states)
        rules.append(QString("Vantrel QPushButton#btnSetExportPath%1 { background: none; image: "
                             "url(Skins/Default/Vantrel/Btn_Common_Folder_%2.png); }")
                         .arg(state.first, state.second));
    QCOMPARE(sheet, rules.join('\n'));
}

void MainWindowForm::givesTheFolderButtonThePicturesBesideTheProgram()
{
    const WorkingFolder withoutSkin;
    ScratchFolder program;
    const QString normal = "Skins/Default/Vantrel/Btn_Common_Folder_Normal.png";
    QImage picture(26, 26, QImage::Format_RGB32);
    picture.fill(Qt::red);
    program.file(normal);
    QVERIFY(picture.save(program.path(normal)));
    Skin::setFallbackFolder(program.path());
    MainWindowFixture f;
    f.open();
    const QImage button = f.find<QPushButton>("btnSetExportPath")->grab().toImage();
    QCOMPARE(button.pixelColor(button.rect().center()), QColor(Qt::red));
}

void MainWindowForm::declaresItsSlots()
{
    const QMetaObject &meta = Vantrel::staticMetaObject;
    QStringList signatures;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        signatures.append(QString::fromLatin1(meta.method(i).methodSignature()));
    QCOMPARE(signatures, QStringList({"showWaitDlg()",
                                      "on_comboSource_currentTextChanged(QString)",
                                      "on_btnSettings_clicked()",
                                      "on_tableWidget_itemClicked(QTableWidgetItem*)",
                                      "on_tableWidget_itemDoubleClicked(QTableWidgetItem*)",
                                      "on_tableWidget_itemEntered(QTableWidgetItem*)",
                                      "on_tableWidget_customContextMenuRequested(QPoint)",
                                      "onAllCheckStausChange(bool)",
                                      "onCheckStateChange(int)",
                                      "on_checkBoxSystemLog_clicked(bool)",
                                      "on_checkBoxSDKLog_clicked(bool)",
                                      "on_checkBoxNICInfo_clicked(bool)",
                                      "on_checkBoxSystemInfo_clicked(bool)",
                                      "on_checkBoxSystemDump_clicked(bool)",
                                      "onCheckBoxClientDumpClicked(bool)",
                                      "on_btnSetExportPath_clicked()",
                                      "on_btnExport_clicked()",
                                      "on_lineEditPath_textChanged(QString)",
                                      "onShowWaitDlg()",
                                      "onCloseWaitDlg()",
                                      "onShowExportInfoDlg(EN_IMAGE_MSG_MODE,QString)",
                                      "onActionExportAllTriggered()",
                                      "onActionExportSelectedTriggered()"}));
    QCOMPARE(meta.method(meta.methodOffset()).methodType(), QMetaMethod::Signal);
}

void MainWindowForm::connectsByNameWithoutAWarning()
{
    MainWindowFixture f;
    f.open();
    QVERIFY2(!f.output.contains("connectSlotsByName"), qPrintable(f.output.lines().join('\n')));
    QVERIFY(!f.output.contains("No such"));
}

void MainWindowForm::ownsOneOfEachWindow()
{
    MainWindowFixture f;
    f.open();
    QStringList windows;
    for (const QObject *child : f.window->children()) {
        const auto *widget = qobject_cast<const QWidget *>(child);
        if (widget != nullptr &&
            (widget->inherits("CommonDialog") || widget->inherits("QDialog"))) {
            windows.append(QString::fromLatin1(widget->metaObject()->className()));
            QVERIFY(widget->isHidden());
        }
    }
    QCOMPARE(windows, QStringList({"ExportInfoDlg", "LogSettingsDlg", "LogViewer"}));
}

void MainWindowForm::readsInEnglish()
{
    MainWindowFixture f;
    f.open();
    QCOMPARE(f.window->windowTitle(), "Vantrel");
    QCOMPARE(f.find<QLabel>("lbTitle")->text(), "Vantrel");
    QCOMPARE(f.find<QLabel>("lbSource")->text(), "LogSource(Process Name)");
    QCOMPARE(f.find<QLabel>("lbNotifyType")->text(), "Event Type");
    QCOMPARE(f.find<QLabel>("lbExport")->text(), "Export to File");
    QCOMPARE(f.find<QPushButton>("btnExport")->text(), "Export");
    QCOMPARE(f.find<QPushButton>("btnSettings")->text(), QString());
    QCOMPARE(f.table()->horizontalHeaderItem(0)->text(), QString());
    QCOMPARE(f.table()->horizontalHeaderItem(1)->text(), "File Time");
    QCOMPARE(f.table()->horizontalHeaderItem(2)->text(), "File Name");
    QCOMPARE(f.table()->horizontalHeaderItem(3)->text(), "File Size");
    QCOMPARE(f.find<QAction>("actionExportAll")->text(), "Export All SDK Log");
    QCOMPARE(f.find<QAction>("actionExportSelected")->text(), "Export Selected SDK Log");
    QCOMPARE(f.find<QLabel>("label_text")->text(), "Export info finished !"); // not shown yet
}

void MainWindowForm::readsInChinese()
{
    MainWindowFixture f;
    f.useLanguage("0");
    f.open();
    QCOMPARE(f.find<QLabel>("lbTitle")->text(), "Vantrel");
    QCOMPARE(f.find<QLabel>("lbSource")->text(), "日志源（进程名）");
    QCOMPARE(f.find<QLabel>("lbNotifyType")->text(), "导出选项");
    QCOMPARE(f.find<QCheckBox>("checkBoxSDKLog")->text(), "SDK日志");
    QCOMPARE(f.find<QCheckBox>("checkBoxNICInfo")->text(), "网卡信息");
    QCOMPARE(f.find<QCheckBox>("checkBoxSystemLog")->text(), "系统日志");
    QCOMPARE(f.find<QCheckBox>("checkBoxSystemInfo")->text(), "系统信息");
    QCOMPARE(f.find<QCheckBox>("checkBoxSystemDump")->text(), "系统蓝屏日志");
    QCOMPARE(f.find<QCheckBox>("checkBoxClientDump")->text(), "客户端Dump");
    QCOMPARE(f.find<QLabel>("lbExport")->text(), "导出路径");
    QCOMPARE(f.find<QPushButton>("btnExport")->text(), "导出");
    QCOMPARE(f.table()->horizontalHeaderItem(1)->text(), "文件时间");
    QCOMPARE(f.table()->horizontalHeaderItem(2)->text(), "文件名称");
    QCOMPARE(f.table()->horizontalHeaderItem(3)->text(), "文件大小");
    QCOMPARE(f.find<QAction>("actionExportAll")->text(), "导出所有SDK日志");
    QCOMPARE(f.find<QAction>("actionExportSelected")->text(), "导出选择SDK日志");
    QCOMPARE(f.find<QLabel>("label_text")->text(), "导出信息结束！"); // not shown yet
}

void MainWindowForm::speaksChineseToScreenReaders()
{
    MainWindowFixture f;
    f.useLanguage("0");
    f.open();
    QCOMPARE(f.find<QComboBox>("comboSource")->accessibleName(), "日志源");
    QCOMPARE(f.find<QPushButton>("btnSetExportPath")->accessibleName(), "选择ZIP文件");
    // The title bar and the header exist before the catalogue is loaded.
    QTRY_COMPARE(f.find<QToolButton>("btnClose")->accessibleName(), "关闭");
    QTRY_COMPARE(f.headerBox()->accessibleName(), "所有行");
}

void MainWindowForm::speaksEnglishWithoutAClient()
{
    MainWindowFixture f;
    f.environment.client.iconPath.clear();
    ModalDialog::setRunner([](QDialog &) { return int(QDialog::Rejected); });
    f.useLanguage("0");
    f.open();
    QCOMPARE(f.find<QPushButton>("btnExport")->text(), "Export");
}

void MainWindowForm::asksOnceForALogConfigFileWithoutAClient()
{
    MainWindowFixture f;
    f.environment.client = {};
    QStringList asked;
    bool anythingVisible = false;
    ModalDialog::setRunner([&asked, &anythingVisible](QDialog &dialog) {
        asked.append(qobject_cast<QFileDialog *>(&dialog) != nullptr ? dialog.windowTitle()
                                                                     : "no file dialog");
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (const QWidget *shown : windows)
            anythingVisible = anythingVisible || shown->isVisible();
        return int(QDialog::Rejected);
    });
    f.open();
    f.window->show();
    QCOMPARE(asked, QStringList{"Select Log Config File"});
    QVERIFY2(!anythingVisible, "the question comes before the main window");
}

void MainWindowForm::letsTheTabKeyFollowTheReadingOrder()
{
    MainWindowFixture f;
    f.open();
    const QStringList expected{"comboSource",        "btnSettings",        "tableWidget",
                               "checkBoxSDKLog",     "checkBoxNICInfo",    "checkBoxSystemLog",
                               "checkBoxSystemInfo", "checkBoxSystemDump", "checkBoxClientDump",
                               "lineEditPath",       "btnSetExportPath",   "btnExport"};
    QStringList order;
    const QWidget *widget = f.find<QWidget>("comboSource");
    for (int i = 0; i < 200 && order.size() < expected.size(); ++i) {
        if (expected.contains(widget->objectName()))
            order.append(widget->objectName());
        widget = widget->nextInFocusChain();
    }
    QCOMPARE(order, expected);
}

void MainWindowForm::namesEveryControlForAScreenReader()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log");
    f.open();
    for (const char *name :
         {"comboSource", "btnSettings", "tableWidget", "lineEditPath", "btnSetExportPath"})
        QVERIFY2(!f.find<QWidget>(name)->accessibleName().isEmpty(), name);
    QCOMPARE(f.box(0)->accessibleName(), "a.log");
    QVERIFY(!f.headerBox()->accessibleName().isEmpty());
}

void MainWindowForm::worksWithoutASkin()
{
    const WorkingFolder unstyled;
    MainWindowFixture f;
    f.open();
    QVERIFY(f.window->styleSheet().isEmpty());
    f.window->show();
    QVERIFY(QTest::qWaitForWindowExposed(f.window.get()));
    QCOMPARE(f.find<QPushButton>("btnExport")->text(), "Export");
}

void MainWindowForm::everyWindowHasTheFontsOfTheLanguage_data()
{
    QTest::addColumn<QByteArray>("language");
    QTest::addColumn<QString>("family");

    QTest::newRow("English") << QByteArray("1") << "Segoe UI";
    QTest::newRow("Chinese") << QByteArray("0") << "Microsoft YaHei UI";
}

void MainWindowForm::everyWindowHasTheFontsOfTheLanguage()
{
    QFETCH(QByteArray, language);
    MainWindowFixture f;
    f.useLanguage(language);
    f.open();
    f.window->show();
    QVERIFY(QTest::qWaitForWindowExposed(f.window.get()));
    for (const char *name : {"lbSource", "lbLogSetting", "lbUpdateTime", "lbTitle"}) {
        const auto labels = f.window->findChildren<QLabel *>(QString::fromLatin1(name));
        QVERIFY2(!labels.isEmpty(), name);
        for (QLabel *label : labels) {
            label->ensurePolished();
            QTEST(label->font().family(), "family");
        }
    }
}

QTEST_MAIN(MainWindowForm)
#include "tst_main_window_form.moc"
