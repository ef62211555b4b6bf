#include "CQZLineEdit.h"
#include "CommonTitleBar.h"
#include "LogConfig.h"
#include "SettingsFixture.h"

#include <QFrame>
#include <QLabel>
#include <QMetaMethod>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QToolButton>
#include <QTranslator>

/// The settings window: its contents, and the values that it stores when it closes.
class LogSettingsDialog : public QObject
{
    Q_OBJECT

private slots:
    void isAFramelessWindowWithTheIconAndOnlyACloseButton();
    void hasTheNamedWidgets_data();
    void hasTheNamedWidgets();
    void hidesTheIntervalAndTheMaximum();
    void declaresItsSignalAndSlots();
    void connectsByNameWithoutAWarning();
    void startsWithTheFocusOnTheLevel();
    void namesEveryControlForAScreenReader();
    void readsInBothLanguages_data();
    void readsInBothLanguages();
    void closesByEscape();
    void handsOverTheLimitsWhenItCloses();
    void handsOverTheLimitsOnTheTimerWithoutASignal();
    void handsOverOnlyLimitsThatChanged();
    void hidesAndComesBack();
};

void LogSettingsDialog::isAFramelessWindowWithTheIconAndOnlyACloseButton()
{
    SettingsFixture f;
    f.open(infoFile);
    QCOMPARE(int(f.window->windowFlags()) & 0xfff, 0x803);
    QCOMPARE(f.window->windowModality(), Qt::NonModal);
    QVERIFY(!f.window->windowIcon().isNull());
    f.window->show();
    QVERIFY(!f.find<QToolButton>("btnMin")->isVisible());
    QVERIFY(!f.find<QToolButton>("btnMax")->isVisible());
    QVERIFY(f.find<QToolButton>("btnClose")->isVisible());
    const QRect before = f.window->geometry();
    QTest::mouseDClick(f.find<CommonTitleBar>("mainTitleBar"), Qt::LeftButton);
    QCOMPARE(f.window->geometry(), before);
    f.find<QToolButton>("btnClose")->click();
    QVERIFY(!f.window->isVisible());
}

void LogSettingsDialog::hasTheNamedWidgets_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<QString>("name");
    QTest::newRow("title bar") << QByteArray("CommonTitleBar") << "mainTitleBar";
    QTest::newRow("line") << QByteArray("QFrame") << "line";
    QTest::newRow("level label") << QByteArray("QLabel") << "lbLogSetting";
    QTest::newRow("INFO") << QByteArray("QRadioButton") << "radioINFO";
    QTest::newRow("DEBUG") << QByteArray("QRadioButton") << "radioDEBUG";
    QTest::newRow("FATAL") << QByteArray("QRadioButton") << "radioFATAL";
    QTest::newRow("path") << QByteArray("CQZLineEdit") << "lineEditPath";
    QTest::newRow("folder") << QByteArray("QPushButton") << "btnSetLogCfgPath";
    QTest::newRow("container") << QByteArray("QWidget") << "widget";
    QTest::newRow("interval label") << QByteArray("QLabel") << "lbUpdateTime";
    QTest::newRow("interval") << QByteArray("QSpinBox") << "updateTimeSpinBox";
    QTest::newRow("maximum label") << QByteArray("QLabel") << "lbMaxDisplay";
    QTest::newRow("maximum") << QByteArray("QSpinBox") << "maxDisplaySpinBox";
}

void LogSettingsDialog::hasTheNamedWidgets()
{
    QFETCH(QByteArray, type);
    QFETCH(QString, name);
    SettingsFixture f;
    f.open(infoFile);
    const auto *widget = f.window->findChild<QWidget *>(name);
    QVERIFY(widget != nullptr);
    QVERIFY(widget->inherits(type.constData()));
}

