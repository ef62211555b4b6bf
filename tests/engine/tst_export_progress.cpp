#include "ExportProgress.h"

#include <QTest>

class ExportProgressTest : public QObject
{
    Q_OBJECT

private slots:
    void isNegativeWithoutAnExport();
    void isTheShareOfTheWorkThatIsDone();
    void growsMoreSlowlyFromThereWhenMoreIsFound();
    void growsFasterFromThereWhenThereIsLess();
    void neverReachesTheWholeBeforeTheEnd();
    void startsFromZeroWithTheNextExport();
};

namespace {

/// So large that the work after packing is less than a thousandth.
constexpr double work = 1e11;

bool isAbout(double value, double expected)
{
    return qAbs(value - expected) < 0.001;
}

} // namespace

void ExportProgressTest::isNegativeWithoutAnExport()
{
    ExportProgress progress;
    QVERIFY(progress.fraction() < 0);
    progress.begin();
    QCOMPARE(progress.fraction(), 0.0);
    progress.end();
    QVERIFY(progress.fraction() < 0);
}

void ExportProgressTest::isTheShareOfTheWorkThatIsDone()
{
    ExportProgress progress;
    progress.begin();
    progress.expect(work);
    for (int done = 1; done <= 10; ++done) {
        progress.advance(work / 10);
        QVERIFY(isAbout(progress.fraction(), done / 10.0));
    }
}

void ExportProgressTest::growsMoreSlowlyFromThereWhenMoreIsFound()
{
    ExportProgress progress;
    progress.begin();
    progress.expect(work);
    progress.advance(work / 2);
    progress.expect(3.5 * work);
    QVERIFY(isAbout(progress.fraction(), 0.5));
    progress.advance(2 * work);
    QVERIFY(isAbout(progress.fraction(), 0.75)); // half of the remaining work
    progress.advance(2 * work);
    QVERIFY(isAbout(progress.fraction(), 1));
}

void ExportProgressTest::growsFasterFromThereWhenThereIsLess()
{
    ExportProgress progress;
    progress.begin();
    progress.expect(10 * work);
    progress.advance(5 * work);
    progress.expectOnly(work);
    QVERIFY(isAbout(progress.fraction(), 0.5));
    progress.advance(work / 2);
    QVERIFY(isAbout(progress.fraction(), 0.75));
}

void ExportProgressTest::neverReachesTheWholeBeforeTheEnd()
{
    ExportProgress progress;
    progress.begin();
    progress.expect(1);
    progress.advance(work); // more than expected
    QVERIFY(progress.fraction() < 1);
    progress.expectOnly(work);
    for (int i = 0; i < 3; ++i)
        progress.advance(work);
    QVERIFY(progress.fraction() < 1);
    QVERIFY(progress.fraction() > 0.99);
}

void ExportProgressTest::startsFromZeroWithTheNextExport()
{
    ExportProgress progress;
    progress.begin();
    progress.expect(work);
    progress.advance(work / 2);
    progress.end();
    progress.begin();
    QCOMPARE(progress.fraction(), 0.0);
    progress.expect(work); // nothing remains of the first export
    progress.advance(work / 2);
    QVERIFY(isAbout(progress.fraction(), 0.5));
}

QTEST_APPLESS_MAIN(ExportProgressTest)
#include "tst_export_progress.moc"
