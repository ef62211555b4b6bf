#include "DebugCapture.h"
#include "ExportInfoDlg.h"
#include "FormItems.h"
#include "OwnMethods.h"
#include "Part.h"
#include "StyleSheetRules.h"
#include "WorkingFolder.h"

#include <QFrame>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QTranslator>

class ExportNotice : public QObject
{
    Q_OBJECT

private slots:
    void hasTheseSignalsAndSlotsInThisOrder();
    void numbersTheModes();
    void isPaintedInsideItsParent();
    void isTranslucent();
    void holdsOneFrameWithoutMargins();
    void centresTheRowInTheFrame();
    void laysTheRowOut();
    void underlinesTheViewLink();
    void hasNoTextAtFirst();
    void carriesItsOwnSheet();
    void isOfAFixedSizeByItsOwnSheet();
    void prefersTheSheetInTheWorkingDirectory();
    void connectsItsSlotsWithoutAWarning();
    void showsWhatWasExported_data();
    void showsWhatWasExported();
    void keepsTheTextInAnUnknownMode();
    void startsInTheModeForEverything();
    void speaksTheLanguageInstalledAtTheRetranslation();
    void relabelsViewInAnUnknownModeToo();
};

namespace {

QString textOf(const ExportInfoDlg &notice)
{
    return part<QLabel>(notice, "label_text").text();
}

QString viewOf(const ExportInfoDlg &notice)
{
    return part<QToolButton>(notice, "btnView").text();
}

/// Translates each text of the notice to the same text in brackets.
class Bracketing : public QTranslator
{
public:
    QString translate(const char *context, const char *text, const char * /*disambiguation*/,
                      int /*n*/) const override
    {
        if (qstrcmp(context, "ExportInfoDlg") != 0)
            return {};
        return '[' + QString::fromUtf8(text) + ']';
    }
    [[nodiscard]] bool isEmpty() const override { return false; }
};

} // namespace

void ExportNotice::hasTheseSignalsAndSlotsInThisOrder()
{
    QCOMPARE(ExportInfoDlg::staticMetaObject.superClass(), &QDialog::staticMetaObject);
    const OwnMethods own = ownMethods(ExportInfoDlg::staticMetaObject);
    QCOMPARE(own.signalsOf, QStringList{"openUrl()"});
    QCOMPARE(own.slotsOf, (QStringList{"onTimer()", "on_btnView_clicked()"}));
}

void ExportNotice::numbersTheModes()
{
    QCOMPARE(int(EN_EXPORT_SELECTED), 0);
    QCOMPARE(int(EN_EXPORT_ALL), 1);
}

void ExportNotice::isPaintedInsideItsParent()
{
    QWidget parent;
    const ExportInfoDlg notice(&parent);
    QCOMPARE(int(notice.windowFlags()), 0x40812);
    QVERIFY(!notice.isWindow());
}

void ExportNotice::isTranslucent()
{
    const ExportInfoDlg notice(nullptr);
    QVERIFY(notice.testAttribute(Qt::WA_TranslucentBackground));
}

