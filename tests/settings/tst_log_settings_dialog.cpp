#include "CQZLineEdit.h"
#include "CommonTitleBar.h"
#include "Faults.h"
#include "SettingsFixture.h"

#include <QFrame>
#include <QLabel>
#include <QMetaMethod>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QToolButton>
#include <QTranslator>

/// The settings window: where its file comes from, which level it shows and sets.
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
    void findsTheFileBesideTheIcon_data();
    void findsTheFileBesideTheIcon();
    void findsNoFileWithoutARegistration();
    void findsNoFileWhereItIsMissing();
    void findsNoFileThatMayNotBeRead();
    void asksForAFileAtStartWhenThereIsNone();
    void asksInTheAgreedWay();
    void changesNothingWhenTheFileDialogIsCancelled();
    void takesTheChosenFile();
    void doesNotReadTheSameFileTwice();
    void comparesChosenFilesCaseSensitively();
    void showsTheLevelOfTheFile_data();
    void showsTheLevelOfTheFile();
    void keepsTheLevelShownWhenTheChosenFileNamesNone();
    void keepsTheLevelShownWhenTheChosenFileIsUnreadable();
    void setsTheLevelThatIsClicked_data();
    void setsTheLevelThatIsClicked();
    void fallsBackToTheStoredLevelWhenTheFileIsGone();
    void setsTheLevelInAFileWithANonAsciiName();
    void handsOverTheLimitsWhenItCloses();
    void handsOverTheLimitsOnTheTimerWithoutASignal();
    void handsOverOnlyLimitsThatChanged();
    void hidesAndComesBack();
};

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

const QByteArray infoFile = "log4cpp.rootCategory = INFO\n"
                            "log4cpp.category.qzsdk = INFO, a_qzsdk\n";
const QByteArray debugFile = "log4cpp.rootCategory = DEBUG\n"
                             "log4cpp.category.qzsdk = DEBUG, a_qzsdk\n";

CConfiguration &hub()
{
    return *CConfiguration::instance();
}

} // namespace

void LogSettingsDialog::isAFramelessWindowWithTheIconAndOnlyACloseButton()
{
    SettingsFixture f;
    f.properties(infoFile);
    f.open();
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
    QTest::newRow("title bar") << QByteArray("CommonTitleBar") << text("mainTitleBar");
    QTest::newRow("line") << QByteArray("QFrame") << text("line");
    QTest::newRow("level label") << QByteArray("QLabel") << text("lbLogSetting");
    QTest::newRow("INFO") << QByteArray("QRadioButton") << text("radioINFO");
    QTest::newRow("DEBUG") << QByteArray("QRadioButton") << text("radioDEBUG");
    QTest::newRow("FATAL") << QByteArray("QRadioButton") << text("radioFATAL");
    QTest::newRow("path") << QByteArray("CQZLineEdit") << text("lineEditPath");
    QTest::newRow("folder") << QByteArray("QPushButton") << text("btnSetLogCfgPath");
    QTest::newRow("container") << QByteArray("QWidget") << text("widget");
    QTest::newRow("interval label") << QByteArray("QLabel") << text("lbUpdateTime");
    QTest::newRow("interval") << QByteArray("QSpinBox") << text("updateTimeSpinBox");
    QTest::newRow("maximum label") << QByteArray("QLabel") << text("lbMaxDisplay");
    QTest::newRow("maximum") << QByteArray("QSpinBox") << text("maxDisplaySpinBox");
}

void LogSettingsDialog::hasTheNamedWidgets()
{
    QFETCH(QByteArray, type);
    QFETCH(QString, name);
    SettingsFixture f;
    f.properties(infoFile);
    f.open();
    const auto *widget = f.window->findChild<QWidget *>(name);
    QVERIFY(widget != nullptr);
    QVERIFY(widget->inherits(type.constData()));
}

