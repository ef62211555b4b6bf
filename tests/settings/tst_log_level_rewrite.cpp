#include "DebugCapture.h"
#include "Diagnostics.h"
#include "Faults.h"
#include "LogConfig.h"
#include "LogLevelRewrite.h"
#include "Machine.h"
#include "PropertiesFile.h"
#include "ScratchFolder.h"

#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <functional>

using Outcome = LogLevelRewrite::Outcome;

/// Setting the level in real files, with what users do to them.
class LogLevelRewriting : public QObject
{
    Q_OBJECT

private slots:
    void setsTheLevel();
    void endsLinesAsThePlatformDoes();
    void keepsPermissionsAndLinks();
    void shortensTheFileWhereTheTextShrinks();
    void writesAFileThatIsAlreadyRight();
    void writesASettledFileOnlyWhereItIsWrong();
    void waitsUntilAFileIsSettled_data();
    void waitsUntilAFileIsSettled();
    void checksAgainJustBeforeWriting();
    void leavesAFileAloneThatIsBeingSaved();
    void replacesWhatIsThereWhenAMarkerIsMissing();
    void readsTheFileEachTime();
    void failsOnAMissingFile();
    void failsOnAFolder();
    void failsOnAnEmptyPath();
    void failsOnAFileThatMayNotBeRead();
    void failsOnAFileThatCannotBeReadAnyFurther();
    void failsOnAFileThatMayNotBeWritten();
    void failsOnAFileThatIsRightAlreadyButMayNotBeWritten();
    void keepsBinaryContents();
    void overwritesOnlyWhatIsThere();
    void logsNothingOnSuccess();
    void logsOnceThatLinesAreMissing();
    void logsOnceThatTheFileIsNotWritable();
    void logsOnlyWhenSwitchedOn();
};

namespace {

QString name()
{
    return "sdk.properties";
}

/// Counts the writes to a file.
struct CountedWrites
{
    explicit CountedWrites(const QByteArray &contents)
        : path(scratch.file(name(), contents))
    {
    }

    void write(const QByteArray &contents, const QDateTime &modified)
    {
        scratch.file(name(), contents, modified);
    }
    [[nodiscard]] QByteArray contents() const { return scratch.read(name()); }

    ScratchFolder scratch;
    QString path;
    int writes = 0;
    std::function<void()> afterReading = [] {};
    LogLevelRewrite rewrite{
        path, PropertiesFile::Disk{[this](const QString &file) {
                                       auto bytes = PropertiesFile::read(file);
                                       afterReading();
                                       return bytes;
                                   },
                                   [this](const QString &file, std::string_view bytes) {
                                       ++writes;
                                       return PropertiesFile::overwrite(file, bytes);
                                   }}};
};

/// A file with these permissions, in a folder that OrdinaryUser can access.
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
    QByteArray expected = "a\nlog4cpp.rootCategory = DEBUG\nb\rc\n\n"
                          "log4cpp.category.qzsdk = DEBUG, a_qzsdk\nlast";
    if (onWindows())
        expected.replace("\n", "\r\n");
    QCOMPARE(scratch.read(name()), expected);
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
    const QString link = scratch.path("link");
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

void LogLevelRewriting::writesAFileThatIsAlreadyRight()
{
    CountedWrites f(infoFile);
    QCOMPARE(f.rewrite.apply(0), Outcome::Done);
    QCOMPARE(f.rewrite.apply(0), Outcome::Done);
    QCOMPARE(f.writes, 2);
}

void LogLevelRewriting::writesASettledFileOnlyWhereItIsWrong()
{
    CountedWrites f(debugFile);
    QCOMPARE(f.rewrite.applyIfSettled(0), Outcome::Failed);
    QCOMPARE(f.rewrite.applyIfSettled(0), Outcome::Done);
    QCOMPARE(f.writes, 1);
    QCOMPARE(unixLines(f.contents()), infoFile);
    (void)f.rewrite.applyIfSettled(0); // notices the write
    QCOMPARE(f.rewrite.applyIfSettled(0), Outcome::Done);
    QCOMPARE(f.writes, 1);
}

void LogLevelRewriting::waitsUntilAFileIsSettled_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<int>("laterBy"); // seconds
    QTest::newRow("another size") << QByteArray(debugFile + "# more\n") << 0;
    QTest::newRow("a later time") << debugFile << 1;
    QTest::newRow("an earlier time") << debugFile << -1;
}

