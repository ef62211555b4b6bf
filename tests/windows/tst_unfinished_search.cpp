#include "ScratchFolder.h"

#include <QProcess>
#include <QTest>

/// A program that ends while its findstr is still running.
class UnfinishedSearch : public QObject
{
    Q_OBJECT

private slots:
    void theProgramEndsWhateverFindstrDoes();
};

void UnfinishedSearch::theProgramEndsWhateverFindstrDoes()
{
    ScratchFolder scratch;
    const QString waiting = scratch.path("findstr-waits");
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("VANTREL_FINDSTR_WAITS", QDir::toNativeSeparators(waiting));
    program.setProcessEnvironment(environment);
    program.start(VANTREL_STUCK_SEARCH, {scratch.file("a.log", "x\n"), waiting});
    const bool ended = program.waitForFinished(20'000);
    const bool findstrWaits = QFile::remove(waiting);
    QVERIFY(ended);
    QVERIFY(findstrWaits);
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);
    QCOMPARE(program.readAllStandardOutput().trimmed(), QByteArray("searching"));
}

QTEST_GUILESS_MAIN(UnfinishedSearch)
#include "tst_unfinished_search.moc"
