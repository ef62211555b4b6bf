#include "LogSettingsDlg.h"
#include "LogViewer.h"
#include "MainWindowFixture.h"

#include <QPushButton>

/// The log viewer and the log settings, opened from the main window.
class OpenedWindows : public QObject
{
    Q_OBJECT

private slots:
    void opensAFileInTheViewerByADoubleClick();
    void activatesAViewerThatIsOpenAlready();
    void doesNothingAtASingleClick();
    void showsTheSettingsAsAWindowModalDialog();
    void makesTheSettingsModalOnlyAfterTheirFirstShow();
    void activatesSettingsThatAreOpenAlready();
};

namespace {

/// Records a window's modality each time it is shown.
class ModalityAtShow : public QObject
{
public:
    explicit ModalityAtShow(QWidget &watched)
        : window(watched)
    {
        window.installEventFilter(this);
    }

    QList<Qt::WindowModality> noted;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show)
            noted.append(window.windowModality());
        return QObject::eventFilter(watched, event);
    }

private:
    QWidget &window;
};

/// Opens the main window and waits until it is active.
void openActive(MainWindowFixture &f)
{
    f.open();
    f.window->show();
    f.window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
}

/// Activates the main window in front of @p other, which stays open.
void goBackFrom(const QWidget &other, MainWindowFixture &f)
{
    QTRY_VERIFY(other.isActiveWindow());
    f.window->activateWindow();
    QTRY_VERIFY(f.window->isActiveWindow());
    QVERIFY(other.isVisible());
}

} // namespace

void OpenedWindows::opensAFileInTheViewerByADoubleClick()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log", "one\ntwo\n");
    f.open();
    f.window->show();
    f.output.take();
    emit f.table()->itemDoubleClicked(f.table()->item(0, 2));
    QCOMPARE(f.output.lines().value(0), "open logviewer");
    const auto *viewer = f.find<LogViewer>("LogViewer");
    QVERIFY(viewer->isVisible());
    const auto &shown = part<QTableWidget>(*viewer, "tableWidget");
    QCOMPARE(shown.item(1, 3)->text(), "two");
}

void OpenedWindows::activatesAViewerThatIsOpenAlready()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log");
    openActive(f);
    const auto *viewer = f.find<LogViewer>("LogViewer");
    emit f.table()->itemDoubleClicked(f.table()->item(0, 2));
    goBackFrom(*viewer, f);
    emit f.table()->itemDoubleClicked(f.table()->item(0, 2));
    QTRY_VERIFY(viewer->isActiveWindow());
}

void OpenedWindows::doesNothingAtASingleClick()
{
    MainWindowFixture f;
    f.log("QZviewer/a.log", "one\n");
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

void OpenedWindows::makesTheSettingsModalOnlyAfterTheirFirstShow()
{
    MainWindowFixture f;
    f.open();
    f.window->show();
    auto *settings = f.find<LogSettingsDlg>("LogSettingsDlg");
    const ModalityAtShow modality(*settings);
    f.find<QPushButton>("btnSettings")->click();
    settings->close();
    f.find<QPushButton>("btnSettings")->click();
    QCOMPARE(modality.noted, (QList<Qt::WindowModality>{Qt::NonModal, Qt::WindowModal}));
}

void OpenedWindows::activatesSettingsThatAreOpenAlready()
{
    MainWindowFixture f;
    openActive(f);
    const auto *settings = f.find<LogSettingsDlg>("LogSettingsDlg");
    f.find<QPushButton>("btnSettings")->click(); // the first show: not modal yet
    goBackFrom(*settings, f);
    f.find<QPushButton>("btnSettings")->click();
    QTRY_VERIFY(settings->isActiveWindow());
}

QTEST_MAIN(OpenedWindows)
#include "tst_opened_windows.moc"
