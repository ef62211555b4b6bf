#include "Faults.h"
#include "LogConfig.h"
#include "Machine.h"
#include "SettingsFixture.h"

#include <QLineEdit>
#include <QPushButton>

/// The settings window: finding its file, showing and setting the level.
class LogSettingsFile : public QObject
{
    Q_OBJECT

private slots:
    void findsTheFileBesideTheIcon_data();
    void findsTheFileBesideTheIcon();
    void findsTheFileInAFolderWithABackslashInItsName();
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
};

void LogSettingsFile::findsTheFileBesideTheIcon_data()
{
    QTest::addColumn<QString>("icon"); // relative to the client's folder
    QTest::addColumn<QString>("separators");
    QTest::newRow("with an index") << "/QZviewer.exe,0"
                                   << "/";
    QTest::newRow("plain") << "/QZviewer.exe"
                           << "\\/";
    QTest::newRow("backslash") << "\\QZviewer.exe,0"
                               << "\\";
    QTest::newRow("name with blanks") << "/the viewer, new.exe,-101"
                                      << "/";
    QTest::newRow("only the folder") << "/"
                                     << "/";
}

void LogSettingsFile::findsTheFileBesideTheIcon()
{
    QFETCH(QString, icon);
    QFETCH(QString, separators);
    SettingsFixture f;
    const QString path = f.properties(debugFile);
    f.client.iconPath = f.scratch.path("Client") + icon;
    f.client.pathSeparators = separators;
    f.open();
    QCOMPARE(f.window->findDefaultLogConfig(), path);
    QCOMPARE(hub().logConfigPath, path);
    QCOMPARE(f.find<QLineEdit>("lineEditPath")->text(), path);
    QCOMPARE(f.asked, 0);
}

void LogSettingsFile::findsTheFileInAFolderWithABackslashInItsName()
{
    if (onWindows())
        QSKIP("file names cannot contain a backslash on this system");
    SettingsFixture f;
    const QString path = f.scratch.file("a\\b/SDKLOG_default.properties", debugFile);
    for (const char *icon : {"a\\b/QZviewer.exe,0", "a\\b\\QZviewer.exe,0"}) {
        f.client.iconPath = f.scratch.path(icon);
        f.open();
        QCOMPARE(f.window->findDefaultLogConfig(), path);
    }
}

void LogSettingsFile::findsNoFileWithoutARegistration()
{
    SettingsFixture f;
    f.properties(infoFile);
    f.client.iconPath.clear();
    f.open();
    QVERIFY(f.window->findDefaultLogConfig().isNull());
    QCOMPARE(f.asked, 1);
}

void LogSettingsFile::findsNoFileWhereItIsMissing()
{
    SettingsFixture f;
    f.open();
    QCOMPARE(f.window->findDefaultLogConfig(), QString());
    f.scratch.folder(SettingsFixture::defaultName()); // a folder of that name does not count
    QCOMPARE(f.window->findDefaultLogConfig(), QString());
}

void LogSettingsFile::findsNoFileThatMayNotBeRead()
{
    if (!OrdinaryUser::available())
        QSKIP("permissions cannot be revoked on this system");
    SettingsFixture f;
    const QString path = f.open(infoFile);
    QVERIFY(QFile::setPermissions(f.scratch.path(), Everybody::mayDoAll));
    QVERIFY(QFile::setPermissions(path, Everybody::mayWrite));
    const OrdinaryUser user;
    QVERIFY(QFileInfo(path).isFile());
    QCOMPARE(f.window->findDefaultLogConfig(), QString());
}

void LogSettingsFile::asksForAFileAtStartWhenThereIsNone()
{
    SettingsFixture f;
    f.chooses = f.scratch.file("mine.properties", debugFile);
    f.open();
    QCOMPARE(f.asked, 1);
    QCOMPARE(hub().logConfigPath, f.chooses);
    QCOMPARE(f.find<QLineEdit>("lineEditPath")->text(), f.chooses);
    QCOMPARE(f.shownLevel(), "DEBUG");
}