void LogSettingsDialog::hidesTheIntervalAndTheMaximum()
{
    SettingsFixture f;
    f.properties(infoFile);
    f.open();
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
    QCOMPARE(methods,
             QStringList({text("closeWnd()"), text("on_radioINFO_clicked()"),
                          text("on_radioDEBUG_clicked()"), text("on_radioFATAL_clicked()"),
                          text("on_btnSetLogCfgPath_clicked()"), text("OnAutoUpdateTimer()")}));
}

void LogSettingsDialog::connectsByNameWithoutAWarning()
{
    SettingsFixture f;
    f.properties(infoFile);
    f.open();
    QCOMPARE(f.output.lines(), QStringList());
}

void LogSettingsDialog::startsWithTheFocusOnTheLevel()
{
    SettingsFixture f;
    f.properties(debugFile);
    f.open();
    QCOMPARE(f.window->focusWidget(), f.radio("radioDEBUG"));
}

void LogSettingsDialog::namesEveryControlForAScreenReader()
{
    SettingsFixture f;
    f.properties(infoFile);
    f.open();
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
    QTest::newRow("English") << text(":/Linguist_EN.qm") << text("LogSettingsDlg")
                             << text("Log Level Setting") << text("Interval for update(ms)")
                             << text("Max.Displayed Logs") << text("Select Log Config File");
    QTest::newRow("Chinese") << text(":/Linguist_CN.qm") << text("日志配置") << text("日志等级")
                             << text("刷新时间") << text("最大显示行数")
                             << text("选择日志配置文件");
}

void LogSettingsDialog::readsInBothLanguages()
{
    QFETCH(QString, catalogue);
    SettingsFixture f;
    f.properties(infoFile);
    f.open();
    QTranslator translator;
    QVERIFY(translator.load(catalogue));
    QVERIFY(QCoreApplication::installTranslator(&translator));
    f.window->retranslate();
    QTEST(f.window->windowTitle(), "title");
    QTEST(f.find<QLabel>("lbTitle")->text(), "title");
    QTEST(f.find<QLabel>("lbLogSetting")->text(), "levels");
    QTEST(f.find<QLabel>("lbUpdateTime")->text(), "interval");
    QTEST(f.find<QLabel>("lbMaxDisplay")->text(), "maximum");
    QCOMPARE(f.radio("radioINFO")->text(), text("INFO"));
    QCOMPARE(f.radio("radioDEBUG")->text(), text("DEBUG"));
    QCOMPARE(f.radio("radioFATAL")->text(), text("FATAL"));
    QString caption;
    f.onAsked = [&caption](const QFileDialog &dialog) { caption = dialog.windowTitle(); };
    f.find<QPushButton>("btnSetLogCfgPath")->click();
    QTEST(caption, "question");
}

void LogSettingsDialog::findsTheFileBesideTheIcon_data()
{
    QTest::addColumn<QString>("icon"); // below the client's folder
    QTest::addColumn<QString>("separators");
    QTest::newRow("with an index") << text("/QZviewer.exe,0") << text("/");
    QTest::newRow("plain") << text("/QZviewer.exe") << text("\\/");
    QTest::newRow("backslash") << text("\\QZviewer.exe,0") << text("\\");
    QTest::newRow("name with blanks") << text("/the viewer, new.exe,-101") << text("/");
    QTest::newRow("only the folder") << text("/") << text("/");
}

void LogSettingsDialog::findsTheFileBesideTheIcon()
{
    QFETCH(QString, icon);
    QFETCH(QString, separators);
    SettingsFixture f;
    const QString path = f.properties(debugFile);
    f.client.iconPath = f.scratch.path(text("Client")) + icon;
    f.client.pathSeparators = separators;
    f.open();
    QCOMPARE(f.window->findDefaultLogConfig(), path);
    QCOMPARE(hub().logConfigPath, path);
    QCOMPARE(f.find<QLineEdit>("lineEditPath")->text(), path);
    QCOMPARE(f.asked, 0);
}

