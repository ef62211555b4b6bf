#include "CComboBoxEx.h"
#include "OwnMethods.h"

#include <QListView>
#include <QSignalSpy>
#include <QTest>

class ComboBox : public QObject
{
    Q_OBJECT

private slots:
    void isAComboBoxWithOneSignal();
    void showsItsChoicesInAListView();
    void worksWithoutAParent();
    void signalsOnceWhenEscapeClosesThePopup();
    void signalsOnceWhenAChoiceClosesThePopup();
    void signalsOnceWhenAKeyChooses();
    void signalsOnceWhenAClickOutsideClosesThePopup();
    void signalsOnceWhenClosedByCode();
    void signalsWhileThePopupIsVisible();
    void signalsEachClosing();
    void signalsNothingWhenThePopupIsNotOpen();
};

namespace {

/// A combo box with three choices in a visible window.
struct Fixture
{
    Fixture()
    {
        combo.addItems({"one", "two", "three"});
        window.resize(400, 300);
        window.show();
    }

    bool open()
    {
        combo.showPopup();
        return QTest::qWaitForWindowExposed(combo.view()->window()) && combo.view()->isVisible();
    }

    QWidget window;
    CComboBoxEx combo{&window};
    QSignalSpy closed{&combo, &CComboBoxEx::signalFocusOut};
};

} // namespace

void ComboBox::isAComboBoxWithOneSignal()
{
    QCOMPARE(CComboBoxEx::staticMetaObject.superClass(), &QComboBox::staticMetaObject);
    const OwnMethods own = ownMethods(CComboBoxEx::staticMetaObject);
    QCOMPARE(own.signalsOf, QStringList{"signalFocusOut()"});
    QCOMPARE(own.slotsOf, QStringList());
}

void ComboBox::showsItsChoicesInAListView()
{
    const Fixture fixture;
    const QMetaObject *type = fixture.combo.view()->metaObject();
    QCOMPARE(type, &QListView::staticMetaObject); // not the combo box's own view
}

void ComboBox::worksWithoutAParent()
{
    const CComboBoxEx combo(nullptr);
    QVERIFY(qobject_cast<QListView *>(combo.view()) != nullptr);
}

void ComboBox::signalsOnceWhenEscapeClosesThePopup()
{
    Fixture fixture;
    QVERIFY(fixture.open());
    QTest::keyClick(fixture.combo.view(), Qt::Key_Escape);
    QTRY_VERIFY(!fixture.combo.view()->isVisible());
    QCOMPARE(fixture.closed.size(), 1);
    QCOMPARE(fixture.combo.currentIndex(), 0);
}

void ComboBox::signalsOnceWhenAChoiceClosesThePopup()
{
    // A release within this time might belong to the click that opened the popup.
    QApplication::setDoubleClickInterval(0);
    Fixture fixture;
    QVERIFY(fixture.open());
    QCoreApplication::processEvents();
    QAbstractItemView *view = fixture.combo.view();
    const QPoint second = view->visualRect(view->model()->index(1, 0)).center();
    QTest::mouseMove(view->viewport(), second);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, second);
    QTRY_VERIFY(!view->isVisible());
    QCOMPARE(fixture.combo.currentIndex(), 1);
    QCOMPARE(fixture.closed.size(), 1);
}

void ComboBox::signalsOnceWhenAKeyChooses()
{
    Fixture fixture;
    QVERIFY(fixture.open());
    QTest::keyClick(fixture.combo.view(), Qt::Key_Down);
    QTest::keyClick(fixture.combo.view(), Qt::Key_Return);
    QTRY_VERIFY(!fixture.combo.view()->isVisible());
    QCOMPARE(fixture.combo.currentIndex(), 1);
    QCOMPARE(fixture.closed.size(), 1);
}

void ComboBox::signalsOnceWhenAClickOutsideClosesThePopup()
{
    Fixture fixture;
    QVERIFY(fixture.open());
    QWidget *popup = fixture.combo.view()->window();
    QTest::mouseClick(popup->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(popup->width() + 50, popup->height() + 50));
    QTRY_VERIFY(!fixture.combo.view()->isVisible());
    QCOMPARE(fixture.closed.size(), 1);
}

void ComboBox::signalsOnceWhenClosedByCode()
{
    Fixture fixture;
    QVERIFY(fixture.open());
    fixture.combo.hidePopup();
    fixture.combo.hidePopup();
    QCOMPARE(fixture.closed.size(), 1);
}

void ComboBox::signalsWhileThePopupIsVisible()
{
    Fixture fixture;
    bool wasVisible = false;
    connect(&fixture.combo, &CComboBoxEx::signalFocusOut, this,
            [&] { wasVisible = fixture.combo.view()->isVisible(); });
    QVERIFY(fixture.open());
    fixture.combo.hidePopup();
    QVERIFY(wasVisible);
}

void ComboBox::signalsEachClosing()
{
    Fixture fixture;
    for (int closings = 1; closings <= 3; ++closings) {
        QVERIFY(fixture.open());
        fixture.combo.hidePopup();
        QCOMPARE(fixture.closed.size(), closings);
    }
}

void ComboBox::signalsNothingWhenThePopupIsNotOpen()
{
    Fixture fixture;
    fixture.combo.hidePopup();
    QVERIFY(fixture.open());
    QCOMPARE(fixture.closed.size(), 0);
}

QTEST_MAIN(ComboBox)
#include "tst_combo_box.moc"
