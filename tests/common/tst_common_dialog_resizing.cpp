#include "CommonDialog.h"
#include "EventRecorder.h"
#include "MouseEvents.h"

#include <QTest>

class CommonDialogResizing : public QObject
{
    Q_OBJECT

private slots:
    void followsTheCursor_data();
    void followsTheCursor();
    void keepsTheEdgeOfThePressWhereverTheCursorGoes();
    void leftSideSnapsBackAtTheMinimumWidth();
    void topSideSnapsBackAtTheMinimumHeight();
    void cornerStopsOneSideAndMovesTheOther();
    void rightAndBottomStopAtTheMinimumSize();
    void endsTheDragWhenAMoveComesWithoutTheButton();
    void needsTheLeftButton();
    void needsAMoveOverTheEdgeBeforeThePress();
    void ignoresTheEdgesWhenFixed_data();
    void ignoresTheEdgesWhenFixed();
    void repaintsItsParentWhileResizing();
};

namespace {

const QRect place(200, 200, 300, 200); // right edge 499, bottom edge 399
const QPoint inward(30, 20);

/// A point on each edge and corner.
struct Handle
{
    const char *name;
    QPoint at;
};

const Handle handles[] = {{"left", {200, 300}},        {"right", {499, 300}},
                          {"top", {350, 200}},         {"bottom", {350, 399}},
                          {"left top", {200, 200}},    {"right top", {499, 200}},
                          {"left bottom", {200, 399}}, {"right bottom", {499, 399}}};

/// A window that can be resized down to 100 x 80.
class Dialog : public CommonDialog
{
public:
    explicit Dialog(bool byEdges = true, QWidget *parent = nullptr)
        : CommonDialog(parent, byEdges, false)
    {
        setMinimumSize(100, 80);
        setGeometry(place);
    }

    /// Presses on the edge at @p at and moves it to @p to, without releasing.
    void pull(const QPoint &at, const QPoint &to)
    {
        Mouse::move(*this, at);
        Mouse::press(*this, at);
        Mouse::move(*this, to, Qt::LeftButton);
    }
};

QRect sides(int left, int top, int right, int bottom)
{
    return QRect(QPoint(left, top), QPoint(right, bottom));
}

} // namespace

void CommonDialogResizing::followsTheCursor_data()
{
    QTest::addColumn<QPoint>("from");
    QTest::addColumn<QPoint>("to");
    QTest::addColumn<QRect>("expected");

    const auto row = [](const char *name, QPoint from, QPoint to, QRect expected) {
        QTest::newRow(name) << from << to << expected;
    };
    // Width and height are the cursor's distance from the opposite side, so a right or bottom side
    // ends one pixel before the cursor.
    row("left, outwards", {200, 300}, {150, 320}, sides(150, 200, 499, 399));
    row("left, inwards", {201, 300}, {260, 320}, sides(260, 200, 499, 399));
    row("right, outwards", {499, 300}, {550, 320}, sides(200, 200, 549, 399));
    row("right, inwards", {498, 300}, {420, 320}, sides(200, 200, 419, 399));
    row("top, outwards", {350, 200}, {370, 150}, sides(200, 150, 499, 399));
    row("top, inwards", {350, 202}, {370, 240}, sides(200, 240, 499, 399));
    row("bottom, outwards", {350, 399}, {370, 450}, sides(200, 200, 499, 449));
    row("bottom, inwards", {350, 397}, {370, 340}, sides(200, 200, 499, 339));
    row("left top", {200, 200}, {180, 170}, sides(180, 170, 499, 399));
    row("right top", {499, 200}, {520, 170}, sides(200, 170, 519, 399));
    row("left bottom", {200, 399}, {180, 420}, sides(180, 200, 499, 419));
    row("right bottom", {499, 399}, {520, 420}, sides(200, 200, 519, 419));
    row("taken, not moved", {499, 399}, {499, 399}, sides(200, 200, 498, 398));
}

void CommonDialogResizing::followsTheCursor()
{
    QFETCH(QPoint, from);
    QFETCH(QPoint, to);
    Dialog dialog;
    dialog.pull(from, to);
    QTEST(dialog.geometry(), "expected");

    // After the release, moves have no effect.
    Mouse::release(dialog, to);
    Mouse::move(dialog, place.center());
    QTEST(dialog.geometry(), "expected");
}

void CommonDialogResizing::keepsTheEdgeOfThePressWhereverTheCursorGoes()
{
    Dialog dialog;
    dialog.pull({200, 300}, {190, 300});
    Mouse::move(dialog, place.center(), Qt::LeftButton);
    QCOMPARE(dialog.geometry().left(), place.center().x());
    Mouse::move(dialog, QPoint(170, 399), Qt::LeftButton); // over the bottom edge, left outside
    QCOMPARE(dialog.geometry(), sides(170, 200, 499, 399));
}

