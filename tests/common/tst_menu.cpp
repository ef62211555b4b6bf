#include "CMenuEx.h"
#include "EventCount.h"
#include "OwnMethods.h"

#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

class Menu : public QObject
{
    Q_OBJECT

private slots:
    void isAMenuWithOneSignal();
    void staysOpenWhileItemsAreToggled();
    void triggersByAnyButton();
    void ignoresAReleaseBesideTheItems();
    void signalsOnceWhenEscapeClosesIt();
    void signalsOnceWhenAClickOutsideClosesIt();
    void signalsBeforeTheBaseClass();
    void ticksBySpaceAndStaysOpen();
    void ticksOnceWhileSpaceIsHeld();
    void ignoresSpaceWithoutAChosenItem();
    void choosesByReturnAndCloses_data();
    void choosesByReturnAndCloses();
    void leavesNoHoverOnTheButtonThatOpenedIt_data();
    void leavesNoHoverOnTheButtonThatOpenedIt();
    void repaintsTheButtonThatWasLeftMeanwhile();
    void keepsTheHoverUnderThePointer();
};

namespace {

/// An open menu with two checkable items and a plain one.
struct Fixture
{
    Fixture()
    {
        for (QAction *checkable : {info, debug})
            checkable->setCheckable(true);
        menu.popup(QPoint(100, 100));
    }

    void click(QAction *action, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(&menu, button, Qt::NoModifier, menu.actionGeometry(action).center());
    }

    void key(Qt::Key key) { QTest::keyClick(&menu, key); }

    CMenuEx menu{nullptr};
    QAction *info = menu.addAction("INFO");
    QAction *debug = menu.addAction("DEBUG");
    QAction *plain = menu.addAction("CopyAll");
    QSignalSpy hidden{&menu, &CMenuEx::signalHide};
    QSignalSpy triggered{&menu, &QMenu::triggered};
};

/// A window with a button that opens a menu below it.
struct Opener : QWidget
{
    Opener()
    {
        setGeometry(100, 100, 300, 300);
        button.setGeometry(10, 10, 40, 30);
        menu.addAction("INFO");
        connect(&button, &QToolButton::clicked, &menu,
                [this] { menu.popup(mapToGlobal(QPoint(10, 40))); });
        show();
    }

    /// A pointer movement as reported by the window system.
    void moveTo(const QPoint &where)
    {
        QCursor::setPos(mapToGlobal(where));
        QTest::mouseMove(windowHandle(), where);
        QCoreApplication::processEvents();
    }

    bool openByClick()
    {
        moveTo(onButton);
        QTest::mouseClick(windowHandle(), Qt::LeftButton, Qt::NoModifier, onButton);
        return menu.isVisible() && button.underMouse();
    }

    static constexpr QPoint onButton{20, 20};
    static constexpr QPoint elsewhere{250, 250};
    QToolButton button{this};
    CMenuEx menu{this};
};

} // namespace

void Menu::isAMenuWithOneSignal()
{
    QCOMPARE(CMenuEx::staticMetaObject.superClass(), &QMenu::staticMetaObject);
    const OwnMethods own = ownMethods(CMenuEx::staticMetaObject);
    QCOMPARE(own.signalsOf, QStringList{"signalHide()"});
    QCOMPARE(own.slotsOf, QStringList());
}

void Menu::staysOpenWhileItemsAreToggled()
{
    Fixture fixture;
    fixture.click(fixture.info);
    QVERIFY(fixture.info->isChecked());
    fixture.click(fixture.debug);
    fixture.click(fixture.info);
    QVERIFY(!fixture.info->isChecked());
    QVERIFY(fixture.debug->isChecked());
    fixture.click(fixture.plain);
    QCOMPARE(fixture.triggered.size(), 4);
    QVERIFY(fixture.menu.isVisible());
    QCOMPARE(fixture.hidden.size(), 0);

    fixture.menu.close();
    QCOMPARE(fixture.hidden.size(), 1);
}

void Menu::triggersByAnyButton()
{
    Fixture fixture;
    fixture.click(fixture.info, Qt::RightButton);
    QVERIFY(fixture.info->isChecked());
    QVERIFY(fixture.menu.isVisible());
}

void Menu::ignoresAReleaseBesideTheItems()
{
    Fixture fixture;
    QTest::mouseRelease(&fixture.menu, Qt::LeftButton, Qt::NoModifier, QPoint(-20, -20));
    QCOMPARE(fixture.triggered.size(), 0);
    QVERIFY(fixture.menu.isVisible());
}