void ExportNotice::holdsOneFrameWithoutMargins()
{
    WorkingFolder unstyled;
    const ExportInfoDlg notice(nullptr);
    QCOMPARE(notice.objectName(), "ExportInfoDlg");
    const auto *outer = qobject_cast<QHBoxLayout *>(notice.layout());
    QVERIFY(outer != nullptr);
    QCOMPARE(outer->objectName(), "horizontalLayout_2");
    QCOMPARE(outer->spacing(), 6);
    QCOMPARE(outer->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(describedItems(*outer), QStringList{"frame_bk"});
}

void ExportNotice::centresTheRowInTheFrame()
{
    const ExportInfoDlg notice(nullptr);
    const auto &frame = part<QFrame>(notice, "frame_bk");
    QCOMPARE(frame.frameShape(), QFrame::StyledPanel);
    QCOMPARE(frame.frameShadow(), QFrame::Raised);
    QVERIFY(frame.testAttribute(Qt::WA_SetCursor));
    QCOMPARE(frame.cursor().shape(), Qt::ArrowCursor);
    const auto *column = qobject_cast<QVBoxLayout *>(frame.layout());
    QVERIFY(column != nullptr);
    QCOMPARE(column->objectName(), "verticalLayout");
    QCOMPARE(column->spacing(), 6);
    QCOMPARE(column->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(describedItems(*column),
             (QStringList{"spacer 20 x 19 Minimum Expanding", "layout horizontalLayout",
                          "spacer 20 x 19 Minimum Expanding"}));
}

void ExportNotice::laysTheRowOut()
{
    const ExportInfoDlg notice(nullptr);
    const auto &row = part<QHBoxLayout>(notice, "horizontalLayout");
    QCOMPARE(describedItems(row), (QStringList{"spacer 25 x 20 Fixed Minimum", "label_logo",
                                               "label_text", "spacer 0 x 20 Expanding Minimum",
                                               "btnView", "spacer 20 x 20 Fixed Minimum"}));
    QVERIFY(!part<QLabel>(notice, "label_text").wordWrap());
}

void ExportNotice::underlinesTheViewLink()
{
    const ExportInfoDlg notice(nullptr);
    const auto &btnView = part<QToolButton>(notice, "btnView");
    QVERIFY(btnView.font().underline());
    QCOMPARE(btnView.cursor().shape(), Qt::PointingHandCursor);
}

void ExportNotice::hasNoTextAtFirst()
{
    const ExportInfoDlg notice(nullptr);
    QCOMPARE(notice.windowTitle(), QString());
    QCOMPARE(part<QLabel>(notice, "label_logo").text(), QString());
    QCOMPARE(textOf(notice), QString());
    QCOMPARE(viewOf(notice), "View");
}

void ExportNotice::carriesItsOwnSheet()
{
    const StyleSheetRules expected{
        {"ExportInfoDlg",
         {{"min-height", "40px"},
          {"max-height", "40px"},
          {"min-width", "230px"},
          {"max-width", "230px"},
          {"background", "transparent"}}},
        {"ExportInfoDlg QFrame", {{"color", "rgb(255,255,255)"}}},
        {"ExportInfoDlg QFrame#frame_bk",
         {{"background", "rgba(0, 0, 0, 78%)"}, {"border-radius", "20px"}}},
        {"ExportInfoDlg QLabel#label_logo",
         {{"min-width", "12px"},
          {"min-height", "12px"},
          {"max-width", "12px"},
          {"max-height", "12px"},
          {"border-image", "url(Skins/Default/Tarnwick/Icon_Save_Tips_OK.png)"}}},
        {"ExportInfoDlg QToolButton#btnView",
         {{"border", "0px"},
          {"color", "#ff2d2d"},
          {"background", "none"},
          {"min-width", "34px"},
          {"max-width", "34px"}}}};

    WorkingFolder unstyled;
    const ExportInfoDlg notice(nullptr);
    QCOMPARE(styleSheetRules(notice.styleSheet()), expected);
}

void ExportNotice::isOfAFixedSizeByItsOwnSheet()
{
    WorkingFolder unstyled;
    QWidget parent;
    parent.resize(700, 500);
    ExportInfoDlg notice(&parent);
    notice.setMode(EN_EXPORT_SELECTED);
    parent.show();
    notice.show();
    QCOMPARE(notice.size(), QSize(230, 40));
}

void ExportNotice::prefersTheSheetInTheWorkingDirectory()
{
    WorkingFolder folder;
    folder.file("Skins/Default/Vantrel/style.qss", "ExportInfoDlg { color: red; }");
    const ExportInfoDlg notice(nullptr);
    QCOMPARE(notice.styleSheet(), "ExportInfoDlg { color: red; }");
}

void ExportNotice::connectsItsSlotsWithoutAWarning()
{
    WorkingFolder unstyled;
    const DebugCapture output;
    ExportInfoDlg notice(nullptr);
    QSignalSpy clicked(&notice, &ExportInfoDlg::openUrl);
    part<QToolButton>(notice, "btnView").click();
    QCOMPARE(clicked.size(), 1);
    QCOMPARE(output.lines(), QStringList());
}

void ExportNotice::showsWhatWasExported_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("text");
    QTest::newRow("selected items") << 0 << "Export selected info finished !";
    QTest::newRow("everything") << 1 << "Export info finished !";
}

void ExportNotice::showsWhatWasExported()
{
    QFETCH(int, mode);
    ExportInfoDlg notice(nullptr);
    notice.setMode(mode);
    QTEST(textOf(notice), "text");
    QCOMPARE(viewOf(notice), "View");
}

void ExportNotice::keepsTheTextInAnUnknownMode()
{
    for (const int unknown : {2, -1, 1000}) {
        ExportInfoDlg notice(nullptr);
        notice.setMode(unknown);
        QCOMPARE(textOf(notice), QString());
        notice.setMode(EN_EXPORT_SELECTED);
        notice.setMode(unknown);
        QCOMPARE(textOf(notice), "Export selected info finished !");
    }
}

void ExportNotice::startsInTheModeForEverything()
{
    ExportInfoDlg notice(nullptr);
    notice.retranslate();
    QCOMPARE(textOf(notice), "Export info finished !");
}

void ExportNotice::speaksTheLanguageInstalledAtTheRetranslation()
{
    ExportInfoDlg notice(nullptr);
    notice.setMode(EN_EXPORT_SELECTED);
    Bracketing translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QCOMPARE(textOf(notice), "Export selected info finished !");
    notice.retranslate();
    QCOMPARE(textOf(notice), "[Export selected info finished !]");
    QCOMPARE(viewOf(notice), "[View]");
    notice.setMode(EN_EXPORT_ALL);
    QCOMPARE(textOf(notice), "[Export info finished !]");
}

void ExportNotice::relabelsViewInAnUnknownModeToo()
{
    ExportInfoDlg notice(nullptr);
    notice.setMode(EN_EXPORT_ALL);
    notice.setMode(7);
    Bracketing translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    notice.retranslate(); // the stored mode does not determine the text
    QCOMPARE(textOf(notice), "Export info finished !");
    QCOMPARE(viewOf(notice), "[View]");
}

QTEST_MAIN(ExportNotice)
#include "tst_export_notice.moc"
