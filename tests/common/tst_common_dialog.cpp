#include "CommonDialog.h"
#include "DebugCapture.h"
#include "EventRecorder.h"
#include "MouseEvents.h"
#include "OwnMethods.h"
#include "WorkingFolder.h"

#include <QTest>

Q_DECLARE_METATYPE(ResizeDirection)

class CommonDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void keepsTheNumbersOfTheDirections();
    void isAFramelessDialogWindow();
    void isAFrameWithoutSignalsAndSlots();
    void fillsItsBackgroundAndTracksTheMouse();
    void blocksItsParentOnlyWhenModal_data();
    void blocksItsParentOnlyWhenModal();
    void usesTheSheetInTheWorkingDirectory();
    void keepsTheDefaultLookSilentlyWithoutASheet();
    void classifiesTheCursor_data();
    void classifiesTheCursor();
    void takesTheFirstMatchingRuleWhereBandsOverlap_data();
    void takesTheFirstMatchingRuleWhereBandsOverlap();
    void fixedOneNeverChangesItsCursor();
    void keepsLeftPressesAndEveryRelease();
    void swallowsTheRightPress();
    void passesOtherPressesOn();
    void passesMovesOn();
    void bodyDragDoesNotMoveIt();
    void notesWhereInTheFrameABodyDragBegan();
    void doesNotGrabTheMouseOnAnEdge();
    void resetsTheCursorAfterAnEdgeDrag();
    void leavesTheCursorAloneAfterAPressOnTheBody();
    void leavesTheStateAloneWhenAnotherButtonIsReleased();
};

namespace {

const QRect place(100, 150, 300, 200); // right edge 399, bottom edge 349

/// Exposes protected members.
class Dialog : public CommonDialog
{
public:
    explicit Dialog(bool byEdges, QWidget *parent = nullptr)
        : CommonDialog(parent, byEdges, false)
    {
        setGeometry(place);
    }
    using CommonDialog::dragOffset;
};

/// A dialog as a plain child of a recorder, which receives the events that the dialog passes on.
struct Nested
{
    explicit Nested(bool byEdges)
        : dialog(byEdges, &around)
    {
        around.setGeometry(0, 0, 600, 500);
        around.setMouseTracking(true);
        dialog.setWindowFlags(Qt::Widget);
        dialog.setGeometry(place);
    }
    EventRecorder around;
    Dialog dialog;
};

const QPoint body(250, 250);

} // namespace

void CommonDialogTest::keepsTheNumbersOfTheDirections()
{
    QCOMPARE(int(ResizeDirection::Up), 0);
    QCOMPARE(int(ResizeDirection::Down), 1);
    QCOMPARE(int(ResizeDirection::Left), 2);
    QCOMPARE(int(ResizeDirection::Right), 3);
    QCOMPARE(int(ResizeDirection::LeftTop), 4);
    QCOMPARE(int(ResizeDirection::LeftBottom), 5);
    QCOMPARE(int(ResizeDirection::RightBottom), 6);
    QCOMPARE(int(ResizeDirection::RightTop), 7);
    QCOMPARE(int(ResizeDirection::None), 8);
}

void CommonDialogTest::isAFramelessDialogWindow()
{
    QWidget parent;
    const CommonDialog alone(nullptr, true, true);
    const CommonDialog child(&parent, false, false);
    QCOMPARE(int(alone.windowFlags()), 0x803);
    QCOMPARE(int(child.windowFlags()), 0x803);
    QVERIFY(child.isWindow());
    QVERIFY(child.isHidden());
}

void CommonDialogTest::isAFrameWithoutSignalsAndSlots()
{
    QCOMPARE(CommonDialog::staticMetaObject.superClass(), &QFrame::staticMetaObject);
    QCOMPARE(CommonDialog::staticMetaObject.methodCount(), QFrame::staticMetaObject.methodCount());
}

void CommonDialogTest::fillsItsBackgroundAndTracksTheMouse()
{
    const CommonDialog dialog(nullptr, false, false);
    QVERIFY(dialog.autoFillBackground());
    QVERIFY(dialog.testAttribute(Qt::WA_MouseTracking));
}

