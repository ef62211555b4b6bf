#include "CWaitDialog.h"
#include "DebugCapture.h"
#include "EventRecorder.h"
#include "FormItems.h"
#include "MouseEvents.h"
#include "OwnMethods.h"
#include "Part.h"
#include "WorkingFolder.h"

#include <QFrame>
#include <QLabel>
#include <QMovie>
#include <QPointer>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <memory>

Q_DECLARE_METATYPE(Qt::MouseButton)

class WaitDialog : public QObject
{
    Q_OBJECT

private slots:
    void isADialogWithoutSignalsAndSlots();
    void staysAtItsSize();
    void isAFramelessToolWindow();
    void stacksItsPartsInAColumn();
    void keepsTheTitleLineLow();
    void framesTheAnimationAndTheText();
    void hasTheFormsTextsAtFirst();
    void playsTheAnimationFromTheWorkingDirectory();
    void usesTheSheetInTheWorkingDirectory();
    void keepsTheDefaultLookSilentlyWithoutASkin();
    void putsTheTitleInItsTitleLine();
    void centresOnItsParentInsideTheWorkArea_data();
    void centresOnItsParentInsideTheWorkArea();
    void staysWhereItIsWithoutAParent();
    void waitsUntilItIsClosedWhileEventsGoOn();
    void showsASecondTextWithTheAnimationRunningAgain();
    void keepsAnEndlessAnimationRunningInTheSecondShow();
    void movesByAnyButton_data();
    void movesByAnyButton();
    void movesByItsLabelsToo();
    void staysWithoutAPress();
    void keepsItsMouseEvents();
    void deletesTheAnimation();
};

namespace {

// GIFs of one pixel and two frames of 10 ms: the first plays once, the second endlessly.
const char onceGif[] = "47494638396101000100800000000000ffffff21f90400010000002c0000000001000100000"
                       "20244010021f90400010000002c00000000010001000002024c01003b";
const char endlessGif[] =
    "47494638396101000100800000000000ffffff21ff0b4e45545343415045322e30030100000021f904000100000"
    "02c000000000100010000020244010021f90400010000002c00000000010001000002024c01003b";

QString gifPath()
{
    return "Skins/Default/Vantrel/Icon_Common_Processing.gif";
}

QMovie &movieOf(const CWaitDialog &dialog)
{
    QMovie *movie = part<QLabel>(dialog, "waitLabel").movie();
    if (movie == nullptr)
        qFatal("no animation");
    return *movie;
}

/// Shows @p dialog, calls @p look while it is shown, and closes it. Returns the result of showing
/// it.
template <typename Look>
int showAndClose(CWaitDialog &dialog, const QString &text, Look look)
{
    QTimer::singleShot(0, &dialog, [&] {
        look();
        dialog.close();
    });
    return dialog.showAndWait(text);
}

QRect workArea()
{
    return QGuiApplication::primaryScreen()->availableGeometry();
}

} // namespace

void WaitDialog::isADialogWithoutSignalsAndSlots()
{
    QCOMPARE(CWaitDialog::staticMetaObject.superClass(), &QDialog::staticMetaObject);
    QCOMPARE(CWaitDialog::staticMetaObject.methodCount(), QDialog::staticMetaObject.methodCount());
}

void WaitDialog::staysAtItsSize()
{
    const CWaitDialog dialog(nullptr);
    QCOMPARE(dialog.objectName(), "CWaitDialog");
    QCOMPARE(dialog.minimumSize(), QSize(452, 252));
    QCOMPARE(dialog.maximumSize(), QSize(452, 252));
    QCOMPARE(dialog.size(), QSize(452, 252));
}

void WaitDialog::isAFramelessToolWindow()
{
    const QDialog plain(nullptr);
    const CWaitDialog dialog(nullptr);
    QCOMPARE(int(Qt::Tool | Qt::FramelessWindowHint), 0x80b);
    QCOMPARE(int(dialog.windowFlags()), int(plain.windowFlags()) | 0x80b);
    QCOMPARE(dialog.windowType(), Qt::Tool);
}

