#include "DebugCapture.h"
#include "Faults.h"
#include "LogConfig.h"
#include "LogLevelFile.h"
#include "LogLevelRewrite.h"
#include "ScratchFolder.h"

#include <QFile>
#include <QFileInfo>
#include <QtTest>

using Outcome = LogLevelRewrite::Outcome;

/// Setting the level on a disk that tears the file apart.
class LogLevelTornFile : public QObject
{
    Q_OBJECT

private slots:
    void putsTheTextBackWhenTheDiskIsFull();
    void worksFromTheKeptTextAfterAFailedWrite();
    void putsTheKeptTextBackAtTheEnd();
    void takesAMendedFileOverTheKeptText();
    void keepsTheTextWhenTheTornFileCannotBeRead();
    void putsTheKeptTextOverATornFileThatWasNeverRead();
    void putsTheKeptTextBackAfterAnUnreadableRound();
    void leavesAMendedFileAloneAtTheEnd();
    void leavesATornFileThatWasRemovedAlone();
    void saysOnceWhatWasNotWrittenAndNotRestored();
    void saysNotThatATextWhichIsBackWasNotRestored();
};

namespace {

QString name()
{
    return QStringLiteral("sdk.properties");
}

// Too large to be read, but to be written: the fault of a moment, made to last.
void makeUnreadable(const QString &path)
{
    if (!QFile::resize(path, 600LL * 1024 * 1024) || readPropertiesFile(path))
        qFatal("cannot make the file unreadable");
}

/// A disk that tears a file apart as often as it is told to.
struct TearingDisk
{
    int failures = 0;
    bool unreadable = false; ///< the torn file cannot be read either

    bool operator()(const QString &path, const QByteArray &bytes)
    {
        if (failures == 0)
            return overwriteFile(path, bytes);
        --failures;
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes.left(10)) != 10)
            qFatal("cannot tear the file");
        file.close();
        if (unreadable)
            makeUnreadable(path);
        return false;
    }
};

} // namespace

void LogLevelTornFile::putsTheTextBackWhenTheDiskIsFull()
{
    if (!FileSizeLimit::available())
        QSKIP("no way to fill a disk here");
    QByteArray text = infoFile;
    for (int i = 0; i < 500; ++i)
        text += "log4cpp.category.qzsdk\n"; // each grows when it is set
    ScratchFolder scratch;
    LogLevelRewrite rewrite(scratch.file(name(), text));
    {
        const FileSizeLimit limit(long(text.size()) + 1000);
        QCOMPARE(rewrite.apply(1), Outcome::Failed);
        QCOMPARE(scratch.read(name()), text);
        QCOMPARE(rewrite.apply(1), Outcome::Failed);
        QCOMPARE(scratch.read(name()), text);
    }
    QCOMPARE(rewrite.apply(1), Outcome::Done);
    QVERIFY(scratch.read(name()).size() > text.size() + 1000);
}

void LogLevelTornFile::worksFromTheKeptTextAfterAFailedWrite()
{
    ScratchFolder scratch;
    const QString path = scratch.file(name(), "first line\n" + infoFile + "last line");
    TearingDisk disk;
    disk.failures = 4; // two attempts, each with a vain try to put the text back
    LogLevelRewrite rewrite(path, disk);
    QCOMPARE(rewrite.apply(1), Outcome::Failed);
    QCOMPARE(scratch.read(name()).size(), 10);
    QCOMPARE(rewrite.apply(1), Outcome::Failed);
    QCOMPARE(scratch.read(name()).size(), 10);
    QCOMPARE(rewrite.apply(1), Outcome::Done);
    QCOMPARE(unixLines(scratch.read(name())), "first line\n" + debugFile + "last line");
}

void LogLevelTornFile::putsTheKeptTextBackAtTheEnd()
{
    ScratchFolder scratch;
    const QString path = scratch.file(name(), "first line\n" + infoFile);
    {
        TearingDisk disk;
        disk.failures = 2;
        LogLevelRewrite rewrite(path, disk);
        QCOMPARE(rewrite.apply(1), Outcome::Failed);
        QCOMPARE(scratch.read(name()), QByteArray("first line"));
    }
    QCOMPARE(scratch.read(name()), "first line\n" + infoFile);
}

void LogLevelTornFile::takesAMendedFileOverTheKeptText()
{
    ScratchFolder scratch;
    const QString path = scratch.file(name(), "old\n" + infoFile);
    TearingDisk disk;
    disk.failures = 2;
    LogLevelRewrite rewrite(path, disk);
    QCOMPARE(rewrite.apply(1), Outcome::Failed);
    scratch.file(name(), "mended\n" + infoFile);
    QCOMPARE(rewrite.apply(1), Outcome::Done);
    QCOMPARE(unixLines(scratch.read(name())), "mended\n" + debugFile);
}

