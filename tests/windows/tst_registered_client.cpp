#include "ClientRegistration.h"
#include "DisplayLanguage.h"
#include "Hub.h"
#include "LogSettingsDlg.h"
#include "ModalDialog.h"
#include "ScratchFolder.h"
#include "UserEnvironment.h"

#include <QDialog>
#include <QProcess>
#include <QScopeGuard>
#include <QTest>

/// The camera client in the real registry, written by "reg add", and the real home folder.
class RegisteredClient : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void readsWhatRegAddWrote_data();
    void readsWhatRegAddWrote();
    void findsNoneWhereNothingIsRegistered();
    void onlyReadsTheRegistry();
    void namesTheUsersProfileAsHome();
    void chinesePathIsReadUnchanged();
    void choosesTheLanguageOfTheRegisteredClient_data();
    void choosesTheLanguageOfTheRegisteredClient();
    void speaksEnglishWithoutAClient();
    void findsThePropertiesFileBesideTheIcon();
    void rewritesThePropertiesFileWithWindowsLineEnds();
    void asksForAPropertiesFileWhereNothingIsRegistered();
};

namespace {

/// "C:\...\<below>" for the program's "C:/...".
QString native(const QString &path)
{
    return QDir::toNativeSeparators(path);
}

} // namespace

void RegisteredClient::initTestCase()
{
    if (!ClientRegistration::available())
        QSKIP("not a test machine: registry and home folder stay as they are");
    ModalDialog::setRunner([](QDialog &) { return int(QDialog::Rejected); });
}

void RegisteredClient::readsWhatRegAddWrote_data()
{
    QTest::addColumn<QString>("icon");
    QTest::addColumn<QString>("name");

    QTest::newRow("with a drive") << "D:\\Dir\\QZviewer.exe,0"
                                  << "QZviewer";
    QTest::newRow("with blanks") << "C:\\Program Files (x86)\\Pemberk\\QZ viewer.exe,0"
                                 << "QZ viewer";
    QTest::newRow("without an icon number") << "E:\\QZviewer.exe"
                                            << "QZviewer";
    QTest::newRow("with slashes, which separate nothing here")
        << "D:/Dir/QZviewer.exe,0" << QString();
    QTest::newRow("without exe") << "D:\\Dir\\QZviewer.ico,0" << QString();
}

void RegisteredClient::readsWhatRegAddWrote()
{
    QFETCH(QString, icon);
    QFETCH(QString, name);
    const ClientRegistration registration(QString(), icon);
    const CameraClient client = registeredCameraClient();
    QCOMPARE(client.iconPath, icon);
    QCOMPARE(clientNameFromIcon(client), name);
}

void RegisteredClient::findsNoneWhereNothingIsRegistered()
{
    QCOMPARE(registeredCameraClient().iconPath, QString());
}

void RegisteredClient::onlyReadsTheRegistry()
{
    const QString key = "HKLM\\SOFTWARE\\Classes\\qzcfgfile";
    const auto query = [&key] { return QProcess::execute("reg", {"query", key, "/s"}); };
    QCOMPARE(query(), 1);
    QCOMPARE(registeredCameraClient().iconPath, QString());
    QCOMPARE(query(), 1);
}

void RegisteredClient::namesTheUsersProfileAsHome()
{
    const QString home = systemEnvironment().homeFolder;
    QVERIFY2(home.startsWith("C:/users/", Qt::CaseInsensitive), qPrintable(home));
    QVERIFY(QFileInfo(home).isDir());
}

void RegisteredClient::chinesePathIsReadUnchanged()
{
    const QString icon = "D:\\相机\\QZ查看器.exe,0";
    const ClientRegistration registration(QString(), icon);
    QCOMPARE(registeredCameraClient().iconPath, icon);
    QCOMPARE(clientNameFromIcon(registeredCameraClient()), "QZ查看器");
}

void RegisteredClient::choosesTheLanguageOfTheRegisteredClient_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<bool>("english");

    QTest::newRow("1 is English") << QByteArray("[language]\r\nlang=1\r\n") << true;
    QTest::newRow("0 is Chinese") << QByteArray("[language]\r\nlang=0\r\n") << false;
    QTest::newRow("2 is Chinese") << QByteArray("[language]\r\nlang=2\r\n") << false;
    QTest::newRow("no key is Chinese") << QByteArray("[language]\r\n") << false;
    QTest::newRow("no file is Chinese") << QByteArray() << false;
}

void RegisteredClient::choosesTheLanguageOfTheRegisteredClient()
{
    QFETCH(QByteArray, file);
    QFETCH(bool, english);
    const ClientRegistration registration(QString(), "D:\\Dir\\QZtestviewer.exe,0");
    const QString folder = systemEnvironment().homeFolder + "/AppData/Roaming/QZtestviewer";
    QVERIFY(QDir().mkpath(folder));
    const auto tidy = qScopeGuard([&] { QDir(folder).removeRecursively(); });
    if (!file.isNull()) {
        QFile ini(folder + "/language.ini");
        QVERIFY(ini.open(QIODevice::WriteOnly) && ini.write(file) == file.size());
    }
    QCOMPARE(chooseLanguage(systemEnvironment()),
             english ? DisplayLanguage::English : DisplayLanguage::Chinese);
}

void RegisteredClient::speaksEnglishWithoutAClient()
{
    QCOMPARE(chooseLanguage(systemEnvironment()), DisplayLanguage::English);
}

void RegisteredClient::findsThePropertiesFileBesideTheIcon()
{
    resetHub();
    ScratchFolder scratch;
    const QString path =
        scratch.file("My Client/SDKLOG_default.properties", "log4cpp.rootCategory = DEBUG\r\n");
    const ClientRegistration registration(QString(),
                                          native(scratch.path("My Client/QZviewer.exe")) + ",0");
    LogSettingsDlg settings(nullptr);
    QCOMPARE(QFileInfo(settings.findDefaultLogConfig()).canonicalFilePath(),
             QFileInfo(path).canonicalFilePath());
}

void RegisteredClient::rewritesThePropertiesFileWithWindowsLineEnds()
{
    resetHub();
    ScratchFolder scratch;
    const QString name = "相机 한국/SDKLOG_default.properties";
    scratch.file(name, "# kept\r\nlog4cpp.rootCategory = INFO, a\r\n\r\n"
                       "log4cpp.category.qzsdk = INFO, a_qzsdk\r\nlast");
    const ClientRegistration registration(QString(),
                                          native(scratch.path("相机 한국/QZviewer.exe")) + ",0");
    LogSettingsDlg settings(nullptr);
    const QString found = settings.findDefaultLogConfig();
    QVERIFY(settings.writeLogLevel(found.toStdString(), 2));
    QCOMPARE(scratch.read(name), QByteArray("# kept\r\nlog4cpp.rootCategory = FATAL\r\n\r\n"
                                            "log4cpp.category.qzsdk = FATAL, a_qzsdk\r\nlast"));
}

void RegisteredClient::asksForAPropertiesFileWhereNothingIsRegistered()
{
    resetHub();
    int asked = 0;
    ModalDialog::setRunner([&asked](QDialog &) {
        ++asked;
        return int(QDialog::Rejected);
    });
    LogSettingsDlg settings(nullptr);
    QCOMPARE(settings.findDefaultLogConfig(), QString());
    QCOMPARE(asked, 1);
}

QTEST_MAIN(RegisteredClient)
#include "tst_registered_client.moc"