void WaitDialog::stacksItsPartsInAColumn()
{
    const CWaitDialog dialog(nullptr);
    const auto *column = qobject_cast<QVBoxLayout *>(dialog.layout());
    QVERIFY(column != nullptr);
    QCOMPARE(column->objectName(), "verticalLayout");
    QCOMPARE(column->spacing(), 0);
    QCOMPARE(column->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(describedItems(*column),
             (QStringList{"frameTitle", "spacer 20 x 50 Minimum Fixed", "layout horizontalLayout",
                          "spacer 20 x 24 Minimum Fixed", "textLabel",
                          "spacer 20 x 73 Minimum Preferred"}));
}

void WaitDialog::keepsTheTitleLineLow()
{
    const CWaitDialog dialog(nullptr);
    const auto &frame = part<QFrame>(dialog, "frameTitle");
    QCOMPARE(frame.frameShape(), QFrame::StyledPanel);
    QCOMPARE(frame.frameShadow(), QFrame::Raised);
    const auto *line = qobject_cast<QHBoxLayout *>(frame.layout());
    QVERIFY(line != nullptr);
    QCOMPARE(line->objectName(), "horizontalLayout_2");
    QCOMPARE(line->spacing(), 0);
    QCOMPARE(line->contentsMargins(), QMargins(10, 0, 0, 0));
    QCOMPARE(describedItems(*line), (QStringList{"lbTitle", "labTitleBar"}));
    for (const char *name : {"lbTitle", "labTitleBar"}) {
        QCOMPARE(part<QLabel>(dialog, name).minimumSize(), QSize(0, 26));
        QCOMPARE(part<QLabel>(dialog, name).maximumSize(), QSize(16777215, 26));
    }
}

void WaitDialog::framesTheAnimationAndTheText()
{
    const CWaitDialog dialog(nullptr);
    const auto &line = part<QHBoxLayout>(dialog, "horizontalLayout");
    QCOMPARE(describedItems(line), (QStringList{"spacer 40 x 20 Expanding Minimum", "waitLabel",
                                                "spacer 40 x 20 Expanding Minimum"}));
    const auto &waitLabel = part<QLabel>(dialog, "waitLabel");
    QCOMPARE(waitLabel.minimumSize(), QSize(100, 60));
    QCOMPARE(waitLabel.maximumSize(), QSize(100, 60));
    QCOMPARE(waitLabel.margin(), 0);
    const auto &textLabel = part<QLabel>(dialog, "textLabel");
    QCOMPARE(textLabel.alignment(), Qt::AlignHCenter | Qt::AlignVCenter);
    QVERIFY(textLabel.wordWrap());
}

void WaitDialog::hasTheFormsTextsAtFirst()
{
    const CWaitDialog dialog(nullptr);
    QCOMPARE(dialog.windowTitle(), "Dialog");
    QCOMPARE(part<QLabel>(dialog, "lbTitle").text(), qAppName());
    QCOMPARE(part<QLabel>(dialog, "labTitleBar").text(), QString());
    QCOMPARE(part<QLabel>(dialog, "waitLabel").text(), QString());
    QCOMPARE(part<QLabel>(dialog, "textLabel").text(), "TextLabel");
}

void WaitDialog::playsTheAnimationFromTheWorkingDirectory()
{
    WorkingFolder folder;
    folder.file(gifPath(), QByteArray::fromHex(onceGif));
    const CWaitDialog dialog(nullptr);
    const QMovie &movie = movieOf(dialog);
    QCOMPARE(movie.fileName(), "./Skins/Default/Vantrel/Icon_Common_Processing.gif");
    QCOMPARE(movie.parent(), nullptr);
    QVERIFY(movie.isValid());
    QCOMPARE(movie.state(), QMovie::NotRunning);
}

void WaitDialog::usesTheSheetInTheWorkingDirectory()
{
    WorkingFolder folder;
    folder.file("Skins/Default/Vantrel/style.qss", "CWaitDialog { color: red; }");
    const CWaitDialog dialog(nullptr);
    QCOMPARE(dialog.styleSheet(), "CWaitDialog { color: red; }");
}

void WaitDialog::keepsTheDefaultLookSilentlyWithoutASkin()
{
    const WorkingFolder folder;
    const DebugCapture output;
    const CWaitDialog dialog(nullptr);
    QCOMPARE(dialog.styleSheet(), QString());
    QVERIFY(!movieOf(dialog).isValid());
    QCOMPARE(output.lines(), QStringList());
}

void WaitDialog::putsTheTitleInItsTitleLine()
{
    CWaitDialog dialog(nullptr);
    dialog.setTitle("导出");
    QCOMPARE(part<QLabel>(dialog, "lbTitle").text(), "导出");
    QCOMPARE(dialog.windowTitle(), "Dialog");
}

void WaitDialog::centresOnItsParentInsideTheWorkArea_data()
{
    QTest::addColumn<QRect>("parent");
    QTest::addColumn<QPoint>("expected");

    // The dialog has 452 x 252 pixels; QRect's right and bottom are the last pixels.
    const int right = workArea().right();
    const int bottom = workArea().bottom();
    const auto row = [](const char *name, QRect parent, QPoint expected) {
        QTest::newRow(name) << parent << expected;
    };
    row("wide parent", {20, 30, 652, 452}, {120, 130});
    row("odd remainder", {20, 30, 655, 455}, {121, 131});
    row("smaller parent", {300, 200, 252, 152}, {200, 150});
    row("smaller parent, odd remainder", {300, 200, 251, 151}, {200, 150});
    row("ends just inside", {right - 452 - 10, bottom - 252 - 20, 472, 292},
        {right - 452, bottom - 252});
    row("one pixel past the right edge", {right - 452 - 9, 30, 472, 452}, {right - 452, 130});
    row("one pixel past the bottom edge", {20, bottom - 252 - 19, 652, 292}, {120, bottom - 252});
    row("far outside right and below", {5000, 4000, 652, 452}, {right - 452, bottom - 252});
    row("left of the origin", {-300, 30, 652, 452}, {0, 130});
    row("above the origin", {20, -300, 652, 452}, {120, 0});
    row("one pixel left of and above the origin", {-101, -101, 652, 452}, {0, 0});
}

void WaitDialog::centresOnItsParentInsideTheWorkArea()
{
    QFETCH(QRect, parent);
    QWidget around;
    around.setGeometry(parent);
    CWaitDialog dialog(&around);
    QPoint shownAt;
    showAndClose(dialog, QString(), [&] { shownAt = dialog.pos(); });
    QTEST(shownAt, "expected");
}

void WaitDialog::staysWhereItIsWithoutAParent()
{
    CWaitDialog dialog(nullptr);
    dialog.move(-17, 23);
    QPoint shownAt;
    showAndClose(dialog, QString(), [&] { shownAt = dialog.pos(); });
    QCOMPARE(shownAt, QPoint(-17, 23));
}

void WaitDialog::waitsUntilItIsClosedWhileEventsGoOn()
{
    CWaitDialog dialog(nullptr);
    QString text;
    bool visible = false;
    bool modal = false;
    const int result = showAndClose(dialog, "Exporting information...", [&] {
        text = part<QLabel>(dialog, "textLabel").text();
        visible = dialog.isVisible();
        modal = dialog.isModal();
    });
    QCOMPARE(result, int(QDialog::Rejected));
    QCOMPARE(text, "Exporting information...");
    QVERIFY(visible);
    QVERIFY(modal);
    QVERIFY(!dialog.isVisible());
}

void WaitDialog::showsASecondTextWithTheAnimationRunningAgain()
{
    WorkingFolder folder;
    folder.file(gifPath(), QByteArray::fromHex(onceGif));
    CWaitDialog dialog(nullptr);
    showAndClose(dialog, "first", [&] { QCOMPARE(movieOf(dialog).state(), QMovie::Running); });
    QTRY_COMPARE(movieOf(dialog).state(), QMovie::NotRunning); // finished

    QMovie::MovieState state = QMovie::NotRunning;
    int frame = -1;
    QString text;
    showAndClose(dialog, "second", [&] {
        state = movieOf(dialog).state();
        frame = movieOf(dialog).currentFrameNumber();
        text = part<QLabel>(dialog, "textLabel").text();
    });
    QCOMPARE(state, QMovie::Running);
    QCOMPARE(frame, 0);
    QCOMPARE(text, "second");
}

void WaitDialog::keepsAnEndlessAnimationRunningInTheSecondShow()
{
    WorkingFolder folder;
    folder.file(gifPath(), QByteArray::fromHex(endlessGif));
    CWaitDialog dialog(nullptr);
    for (const char *text : {"first", "second"}) {
        bool moved = false;
        showAndClose(dialog, QString::fromLatin1(text), [&] {
            QSignalSpy frames(&movieOf(dialog), &QMovie::frameChanged);
            moved = frames.wait();
        });
        QVERIFY2(moved, text);
    }
    QCOMPARE(movieOf(dialog).state(), QMovie::Running); // never stopped
}

void WaitDialog::movesByAnyButton_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::newRow("left") << Qt::LeftButton;
    QTest::newRow("right") << Qt::RightButton;
    QTest::newRow("middle") << Qt::MiddleButton;
}