void LogSettingsDialog::findsNoFileWithoutARegistration()
{
    SettingsFixture f;
    f.properties(infoFile);
    f.client.iconPath.clear();
    f.open();
    QVERIFY(f.window->findDefaultLogConfig().isNull());
    QCOMPARE(f.asked, 1);
}

void LogSettingsDialog::findsNoFileWhereItIsMissing()
{
    SettingsFixture f;
    f.open();
    QCOMPARE(f.window->findDefaultLogConfig(), QString());
    f.scratch.folder(SettingsFixture::defaultName()); // a folder of that name is no file either
    QCOMPARE(f.window->findDefaultLogConfig(), QString());
}

void LogSettingsDialog::findsNoFileThatMayNotBeRead()
{
    if (!OrdinaryUser::available())
        QSKIP("no way to take a permission away here");
    SettingsFixture f;
    const QString path = f.properties(infoFile);
    f.open();
    QVERIFY(QFile::setPermissions(f.scratch.path(), QFileDevice::Permissions(0x7777)));
    QVERIFY(QFile::setPermissions(path, QFileDevice::Permissions(0x2222)));
    const OrdinaryUser user;
    QVERIFY(QFileInfo(path).isFile());
    QCOMPARE(f.window->findDefaultLogConfig(), QString());
}

void LogSettingsDialog::asksForAFileAtStartWhenThereIsNone()
{
    SettingsFixture f;
    f.chooses = f.scratch.file(text("mine.properties"), debugFile);
    f.open();
    QCOMPARE(f.asked, 1);
    QCOMPARE(hub().logConfigPath, f.chooses);
    QCOMPARE(f.find<QLineEdit>("lineEditPath")->text(), f.chooses);
    QCOMPARE(f.shownLevel(), text("DEBUG"));
}

void LogSettingsDialog::asksInTheAgreedWay()
{
    SettingsFixture f;
    bool seen = false;
    f.onAsked = [&seen](const QFileDialog &dialog) {
        QCOMPARE(dialog.parentWidget(), nullptr);
        QCOMPARE(dialog.windowTitle(), text("Select Log Config File"));
        QCOMPARE(dialog.nameFilters(), QStringList{text("*.properties")});
        QCOMPARE(dialog.acceptMode(), QFileDialog::AcceptOpen);
        QCOMPARE(dialog.viewMode(), QFileDialog::List);
        // What is asked for is a close button only; a title bar comes with it.
        QCOMPARE(dialog.windowType(), Qt::Dialog);
        QVERIFY(dialog.windowFlags().testFlag(Qt::WindowCloseButtonHint));
        QVERIFY(!(dialog.windowFlags() &
                  (Qt::WindowContextHelpButtonHint | Qt::WindowMinMaxButtonsHint)));
        seen = true;
    };
    f.open();
    QVERIFY(seen);
}

void LogSettingsDialog::changesNothingWhenTheFileDialogIsCancelled()
{
    SettingsFixture f;
    f.open();
    QCOMPARE(f.asked, 1);
    QCOMPARE(hub().logConfigPath, QString());
    QCOMPARE(f.find<QLineEdit>("lineEditPath")->text(), QString());
    QCOMPARE(f.shownLevel(), text("INFO"));

    f.chooses = f.scratch.file(text("mine.properties"), debugFile);
    f.find<QPushButton>("btnSetLogCfgPath")->click();
    f.chooses.clear();
    f.find<QPushButton>("btnSetLogCfgPath")->click();
    QCOMPARE(f.asked, 3);
    QCOMPARE(hub().logConfigPath, f.scratch.path(text("mine.properties")));
    QCOMPARE(f.shownLevel(), text("DEBUG"));
}

