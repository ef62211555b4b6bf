#include "CommonTitleBar.h"
#include "EventCount.h"
#include "Machine.h"
#include "ViewerFixture.h"

#include <QHelpEvent>
#include <QLabel>
#include <QTextDocument>
#include <QTimer>
#include <QToolTip>
#include <QTranslator>
#include <QWindow>

/// Hints of the viewer: why lines are missing, which file it shows, that it is busy.
class LogViewerHints : public QObject
{
    Q_OBJECT

private slots:
    void saysThatNothingWasFound();
    void saysNothingOfASearchThatFailed();
    void saysThatTheFileGoesOn();
    void saysNothingBehindAFileOf100000Lines();
    void saysHowManyLinesFoundAreHidden();
    void countsHiddenLinesAnewWhenALevelIsTicked();
    void saysItInChinese();
    void namesTheFileInTheWindowTitle();
    void namesTheFileInEveryLanguage();
    void keepsBracketsInTheNameOfAFile();
    void tellsThePathInTheTitleBarsToolTip();
    void appearsBeforeALoadBegins();
    void loadsTheFileThatIsOpenedWhileItAppears();
};

namespace {

const QString nothingFound =
    "No line matches. Empty the field and press Enter to see the whole log.";
const QString fileGoesOn = "The first 100,000 lines; the file goes on.";

/// Whether there is text in this part of the table.
bool hasText(const QTableWidget &table, const QRect &part)
{
    const QImage image = table.viewport()->grab(part).toImage();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) < 128)
                return true;
        }
    }
    return false;
}

QRect placeOfRow(const QTableWidget &table, int row)
{
    return {0, table.rowViewportPosition(row), table.viewport()->width(), table.rowHeight(row)};
}

LineSearch finding(const QByteArrayList &lines)
{
    return
        [lines](const std::string &, const QString &, const PieceSink &sink, const SearchStop &) {
            for (const QByteArray &line : lines)
                sink((line + '\n').constData());
            return true;
        };
}

} // namespace

void LogViewerHints::saysThatNothingWasFound()
{
    ViewerFixture f(finding({}));
    QVERIFY(f.openLines(QByteArrayList{"one", "two", "three"}));
    QVERIFY(f.show());
    QCOMPARE(f.table().accessibleDescription(), QString());
    f.search("x");
    QCOMPARE(f.table().accessibleDescription(), nothingFound);
    QVERIFY(hasText(f.table(), f.table().viewport()->rect()));
    QCOMPARE(f.filledRows(), 0);
    f.pressEnter(QString());
    QCOMPARE(f.table().accessibleDescription(), QString());
    QVERIFY(!hasText(f.table(), placeOfRow(f.table(), 4)));
}

void LogViewerHints::saysNothingOfASearchThatFailed()
{
    ViewerFixture f([](const auto &...) { return false; });
    QVERIFY(f.openLines({"one"}));
    QVERIFY(f.show());
    f.search("x");
    QCOMPARE(f.table().accessibleDescription(), QString());
    QVERIFY(!hasText(f.table(), f.table().viewport()->rect()));
}

