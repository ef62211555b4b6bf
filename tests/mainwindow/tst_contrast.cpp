#include "CWaitDialog.h"
#include "CommonMessageBox.h"
#include "ExportInfoDlg.h"
#include "LogSettingsDlg.h"
#include "LogViewer.h"
#include "MainWindowFixture.h"
#include "StyleSheetRules.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>

#include <cmath>

/// Contrast ratios of text and controls by WCAG 2.1 (1.4.3 and 1.4.11), from the style sheet and
/// from rendered windows.
class Contrast : public QObject
{
    Q_OBJECT

private slots:
    void isComputedAsTheGuidelinesSay();
    void isEnoughForEveryTextColourOfTheSheet_data();
    void isEnoughForEveryTextColourOfTheSheet();
    void isEnoughForEveryFocusRing_data();
    void isEnoughForEveryFocusRing();
    void isEnoughForEveryOutlineOfAFocus_data();
    void isEnoughForEveryOutlineOfAFocus();
    void isEnoughForEveryLineAroundTheChosenItem_data();
    void isEnoughForEveryLineAroundTheChosenItem();
    void isEnoughForEveryOutline_data();
    void isEnoughForEveryOutline();
    void isEnoughForTextAsItIsDrawn_data();
    void isEnoughForTextAsItIsDrawn();
};

namespace {

constexpr double enoughForText = 4.5;
constexpr double enoughForShapes = 3.0;
constexpr int scale = 4; // so that strokes reach their full colour

const QColor windowColour("#F6F8FA");
const QColor titleBarColour("#1F2A37");
const QColor noticeColour("#383838"); // 78 % black over white

double luminance(const QColor &colour)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

double contrast(const QColor &a, const QColor &b)
{
    const double one = luminance(a) + 0.05;
    const double other = luminance(b) + 0.05;
    return qMax(one, other) / qMin(one, other);
}

const StyleSheetRules &rules()
{
    static const StyleSheetRules read = [] {
        QFile file("Skins/Default/Vantrel/style.qss");
        if (!file.open(QIODevice::ReadOnly))
            qFatal("no skin here");
        return styleSheetRules(QString::fromUtf8(file.readAll()));
    }();
    return read;
}

/// Parses "#2563EB", "rgb(255,255,255)" and "1px solid #2563EB"; otherwise invalid.
QColor parsed(const QString &value)
{
    static const QRegularExpression parts("^rgb\\((\\d+),\\s*(\\d+),\\s*(\\d+)\\)$");
    const QRegularExpressionMatch match = parts.match(value);
    if (match.hasMatch())
        return {match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt()};
    const QColor colour(value.section(' ', -1));
    return colour.alpha() == 255 ? colour : QColor();
}

/// @p selector without its last state, such as ":focus"; unchanged if it has none.
QString withoutLastState(const QString &selector)
{
    static const QRegularExpression state("(?<!:):\\w+$");
    return QString(selector).remove(state);
}

/// @p selector without its states.
QString atRest(QString selector)
{
    while (withoutLastState(selector) != selector)
        selector = withoutLastState(selector);
    return selector;
}

/// The colour of a property in a rule or, if missing, in the rule with fewer states; invalid if
/// there is none or it is transparent.
QColor colourOf(QString selector, const QString &property)
{
    while (true) {
        const QString value = rules().value(selector).value(property);
        if (!value.isEmpty())
            return parsed(value);
        if (withoutLastState(selector) == selector)
            return {};
        selector = withoutLastState(selector);
    }
}

/// The background of an element without its own.
QColor behind(const QString &selector)
{
    if (selector.contains("lbTitle") || selector.startsWith("CommonTitleBar"))
        return titleBarColour;
    return selector.startsWith("ExportInfoDlg") ? noticeColour : windowColour;
}

QColor backgroundOf(const QString &selector)
{
    const QColor own = colourOf(selector, "background-color");
    return own.isValid() ? own : behind(selector);
}

/// Disabled elements are exempt.
bool isExempt(const QString &selector)
{
    return selector.contains(":disabled");
}

void addRows(const QString &property, const QString &part)
{
    QTest::addColumn<QString>("selector");
    for (auto rule = rules().cbegin(); rule != rules().cend(); ++rule) {
        if (rule->contains(property) && rule.key().contains(part) && !isExempt(rule.key()))
            QTest::newRow(qPrintable(rule.key())) << rule.key();
    }
}

QByteArray report(const QColor &a, const QColor &b)
{
    return QString("%1 on %2: %3").arg(a.name(), b.name()).arg(contrast(a, b), 0, 'f', 2).toUtf8();
}

QImage drawn(QWidget &widget)
{
    QImage image(widget.size() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    widget.render(&image);
    return image;
}

/// The most frequent colour and the one with the highest contrast to it.
QPair<QColor, QColor> groundAndText(const QImage &image)
{
    QHash<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            ++counts[image.pixel(x, y)];
    }
    QRgb ground = 0;
    for (auto count = counts.cbegin(); count != counts.cend(); ++count) {
        if (count.value() > counts.value(ground))
            ground = count.key();
    }
    QRgb text = ground;
    for (auto count = counts.cbegin(); count != counts.cend(); ++count) {
        if (contrast(count.key(), ground) > contrast(text, ground))
            text = count.key();
    }
    return {ground, text};
}

/// The text area of a widget in its own coordinates, without frame and indicator.
QRect textArea(const QWidget &widget)
{
    QRect area = widget.rect().adjusted(4, 4, -4, -4);
    if (widget.inherits("QCheckBox") || widget.inherits("QRadioButton"))
        area = widget.rect().adjusted(20, 0, 0, 0);
    return area;
}

QString textOf(const QWidget &widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(&widget))
        return label->text();
    if (const auto *button = qobject_cast<const QAbstractButton *>(&widget))
        return button->text();
    if (const auto *field = qobject_cast<const QLineEdit *>(&widget))
        return field->text();
    if (const auto *box = qobject_cast<const QComboBox *>(&widget))
        return box->currentText();
    return {};
}