void LogLevelRewriting::waitsUntilAFileIsSettled()
{
    QFETCH(QByteArray, contents);
    QFETCH(int, laterBy);
    const QDateTime time = QDateTime::currentDateTime();
    CountedWrites f(debugFile);
    f.write(debugFile, time);
    QCOMPARE(f.rewrite.applyIfSettled(2), Outcome::Failed);
    f.write(contents, time.addSecs(laterBy));
    QCOMPARE(f.rewrite.applyIfSettled(2), Outcome::Failed);
    QCOMPARE(f.writes, 0);
    QCOMPARE(f.contents(), contents);
    QCOMPARE(f.rewrite.applyIfSettled(2), Outcome::Done);
    QCOMPARE(f.writes, 1);
}

void LogLevelRewriting::checksAgainJustBeforeWriting()
{
    const QByteArray saved = debugFile + "# saved by somebody\n";
    CountedWrites f(debugFile);
    QCOMPARE(f.rewrite.applyIfSettled(2), Outcome::Failed);
    f.afterReading = [&f, &saved] { f.write(saved, QDateTime::currentDateTime()); };
    QCOMPARE(f.rewrite.applyIfSettled(2), Outcome::Failed);
    QCOMPARE(f.writes, 0);
    QCOMPARE(f.contents(), saved);
}

void LogLevelRewriting::leavesAFileAloneThatIsBeingSaved()
{
    const QByteArray text = "log4cpp.rootCategory = DEBUG, a_root\n# the rest\n";
    CountedWrites f(text);
    QCOMPARE(f.rewrite.apply(0), Outcome::Failed);
    (void)f.rewrite.applyIfSettled(0);
    QFile other(f.path);
    QVERIFY(other.open(QIODevice::WriteOnly | QIODevice::Unbuffered)); // truncates
    other.write("log4cpp.rootCategory = DEBUG, a_root\n");
    QCOMPARE(f.rewrite.applyIfSettled(0), Outcome::Failed);
    other.write("log4cpp.category.qzsdk = DEBUG, a_qzsdk\n");
    other.close();
    QCOMPARE(f.rewrite.applyIfSettled(0), Outcome::Failed);
    QCOMPARE(f.rewrite.applyIfSettled(0), Outcome::Done);
    QCOMPARE(unixLines(f.contents()), infoFile);
}

void LogLevelRewriting::replacesWhatIsThereWhenAMarkerIsMissing()
{
    ScratchFolder scratch;
    LogLevelRewrite rewrite(scratch.file(name(), "x\nlog4cpp.rootCategory = WARN"));
    QCOMPARE(rewrite.apply(2), Outcome::Failed);
    QCOMPARE(unixLines(scratch.read(name())), QByteArray("x\nlog4cpp.rootCategory = FATAL\n"));
}

void LogLevelRewriting::readsTheFileEachTime()
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
    QCOMPARE(output.lines(), QStringList{"open failed"});
    QVERIFY(!QFileInfo::exists(scratch.path(name())));
}

void LogLevelRewriting::failsOnAFolder()
{
    ScratchFolder scratch;
    DebugCapture output;
    QCOMPARE(LogLevelRewrite(scratch.folder(name())).apply(0), Outcome::Unreadable);
    QCOMPARE(output.lines(), QStringList{"open failed"});
}

void LogLevelRewriting::failsOnAnEmptyPath()
{
    DebugCapture output;
    QCOMPARE(LogLevelRewrite(QString()).apply(0), Outcome::Unreadable);
    QVERIFY(output.contains("open failed"));
}

void LogLevelRewriting::failsOnAFileThatMayNotBeRead()
{
    if (!OrdinaryUser::available())
        QSKIP("permissions cannot be revoked on this system");
    ScratchFolder scratch;
    const QString path = fileWithRights(scratch, Everybody::mayWrite);
    DebugCapture output;
    {
        const OrdinaryUser user;
        QVERIFY(QFileInfo::exists(path));
        QCOMPARE(LogLevelRewrite(path).apply(1), Outcome::Unreadable);
    }
    QCOMPARE(output.lines(), QStringList{"open failed"});
    QCOMPARE(scratch.read(name()), infoFile);
}