void LogSettingsFile::asksInTheAgreedWay()
{
    SettingsFixture f;
    bool seen = false;
    f.onAsked = [&seen](const QFileDialog &dialog) {
        QCOMPARE(dialog.parentWidget(), nullptr);
        QCOMPARE(dialog.windowTitle(), "Select Log Config File");
        QCOMPARE(dialog.nameFilters(), QStringList{"*.properties"});
        QCOMPARE(dialog.acceptMode(), QFileDialog::AcceptOpen);
        QCOMPARE(dialog.viewMode(), QFileDialog::List);
        // Only a close button is requested; a title bar comes with it.
        QCOMPARE(dialog.windowType(), Qt::Dialog);
        QVERIFY(dialog.windowFlags().testFlag(Qt::WindowCloseButtonHint));
        QVERIFY(!(dialog.windowFlags() &
                  (Qt::WindowContextHelpButtonHint | Qt::WindowMinMaxButtonsHint)));
        seen = true;
    };
    f.open();
    QVERIFY(seen);
}

void LogSettingsFile::changesNothingWhenTheFileDialogIsCancelled()
{
    SettingsFixture f;
    f.open();
    QCOMPARE(f.asked, 1);
    QCOMPARE(hub().logConfigPath, QString());
    QCOMPARE(f.find<QLineEdit>("lineEditPath")->text(), QString());
    QCOMPARE(f.shownLevel(), "INFO");

    f.chooses = f.scratch.file("mine.properties", debugFile);
    f.find<QPushButton>("btnSetLogCfgPath")->click();
    f.chooses.clear();
    f.find<QPushButton>("btnSetLogCfgPath")->click();
    QCOMPARE(f.asked, 3);
    QCOMPARE(hub().logConfigPath, f.scratch.path("mine.properties"));
    QCOMPARE(f.shownLevel(), "DEBUG");
}

void LogSettingsFile::takesTheChosenFile()
{
    SettingsFixture f;
    const QString first = f.open(infoFile);
    f.chooses = f.scratch.file("mine.properties", debugFile);
    f.find<QPushButton>("btnSetLogCfgPath")->click();
    QCOMPARE(hub().logConfigPath, f.chooses);
    QCOMPARE(f.find<QLineEdit>("lineEditPath")->text(), f.chooses);
    QCOMPARE(f.shownLevel(), "DEBUG");
    f.radio("radioFATAL")->click();
    QVERIFY(f.scratch.read("mine.properties").contains("FATAL, a_qzsdk"));
    QCOMPARE(f.written(), infoFile);
}

void LogSettingsFile::doesNotReadTheSameFileTwice()
{
    SettingsFixture f;
    f.chooses = f.scratch.file("mine.properties", debugFile);
    f.open();
    QCOMPARE(f.shownLevel(), "DEBUG");
    f.scratch.file("mine.properties", infoFile);
    f.find<QPushButton>("btnSetLogCfgPath")->click();
    QCOMPARE(f.asked, 2);
    QCOMPARE(f.shownLevel(), "DEBUG");
}

void LogSettingsFile::comparesChosenFilesCaseSensitively()
{
    SettingsFixture f;
    f.chooses = f.scratch.file("mine.properties", infoFile);
    f.open();
    f.chooses = f.scratch.file("Mine.properties", debugFile);
    f.find<QPushButton>("btnSetLogCfgPath")->click();
    QCOMPARE(hub().logConfigPath, f.chooses);
    QCOMPARE(f.shownLevel(), "DEBUG");
}

void LogSettingsFile::showsTheLevelOfTheFile_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("shown");
    QTest::newRow("INFO") << infoFile << "INFO";
    QTest::newRow("DEBUG") << debugFile << "DEBUG";
    QTest::newRow("FATAL") << QByteArray("log4cpp.rootCategory = FATAL") << "FATAL";
    QTest::newRow("WARN leaves INFO") << QByteArray("log4cpp.rootCategory = WARN") << "INFO";
    QTest::newRow("ERROR leaves INFO") << QByteArray("log4cpp.rootCategory = ERROR") << "INFO";
    QTest::newRow("no root line leaves INFO") << QByteArray("x") << "INFO";
    QTest::newRow("empty leaves INFO") << QByteArray() << "INFO";
}

