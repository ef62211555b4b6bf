#include "DebugCapture.h"
#include "Diagnostics.h"
#include "LogConfig.h"
#include "LogLevelRewrite.h"
#include "LogViewer.h"
#include "Machine.h"
#include "MemoryLimit.h"
#include "ScratchFolder.h"
#include "SearchRun.h"
#include "ZipArchive.h"
#include "ZipContents.h"

#include <QAction>
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QLineEdit>
#include <QTableWidget>
#include <QTest>

namespace {

constexpr qint64 megabyte = 1024 * 1024;
constexpr const char *whySkipped = "sanitizers need more memory than can be taken away";

} // namespace

class LowMemory : public QObject
{
    Q_OBJECT

private slots:
    void endsASearchThatCannotBegin(); // first: no cached thread stacks yet
    void endsASearchThatRunsOutOfMemory();
    void endsASearchWhoseMatchesDoNotFitIntoTheTable();
    void showsTheLinesForWhichThereIsMemory();
    void copiesNothingThatDoesNotFit();
    void leavesOutAFileThatDoesNotFitAndPacksTheOthers();
    void leavesAPropertiesFileAsItIs_data();
    void leavesAPropertiesFileAsItIs();
};

void LowMemory::endsASearchThatCannotBegin()
{
    if (isSanitized())
        QSKIP(whySkipped);
    const auto neverCalled = [](const auto &...) { return true; };
    const MemoryLimit limit(megabyte); // less than a thread's stack
    SearchRun run(neverCalled, "x", {}, 10);
    QVERIFY(run.isOver());
    QVERIFY(run.hasFailed());
}

void LowMemory::endsASearchThatRunsOutOfMemory()
{
    if (isSanitized())
        QSKIP(whySkipped);
    ScratchFolder scratch;
    const QString log = scratch.sparseFile("one line.log", 512 * megabyte);
    bool failed = false;
    {
        const MemoryLimit limit(32 * megabyte);
        SearchRun run(systemLineSearch, "x", log, 10);
        QVERIFY(QTest::qWaitFor([&run] { return run.isOver(); }, 20000));
        failed = run.hasFailed();
    }
    QVERIFY(failed);
}

void LowMemory::endsASearchWhoseMatchesDoNotFitIntoTheTable()
{
    if (isSanitized())
        QSKIP(whySkipped);
    const QByteArray piece = "2024-03-02 12:00:00.250 INFO [1] [Camera] " + QByteArray(400, 'x');
    LogViewer viewer(nullptr, [piece](const auto &, const auto &, const PieceSink &sink, auto &) {
        for (int i = 0; i < 50'000; ++i)
            sink(piece.constData());
        return true;
    });
    auto *const table = viewer.findChild<QTableWidget *>("tableWidget");
    viewer.findChild<QLineEdit *>("lineEdit")->setText("x");
    const DebugCapture output;
    {
        const MemoryLimit limit(64 * megabyte); // the table needs more than 100
        QMetaObject::invokeMethod(&viewer, "on_btnSearch_clicked");
    }
    QVERIFY(table->item(0, 0) != nullptr);
    QVERIFY(table->item(49'999, 0) == nullptr);
    QVERIFY(output.contains("Failed to execute findstr command."));
}

void LowMemory::showsTheLinesForWhichThereIsMemory()
{
    if (isSanitized())
        QSKIP(whySkipped);
    ScratchFolder scratch;
    const QByteArray line =
        "2024-03-02 12:00:00.250 INFO [1] [Camera] " + QByteArray(10 * megabyte, 'x') + '\n';
    const QString log = scratch.file("long lines.log", line.repeated(10));
    LogViewer viewer(nullptr);
    auto *const table = viewer.findChild<QTableWidget *>("tableWidget");
    const Diagnostics diagnostics;
    const DebugCapture output;
    {
        const MemoryLimit limit(200 * megabyte); // a line needs four times its size
        QVERIFY(viewer.openLogFile(log.toStdString()));
    }
    int shown = 0;
    while (table->item(shown, 0) != nullptr)
        ++shown;
    QVERIFY2(shown > 0 && shown < 10, qPrintable(QString::number(shown)));
    QCOMPARE(table->item(shown - 1, 3)->toolTip().size(), line.size() - 1);
    QCOMPARE(table->rowCount(), shown + 5);
    QVERIFY(output.contains(
        QString("out of memory, left out from line %1 on: \"%2\"").arg(shown + 1).arg(log)));
}

void LowMemory::copiesNothingThatDoesNotFit()
{
    if (isSanitized())
        QSKIP(whySkipped);
    ScratchFolder scratch;
    const QByteArray line =
        "2024-03-02 12:00:00.250 INFO [1] [Camera] " + QByteArray(10 * megabyte, 'x') + '\n';
    LogViewer viewer(nullptr);
    QVERIFY(viewer.openLogFile(scratch.file("a.log", line.repeated(5)).toStdString()));
    QGuiApplication::clipboard()->setText("before");
    const Diagnostics diagnostics;
    const DebugCapture output;
    {
        const MemoryLimit limit(50 * megabyte); // the text needs 100
        viewer.findChild<QAction *>("actionCopyAll")->trigger();
    }
    QCOMPARE(QGuiApplication::clipboard()->text(), "before");
    QVERIFY(output.contains("out of memory, nothing copied"));
}

void LowMemory::leavesOutAFileThatDoesNotFitAndPacksTheOthers()
{
    if (isSanitized())
        QSKIP(whySkipped);
    ScratchFolder scratch;
    const QString zip = scratch.path("a.zip");
    const QString small = scratch.file("small", "small");
    const QString large = scratch.sparseFile("large", 1024 * megabyte);
    const Diagnostics diagnostics;
    const DebugCapture output;
    {
        ZipArchive archive(zip);
        const MemoryLimit limit(256 * megabyte);
        archive.addFile("before", small);
        archive.addFile("large", large);
        archive.addFile("behind", small);
        QVERIFY(archive.close());
    }
    QCOMPARE(zipEntryNames(zip), QStringList({"before", "behind"}));
    QVERIFY(output.contains(QString("out of memory, left out of the zip: \"%1\"").arg(large)));
}

void LowMemory::leavesAPropertiesFileAsItIs_data()
{
    QTest::addColumn<qint64>("memory");
    QTest::newRow("that cannot be read") << 100 * megabyte;
    QTest::newRow("that can be read, not rewritten") << 300 * megabyte;
}

void LowMemory::leavesAPropertiesFileAsItIs()
{
    if (isSanitized())
        QSKIP(whySkipped);
    QFETCH(qint64, memory);
    ScratchFolder scratch;
    const QString path = scratch.file("sdk.properties", infoFile);
    QVERIFY(QFile::resize(path, 200 * megabyte));
    const QByteArray before = scratch.read("sdk.properties");
    LogLevelRewrite rewrite(path);
    const DebugCapture output;
    const Diagnostics diagnostics;
    {
        const MemoryLimit limit(memory);
        QCOMPARE(rewrite.apply(1), LogLevelRewrite::Outcome::Unreadable);
    }
    QVERIFY(output.contains("log config too large for memory: "));
    QVERIFY(scratch.read("sdk.properties") == before);
}

QTEST_MAIN(LowMemory)
#include "tst_low_memory.moc"
