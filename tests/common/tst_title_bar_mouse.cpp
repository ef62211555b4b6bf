#include "KitWindow.h"
#include "MouseEvents.h"

#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QTest>
#include <QToolButton>

class TitleBarMouse : public QObject
{
    Q_OBJECT

private slots:
    void movesTheWindowWithTheCursor();
    void movesByItsTitleTextToo();
    void countsFromItsPlaceInTheWindow();
    void movesWithoutAMoveBeforeThePress();
    void stopsMovingWhenReleased();
    void endsTheDragWhenAMoveComesWithoutTheButton();
    void keepsMovingWhenAnotherButtonIsReleased();
    void movesByTheLeftButtonOnly();
    void neitherMovesNorResizesFromItsEdges_data();
    void neitherMovesNorResizesFromItsEdges();
    void neverChangesTheCursor();
    void passesOnWhatItDoesNotHandle();
    void keepsTheMovesOfADrag();
    void leavesAWindowsOwnEdgeToTheWindow();
    void ignoresDoubleClicksUnlessAllowed();
    void switchesTheWindowsSizeByADoubleClick();
    void switchesByTheLeftButtonOnly();
    void fixesTheSizePolicyWhileMaximised();
    void doesNotMoveAMaximisedWindow();
    void movesAndRemembersItsPlaceAfterRestoring();
    void ignoresItsSlotsUnlessAllowed();
    void leavesTheMaximiseButtonWithoutAnIcon();
    void maximisesItsParentAndRestoresItsWindow();
};

namespace {

const QPoint middle(150, 18);
const QPoint way(40, -30);
using Types = QList<QEvent::Type>;

QRect workArea()
{
    return QGuiApplication::primaryScreen()->availableGeometry();
}

/// Like the log viewer: resizable, and its title bar can maximise it.
struct Maximisable : KitWindow
{
    Maximisable()
        : KitWindow(true)
    {
        bar->setMaxMinEnabled(true);
    }
};

} // namespace

void TitleBarMouse::movesTheWindowWithTheCursor()
{
    KitWindow window;
    const QPoint start = window.at(middle);
    Mouse::move(*window.bar, start);
    Mouse::press(*window.bar, start);
    for (const QPoint &by : {QPoint(1, 1), way, QPoint(200, 300), QPoint(-90, -140)}) {
        Mouse::move(*window.bar, start + by, Qt::LeftButton);
        QCOMPARE(window.geometry(), KitWindow::place().translated(by));
    }
}

void TitleBarMouse::movesByItsTitleTextToo()
{
    KitWindow window;
    auto *title = window.bar->findChild<QLabel *>();
    Mouse::drag(*title, title->mapToGlobal(title->rect().center()),
                title->mapToGlobal(title->rect().center()) + way);
    QCOMPARE(window.pos(), KitWindow::place().topLeft() + way);
}

void TitleBarMouse::countsFromItsPlaceInTheWindow()
{
    KitWindow window(false, 20);
    Mouse::drag(*window.bar, window.at(middle), window.at(middle) + way);
    QCOMPARE(window.pos(), KitWindow::place().topLeft() + way);
}

void TitleBarMouse::movesWithoutAMoveBeforeThePress()
{
    KitWindow window;
    const QPoint start = window.at({0, 0}); // on the edge, but without a preceding move
    Mouse::press(*window.bar, start);
    Mouse::move(*window.bar, start + way, Qt::LeftButton);
    QCOMPARE(window.pos(), KitWindow::place().topLeft() + way);
}

void TitleBarMouse::stopsMovingWhenReleased()
{
    KitWindow window;
    const QPoint end = window.at(middle) + way;
    Mouse::drag(*window.bar, window.at(middle), end);
    Mouse::move(*window.bar, end + way);
    QCOMPARE(window.pos(), KitWindow::place().topLeft() + way);
}

void TitleBarMouse::endsTheDragWhenAMoveComesWithoutTheButton()
{
    KitWindow window;
    const QPoint start = window.at(middle);
    Mouse::press(*window.bar, start);
    Mouse::move(*window.bar, start + way); // the release went to another window
    Mouse::move(*window.bar, start + way * 2, Qt::RightButton);
    QCOMPARE(window.geometry(), KitWindow::place());
    Mouse::move(*window.bar, start + way, Qt::LeftButton); // pressed elsewhere
    QCOMPARE(window.geometry(), KitWindow::place());
}

