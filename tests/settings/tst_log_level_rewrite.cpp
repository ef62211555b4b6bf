#include "DebugCapture.h"
#include "Faults.h"
#include "LogLevelFile.h"
#include "LogLevelRewrite.h"
#include "Machine.h"
#include "ScratchFolder.h"

#include <QFile>
#include <QFileInfo>
#include <QtTest>

using Outcome = LogLevelRewrite::Outcome;

/// Setting the level in a file on a disk, with what disks and users do to files.
class LogLevelRewriting : public QObject
{
    Q_OBJECT

private slots:
    void setsTheLevel();
    void endsLinesAsThePlatformDoes();
    void keepsPermissionsAndLinks();
    void shortensTheFileWhereTheTextShrinks();
    void doesNotTouchAFileThatIsRightAlready();
    void replacesWhatIsThereWhenAMarkerIsMissing();
    void readsAnewEachTime();
    void failsOnAMissingFile();
    void failsOnAFolder();
    void failsOnAnEmptyPath();
    void failsOnAFileThatMayNotBeRead();
    void failsOnAFileThatCannotBeReadAnyFurther();
    void failsOnAFileThatMayNotBeWritten();
    void failsOnAFileThatIsRightAlreadyButMayNotBeWritten();
    void refusesAFileBeyondAllMeasure();
    void keepsBinaryContents();
    void putsTheTextBackWhenTheDiskIsFull();
    void worksFromTheKeptTextAfterAFailedWrite();
    void putsTheKeptTextBackAtTheEnd();
    void takesAMendedFileOverTheKeptText();
    void keepsTheTextWhenTheTornFileCannotBeRead();
    void putsTheKeptTextOverATornFileThatWasNeverRead();
    void putsTheKeptTextBackAfterAnUnreadableRound();
    void leavesAMendedFileAloneAtTheEnd();
    void leavesATornFileThatWasRemovedAlone();
    void overwritesOnlyWhatIsThere();
    void saysNothingWhenAllIsWell();
    void saysOnceThatLinesAreMissing();
    void saysOnceThatTheFileIsNotWritable();
    void saysOnceWhatWasNotWrittenAndNotRestored();
    void saysNotThatATextWhichIsBackWasNotRestored();
};

