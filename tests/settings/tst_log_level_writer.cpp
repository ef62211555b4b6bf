#include "Faults.h"
#include "Hub.h"
#include "LogConfig.h"
#include "LogLevelRetry.h"
#include "LogLevelWriter.h"
#include "ScratchFolder.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>

using Problem = LogLevelRewrite::Problem;

/// Setting levels in several files, and retries for files in which that failed.
class LogLevelWriting : public QObject
{
    Q_OBJECT

private slots:
    void init() { resetHub(); }

    void retriesOnlyReadableFiles();
    void retriesEachFileByItself();
    void retriesAFileOnce();
    void setsTheLevelInARetriedFileAtOnce();
    void doesNotWaitWhereNothingIsRetried();
    void signalsWhenARetryStartsMeetsAnotherProblemAndEnds();
};

namespace {

struct Fixture
{
    QString file(const QString &name, const QByteArray &contents)
    {
        return scratch.file(name, contents);
    }
    [[nodiscard]] int retries() const { return writer.findChildren<LogLevelRetry *>().size(); }

    ScratchFolder scratch;
    LogLevelWriter writer;
    QString wrong = file("wrong", "no level here\n");
    QString right = file("right", infoFile);
    QString missing = scratch.path("missing");
};

} // namespace

void LogLevelWriting::retriesOnlyReadableFiles()
{
    Fixture f;
    QVERIFY(!f.writer.write(f.missing, 1));
    QCOMPARE(f.writer.retryProblem(f.missing), std::nullopt);
    QVERIFY(f.writer.write(f.right, 1));
    QCOMPARE(f.writer.retryProblem(f.right), std::nullopt);
    QVERIFY(!f.writer.write(f.wrong, 1));
    QCOMPARE(f.writer.retryProblem(f.wrong), Problem::LinesMissing);
}

void LogLevelWriting::retriesEachFileByItself()
{
    Fixture f;
    const QString other = f.file("other", "nor here\n");
    QVERIFY(!f.writer.write(f.wrong, 1));
    QVERIFY(!f.writer.write(other, 1));
    f.file("wrong", debugFile);
    f.writer.waitForRetry(f.wrong);
    QCOMPARE(unixLines(f.scratch.read("wrong")), infoFile);
    QCOMPARE(f.writer.retryProblem(f.wrong), std::nullopt);
    QCOMPARE(f.writer.retryProblem(other), Problem::LinesMissing);
}

void LogLevelWriting::retriesAFileOnce()
{
    Fixture f;
    QVERIFY(!f.writer.write(f.wrong, 1));
    QVERIFY(!f.writer.write(f.wrong, 2));
    QCOMPARE(f.retries(), 1);
}

void LogLevelWriting::setsTheLevelInARetriedFileAtOnce()
{
    Fixture f;
    QVERIFY(!f.writer.write(f.wrong, 1));
    f.file("wrong", infoFile);
    QVERIFY(f.writer.write(f.wrong, 2));
    QCOMPARE(unixLines(f.scratch.read("wrong")), fatalFile);
    hub().logLevel = 2; // as the window does; the last round writes it again
    f.writer.waitForRetry(f.wrong);
    QCOMPARE(unixLines(f.scratch.read("wrong")), fatalFile);
}

void LogLevelWriting::doesNotWaitWhereNothingIsRetried()
{
    Fixture f;
    f.writer.waitForRetry(f.right);
    QVERIFY(!f.writer.write(f.wrong, 1));
    f.writer.waitForRetry(f.right);
    QCOMPARE(f.retries(), 1);
}

void LogLevelWriting::signalsWhenARetryStartsMeetsAnotherProblemAndEnds()
{
    if (!OrdinaryUser::available())
        QSKIP("permissions cannot be revoked on this system");
    Fixture f;
    QVERIFY(QFile::setPermissions(f.scratch.path(), Everybody::mayDoAll));
    QVERIFY(QFile::setPermissions(f.right, Everybody::mayRead));
    QVector<std::optional<Problem>> problems;
    connect(&f.writer, &LogLevelWriter::retryChanged, &f.writer, [&](const QString &path) {
        QCOMPARE(path, f.right);
        problems.append(f.writer.retryProblem(path));
    });
    {
        const OrdinaryUser user;
        QVERIFY(!f.writer.write(f.right, 1));
        QCOMPARE(problems, {Problem::NotWritable});
    }
    QVERIFY(QFile::setPermissions(f.right, Everybody::mayReadAndWrite));
    f.file("right", "no level any more\n");
    QTRY_COMPARE(problems.size(), 2);
    f.file("right", infoFile);
    f.writer.waitForRetry(f.right);
    const QVector<std::optional<Problem>> expected{Problem::NotWritable, Problem::LinesMissing,
                                                   std::nullopt};
    QCOMPARE(problems, expected);
}

QTEST_GUILESS_MAIN(LogLevelWriting)
#include "tst_log_level_writer.moc"