void Menu::signalsOnceWhenEscapeClosesIt()
{
    Fixture fixture;
    fixture.click(fixture.info);
    QTest::keyClick(&fixture.menu, Qt::Key_Escape);
    QVERIFY(!fixture.menu.isVisible());
    QCOMPARE(fixture.hidden.size(), 1);
}

void Menu::signalsOnceWhenAClickOutsideClosesIt()
{
    Fixture fixture;
    QVERIFY(QTest::qWaitForWindowExposed(&fixture.menu));
    QTest::mouseClick(fixture.menu.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(fixture.menu.width() + 50, fixture.menu.height() + 50));
    QTRY_VERIFY(!fixture.menu.isVisible());
    QCOMPARE(fixture.hidden.size(), 1);
    QCOMPARE(fixture.triggered.size(), 0);
}

void Menu::signalsBeforeTheBaseClass()
{
    Fixture fixture;
    QStringList order;
    connect(&fixture.menu, &CMenuEx::signalHide, this, [&] { order += "own"; });
    connect(&fixture.menu, &QMenu::aboutToHide, this, [&] { order += "base"; });
    fixture.menu.close();
    QCOMPARE(order, (QStringList{"own", "base"}));
}

void Menu::ticksBySpaceAndStaysOpen()
{
    Fixture fixture;
    fixture.key(Qt::Key_Down);
    for (const bool checked : {true, false, true}) {
        fixture.key(Qt::Key_Space);
        QCOMPARE(fixture.info->isChecked(), checked);
        QVERIFY(fixture.menu.isVisible());
    }
    fixture.key(Qt::Key_Down);
    fixture.key(Qt::Key_Space);
    QVERIFY(fixture.debug->isChecked());
    QCOMPARE(fixture.triggered.size(), 4);
    QCOMPARE(fixture.hidden.size(), 0);
}

void Menu::ticksOnceWhileSpaceIsHeld()
{
    Fixture fixture;
    fixture.key(Qt::Key_Down);
    QTest::keyPress(&fixture.menu, Qt::Key_Space);
    for (int i = 0; i < 3; ++i) {
        QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ", true);
        QCoreApplication::sendEvent(&fixture.menu, &repeated);
    }
    QCOMPARE(fixture.triggered.size(), 1);
    QVERIFY(fixture.menu.isVisible());
}

void Menu::ignoresSpaceWithoutAChosenItem()
{
    Fixture fixture;
    fixture.key(Qt::Key_Space);
    QCOMPARE(fixture.triggered.size(), 0);
    QVERIFY(fixture.menu.isVisible());
}

void Menu::choosesByReturnAndCloses_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
}

void Menu::choosesByReturnAndCloses()
{
    QFETCH(Qt::Key, key);
    Fixture fixture;
    fixture.key(Qt::Key_Down);
    fixture.key(key);
    QVERIFY(fixture.info->isChecked());
    QVERIFY(!fixture.menu.isVisible());
    QCOMPARE(fixture.hidden.size(), 1);
}

void Menu::leavesNoHoverOnTheButtonThatOpenedIt_data()
{
    QTest::addColumn<bool>("byEscape");
    QTest::newRow("Escape") << true;
    QTest::newRow("a click outside") << false;
}

void Menu::leavesNoHoverOnTheButtonThatOpenedIt()
{
    QFETCH(bool, byEscape);
    Opener window;
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(window.openByClick());
    window.moveTo(Opener::elsewhere);
    if (byEscape)
        QTest::keyClick(&window.menu, Qt::Key_Escape);
    else
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, Opener::elsewhere);
    QTRY_VERIFY(!window.menu.isVisible());
    QVERIFY(!window.button.underMouse());
}

void Menu::repaintsTheButtonThatWasLeftMeanwhile()
{
    Opener window;
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(window.openByClick());
    window.moveTo(Opener::elsewhere);
    QEvent leave(QEvent::Leave); // without HoverLeave, as while a menu is open
    QCoreApplication::sendEvent(&window.button, &leave);
    QCoreApplication::processEvents();
    const EventCount paints(window.button, QEvent::Paint);
    emit window.menu.signalHide(); // closing the menu might repaint the window
    QTRY_VERIFY(paints.count > 0);
}

void Menu::keepsTheHoverUnderThePointer()
{
    Opener window;
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(window.openByClick());
    QTest::keyClick(&window.menu, Qt::Key_Escape);
    QTRY_VERIFY(!window.menu.isVisible());
    QVERIFY(window.button.underMouse());
    window.moveTo(Opener::elsewhere);
    QVERIFY(!window.button.underMouse());
}

QTEST_MAIN(Menu)
#include "tst_menu.moc"
