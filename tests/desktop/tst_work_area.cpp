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
    QRect left; ///< for other windows
};

namespace {

/// The space that the panel reserves at each edge, in pixels.
const QMargins kept(70, 30, 80, 60);

/// Reserves the margins of @p screen for @p panel by the window managers' protocol. Returns false
/// on failure.
bool keepFree(const QWidget &panel, const QRect &screen)
{
    const QList<int> strut{kept.left(), kept.right(),    kept.top(), kept.bottom(),
                           0,           screen.bottom(), 0,          screen.bottom(),
                           0,           screen.right(),  0,          screen.right()};
    QStringList numbers;
    for (const int number : strut)
        numbers.append(QString::number(number));
    const QString property = "_NET_WM_STRUT_PARTIAL";
    return QProcess::execute("xprop", {"-id", QString::number(panel.winId()), "-f", property, "32c",
                                       "-set", property, numbers.join(", ")}) == 0;
}

/// The window's geometry on the display server. Qt would return the requested one.
QRect standing(const QWidget &window)
{
    QProcess asked;
    asked.start("xwininfo", {"-id", QString::number(window.winId())});
    if (!asked.waitForFinished())
        return {};
    static const QRegularExpression said(
        "Absolute upper-left X:\\s*(-?\\d+)\\s*Absolute upper-left Y:\\s*(-?\\d+)"
        ".*Width:\\s*(\\d+)\\s*Height:\\s*(\\d+)",
        QRegularExpression::DotMatchesEverythingOption);
    const auto number = [match = said.match(QString::fromUtf8(asked.readAll()))](int i) {
        return match.captured(i).toInt();
    };
    return {number(1), number(2), number(3), number(4)};
}

} // namespace

void WorkArea::initTestCase()
{
    screen = QGuiApplication::primaryScreen()->geometry();
    left = screen.marginsRemoved(kept);
    panel.setAttribute(Qt::WA_X11NetWmWindowTypeDock);
    panel.setGeometry(0, screen.bottom() - kept.bottom() + 1, screen.width(), kept.bottom());
    QVERIFY(keepFree(panel, screen));
    panel.show();
    QTRY_COMPARE(QGuiApplication::primaryScreen()->availableGeometry(), left);
}

void WorkArea::isWhatAMaximisedWindowFills()
{
    KitWindow window(true);
    window.bar->setMaxMinEnabled(true);
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTRY_COMPARE(standing(window), KitWindow::place());
    Mouse::doubleClick(*window.bar, window.at(QPoint(150, 18)));
    QTRY_COMPARE(standing(window), left);
}

void WorkArea::holdsTheWaitDialog()
{
    QWidget around;
    around.setGeometry(screen.translated(screen.width() / 2, screen.height() / 2));
    CWaitDialog dialog(&around);
    const QPoint wanted(left.right() - dialog.width(), left.bottom() - dialog.height());
    QRect shown;
    QTimer::singleShot(0, &dialog, [&] {
        // The dialog must close in any case.
        (void)QTest::qWaitFor([&] {
            shown = standing(dialog);
            return shown.topLeft() == wanted;
        });
        dialog.close();
    });
    dialog.showAndWait(QString());
    QCOMPARE(shown, QRect(wanted, dialog.size()));
}

QTEST_MAIN(WorkArea)
#include "tst_work_area.moc"
