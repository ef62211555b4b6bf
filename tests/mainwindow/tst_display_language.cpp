#include "DisplayLanguage.h"
#include "ScratchFolder.h"

#include <QFileInfo>
#include <QStandardPaths>
#include <QTest>

class DisplayLanguageTest : public QObject
{
    Q_OBJECT

private slots:
    void takesTheClientsNameFromItsIcon_data();
    void takesTheClientsNameFromItsIcon();
    void speaksEnglishWithoutAUsableClient_data();
    void speaksEnglishWithoutAUsableClient();
    void speaksChineseUnlessTheFileSaysOne_data();
    void speaksChineseUnlessTheFileSaysOne();
    void speaksChineseWithoutTheFile();
    void readsTheFileOfTheNamedClientOnly();
    void readsTheFileOfAClientWithANameBeyondAscii();
    void writesNothing();
    void takesTheHomeFolderOfTheUser();
};

namespace {

const QString backslash = "\\";
const QString both = "\\/";

/// A path with an executable name of @p length letters.
QString longPath(int length)
{
    return "D:\\Dir\\" + QString(length, 'n') + ".exe,0";
}

/// The language file of client @p name, relative to the home folder.
QString languageFile(const QString &name = QString("QZviewer"))
{
    return "AppData/Roaming/" + name + "/language.ini";
}

/// A user with @p home whose client has registered @p icon.
UserEnvironment user(const ScratchFolder &home,
                     const QString &icon = QString("D:\\Dir\\QZviewer.exe,0"))
{
    return {home.path(), {icon, backslash}};
}

} // namespace

Q_DECLARE_METATYPE(DisplayLanguage)

void DisplayLanguageTest::takesTheClientsNameFromItsIcon_data()
{
    QTest::addColumn<QString>("icon");
    QTest::addColumn<QString>("separators");
    QTest::addColumn<QString>("name");

    const auto row = [](const char *title, const QString &icon, const QString &name,
                        const QString &separators = backslash) {
        QTest::newRow(title) << icon << separators << name;
    };
    const QString viewer = "QZviewer";
    row("with an icon number", "D:\\Dir\\QZviewer.exe,0", viewer);
    row("without one", "D:\\Dir\\QZviewer.exe", viewer);
    row("in quotes", "\"D:\\Dir\\QZviewer.exe\",0", viewer);
    row("name with blanks and dots", "D:\\Dir\\QZ viewer 2.1.exe,0", "QZ viewer 2.1");
    row("name beyond ASCII", "D:\\目录\\相机客户端.exe,0", "相机客户端");
    row("last ending counts", "D:\\a.exe\\b.exe.exe,0", "b.exe");
    row("folder named like a program", "D:\\a.exe\\QZviewer.exe,0", viewer);
    row("empty", {}, {});
    row("no ending", "D:\\Dir\\QZviewer.ico,0", {});
    row("no dot", "D:\\Dir\\QZviewerexe", {});
    row("ending in capitals", "D:\\Dir\\QZviewer.EXE,0", {});
    row("no separator", "QZviewer.exe,0", {});
    row("separator behind the ending", "D:\\QZviewer.exe\\icon", {});
    row("separator in the icon's number", "QZviewer.exe,\\0", {});
    row("nothing between the two", "D:\\Dir\\.exe,0", {});
    row("slash alone does not separate", "D:/Dir/QZviewer.exe,0", {});
    row("slash is part of the name there", "D:\\Dir/QZviewer.exe,0", "Dir/QZviewer");
    row("slash where it separates", "/opt/qz/QZviewer.exe,0", viewer, both);
    row("backslash there too", "D:\\Dir\\QZviewer.exe,0", viewer, both);
    row("the last of either kind", "D:\\Dir/QZviewer.exe,0", viewer, both);
    row("259 bytes", longPath(259), QString(259, 'n'));
    row("260 bytes", longPath(260), {});
    row("259 bytes of three a letter", "D:\\" + QString(86, QChar(0x76f8)) + "n.exe",
        QString(86, QChar(0x76f8)) + "n");
    row("261 bytes of three a letter", "D:\\" + QString(87, QChar(0x76f8)) + ".exe", {});
}

void DisplayLanguageTest::takesTheClientsNameFromItsIcon()
{
    QFETCH(QString, icon);
    QFETCH(QString, separators);
    QTEST(clientNameFromIcon({icon, separators}), "name");
}

