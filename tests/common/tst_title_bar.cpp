#include "CommonTitleBar.h"
#include "FormItems.h"
#include "KitWindow.h"
#include "OwnMethods.h"
#include "Part.h"

#include <QHelpEvent>
#include <QLabel>
#include <QTest>
#include <QToolButton>
#include <QToolTip>

class TitleBar : public QObject
{
    Q_OBJECT

private slots:
    void isAWidgetWithTwoSlotsAndNoSignals();
    void namesItsParts();
    void tracksTheMouseInAllParts();
    void saysWindowTitleAtFirst();
    void keepsAllContentInOneWidgetWithoutMargins();
    void laysItsContentOutInARow();
    void spreadsByTheStretchesSetLast();
    void setsOnlyTheLabelsText();
    void hidesAndShowsTheButtons();
    void saysInToolTipsWhatItsButtonsDo();
    void showsItsOwnToolTipAsPlainText();
    void closesTheWindow();
    void minimisesOnlyWhereAllowed();
    void maximisesByItsButtonOnlyWhereAllowed();
    void keepsTheHeightOfTheForms();
};

namespace {

QHBoxLayout &row(const QWidget &widget)
{
    auto *layout = qobject_cast<QHBoxLayout *>(widget.layout());
    if (layout == nullptr)
        qFatal("no row of widgets in %s", qPrintable(widget.objectName()));
    return *layout;
}

} // namespace

void TitleBar::isAWidgetWithTwoSlotsAndNoSignals()
{
    QCOMPARE(CommonTitleBar::staticMetaObject.superClass(), &QWidget::staticMetaObject);
    const OwnMethods own = ownMethods(CommonTitleBar::staticMetaObject);
    QCOMPARE(own.signalsOf, QStringList());
    QCOMPARE(own.slotsOf, (QStringList{"showSmall()", "showMaxRestore()"}));
}

void TitleBar::namesItsParts()
{
    QWidget window;
    const CommonTitleBar bar(&window);
    QStringList buttons;
    for (const QToolButton *button : bar.findChildren<QToolButton *>())
        buttons.append(button->objectName());
    QCOMPARE(buttons, (QStringList{"btnMin", "btnMax", "btnClose"}));
    QCOMPARE(bar.findChildren<QLabel *>().size(), 1);
    QCOMPARE(bar.findChildren<QLabel *>().first()->objectName(), "lbTitle");
}

void TitleBar::tracksTheMouseInAllParts()
{
    QWidget window;
    const CommonTitleBar bar(&window);
    QVERIFY(bar.testAttribute(Qt::WA_MouseTracking));
    QCOMPARE(bar.findChildren<QWidget *>().size(), 5);
    for (const QWidget *inner : bar.findChildren<QWidget *>())
        QVERIFY2(inner->testAttribute(Qt::WA_MouseTracking), qPrintable(inner->objectName()));
}

void TitleBar::saysWindowTitleAtFirst()
{
    QWidget window;
    window.setWindowTitle("before");
    const CommonTitleBar bar(&window);
    QCOMPARE(part<QLabel>(bar, "lbTitle").text(), "Window Title");
    QCOMPARE(window.windowTitle(), "Window Title");
}