void TitleBarMouse::keepsMovingWhenAnotherButtonIsReleased()
{
    KitWindow window;
    const QPoint start = window.at(middle);
    Mouse::press(*window.bar, start);
    Mouse::release(*window.bar, start, Qt::RightButton);
    Mouse::move(*window.bar, start + way, Qt::LeftButton);
    QCOMPARE(window.pos(), KitWindow::place().topLeft() + way);
}

void TitleBarMouse::movesByTheLeftButtonOnly()
{
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        KitWindow window;
        Mouse::drag(*window.bar, window.at(middle), window.at(middle) + way, button);
        QCOMPARE(window.geometry(), KitWindow::place());
    }
}

void TitleBarMouse::neitherMovesNorResizesFromItsEdges_data()
{
    QTest::addColumn<bool>("resizable");
    QTest::addColumn<QPoint>("inBar");

    const auto both = [](const char *name, QPoint inBar) {
        QTest::addRow("%s, fixed window", name) << false << inBar;
        QTest::addRow("%s, resizable window", name) << true << inBar;
    };
    // This window's bar is 10 pixels inside it, so its edges are not the window's.
    both("left", {0, 18});
    both("left, innermost", {2, 18});
    both("right", {279, 18});
    both("top", {150, 0});
    both("top, innermost", {150, 2});
    both("bottom", {150, 35});
    both("bottom, innermost", {150, 33});
    both("left top", {1, 1});
    both("right bottom", {278, 34});
}

void TitleBarMouse::neitherMovesNorResizesFromItsEdges()
{
    QFETCH(bool, resizable);
    QFETCH(QPoint, inBar);
    KitWindow window(resizable, 10);
    QCOMPARE(window.bar->size(), QSize(280, 36));
    Mouse::drag(*window.bar, window.at(inBar), window.at(inBar) + way);
    QCOMPARE(window.geometry(), KitWindow::place());
}

void TitleBarMouse::neverChangesTheCursor()
{
    KitWindow window(false);
    for (const QPoint &inBar : {QPoint(0, 0), QPoint(0, 18), QPoint(150, 0), middle})
        Mouse::move(*window.bar, window.at(inBar));
    QVERIFY(!window.bar->testAttribute(Qt::WA_SetCursor));
    QVERIFY(!window.testAttribute(Qt::WA_SetCursor));
}

void TitleBarMouse::passesOnWhatItDoesNotHandle()
{
    KitWindow window;
    const QPoint at = window.at(middle);
    Mouse::move(*window.bar, at);
    Mouse::press(*window.bar, at);
    Mouse::release(*window.bar, at);
    QCOMPARE(window.letThrough,
             (Types{QEvent::MouseMove, QEvent::MouseButtonPress, QEvent::MouseButtonRelease}));
    window.letThrough.clear();

    // It handles presses of other buttons, but not their releases.
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        Mouse::press(*window.bar, at, button);
        QCOMPARE(window.letThrough, Types());
        Mouse::release(*window.bar, at, button);
        QCOMPARE(window.letThrough, Types{QEvent::MouseButtonRelease});
        window.letThrough.clear();
    }
}

void TitleBarMouse::keepsTheMovesOfADrag()
{
    Maximisable window;
    const QPoint at = window.at(middle);
    Mouse::press(*window.bar, at);
    window.letThrough.clear();
    Mouse::move(*window.bar, at + way, Qt::LeftButton);
    window.bar->showMaxRestore(); // does not move then, but the bar still handles the event
    Mouse::move(*window.bar, at + way + way, Qt::LeftButton);
    QCOMPARE(window.letThrough, Types());
}

void TitleBarMouse::leavesAWindowsOwnEdgeToTheWindow()
{
    // Where the bar's edge is also the window's, press and moves are passed on to the window, which
    // resizes itself.
    KitWindow window(true);
    Mouse::drag(*window.bar, window.at({150, 0}), window.at({150, 0}) - QPoint(0, 30));
    QCOMPARE(window.geometry(), KitWindow::place().adjusted(0, -30, 0, 0));
}

