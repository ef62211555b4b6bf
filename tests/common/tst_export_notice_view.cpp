#include "ExportInfoDlg.h"
#include "NoticeTimer.h"
#include "OpenedUrls.h"
#include "Part.h"
#include "ScratchFolder.h"

#include <QFileInfo>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

class ExportNoticeView : public QObject
{
    Q_OBJECT

private slots:
    void runsItsTimerOnceForThreeSeconds();
    void doesNotRunTheTimerAtFirst();
    void startsTheTimerWhenShown();
    void doesNotRestartTheTimerWhenShownAgain();
    void restartsTheTimerWhenThePathIsSet();
    void hidesWhenTheTimeIsUp();
    void opensTheFolderOfThePath();
    void escapesEachSpecialCharacterOnce_data();
    void escapesEachSpecialCharacterOnce();
    void opensNothingWithoutAPath();
    void createsAMissingFolderBeforeOpeningIt();
    void opensNothingWhenTheFolderCannotBeCreated();
    void signalsBeforeItOpens();
    void staysVisibleAfterAClick();
    void opensTheFolderByReturn();
};

namespace {

void clickView(const ExportInfoDlg &notice)
{
    part<QToolButton>(notice, "btnView").click();
}

/// The notice's timer, made precise, so that a restart can be detected.
QTimer &exactTimerOf(ExportInfoDlg &notice)
{
    QTimer &timer = timerOf(notice);
    timer.setTimerType(Qt::PreciseTimer);
    return timer;
}

constexpr int afterAWhile = 2900; // milliseconds left of three seconds

/// A visible parent with a hidden notice.
struct Shown
{
    Shown()
    {
        parent.resize(700, 500);
        parent.show();
    }
    QWidget parent;
    ExportInfoDlg notice{&parent};
};

} // namespace

void ExportNoticeView::runsItsTimerOnceForThreeSeconds()
{
    ExportInfoDlg notice(nullptr);
    const QTimer &timer = timerOf(notice);
    QVERIFY(timer.isSingleShot());
    QCOMPARE(timer.interval(), 3000);
    QCOMPARE(timer.parent(), nullptr);
}

void ExportNoticeView::doesNotRunTheTimerAtFirst()
{
    ExportInfoDlg notice(nullptr);
    QVERIFY(!timerOf(notice).isActive());
}

void ExportNoticeView::startsTheTimerWhenShown()
{
    Shown shown;
    shown.notice.show();
    QVERIFY(timerOf(shown.notice).isActive());
}

void ExportNoticeView::doesNotRestartTheTimerWhenShownAgain()
{
    Shown shown;
    const QTimer &timer = exactTimerOf(shown.notice);
    shown.notice.show();
    QTRY_VERIFY(timer.remainingTime() < afterAWhile);
    const int left = timer.remainingTime();
    shown.notice.show();
    QVERIFY(timer.isActive() && timer.remainingTime() <= left);
    shown.notice.hide();
    shown.notice.show();
    QVERIFY(timer.isActive() && timer.remainingTime() <= left);
}

void ExportNoticeView::restartsTheTimerWhenThePathIsSet()
{
    Shown shown;
    const QTimer &timer = exactTimerOf(shown.notice);
    shown.notice.show();
    QTRY_VERIFY(timer.remainingTime() < afterAWhile);
    QVERIFY(shown.notice.setPath(QString()));
    QVERIFY(timer.remainingTime() > afterAWhile);

    Shown hidden;
    QVERIFY(hidden.notice.setPath("a"));
    QVERIFY(timerOf(hidden.notice).isActive());
}

void ExportNoticeView::hidesWhenTheTimeIsUp()
{
    Shown shown;
    timerOf(shown.notice).setInterval(0);
    shown.notice.show();
    QVERIFY(shown.notice.isVisible());
    QTRY_VERIFY(!shown.notice.isVisible());
    QVERIFY(!timerOf(shown.notice).isActive());
    shown.notice.show(); // the notice can be reused
    QVERIFY(shown.notice.isVisible());
    QTRY_VERIFY(!shown.notice.isVisible());
}

void ExportNoticeView::opensTheFolderOfThePath()
{
    ScratchFolder scratch;
    const OpenedUrls urls;
    ExportInfoDlg notice(nullptr);
    notice.setPath(scratch.path());
    clickView(notice);
    QCOMPARE(urls.opened, QList<QUrl>{QUrl("file:///" + scratch.path())});
}

