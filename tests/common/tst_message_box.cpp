#include "CWaitDialog.h"
#include "CommonMessageBox.h"
#include "CommonTitleBar.h"
#include "DebugCapture.h"
#include "ModalDialog.h"
#include "Part.h"

#include <QApplication>
#include <QLabel>
#include <QMetaMethod>
#include <QPushButton>
#include <QShowEvent>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTranslator>

Q_DECLARE_METATYPE(QMessageBox::StandardButtons)

using Buttons = QMessageBox::StandardButtons;

/// The kit's message box: its buttons and results.
class MessageBox : public QObject
{
    Q_OBJECT

private slots:
    void answersWithTheButtonThatIsPressed_data();
    void answersWithTheButtonThatIsPressed();
    void showsTheButtonsThatAreAskedFor_data();
    void showsTheButtonsThatAreAskedFor();
    void takesKeysAsUsersExpect_data();
    void takesKeysAsUsersExpect();
    void treatsTheCloseButtonLikeEsc_data();
    void treatsTheCloseButtonLikeEsc();
    void pressesTheFocusedButtonByEnter();
    void pressesTheFocusedCloseButtonByEnter();
    void pressesTheDefaultButtonByEnter();
    void declaresItsSlots();
    void letsASubclassIntercept();
    void forgetsTheButtonWhenItIsShownAgain();
    void keepsTheButtonWhenTheSystemShowsItAgain();
    void looksLikeTheOtherWindows();
    void takesTheFontOfTheSkinWithoutAParent();
    void showsTheTextAsItIs();
    void readsInBothLanguages();
    void growsWithALongText();
    void breaksALongPath();
    void breaksLongWordsOnlyWhereNothingElseDoes_data();
    void breaksLongWordsOnlyWhereNothingElseDoes();
};

namespace {

constexpr auto all = QMessageBox::Ok | QMessageBox::Cancel | QMessageBox::Yes | QMessageBox::No;

QPushButton *button(const QWidget &box, const QByteArray &name)
{
    return &part<QPushButton>(box, name.constData());
}

// Runs the box as a caller would, and performs @p action once it is shown.
template <typename Action>
int runAnd(CommonMessageBox &box, Action action)
{
    QTimer::singleShot(0, &box, [&box, action] {
        QVERIFY(QTest::qWaitForWindowActive(&box));
        action();
    });
    return ModalDialog::run(box);
}

class StubbornBox : public CommonMessageBox
{
public:
    using CommonMessageBox::CommonMessageBox;
    int accepted = 0;
    int rejected = 0;

    void accept() override { ++accepted; }
    void reject() override { ++rejected; }
};

} // namespace

void MessageBox::answersWithTheButtonThatIsPressed_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("clicked");
    QTest::addColumn<int>("result");
    QTest::newRow("OK") << QByteArray("btnOK") << 0x400 << int(QDialog::Accepted);
    QTest::newRow("Cancel") << QByteArray("btnCancel") << 0x400000 << int(QDialog::Rejected);
    QTest::newRow("Yes") << QByteArray("btnYes") << 0x4000 << int(QDialog::Accepted);
    QTest::newRow("No") << QByteArray("btnNo") << 0x10000 << int(QDialog::Rejected);
}

void MessageBox::answersWithTheButtonThatIsPressed()
{
    QFETCH(QByteArray, name);
    QFETCH(int, clicked);
    QFETCH(int, result);
    CommonMessageBox box("Really?", all);
    QCOMPARE(box.getClickedButton(), QMessageBox::NoButton);
    const int answer = runAnd(box, [&] { QTest::mouseClick(button(box, name), Qt::LeftButton); });
    QCOMPARE(answer, result);
    QCOMPARE(int(box.getClickedButton()), clicked);
    QVERIFY(!box.isVisible());
}

void MessageBox::showsTheButtonsThatAreAskedFor_data()
{
    QTest::addColumn<Buttons>("asked");
    QTest::addColumn<Buttons>("shown");
    for (int i = 1; i < 16; ++i) {
        Buttons buttons;
        buttons.setFlag(QMessageBox::Ok, (i & 1) != 0);
        buttons.setFlag(QMessageBox::Cancel, (i & 2) != 0);
        buttons.setFlag(QMessageBox::Yes, (i & 4) != 0);
        buttons.setFlag(QMessageBox::No, (i & 8) != 0);
        QTest::addRow("%x", int(buttons)) << buttons << buttons;
    }
    QTest::newRow("none") << Buttons() << Buttons(QMessageBox::Ok);
    QTest::newRow("unknown") << Buttons(QMessageBox::Abort) << Buttons(QMessageBox::Ok);
    QTest::newRow("also unknown") << (QMessageBox::Abort | QMessageBox::No)
                                  << Buttons(QMessageBox::No);
}

