#include "CommonMessageBox.h"
#include "LogSettingsDlg.h"
#include "LogViewer.h"
#include "MainWindowFixture.h"

#include <QBackingStore>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOption>
#include <private/qhighdpiscaling_p.h>

#include <cmath>

/// Whether every control has all its edges, whatever the scale: where one is no whole number, a
/// control's pixels begin and end within the screen's.
class Outlines : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup() { QHighDpiScaling::setGlobalFactor(1); }
    void areClosedInEveryWindow_data();
    void areClosedInEveryWindow();
    void areClosedWhereverTheControlLies_data();
    void areClosedWhereverTheControlLies();
};

namespace {

const double scales[] = {1, 1.0417, 1.0427, 1.0595, 1.1, 1.25, 1.3333, 1.33, 1.5, 1.75, 2, 2.25, 3};
constexpr double visible = 0.4; // of the contrast that an outline has at a scale of 1
constexpr int corner = 5;       // pixels that its curve takes, at most
constexpr int deepest = 3;      // pixels from the edge of the control, outline included

enum Side { Top, Bottom, Left, Right };

int distance(QRgb a, QRgb b)
{
    return std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) +
           std::abs(qBlue(a) - qBlue(b));
}

/// The window as it is on the screen, in the screen's pixels.
QImage shown(const QWidget &window)
{
    return static_cast<const QImage *>(window.backingStore()->paintDevice())->copy();
}

/// The window's part that the control's outline surrounds.
QRect outlined(const QWidget &control)
{
    QRect area = control.rect();
    QStyleOptionButton option;
    option.initFrom(&control);
    if (control.inherits("QCheckBox"))
        area = control.style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, &control);
    else if (control.inherits("QRadioButton"))
        area = control.style()->subElementRect(QStyle::SE_RadioButtonIndicator, &option, &control);
    return area.translated(control.mapTo(control.window(), QPoint(0, 0)));
}

/// The colour that the sheet gives to the outline.
QRgb colour(const QWidget &control)
{
    const bool faint = control.inherits("QTableWidget") || !control.isEnabled();
    return faint ? 0xffd0d7de : 0xff848d97;
}

/// How much of its contrast the faintest place of that side has.
double faintest(const QImage &picture, const QRectF &area, Side side, QRgb ink)
{
    const double scale = picture.devicePixelRatio();
    const bool lies = side == Top || side == Bottom;
    const double from = (lies ? area.left() : area.top()) + corner;
    const double to = (lies ? area.right() : area.bottom()) - corner;
    const double edges[] = {area.top(), area.bottom(), area.left(), area.right()};
    const int inwards = side == Top || side == Left ? 1 : -1;
    const int first = int(std::floor(edges[side] * scale));
    const auto pixel = [&](int along, int steps) {
        const int across = first + inwards * steps;
        const QPoint at = lies ? QPoint(along, across) : QPoint(across, along);
        return picture.valid(at) ? picture.pixel(at) : 0;
    };
    double least = 1;
    for (int along = int(std::ceil(from * scale)); along <= int(to * scale); ++along) {
        const QRgb outside = pixel(along, -int(2 * scale) - 1);
        int most = 0;
        for (int steps = -2; steps <= int(deepest * scale); ++steps)
            most = qMax(most, distance(pixel(along, steps), outside));
        least = qMin(least, double(most) / distance(ink, outside));
    }
    return least;
}

/// Which sides of the control are not there.
QStringList missingSides(const QWidget &control, const QImage &picture)
{
    const char *const names[] = {"top", "bottom", "left", "right"};
    QStringList missing;
    for (const Side side : {Top, Bottom, Left, Right}) {
        const double found = faintest(picture, outlined(control), side, colour(control));
        if (found < visible)
            missing +=
                QStringLiteral("%1 of %2 %3 at %4,%5: %6")
                    .arg(QLatin1String(names[side]),
                         QLatin1String(control.metaObject()->className()), control.objectName())
                    .arg(outlined(control).x())
                    .arg(outlined(control).y())
                    .arg(found);
    }
    return missing;
}

bool hasOutline(const QWidget &control)
{
    // The pictures of these two have none.
    if (control.objectName() == QLatin1String("btnSettings") ||
        control.objectName() == QLatin1String("btnSearch"))
        return false;
    for (const char *kind :
         {"QPushButton", "QLineEdit", "QComboBox", "QCheckBox", "QRadioButton", "QTableWidget"}) {
        if (control.inherits(kind))
            return true;
    }
    return false;
}