void TitleBar::keepsAllContentInOneWidgetWithoutMargins()
{
    QWidget window;
    const CommonTitleBar bar(&window);
    QCOMPARE(row(bar).contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(describedItems(row(bar)), QStringList{"widGlobol"});
    const auto &content = part<QWidget>(bar, "widGlobol");
    QCOMPARE(content.parentWidget(), &bar);
    for (const QWidget *inner : content.findChildren<QWidget *>())
        QCOMPARE(inner->parentWidget(), &content);
    QCOMPARE(content.findChildren<QWidget *>().size(), 4);
}

void TitleBar::laysItsContentOutInARow()
{
    QWidget window;
    const CommonTitleBar bar(&window);
    const QHBoxLayout &content = row(part<QWidget>(bar, "widGlobol"));
    QCOMPARE(describedItems(content), (QStringList{"lbTitle", "btnMin", "btnMax", "btnClose",
                                                   "spacer 5 x 0 Fixed Minimum"}));
    QCOMPARE(content.contentsMargins(), QMargins(14, 0, 0, 0));
    QCOMPARE(content.spacing(), 0);
    QCOMPARE(content.itemAt(0)->alignment(), Qt::Alignment());
    for (const int button : {1, 2, 3})
        QCOMPARE(content.itemAt(button)->alignment(), Qt::Alignment(Qt::AlignVCenter));
}

void TitleBar::spreadsByTheStretchesSetLast()
{
    QWidget window;
    const CommonTitleBar bar(&window);
    const QHBoxLayout &content = row(part<QWidget>(bar, "widGlobol"));
    QList<int> stretches;
    for (int i = 0; i < content.count(); ++i)
        stretches.append(content.stretch(i));
    QCOMPARE(stretches, (QList<int>{0, 1, 0, 0, 0}));
}

void TitleBar::setsOnlyTheLabelsText()
{
    QWidget window;
    CommonTitleBar bar(&window);
    bar.setTitle("日志浏览");
    QCOMPARE(part<QLabel>(bar, "lbTitle").text(), "日志浏览");
    QCOMPARE(window.windowTitle(), "Window Title");
}

void TitleBar::hidesAndShowsTheButtons()
{
    KitWindow window;
    const auto &btnMin = part<QToolButton>(*window.bar, "btnMin");
    const auto &btnMax = part<QToolButton>(*window.bar, "btnMax");
    const auto &btnClose = part<QToolButton>(*window.bar, "btnClose");
    QVERIFY(btnMin.isVisible() && btnMax.isVisible() && btnClose.isVisible());
    window.bar->setMaxButtonVisible(false);
    QVERIFY(btnMin.isVisible() && !btnMax.isVisible());
    window.bar->setMinButtonVisible(false);
    QVERIFY(!btnMin.isVisible() && !btnMax.isVisible() && btnClose.isVisible());
    window.bar->setMaxButtonVisible(true);
    window.bar->setMinButtonVisible(true);
    QVERIFY(btnMin.isVisible() && btnMax.isVisible());
}

void TitleBar::saysInToolTipsWhatItsButtonsDo()
{
    QWidget window;
    const CommonTitleBar bar(&window);
    QCOMPARE(part<QToolButton>(bar, "btnMin").toolTip(), "Minimize");
    QCOMPARE(part<QToolButton>(bar, "btnMax").toolTip(), "Maximize");
    QCOMPARE(part<QToolButton>(bar, "btnClose").toolTip(), "Close");
}

void TitleBar::showsItsOwnToolTipAsPlainText()
{
    KitWindow window;
    window.bar->setToolTip("<b>.log");
    QHelpEvent rest(QEvent::ToolTip, QPoint(40, 18), window.at(QPoint(40, 18)));
    QCoreApplication::sendEvent(&part<QLabel>(*window.bar, "lbTitle"), &rest);
    QVERIFY(QToolTip::text().contains("&lt;b&gt;.log"));
    QToolTip::hideText();
}

void TitleBar::closesTheWindow()
{
    KitWindow window;
    QTest::mouseClick(&part<QToolButton>(*window.bar, "btnClose"), Qt::LeftButton);
    QCOMPARE(window.closed, 1);
    QVERIFY(!window.isVisible());
}

void TitleBar::minimisesOnlyWhereAllowed()
{
    KitWindow window;
    auto &btnMin = part<QToolButton>(*window.bar, "btnMin");
    QTest::mouseClick(&btnMin, Qt::LeftButton);
    QVERIFY(!window.isMinimized());
    window.bar->setMaxMinEnabled(true);
    QTest::mouseClick(&btnMin, Qt::LeftButton);
    QVERIFY(window.isMinimized());
}

void TitleBar::maximisesByItsButtonOnlyWhereAllowed()
{
    KitWindow window;
    auto &btnMax = part<QToolButton>(*window.bar, "btnMax");
    QTest::mouseClick(&btnMax, Qt::LeftButton);
    QCOMPARE(window.geometry(), KitWindow::place());
    window.bar->setMaxMinEnabled(true);
    QTest::mouseClick(&btnMax, Qt::LeftButton);
    QVERIFY(window.geometry() != KitWindow::place());
    QTest::mouseClick(&btnMax, Qt::LeftButton);
    QCOMPARE(window.geometry(), KitWindow::place());
}

void TitleBar::keepsTheHeightOfTheForms()
{
    const KitWindow window;
    QCOMPARE(window.bar->geometry(), QRect(0, 0, 300, 36));
}

QTEST_MAIN(TitleBar)
#include "tst_title_bar.moc"