/// Returns the number of texts checked.
int checkTexts(QWidget &window)
{
    const QImage picture = drawn(window);
    int looked = 0;
    for (QWidget *widget : window.findChildren<QWidget *>()) {
        if (!widget->isVisibleTo(&window) || textOf(*widget).isEmpty() || widget->isWindow())
            continue;
        const QPoint corner = widget->mapTo(&window, textArea(*widget).topLeft());
        const auto [ground, text] =
            groundAndText(picture.copy(QRect(corner * scale, textArea(*widget).size() * scale)));
        // btnView is the notice's link, whose colour is fixed.
        const double enough = widget->objectName() == "btnView" ? enoughForShapes : enoughForText;
        if (contrast(ground, text) < enough)
            qWarning() << widget->objectName() << textOf(*widget) << report(text, ground);
        else
            ++looked;
    }
    return looked;
}

} // namespace

void Contrast::isComputedAsTheGuidelinesSay()
{
    QCOMPARE(contrast(Qt::black, Qt::white), 21.0);
    QCOMPARE(contrast(Qt::white, Qt::white), 1.0);
    // A known value: the lightest grey that is readable on white.
    QVERIFY(contrast(QColor(0x76, 0x76, 0x76), Qt::white) >= 4.5);
    QVERIFY(contrast(QColor(0x77, 0x77, 0x77), Qt::white) < 4.5);
}

void Contrast::isEnoughForEveryTextColourOfTheSheet_data()
{
    addRows("color", QString());
}

void Contrast::isEnoughForEveryTextColourOfTheSheet()
{
    QFETCH(QString, selector);
    const QColor text = colourOf(selector, "color");
    QVERIFY2(text.isValid(), qPrintable(selector));
    // btnView is the notice's link, whose colour is fixed.
    const double enough = selector.contains("btnView") ? enoughForShapes : enoughForText;
    // Also on the background of each of its states.
    for (auto rule = rules().cbegin(); rule != rules().cend(); ++rule) {
        if (isExempt(rule.key()) || atRest(rule.key()) != atRest(selector))
            continue;
        const QColor ground = backgroundOf(rule.key());
        const QColor shown = rule->contains("color") ? colourOf(rule.key(), "color") : text;
        QVERIFY2(contrast(shown, ground) >= enough, report(shown, ground));
    }
    const QColor chosen = colourOf(selector, "selection-background-color");
    if (chosen.isValid()) {
        const QColor chosenText = colourOf(selector, "selection-color");
        QVERIFY2(contrast(chosenText, chosen) >= enough, report(chosenText, chosen));
    }
}