void CommonDialogTest::blocksItsParentOnlyWhenModal_data()
{
    QTest::addColumn<bool>("modal");
    QTest::addColumn<Qt::WindowModality>("modality");
    QTest::newRow("modal") << true << Qt::WindowModal;
    QTest::newRow("not modal") << false << Qt::NonModal;
}

void CommonDialogTest::blocksItsParentOnlyWhenModal()
{
    QFETCH(bool, modal);
    const CommonDialog dialog(nullptr, false, modal);
    QTEST(dialog.windowModality(), "modality");
}

void CommonDialogTest::usesTheSheetInTheWorkingDirectory()
{
    WorkingFolder folder;
    const QByteArray sheet = "/* 标题 */ CommonDialog { color: red; }\n";
    folder.file("Skins/Default/Vantrel/style.qss", sheet);
    const CommonDialog dialog(nullptr, false, false);
    QCOMPARE(dialog.styleSheet(), QString::fromUtf8(sheet));
}

void CommonDialogTest::keepsTheDefaultLookSilentlyWithoutASheet()
{
    WorkingFolder folder;
    const DebugCapture output;
    const CommonDialog unstyled(nullptr, false, false);
    folder.folder("Skins/Default/Vantrel/style.qss"); // exists, but is unreadable
    const CommonDialog unreadable(nullptr, false, false);
    QCOMPARE(unstyled.styleSheet(), QString());
    QCOMPARE(unreadable.styleSheet(), QString());
    QCOMPARE(output.lines(), QStringList());
}

void CommonDialogTest::classifiesTheCursor_data()
{
    QTest::addColumn<QPoint>("global");
    QTest::addColumn<ResizeDirection>("direction");
    QTest::addColumn<Qt::CursorShape>("shape");

    using D = ResizeDirection;
    const auto row = [](const char *name, QPoint at, D direction, Qt::CursorShape shape) {
        QTest::newRow(name) << at << direction << shape;
    };
    row("left, outermost", {100, 250}, D::Left, Qt::SizeHorCursor);
    row("left, innermost", {102, 250}, D::Left, Qt::SizeHorCursor);
    row("one inside the left band", {103, 250}, D::None, Qt::ArrowCursor);
    row("one outside the left", {99, 250}, D::None, Qt::ArrowCursor);
    row("right, outermost", {399, 250}, D::Right, Qt::SizeHorCursor);
    row("right, innermost", {397, 250}, D::Right, Qt::SizeHorCursor);
    row("one inside the right band", {396, 250}, D::None, Qt::ArrowCursor);
    row("one outside the right", {400, 250}, D::None, Qt::ArrowCursor);
    row("top, outermost", {250, 150}, D::Up, Qt::SizeVerCursor);
    row("top, innermost", {250, 152}, D::Up, Qt::SizeVerCursor);
    row("one inside the top band", {250, 153}, D::None, Qt::ArrowCursor);
    row("one outside the top", {250, 149}, D::None, Qt::ArrowCursor);
    row("bottom, outermost", {250, 349}, D::Down, Qt::SizeVerCursor);
    row("bottom, innermost", {250, 347}, D::Down, Qt::SizeVerCursor);
    row("one inside the bottom band", {250, 346}, D::None, Qt::ArrowCursor);
    row("one outside the bottom", {250, 350}, D::None, Qt::ArrowCursor);
    row("left top corner", {100, 150}, D::LeftTop, Qt::SizeFDiagCursor);
    row("left top, innermost", {102, 152}, D::LeftTop, Qt::SizeFDiagCursor);
    row("right bottom corner", {399, 349}, D::RightBottom, Qt::SizeFDiagCursor);
    row("right bottom, innermost", {397, 347}, D::RightBottom, Qt::SizeFDiagCursor);
    row("left bottom corner", {100, 349}, D::LeftBottom, Qt::SizeBDiagCursor);
    row("left bottom, innermost", {102, 347}, D::LeftBottom, Qt::SizeBDiagCursor);
    row("right top corner", {399, 150}, D::RightTop, Qt::SizeBDiagCursor);
    row("right top, innermost", {397, 152}, D::RightTop, Qt::SizeBDiagCursor);
    row("body", body, D::None, Qt::ArrowCursor);
}

