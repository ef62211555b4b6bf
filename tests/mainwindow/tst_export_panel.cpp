#include "ExportInfoDlg.h"
#include "MainWindowFixture.h"
#include "OpenedUrls.h"
#include "ZipTools.h"

#include <QAction>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRandomGenerator>
#include <QTimer>

class ExportPanel : public QObject
{
    Q_OBJECT

private slots:
    void mirrorsEachBoxInItsFlag_data();
    void mirrorsEachBoxInItsFlag();
    void startsWithTheDefaultsWhateverThePreviousRunChose();
    void setsEveryRowBySdkLog();
    void proposesUserLogInfoInTheWorkingDirectoryFirst();
    void keepsThePathWhenTheSaveDialogIsCancelled();
    void takesThePathThatWasChosen();
    void startsTheSaveDialogWhereTheLastOneEnded();
    void exportsTheCheckedRowsIntoTheZip();
    void waitsAndThenNotifiesEvenWithNothingTicked();
    void doesNothingForAnEmptyExportPath();
    void exportsAllListedLogsByTheMenuWithoutAWaitDialog();
    void exportsNoMoreThanTheFiftyListedLogs();
    void exportsTheCheckedLogsByTheMenu();
    void exportsNoSelectionBeforeAnItemWasClicked();
    void exportsTheSelectionAfterADoubleClick();
    void opensTheZipsFolderFromTheNotice();
    void centresTheNoticeBelowTheUpperEdge();
    void staysWaitingWhenTheRequestWasDropped();
    void waitsForAnExportWhenTheWindowGoes();
    void survivesChangesOfTheSourceDuringAnExport();
};

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

CConfiguration &hub()
{
    return *CConfiguration::instance();
}

CWaitDialog *visibleWaitDialog()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        auto *dialog = qobject_cast<CWaitDialog *>(widget);
        if (dialog != nullptr && dialog->isVisible())
            return dialog;
    }
    return nullptr;
}

/// What the wait dialog said while Export ran; Export returns when the dialog was closed.
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
        if (const CWaitDialog *dialog = visibleWaitDialog()) {
            seen.shown = true;
            seen.title = dialog->findChild<QLabel *>(text("lbTitle"))->text();
            seen.message = dialog->findChild<QLabel *>(text("textLabel"))->text();
        }
    });
    f.find<QPushButton>("btnExport")->click();
    return seen;
}

ExportInfoDlg *notice(const MainWindowFixture &f)
{
    return f.window->findChild<ExportInfoDlg *>();
}

QString noticeText(const MainWindowFixture &f)
{
    return notice(f)->findChild<QLabel *>(text("label_text"))->text();
}

} // namespace

void ExportPanel::mirrorsEachBoxInItsFlag_data()
{
    QTest::addColumn<int>("flag");
    QTest::newRow("checkBoxSystemLog") << 0;
    QTest::newRow("checkBoxSDKLog") << 1;
    QTest::newRow("checkBoxNICInfo") << 2;
    QTest::newRow("checkBoxSystemInfo") << 3;
    QTest::newRow("checkBoxSystemDump") << 4;
    QTest::newRow("checkBoxClientDump") << 5;
}

void ExportPanel::mirrorsEachBoxInItsFlag()
{
    QFETCH(int, flag);
    const auto flags = [] {
        return QVector<bool>{hub().systemLog,  hub().sdkLog,     hub().nicInfo,
                             hub().systemInfo, hub().systemDump, hub().clientDump};
    };
    MainWindowFixture f;
    f.open();
    QVector<bool> expected = flags();
    for (int i = 0; i < 2; ++i) {
        f.find<QCheckBox>(QTest::currentDataTag())->click();
        expected[flag] = !expected[flag];
        QCOMPARE(flags(), expected);
    }
}

void ExportPanel::startsWithTheDefaultsWhateverThePreviousRunChose()
{
    MainWindowFixture f;
    f.open();
    const QList<const char *> boxes{"checkBoxSDKLog",     "checkBoxNICInfo",
                                    "checkBoxSystemLog",  "checkBoxSystemInfo",
                                    "checkBoxSystemDump", "checkBoxClientDump"};
    for (const char *name : boxes)
        f.find<QCheckBox>(name)->click();
    hub().exportPath = text("/elsewhere/else.zip");
    f.window.reset();

    // Another process would start like this: the same home, a new hub.
    resetHub();
    f.open();
    for (const char *name : boxes)
        QCOMPARE(f.find<QCheckBox>(name)->isChecked(), name == boxes.first());
    QCOMPARE(f.find<QLineEdit>("lineEditPath")->text(), hub().exportPath);
    QCOMPARE(hub().exportPath, f.home.path(text("QZSDK/UserLogInfo.zip")));
}