/// What is wrong with the window's controls; none of them is an answer, too.
QStringList faults(QWidget &window)
{
    window.show();
    if (!QTest::qWaitForWindowExposed(&window))
        return {QStringLiteral("not shown")};
    QCoreApplication::processEvents();
    const QImage picture = shown(window);
    QStringList wrong;
    int seen = 0;
    for (const QWidget *control : window.findChildren<QWidget *>()) {
        if (control->window() != &window || !hasOutline(*control) ||
            control->visibleRegion().boundingRect() != control->rect())
            continue;
        ++seen;
        wrong += missingSides(*control, picture);
    }
    window.hide();
    return seen > 0 ? wrong : QStringList{QStringLiteral("no control")};
}

/// Controls of a kind side by side, at places whose pixels begin anywhere within the screen's.
QStringList faultsOfMany(const std::function<QWidget *(QWidget *)> &make, const QSize &size,
                         double scale)
{
    CommonDialog window(nullptr, false, false);
    const int length = int(790 / scale);
    window.resize(length, length);
    for (int y = 5; y + size.height() < length - 5; y += size.height() + 7) {
        for (int x = 7; x + size.width() < length - 5; x += size.width() + 11) {
            QWidget *control = make(&window);
            control->setGeometry(QRect(QPoint(x, y), size));
        }
    }
    return faults(window);
}

void addScales(const char *name)
{
    for (const double scale : scales)
        QTest::addRow("%s at %.4f", name, scale) << scale;
}

} // namespace

void Outlines::initTestCase()
{
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QHighDpiScaling::setGlobalFactor(3);
    // Qt asks once, and then knows whether there are pictures of double size to look for.
    QCOMPARE(qApp->devicePixelRatio(), 3.0);
}

void Outlines::areClosedInEveryWindow_data()
{
    QTest::addColumn<double>("scale");
    addScales("all");
}

void Outlines::areClosedInEveryWindow()
{
    QFETCH(double, scale);
    QHighDpiScaling::setGlobalFactor(scale);
    MainWindowFixture f;
    f.log(QStringLiteral("QZviewer/a.log"));
    f.open();
    CommonMessageBox question(QStringLiteral("Really?"), QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(faults(*f.window), QStringList());
    QCOMPARE(faults(*f.find<LogViewer>("LogViewer")), QStringList());
    QCOMPARE(faults(*f.find<LogSettingsDlg>("LogSettingsDlg")), QStringList());
    QCOMPARE(faults(question), QStringList());
}

using Maker = std::function<QWidget *(QWidget *)>;
Q_DECLARE_METATYPE(Maker)

void Outlines::areClosedWhereverTheControlLies_data()
{
    QTest::addColumn<Maker>("make");
    QTest::addColumn<QSize>("size");
    const auto row = [](const char *name, const QSize &size, const Maker &make) {
        QTest::newRow(name) << make << size;
    };
    row("push button", {80, 32}, [](QWidget *parent) { return new QPushButton(parent); });
    row("folder button", {26, 26}, [](QWidget *parent) {
        auto *button = new QPushButton(parent);
        button->setObjectName(QStringLiteral("btnSetLogCfgPath"));
        return button;
    });
    row("line edit", {100, 24}, [](QWidget *parent) { return new QLineEdit(parent); });
    row("combo box", {100, 26}, [](QWidget *parent) { return new QComboBox(parent); });
    row("check box", {50, 16},
        [](QWidget *parent) { return new QCheckBox(QStringLiteral("a"), parent); });
    row("radio button", {50, 16},
        [](QWidget *parent) { return new QRadioButton(QStringLiteral("a"), parent); });
    row("table", {100, 60}, [](QWidget *parent) { return new QTableWidget(parent); });
}

void Outlines::areClosedWhereverTheControlLies()
{
    QFETCH(Maker, make);
    QFETCH(QSize, size);
    for (const double scale : scales) {
        QHighDpiScaling::setGlobalFactor(scale);
        const QStringList found = faultsOfMany(make, size, scale);
        QVERIFY2(found.isEmpty(),
                 qPrintable(QStringLiteral("%1, %2 in all: ").arg(scale).arg(found.size()) +
                            found.value(0)));
    }
}

QTEST_MAIN(Outlines)
#include "tst_outlines.moc"