void LogSettingsDialog::takesTheChosenFile()
{
    SettingsFixture f;
    const QString first = f.properties(infoFile);
    f.open();
    f.chooses = f.scratch.file(text("mine.properties"), debugFile);
    f.find<QPushButton>("btnSetLogCfgPath")->click();
    QCOMPARE(hub().logConfigPath, f.chooses);
    QCOMPARE(f.find<QLineEdit>("lineEditPath")->text(), f.chooses);
    QCOMPARE(f.shownLevel(), text("DEBUG"));
    f.radio("radioFATAL")->click();
    QVERIFY(f.scratch.read(text("mine.properties")).contains("FATAL, a_qzsdk"));
    QCOMPARE(f.written(), infoFile);
}

void LogSettingsDialog::doesNotReadTheSameFileTwice()
{
    SettingsFixture f;
    f.chooses = f.scratch.file(text("mine.properties"), debugFile);
    f.open();
    QCOMPARE(f.shownLevel(), text("DEBUG"));
    f.scratch.file(text("mine.properties"), infoFile);
    f.find<QPushButton>("btnSetLogCfgPath")->click();
    QCOMPARE(f.asked, 2);
    QCOMPARE(f.shownLevel(), text("DEBUG"));
}

void LogSettingsDialog::comparesChosenFilesCaseSensitively()
{
    SettingsFixture f;
    f.chooses = f.scratch.file(text("mine.properties"), infoFile);
    f.open();
    f.chooses = f.scratch.file(text("Mine.properties"), debugFile);
    f.find<QPushButton>("btnSetLogCfgPath")->click();
    QCOMPARE(hub().logConfigPath, f.chooses);
    QCOMPARE(f.shownLevel(), text("DEBUG"));
}

void LogSettingsDialog::showsTheLevelOfTheFile_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("shown");
    QTest::newRow("INFO") << infoFile << text("INFO");
    QTest::newRow("DEBUG") << debugFile << text("DEBUG");
    QTest::newRow("FATAL") << QByteArray("log4cpp.rootCategory = FATAL") << text("FATAL");
    QTest::newRow("WARN leaves INFO") << QByteArray("log4cpp.rootCategory = WARN") << text("INFO");
    QTest::newRow("ERROR leaves INFO")
        << QByteArray("log4cpp.rootCategory = ERROR") << text("INFO");
    QTest::newRow("no root line leaves INFO") << QByteArray("x") << text("INFO");
    QTest::newRow("empty leaves INFO") << QByteArray() << text("INFO");
}

void LogSettingsDialog::showsTheLevelOfTheFile()
{
    QFETCH(QByteArray, contents);
    SettingsFixture f;
    f.properties(contents);
    f.open();
    QTEST(f.shownLevel(), "shown");
    QCOMPARE(hub().logLevel, 0U); // what is shown was not set by us
    QCOMPARE(f.written(), contents);
}

void LogSettingsDialog::keepsTheLevelShownWhenTheChosenFileNamesNone()
{
    SettingsFixture f;
    f.properties(debugFile);
    f.open();
    f.chooses = f.scratch.file(text("warn.properties"), "log4cpp.rootCategory = WARN, a\n");
    f.find<QPushButton>("btnSetLogCfgPath")->click();
    QCOMPARE(f.shownLevel(), text("DEBUG"));
}

void LogSettingsDialog::keepsTheLevelShownWhenTheChosenFileIsUnreadable()
{
    SettingsFixture f;
    f.properties(debugFile);
    f.open();
    QVERIFY(!f.window->readLogLevel(f.scratch.path(text("none.properties"))));
    QVERIFY(!f.window->readLogLevel(f.scratch.path()));
    QCOMPARE(f.output.lines(), QStringList({text("open failed"), text("open failed")}));
    f.chooses = f.scratch.path(text("none.properties"));
    f.find<QPushButton>("btnSetLogCfgPath")->click();
    QCOMPARE(hub().logConfigPath, f.chooses);
    QCOMPARE(f.shownLevel(), text("DEBUG"));
}