namespace {

const QByteArray infoFile = "log4cpp.rootCategory = INFO\n"
                            "log4cpp.category.qzsdk = INFO, a_qzsdk\n";
const QByteArray debugFile = "log4cpp.rootCategory = DEBUG\n"
                             "log4cpp.category.qzsdk = DEBUG, a_qzsdk\n";

QString name()
{
    return QStringLiteral("sdk.properties");
}

// Lets OrdinaryUser into the folder, with the file's permissions as given.
void setPermissions(const ScratchFolder &scratch, QFileDevice::Permissions file)
{
    const auto everybody = QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                           QFileDevice::ExeOwner | QFileDevice::ReadOther | QFileDevice::ExeOther;
    QVERIFY(QFile::setPermissions(scratch.path(), everybody));
    QVERIFY(QFile::setPermissions(scratch.path(name()), file));
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

void LogLevelRewriting::setsTheLevel()
{
    ScratchFolder scratch;
    LogLevelRewrite rewrite(scratch.file(name(), "# SDK\n" + infoFile));
    QCOMPARE(rewrite.apply(1), Outcome::Done);
    QCOMPARE(scratch.read(name()).replace("\r\n", "\n"), "# SDK\n" + debugFile);
}

void LogLevelRewriting::endsLinesAsThePlatformDoes()
{
    ScratchFolder scratch;
    const QString path = scratch.file(name(), "a\r\nlog4cpp.rootCategory = INFO\r\nb\rc\n\r\n"
                                              "log4cpp.category.qzsdk = INFO, a_qzsdk\r\nlast");
    QCOMPARE(LogLevelRewrite(path).apply(1), Outcome::Done);
    const QByteArray expected = "a\nlog4cpp.rootCategory = DEBUG\nb\rc\n\n"
                                "log4cpp.category.qzsdk = DEBUG, a_qzsdk\nlast";
    QCOMPARE(scratch.read(name()), LogLevelFile::withPlatformLineEnds(expected));
}

void LogLevelRewriting::keepsPermissionsAndLinks()
{
    if (onWindows())
        QSKIP("links and permissions are others here");
    ScratchFolder scratch;
    const QString path = scratch.file(name(), infoFile);
    QVERIFY(QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                            QFileDevice::ExeOther));
    const auto permissions = QFile::permissions(path);
    const QString link = scratch.path(QStringLiteral("link"));
    QVERIFY(QFile::link(path, link));
    QCOMPARE(LogLevelRewrite(link).apply(1), Outcome::Done);
    QVERIFY(QFileInfo(link).isSymLink());
    QCOMPARE(scratch.read(name()), debugFile);
    QCOMPARE(QFile::permissions(path), permissions);
}

void LogLevelRewriting::shortensTheFileWhereTheTextShrinks()
{
    ScratchFolder scratch;
    const QString path = scratch.file(name(), "log4cpp.rootCategory = " + QByteArray(5000, 'x') +
                                                  "\nlog4cpp.category.qzsdk\n");
    QCOMPARE(LogLevelRewrite(path).apply(0), Outcome::Done);
    QCOMPARE(scratch.read(name()).replace("\r\n", "\n"), infoFile);
}

void LogLevelRewriting::doesNotTouchAFileThatIsRightAlready()
{
    ScratchFolder scratch;
    const QString path = scratch.file(name(), infoFile);
    QCOMPARE(LogLevelRewrite(path).apply(0), Outcome::Done); // platform's line ends from here on
    int writes = 0;
    LogLevelRewrite rewrite(path, [&writes](const QString &, const QByteArray &) {
        ++writes;
        return true;
    });
    QCOMPARE(rewrite.apply(0), Outcome::Done);
    QCOMPARE(writes, 0);
    QCOMPARE(rewrite.apply(2), Outcome::Done);
    QCOMPARE(writes, 1);
}

void LogLevelRewriting::replacesWhatIsThereWhenAMarkerIsMissing()
{
    ScratchFolder scratch;
    LogLevelRewrite rewrite(scratch.file(name(), "x\nlog4cpp.rootCategory = WARN"));
    QCOMPARE(rewrite.apply(2), Outcome::Failed);
    QCOMPARE(scratch.read(name()).replace("\r\n", "\n"),
             QByteArray("x\nlog4cpp.rootCategory = FATAL\n"));
}

void LogLevelRewriting::readsAnewEachTime()
{
    ScratchFolder scratch;
    LogLevelRewrite rewrite(scratch.file(name(), "nothing"));
    QCOMPARE(rewrite.apply(0), Outcome::Failed);
    QCOMPARE(scratch.read(name()), QByteArray("nothing"));
    scratch.file(name(), infoFile);
    QCOMPARE(rewrite.apply(1), Outcome::Done);
    QCOMPARE(scratch.read(name()).replace("\r\n", "\n"), debugFile);
}

void LogLevelRewriting::failsOnAMissingFile()
{
    ScratchFolder scratch;
    DebugCapture output;
    QCOMPARE(LogLevelRewrite(scratch.path(name())).apply(0), Outcome::Unreadable);
    QCOMPARE(output.lines(), QStringList{QStringLiteral("open failed")});
    QVERIFY(!QFileInfo::exists(scratch.path(name())));
}

void LogLevelRewriting::failsOnAFolder()
{
    ScratchFolder scratch;
    DebugCapture output;
    QCOMPARE(LogLevelRewrite(scratch.folder(name())).apply(0), Outcome::Unreadable);
    QCOMPARE(output.lines(), QStringList{QStringLiteral("open failed")});
}

void LogLevelRewriting::failsOnAnEmptyPath()
{
    DebugCapture output;
    QCOMPARE(LogLevelRewrite(QString()).apply(0), Outcome::Unreadable);
    QVERIFY(output.contains(QStringLiteral("open failed")));
}

void LogLevelRewriting::failsOnAFileThatMayNotBeRead()
{
    if (!OrdinaryUser::available())
        QSKIP("no way to take a permission away here");
    ScratchFolder scratch;
    const QString path = scratch.file(name(), infoFile);
    setPermissions(scratch, QFileDevice::WriteOther);
    DebugCapture output;
    {
        const OrdinaryUser user;
        QVERIFY(QFileInfo::exists(path));
        QCOMPARE(LogLevelRewrite(path).apply(1), Outcome::Unreadable);
    }
    QCOMPARE(output.lines(), QStringList{QStringLiteral("open failed")});
    QCOMPARE(scratch.read(name()), infoFile);
}

void LogLevelRewriting::failsOnAFileThatCannotBeReadAnyFurther()
{
    const QString path = QStringLiteral("/proc/self/mem"); // its first byte cannot be read
    if (!QFileInfo::exists(path))
        QSKIP("there is no such file here");
    const DebugCapture output;
    QCOMPARE(readPropertiesFile(path), std::nullopt);
    QCOMPARE(output.lines(), QStringList{QStringLiteral("read failed")});
}

void LogLevelRewriting::failsOnAFileThatMayNotBeWritten()
{
    if (!OrdinaryUser::available())
        QSKIP("no way to take a permission away here");
    ScratchFolder scratch;
    const QString path = scratch.file(name(), infoFile);
    setPermissions(scratch, QFileDevice::ReadOwner | QFileDevice::ReadOther);
    const OrdinaryUser user;
    QCOMPARE(LogLevelRewrite(path).apply(1), Outcome::Failed);
    QCOMPARE(scratch.read(name()), infoFile);
}

void LogLevelRewriting::failsOnAFileThatIsRightAlreadyButMayNotBeWritten()
{
    if (!OrdinaryUser::available())
        QSKIP("no way to take a permission away here");
    ScratchFolder scratch;
    const QString path = scratch.file(name(), infoFile);
    setPermissions(scratch, QFileDevice::ReadOwner | QFileDevice::ReadOther);
    const OrdinaryUser user;
    QCOMPARE(LogLevelRewrite(path).apply(0), Outcome::Failed);
}

void LogLevelRewriting::refusesAFileBeyondAllMeasure()
{
    ScratchFolder scratch;
    DebugCapture output;
    const QString path = scratch.sparseFile(name(), 3LL * 1024 * 1024 * 1024);
    QCOMPARE(LogLevelRewrite(path).apply(0), Outcome::Unreadable);
    QCOMPARE(output.lines(), QStringList{QStringLiteral("log config file too large")});
    QCOMPARE(QFileInfo(path).size(), 3LL * 1024 * 1024 * 1024);
}

void LogLevelRewriting::keepsBinaryContents()
{
    QByteArray bytes;
    for (int i = 0; i < 65536; ++i)
        bytes.append(char(i ^ (i >> 8)));
    bytes.replace("\r\n", "\n"); // line ends are the platform's own matter
    ScratchFolder scratch;
    const QString path = scratch.file(name(), bytes + '\n' + infoFile + bytes);
    QCOMPARE(LogLevelRewrite(path).apply(1), Outcome::Done);
    QCOMPARE(scratch.read(name()).replace("\r\n", "\n"), bytes + '\n' + debugFile + bytes);
}

void LogLevelRewriting::putsTheTextBackWhenTheDiskIsFull()
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

void LogLevelRewriting::worksFromTheKeptTextAfterAFailedWrite()
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
    QCOMPARE(scratch.read(name()).replace("\r\n", "\n"), "first line\n" + debugFile + "last line");
}