void ExportPanel::setsEveryRowBySdkLog()
{
    MainWindowFixture f;
    f.log(text("QZviewer/a.log"));
    f.log(text("QZviewer/b.log"));
    f.open();
    auto *sdkLog = f.find<QCheckBox>("checkBoxSDKLog");
    sdkLog->click();
    QVERIFY(!f.box(0)->isChecked() && !f.box(1)->isChecked() && !f.headerBox()->isChecked());
    sdkLog->click();
    QVERIFY(f.box(0)->isChecked() && f.box(1)->isChecked() && f.headerBox()->isChecked());
}

void ExportPanel::proposesUserLogInfoInTheWorkingDirectoryFirst()
{
    MainWindowFixture f;
    f.open();
    int asked = 0;
    ModalDialog::setRunner([&asked](QDialog &dialog) {
        const auto *files = qobject_cast<QFileDialog *>(&dialog);
        ++asked;
        [&] {
            QVERIFY(files != nullptr);
            QCOMPARE(files->parentWidget(), nullptr);
            QCOMPARE(files->windowTitle(), text("Save ZIP File"));
            QCOMPARE(files->nameFilters(), QStringList(text("*.zip")));
            QCOMPARE(files->acceptMode(), QFileDialog::AcceptSave);
            QCOMPARE(files->viewMode(), QFileDialog::List);
            // Qt adds the title and the system menu that a close button comes with.
            QCOMPARE(int(files->windowFlags()),
                     int(Qt::Dialog | Qt::WindowCloseButtonHint | Qt::WindowTitleHint |
                         Qt::WindowSystemMenuHint));
            QCOMPARE(files->directory().absolutePath(), QDir::currentPath());
            QCOMPARE(files->selectedFiles(),
                     QStringList(QDir::current().filePath(text("UserLogInfo"))));
        }();
        return int(QDialog::Rejected);
    });
    f.find<QPushButton>("btnSetExportPath")->click();
    QCOMPARE(asked, 1);
}

void ExportPanel::keepsThePathWhenTheSaveDialogIsCancelled()
{
    MainWindowFixture f;
    f.open();
    const QString before = hub().exportPath;
    ModalDialog::setRunner([&f](QDialog &dialog) {
        qobject_cast<QFileDialog *>(&dialog)->selectFile(f.home.path(text("not this.zip")));
        return int(QDialog::Rejected);
    });
    f.find<QPushButton>("btnSetExportPath")->click();
    QCOMPARE(hub().exportPath, before);
    QCOMPARE(f.find<QLineEdit>("lineEditPath")->text(), before);
}

void ExportPanel::takesThePathThatWasChosen()
{
    MainWindowFixture f;
    f.open();
    const QString chosen = f.home.path(text("mine.zip"));
    ModalDialog::setRunner([&chosen](QDialog &dialog) {
        qobject_cast<QFileDialog *>(&dialog)->selectFile(chosen);
        return int(QDialog::Accepted);
    });
    f.find<QPushButton>("btnSetExportPath")->click();
    QCOMPARE(hub().exportPath, chosen);
    QCOMPARE(f.find<QLineEdit>("lineEditPath")->text(), chosen);
}

void ExportPanel::startsTheSaveDialogWhereTheLastOneEnded()
{
    MainWindowFixture f;
    f.open();
    const QString chosen = f.home.folder(text("deep/er")) + text("/mine.zip");
    QStringList proposals;
    ModalDialog::setRunner([&](QDialog &dialog) {
        auto *files = qobject_cast<QFileDialog *>(&dialog);
        proposals.append(files->selectedFiles().value(0));
        files->selectFile(chosen);
        return int(QDialog::Accepted);
    });
    f.find<QPushButton>("btnSetExportPath")->click();
    hub().exportPath = text("changed meanwhile");
    f.find<QPushButton>("btnSetExportPath")->click();
    QCOMPARE(proposals.at(1), chosen);
    // The same file again: the field keeps its text, which is stored anew.
    QCOMPARE(hub().exportPath, chosen);
}

