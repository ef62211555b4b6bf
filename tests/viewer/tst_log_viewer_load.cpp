#include "Faults.h"
#include "ViewerFixture.h"

#include <QProcess>
#include <QSignalSpy>

class LogViewerLoad : public QObject
{
    Q_OBJECT

private slots:
    void splitsALineIntoFourCells();
    void showsALineWithALowerCaseLevelWhole();
    void showsALineThatBeginsWithABlankWhole();
    void givesEveryCellTheWholeLineAsToolTip();
    void showsStructuredLinesWithMissingBrackets();
    void keepsTheFirst100000LinesOfALongerFile();
    void keepsAllOfExactly100000Lines();
    void doesNotShowALastLineWithoutLineFeed();
    void readsTheSamePathOnce();
    void readsAnotherPathAndThenTheFirstAgain();
    void recordsAPathThatCannotBeOpened();
    void clearsTheTableForWhatCannotBeOpened_data();
    void clearsTheTableForWhatCannotBeOpened();
    void showsTheFirstLineWhereverTheTableWasScrolled();
    void showsNothingOfAnEmptyFile();
    void writesTheNumberOfLines();
    void writesTheNumberOfLinesBeforeTheSpareRowsGo();
    void keepsHiddenRowsAndColumns();
    void announcesWhatItFilled();
    void takesLinesForRowsThatAreThereOnly();
    void cutsALineAtItsFirstZeroByte();
    void readsUtf8();
    void replacesWhatIsNoUtf8();
    void doesNotShowAByteOrderMark();
    void takesCrLfForALineEnd();
    void showsALoneCrAsContent();
    void survivesBinaryData();
    void showsALineOfTenMegabytes();

private:
    ScratchFolder scratch;
};

void LogViewerLoad::splitsALineIntoFourCells()
{
    ViewerFixture f;
    QVERIFY(f.openLines({"2024-03-02 12:00:00.250 INFO [00123] [CameraClient] frame received"}));
    QCOMPARE(f.row(0),
             QStringList({"2024-03-02 12:00:00.250", "INFO", "CameraClient", " frame received"}));
    QCOMPARE(f.table().rowCount(), 6);
}

void LogViewerLoad::showsALineWithALowerCaseLevelWhole()
{
    ViewerFixture f;
    QVERIFY(f.openLines({logLine("info")}));
    QCOMPARE(f.row(0), messageOnly(QString::fromLatin1(logLine("info"))));
}

void LogViewerLoad::showsALineThatBeginsWithABlankWhole()
{
    ViewerFixture f;
    QVERIFY(f.openLines({' ' + logLine("INFO")}));
    QCOMPARE(f.row(0), messageOnly(QString::fromLatin1(' ' + logLine("INFO"))));
}

void LogViewerLoad::givesEveryCellTheWholeLineAsToolTip()
{
    ViewerFixture f;
    QVERIFY(f.openLines({logLine("WARN"), "plain text"}));
    for (int column = 0; column < 4; ++column)
        QCOMPARE(f.tip(0, column), QString::fromLatin1(logLine("WARN")));
    QCOMPARE(f.tip(1, 3), "plain text");
}

void LogViewerLoad::showsStructuredLinesWithMissingBrackets()
{
    ViewerFixture f;
    QVERIFY(f.openData("brackets_missing.log"));
    const QString time = "2024-03-02 12:00:00.000";
    const QString none = "";
    QCOMPARE(f.row(0), QStringList({time, "INFO", none, none}));
    QCOMPARE(f.row(1), QStringList({time, "WARN", none, none}));
    QCOMPARE(f.row(2), QStringList({time, "ERROR", "unfinished", none}));
    QCOMPARE(f.row(3), QStringList({time, "FATAL", none, none}));
}

