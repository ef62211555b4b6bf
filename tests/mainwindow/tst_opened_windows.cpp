#include "LogSettingsDlg.h"
#include "LogViewer.h"
#include "MainWindowFixture.h"
#include "Text.h"

#include <QPushButton>

/// The windows that the main window shows on request: the log viewer and the log settings.
class OpenedWindows : public QObject
{
    Q_OBJECT

private slots:
    void opensAFileInTheViewerByADoubleClick();
    void doesNothingAtASingleClick();
    void showsTheSettingsAsAWindowModalDialog();
};

void OpenedWindows::opensAFileInTheViewerByADoubleClick()
{
    MainWindowFixture f;
    f.log(text("QZviewer/a.log"), "one\ntwo\n");
    f.open();
    f.window->show();
    f.output.take();
    emit f.table()->itemDoubleClicked(f.table()->item(0, 2));
    QCOMPARE(f.output.lines().value(0), text("open logviewer"));
    const auto *viewer = f.find<LogViewer>("LogViewer");
    QVERIFY(viewer->isVisible());
    const auto &shown = part<QTableWidget>(*viewer, "tableWidget");
    QCOMPARE(shown.item(1, 3)->text(), text("two"));
}

void OpenedWindows::doesNothingAtASingleClick()
{
    MainWindowFixture f;
    f.log(text("QZviewer/a.log"), "one\n");
    f.open();
    f.window->show();
    f.output.take();
    emit f.table()->itemClicked(f.table()->item(0, 2));
    QCOMPARE(f.output.lines(), QStringList());
    QVERIFY(!f.find<LogViewer>("LogViewer")->isVisible());
}

void OpenedWindows::showsTheSettingsAsAWindowModalDialog()
{
    MainWindowFixture f;
    f.open();
    f.window->show();
    const auto *settings = f.find<LogSettingsDlg>("LogSettingsDlg");
    QCOMPARE(settings->windowModality(), Qt::NonModal);
    f.find<QPushButton>("btnSettings")->click();
    QVERIFY(settings->isVisible());
    QCOMPARE(settings->windowModality(), Qt::WindowModal);
}

QTEST_MAIN(OpenedWindows)
#include "tst_opened_windows.moc"
