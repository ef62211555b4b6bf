#include "ExportInfoDlg.h"

#include <QElapsedTimer>
#include <QTest>

/// Slow, because it waits in real time.
class ExportNoticeTime : public QObject
{
    Q_OBJECT

private slots:
    void hidesThreeSecondsAfterThePathWasLastSet();
};

void ExportNoticeTime::hidesThreeSecondsAfterThePathWasLastSet()
{
    QWidget parent;
    ExportInfoDlg notice(&parent);
    parent.show();
    notice.show();

    // Half a second later setting the path restarts the three seconds.
    QElapsedTimer sinceSet;
    QTimer::singleShot(500, &notice, [&] {
        notice.setPath("a");
        sinceSet.start();
    });
    QTRY_VERIFY_WITH_TIMEOUT(!notice.isVisible(), 10000);
    QVERIFY(sinceSet.isValid());
    // Coarse timers are accurate to five percent.
    QVERIFY2(sinceSet.elapsed() >= 2850, qPrintable(QString::number(sinceSet.elapsed())));
    QVERIFY2(sinceSet.elapsed() < 6000, qPrintable(QString::number(sinceSet.elapsed())));
}

QTEST_MAIN(ExportNoticeTime)
#include "tst_export_notice_time.moc"
