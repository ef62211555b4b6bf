#include "CameraClient.h"
#include "ScratchFolder.h"

#include <QSettings>
#include <QtTest>

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
    QTest::newRow("quoted") << QByteArray("DefaultIcon=\"/opt/client/QZviewer.exe,0\"");
    QTest::newRow("by hand, without quotes")
        << QByteArray("DefaultIcon=/opt/client/QZviewer.exe,0");
}

void CameraClientTest::readsTheRegisteredIcon()
{
    QFETCH(QByteArray, line);
    ScratchFolder config;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, config.path());
    config.file(QStringLiteral("Pemberk/qzcfgfile.ini"), "[General]\n" + line + '\n');
    QCOMPARE(registeredCameraClient().iconPath, QStringLiteral("/opt/client/QZviewer.exe,0"));
}

void CameraClientTest::findsNoneWhereNothingIsRegistered()
{
    ScratchFolder config;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, config.path());
    QCOMPARE(registeredCameraClient().iconPath, QString());
}

void CameraClientTest::separatesFoldersByEitherSlash()
{
    QCOMPARE(registeredCameraClient().pathSeparators, QStringLiteral("\\/"));
}

QTEST_GUILESS_MAIN(CameraClientTest)
#include "tst_camera_client.moc"
