#include "CConfiguration.h"

#include <QMetaMethod>
#include <QTest>

class HubDefaults : public QObject
{
    Q_OBJECT

private slots:
    void isOneObjectForTheProcess();
    void startsWithOnlyTheSdkLogChosen();
    void startsWithTheLogSettingsOfAFreshRun();
    void startsWithTheSpareFieldsAtTheirDefaults();
    void declaresItsSignalsInOrderMisspellingIncluded();
};

void HubDefaults::isOneObjectForTheProcess()
{
    QVERIFY(CConfiguration::instance() != nullptr);
    QCOMPARE(CConfiguration::instance(), CConfiguration::instance());
    QCOMPARE(CConfiguration::instance()->parent(), nullptr);
}

void HubDefaults::startsWithOnlyTheSdkLogChosen()
{
    const CConfiguration &hub = *CConfiguration::instance();
    QVERIFY(hub.sdkLog);
    QVERIFY(!hub.systemLog);
    QVERIFY(!hub.nicInfo);
    QVERIFY(!hub.systemInfo);
    QVERIFY(!hub.systemDump);
    QVERIFY(!hub.clientDump);
    QCOMPARE(hub.exportPath, QString());
}

void HubDefaults::startsWithTheLogSettingsOfAFreshRun()
{
    const CConfiguration &hub = *CConfiguration::instance();
    QCOMPARE(hub.maxDisplayedLogs, qint64(1000));
    QCOMPARE(hub.updateIntervalMs, qint64(1000));
    QCOMPARE(hub.logLevel, 0U);
    QCOMPARE(hub.logConfigPath, QString());
}

void HubDefaults::startsWithTheSpareFieldsAtTheirDefaults()
{
    const CConfiguration &hub = *CConfiguration::instance();
    QVERIFY(hub.spareMap.isEmpty());
    QVERIFY(hub.spareWorkPath.isEmpty());
    QCOMPARE(hub.spareFlags[0], true);
    QCOMPARE(hub.spareFlags[1], false);
    QCOMPARE(hub.spareFlag, false);
    QCOMPARE(hub.spareCounts[0], qint64(1000));
    QCOMPARE(hub.spareCounts[1], qint64(2000));
    for (const bool on : hub.spareSwitches)
        QVERIFY(on);
    QVERIFY(hub.spareText.isEmpty());
}

void HubDefaults::declaresItsSignalsInOrderMisspellingIncluded()
{
    const QMetaObject &meta = CConfiguration::staticMetaObject;
    QStringList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Signal);
        names.append(QString::fromLatin1(meta.method(i).methodSignature()));
    }
    QCOMPARE(names, QStringList({"signalRestoreCfg()", "signalRestoreDefaultCfg()",
                                 "signalSaveConfigChanged()", "signalLogSourceChanged(QString)",
                                 "signalLogFilterChanged()", "singnalExportFilterChanged()",
                                 "signalExportLocationChanged()"}));
}

QTEST_GUILESS_MAIN(HubDefaults)
#include "tst_hub_defaults.moc"
