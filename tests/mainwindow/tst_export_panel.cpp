#include "MainWindowFixture.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>

/// Export options and path.
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
    void keepsThePathWhenTheSaveDialogNamesNoFile();
    void takesThePathThatWasChosen();
    void endsTheNameInZipUnlessItHasAnEnding_data();
    void endsTheNameInZipUnlessItHasAnEnding();
    void opensTheSaveDialogWhereTheLastOneEnded();
};

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
    hub().exportPath = "/elsewhere/else.zip";
    f.window.reset();

    // Like a new process: the same home folder, a new hub.
    resetHub();
    f.open();
    for (const char *name : boxes)
        QCOMPARE(f.find<QCheckBox>(name)->isChecked(), name == boxes.first());
    QCOMPARE(f.find<QLineEdit>("lineEditPath")->text(), hub().exportPath);
    QCOMPARE(hub().exportPath, f.home.path("QZSDK/UserLogInfo.zip"));
}

void ExportPanel::setsEveryRowBySdkLog()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log");
    f.log("QZviewer/b.log");
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
            QCOMPARE(files->windowTitle(), "Save ZIP File");
            QCOMPARE(files->nameFilters(), QStringList("*.zip"));
            QCOMPARE(files->acceptMode(), QFileDialog::AcceptSave);
            QCOMPARE(files->viewMode(), QFileDialog::List);
            // Qt adds the title and the system menu that come with a close button.
            QCOMPARE(int(files->windowFlags()),
                     int(Qt::Dialog | Qt::WindowCloseButtonHint | Qt::WindowTitleHint |
                         Qt::WindowSystemMenuHint));
            QCOMPARE(files->directory().absolutePath(), QDir::currentPath());
            QCOMPARE(part<QLineEdit>(*files, "fileNameEdit").text(), "UserLogInfo");
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
        qobject_cast<QFileDialog *>(&dialog)->selectFile(f.home.path("not this.zip"));
        return int(QDialog::Rejected);
    });
    f.find<QPushButton>("btnSetExportPath")->click();
    QCOMPARE(hub().exportPath, before);
    QCOMPARE(f.find<QLineEdit>("lineEditPath")->text(), before);
}

void ExportPanel::keepsThePathWhenTheSaveDialogNamesNoFile()
{
    MainWindowFixture f;
    f.open();
    const QString before = hub().exportPath;
    ModalDialog::setRunner([](QDialog &dialog) {
        part<QLineEdit>(dialog, "fileNameEdit").clear();
        return int(QDialog::Accepted);
    });
    f.find<QPushButton>("btnSetExportPath")->click();
    QCOMPARE(hub().exportPath, before);
    QCOMPARE(f.find<QLineEdit>("lineEditPath")->text(), before);
}

void ExportPanel::takesThePathThatWasChosen()
{
    MainWindowFixture f;
    f.open();
    for (const char *name : {"mine.zip", "Mine.zip"}) { // paths are case-sensitive
        const QString chosen = f.home.path(name);
        ModalDialog::setRunner([&chosen](QDialog &dialog) {
            qobject_cast<QFileDialog *>(&dialog)->selectFile(chosen);
            return int(QDialog::Accepted);
        });
        f.find<QPushButton>("btnSetExportPath")->click();
        QCOMPARE(hub().exportPath, chosen);
        QCOMPARE(f.find<QLineEdit>("lineEditPath")->text(), chosen);
    }
}

void ExportPanel::endsTheNameInZipUnlessItHasAnEnding_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("file");
    QTest::newRow("as proposed") << QString() << "UserLogInfo.zip";
    QTest::newRow("without an ending") << "camera 7"
                                       << "camera 7.zip";
    QTest::newRow("with the ending") << "mine.zip"
                                     << "mine.zip";
    QTest::newRow("with another ending") << "mine.backup"
                                         << "mine.backup";
}

void ExportPanel::endsTheNameInZipUnlessItHasAnEnding()
{
    QFETCH(QString, typed);
    MainWindowFixture f;
    f.open();
    ModalDialog::setRunner([&](QDialog &dialog) {
        qobject_cast<QFileDialog *>(&dialog)->setDirectory(f.home.path());
        if (!typed.isEmpty())
            part<QLineEdit>(dialog, "fileNameEdit").setText(typed);
        return int(QDialog::Accepted);
    });
    f.find<QPushButton>("btnSetExportPath")->click();
    QFETCH(QString, file);
    QCOMPARE(hub().exportPath, f.home.path(file));
    QCOMPARE(f.find<QLineEdit>("lineEditPath")->text(), f.home.path(file));
}

void ExportPanel::opensTheSaveDialogWhereTheLastOneEnded()
{
    MainWindowFixture f;
    f.open();
    const QString chosen = f.home.folder("deep/er") + "/mine.zip";
    QStringList proposals;
    ModalDialog::setRunner([&](QDialog &dialog) {
        auto *files = qobject_cast<QFileDialog *>(&dialog);
        proposals.append(files->selectedFiles().value(0));
        files->selectFile(chosen);
        return int(QDialog::Accepted);
    });
    f.find<QPushButton>("btnSetExportPath")->click();
    hub().exportPath = "changed meanwhile";
    f.find<QPushButton>("btnSetExportPath")->click();
    QCOMPARE(proposals.at(1), chosen);
    // The same file again: the field is unchanged and stored again.
    QCOMPARE(hub().exportPath, chosen);
}

QTEST_MAIN(ExportPanel)
#include "tst_export_panel.moc"
