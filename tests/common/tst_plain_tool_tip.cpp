#include "CComboBoxEx.h"
#include "CQZLineEdit.h"
#include "PlainToolTip.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QLabel>
#include <QScreen>
#include <QTableWidget>
#include <QTest>
#include <QTextDocument>
#include <QToolTip>

class PlainToolTips : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void showsTextsAsTheyAre_data();
    void showsTextsAsTheyAre();
    void keepsAShortLineInOneLine();
    void breaksBetweenWords();
    void breaksALongTextWithoutBlanksAnywhere_data();
    void breaksALongTextWithoutBlanksAnywhere();
    void staysOnTheScreenWithManyLines();
    void showsOnlyTheStartOfAnEndlessText();
    void splitsNoCharacter();
    void survivesCharactersWithAMeaningOfTheirOwn();
    void showsTheToolTipOfAWidget();
    void showsTheToolTipsOfTheKitsWidgets();
    void showsTheToolTipsOfItems();
    void hidesTheTipWhenThePointerLeavesTheItem();
    void showsNothingForAnItemWithoutAToolTip();
    void showsTheViewsOwnToolTipBesideTheItems();
};

namespace {

/// The visible tool tip, or null.
QLabel *tip()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->inherits("QTipLabel") && widget->isVisible())
            return qobject_cast<QLabel *>(widget);
    }
    return nullptr;
}

/// The tool tip's text, including line breaks.
QString shown()
{
    if (tip() == nullptr)
        return {};
    QTextDocument document;
    document.setHtml(tip()->text());
    return document.toPlainText();
}

QString shownWithoutLineEnds()
{
    return shown().remove('\n');
}

/// Lets the pointer rest at @p where in the widget.
void restOn(QWidget &widget, const QPoint &where)
{
    QHelpEvent event(QEvent::ToolTip, where, widget.mapToGlobal(where));
    QApplication::sendEvent(&widget, &event);
}

QRect screen()
{
    return QGuiApplication::primaryScreen()->availableGeometry();
}

struct Window : QWidget
{
    Window()
    {
        setGeometry(20, 20, 200, 100);
        show();
    }

    void showTip(const QString &text) { PlainToolTip::show(mapToGlobal(QPoint(5, 5)), text, this); }
};

/// A table of two rows whose items show plain tool tips.
struct Table : QTableWidget
{
    explicit Table(const QString &first)
        : QTableWidget(2, 1)
    {
        setItem(0, 0, new QTableWidgetItem);
        setItem(1, 0, new QTableWidgetItem);
        item(0, 0)->setToolTip(first);
        setGeometry(20, 20, 300, 200);
        PlainToolTip::installOnItemsOf(*this);
        show();
    }

    [[nodiscard]] QPoint middleOf(int row) const { return visualItemRect(item(row, 0)).center(); }
};

} // namespace

void PlainToolTips::cleanup()
{
    QToolTip::hideText();
    QTRY_COMPARE(tip(), nullptr);
}

void PlainToolTips::showsTextsAsTheyAre_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text :
         {"plain", "<b>bold<b>.log", "a &amp; b", "<img src='x.png'>", "<p style='color:red'>",
          "two  blanks", " leading", "tab\there", "two\nlines", "blank\n\nline", "\xe6\x97\xa5"})
        QTest::newRow(text) << QString::fromUtf8(text);
}

void PlainToolTips::showsTextsAsTheyAre()
{
    QFETCH(QString, text);
    Window window;
    window.showTip(text);
    QCOMPARE(shown(), text);
    window.showTip(text + '\n');
    QCOMPARE(shown(), text);
}

void PlainToolTips::keepsAShortLineInOneLine()
{
    Window window;
    window.showTip("x");
    const int height = tip()->height();
    const QString line = "[2024-05-06 07:08:09] INFO camera: frame lost";
    window.showTip(line);
    QCOMPARE(tip()->height(), height);
    QVERIFY(tip()->width() >= tip()->fontMetrics().horizontalAdvance(line));
}

void PlainToolTips::breaksBetweenWords()
{
    Window window;
    const QString words = QString("frame ").repeated(60);
    window.showTip(words);
    const QStringList lines = shown().split('\n');
    QVERIFY(lines.size() > 1);
    for (const QString &line : lines)
        QVERIFY2(line.endsWith("frame "), qPrintable(line));
}

void PlainToolTips::breaksALongTextWithoutBlanksAnywhere_data()
{
    QTest::addColumn<QString>("character");
    QTest::newRow("Latin") << "x";
    QTest::newRow("Chinese") << "错";
    QTest::newRow("markup") << "<";
}