void ExportPanel::exportsTheCheckedRowsIntoTheZip()
{
    MainWindowFixture f;
    const QDateTime now = QDateTime::currentDateTime();
    f.log(text("QZviewer/a.log"), "a\n", now);
    f.log(text("QZviewer/b.log"), "b\n", now.addSecs(-1));
    f.log(text("QZviewer/c.log"), "c\n", now.addSecs(-2));
    f.log(text("QZviewer/gentl_cxp_log/g.txt"), "g\n");
    f.open();
    f.window->show();
    f.box(1)->click();
    pressExport(f);
    QCOMPARE(verifiedZipContents(f.home.path(text("QZSDK/UserLogInfo.zip"))),
             (QMap<QString, QByteArray>{{text("SDKLOG/a.log"), "a\n"},
                                        {text("SDKLOG/c.log"), "c\n"},
                                        {text("SDKLOG/gentl_cxp_log/g.txt"), "g\n"}}));
    QVERIFY(!QFileInfo::exists(f.home.path(text("QZSDK/LogInfo"))));
}

void ExportPanel::waitsAndThenNotifiesEvenWithNothingTicked()
{
    MainWindowFixture f;
    f.home.folder(text("QZSDK/QZviewer"));
    f.open();
    f.window->show();
    f.find<QCheckBox>("checkBoxSDKLog")->click();
    const Waiting seen = pressExport(f);
    QVERIFY(seen.shown);
    QCOMPARE(seen.title, text("Export"));
    QCOMPARE(seen.message, text("Exporting information..."));
    QCOMPARE(visibleWaitDialog(), nullptr);
    QVERIFY(notice(f)->isVisible());
    QCOMPARE(noticeText(f), text("Export info finished !"));
    QVERIFY(QFileInfo::exists(hub().exportPath));
}

void ExportPanel::doesNothingForAnEmptyExportPath()
{
    MainWindowFixture f;
    f.home.folder(text("QZSDK/QZviewer"));
    f.open();
    f.window->show();
    hub().exportPath.clear();
    QSignalSpy asked(f.window.get(), &Vantrel::showWaitDlg);
    f.find<QPushButton>("btnExport")->click();
    QCOMPARE(asked.count(), 0);
}

void ExportPanel::exportsAllListedLogsByTheMenuWithoutAWaitDialog()
{
    MainWindowFixture f;
    f.log(text("QZviewer/a.log"));
    f.log(text("QZviewer/b.log"));
    f.open();
    f.window->show();
    hub().clientDump = true; // not asked for by the menu
    f.box(0)->click();
    QSignalSpy asked(f.window.get(), &Vantrel::showWaitDlg);
    f.find<QAction>("actionExportAll")->trigger();
    QTRY_VERIFY(notice(f)->isVisible());
    QCOMPARE(asked.count(), 0);
    QCOMPARE(visibleWaitDialog(), nullptr);
    QStringList names = verifiedZipContents(hub().exportPath).keys();
    QCOMPARE(names, QStringList({text("SDKLOG/a.log"), text("SDKLOG/b.log")}));
    // The same words as after the button.
    QCOMPARE(noticeText(f), text("Export info finished !"));
}

void ExportPanel::exportsNoMoreThanTheFiftyListedLogs()
{
    MainWindowFixture f;
    const QDateTime now = QDateTime::currentDateTime();
    for (int i = 0; i < 60; ++i)
        f.log(text("QZviewer/%1.log").arg(i), "x", now.addSecs(-i));
    f.open();
    f.find<QAction>("actionExportAll")->trigger();
    QTRY_VERIFY(!notice(f)->isHidden());
    const QStringList names = verifiedZipContents(hub().exportPath).keys();
    QCOMPARE(names.size(), 50);
    QVERIFY(names.contains(text("SDKLOG/49.log")));
    QVERIFY(!names.contains(text("SDKLOG/50.log")));
}

void ExportPanel::exportsTheCheckedLogsByTheMenu()
{
    MainWindowFixture f;
    const QDateTime now = QDateTime::currentDateTime();
    f.log(text("QZviewer/a.log"), "a", now);
    f.log(text("QZviewer/b.log"), "b", now.addSecs(-1));
    f.open();
    f.window->show();
    QVERIFY(QTest::qWaitForWindowExposed(f.window.get()));
    f.box(0)->click();
    // The row under the pointer is not the one that is exported: the checked ones are.
    emit f.table()->customContextMenuRequested(
        f.table()->visualItemRect(f.table()->item(0, 1)).center());
    f.find<QAction>("actionExportSelected")->trigger();
    QTRY_VERIFY(notice(f)->isVisible());
    QCOMPARE(verifiedZipContents(hub().exportPath).keys(), QStringList(text("SDKLOG/b.log")));
}

void ExportPanel::exportsNoSelectionBeforeAnItemWasClicked()
{
    MainWindowFixture f;
    f.log(text("QZviewer/a.log"));
    f.open();
    f.find<QAction>("actionExportSelected")->trigger();
    // Were it queued, it would come before this one and make its own zip.
    hub().exportPath = f.home.path(text("second.zip"));
    f.find<QAction>("actionExportAll")->trigger();
    QTRY_VERIFY(QFileInfo::exists(f.home.path(text("second.zip"))));
    QVERIFY(!QFileInfo::exists(f.home.path(text("QZSDK/UserLogInfo.zip"))));
}

