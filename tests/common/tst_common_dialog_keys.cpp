#include "CommonDialog.h"

#include <QCheckBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

class CommonDialogKeys : public QObject
{
    Q_OBJECT

private slots:
    void pressesTheFocusedButtonByReturn_data();
    void pressesTheFocusedButtonByReturn();
    void leavesOtherKeysAndWidgetsAlone();
};

void CommonDialogKeys::pressesTheFocusedButtonByReturn_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("Return") << Qt::Key_Return << Qt::KeyboardModifiers();
    QTest::newRow("Enter") << Qt::Key_Enter << Qt::KeyboardModifiers(Qt::KeypadModifier);
    QTest::newRow("Space") << Qt::Key_Space << Qt::KeyboardModifiers();
}

void CommonDialogKeys::pressesTheFocusedButtonByReturn()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    CommonDialog dialog(nullptr, true, false);
    QPushButton push(&dialog);
    QToolButton tool(&dialog);
    for (QAbstractButton *button :
         {static_cast<QAbstractButton *>(&push), static_cast<QAbstractButton *>(&tool)}) {
        button->setFocus();
        QSignalSpy clicked(button, &QAbstractButton::clicked);
        QTest::keyClick(button, key, modifiers);
        QCOMPARE(clicked.size(), 1);
        button->setEnabled(false);
        QTest::keyClick(&dialog, key, modifiers);
        QCOMPARE(clicked.size(), 1);
    }
}

void CommonDialogKeys::leavesOtherKeysAndWidgetsAlone()
{
    CommonDialog dialog(nullptr, true, false);
    QPushButton push(&dialog);
    QCheckBox box(&dialog);
    QSignalSpy clicked(&push, &QAbstractButton::clicked);
    push.setFocus();
    QTest::keyClick(&push, Qt::Key_A);
    QTest::keyClick(&push, Qt::Key_Return, Qt::ControlModifier);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), true);
    QCoreApplication::sendEvent(&push, &held);
    QVERIFY(!held.isAccepted());
    QCOMPARE(clicked.size(), 0);
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Return);
    QVERIFY(!box.isChecked());
}

QTEST_MAIN(CommonDialogKeys)
#include "tst_common_dialog_keys.moc"
