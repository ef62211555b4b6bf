#include "EventCount.h"
#include "ExportInfoDlg.h"
#include "Faults.h"
#include "Machine.h"
#include "MainWindowFixture.h"
#include "Noise.h"
#include "OpenedUrls.h"
#include "ZipTools.h"

#include <QAction>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>

/// From the button or the menu to the zip and the notice.
class ExportFlow : public QObject
{
    Q_OBJECT

private slots:
    void exportsTheCheckedRowsIntoTheZip();
    void waitsAndThenNotifiesEvenWithNothingTicked();
    void doesNothingForAnEmptyExportPath();
    void closesTheWaitDialogWithoutANoticeForAnEmptyExportPath();
    void exportsAllListedLogsByTheMenuWithoutAWaitDialog();
    void exportsNoMoreThanTheFiftyListedLogs();
    void exportsTheCheckedLogsByTheMenu();
    void exportsNoSelectionBeforeAnItemWasClicked();
    void exportsTheSelectionAfterADoubleClick();
    void opensTheZipsFolderFromTheNotice();
    void centresTheNoticeBelowTheUpperEdge();
    void showsTheProgressOfALongExport();
    void staysWaitingWhenTheRequestWasDropped();
    void waitsForAnExportWhenTheWindowIsDestroyed();
    void survivesChangesOfTheSourceDuringAnExport();
};

namespace {

constexpr int patience = 30000; // milliseconds for an export on a busy machine

/// The wait dialog's texts while Export runs; Export returns when the dialog closes.
struct Waiting
{
    bool shown = false;
    QString title;
    QString message;
};

Waiting pressExport(MainWindowFixture &f)
{
    Waiting seen;
    QTimer::singleShot(0, f.window.get(), [&seen] {
        const CWaitDialog &dialog = MainWindowFixture::waitDialog();
        seen.shown = dialog.isVisible();
        seen.title = part<QLabel>(dialog, "lbTitle").text();
        seen.message = part<QLabel>(dialog, "textLabel").text();
    });
    f.find<QPushButton>("btnExport")->click();
    return seen;
}

/// While it exists, the journal program blocks until released.
class SlowJournal
{
public:
    explicit SlowJournal(ScratchFolder &home)
        : go(home.path("go"))
    {
        const QString program =
            home.file("bin/journalctl", "#!/bin/sh\nuntil [ -e '" + QFile::encodeName(go) +
                                            "' ]; do sleep 0.01; done\necho event\n");
        QFile::setPermissions(program, Everybody::mayReadAndEnter);
        qputenv("PATH", QFile::encodeName(QFileInfo(program).path()) + ':' + path);
    }
    ~SlowJournal()
    {
        goOn();
        qputenv("PATH", path);
    }
    SlowJournal(const SlowJournal &) = delete;
    SlowJournal &operator=(const SlowJournal &) = delete;

    void goOn() const { QFile(go).open(QIODevice::WriteOnly); }

private:
    const QByteArray path = qgetenv("PATH");
    const QString go;
};

ExportInfoDlg *notice(const MainWindowFixture &f)
{
    return f.window->findChild<ExportInfoDlg *>();
}

QString noticeText(const MainWindowFixture &f)
{
    return notice(f)->findChild<QLabel *>("label_text")->text();
}

} // namespace

void ExportFlow::exportsTheCheckedRowsIntoTheZip()
{
    MainWindowFixture f;
    const QDateTime now = QDateTime::currentDateTime();
    f.log("QZviewer/a.log", "a\n", now);
    f.log("QZviewer/b.log", "b\n", now.addSecs(-1));
    f.log("QZviewer/c.log", "c\n", now.addSecs(-2));
    f.log("QZviewer/gentl_cxp_log/g.txt", "g\n");
    f.open();
    f.window->show();
    f.box(1)->click();
    pressExport(f);
    QCOMPARE(verifiedZipContents(f.home.path("QZSDK/UserLogInfo.zip")),
             (QMap<QString, QByteArray>{{"SDKLOG/a.log", "a\n"},
                                        {"SDKLOG/c.log", "c\n"},
                                        {"SDKLOG/gentl_cxp_log/g.txt", "g\n"}}));
    QVERIFY(!QFileInfo::exists(f.home.path("QZSDK/LogInfo")));
}

void ExportFlow::waitsAndThenNotifiesEvenWithNothingTicked()
{
    MainWindowFixture f;
    f.home.folder("QZSDK/QZviewer");
    f.open();
    f.window->show();
    f.find<QCheckBox>("checkBoxSDKLog")->click();
    const Waiting seen = pressExport(f);
    QVERIFY(seen.shown);
    QCOMPARE(seen.title, "Export");
    QCOMPARE(seen.message, "Exporting information...");
    QVERIFY(!MainWindowFixture::waitDialog().isVisible());
    QVERIFY(notice(f)->isVisible());
    QCOMPARE(noticeText(f), "Export info finished !");
    QVERIFY(QFileInfo::exists(hub().exportPath));
}

