#include "CWaitDialog.h"
#include "KitWindow.h"
#include "MouseEvents.h"

#include <QGuiApplication>
#include <QProcess>
#include <QRegularExpression>
#include <QScreen>
#include <QTest>
#include <QTimer>

/// Windows on a screen with panels at its edges. The work area comes from a real window manager.
class WorkArea : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void isWhatAMaximisedWindowFills();
    void holdsTheWaitDialog();

private:
    QWidget panel;
    QRect screen;
    QRect workArea; ///< for other windows
};

namespace {

/// The space that the panel reserves at each edge, in pixels.
const QMargins panelMargins(70, 30, 80, 60);

/// Reserves the margins of @p screen for @p panel by the window managers' protocol. Returns false
/// on failure.
bool keepFree(const QWidget &panel, const QRect &screen)
{
    QList<int> strut{panelMargins.left(), panelMargins.right(), panelMargins.top(),
                     panelMargins.bottom()};
    strut += {0, screen.bottom(), 0, screen.bottom(), 0, screen.right(), 0, screen.right()};
    QStringList numbers;
    for (const int number : strut)
        numbers.append(QString::number(number));
    const QString property = "_NET_WM_STRUT_PARTIAL";
    return QProcess::execute("xprop", {"-id", QString::number(panel.winId()), "-f", property, "32c",
                                       "-set", property, numbers.join(", ")}) == 0;
}

/// The window's geometry on the display server. Qt would return the requested one.
QRect shownGeometry(const QWidget &window)
{
    QProcess xwininfo;
    xwininfo.start("xwininfo", {"-id", QString::number(window.winId())});
    if (!xwininfo.waitForFinished())
        return {};
    static const QRegularExpression pattern(
        "Absolute upper-left X:\\s*(-?\\d+)\\s*Absolute upper-left Y:\\s*(-?\\d+)"
        ".*Width:\\s*(\\d+)\\s*Height:\\s*(\\d+)",
        QRegularExpression::DotMatchesEverythingOption);
    const auto number = [match = pattern.match(QString::fromUtf8(xwininfo.readAll()))](int i) {
        return match.captured(i).toInt();
    };
    return {number(1), number(2), number(3), number(4)};
}

} // namespace

void WorkArea::initTestCase()
{
    screen = QGuiApplication::primaryScreen()->geometry();
    workArea = screen.marginsRemoved(panelMargins);
    panel.setAttribute(Qt::WA_X11NetWmWindowTypeDock);
    panel.setGeometry(0, screen.bottom() - panelMargins.bottom() + 1, screen.width(),
                      panelMargins.bottom());
    QVERIFY(keepFree(panel, screen));
    panel.show();
    QTRY_COMPARE(QGuiApplication::primaryScreen()->availableGeometry(), workArea);
}

void WorkArea::isWhatAMaximisedWindowFills()
{
    KitWindow window(true);
    window.bar->setMaxMinEnabled(true);
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTRY_COMPARE(shownGeometry(window), KitWindow::place());
    Mouse::doubleClick(*window.bar, window.at(QPoint(150, 18)));
    QTRY_COMPARE(shownGeometry(window), workArea);
}

void WorkArea::holdsTheWaitDialog()
{
    QWidget around;
    around.setGeometry(screen.translated(screen.width() / 2, screen.height() / 2));
    CWaitDialog dialog(&around);
    const QPoint wanted(workArea.right() - dialog.width(), workArea.bottom() - dialog.height());
    QRect shown;
    QTimer::singleShot(0, &dialog, [&] {
        // The dialog must close in any case.
        (void)QTest::qWaitFor([&] {
            shown = shownGeometry(dialog);
            return shown.topLeft() == wanted;
        });
        dialog.close();
    });
    dialog.showAndWait(QString());
    QCOMPARE(shown, QRect(wanted, dialog.size()));
}

QTEST_MAIN(WorkArea)
#include "tst_work_area.moc"