void LogSettingsDialog::hidesTheIntervalAndTheMaximum()
{
    SettingsFixture f;
    f.open(infoFile);
    f.window->show();
    QVERIFY(!f.find<QWidget>("widget")->isVisible());
    for (const char *name : {"updateTimeSpinBox", "maxDisplaySpinBox"}) {
        const auto *box = f.find<QSpinBox>(name);
        QVERIFY(!box->isVisible());
        QCOMPARE(box->minimum(), 0);
        QCOMPARE(box->maximum(), 100000);
        QCOMPARE(box->singleStep(), 1);
        QVERIFY(box->minimumWidth() >= 67);
    }
    QCOMPARE(f.find<QSpinBox>("updateTimeSpinBox")->value(), 1000);
    QCOMPARE(f.find<QSpinBox>("maxDisplaySpinBox")->value(), 100000);

    const auto *path = f.find<CQZLineEdit>("lineEditPath");
    QVERIFY(path->isReadOnly());
    QVERIFY(path->width() >= 200 && path->width() <= 250);
    QCOMPARE(path->height(), 24);
    QCOMPARE(f.find<QPushButton>("btnSetLogCfgPath")->size(), QSize(26, 26));
    QCOMPARE(f.find<QPushButton>("btnSetLogCfgPath")->text(), QString());
    QCOMPARE(f.find<CommonTitleBar>("mainTitleBar")->height(), 36);
}

void LogSettingsDialog::declaresItsSignalAndSlots()
{
    const QMetaObject &meta = LogSettingsDlg::staticMetaObject;
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        methods.append(QString::fromLatin1(meta.method(i).methodSignature()));
    QCOMPARE(methods, QStringList({"closeWnd()", "on_radioINFO_clicked()",
                                   "on_radioDEBUG_clicked()", "on_radioFATAL_clicked()",
                                   "on_btnSetLogCfgPath_clicked()", "OnAutoUpdateTimer()"}));
}

void LogSettingsDialog::connectsByNameWithoutAWarning()
{
    SettingsFixture f;
    f.open(infoFile);
    QCOMPARE(f.output.lines(), QStringList());
}

void LogSettingsDialog::startsWithTheFocusOnTheLevel()
{
    SettingsFixture f;
    f.open(debugFile);
    QCOMPARE(f.window->focusWidget(), f.radio("radioDEBUG"));
}

void LogSettingsDialog::namesEveryControlForAScreenReader()
{
    SettingsFixture f;
    f.open(infoFile);
    QVERIFY(!f.find<QLineEdit>("lineEditPath")->accessibleName().isEmpty());
    QVERIFY(!f.find<QPushButton>("btnSetLogCfgPath")->accessibleName().isEmpty());
    QVERIFY(!f.find<QPushButton>("btnSetLogCfgPath")->toolTip().isEmpty());
}

void LogSettingsDialog::readsInBothLanguages_data()
{
    QTest::addColumn<QString>("catalogue");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("levels");
    QTest::addColumn<QString>("interval");
    QTest::addColumn<QString>("maximum");
    QTest::addColumn<QString>("question");
    QTest::newRow("English") << ":/Linguist_EN.qm"
                             << "LogSettingsDlg"
                             << "Log Level Setting"
                             << "Interval for update(ms)"
                             << "Max.Displayed Logs"
                             << "Select Log Config File";
    QTest::newRow("Chinese") << ":/Linguist_CN.qm"
                             << "日志配置"
                             << "日志等级"
                             << "刷新时间"
                             << "最大显示行数"
                             << "选择日志配置文件";
}