void MessageBox::showsTheButtonsThatAreAskedFor()
{
    QFETCH(Buttons, asked);
    QFETCH(Buttons, shown);
    CommonMessageBox box("?", asked);
    box.show();
    QCOMPARE(button(box, "btnOK")->isVisible(), shown.testFlag(QMessageBox::Ok));
    QCOMPARE(button(box, "btnCancel")->isVisible(), shown.testFlag(QMessageBox::Cancel));
    QCOMPARE(button(box, "btnYes")->isVisible(), shown.testFlag(QMessageBox::Yes));
    QCOMPARE(button(box, "btnNo")->isVisible(), shown.testFlag(QMessageBox::No));
}

void MessageBox::takesKeysAsUsersExpect_data()
{
    QTest::addColumn<Buttons>("buttons");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("clicked");
    QTest::addColumn<int>("result");
    const int yes = QMessageBox::Yes;
    const int no = QMessageBox::No;
    const int ok = QMessageBox::Ok;
    const int cancel = QMessageBox::Cancel;
    const int none = QMessageBox::NoButton;
    const auto row = [](const char *name, Buttons buttons, int key, int clicked, int result) {
        QTest::newRow(name) << buttons << key << clicked << result;
    };
    row("OK: Enter", QMessageBox::Ok, Qt::Key_Return, ok, QDialog::Accepted);
    row("OK: Enter of the number pad", QMessageBox::Ok, Qt::Key_Enter, ok, QDialog::Accepted);
    row("OK: Esc", QMessageBox::Ok, Qt::Key_Escape, ok, QDialog::Accepted);
    row("OK: Space", QMessageBox::Ok, Qt::Key_Space, ok, QDialog::Accepted);
    const auto okCancel = QMessageBox::Ok | QMessageBox::Cancel;
    row("OK, Cancel: Enter", okCancel, Qt::Key_Return, ok, QDialog::Accepted);
    row("OK, Cancel: Esc", okCancel, Qt::Key_Escape, cancel, QDialog::Rejected);
    const auto yesNo = QMessageBox::Yes | QMessageBox::No;
    row("Yes, No: Enter", yesNo, Qt::Key_Return, yes, QDialog::Accepted);
    row("Yes, No: Esc", yesNo, Qt::Key_Escape, no, QDialog::Rejected);
    row("Yes, No, Cancel: Enter", yesNo | QMessageBox::Cancel, Qt::Key_Return, yes,
        QDialog::Accepted);
    row("Yes, No, Cancel: Esc", yesNo | QMessageBox::Cancel, Qt::Key_Escape, cancel,
        QDialog::Rejected);
    row("all: Enter", all, Qt::Key_Return, yes, QDialog::Accepted);
    row("all: Esc", all, Qt::Key_Escape, cancel, QDialog::Rejected);
    row("No: Enter", QMessageBox::No, Qt::Key_Return, no, QDialog::Rejected);
    row("Cancel: Esc", QMessageBox::Cancel, Qt::Key_Escape, cancel, QDialog::Rejected);
    row("Yes, OK: Esc", QMessageBox::Yes | QMessageBox::Ok, Qt::Key_Escape, none,
        QDialog::Rejected);
}

void MessageBox::takesKeysAsUsersExpect()
{
    QFETCH(Buttons, buttons);
    QFETCH(int, key);
    CommonMessageBox box("Really?", buttons);
    const int answer = runAnd(box, [&] {
        QTest::keyClick(box.focusWidget() != nullptr ? box.focusWidget() : &box, Qt::Key(key));
    });
    QTEST(int(box.getClickedButton()), "clicked");
    QTEST(answer, "result");
}