void CommonDialogResizing::leftSideSnapsBackAtTheMinimumWidth()
{
    Dialog dialog;
    dialog.pull({200, 300}, {398, 300}); // 101 pixels to the right side: one more than the minimum
    QCOMPARE(dialog.geometry().left(), 398);
    Mouse::move(dialog, QPoint(399, 300), Qt::LeftButton); // exactly the minimum: stays
    QCOMPARE(dialog.geometry(), sides(398, 200, 499, 399));
    Mouse::move(dialog, QPoint(700, 300), Qt::LeftButton);
    QCOMPARE(dialog.geometry(), sides(398, 200, 499, 399));
    Mouse::move(dialog, QPoint(300, 300), Qt::LeftButton);
    QCOMPARE(dialog.geometry(), sides(300, 200, 499, 399));
    Mouse::move(dialog, QPoint(480, 300), Qt::LeftButton); // in one step: stays where it was
    QCOMPARE(dialog.geometry(), sides(300, 200, 499, 399));
}

void CommonDialogResizing::topSideSnapsBackAtTheMinimumHeight()
{
    Dialog dialog;
    dialog.pull({350, 200}, {350, 318});
    QCOMPARE(dialog.geometry().top(), 318);
    Mouse::move(dialog, QPoint(350, 319), Qt::LeftButton);
    QCOMPARE(dialog.geometry(), sides(200, 318, 499, 399));
}

void CommonDialogResizing::cornerStopsOneSideAndMovesTheOther()
{
    Dialog dialog;
    dialog.pull({200, 200}, {450, 250});
    QCOMPARE(dialog.geometry(), sides(200, 250, 499, 399));
    Mouse::move(dialog, QPoint(220, 390), Qt::LeftButton);
    QCOMPARE(dialog.geometry(), sides(220, 250, 499, 399));
}

void CommonDialogResizing::rightAndBottomStopAtTheMinimumSize()
{
    Dialog dialog;
    dialog.pull({499, 399}, {100, 100});
    QCOMPARE(dialog.geometry(), QRect(place.topLeft(), QSize(100, 80)));
}

void CommonDialogResizing::endsTheDragWhenAMoveComesWithoutTheButton()
{
    Dialog dialog;
    Mouse::move(dialog, {499, 300});
    Mouse::press(dialog, {499, 300});
    Mouse::move(dialog, place.center()); // the release went to another window
    QCOMPARE(dialog.geometry(), place);
    QCOMPARE(dialog.cursor().shape(), Qt::ArrowCursor);
    Mouse::move(dialog, {550, 300}, Qt::LeftButton); // pressed elsewhere
    QCOMPARE(dialog.geometry(), place);
}

void CommonDialogResizing::needsTheLeftButton()
{
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        Dialog dialog;
        Mouse::drag(dialog, {499, 300}, {550, 300}, button);
        QCOMPARE(dialog.geometry(), place);
    }
}

void CommonDialogResizing::needsAMoveOverTheEdgeBeforeThePress()
{
    Dialog dialog;
    Mouse::press(dialog, {499, 300});
    Mouse::move(dialog, {550, 300}, Qt::LeftButton);
    QCOMPARE(dialog.geometry(), place);
}

void CommonDialogResizing::ignoresTheEdgesWhenFixed_data()
{
    QTest::addColumn<QPoint>("at");
    for (const Handle &handle : handles)
        QTest::newRow(handle.name) << handle.at;
}

void CommonDialogResizing::ignoresTheEdgesWhenFixed()
{
    QFETCH(QPoint, at);
    Dialog dialog(false);
    Mouse::drag(dialog, at, at + inward);
    Mouse::drag(dialog, at, at - inward);
    QCOMPARE(dialog.geometry(), place);
}

void CommonDialogResizing::repaintsItsParentWhileResizing()
{
    EventRecorder parent;
    parent.setGeometry(0, 0, 600, 500);
    parent.show();
    Dialog dialog(true, &parent);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&parent));
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QTRY_VERIFY(parent.paints > 0);

    dialog.pull(place.center(), place.center() + inward);
    Mouse::release(dialog, place.center() + inward);
    QCoreApplication::processEvents();
    parent.paints = 0;
    QCoreApplication::processEvents();
    QCOMPARE(parent.paints, 0);

    dialog.pull({499, 300}, {550, 300});
    QTRY_VERIFY(parent.paints > 0);
}

QTEST_MAIN(CommonDialogResizing)
#include "tst_common_dialog_resizing.moc"