void ExportPanel::exportsTheSelectionAfterADoubleClick()
{
    MainWindowFixture f;
    f.log(text("QZviewer/a.log"));
    f.open();
    f.window->show();
    emit f.table()->itemDoubleClicked(f.table()->item(0, 1));
    f.find<QAction>("actionExportSelected")->trigger();
    QTRY_VERIFY(notice(f)->isVisible());
    QCOMPARE(verifiedZipContents(hub().exportPath).keys(), QStringList(text("SDKLOG/a.log")));
}

void ExportPanel::opensTheZipsFolderFromTheNotice()
{
    MainWindowFixture f;
    f.open();
    hub().exportPath = f.home.path(text("zips/a.zip"));
    f.call("onCloseWaitDlg");
    QVERIFY(!QFileInfo::exists(f.home.path(text("zips"))));
    OpenedUrls spy;
    QVERIFY(QMetaObject::invokeMethod(notice(f), "on_btnView_clicked"));
    QCOMPARE(spy.opened.size(), 1);
    QCOMPARE(QDir::cleanPath(spy.opened.constFirst().toLocalFile()), f.home.path(text("zips")));
    QVERIFY(QFileInfo::exists(f.home.path(text("zips"))));
}

void ExportPanel::centresTheNoticeBelowTheUpperEdge()
{
    MainWindowFixture f;
    f.open();
    f.window->show();
    f.call("onCloseWaitDlg");
    QVERIFY(notice(f)->isVisible());
    QCOMPARE(notice(f)->pos(), QPoint((f.window->width() - notice(f)->width()) / 2, 100));
}

void ExportPanel::staysWaitingWhenTheRequestWasDropped()
{
    MainWindowFixture f; // no SDK folder: the staging folder has no parent
    f.open();
    f.window->show();
    QTimer watch;
    connect(&watch, &QTimer::timeout, f.window.get(), [&f] {
        if (!f.output.contains(text("mkdir failed")))
            return;
        QCoreApplication::processEvents();
        CWaitDialog *dialog = visibleWaitDialog();
        QVERIFY(dialog != nullptr);
        dialog->close(); // as a user would, who gives up waiting
    });
    watch.start(1);
    f.find<QPushButton>("btnExport")->click();
    QVERIFY(!notice(f)->isVisible());
}

void ExportPanel::waitsForAnExportWhenTheWindowGoes()
{
    MainWindowFixture f;
    // What cannot be compressed takes the longest to pack.
    QVector<quint32> noise(2 << 20);
    QRandomGenerator(1).fillRange(noise.data(), noise.size());
    const QByteArray log(reinterpret_cast<const char *>(noise.constData()), 8 << 20);
    f.log(text("QZviewer/a.log"), log);
    f.open();
    // On a busy machine an export may be over before it is seen: then another one follows.
    auto *all = f.find<QAction>("actionExportAll");
    all->trigger();
    QVERIFY(QTest::qWaitFor(
        [&] {
            if (!notice(f)->isHidden()) {
                notice(f)->hide();
                all->trigger();
            }
            return QFileInfo::exists(f.home.path(text("QZSDK/LogInfo")));
        },
        60000));
    f.window.reset();
    const auto contents = verifiedZipContents(f.home.path(text("QZSDK/UserLogInfo.zip")));
    QVERIFY(contents.value(text("SDKLOG/a.log")) == log);
    QVERIFY(!QFileInfo::exists(f.home.path(text("QZSDK/LogInfo"))));
}

void ExportPanel::survivesChangesOfTheSourceDuringAnExport()
{
    MainWindowFixture f;
    for (int i = 0; i < 50; ++i) {
        f.log(text("QZviewer/%1.log").arg(i), QByteArray(10000, 'x'));
        f.log(text("other/%1.log").arg(i));
    }
    f.open();
    auto *combo = f.find<CComboBoxEx>("comboSource");
    f.find<QAction>("actionExportAll")->trigger();
    for (int i = 0; i < 20; ++i) {
        combo->setCurrentText(i % 2 == 0 ? text("other") : text("QZviewer"));
        QCoreApplication::processEvents();
    }
    QTRY_VERIFY(!notice(f)->isHidden());
    QCOMPARE(verifiedZipContents(hub().exportPath).keys().size(), 50);
}

QTEST_MAIN(ExportPanel)
#include "tst_export_panel.moc"