void CommonDialogTest::classifiesTheCursor()
{
    QFETCH(QPoint, global);
    Dialog dialog(true);
    QTEST(resizeDirectionAt(dialog, global), "direction");

    dialog.setCursor(Qt::CrossCursor);
    Mouse::move(dialog, global);
    QTEST(dialog.cursor().shape(), "shape");
}

void CommonDialogTest::takesTheFirstMatchingRuleWhereBandsOverlap_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPoint>("inside");
    QTest::addColumn<ResizeDirection>("direction");

    using D = ResizeDirection;
    QTest::newRow("all four") << QSize(3, 3) << QPoint(1, 1) << D::LeftTop;
    QTest::newRow("left, right and bottom") << QSize(3, 50) << QPoint(1, 48) << D::RightBottom;
    QTest::newRow("left, right and top") << QSize(3, 50) << QPoint(1, 1) << D::LeftTop;
    QTest::newRow("left, top and bottom") << QSize(50, 3) << QPoint(1, 1) << D::LeftTop;
    QTest::newRow("right, top and bottom") << QSize(50, 3) << QPoint(48, 1) << D::RightBottom;
    QTest::newRow("left and right") << QSize(3, 50) << QPoint(1, 25) << D::Left;
    QTest::newRow("top and bottom") << QSize(50, 3) << QPoint(25, 1) << D::Up;
}

void CommonDialogTest::takesTheFirstMatchingRuleWhereBandsOverlap()
{
    QFETCH(QSize, size);
    QFETCH(QPoint, inside);
    QWidget tiny;
    tiny.setGeometry(QRect(place.topLeft(), size));
    QTEST(resizeDirectionAt(tiny, place.topLeft() + inside), "direction");
}

void CommonDialogTest::fixedOneNeverChangesItsCursor()
{
    Dialog dialog(false);
    dialog.setCursor(Qt::CrossCursor);
    for (const QPoint &edge : {place.topLeft(), place.topRight(), place.bottomLeft(),
                               place.bottomRight(), QPoint(100, 250), QPoint(250, 150), body}) {
        Mouse::move(dialog, edge);
        QCOMPARE(dialog.cursor().shape(), Qt::CrossCursor);
        Mouse::drag(dialog, edge, edge + QPoint(40, 30));
        QCOMPARE(dialog.cursor().shape(), Qt::CrossCursor);
        QCOMPARE(dialog.geometry(), place);
    }
}

void CommonDialogTest::keepsLeftPressesAndEveryRelease()
{
    Nested nested(true);
    const QPoint at = nested.dialog.mapToGlobal(QPoint(150, 100));
    Mouse::press(nested.dialog, at);
    Mouse::release(nested.dialog, at);
    Mouse::release(nested.dialog, at, Qt::RightButton);
    Mouse::release(nested.dialog, at, Qt::MiddleButton);
    QCOMPARE(nested.around.received, QList<QEvent::Type>());
}

void CommonDialogTest::swallowsTheRightPress()
{
    Nested nested(true);
    Mouse::press(nested.dialog, nested.dialog.mapToGlobal(QPoint(150, 100)), Qt::RightButton);
    QCOMPARE(nested.around.received, QList<QEvent::Type>());
    QCOMPARE(nested.dialog.geometry(), place);
    QCOMPARE(nested.dialog.dragOffset, QPoint());
}

void CommonDialogTest::passesOtherPressesOn()
{
    Nested nested(true);
    const QPoint at = nested.dialog.mapToGlobal(QPoint(150, 100));
    Mouse::press(nested.dialog, at, Qt::MiddleButton);
    Mouse::press(nested.dialog, at, Qt::BackButton);
    QCOMPARE(nested.around.received,
             (QList<QEvent::Type>{QEvent::MouseButtonPress, QEvent::MouseButtonPress}));
}