void ExportFlow::doesNothingForAnEmptyExportPath()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log");
    f.open();
    f.window->show();
    hub().clientDump = true;
    hub().exportPath.clear();
    QSignalSpy emitted(f.window.get(), &Vantrel::showWaitDlg);
    f.find<QPushButton>("btnExport")->click();
    QCOMPARE(emitted.count(), 0);
    // If it were queued, it would precede this one and leave the client dumps for its zip.
    hub().exportPath = f.home.path("second.zip");
    f.find<QAction>("actionExportAll")->trigger();
    QTRY_VERIFY_WITH_TIMEOUT(notice(f)->isVisible(), patience);
    QCOMPARE(verifiedZipContents(hub().exportPath).keys(), QStringList("SDKLOG/a.log"));
}

void ExportFlow::closesTheWaitDialogWithoutANoticeForAnEmptyExportPath()
{
    MainWindowFixture f;
    f.open();
    f.window->show();
    bool waited = false;
    QTimer::singleShot(0, f.window.get(), [&f, &waited] {
        waited = MainWindowFixture::waitDialog().isVisible();
        hub().exportPath.clear();
        f.call("onCloseWaitDlg");
    });
    f.call("onShowWaitDlg"); // returns when the dialog closes
    QVERIFY(waited);
    QVERIFY(notice(f)->isHidden());
}

void ExportFlow::exportsAllListedLogsByTheMenuWithoutAWaitDialog()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log");
    f.log("QZviewer/b.log");
    f.open();
    f.window->show();
    hub().clientDump = true; // ignored by the menu's exports
    f.box(0)->click();
    QSignalSpy emitted(f.window.get(), &Vantrel::showWaitDlg);
    f.find<QAction>("actionExportAll")->trigger();
    QTRY_VERIFY_WITH_TIMEOUT(notice(f)->isVisible(), patience);
    QCOMPARE(emitted.count(), 0);
    QVERIFY(!MainWindowFixture::waitDialog().isVisible());
    QStringList names = verifiedZipContents(hub().exportPath).keys();
    QCOMPARE(names, QStringList({"SDKLOG/a.log", "SDKLOG/b.log"}));
    // The same text as for the button.
    QCOMPARE(noticeText(f), "Export info finished !");
}

void ExportFlow::exportsNoMoreThanTheFiftyListedLogs()
{
    MainWindowFixture f;
    const QDateTime now = QDateTime::currentDateTime();
    for (int i = 0; i < 60; ++i)
        f.log(QString("QZviewer/%1.log").arg(i), "x", now.addSecs(-i));
    f.open();
    f.find<QAction>("actionExportAll")->trigger();
    QTRY_VERIFY_WITH_TIMEOUT(!notice(f)->isHidden(), patience);
    const QStringList names = verifiedZipContents(hub().exportPath).keys();
    QCOMPARE(names.size(), 50);
    QVERIFY(names.contains("SDKLOG/49.log"));
    QVERIFY(!names.contains("SDKLOG/50.log"));
}

void ExportFlow::exportsTheCheckedLogsByTheMenu()
{
    MainWindowFixture f;
    const QDateTime now = QDateTime::currentDateTime();
    f.log("QZviewer/a.log", "a", now);
    f.log("QZviewer/b.log", "b", now.addSecs(-1));
    f.open();
    f.window->show();
    QVERIFY(QTest::qWaitForWindowExposed(f.window.get()));
    f.box(0)->click();
    // The checked rows are exported, not the one under the pointer.
    emit f.table()->customContextMenuRequested(
        f.table()->visualItemRect(f.table()->item(0, 1)).center());
    f.find<QAction>("actionExportSelected")->trigger();
    QTRY_VERIFY_WITH_TIMEOUT(notice(f)->isVisible(), patience);
    QCOMPARE(verifiedZipContents(hub().exportPath).keys(), QStringList("SDKLOG/b.log"));
}

void ExportFlow::exportsNoSelectionBeforeAnItemWasClicked()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log");
    f.open();
    f.find<QAction>("actionExportSelected")->trigger();
    // If it were queued, it would precede this one and write its own zip.
    hub().exportPath = f.home.path("second.zip");
    f.find<QAction>("actionExportAll")->trigger();
    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(f.home.path("second.zip")), patience);
    QVERIFY(!QFileInfo::exists(f.home.path("QZSDK/UserLogInfo.zip")));
}

void ExportFlow::exportsTheSelectionAfterADoubleClick()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log");
    f.open();
    f.window->show();
    emit f.table()->itemDoubleClicked(f.table()->item(0, 1));
    f.find<QAction>("actionExportSelected")->trigger();
    QTRY_VERIFY_WITH_TIMEOUT(notice(f)->isVisible(), patience);
    QCOMPARE(verifiedZipContents(hub().exportPath).keys(), QStringList("SDKLOG/a.log"));
}

