#include "StartUp.h"

#include <QBackingStore>
#include <QPainter>
#include <QScreen>
#include <QTest>
#include <QWidget>
#include <private/qhighdpiscaling_p.h>

/// Runs with a font resolution of 90 dpi, which Qt treats as a scale of 0.9375.
class LeastScale : public QObject
{
    Q_OBJECT

private slots:
    void raisesTheScaleOfTheStart();
    void paintsTheWholeWindow();
    void raisesAScaleThatFallsLater();
    void raisesTheScaleThatAllScreensShare();
    void leavesALargerScale();
};

namespace {

QScreen &screen()
{
    return *QGuiApplication::primaryScreen();
}

qreal scale()
{
    return QHighDpiScaling::factor(&screen());
}

} // namespace

void LeastScale::raisesTheScaleOfTheStart()
{
    QCOMPARE(scale(), 0.9375);
    const QSize pixels = screen().size() * 0.9375;
    keepScaleAtLeastOne();
    QCOMPARE(scale(), 1.0);
    QCOMPARE(screen().devicePixelRatio(), 1.0);
    QCOMPARE(screen().size(), pixels);
}

void LeastScale::paintsTheWholeWindow()
{
    QWidget window;
    window.setStyleSheet("background: #010203");
    window.resize(200, 100);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const auto &pixels = *static_cast<const QImage *>(window.backingStore()->paintDevice());
    QCOMPARE(pixels.size(), QSize(200, 100));
    QCOMPARE(pixels.pixelColor(199, 99), QColor(1, 2, 3));
}

void LeastScale::raisesAScaleThatFallsLater()
{
    QHighDpiScaling::setScreenFactor(&screen(), 0.8);
    emit screen().logicalDotsPerInchChanged(77);
    QCOMPARE(scale(), 1.0);
}

void LeastScale::raisesTheScaleThatAllScreensShare()
{
    QHighDpiScaling::setGlobalFactor(0.5);
    emit screen().logicalDotsPerInchChanged(96);
    QCOMPARE(scale(), 1.0);
    QHighDpiScaling::setGlobalFactor(1);
}

void LeastScale::leavesALargerScale()
{
    QHighDpiScaling::setScreenFactor(&screen(), 1.25);
    emit screen().logicalDotsPerInchChanged(120);
    QCOMPARE(scale(), 1.25);
}

int main(int argc, char **argv)
{
    qputenv("QT_FONT_DPI", "90");
    configureQtBeforeStart();
    QApplication app(argc, argv);
    LeastScale test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_least_scale.moc"