void CommonDialogTest::passesMovesOn()
{
    for (const bool resizable : {false, true}) {
        Nested nested(resizable);
        const QPoint left = nested.dialog.mapToGlobal(QPoint(0, 100));
        Mouse::move(nested.dialog, left);
        Mouse::press(nested.dialog, left);
        Mouse::move(nested.dialog, left + QPoint(5, 0), Qt::LeftButton);
        QCOMPARE(nested.around.received,
                 (QList<QEvent::Type>{QEvent::MouseMove, QEvent::MouseMove}));
    }
}

void CommonDialogTest::bodyDragDoesNotMoveIt()
{
    for (const bool resizable : {false, true}) {
        Dialog dialog(resizable);
        Mouse::drag(dialog, body, body + QPoint(60, 40));
        QCOMPARE(dialog.geometry(), place);
    }
}

void CommonDialogTest::notesWhereInTheFrameABodyDragBegan()
{
    Dialog dialog(true);
    QCOMPARE(dialog.dragOffset, QPoint(0, 0));
    Mouse::move(dialog, body);
    Mouse::press(dialog, body);
    QCOMPARE(dialog.dragOffset, body - place.topLeft());
    Mouse::release(dialog, body);

    // A press on an edge does not change it.
    Mouse::move(dialog, place.topLeft());
    Mouse::press(dialog, place.topLeft());
    QCOMPARE(dialog.dragOffset, body - place.topLeft());
    Mouse::release(dialog, place.topLeft());
}

void CommonDialogTest::doesNotGrabTheMouseOnAnEdge()
{
    Dialog dialog(true);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    Mouse::move(dialog, QPoint(100, 250));
    Mouse::press(dialog, QPoint(100, 250));
    QCOMPARE(QWidget::mouseGrabber(), nullptr);
    Mouse::release(dialog, QPoint(100, 250));
    QCOMPARE(QWidget::mouseGrabber(), nullptr);

    // The release ends a grab made by other code.
    dialog.grabMouse();
    Mouse::press(dialog, QPoint(100, 250));
    QCOMPARE(QWidget::mouseGrabber(), &dialog);
    Mouse::release(dialog, QPoint(100, 250));
    QCOMPARE(QWidget::mouseGrabber(), nullptr);
}

void CommonDialogTest::resetsTheCursorAfterAnEdgeDrag()
{
    Dialog dialog(true);
    const QPoint right(399, 250);
    Mouse::move(dialog, right);
    Mouse::press(dialog, right);
    Mouse::move(dialog, right + QPoint(-50, 0), Qt::LeftButton);
    QCOMPARE(dialog.cursor().shape(), Qt::SizeHorCursor);
    Mouse::release(dialog, right + QPoint(-50, 0));
    QCOMPARE(dialog.cursor().shape(), Qt::ArrowCursor);
}

void CommonDialogTest::leavesTheCursorAloneAfterAPressOnTheBody()
{
    Dialog dialog(true);
    Mouse::move(dialog, body);
    dialog.setCursor(Qt::CrossCursor);
    Mouse::press(dialog, body);
    Mouse::release(dialog, body);
    QCOMPARE(dialog.cursor().shape(), Qt::CrossCursor);
}

void CommonDialogTest::leavesTheStateAloneWhenAnotherButtonIsReleased()
{
    Dialog dialog(true);
    const QPoint right(399, 250);
    Mouse::move(dialog, right);
    Mouse::press(dialog, right);
    Mouse::release(dialog, right, Qt::RightButton);
    QCOMPARE(dialog.cursor().shape(), Qt::SizeHorCursor);
    Mouse::move(dialog, right + QPoint(20, 0), Qt::LeftButton);
    QCOMPARE(dialog.width(), place.width() + 19); // still resizing
}

QTEST_MAIN(CommonDialogTest)
#include "tst_common_dialog.moc"