void ExportFlow::opensTheZipsFolderFromTheNotice()
{
    MainWindowFixture f;
    f.open();
    hub().exportPath = f.home.path("zips/a.zip");
    f.call("onCloseWaitDlg");
    QVERIFY(!QFileInfo::exists(f.home.path("zips")));
    OpenedUrls spy;
    QVERIFY(QMetaObject::invokeMethod(notice(f), "on_btnView_clicked"));
    QCOMPARE(spy.opened.size(), 1);
    QCOMPARE(QDir::cleanPath(spy.opened.constFirst().toLocalFile()), f.home.path("zips"));
    QVERIFY(QFileInfo::exists(f.home.path("zips")));
}

void ExportFlow::centresTheNoticeBelowTheUpperEdge()
{
    MainWindowFixture f;
    f.open();
    f.window->show();
    f.call("onCloseWaitDlg");
    QVERIFY(notice(f)->isVisible());
    QCOMPARE(notice(f)->pos(), QPoint((f.window->width() - notice(f)->width()) / 2, 100));
}

void ExportFlow::showsTheProgressOfALongExport()
{
    if (onWindows())
        QSKIP("no program exports the event log, so it cannot be slowed down");
    MainWindowFixture f;
    f.log("QZviewer/a.log", noise(1 << 20));
    const SlowJournal journal(f.home);
    f.open();
    f.window->show();
    f.find<QCheckBox>("checkBoxSystemLog")->click();
    const auto &bar = part<QProgressBar>(MainWindowFixture::waitDialog(), "progressBar");
    bool seen = false;
    QTimer::singleShot(0, f.window.get(), [&] {
        seen = QTest::qWaitFor([&] { return bar.isVisible(); }, patience);
        journal.goOn();
    });
    f.find<QPushButton>("btnExport")->click(); // returns when the dialog closes
    QVERIFY(seen);
    QVERIFY(bar.value() > 0); // at least the log is copied
    QVERIFY(bar.value() < bar.maximum());
    QVERIFY(verifiedZipContents(hub().exportPath).contains("SystemEvents.evtx"));
}

void ExportFlow::staysWaitingWhenTheRequestWasDropped()
{
    MainWindowFixture f; // no SDK folder: the staging folder has no parent
    f.open();
    f.window->show();
    QTimer watch;
    connect(&watch, &QTimer::timeout, f.window.get(), [&f] {
        if (!f.output.contains("mkdir failed"))
            return;
        QCoreApplication::processEvents();
        CWaitDialog &dialog = MainWindowFixture::waitDialog();
        QVERIFY(dialog.isVisible());
        dialog.close(); // like a user who gives up
    });
    watch.start(1);
    f.find<QPushButton>("btnExport")->click();
    QVERIFY(!notice(f)->isVisible());
}

void ExportFlow::waitsForAnExportWhenTheWindowIsDestroyed()
{
    MainWindowFixture f;
    const QByteArray log = noise(8 << 20); // incompressible data takes the longest to pack
    f.log("QZviewer/a.log", log);
    f.open();
    // On a busy machine an export may finish before it is noticed; then another one follows.
    auto *all = f.find<QAction>("actionExportAll");
    all->trigger();
    QVERIFY(QTest::qWaitFor(
        [&] {
            if (!notice(f)->isHidden()) {
                notice(f)->hide();
                all->trigger();
            }
            return QFileInfo::exists(f.home.path("QZSDK/LogInfo"));
        },
        60000));
    f.window.reset();
    const auto contents = verifiedZipContents(f.home.path("QZSDK/UserLogInfo.zip"));
    QVERIFY(contents.value("SDKLOG/a.log") == log);
    QVERIFY(!QFileInfo::exists(f.home.path("QZSDK/LogInfo")));
}

void ExportFlow::survivesChangesOfTheSourceDuringAnExport()
{
    MainWindowFixture f;
    for (int i = 0; i < 50; ++i) {
        f.log(QString("QZviewer/%1.log").arg(i), QByteArray(10000, 'x'));
        f.log(QString("other/%1.log").arg(i));
    }
    f.open();
    f.window->show();
    auto *combo = f.find<CComboBoxEx>("comboSource");
    const EventCount shows(*notice(f), QEvent::Show); // it may be hidden again soon
    f.find<QAction>("actionExportAll")->trigger();
    for (int i = 0; i < 20; ++i) {
        combo->setCurrentText(i % 2 == 0 ? "other" : "QZviewer");
        QCoreApplication::processEvents();
    }
    QTRY_VERIFY_WITH_TIMEOUT(shows.count > 0, patience);
    QCOMPARE(verifiedZipContents(hub().exportPath).keys().size(), 50);
}

QTEST_MAIN(ExportFlow)
#include "tst_export_flow.moc"
