#include "CQZLineEdit.h"
#include "EventRecorder.h"
#include "OwnMethods.h"

#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QTest>

#include <memory>

class LineEdit : public QObject
{
    Q_OBJECT

private slots:
    void isALineEditWithoutSignalsAndSlots();
    void takesTheFocusByTabAndClick();
    void selectsItsTextWhenTabbedInto();
    void selectsItsTextWhenClicked();
    void selectsTheTextThatIsThereWhenTheLoopRuns();
    void survivesBeingDeletedBeforeTheLoopRuns();
    void showsNoContextMenu();
};

namespace {

/// Two line edits side by side, the first with the focus.
struct Fixture
{
    Fixture()
    {
        auto *row = new QHBoxLayout(&window);
        row->addWidget(&first);
        row->addWidget(&edit);
        edit.setText("C:/a b/UserLogInfo.zip");
        window.show();
    }

    bool start()
    {
        QApplication::setActiveWindow(&window);
        first.setFocus();
        return QTest::qWaitForWindowActive(&window) && first.hasFocus();
    }

    EventRecorder window;
    QLineEdit first;
    CQZLineEdit edit{nullptr};
};

} // namespace

void LineEdit::isALineEditWithoutSignalsAndSlots()
{
    QCOMPARE(CQZLineEdit::staticMetaObject.superClass(), &QLineEdit::staticMetaObject);
    QCOMPARE(CQZLineEdit::staticMetaObject.methodCount(),
             QLineEdit::staticMetaObject.methodCount());
}

void LineEdit::takesTheFocusByTabAndClick()
{
    const CQZLineEdit edit(nullptr);
    QCOMPARE(edit.focusPolicy(), Qt::StrongFocus);
    QCOMPARE(edit.contextMenuPolicy(), Qt::NoContextMenu);
}

void LineEdit::selectsItsTextWhenTabbedInto()
{
    Fixture fixture;
    QVERIFY(fixture.start());
    QTest::keyClick(&fixture.first, Qt::Key_Tab);
    QVERIFY(fixture.edit.hasFocus());
    QTRY_COMPARE(fixture.edit.selectedText(), fixture.edit.text());
}

void LineEdit::selectsItsTextWhenClicked()
{
    Fixture fixture;
    QVERIFY(fixture.start());
    // Through the window, so that the press first sets the focus and then the cursor.
    const QPoint inWindow = fixture.edit.mapTo(&fixture.window, QPoint(10, 5));
    QTest::mouseClick(fixture.window.windowHandle(), Qt::LeftButton, Qt::NoModifier, inWindow);
    QVERIFY(fixture.edit.hasFocus());
    QTRY_COMPARE(fixture.edit.selectedText(), fixture.edit.text());
    QVERIFY(!fixture.edit.text().isEmpty());
}

void LineEdit::selectsTheTextThatIsThereWhenTheLoopRuns()
{
    Fixture fixture;
    QVERIFY(fixture.start());
    fixture.edit.setFocus(Qt::OtherFocusReason);
    QCOMPARE(fixture.edit.selectedText(), QString()); // not within the handler
    fixture.edit.setText("later");
    QTRY_COMPARE(fixture.edit.selectedText(), "later");
}

void LineEdit::survivesBeingDeletedBeforeTheLoopRuns()
{
    auto edit = std::make_unique<CQZLineEdit>(nullptr);
    QFocusEvent focus(QEvent::FocusIn);
    QCoreApplication::sendEvent(edit.get(), &focus);
    edit.reset();
    QCoreApplication::processEvents();
}

void LineEdit::showsNoContextMenu()
{
    Fixture fixture;
    QVERIFY(fixture.start());
    const QPoint at(10, 5);
    QTest::mouseClick(&fixture.edit, Qt::RightButton, Qt::NoModifier, at);
    QContextMenuEvent asked(QContextMenuEvent::Mouse, at, fixture.edit.mapToGlobal(at));
    QCoreApplication::sendEvent(&fixture.edit, &asked);
    QCOMPARE(QApplication::activePopupWidget(), nullptr);
    QVERIFY(fixture.window.received.contains(QEvent::ContextMenu)); // left to the window
}

QTEST_MAIN(LineEdit)
#include "tst_line_edit.moc"