void PlainToolTips::breaksALongTextWithoutBlanksAnywhere()
{
    QFETCH(QString, character);
    Window window;
    const QString strip = character.repeated(400);
    window.showTip(strip);
    QCOMPARE(shownWithoutLineEnds(), strip);
    const QStringList lines = shown().split('\n');
    QVERIFY(lines.size() > 2);
    for (int i = 0; i < lines.size() - 1; ++i)
        QCOMPARE(lines.at(i).size(), lines.first().size());
    QVERIFY(screen().contains(tip()->geometry()));
}

void PlainToolTips::staysOnTheScreenWithManyLines()
{
    Window window;
    window.showTip(QString("line\n").repeated(250));
    QVERIFY(screen().contains(tip()->geometry()));
    QVERIFY(shown().endsWith(QChar(0x2026)));
}

void PlainToolTips::showsOnlyTheStartOfAnEndlessText()
{
    Window window;
    window.showTip(QString(10'000'000, 'x'));
    const QString text = shownWithoutLineEnds();
    QVERIFY(text.size() > 500); // as much as fits on the screen
    QVERIFY(text.size() <= 1501);
    QCOMPARE(text, QString(text.size() - 1, 'x') + QChar(0x2026));
}

void PlainToolTips::splitsNoCharacter()
{
    Window window;
    const QString faces = QString("😀").repeated(5000);
    for (const char *before : {"", "x"}) {
        window.showTip(before + faces);
        const QString text = shownWithoutLineEnds();
        QCOMPARE(text.size() % 2, *before == '\0' ? 1 : 0); // surrogate pairs and an ellipsis
        QVERIFY(!text.at(text.size() - 2).isHighSurrogate());
    }
}

void PlainToolTips::survivesCharactersWithAMeaningOfTheirOwn()
{
    Window window;
    for (const int first : {0x0000, 0x2000, 0xd800, 0xdc00, 0xfd00, 0xff00}) {
        QString text;
        for (int i = 0; i < 0x100; ++i)
            text += QChar(first + i);
        window.showTip(text);
        QVERIFY(tip() != nullptr);
    }
}

void PlainToolTips::showsTheToolTipOfAWidget()
{
    const QString name = "<b>bold";
    Window window;
    window.setToolTip(name);
    PlainToolTip::installOn(window);
    restOn(window, QPoint(5, 5));
    QCOMPARE(shown(), name);
    QCOMPARE(window.toolTip(), name);
}

void PlainToolTips::showsTheToolTipsOfTheKitsWidgets()
{
    const QString name = "<i>a</i>";
    Window window;
    CComboBoxEx box(&window);
    CQZLineEdit edit(&window);
    for (QWidget *widget : {static_cast<QWidget *>(&box), static_cast<QWidget *>(&edit)}) {
        QToolTip::hideText();
        widget->setToolTip(name);
        restOn(*widget, QPoint(5, 5));
        QCOMPARE(shown(), name);
    }
}

void PlainToolTips::showsTheToolTipsOfItems()
{
    const QString path = "/home/<b>/a.log";
    Table table(path);
    restOn(*table.viewport(), table.middleOf(0));
    QCOMPARE(shown(), path);
    QCOMPARE(table.item(0, 0)->toolTip(), path);
}

void PlainToolTips::hidesTheTipWhenThePointerLeavesTheItem()
{
    Table table("a.log");
    table.setMouseTracking(true);
    QVERIFY(QTest::qWaitForWindowExposed(&table));
    QTest::mouseMove(table.viewport(), table.middleOf(0));
    restOn(*table.viewport(), table.middleOf(0));
    QTest::mouseMove(table.viewport(), table.middleOf(0) + QPoint(3, 3));
    QVERIFY(tip() != nullptr);
    QTest::mouseMove(table.viewport(), table.middleOf(1));
    QTRY_COMPARE(tip(), nullptr);
}

void PlainToolTips::showsNothingForAnItemWithoutAToolTip()
{
    Table table("a.log");
    restOn(*table.viewport(), table.middleOf(0));
    QVERIFY(tip() != nullptr);
    restOn(*table.viewport(), table.middleOf(1));
    QTRY_COMPARE(tip(), nullptr);
}

void PlainToolTips::showsTheViewsOwnToolTipBesideTheItems()
{
    Table table{QString()};
    table.setToolTip("table");
    restOn(*table.viewport(), table.middleOf(1));
    QCOMPARE(shown(), "table");
}

QTEST_MAIN(PlainToolTips)
#include "tst_plain_tool_tip.moc"