void LogLevelTornFile::keepsTheTextWhenTheTornFileCannotBeRead()
{
    ScratchFolder scratch;
    const QString path = scratch.file(name(), "first line\n" + infoFile);
    TearingDisk disk;
    disk.failures = 2;
    disk.unreadable = true;
    LogLevelRewrite rewrite(path, disk);
    QCOMPARE(rewrite.apply(1), Outcome::Failed);
    QVERIFY(QFile::resize(path, 10));
    QCOMPARE(scratch.read(name()), QByteArray("first line"));
    QCOMPARE(rewrite.apply(1), Outcome::Done);
    QCOMPARE(unixLines(scratch.read(name())), "first line\n" + debugFile);
}

void LogLevelTornFile::putsTheKeptTextOverATornFileThatWasNeverRead()
{
    ScratchFolder scratch;
    const QString path = scratch.file(name(), "first line\n" + infoFile);
    {
        TearingDisk disk;
        disk.failures = 2;
        disk.unreadable = true;
        LogLevelRewrite rewrite(path, disk);
        QCOMPARE(rewrite.apply(1), Outcome::Failed);
        QCOMPARE(rewrite.apply(1), Outcome::Unreadable);
    }
    QCOMPARE(QFileInfo(path).size(), qint64(11 + infoFile.size()));
    QCOMPARE(scratch.read(name()), "first line\n" + infoFile);
}

void LogLevelTornFile::putsTheKeptTextBackAfterAnUnreadableRound()
{
    ScratchFolder scratch;
    const QString path = scratch.file(name(), "first line\n" + infoFile);
    {
        TearingDisk disk;
        disk.failures = 2;
        LogLevelRewrite rewrite(path, disk);
        QCOMPARE(rewrite.apply(1), Outcome::Failed);
        makeUnreadable(path);
        QCOMPARE(rewrite.apply(1), Outcome::Unreadable);
    }
    QCOMPARE(QFileInfo(path).size(), qint64(11 + infoFile.size()));
    QCOMPARE(scratch.read(name()), "first line\n" + infoFile);
}

void LogLevelTornFile::leavesAMendedFileAloneAtTheEnd()
{
    ScratchFolder scratch;
    const QString path = scratch.file(name(), "old\n" + infoFile);
    {
        TearingDisk disk;
        disk.failures = 2;
        LogLevelRewrite rewrite(path, disk);
        QCOMPARE(rewrite.apply(1), Outcome::Failed);
        scratch.file(name(), "mended\n" + infoFile);
    }
    QCOMPARE(scratch.read(name()), "mended\n" + infoFile);
}

void LogLevelTornFile::leavesATornFileThatWasRemovedAlone()
{
    ScratchFolder scratch;
    const QString path = scratch.file(name(), infoFile);
    int writes = 0;
    {
        LogLevelRewrite rewrite(path, [&writes](const QString &, const QByteArray &) {
            ++writes;
            return false;
        });
        QCOMPARE(rewrite.apply(1), Outcome::Failed);
        QCOMPARE(writes, 2);
        QVERIFY(QFile::remove(path));
    }
    QCOMPARE(writes, 2);
}

void LogLevelTornFile::saysOnceWhatWasNotWrittenAndNotRestored()
{
    ScratchFolder scratch;
    const QString path = scratch.file(name(), infoFile);
    DebugCapture output;
    {
        TearingDisk disk;
        disk.failures = 5; // the last one at the end
        LogLevelRewrite rewrite(path, disk);
        QCOMPARE(rewrite.apply(1), Outcome::Failed);
        QCOMPARE(rewrite.apply(1), Outcome::Failed);
    }
    QCOMPARE(output.lines(), QStringList({QStringLiteral("log config not written"),
                                          QStringLiteral("log config not restored")}));
    QCOMPARE(scratch.read(name()), infoFile.left(10));
}

void LogLevelTornFile::saysNotThatATextWhichIsBackWasNotRestored()
{
    ScratchFolder scratch;
    const QString path = scratch.file(name(), infoFile);
    DebugCapture output;
    TearingDisk disk;
    disk.failures = 1;
    QCOMPARE(LogLevelRewrite(path, disk).apply(1), Outcome::Failed);
    QCOMPARE(output.lines(), QStringList{QStringLiteral("log config not written")});
    QCOMPARE(scratch.read(name()), infoFile);
}

QTEST_GUILESS_MAIN(LogLevelTornFile)
#include "tst_log_level_torn_file.moc"
