#include "ModificationTime.h"
#include "ScratchFolder.h"

#include <QFileInfo>
#include <QTest>

class ModificationTimeTest : public QObject
{
    Q_OBJECT

private slots:
    void isInMilliseconds_data();
    void isInMilliseconds();
    void isNullWithoutTheFile();
};

void ModificationTimeTest::isInMilliseconds_data()
{
    QTest::addColumn<qint64>("time");
    QTest::newRow("now") << qint64(1772712007123);
    QTest::newRow("the first second") << qint64(7);
    QTest::newRow("after 2038") << qint64(2200000000999);
}

void ModificationTimeTest::isInMilliseconds()
{
    QFETCH(qint64, time);
    ScratchFolder folder;
    const QString file = folder.file("日志 1.log", "x", QDateTime::fromMSecsSinceEpoch(time));
    QCOMPARE(modificationTime(QFileInfo(file)), time);
}

void ModificationTimeTest::isNullWithoutTheFile()
{
    const ScratchFolder folder;
    QCOMPARE(modificationTime(QFileInfo(folder.path("missing.log"))), 0);
}

QTEST_GUILESS_MAIN(ModificationTimeTest)
#include "tst_modification_time.moc"
