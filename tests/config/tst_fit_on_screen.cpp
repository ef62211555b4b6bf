#include "CConfiguration.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTest>

class FitOnScreen : public QObject
{
    Q_OBJECT

private slots:
    void placesAtAPoint_data();
    void placesAtAPoint();
    void placesAtARectangle_data();
    void placesAtARectangle();
    void measuresThePrimaryScreenWhenNoneIsGiven();
};

namespace {
const QSize screen(1000, 800);
const QSize menu(200, 100);
} // namespace

void FitOnScreen::placesAtAPoint_data()
{
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<QPoint>("expected");

    QTest::newRow("room on both sides") << QPoint(10, 20) << QPoint(10, 20);
    QTest::newRow("ends exactly at the border") << QPoint(800, 700) << QPoint(800, 700);
    QTest::newRow("one pixel too low: above the point") << QPoint(10, 701) << QPoint(10, 601);
    QTest::newRow("one pixel too far right") << QPoint(801, 20) << QPoint(799, 20);
    QTest::newRow("both") << QPoint(990, 790) << QPoint(799, 690);
}

void FitOnScreen::placesAtAPoint()
{
    QFETCH(QPoint, point);
    QTEST(CConfiguration::fitOnScreen(point, menu, screen), "expected");
    // A menu larger than the screen is placed at the upper left corner.
    QCOMPARE(CConfiguration::fitOnScreen(point, QSize(1001, 801), screen), QPoint(0, 0));
}

void FitOnScreen::placesAtARectangle_data()
{
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<QPoint>("expected");

    // QRect::bottom() is the last row of pixels.
    QTest::newRow("hangs below") << QRect(10, 20, 30, 30) << QPoint(10, 49);
    QTest::newRow("ends exactly at the border") << QRect(10, 671, 30, 30) << QPoint(10, 700);
    QTest::newRow("stands above") << QRect(10, 672, 30, 30) << QPoint(10, 572);
    QTest::newRow("too far right") << QRect(900, 20, 30, 30) << QPoint(799, 49);
}

void FitOnScreen::placesAtARectangle()
{
    QFETCH(QRect, rect);
    QTEST(CConfiguration::fitOnScreen(rect, menu, screen), "expected");
}

void FitOnScreen::measuresThePrimaryScreenWhenNoneIsGiven()
{
    const QSize primary = QGuiApplication::primaryScreen()->geometry().size();
    const QPoint corner(primary.width(), primary.height());
    QCOMPARE(CConfiguration::fitOnScreen(corner, menu),
             QPoint(primary.width() - menu.width() - 1, primary.height() - menu.height()));
    QCOMPARE(CConfiguration::fitOnScreen(QRect(corner, QSize(1, 1)), menu),
             QPoint(primary.width() - menu.width() - 1, primary.height() - menu.height()));
}

QTEST_MAIN(FitOnScreen)
#include "tst_fit_on_screen.moc"
