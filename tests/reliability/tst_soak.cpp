#include "EventCount.h"
#include "Hub.h"
#include "ItemBoxes.h"
#include "LogViewer.h"
#include "Machine.h"
#include "MainWindowFixture.h"
#include "SeededRandom.h"

#include <QAction>
#include <QDir>
#include <QElapsedTimer>
#include <QPushButton>

#include <cstdio>
#include <malloc.h>

/// Many exports in one process, alternating between the button with every item and the context
/// menu, with source changes and opened logs: the process does not grow.
class Soak : public QObject
{
    Q_OBJECT

private slots:
    void memoryAndHandlesStayFlat();
};

namespace {

/// A process's use of system resources.
struct Usage
{
    qint64 heap = 0;     ///< bytes allocated and not freed
    qint64 resident = 0; ///< bytes
    int handles = 0;     ///< open files
    int threads = 0;
    int objects = 0; ///< QObjects below the window
};

int entriesOf(const char *folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size();
}

Usage usage(const Vantrel &window)
{
    Usage now;
    const auto heap = mallinfo2();
    now.heap = qint64(heap.uordblks) + qint64(heap.hblkhd);
    QFile status("/proc/self/statm");
    if (status.open(QIODevice::ReadOnly))
        now.resident = status.readAll().split(' ').value(1).toLongLong() * 4096;
    now.handles = entriesOf("/proc/self/fd");
    now.threads = entriesOf("/proc/self/task");
    now.objects = window.findChildren<QObject *>().size();
    return now;
}

void print(int exports, double seconds, const Usage &now)
{
    std::printf("%6d exports %7.1f s  heap %7.0f KiB  resident %7.0f KiB  %d handles  %d threads  "
                "%d objects\n",
                exports, seconds, double(now.heap) / 1024, double(now.resident) / 1024, now.handles,
                now.threads, now.objects);
    std::fflush(stdout);
}

/// Paints the wait dialog once. A window keeps its backing store, here 450 KB, and exports of small
/// logs are sometimes too short to paint it.
bool paintWaitDialog()
{
    CWaitDialog &dialog = MainWindowFixture::waitDialog();
    const EventCount paints(dialog, QEvent::Paint);
    dialog.show();
    const bool painted = QTest::qWaitFor([&] { return paints.count > 0; }, 10000);
    dialog.hide();
    return painted;
}

/// One round: change the source, open a log, export.
bool exportOnce(MainWindowFixture &f, int number)
{
    const QString zip = hub().exportPath;
    QFile::remove(zip);
    auto *combo = f.find<CComboBoxEx>("comboSource");
    combo->setCurrentIndex(number % combo->count());
    emit f.table()->itemDoubleClicked(f.table()->item(number % 10, 1));
    if (number % 2 == 0)
        f.find<QPushButton>("btnExport")->click(); // returns when the wait dialog closes
    else
        f.find<QAction>("actionExportAll")->trigger();
    const bool done = QTest::qWaitFor(
        [&] { return QFileInfo::exists(zip) && !zipContents(zip).contains("not a zip"); }, 60000);
    f.output.take();
    return done && !QFileInfo::exists(f.home.path("QZSDK/LogInfo"));
}

} // namespace

void Soak::memoryAndHandlesStayFlat()
{
    const int exports = times("VANTREL_SOAK", 60);
    const int warmUp = qMax(exports / 10, 20);
    MainWindowFixture f;
    for (const char *source : {"QZviewer", "QZcontrol", "QZgrabber"}) {
        for (int log = 0; log < 20; ++log)
            f.log(QString("%1/%2.log").arg(source).arg(log), QByteArray(5000, 'x') + '\n');
        f.log(QString("%1/gentl_cxp_log/links.txt").arg(source));
    }
    f.log("QZviewer/client.dmp", QByteArray(50000, 'd'));
    f.open();
    f.window->show();
    QVERIFY(paintWaitDialog());
    for (QCheckBox *box : itemBoxes(*f.window))
        box->click();

    QElapsedTimer time;
    time.start();
    Usage start;
    for (int i = 1; i <= warmUp + exports; ++i) {
        QVERIFY2(exportOnce(f, i), qPrintable(QString::number(i)));
        if (i == warmUp)
            start = usage(*f.window);
        const int counted = i - warmUp;
        if (counted >= 0 && counted % qMax(exports / 10, 1) == 0)
            print(counted, double(time.elapsed()) / 1000, usage(*f.window));
    }
    // The zip is complete shortly before the worker has released all resources.
    Usage end;
    const auto complaint = [&]() -> QString {
        end = usage(*f.window);
        if (end.handles != start.handles || end.threads != start.threads)
            return "there are other files or threads";
        if (end.objects != start.objects)
            return "there are other objects";
        if (!isSanitized() && end.heap - start.heap >= 200'000)
            return "the heap grew";
        if (!isSanitized() && end.resident - start.resident >= 8'000'000)
            return "the process grew";
        return {};
    };
    const bool flat = QTest::qWaitFor([&] { return complaint().isEmpty(); }, 10000);
    print(exports, double(time.elapsed()) / 1000, end);
    QVERIFY2(flat, qPrintable(complaint()));
}

QTEST_MAIN(Soak)
#include "tst_soak.moc"
