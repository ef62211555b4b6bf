#include "CMenuEx.h"
#include "OwnMethods.h"

#include <QtTest>

class Menu : public QObject
{
    Q_OBJECT

private slots:
    void isAMenuWithOneSignal();
    void staysOpenWhileItemsAreToggled();
    void triggersByAnyButton();
    void ignoresAReleaseBesideTheItems();
    void tellsOnceWhenEscapeClosesIt();
    void tellsOnceWhenAClickOutsideClosesIt();
    void tellsBeforeTheBaseClassDoes();
};

namespace {

/// A menu of two checkable items and a plain one, open.
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

    CMenuEx menu{nullptr};
    QAction *info = menu.addAction(QStringLiteral("INFO"));
    QAction *debug = menu.addAction(QStringLiteral("DEBUG"));
    QAction *plain = menu.addAction(QStringLiteral("CopyAll"));
    QSignalSpy told{&menu, &CMenuEx::signalHide};
    QSignalSpy triggered{&menu, &QMenu::triggered};
};

} // namespace

void Menu::isAMenuWithOneSignal()
{
    QCOMPARE(CMenuEx::staticMetaObject.superClass(), &QMenu::staticMetaObject);
    const OwnMethods own = ownMethods(CMenuEx::staticMetaObject);
    QCOMPARE(own.signalsOf, QStringList{QStringLiteral("signalHide()")});
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
    QCOMPARE(fixture.told.size(), 0);

    fixture.menu.close();
    QCOMPARE(fixture.told.size(), 1);
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

void Menu::tellsOnceWhenEscapeClosesIt()
{
    Fixture fixture;
    fixture.click(fixture.info);
    QTest::keyClick(&fixture.menu, Qt::Key_Escape);
    QVERIFY(!fixture.menu.isVisible());
    QCOMPARE(fixture.told.size(), 1);
}

void Menu::tellsOnceWhenAClickOutsideClosesIt()
{
    Fixture fixture;
    QVERIFY(QTest::qWaitForWindowExposed(&fixture.menu));
    QTest::mouseClick(fixture.menu.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(fixture.menu.width() + 50, fixture.menu.height() + 50));
    QTRY_VERIFY(!fixture.menu.isVisible());
    QCOMPARE(fixture.told.size(), 1);
    QCOMPARE(fixture.triggered.size(), 0);
}

void Menu::tellsBeforeTheBaseClassDoes()
{
    Fixture fixture;
    QStringList order;
    connect(&fixture.menu, &CMenuEx::signalHide, this, [&] { order += QStringLiteral("own"); });
    connect(&fixture.menu, &QMenu::aboutToHide, this, [&] { order += QStringLiteral("base"); });
    fixture.menu.close();
    QCOMPARE(order, (QStringList{QStringLiteral("own"), QStringLiteral("base")}));
}

QTEST_MAIN(Menu)
#include "tst_menu.moc"