void LogViewerHints::saysThatTheFileGoesOn()
{
    ViewerFixture f;
    QVERIFY(f.open(f.folder.file("a.log", QByteArray("x\n").repeated(100'001))));
    QCOMPARE(f.output.lines(), QStringList{"100000"});
    QCOMPARE(f.table().accessibleDescription(), fileGoesOn);
    QVERIFY(f.show());
    f.table().scrollToBottom();
    QVERIFY(hasText(f.table(), placeOfRow(f.table(), 100'000)));
    QVERIFY(!hasText(f.table(), placeOfRow(f.table(), 100'001)));
    QVERIFY(f.openLines({"short"}));
    QCOMPARE(f.table().accessibleDescription(), QString());
}

void LogViewerHints::saysNothingBehindAFileOf100000Lines()
{
    ViewerFixture f;
    QVERIFY(f.open(f.folder.file("a.log", QByteArray("x\n").repeated(100'000))));
    QCOMPARE(f.table().accessibleDescription(), QString());
    QVERIFY(f.show());
    f.table().scrollToBottom();
    QVERIFY(!hasText(f.table(), placeOfRow(f.table(), 100'000)));
}

void LogViewerHints::saysHowManyLinesFoundAreHidden()
{
    ViewerFixture f(finding({logLine("WARN"), logLine("INFO"), logLine("WARN")}));
    QVERIFY(f.openLines({logLine("INFO"), logLine("INFO"), logLine("WARN"), logLine("INFO")}));
    QVERIFY(f.show());
    f.find<QCheckBox>("checkBoxINFO")->click();
    QCOMPARE(f.table().accessibleDescription(), QString());
    f.search("x");
    QCOMPARE(f.table().accessibleDescription(), "2 of the lines found are hidden by levels");
    QVERIFY(hasText(f.table(), placeOfRow(f.table(), 4))); // row 3 is hidden too
    QVERIFY(!hasText(f.table(), placeOfRow(f.table(), 5)));
}

void LogViewerHints::countsHiddenLinesAnewWhenALevelIsTicked()
{
    ViewerFixture f(finding({logLine("WARN"), logLine("INFO"), logLine("WARN")}));
    QVERIFY(f.openLines({"one"}));
    f.search("x");
    QCOMPARE(f.table().accessibleDescription(), QString());
    f.find<QCheckBox>("checkBoxWARN")->click();
    QCOMPARE(f.table().accessibleDescription(), "2 of the lines found are hidden by levels");
    f.find<QCheckBox>("checkBoxWARN")->click();
    QCOMPARE(f.table().accessibleDescription(), QString());
}

void LogViewerHints::saysItInChinese()
{
    QTranslator translator;
    QVERIFY(translator.load(":/Hints_CN.qm"));
    ViewerFixture f(finding({}));
    QVERIFY(f.openLines({"one"}));
    f.search("x");
    QVERIFY(QCoreApplication::installTranslator(&translator));
    f.viewer.retranslate();
    QCOMPARE(f.table().accessibleDescription(),
             "没有匹配的日志行。清空搜索框并按回车键可查看全部日志。");
    QCoreApplication::removeTranslator(&translator);
}

void LogViewerHints::namesTheFileInTheWindowTitle()
{
    ViewerFixture f;
    QCOMPARE(f.viewer.windowTitle(), "LogViewer");
    QVERIFY(f.open(f.folder.file("a.log", "one\n")));
    QCOMPARE(f.viewer.windowTitle(), "a.log - Vantrel");
    QCOMPARE(f.find<QLabel>("lbTitle")->text(), "LogViewer");
    QVERIFY(f.open(f.folder.file("b.log", "one\n")));
    QCOMPARE(f.viewer.windowTitle(), "b.log - Vantrel");
}

void LogViewerHints::namesTheFileInEveryLanguage()
{
    QTranslator translator;
    QVERIFY(translator.load(":/Linguist_CN.qm"));
    ViewerFixture f;
    QVERIFY(f.open(f.folder.file("a.log", "one\n")));
    QVERIFY(QCoreApplication::installTranslator(&translator));
    f.viewer.retranslate();
    QCOMPARE(f.viewer.windowTitle(), "a.log - Vantrel");
    QCOMPARE(f.find<QLabel>("lbTitle")->text(), "日志浏览");
    QCoreApplication::removeTranslator(&translator);
}

void LogViewerHints::keepsBracketsInTheNameOfAFile()
{
    if (onWindows())
        QSKIP("no file can have such a name here");
    ViewerFixture f;
    QVERIFY(f.show());
    QVERIFY(f.open(f.folder.file("a[*].log", "one\n")));
    QCOMPARE(f.viewer.windowHandle()->title(), "a[*].log - Vantrel");
}

void LogViewerHints::tellsThePathInTheTitleBarsToolTip()
{
    ViewerFixture f;
    const QString path = f.folder.file("a &amp; b.log", "one\n");
    QVERIFY(f.open(path));
    QVERIFY(f.show());
    auto *const bar = f.find<CommonTitleBar>("mainTitleBar");
    QCOMPARE(bar->toolTip(), path);
    QHelpEvent event(QEvent::ToolTip, QPoint(20, 15), bar->mapToGlobal(QPoint(20, 15)));
    QCoreApplication::sendEvent(bar, &event);
    QTextDocument shown;
    shown.setHtml(QToolTip::text());
    QCOMPARE(shown.toPlainText().remove('\n'), path);
    QToolTip::hideText();
}

void LogViewerHints::appearsBeforeALoadBegins()
{
    ViewerFixture f;
    const EventCount paintings(*f.table().viewport(), QEvent::Paint);
    int painted = 0;
    Qt::CursorShape pointer = Qt::ArrowCursor;
    QString title;
    QObject::connect(f.table().model(), &QAbstractItemModel::dataChanged, &f.viewer, [&] {
        painted = paintings.count;
        pointer = QGuiApplication::overrideCursor()->shape();
        title = f.viewer.windowTitle();
    });
    f.viewer.show();
    QVERIFY(f.openLines({"one"}));
    QVERIFY(painted > 0);
    QCOMPARE(pointer, Qt::BusyCursor);
    QCOMPARE(title, "1.log - Vantrel");
    QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
}

void LogViewerHints::loadsTheFileThatIsOpenedWhileItAppears()
{
    ViewerFixture f;
    const QString second = f.folder.file("second.log", "second\n");
    f.viewer.show();
    bool opened = false;
    QTimer::singleShot(0, &f.viewer, [&] { opened = f.open(second); });
    QVERIFY(!f.openLines({"first"}));
    QVERIFY(opened);
    QCOMPARE(f.filledRows(), 1);
    QCOMPARE(f.text(0, 3), "second");
    QCOMPARE(f.output.lines(), QStringList{"1"});
}

QTEST_MAIN(LogViewerHints)
#include "tst_log_viewer_hints.moc"
