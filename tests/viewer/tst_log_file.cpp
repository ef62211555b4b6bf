#include "DebugCapture.h"
#include "Diagnostics.h"
#include "Faults.h"
#include "LogFile.h"
#include "Machine.h"
#include "ScratchFolder.h"

#include <QProcess>
#include <QTest>

class LogFileTest : public QObject
{
    Q_OBJECT

private slots:
    void handsOutLines_data();
    void handsOutLines();
    void stopsAtTheLimit();
    void countsLinesFromZero();
    void handsOutALineOfTenMegabytes();
    void seesWhatIsWrittenMeanwhile();
    void endsWhereAFileWasCutMeanwhile();
    void saysWhenAFileCannotBeReadAnyFurther();
    void cannotOpen_data();
    void cannotOpen();
    void cannotOpenWithoutPermission();

private:
    ScratchFolder scratch;
};

namespace {

QByteArrayList linesOf(const QString &path, int maxLines = 100)
{
    QByteArrayList lines;
    const auto count = readLogFile(path, maxLines, [&lines](std::string_view line, int) {
        lines.append(QByteArray(line.data(), int(line.size())));
    });
    return count == lines.size() ? lines : QByteArrayList{"miscounted or not opened"};
}

} // namespace

void LogFileTest::handsOutLines_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QByteArrayList>("lines");

    QTest::newRow("two") << QByteArray("a\nb\n") << QByteArrayList{"a", "b"};
    QTest::newRow("carriage returns") << QByteArray("a\r\nb\r\n") << QByteArrayList{"a", "b"};
    QTest::newRow("a lone one is content") << QByteArray("a\rb\n") << QByteArrayList{"a\rb"};
    QTest::newRow("last line unfinished") << QByteArray("a\nb") << QByteArrayList{"a"};
    QTest::newRow("only an unfinished one") << QByteArray("a") << QByteArrayList();
    QTest::newRow("unfinished with a carriage return") << QByteArray("a\r") << QByteArrayList();
    QTest::newRow("empty lines") << QByteArray("\n\n") << QByteArrayList{"", ""};
    QTest::newRow("empty") << QByteArray() << QByteArrayList();
    QTest::newRow("cut at a zero byte") << QByteArray("a\0b\nc\n", 6) << QByteArrayList{"a", "c"};
    QTest::newRow("zero before the end") << QByteArray("a\0\r\n", 4) << QByteArrayList{"a"};
}

void LogFileTest::handsOutLines()
{
    QFETCH(QByteArray, contents);
    QTEST(linesOf(scratch.file("a.log", contents)), "lines");
}

void LogFileTest::stopsAtTheLimit()
{
    const QString path = scratch.file("a.log", QByteArray("x\n").repeated(10));
    QCOMPARE(linesOf(path, 9).size(), 9);
    QCOMPARE(linesOf(path, 10).size(), 10);
    QCOMPARE(linesOf(path, 11).size(), 10);
    QCOMPARE(linesOf(path, 0).size(), 0);
    // The limit can be reached in the middle of a long text, not only at its end.
    const QString large = scratch.file("large.log", QByteArray("x\n").repeated(500'000));
    QCOMPARE(linesOf(large, 300'000).size(), 300'000);
}

void LogFileTest::countsLinesFromZero()
{
    QList<int> numbers;
    const QString path = scratch.file("a.log", "a\nb\n");
    QVERIFY(readLogFile(path, 10, [&numbers](std::string_view, int n) { numbers.append(n); }));
    QCOMPARE(numbers, QList<int>({0, 1}));
}

void LogFileTest::handsOutALineOfTenMegabytes()
{
    const QByteArray line(10'000'000, 'x');
    const QString path = scratch.file("long.log", "a\n" + line + "\nb\n");
    const QByteArrayList expected{"a", line, "b"};
    QVERIFY(linesOf(path) == expected);
}

void LogFileTest::seesWhatIsWrittenMeanwhile()
{
    const QString path = scratch.file("growing.log", QByteArray("x\n").repeated(9));
    QFile writer(path);
    QVERIFY(writer.open(QIODevice::Append | QIODevice::Unbuffered));
    const auto count = readLogFile(path, 1000, [&writer](std::string_view line, int number) {
        if (line == "x" && number < 9)
            writer.write("grown\n");
    });
    if (underWine() && count == 9)
        QSKIP("Wine's run time reads nothing more once it has been at a file's end");
    QCOMPARE(count.value_or(-1), 18);
}

void LogFileTest::endsWhereAFileWasCutMeanwhile()
{
    const QString path = scratch.file("shrinking.log", QByteArray("x\n").repeated(1'000'000));
    const auto count = readLogFile(path, 2'000'000, [&path](std::string_view, int number) {
        if (number == 0)
            QVERIFY(QFile::resize(path, 0));
    });
    QVERIFY(count.value_or(0) > 0);
    QVERIFY(count.value_or(0) < 1'000'000);
}

void LogFileTest::saysWhenAFileCannotBeReadAnyFurther()
{
    const QString path = "/proc/self/mem"; // opens, but cannot be read
    if (!QFile::exists(path))
        QSKIP("no such file here");
    const Diagnostics diagnostics("vantrel.findstr");
    const DebugCapture output;
    QCOMPARE(readLogFile(path, 10, [](std::string_view, int) { QFAIL("a line"); }).value_or(-1), 0);
    QCOMPARE(output.lines(), QStringList{"read failed: " + path});
}

void LogFileTest::cannotOpen_data()
{
    QTest::addColumn<QString>("path");

    QTest::newRow("missing") << scratch.path("missing.log");
    QTest::newRow("folder") << scratch.folder("folder.log");
    QTest::newRow("no name") << QString();
    const QString pipe = scratch.path("pipe.log");
    if (QProcess::execute("mkfifo", {pipe}) == 0)
        QTest::newRow("pipe") << pipe;
}

void LogFileTest::cannotOpen()
{
    QFETCH(QString, path);
    QVERIFY(!readLogFile(path, 10, [](std::string_view, int) { QFAIL("a line"); }));
}

void LogFileTest::cannotOpenWithoutPermission()
{
    if (!OrdinaryUser::available())
        QSKIP("permissions cannot be tested here");
    const QString path = scratch.file("locked.log", "a\n");
    QVERIFY(QFile::setPermissions(path, QFileDevice::Permissions()));
    const OrdinaryUser user;
    QVERIFY(!readLogFile(path, 10, [](std::string_view, int) { QFAIL("a line"); }));
}

QTEST_APPLESS_MAIN(LogFileTest)
#include "tst_log_file.moc"
