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

/// Whether every control has all its edges at every scale: with fractional scales, a control's
/// edges fall between device pixels.
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
constexpr double visible = 0.4; // of the outline's contrast at a scale of 1
constexpr int corner = 5;       // maximum radius in pixels
constexpr int deepest = 3;      // maximum pixels from the control's edge, outline included

enum Side { Top, Bottom, Left, Right };

int distance(QRgb a, QRgb b)
{
    return std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) +
           std::abs(qBlue(a) - qBlue(b));
}

/// The window as displayed, in device pixels.
QImage shown(const QWidget &window)
{
    return static_cast<const QImage *>(window.backingStore()->paintDevice())->copy();
}

/// The part of the window that the control's outline encloses.
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

/// The outline's colour in the style sheet.
QRgb colour(const QWidget &control)
{
    const bool faint = control.inherits("QTableWidget") || !control.isEnabled();
    return faint ? 0xffd0d7de : 0xff848d97;
}

/// The contrast of the faintest point on that side, as a fraction.
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

/// The missing sides of the control.
QStringList missingSides(const QWidget &control, const QImage &picture)
{
    const char *const names[] = {"top", "bottom", "left", "right"};
    QStringList missing;
    for (const Side side : {Top, Bottom, Left, Right}) {
        const double found = faintest(picture, outlined(control), side, colour(control));
        if (found < visible)
            missing +=
                QString("%1 of %2 %3 at %4,%5: %6")
                    .arg(names[side], control.metaObject()->className(), control.objectName())
                    .arg(outlined(control).x())
                    .arg(outlined(control).y())
                    .arg(found);
    }
    return missing;
}

bool hasOutline(const QWidget &control)
{
    // These two have pictures without outlines.
    if (control.objectName() == "btnSettings" || control.objectName() == "btnSearch")
        return false;
    for (const char *kind :
         {"QPushButton", "QLineEdit", "QComboBox", "QCheckBox", "QRadioButton", "QTableWidget"}) {
        if (control.inherits(kind))
            return true;
    }
    return false;
}

/// The faults of the window's controls; a window without controls is one, too.
QStringList faults(QWidget &window)
{
    window.show();
    if (!QTest::qWaitForWindowExposed(&window))
        return {"not shown"};
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
    return seen > 0 ? wrong : QStringList{"no control"};
}

/// Controls of one kind side by side, at positions with all subpixel offsets.
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
    // Qt checks once whether it has to look for high-resolution pictures.
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
    f.log("QZviewer/a.log");
    f.open();
    CommonMessageBox question("Really?", QMessageBox::Yes | QMessageBox::No);
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
        button->setObjectName("btnSetLogCfgPath");
        return button;
    });
    row("line edit", {100, 24}, [](QWidget *parent) { return new QLineEdit(parent); });
    row("combo box", {100, 26}, [](QWidget *parent) { return new QComboBox(parent); });
    row("check box", {50, 16}, [](QWidget *parent) { return new QCheckBox("a", parent); });
    row("radio button", {50, 16}, [](QWidget *parent) { return new QRadioButton("a", parent); });
    row("table", {100, 60}, [](QWidget *parent) { return new QTableWidget(parent); });
}

void Outlines::areClosedWhereverTheControlLies()
{
    QFETCH(Maker, make);
    QFETCH(QSize, size);
    for (const double scale : scales) {
        QHighDpiScaling::setGlobalFactor(scale);
        const QStringList found = faultsOfMany(make, size, scale);
        QVERIFY2(
            found.isEmpty(),
            qPrintable(QString("%1, %2 in all: ").arg(scale).arg(found.size()) + found.value(0)));
    }
}

QTEST_MAIN(Outlines)
#include "tst_outlines.moc"