void LogSettingsDialog::readsInBothLanguages()
{
    QFETCH(QString, catalogue);
    SettingsFixture f;
    f.open(infoFile);
    QTranslator translator;
    QVERIFY(translator.load(catalogue));
    QVERIFY(QCoreApplication::installTranslator(&translator));
    f.window->retranslate();
    QTEST(f.window->windowTitle(), "title");
    QTEST(f.find<QLabel>("lbTitle")->text(), "title");
    QTEST(f.find<QLabel>("lbLogSetting")->text(), "levels");
    QTEST(f.find<QLabel>("lbUpdateTime")->text(), "interval");
    QTEST(f.find<QLabel>("lbMaxDisplay")->text(), "maximum");
    QCOMPARE(f.radio("radioINFO")->text(), "INFO");
    QCOMPARE(f.radio("radioDEBUG")->text(), "DEBUG");
    QCOMPARE(f.radio("radioFATAL")->text(), "FATAL");
    QString caption;
    f.onAsked = [&caption](const QFileDialog &dialog) { caption = dialog.windowTitle(); };
    f.find<QPushButton>("btnSetLogCfgPath")->click();
    QTEST(caption, "question");
}

void LogSettingsDialog::closesByEscape()
{
    SettingsFixture f;
    f.open(infoFile);
    QSignalSpy closed(f.window.get(), &LogSettingsDlg::closeWnd);
    for (const char *name : {"radioINFO", "lineEditPath", "btnSetLogCfgPath"}) {
        f.window->show();
        QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
        f.find<QWidget>(name)->setFocus();
        QTest::keyClick(f.window->focusWidget(), Qt::Key_Escape);
        QVERIFY(!f.window->isVisible());
    }
    QCOMPARE(closed.count(), 3);
    QCOMPARE(hub().maxDisplayedLogs, 100000);
}

void LogSettingsDialog::handsOverTheLimitsWhenItCloses()
{
    SettingsFixture f;
    f.open(infoFile);
    QCOMPARE(hub().maxDisplayedLogs, 1000);
    QSignalSpy closed(f.window.get(), &LogSettingsDlg::closeWnd);
    f.window->show();
    QVERIFY(f.window->close());
    QVERIFY(!f.window->isVisible());
    QCOMPARE(closed.count(), 1);
    // Although nobody changed the spin boxes: this asymmetry is intended.
    QCOMPARE(hub().maxDisplayedLogs, 100000);
    QCOMPARE(hub().updateIntervalMs, 1000);
}

void LogSettingsDialog::handsOverTheLimitsOnTheTimerWithoutASignal()
{
    SettingsFixture f;
    f.open(infoFile);
    QSignalSpy closed(f.window.get(), &LogSettingsDlg::closeWnd);
    f.find<QSpinBox>("updateTimeSpinBox")->setValue(250);
    f.find<QSpinBox>("maxDisplaySpinBox")->setValue(1000);
    QVERIFY(QMetaObject::invokeMethod(f.window.get(), "OnAutoUpdateTimer"));
    QCOMPARE(hub().updateIntervalMs, 250);
    QCOMPARE(hub().maxDisplayedLogs, 1000);
    QCOMPARE(closed.count(), 0);
}

void LogSettingsDialog::handsOverOnlyLimitsThatChanged()
{
    SettingsFixture f;
    f.open(infoFile);
    f.window->show();
    f.window->close();
    hub().maxDisplayedLogs = 5;
    hub().updateIntervalMs = 6;
    f.window->show();
    f.window->close();
    QCOMPARE(hub().maxDisplayedLogs, 5);
    QCOMPARE(hub().updateIntervalMs, 6);
    f.find<QSpinBox>("maxDisplaySpinBox")->setValue(7);
    f.window->show();
    f.window->close();
    QCOMPARE(hub().maxDisplayedLogs, 7);
    QCOMPARE(hub().updateIntervalMs, 6);
}

void LogSettingsDialog::hidesAndComesBack()
{
    SettingsFixture f;
    f.open(infoFile);
    f.window->show();
    f.radio("radioFATAL")->click();
    f.window->close();
    f.properties(infoFile); // written by another program: showing does not reload it
    f.window->show();
    QVERIFY(f.window->isVisible());
    QCOMPARE(f.shownLevel(), "FATAL");
}

QTEST_MAIN(LogSettingsDialog)
#include "tst_log_settings_dialog.moc"
