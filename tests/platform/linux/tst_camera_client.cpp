#include "CameraClient.h"
#include "ScratchFolder.h"

#include <QSettings>
#include <QTest>

class CameraClientTest : public QObject
{
    Q_OBJECT

private slots:
    void readsTheRegisteredIcon_data();
    void readsTheRegisteredIcon();
    void findsNoneWhereNothingIsRegistered();
    void separatesFoldersByEitherSlash();
};

void CameraClientTest::readsTheRegisteredIcon_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("icon");
    QTest::newRow("quoted") << QByteArray("DefaultIcon=\"/opt/client/QZviewer.exe,0\"")
                            << "/opt/client/QZviewer.exe,0";
    QTest::newRow("by hand, without quotes")
        << QByteArray("DefaultIcon=/opt/client/QZviewer.exe,0") << "/opt/client/QZviewer.exe,0";
    QTest::newRow("UTF-8, by hand") << QByteArray("DefaultIcon=/home/李/Größe 𠀀/QZ查看器.exe,0")
                                    << "/home/李/Größe 𠀀/QZ查看器.exe,0";
    QTest::newRow("UTF-8, quoted")
        << QByteArray("DefaultIcon=\"/home/李/QZviewer.exe,0\"") << "/home/李/QZviewer.exe,0";
    QTest::newRow("escaped, as Qt writes it")
        << QByteArray("DefaultIcon=\"/home/\\x674e/QZviewer.exe,0\"") << "/home/李/QZviewer.exe,0";
    QTest::newRow("backslash in a name, which an INI file doubles")
        << QByteArray("DefaultIcon=/opt/a\\\\b/QZviewer.exe,0") << "/opt/a\\b/QZviewer.exe,0";
}

void CameraClientTest::readsTheRegisteredIcon()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, icon);
    ScratchFolder config;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, config.path());
    config.file("Pemberk/qzcfgfile.ini", "[General]\n" + line + '\n');
    QCOMPARE(registeredCameraClient().iconPath, icon);
}

void CameraClientTest::findsNoneWhereNothingIsRegistered()
{
    ScratchFolder config;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, config.path());
    QCOMPARE(registeredCameraClient().iconPath, QString());
}

void CameraClientTest::separatesFoldersByEitherSlash()
{
    QCOMPARE(registeredCameraClient().pathSeparators, "\\/");
}

QTEST_GUILESS_MAIN(CameraClientTest)
#include "tst_camera_client.moc"