void LogLevelRewriting::putsTheKeptTextBackAtTheEnd()
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

void LogLevelRewriting::takesAMendedFileOverTheKeptText()
{
    ScratchFolder scratch;
    const QString path = scratch.file(name(), "old\n" + infoFile);
    TearingDisk disk;
    disk.failures = 2;
    LogLevelRewrite rewrite(path, disk);
    QCOMPARE(rewrite.apply(1), Outcome::Failed);
    scratch.file(name(), "mended\n" + infoFile);
    QCOMPARE(rewrite.apply(1), Outcome::Done);
    QCOMPARE(scratch.read(name()).replace("\r\n", "\n"), "mended\n" + debugFile);
}

void LogLevelRewriting::keepsTheTextWhenTheTornFileCannotBeRead()
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
    QCOMPARE(scratch.read(name()).replace("\r\n", "\n"), "first line\n" + debugFile);
}

void LogLevelRewriting::putsTheKeptTextOverATornFileThatWasNeverRead()
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

void LogLevelRewriting::putsTheKeptTextBackAfterAnUnreadableRound()
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

void LogLevelRewriting::leavesAMendedFileAloneAtTheEnd()
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

void LogLevelRewriting::leavesATornFileThatWasRemovedAlone()
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

void LogLevelRewriting::overwritesOnlyWhatIsThere()
{
    ScratchFolder scratch;
    QVERIFY(!overwriteFile(scratch.path(name()), infoFile));
    QVERIFY(!QFileInfo::exists(scratch.path(name())));
}

void LogLevelRewriting::saysNothingWhenAllIsWell()
{
    ScratchFolder scratch;
    DebugCapture output;
    QCOMPARE(LogLevelRewrite(scratch.file(name(), infoFile)).apply(1), Outcome::Done);
    QCOMPARE(output.lines(), QStringList());
}

void LogLevelRewriting::saysOnceThatLinesAreMissing()
{
    ScratchFolder scratch;
    const QString path = scratch.file(name(), "log4cpp.rootCategory = WARN\n");
    DebugCapture output;
    LogLevelRewrite rewrite(path);
    QCOMPARE(rewrite.apply(1), Outcome::Failed);
    QCOMPARE(rewrite.apply(0), Outcome::Failed);
    QCOMPARE(output.take(), QStringList{QStringLiteral("log level lines missing")});
    QCOMPARE(LogLevelRewrite(path).apply(1), Outcome::Failed); // the next click says it again
    QCOMPARE(output.take(), QStringList{QStringLiteral("log level lines missing")});
}

void LogLevelRewriting::saysOnceThatTheFileIsNotWritable()
{
    if (!OrdinaryUser::available())
        QSKIP("no way to take a permission away here");
    ScratchFolder scratch;
    const QString path = scratch.file(name(), infoFile);
    setPermissions(scratch, QFileDevice::ReadOwner | QFileDevice::ReadOther);
    const OrdinaryUser user;
    DebugCapture output;
    LogLevelRewrite rewrite(path);
    QCOMPARE(rewrite.apply(1), Outcome::Failed);
    QCOMPARE(rewrite.apply(0), Outcome::Failed);
    QCOMPARE(output.lines(), QStringList{QStringLiteral("log config not writable")});
}

void LogLevelRewriting::saysOnceWhatWasNotWrittenAndNotRestored()
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

void LogLevelRewriting::saysNotThatATextWhichIsBackWasNotRestored()
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

QTEST_GUILESS_MAIN(LogLevelRewriting)
#include "tst_log_level_rewrite.moc"