void LogSettingsFile::showsTheLevelOfTheFile()
{
    QFETCH(QByteArray, contents);
    SettingsFixture f;
    f.open(contents);
    QTEST(f.shownLevel(), "shown");
    QCOMPARE(hub().logLevel, 0U); // a level read is not stored
    QCOMPARE(f.written(), contents);
}

void LogSettingsFile::keepsTheLevelShownWhenTheChosenFileNamesNone()
{
    SettingsFixture f;
    f.open(debugFile);
    f.chooses = f.scratch.file("warn.properties", "log4cpp.rootCategory = WARN, a\n");
    f.find<QPushButton>("btnSetLogCfgPath")->click();
    QCOMPARE(f.shownLevel(), "DEBUG");
}

void LogSettingsFile::keepsTheLevelShownWhenTheChosenFileIsUnreadable()
{
    SettingsFixture f;
    f.open(debugFile);
    QVERIFY(!f.window->readLogLevel(f.scratch.path("none.properties")));
    QVERIFY(!f.window->readLogLevel(f.scratch.path()));
    QCOMPARE(f.output.lines(), QStringList({"open failed", "open failed"}));
    f.chooses = f.scratch.path("none.properties");
    f.find<QPushButton>("btnSetLogCfgPath")->click();
    QCOMPARE(hub().logConfigPath, f.chooses);
    QCOMPARE(f.shownLevel(), "DEBUG");
}

void LogSettingsFile::setsTheLevelThatIsClicked_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<uint>("level");
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("INFO") << QByteArray("radioINFO") << 0U << QByteArray("INFO");
    QTest::newRow("DEBUG") << QByteArray("radioDEBUG") << 1U << QByteArray("DEBUG");
    QTest::newRow("FATAL") << QByteArray("radioFATAL") << 2U << QByteArray("FATAL");
}

void LogSettingsFile::setsTheLevelThatIsClicked()
{
    QFETCH(QByteArray, button);
    QFETCH(uint, level);
    QFETCH(QByteArray, name);
    SettingsFixture f;
    f.properties("log4cpp.rootCategory = WARN\nlog4cpp.category.qzsdk = WARN\nx = y\n");
    hub().logLevel = level == 2 ? 0 : 2;
    f.open();
    f.radio(button.constData())->click();
    QCOMPARE(unixLines(f.written()), "log4cpp.rootCategory = " + name +
                                         "\nlog4cpp.category.qzsdk = " + name +
                                         ", a_qzsdk\nx = y\n");
    QCOMPARE(hub().logLevel, level);
    QCOMPARE(f.shownLevel(), QString::fromLatin1(name));
}

void LogSettingsFile::fallsBackToTheStoredLevelWhenTheFileIsGone()
{
    SettingsFixture f;
    const QString path = f.open(debugFile);
    QCOMPARE(f.shownLevel(), "DEBUG");
    QVERIFY(QFile::remove(path));
    f.radio("radioFATAL")->click();
    QCOMPARE(f.shownLevel(), "INFO");
    QCOMPARE(hub().logLevel, 0U);
    QVERIFY(f.output.contains("open failed"));

    hub().logLevel = 7; // no such button
    f.radio("radioDEBUG")->click();
    QCOMPARE(f.shownLevel(), "DEBUG");
}

void LogSettingsFile::setsTheLevelInAFileWithANonAsciiName()
{
    SettingsFixture f;
    f.chooses = f.scratch.file("Größe 日志 配置/日志 ü.properties", infoFile);
    f.open();
    QCOMPARE(hub().logConfigPath, f.chooses);
    f.radio("radioDEBUG")->click();
    QCOMPARE(hub().logLevel, 1U);
    QCOMPARE(unixLines(f.scratch.read("Größe 日志 配置/日志 ü.properties")), debugFile);
}

QTEST_MAIN(LogSettingsFile)
#include "tst_log_settings_file.moc"
