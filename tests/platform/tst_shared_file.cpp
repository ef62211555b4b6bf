#include "ScratchFolder.h"
#include "SharedFile.h"

#include <QProcess>
#include <QTest>

class SharedFileTest : public QObject
{
    Q_OBJECT

private slots:
    void readsAFile();
    void refusesAMissingFile();
    void refusesAFolder();
    void refusesAPipeWithoutWaitingForItsWriter();
    void refusesADevice();
    void opensNamesBeyondAscii();
    void letsTheWriterGoOnAndDelete();
    void saysWhetherAFileIsReadable();

private:
    ScratchFolder scratch;
};

void SharedFileTest::readsAFile()
{
    QFile file(scratch.file("a.log", "one\r\ntwo\n"));
    QVERIFY(openShared(file));
    QCOMPARE(file.readAll(), QByteArray("one\r\ntwo\n"));
}

void SharedFileTest::refusesAMissingFile()
{
    QFile file(scratch.path("missing.log"));
    QVERIFY(!openShared(file));
    QVERIFY(!file.isOpen());
    QFile nameless;
    QVERIFY(!openShared(nameless));
}

void SharedFileTest::refusesAFolder()
{
    QFile file(scratch.folder("folder.log"));
    QVERIFY(!openShared(file));
}

void SharedFileTest::refusesAPipeWithoutWaitingForItsWriter()
{
    QFile file(scratch.path("pipe.log"));
    if (QProcess::execute("mkfifo", {file.fileName()}) != 0)
        QSKIP("there are no named pipes in folders on this system");
    QVERIFY(!openShared(file));
}

void SharedFileTest::refusesADevice()
{
    for (const char *device : {"/dev/zero", "NUL"}) {
        QFile file(QString::fromLatin1(device));
        QVERIFY(!openShared(file));
    }
}

void SharedFileTest::opensNamesBeyondAscii()
{
    QFile file(scratch.file("日志 ä.log", "x"));
    QVERIFY(openShared(file));
    QCOMPARE(file.readAll(), QByteArray("x"));
}

void SharedFileTest::letsTheWriterGoOnAndDelete()
{
    const QString path = scratch.path("growing.log");
    QFile writer(path);
    QVERIFY(writer.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    writer.write("one\n");
    QFile file(path);
    QVERIFY(openShared(file));
    QCOMPARE(file.readAll(), QByteArray("one\n"));
    writer.write("two\n");
    QCOMPARE(file.readAll(), QByteArray("two\n"));
    writer.close();
    QVERIFY(QFile::rename(path, path + ".1"));
    QVERIFY(QFile::remove(path + ".1"));
}

void SharedFileTest::saysWhetherAFileIsReadable()
{
    QVERIFY(isReadable(scratch.file("a.log", "a")));
    QVERIFY(!isReadable(scratch.path("missing.log")));
    QVERIFY(!isReadable(scratch.folder("folder.log")));
    const QString pipe = scratch.path("another pipe.log");
    if (QProcess::execute("mkfifo", {pipe}) == 0)
        QVERIFY(!isReadable(pipe));
}

QTEST_APPLESS_MAIN(SharedFileTest)
#include "tst_shared_file.moc"