void TitleBarMouse::ignoresDoubleClicksUnlessAllowed()
{
    KitWindow window;
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
        Mouse::doubleClick(*window.bar, window.at(middle), button);
    QCOMPARE(window.geometry(), KitWindow::place());
    QCOMPARE(window.letThrough, Types());
}

void TitleBarMouse::switchesTheWindowsSizeByADoubleClick()
{
    Maximisable window;
    window.bar->setMaxButtonVisible(false); // makes no difference
    Mouse::doubleClick(*window.bar, window.at(middle));
    QCOMPARE(window.geometry(), workArea());
    QVERIFY(!window.isMaximized()); // the title bar maximises, not the window manager
    Mouse::doubleClick(*window.bar, window.at(middle));
    QCOMPARE(window.geometry(), KitWindow::place());
    QCOMPARE(window.letThrough, (Types{QEvent::MouseButtonDblClick, QEvent::MouseButtonDblClick}));
}

void TitleBarMouse::switchesByTheLeftButtonOnly()
{
    Maximisable window;
    Mouse::doubleClick(*window.bar, window.at(middle), Qt::RightButton);
    Mouse::doubleClick(*window.bar, window.at(middle), Qt::MiddleButton);
    QCOMPARE(window.geometry(), KitWindow::place());
    QCOMPARE(window.letThrough, Types()); // handled, like presses of these buttons
}

void TitleBarMouse::fixesTheSizePolicyWhileMaximised()
{
    Maximisable window;
    window.bar->showMaxRestore();
    QCOMPARE(window.sizePolicy(), QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed));
    window.bar->showMaxRestore();
    QCOMPARE(window.sizePolicy(), QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding));
}

void TitleBarMouse::doesNotMoveAMaximisedWindow()
{
    Maximisable window;
    window.bar->showMaxRestore();
    Mouse::drag(*window.bar, window.at(middle), window.at(middle) + way);
    QCOMPARE(window.geometry(), workArea());
}

void TitleBarMouse::movesAndRemembersItsPlaceAfterRestoring()
{
    Maximisable window;
    window.bar->showMaxRestore();
    window.bar->showMaxRestore();
    Mouse::drag(*window.bar, window.at(middle), window.at(middle) + way);
    const QRect moved = KitWindow::place().translated(way);
    QCOMPARE(window.geometry(), moved);
    window.bar->showMaxRestore();
    window.bar->showMaxRestore();
    QCOMPARE(window.geometry(), moved);
}

void TitleBarMouse::ignoresItsSlotsUnlessAllowed()
{
    KitWindow window;
    const QSizePolicy before = window.sizePolicy();
    window.bar->showMaxRestore();
    window.bar->showSmall();
    QCOMPARE(window.geometry(), KitWindow::place());
    QCOMPARE(window.sizePolicy(), before);
    QVERIFY(!window.isMinimized());
    window.bar->setMaxMinEnabled(true);
    window.bar->showSmall();
    QVERIFY(window.isMinimized());
}

void TitleBarMouse::leavesTheMaximiseButtonWithoutAnIcon()
{
    Maximisable window;
    const auto *btnMax = window.bar->findChild<QToolButton *>("btnMax");
    window.bar->showMaxRestore();
    QVERIFY(btnMax->icon().isNull());
    window.bar->showMaxRestore();
    QVERIFY(btnMax->icon().isNull());
}

void TitleBarMouse::maximisesItsParentAndRestoresItsWindow()
{
    // In the program's forms both are the same object.
    QWidget window;
    window.setGeometry(KitWindow::place());
    QWidget inner(&window);
    inner.setGeometry(10, 20, 200, 100);
    CommonTitleBar bar(&inner);
    bar.setMaxMinEnabled(true);
    bar.showMaxRestore();
    QCOMPARE(inner.geometry(), workArea());
    QCOMPARE(window.geometry(), KitWindow::place());
    bar.showMaxRestore();
    QCOMPARE(inner.geometry(), workArea());
    QCOMPARE(window.geometry(), QRect(10, 20, 200, 100));
}

QTEST_MAIN(TitleBarMouse)
#include "tst_title_bar_mouse.moc"
