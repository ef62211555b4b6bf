#include "Machine.h"
#include "SampleHome.h"
#include "ScratchFolder.h"

#include <QDirIterator>
#include <QProcess>
#include <QSettings>
#include <QTest>

class SampleHomeTest : public QObject
{
    Q_OBJECT

private slots:
    void isTheSameForTheSamePlan();
    void differsForAnotherSeed();
    void hasLogSourcesWithLogs();
    void hasTransportLogsBelowTheClientsFolder();
    void hasDumpsAndOneInASubFolder();
    void spreadsModificationTimesOverDaysBeforeNow();
    void registersTheCameraClientInAFolderWithAComma();
    void setsTheClientsLanguage();
    void configuresTheSdksLog();
    void canBeEmpty();
    void leavesAHomeThatIsThereAlone_data();
    void leavesAHomeThatIsThereAlone();
    void saysThatAFolderCannotBeMade();
    void programTakesItsSizesFromTheCommandLine();
    void programRefusesWhatItDoesNotUnderstand_data();
    void programRefusesWhatItDoesNotUnderstand();
};

namespace {

/// The default home with short logs, which are fast to write.
SampleHomePlan small()
{
    SampleHomePlan plan;
    plan.logLines = 40;
    return plan;
}

/// Contents and time of every file below @p folder, by relative path.
QMap<QString, QPair<QByteArray, QDateTime>> everything(const QString &folder)
{
    QMap<QString, QPair<QByteArray, QDateTime>> found;
    QDirIterator walk(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        QFile file(walk.next());
        if (!file.open(QIODevice::ReadOnly))
            qFatal("cannot read %s", qPrintable(file.fileName()));
        found.insert(QDir(folder).relativeFilePath(walk.filePath()),
                     {file.readAll(), walk.fileInfo().lastModified()});
    }
    return found;
}

QStringList names(const QString &folder, const QString &pattern = QString("*"))
{
    return QDir(folder).entryList({pattern}, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot);
}

/// Runs the program with these arguments and returns its exit code.
int runProgram(const QStringList &arguments, QString *said = nullptr)
{
    QProcess process;
    process.start(SAMPLE_HOME_PROGRAM, arguments);
    process.waitForFinished();
    if (said)
        *said = QString::fromLocal8Bit(process.readAllStandardError());
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

} // namespace

void SampleHomeTest::isTheSameForTheSamePlan()
{
    const ScratchFolder scratch;
    const QString home = scratch.path("home");
    QCOMPARE(layOutSampleHome(home, small()), QString());
    const auto first = everything(home);
    QVERIFY(first.size() > 10);
    QVERIFY(QDir(home).removeRecursively());
    QCOMPARE(layOutSampleHome(home, small()), QString());
    QCOMPARE(everything(home), first);
}

void SampleHomeTest::differsForAnotherSeed()
{
    const ScratchFolder scratch;
    SampleHomePlan plan = small();
    QCOMPARE(layOutSampleHome(scratch.path("a"), plan), QString());
    plan.seed = 2;
    QCOMPARE(layOutSampleHome(scratch.path("b"), plan), QString());
    QVERIFY(everything(scratch.path("a/QZSDK")) != everything(scratch.path("b/QZSDK")));
}

void SampleHomeTest::hasLogSourcesWithLogs()
{
    const ScratchFolder home;
    SampleHomePlan plan = small();
    plan.sources = 7;
    plan.logFiles = 4;
    plan.logLines = 100;
    QCOMPARE(layOutSampleHome(home.path(), plan), QString());
    const QStringList sources = names(home.path("QZSDK"));
    QCOMPARE(sources.size(), 7);
    QVERIFY(sources.contains("QZviewer"));
    QVERIFY(sources.contains("QZcontrol"));
    for (const QString &source : sources) {
        const QString folder = home.path("QZSDK/" + source);
        const QStringList logs = names(folder, "*.log*");
        QSet<qint64> sizes;
        for (const QString &log : logs)
            sizes.insert(QFileInfo(folder + '/' + log).size());
        QCOMPARE(logs.size(), 4);
        QVERIFY2(sizes.size() > 1, qPrintable(source));
    }
    QCOMPARE(home.read("QZSDK/QZcontrol/qzcontrol.log").count('\n'), 100);
    QVERIFY(home.read("QZSDK/QZcontrol/qzcontrol.log.1").count('\n') >= 50);
}

void SampleHomeTest::hasTransportLogsBelowTheClientsFolder()
{
    const ScratchFolder home;
    QCOMPARE(layOutSampleHome(home.path(), small()), QString());
    QCOMPARE(names(home.path("QZSDK/QZviewer/gentl_cxp_log")),
             QStringList({"gentl_cxp_0.log", "gentl_cxp_1.log", "links.txt"}));
}

void SampleHomeTest::hasDumpsAndOneInASubFolder()
{
    const ScratchFolder home;
    SampleHomePlan plan = small();
    plan.dumps = 5;
    QCOMPARE(layOutSampleHome(home.path(), plan), QString());
    const QString folder = home.path("QZSDK/QZviewer");
    const QStringList dumps = names(folder, "*.dmp");
    QCOMPARE(dumps.size(), 5);
    for (const QString &dump : dumps) {
        const QByteArray bytes = home.read("QZSDK/QZviewer/" + dump);
        QVERIFY(bytes.startsWith("MDMP"));
        QVERIFY(bytes.contains('\0'));
    }
    QCOMPARE(names(folder + "/sent", "*.dmp").size(), 1);
}

void SampleHomeTest::spreadsModificationTimesOverDaysBeforeNow()
{
    const ScratchFolder home;
    SampleHomePlan plan = small();
    plan.now = QDateTime(QDate(2024, 7, 1), QTime(12, 0));
    QCOMPARE(layOutSampleHome(home.path(), plan), QString());
    QSet<QDate> days;
    const auto files = everything(home.path());
    for (const auto &file : files) {
        QVERIFY(file.second <= plan.now);
        days.insert(file.second.date());
    }
    QVERIFY2(days.size() >= 7, qPrintable(QString::number(days.size())));
}

void SampleHomeTest::registersTheCameraClientInAFolderWithAComma()
{
    const ScratchFolder scratch;
    // Windows does not allow quotation marks in names.
    const QString quoted = onWindows() ? "mine" : "\"mine\"";
    const QString home =
        scratch.path(QString("a home, 50%1 full; %2 \u76f8\u673a").arg("%", quoted));
    QCOMPARE(layOutSampleHome(home, small()), QString());
    const QSettings settings(home + "/.config/Pemberk/qzcfgfile.ini", QSettings::IniFormat);
    QCOMPARE(settings.value("DefaultIcon").toString(), home + "/Client/QZviewer.exe,0");
}

void SampleHomeTest::setsTheClientsLanguage()
{
    for (const bool chinese : {false, true}) {
        const ScratchFolder home;
        SampleHomePlan plan = small();
        plan.chinese = chinese;
        QCOMPARE(layOutSampleHome(home.path(), plan), QString());
        const QSettings settings(home.path("AppData/Roaming/QZviewer/language.ini"),
                                 QSettings::IniFormat);
        QCOMPARE(settings.value("language/lang", -1).toInt(), chinese ? 0 : 1);
    }
}

void SampleHomeTest::configuresTheSdksLog()
{
    const ScratchFolder home;
    QCOMPARE(layOutSampleHome(home.path(), small()), QString());
    const QByteArray text = home.read("Client/SDKLOG_default.properties");
    QCOMPARE(text.count("log4cpp.rootCategory = INFO\n"), 1);
    QCOMPARE(text.count("log4cpp.category.qzsdk = INFO, a_qzsdk\n"), 1);
    QVERIFY(text.contains("%d{%Y-%m-%d %H:%M:%S,%l} %p [%t] [%c] %m%n\n"));
}

void SampleHomeTest::canBeEmpty()
{
    const ScratchFolder home;
    SampleHomePlan plan = small();
    plan.sources = 0;
    QCOMPARE(layOutSampleHome(home.path(), plan), QString());
    QCOMPARE(names(home.path("QZSDK")), QStringList());
    plan.sources = 1;
    plan.logFiles = 1;
    plan.logLines = 0;
    plan.dumps = 0;
    QVERIFY(QDir(home.path()).removeRecursively());
    QCOMPARE(layOutSampleHome(home.path(), plan), QString());
    const QStringList log = names(home.path("QZSDK/QZviewer"), "*.log");
    QCOMPARE(log.size(), 1);
    QCOMPARE(home.read("QZSDK/QZviewer/" + log.constFirst()), QByteArray());
    QVERIFY(!QFileInfo::exists(home.path("QZSDK/QZviewer/sent")));
}

void SampleHomeTest::leavesAHomeThatIsThereAlone_data()
{
    QTest::addColumn<QString>("theirs");
    QTest::newRow("SDK folder") << "QZSDK/QZviewer/theirs.log";
    QTest::newRow("registration") << ".config/Pemberk/qzcfgfile.ini";
}

void SampleHomeTest::leavesAHomeThatIsThereAlone()
{
    QFETCH(QString, theirs);
    ScratchFolder home;
    home.file(theirs, "mine");
    const auto before = everything(home.path());
    const QString said = layOutSampleHome(home.path(), {});
    QVERIFY2(said.contains("is there already"), qPrintable(said));
    QCOMPARE(everything(home.path()), before);
}

void SampleHomeTest::saysThatAFolderCannotBeMade()
{
    ScratchFolder scratch;
    const QString blocked = scratch.file("a file") + "/home";
    const QString said = layOutSampleHome(blocked, {});
    QVERIFY2(said.contains(blocked), qPrintable(said));
}

void SampleHomeTest::programTakesItsSizesFromTheCommandLine()
{
    const ScratchFolder scratch;
    const QString home = scratch.path("home");
    const QString arguments = "--seed 5 --log-files 2 --log-lines 30 --sources 2 "
                              "--dumps 1 --language chinese "
                              "--now 2024-02-29T08:00:00";
    QCOMPARE(runProgram(arguments.split(' ') << home), 0);
    const auto made = everything(home);

    SampleHomePlan plan = small();
    plan.seed = 5;
    plan.logFiles = 2;
    plan.logLines = 30;
    plan.sources = 2;
    plan.dumps = 1;
    plan.chinese = true;
    plan.now = QDateTime(QDate(2024, 2, 29), QTime(8, 0));
    QVERIFY(QDir(home).removeRecursively());
    QCOMPARE(layOutSampleHome(home, plan), QString());
    QCOMPARE(made, everything(home));
}

void SampleHomeTest::programRefusesWhatItDoesNotUnderstand_data()
{
    QTest::addColumn<QStringList>("arguments");
    const QString folder = "never-made";
    QTest::newRow("no folder") << QStringList();
    QTest::newRow("two folders") << QStringList{folder, folder};
    QTest::newRow("no number") << QStringList{"--log-files=many", folder};
    QTest::newRow("negative") << QStringList{"--dumps=-1", folder};
    QTest::newRow("seed") << QStringList{"--seed=-1", folder};
    QTest::newRow("no time") << QStringList{"--now=yesterday", folder};
    QTest::newRow("language") << QStringList{"--language=latin", folder};
    QTest::newRow("no option") << QStringList{"--colour=red", folder};
}

void SampleHomeTest::programRefusesWhatItDoesNotUnderstand()
{
    QFETCH(QStringList, arguments);
    QString said;
    QCOMPARE(runProgram(arguments, &said), 1);
    QVERIFY(!said.isEmpty());
    QVERIFY(!QFileInfo::exists("never-made"));
}

QTEST_GUILESS_MAIN(SampleHomeTest)
#include "tst_sample_home.moc"