void MessageBox::treatsTheCloseButtonLikeEsc_data()
{
    QTest::addColumn<Buttons>("buttons");
    QTest::addColumn<int>("clicked");
    QTest::addColumn<int>("result");
    QTest::newRow("OK") << Buttons(QMessageBox::Ok) << int(QMessageBox::Ok)
                        << int(QDialog::Accepted);
    QTest::newRow("all") << Buttons(all) << int(QMessageBox::Cancel) << int(QDialog::Rejected);
    QTest::newRow("Yes, OK") << (QMessageBox::Yes | QMessageBox::Ok) << int(QMessageBox::NoButton)
                             << int(QDialog::Rejected);
}

void MessageBox::treatsTheCloseButtonLikeEsc()
{
    QFETCH(Buttons, buttons);
    CommonMessageBox box("Really?", buttons);
    const int answer = runAnd(box, [&] { box.findChild<QToolButton *>("btnClose")->click(); });
    QTEST(int(box.getClickedButton()), "clicked");
    QTEST(answer, "result");
    QVERIFY(!box.isVisible());
}

void MessageBox::pressesTheFocusedButtonByEnter()
{
    CommonMessageBox box("Really?", QMessageBox::Yes | QMessageBox::No);
    const int answer = runAnd(box, [&] {
        QCOMPARE(box.focusWidget(), button(box, "btnYes"));
        QTest::keyClick(&box, Qt::Key_Tab);
        QCOMPARE(box.focusWidget(), button(box, "btnNo"));
        QTest::keyClick(box.focusWidget(), Qt::Key_Return);
    });
    QCOMPARE(answer, int(QDialog::Rejected));
    QCOMPARE(box.getClickedButton(), QMessageBox::No);
}

void MessageBox::pressesTheFocusedCloseButtonByEnter()
{
    CommonMessageBox box("Really?", QMessageBox::Yes | QMessageBox::No);
    const int answer = runAnd(box, [&] {
        part<QToolButton>(box, "btnClose").setFocus();
        QTest::keyClick(box.focusWidget(), Qt::Key_Return);
    });
    QCOMPARE(answer, int(QDialog::Rejected));
    QCOMPARE(box.getClickedButton(), QMessageBox::No);
}

void MessageBox::pressesTheDefaultButtonByEnter()
{
    CommonMessageBox box("Really?", QMessageBox::Yes | QMessageBox::No);
    const int answer = runAnd(box, [&] {
        QTest::keyClick(&box, Qt::Key_A); // has no effect
        QTest::keyClick(&box, Qt::Key_Return);
    });
    QCOMPARE(int(box.getClickedButton()), int(QMessageBox::Yes));
    QCOMPARE(answer, int(QDialog::Accepted));
}

void MessageBox::declaresItsSlots()
{
    const QMetaObject &meta = CommonMessageBox::staticMetaObject;
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        methods.append(QString::fromLatin1(meta.method(i).methodSignature()));
    QCOMPARE(methods, QStringList({"on_btnOK_clicked()", "on_btnCancel_clicked()",
                                   "on_btnYes_clicked()", "on_btnNo_clicked()"}));
    QVERIFY(meta.inherits(&QDialog::staticMetaObject));
}

void MessageBox::letsASubclassIntercept()
{
    DebugCapture output;
    StubbornBox box("Really?", all);
    box.show();
    button(box, "btnOK")->click();
    button(box, "btnYes")->click();
    QCOMPARE(box.accepted, 2);
    QCOMPARE(box.getClickedButton(), QMessageBox::Yes);
    button(box, "btnNo")->click();
    button(box, "btnCancel")->click();
    QCOMPARE(box.rejected, 2);
    QVERIFY(!box.close());
    QCOMPARE(box.rejected, 3);
    QVERIFY(box.isVisible());
    QCOMPARE(output.lines(), QStringList());
}

void MessageBox::forgetsTheButtonWhenItIsShownAgain()
{
    CommonMessageBox box("Really?", QMessageBox::Yes | QMessageBox::Ok);
    QCOMPARE(runAnd(box, [&] { button(box, "btnOK")->click(); }), int(QDialog::Accepted));
    QCOMPARE(box.getClickedButton(), QMessageBox::Ok);
    QCOMPARE(runAnd(box, [&] { QTest::keyClick(&box, Qt::Key_Escape); }), int(QDialog::Rejected));
    QCOMPARE(box.getClickedButton(), QMessageBox::NoButton);
}