void LogSettingsDialog::setsTheLevelThatIsClicked_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<uint>("level");
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("INFO") << QByteArray("radioINFO") << 0U << QByteArray("INFO");
    QTest::newRow("DEBUG") << QByteArray("radioDEBUG") << 1U << QByteArray("DEBUG");
    QTest::newRow("FATAL") << QByteArray("radioFATAL") << 2U << QByteArray("FATAL");
}

void LogSettingsDialog::setsTheLevelThatIsClicked()
{
    QFETCH(QByteArray, button);
    QFETCH(uint, level);
    QFETCH(QByteArray, name);
    SettingsFixture f;
    f.properties("log4cpp.rootCategory = WARN\nlog4cpp.category.qzsdk = WARN\nx = y\n");
    hub().logLevel = level == 2 ? 0 : 2;
    f.open();
    f.radio(button.constData())->click();
    QCOMPARE(f.written().replace("\r\n", "\n"), "log4cpp.rootCategory = " + name +
                                                    "\nlog4cpp.category.qzsdk = " + name +
                                                    ", a_qzsdk\nx = y\n");
    QCOMPARE(hub().logLevel, level);
    QCOMPARE(f.shownLevel(), QString::fromLatin1(name));
}

void LogSettingsDialog::fallsBackToTheStoredLevelWhenTheFileIsGone()
{
    SettingsFixture f;
    const QString path = f.properties(debugFile);
    f.open();
    QCOMPARE(f.shownLevel(), text("DEBUG"));
    QVERIFY(QFile::remove(path));
    f.radio("radioFATAL")->click();
    QCOMPARE(f.shownLevel(), text("INFO"));
    QCOMPARE(hub().logLevel, 0U);
    QVERIFY(f.output.contains(text("open failed")));

    hub().logLevel = 7; // no such button
    f.radio("radioDEBUG")->click();
    QCOMPARE(f.shownLevel(), text("DEBUG"));
}

void LogSettingsDialog::setsTheLevelInAFileWithANonAsciiName()
{
    SettingsFixture f;
    f.chooses = f.scratch.file(text("Größe 日志 配置/日志 ü.properties"), infoFile);
    f.open();
    QCOMPARE(hub().logConfigPath, f.chooses);
    f.radio("radioDEBUG")->click();
    QCOMPARE(hub().logLevel, 1U);
    QCOMPARE(f.scratch.read(text("Größe 日志 配置/日志 ü.properties")).replace("\r\n", "\n"),
             debugFile);
}

void LogSettingsDialog::handsOverTheLimitsWhenItCloses()
{
    SettingsFixture f;
    f.properties(infoFile);
    f.open();
    QCOMPARE(hub().maxDisplayedLogs, 1000);
    QSignalSpy closed(f.window.get(), &LogSettingsDlg::closeWnd);
    f.window->show();
    QVERIFY(f.window->close());
    QVERIFY(!f.window->isVisible());
    QCOMPARE(closed.count(), 1);
    // Nobody touched the boxes: this asymmetry is meant.
    QCOMPARE(hub().maxDisplayedLogs, 100000);
    QCOMPARE(hub().updateIntervalMs, 1000);
}

void LogSettingsDialog::handsOverTheLimitsOnTheTimerWithoutASignal()
{
    SettingsFixture f;
    f.properties(infoFile);
    f.open();
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
    f.properties(infoFile);
    f.open();
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
    f.properties(infoFile);
    f.open();
    f.window->show();
    f.radio("radioFATAL")->click();
    f.window->close();
    f.properties(infoFile); // written by somebody else meanwhile: not read again by showing
    f.window->show();
    QVERIFY(f.window->isVisible());
    QCOMPARE(f.shownLevel(), text("FATAL"));
}

QTEST_MAIN(LogSettingsDialog)
#include "tst_log_settings_dialog.moc"