void LogViewerLoad::keepsTheFirst100000LinesOfALongerFile()
{
    ViewerFixture f;
    QByteArray text;
    for (int i = 0; i <= 100'000; ++i)
        text += "line " + QByteArray::number(i) + '\n';
    QVERIFY(f.open(f.folder.file("long.log", text)));
    QCOMPARE(f.table().rowCount(), 100'005);
    QCOMPARE(f.filledRows(), 100'000);
    QCOMPARE(f.text(0, 3), "line 0");
    QCOMPARE(f.text(99'999, 3), "line 99999");
    QCOMPARE(f.text(100'000, 3), "no item");
}

void LogViewerLoad::keepsAllOfExactly100000Lines()
{
    ViewerFixture f;
    QVERIFY(f.open(f.folder.file("a.log", QByteArray("x\n").repeated(100'000))));
    QCOMPARE(f.table().rowCount(), 100'005);
    QCOMPARE(f.filledRows(), 100'000);
}

void LogViewerLoad::doesNotShowALastLineWithoutLineFeed()
{
    ViewerFixture f;
    QVERIFY(f.openData("last_line_without_line_feed.log"));
    QCOMPARE(f.filledRows(), 2);
    QCOMPARE(f.table().rowCount(), 7);
}

void LogViewerLoad::readsTheSamePathOnce()
{
    ViewerFixture f;
    const QString path = f.folder.file("a.log", "one\n");
    QVERIFY(f.open(path));
    f.folder.file("a.log", "two\n");
    QVERIFY(!f.open(path));
    QCOMPARE(f.text(0, 3), "one");
}

void LogViewerLoad::readsAnotherPathAndThenTheFirstAgain()
{
    ViewerFixture f;
    const QString path = f.folder.file("a.log", "one\n");
    QVERIFY(f.open(path));
    QVERIFY(f.openLines({"b1", "b2"}));
    QCOMPARE(f.table().rowCount(), 7);
    f.folder.file("a.log", "two\n");
    QVERIFY(f.open(path));
    QCOMPARE(f.text(0, 3), "two");
    QCOMPARE(f.filledRows(), 1);
}

void LogViewerLoad::recordsAPathThatCannotBeOpened()
{
    ViewerFixture f;
    QVERIFY(f.openLines({"one"}));
    f.output.take();
    const QString path = f.folder.path("late.log");
    QVERIFY(!f.open(path));
    QCOMPARE(f.output.take(), QStringList{"Failed to open file."});
    QCOMPARE(f.table().rowCount(), 100'000);
    QCOMPARE(f.filledRows(), 0);
    f.folder.file("late.log", "here now\n");
    QVERIFY(!f.open(path));
    QCOMPARE(f.filledRows(), 0);
    QVERIFY(f.output.lines().isEmpty());
}

void LogViewerLoad::clearsTheTableForWhatCannotBeOpened_data()
{
    QTest::addColumn<QString>("path");

    QTest::newRow("folder") << scratch.folder("folder.log");
    const QString pipe = scratch.path("pipe.log");
    if (QProcess::execute("mkfifo", {pipe}) == 0)
        QTest::newRow("pipe") << pipe;
    const QString locked = scratch.file("locked.log", "a\n");
    if (OrdinaryUser::available() && QFile::setPermissions(locked, QFileDevice::Permissions()))
        QTest::newRow("no permission") << locked;
}

void LogViewerLoad::clearsTheTableForWhatCannotBeOpened()
{
    QFETCH(QString, path);
    ViewerFixture f;
    QVERIFY(f.openLines({"one"}));
    f.output.take();
    {
        const OrdinaryUser user;
        QVERIFY(!f.open(path));
    }
    QCOMPARE(f.output.take(), QStringList{"Failed to open file."});
    QCOMPARE(f.table().rowCount(), 100'000);
    QCOMPARE(f.filledRows(), 0);
    QVERIFY2(!f.open(path), "the path is recorded, and tried once only");
    QVERIFY(f.output.lines().isEmpty());
}

void LogViewerLoad::showsTheFirstLineWhereverTheTableWasScrolled()
{
    ViewerFixture f;
    const QByteArray lines = QByteArray("x\n").repeated(1000);
    QVERIFY(f.open(f.folder.file("a.log", lines)));
    f.viewer.show();
    f.table().scrollToBottom();
    QVERIFY(f.table().rowAt(0) > 0);
    QVERIFY(f.open(f.folder.file("b.log", lines)));
    QCOMPARE(f.table().rowAt(0), 0);
}

void LogViewerLoad::showsNothingOfAnEmptyFile()
{
    ViewerFixture f;
    QVERIFY(f.openData("empty.log"));
    QCOMPARE(f.table().rowCount(), 5);
    QCOMPARE(f.filledRows(), 0);
}

void LogViewerLoad::writesTheNumberOfLines()
{
    ViewerFixture f;
    QVERIFY(f.openLines({"a", "b", "c"}));
    QCOMPARE(f.output.lines(), QStringList{"3"});
}

void LogViewerLoad::writesTheNumberOfLinesBeforeTheSpareRowsGo()
{
    ViewerFixture f;
    static const QTableWidget *table = nullptr;
    static QStringList written;
    table = &f.table();
    const QtMessageHandler before =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &text) {
            written.append(QString("%1 of %2 rows").arg(text).arg(table->rowCount()));
        });
    const bool opened = f.openLines({"a", "b", "c"});
    qInstallMessageHandler(before);
    QVERIFY(opened);
    QCOMPARE(written, QStringList{"3 of 100000 rows"});
    QCOMPARE(f.table().rowCount(), 8);
}

void LogViewerLoad::keepsHiddenRowsAndColumns()
{
    ViewerFixture f;
    QVERIFY(f.openLines({logLine("INFO"), logLine("WARN"), logLine("INFO")}));
    f.find<QCheckBox>("checkBoxWARN")->click();
    f.find<QMenu>("menuFilter")->actions().at(2)->trigger();
    QVERIFY(f.openLines({logLine("WARN"), logLine("ERROR")}));
    QCOMPARE(f.hiddenRows(), QList<int>{1});
    QVERIFY(f.table().isColumnHidden(2));
    QVERIFY(!f.find<QCheckBox>("checkBoxWARN")->isChecked());
}

void LogViewerLoad::announcesWhatItFilled()
{
    ViewerFixture f;
    QSignalSpy changes(f.table().model(), &QAbstractItemModel::dataChanged);
    QVERIFY(f.openLines({logLine("INFO"), logLine("WARN")}));
    QCOMPARE(changes.count(), 1);
    QVERIFY(!f.table().model()->signalsBlocked());
}

void LogViewerLoad::takesLinesForRowsThatAreThereOnly()
{
    ViewerFixture f;
    f.viewer.parseLogLine(logLine("FATAL").constData(), 99'999);
    QCOMPARE(f.text(99'999, 1), "FATAL");
    f.viewer.parseLogLine(logLine("FATAL").constData(), 100'000);
    f.viewer.parseLogLine(logLine("FATAL").constData(), -1);
    QCOMPARE(f.table().rowCount(), 100'000);
    QCOMPARE(f.filledRows(), 1);
}

void LogViewerLoad::cutsALineAtItsFirstZeroByte()
{
    ViewerFixture f;
    QVERIFY(f.openData("nul_bytes.log"));
    QCOMPARE(f.text(0, 3), " before");
    QCOMPARE(f.row(1), messageOnly(QString()));
    QCOMPARE(f.text(2, 3), " frame received");
}

void LogViewerLoad::readsUtf8()
{
    ViewerFixture f;
    QVERIFY(f.openData("utf8_beyond_ascii.log"));
    QCOMPARE(f.text(0, 2), "相机");
    QCOMPARE(f.text(0, 3), " 打开失败 😀");
}

void LogViewerLoad::replacesWhatIsNoUtf8()
{
    ViewerFixture f;
    QVERIFY(f.openData("invalid_utf8.log"));
    QCOMPARE(f.text(0, 3), " caf\xef\xbf\xbd \xef\xbf\xbd\xef\xbf\xbd "
                           "\xef\xbf\xbd\xef\xbf\xbd");
    QCOMPARE(f.text(1, 3), " ä");
}

void LogViewerLoad::doesNotShowAByteOrderMark()
{
    ViewerFixture f;
    QVERIFY(f.openData("byte_order_mark.log"));
    QCOMPARE(f.text(0, 0), "2024-03-02 12:00:00.250");
    QCOMPARE(f.text(0, 1), "INFO");
    QVERIFY(f.tip(0, 0).startsWith("2024"));
}

void LogViewerLoad::takesCrLfForALineEnd()
{
    ViewerFixture f;
    QVERIFY(f.openData("cr_lf_line_ends.log"));
    QCOMPARE(f.filledRows(), 2);
    QCOMPARE(f.text(0, 3), " frame received");
    QVERIFY(!f.tip(0, 3).contains('\r'));
}

void LogViewerLoad::showsALoneCrAsContent()
{
    ViewerFixture f;
    QVERIFY(f.openData("lone_cr_inside_a_line.log"));
    QCOMPARE(f.filledRows(), 1);
    QCOMPARE(f.text(0, 3), " 50%\r100%");
}

void LogViewerLoad::survivesBinaryData()
{
    ViewerFixture f;
    QVERIFY(f.openData("binary.log"));
    QFile file(QFINDTESTDATA("../data/viewer/binary.log"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const int lineFeeds = file.readAll().count('\n');
    QVERIFY(lineFeeds > 0);
    QCOMPARE(f.filledRows(), lineFeeds);
    QCOMPARE(f.table().rowCount(), lineFeeds + 5);
}

void LogViewerLoad::showsALineOfTenMegabytes()
{
    ViewerFixture f;
    const QByteArray message(10'000'000, 'x');
    QVERIFY(f.openLines({logLine("INFO", message), logLine("WARN")}));
    QCOMPARE(f.text(0, 3).size(), message.size() + 1);
    QCOMPARE(f.text(1, 1), "WARN");
    QVERIFY(f.show());
    QVERIFY(!f.viewer.grab().isNull());
}

QTEST_MAIN(LogViewerLoad)
#include "tst_log_viewer_load.moc"