void DisplayLanguageTest::speaksEnglishWithoutAUsableClient_data()
{
    QTest::addColumn<QString>("icon");
    QTest::newRow("none registered") << QString();
    QTest::newRow("no ending") << "D:\\Dir\\QZviewer.ico";
    QTest::newRow("no separator") << "QZviewer.exe,0";
    QTest::newRow("nothing between the two") << "D:\\Dir\\.exe,0";
    QTest::newRow("name too long") << longPath(260);
}

void DisplayLanguageTest::speaksEnglishWithoutAUsableClient()
{
    QFETCH(QString, icon);
    ScratchFolder home;
    home.file(languageFile(), "[language]\nlang=0\n");
    home.file("AppData/Roaming/language.ini", "[language]\nlang=0\n");
    QCOMPARE(chooseLanguage(user(home, icon)), DisplayLanguage::English);
}

void DisplayLanguageTest::speaksChineseUnlessTheFileSaysOne_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<DisplayLanguage>("language");

    constexpr auto english = DisplayLanguage::English;
    constexpr auto chinese = DisplayLanguage::Chinese;
    const auto row = [](const char *title, const char *file, DisplayLanguage language) {
        QTest::newRow(title) << QByteArray(file) << language;
    };
    row("1", "[language]\nlang=1\n", english);
    row("1, lines as on Windows", "[language]\r\nlang=1\r\n", english);
    row("1, in quotes", "[language]\nlang=\"1\"\n", english);
    row("1, among other keys", "[window]\nlang=0\n[language]\nfont=2\nlang=1\n", english);
    row("0", "[language]\nlang=0\n", chinese);
    row("2", "[language]\nlang=2\n", chinese);
    row("-1", "[language]\nlang=-1\n", chinese);
    row("11", "[language]\nlang=11\n", chinese);
    row("no such key", "[language]\nfont=1\n", chinese);
    row("key outside its section", "lang=1\n", chinese);
    row("key in another section", "[window]\nlang=1\n", chinese);
    row("no value", "[language]\nlang=\n", chinese);
    row("a word", "[language]\nlang=english\n", chinese);
    row("a number and a word", "[language]\nlang=1st\n", chinese);
    row("hexadecimal", "[language]\nlang=0x1\n", chinese);
    row("two values", "[language]\nlang=1, 1\n", chinese);
    row("empty file", "", chinese);
    row("no text at all", "\xff\xfe\x01\x02[[[", chinese);
}

void DisplayLanguageTest::speaksChineseUnlessTheFileSaysOne()
{
    QFETCH(QByteArray, file);
    ScratchFolder home;
    home.file(languageFile(), file);
    QTEST(chooseLanguage(user(home)), "language");
}

void DisplayLanguageTest::speaksChineseWithoutTheFile()
{
    ScratchFolder home;
    QCOMPARE(chooseLanguage(user(home)), DisplayLanguage::Chinese);
    home.folder(languageFile()); // exists, but is not a file
    QCOMPARE(chooseLanguage(user(home)), DisplayLanguage::Chinese);
}

void DisplayLanguageTest::readsTheFileOfTheNamedClientOnly()
{
    ScratchFolder home;
    home.file(languageFile("Other"), "[language]\nlang=1\n");
    QCOMPARE(chooseLanguage(user(home)), DisplayLanguage::Chinese);
    QCOMPARE(chooseLanguage(user(home, "D:\\Other.exe")), DisplayLanguage::English);
}

void DisplayLanguageTest::readsTheFileOfAClientWithANameBeyondAscii()
{
    ScratchFolder home;
    home.file(languageFile("相机客户端"), "[language]\nlang=1\n");
    QCOMPARE(chooseLanguage(user(home, "D:\\目录\\相机客户端.exe,0")), DisplayLanguage::English);
}

void DisplayLanguageTest::writesNothing()
{
    ScratchFolder home;
    (void)chooseLanguage(user(home));
    QVERIFY(!QFileInfo::exists(home.path("AppData")));
    home.file(languageFile(), "[language]\nlang=1\nother=x\n");
    (void)chooseLanguage(user(home));
    QCOMPARE(home.read(languageFile()), QByteArray("[language]\nlang=1\nother=x\n"));
}

void DisplayLanguageTest::takesTheHomeFolderOfTheUser()
{
    QCOMPARE(systemEnvironment().homeFolder,
             QStandardPaths::writableLocation(QStandardPaths::HomeLocation));
    QCOMPARE(systemEnvironment().client.iconPath, registeredCameraClient().iconPath);
}

QTEST_GUILESS_MAIN(DisplayLanguageTest)
#include "tst_display_language.moc"
