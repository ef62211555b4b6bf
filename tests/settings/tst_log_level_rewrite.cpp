#include "DebugCapture.h"
#include "Faults.h"
#include "LogConfig.h"
#include "LogLevelFile.h"
#include "LogLevelRewrite.h"
#include "Machine.h"
#include "ScratchFolder.h"

#include <QFile>
#include <QFileInfo>
#include <QtTest>

using Outcome = LogLevelRewrite::Outcome;

/// Setting the level in a file on a disk, with what users do to files.
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
    void overwritesOnlyWhatIsThere();
    void saysNothingWhenAllIsWell();
    void saysOnceThatLinesAreMissing();
    void saysOnceThatTheFileIsNotWritable();
};

namespace {

QString name()
{
    return QStringLiteral("sdk.properties");
}

/// A file with these @p rights, in a folder that OrdinaryUser may look into.
QString fileWithRights(ScratchFolder &scratch, QFileDevice::Permissions rights)
{
    const QString path = scratch.file(name(), infoFile);
    if (!QFile::setPermissions(scratch.path(), Everybody::mayDoAll) ||
        !QFile::setPermissions(path, rights))
        qFatal("cannot set permissions");
    return path;
}

} // namespace

void LogLevelRewriting::setsTheLevel()
{
    ScratchFolder scratch;
    LogLevelRewrite rewrite(scratch.file(name(), "# SDK\n" + infoFile));
    QCOMPARE(rewrite.apply(1), Outcome::Done);
    QCOMPARE(unixLines(scratch.read(name())), "# SDK\n" + debugFile);
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
    QCOMPARE(unixLines(scratch.read(name())), infoFile);
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
    QCOMPARE(unixLines(scratch.read(name())), QByteArray("x\nlog4cpp.rootCategory = FATAL\n"));
}

void LogLevelRewriting::readsAnewEachTime()
{
    ScratchFolder scratch;
    LogLevelRewrite rewrite(scratch.file(name(), "nothing"));
    QCOMPARE(rewrite.apply(0), Outcome::Failed);
    QCOMPARE(scratch.read(name()), QByteArray("nothing"));
    scratch.file(name(), infoFile);
    QCOMPARE(rewrite.apply(1), Outcome::Done);
    QCOMPARE(unixLines(scratch.read(name())), debugFile);
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
    const QString path = fileWithRights(scratch, Everybody::mayWrite);
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
    const QString path = fileWithRights(scratch, Everybody::mayRead);
    const OrdinaryUser user;
    QCOMPARE(LogLevelRewrite(path).apply(1), Outcome::Failed);
    QCOMPARE(scratch.read(name()), infoFile);
}

void LogLevelRewriting::failsOnAFileThatIsRightAlreadyButMayNotBeWritten()
{
    if (!OrdinaryUser::available())
        QSKIP("no way to take a permission away here");
    ScratchFolder scratch;
    const QString path = fileWithRights(scratch, Everybody::mayRead);
    const OrdinaryUser user;
    QCOMPARE(LogLevelRewrite(path).apply(0), Outcome::Failed);
}

void LogLevelRewriting::refusesAFileBeyondAllMeasure()
{
    ScratchFolder scratch;
    DebugCapture output;
    const qint64 threeGibibytes = 3LL * 1024 * 1024 * 1024;
    const QString path = scratch.sparseFile(name(), threeGibibytes);
    QCOMPARE(LogLevelRewrite(path).apply(0), Outcome::Unreadable);
    QCOMPARE(output.lines(), QStringList{QStringLiteral("log config file too large")});
    QCOMPARE(QFileInfo(path).size(), threeGibibytes);
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
    QCOMPARE(unixLines(scratch.read(name())), bytes + '\n' + debugFile + bytes);
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
    const QString path = fileWithRights(scratch, Everybody::mayRead);
    const OrdinaryUser user;
    DebugCapture output;
    LogLevelRewrite rewrite(path);
    QCOMPARE(rewrite.apply(1), Outcome::Failed);
    QCOMPARE(rewrite.apply(0), Outcome::Failed);
    QCOMPARE(output.lines(), QStringList{QStringLiteral("log config not writable")});
}

QTEST_GUILESS_MAIN(LogLevelRewriting)
#include "tst_log_level_rewrite.moc"