void MessageBox::keepsTheButtonWhenTheSystemShowsItAgain()
{
    StubbornBox box("Really?", all);
    box.show();
    button(box, "btnYes")->click();
    QCOMPARE(box.getClickedButton(), QMessageBox::Yes);
    QShowEvent restored;
    QSpontaneKeyEvent::setSpontaneous(&restored);
    qApp->notify(&box, &restored); // sendEvent() would clear the spontaneous flag
    QCOMPARE(box.getClickedButton(), QMessageBox::Yes);
}

void MessageBox::looksLikeTheOtherWindows()
{
    DebugCapture output;
    CommonMessageBox box("Really?", all);
    QVERIFY(box.windowFlags().testFlag(Qt::FramelessWindowHint));
    QCOMPARE(box.windowType(), Qt::Dialog);
    QVERIFY(!box.windowIcon().isNull());
    box.show();
    QCOMPARE(box.findChild<CommonTitleBar *>("mainTitleBar")->height(), 36);
    QVERIFY(!box.findChild<QToolButton *>("btnMin")->isVisible());
    QVERIFY(!box.findChild<QToolButton *>("btnMax")->isVisible());
    QVERIFY(box.findChild<QToolButton *>("btnClose")->isVisible());
    QCOMPARE(output.lines(), QStringList());
}

void MessageBox::takesTheFontOfTheSkinWithoutAParent()
{
    CWaitDialog wait(nullptr);
    CommonMessageBox box("Really?", all);
    wait.ensurePolished();
    box.show();
    QVERIFY(wait.font() != QApplication::font());
    QCOMPARE(box.font(), wait.font());
    QCOMPARE(box.findChild<QLabel *>("lbText")->font(),
             wait.findChild<QLabel *>("textLabel")->font());
}

void MessageBox::showsTheTextAsItIs()
{
    const QString message = "<b>C:\\logs</b> & 日志\nsecond line";
    CommonMessageBox box(message);
    const auto *label = box.findChild<QLabel *>("lbText");
    QCOMPARE(label->text(), message);
    QCOMPARE(label->textFormat(), Qt::PlainText);
}

void MessageBox::readsInBothLanguages()
{
    for (const auto &[catalogue, form] :
         {std::pair(":/Linguist_EN.qm", "Form"), std::pair(":/Linguist_CN.qm", "窗口")}) {
        QTranslator translator;
        QVERIFY(translator.load(catalogue));
        QVERIFY(QCoreApplication::installTranslator(&translator));
        CommonMessageBox box("Really?");
        QCOMPARE(box.windowTitle(), form);
        QCOMPARE(box.findChild<QLabel *>("lbTitle")->text(), "Vantrel");
    }
}

void MessageBox::breaksALongPath()
{
    const QString path = QString("C:/") + QString("a_folder_with_a_long_name/").repeated(40);
    CommonMessageBox box(path);
    box.show();
    const auto *label = box.findChild<QLabel *>("lbText");
    QVERIFY2(box.width() < 600, qPrintable(QString::number(box.width())));
    QVERIFY(label->height() >= label->heightForWidth(label->width()));
    QCOMPARE(label->text().remove(QChar(0x200b)), path);
}

void MessageBox::growsWithALongText()
{
    CommonMessageBox box(QString("All of these words have to be readable. ").repeated(30));
    box.show();
    const auto *label = box.findChild<QLabel *>("lbText");
    QVERIFY(label->height() >= label->heightForWidth(label->width()));
    QVERIFY(box.width() < 1000);
}

void MessageBox::breaksLongWordsOnlyWhereNothingElseDoes_data()
{
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const QString &expected) {
        const QString message = QString(expected).remove('|');
        QTest::newRow(name) << message << expected;
    };
    const QString x(40, 'x');
    const QString accent = "e\u0301";
    row("short", x);
    row("long", x + "|x|x|x");
    row("words", x + "|x " + x + "|x");
    row("Chinese", QString("无法写入日志配置文件（请检查权限）。").repeated(5));
    row("path", QString("C:/") + QString("a_folder_with_a_long_name/").repeated(10));
    row("whole characters", accent.repeated(20) + '|' + accent);
    row("empty", QString());
}

void MessageBox::breaksLongWordsOnlyWhereNothingElseDoes()
{
    QFETCH(QString, message);
    QFETCH(QString, expected);
    const CommonMessageBox box(message);
    QCOMPARE(part<QLabel>(box, "lbText").text().replace(QChar(0x200b), '|'), expected);
}

QTEST_MAIN(MessageBox)
#include "tst_message_box.moc"