void LogLevelRewriting::failsOnAFileThatCannotBeReadAnyFurther()
{
    const QString path = "/proc/self/mem"; // opens, but cannot be read
    if (!QFileInfo::exists(path))
        QSKIP("there is no such file here");
    const DebugCapture output;
    const Diagnostics diagnostics;
    QVERIFY(!PropertiesFile::read(path));
    QCOMPARE(output.lines().size(), 1);
    QVERIFY(output.contains("log config not readable: "));
}

void LogLevelRewriting::failsOnAFileThatMayNotBeWritten()
{
    if (!OrdinaryUser::available())
        QSKIP("permissions cannot be revoked on this system");
    ScratchFolder scratch;
    const QString path = fileWithRights(scratch, Everybody::mayRead);
    const OrdinaryUser user;
    QCOMPARE(LogLevelRewrite(path).apply(1), Outcome::Failed);
    QCOMPARE(scratch.read(name()), infoFile);
}

void LogLevelRewriting::failsOnAFileThatIsRightAlreadyButMayNotBeWritten()
{
    if (!OrdinaryUser::available())
        QSKIP("permissions cannot be revoked on this system");
    ScratchFolder scratch;
    const QString path = fileWithRights(scratch, Everybody::mayRead);
    const OrdinaryUser user;
    QCOMPARE(LogLevelRewrite(path).apply(0), Outcome::Failed);
}

void LogLevelRewriting::keepsBinaryContents()
{
    QByteArray bytes;
    for (int i = 0; i < 65536; ++i)
        bytes.append(char(i ^ (i >> 8)));
    bytes.replace("\r\n", "\n"); // line ends depend on the platform
    ScratchFolder scratch;
    const QString path = scratch.file(name(), bytes + '\n' + infoFile + bytes);
    QCOMPARE(LogLevelRewrite(path).apply(1), Outcome::Done);
    QCOMPARE(unixLines(scratch.read(name())), bytes + '\n' + debugFile + bytes);
}

void LogLevelRewriting::overwritesOnlyWhatIsThere()
{
    ScratchFolder scratch;
    QVERIFY(!PropertiesFile::overwrite(scratch.path(name()), infoFile.toStdString()));
    QVERIFY(!QFileInfo::exists(scratch.path(name())));
}

void LogLevelRewriting::logsNothingOnSuccess()
{
    ScratchFolder scratch;
    DebugCapture output;
    const Diagnostics diagnostics;
    QCOMPARE(LogLevelRewrite(scratch.file(name(), infoFile)).apply(1), Outcome::Done);
    QCOMPARE(output.lines(), QStringList());
}

void LogLevelRewriting::logsOnceThatLinesAreMissing()
{
    ScratchFolder scratch;
    const QString path = scratch.file(name(), "log4cpp.rootCategory = WARN\n");
    const QStringList once{"log level lines missing: " + path};
    DebugCapture output;
    const Diagnostics diagnostics;
    LogLevelRewrite rewrite(path);
    QCOMPARE(rewrite.apply(1), Outcome::Failed);
    QCOMPARE(rewrite.apply(0), Outcome::Failed);
    QCOMPARE(rewrite.problem(), LogLevelRewrite::Problem::LinesMissing);
    QCOMPARE(output.take(), once);
    QCOMPARE(LogLevelRewrite(path).apply(1), Outcome::Failed); // the next click logs it again
    QCOMPARE(output.take(), once);
}

void LogLevelRewriting::logsOnceThatTheFileIsNotWritable()
{
    if (!OrdinaryUser::available())
        QSKIP("permissions cannot be revoked on this system");
    ScratchFolder scratch;
    const QString path = fileWithRights(scratch, Everybody::mayRead);
    const OrdinaryUser user;
    DebugCapture output;
    const Diagnostics diagnostics;
    LogLevelRewrite rewrite(path);
    QCOMPARE(rewrite.apply(1), Outcome::Failed);
    QCOMPARE(rewrite.apply(0), Outcome::Failed);
    QCOMPARE(rewrite.problem(), LogLevelRewrite::Problem::NotWritable);
    QCOMPARE(output.lines(), QStringList{"log config not writable: " + path});
}

void LogLevelRewriting::logsOnlyWhenSwitchedOn()
{
    ScratchFolder scratch;
    DebugCapture output;
    QCOMPARE(LogLevelRewrite(scratch.file(name(), "nothing")).apply(1), Outcome::Failed);
    QCOMPARE(output.lines(), QStringList());
}

QTEST_GUILESS_MAIN(LogLevelRewriting)
#include "tst_log_level_rewrite.moc"