void WaitDialog::movesByAnyButton()
{
    QFETCH(Qt::MouseButton, button);
    CWaitDialog dialog(nullptr);
    dialog.move(100, 120);
    dialog.show();
    const QPoint start(300, 200);
    Mouse::press(dialog, start, button);
    Mouse::move(dialog, start + QPoint(30, -20), button);
    QCOMPARE(dialog.pos(), QPoint(130, 100));
    Mouse::move(dialog, start + QPoint(-150, 5), button);
    QCOMPARE(dialog.pos(), QPoint(-50, 125));
    Mouse::release(dialog, start, button);
    Mouse::move(dialog, start, button);
    QCOMPARE(dialog.pos(), QPoint(-50, 125));
}

void WaitDialog::movesByItsLabelsToo()
{
    CWaitDialog dialog(nullptr);
    dialog.move(100, 120);
    dialog.show();
    auto &label = part<QLabel>(dialog, "textLabel");
    const QPoint start = label.mapToGlobal(QPoint(5, 5));
    Mouse::press(label, start);
    Mouse::move(label, start + QPoint(10, 10), Qt::LeftButton);
    QCOMPARE(dialog.pos(), QPoint(110, 130));
}

void WaitDialog::staysWithoutAPress()
{
    CWaitDialog dialog(nullptr);
    dialog.setMouseTracking(true);
    dialog.move(100, 120);
    Mouse::move(dialog, QPoint(200, 200));
    Mouse::move(dialog, QPoint(240, 260));
    QCOMPARE(dialog.pos(), QPoint(100, 120));
}

void WaitDialog::keepsItsMouseEvents()
{
    EventRecorder around;
    CWaitDialog dialog(&around);
    dialog.setWindowFlags(Qt::Widget); // so that it could pass events on
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
        Mouse::drag(dialog, QPoint(50, 50), QPoint(60, 60), button);
    QCOMPARE(around.received, QList<QEvent::Type>());
}

void WaitDialog::deletesTheAnimation()
{
    auto dialog = std::make_unique<CWaitDialog>(nullptr);
    const QPointer<QMovie> movie(&movieOf(*dialog));
    dialog.reset();
    QVERIFY(movie.isNull());
}

QTEST_MAIN(WaitDialog)
#include "tst_wait_dialog.moc"