void ExportNoticeView::escapesEachSpecialCharacterOnce_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("escaped");

    QTest::newRow("all of them") << "100% done#1 a+b=c&d"
                                 << QByteArray("100%25%20done%231%20a%2Bb%3Dc%26d");
    QTest::newRow("what looks escaped") << "a%20b%25c" << QByteArray("a%2520b%2525c");
    QTest::newRow("each twice") << "%%##++  ==&&"
                                << QByteArray("%25%25%23%23%2B%2B%20%20%3D%3D%26%26");
    QTest::newRow("beyond ASCII") << "日志" << QByteArray("%E6%97%A5%E5%BF%97");
    QTest::newRow("nothing to escape") << "plain-folder_1" << QByteArray("plain-folder_1");
}

void ExportNoticeView::escapesEachSpecialCharacterOnce()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, escaped);
    ScratchFolder scratch;
    const OpenedUrls urls;
    ExportInfoDlg notice(nullptr);
    notice.setPath(scratch.folder(name));
    clickView(notice);
    QCOMPARE(urls.opened.size(), 1);
    QCOMPARE(urls.opened.first().toEncoded(), "file:///" + scratch.path().toUtf8() + '/' + escaped);
    // The URL decodes to the folder.
    QCOMPARE(QFileInfo(urls.opened.first().toLocalFile()), QFileInfo(scratch.path(name)));
}

void ExportNoticeView::opensNothingWithoutAPath()
{
    const OpenedUrls urls;
    ExportInfoDlg notice(nullptr);
    QSignalSpy emitted(&notice, &ExportInfoDlg::openUrl);
    clickView(notice);
    QCOMPARE(emitted.size(), 1);
    QCOMPARE(urls.opened, QList<QUrl>());
}

void ExportNoticeView::createsAMissingFolderBeforeOpeningIt()
{
    ScratchFolder scratch;
    const OpenedUrls urls;
    ExportInfoDlg notice(nullptr);
    const QString folder = scratch.path("gone/with/its parents");
    notice.setPath(folder);
    clickView(notice);
    QVERIFY(QFileInfo(folder).isDir());
    QCOMPARE(urls.opened.size(), 1);
}

void ExportNoticeView::opensNothingWhenTheFolderCannotBeCreated()
{
    ScratchFolder scratch;
    const OpenedUrls urls;
    ExportInfoDlg notice(nullptr);
    QSignalSpy emitted(&notice, &ExportInfoDlg::openUrl);
    notice.setPath(scratch.file("file") + "/folder");
    clickView(notice);
    QCOMPARE(emitted.size(), 1);
    QCOMPARE(urls.opened, QList<QUrl>());
}

void ExportNoticeView::signalsBeforeItOpens()
{
    ScratchFolder scratch;
    const OpenedUrls urls;
    ExportInfoDlg notice(nullptr);
    notice.setPath(scratch.path("new"));
    int openedBefore = -1;
    bool madeBefore = true;
    connect(&notice, &ExportInfoDlg::openUrl, this, [&] {
        openedBefore = urls.opened.size();
        madeBefore = QFileInfo::exists(scratch.path("new"));
    });
    clickView(notice);
    QCOMPARE(openedBefore, 0);
    QVERIFY(!madeBefore);
    QCOMPARE(urls.opened.size(), 1);
}

void ExportNoticeView::staysVisibleAfterAClick()
{
    ScratchFolder scratch;
    const OpenedUrls urls;
    Shown shown;
    shown.notice.setPath(scratch.path());
    shown.notice.show();
    clickView(shown.notice);
    QVERIFY(shown.notice.isVisible());
    QVERIFY(timerOf(shown.notice).isActive());
}

void ExportNoticeView::opensTheFolderByReturn()
{
    Shown shown;
    shown.notice.show();
    part<QToolButton>(shown.notice, "btnView").setFocus();
    QSignalSpy emitted(&shown.notice, &ExportInfoDlg::openUrl);
    QTest::keyClick(shown.parent.focusWidget(), Qt::Key_Return);
    QCOMPARE(emitted.size(), 1);
}

QTEST_MAIN(ExportNoticeView)
#include "tst_export_notice_view.moc"
