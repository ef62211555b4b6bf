#include "StartUp.h"

#include <QHBoxLayout>
#include <QScreen>
#include <QTest>
#include <QWidget>

class ScreenFit : public QObject
{
    Q_OBJECT

private slots:
    void leavesWindowsThatFit();
    void shrinksWindowsThatAreTooLarge();
    void shrinksBelowTheMinimum();
    void shrinksBelowTheLayoutsMinimum();
    void leavesAMinimumThatFits();
    void shrinksTheDialogsOfTheWindow();
    void leavesThePartsOfTheWindow();
};

namespace {

QSize room()
{
    return QGuiApplication::primaryScreen()->availableSize();
}

} // namespace

void ScreenFit::leavesWindowsThatFit()
{
    QWidget window;
    window.resize(200, 100);
    fitToScreen(window);
    QCOMPARE(window.size(), QSize(200, 100));
}

void ScreenFit::shrinksWindowsThatAreTooLarge()
{
    QWidget window;
    window.resize(room() + QSize(1, 1));
    fitToScreen(window);
    QCOMPARE(window.size(), room());
    window.resize(100, room().height() * 2);
    fitToScreen(window);
    QCOMPARE(window.size(), QSize(100, room().height()));
}

void ScreenFit::shrinksBelowTheMinimum()
{
    QWidget window;
    window.setMinimumSize(room().width() + 50, 80);
    window.resize(room() * 2);
    fitToScreen(window);
    QCOMPARE(window.size(), room());
    QCOMPARE(window.minimumSize(), QSize(room().width(), 80));
}

void ScreenFit::shrinksBelowTheLayoutsMinimum()
{
    QWidget window;
    auto *row = new QHBoxLayout(&window);
    auto *content = new QWidget;
    content->setMinimumSize(room() * 2);
    row->addWidget(content);
    fitToScreen(window);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(window.size(), room());
}

void ScreenFit::leavesAMinimumThatFits()
{
    QWidget window;
    window.setMinimumSize(150, 80);
    fitToScreen(window);
    QCOMPARE(window.minimumSize(), QSize(150, 80));
}

void ScreenFit::shrinksTheDialogsOfTheWindow()
{
    QWidget window;
    QWidget dialog(&window, Qt::Dialog | Qt::FramelessWindowHint);
    dialog.resize(room() * 2);
    fitToScreen(window);
    QCOMPARE(dialog.size(), room());
}

void ScreenFit::leavesThePartsOfTheWindow()
{
    QWidget window;
    QWidget part(&window);
    part.resize(room() * 2);
    fitToScreen(window);
    QCOMPARE(part.size(), room() * 2);
}

QTEST_MAIN(ScreenFit)
#include "tst_screen_fit.moc"