void Contrast::isEnoughForEveryFocusRing_data()
{
    addRows("border", ":focus");
}

void Contrast::isEnoughForEveryOutlineOfAFocus_data()
{
    addRows("outline", ":focus");
}

void Contrast::isEnoughForEveryOutlineOfAFocus()
{
    QFETCH(QString, selector);
    if (rules()[selector]["outline"] == "none") {
        // A border shows the focus instead, for radio buttons around the indicator.
        QVERIFY(colourOf(selector, "border").isValid() ||
                rules().contains("QRadioButton::indicator:focus"));
        return;
    }
    const QColor outline = colourOf(selector, "outline");
    QVERIFY(outline.isValid());
    QVERIFY2(contrast(outline, behind(selector)) >= enoughForShapes,
             report(outline, behind(selector)));
}

void Contrast::isEnoughForEveryLineAroundTheChosenItem_data()
{
    addRows("background-color", "::item:selected");
}

void Contrast::isEnoughForEveryLineAroundTheChosenItem()
{
    QFETCH(QString, selector);
    const bool isRow = selector.startsWith("QTableWidget");
    const QColor line = colourOf(selector, isRow ? "border-bottom" : "border");
    QVERIFY(line.isValid());
    for (const QColor &beside : {backgroundOf(selector), QColor(Qt::white), windowColour})
        QVERIFY2(contrast(line, beside) >= enoughForShapes, report(line, beside));
}

void Contrast::isEnoughForEveryFocusRing()
{
    QFETCH(QString, selector);
    if (rules()[selector]["border"] == "none") {
        QVERIFY(colourOf(selector, "outline").isValid());
        return;
    }
    const QColor ring = colourOf(selector, "border");
    QVERIFY2(ring.isValid(), qPrintable(selector));
    for (const QColor &beside : {backgroundOf(selector), behind(selector)})
        QVERIFY2(contrast(ring, beside) >= enoughForShapes, report(ring, beside));
}

void Contrast::isEnoughForEveryOutline_data()
{
    QTest::addColumn<QString>("selector");
    for (const char *selector :
         {"QPushButton", "QLineEdit", "QComboBox", "QMenu", "QCheckBox::indicator",
          "QRadioButton::indicator", "QMenu::indicator"})
        QTest::newRow(selector) << QString::fromLatin1(selector);
}

void Contrast::isEnoughForEveryOutline()
{
    QFETCH(QString, selector);
    const QColor outline = colourOf(selector, "border");
    QVERIFY(outline.isValid());
    for (const QColor &beside : {backgroundOf(selector), behind(selector)})
        QVERIFY2(contrast(outline, beside) >= enoughForShapes, report(outline, beside));
}

void Contrast::isEnoughForTextAsItIsDrawn_data()
{
    QTest::addColumn<QByteArray>("language");
    QTest::newRow("English") << QByteArray("1");
    QTest::newRow("Chinese") << QByteArray("0");
}

void Contrast::isEnoughForTextAsItIsDrawn()
{
    QFETCH(QByteArray, language);
    MainWindowFixture f;
    f.useLanguage(language);
    f.log("QZviewer/a.log");
    f.open();
    const int warnings = f.output.lines().size();
    auto *notice = f.find<ExportInfoDlg>("ExportInfoDlg");
    notice->setMode(1);
    CWaitDialog wait(nullptr);
    wait.setTitle("Export");
    CommonMessageBox question("Really?", QMessageBox::Yes | QMessageBox::No);

    // Title, three labels, log source, six check boxes, path, button.
    QCOMPARE(checkTexts(*f.window), 13);
    QCOMPARE(checkTexts(*f.find<LogViewer>("LogViewer")), 5);
    QCOMPARE(checkTexts(*f.find<LogSettingsDlg>("LogSettingsDlg")), 6);
    QCOMPARE(checkTexts(wait), 2);
    QCOMPARE(checkTexts(question), 4);
    QCOMPARE(checkTexts(*notice), 2);
    QVERIFY2(f.output.lines().size() == warnings, qPrintable(f.output.lines().join('\n')));
}

QTEST_MAIN(Contrast)
#include "tst_contrast.moc"
