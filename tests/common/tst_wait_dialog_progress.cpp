#include "CWaitDialog.h"

#include "MouseEvents.h"
#include "Part.h"

#include <QAccessible>
#include <QElapsedTimer>
#include <QLabel>
#include <QLayout>
#include <QProgressBar>
#include <QTest>
#include <QTimer>

#include <functional>

/// The progress bar that appears when an export takes longer than a second.
class WaitDialogProgress : public QObject
{
    Q_OBJECT

private slots:
    void appearsAfterASecond();
    void staysHiddenWhenNothingIsKnown_data();
    void staysHiddenWhenNothingIsKnown();
    void growsAndNeverShrinks();
    void isFullOnlyAtTheEnd();
    void reportsThePercentageToAssistiveTools();
    void leavesTheFormAsItIs();
    void startsFromZeroInTheNextShow();
    void letsTheDialogBeMovedByIt();
};

namespace {

constexpr int patience = 20'000; // milliseconds; only exceeded on failure

QProgressBar &barOf(const CWaitDialog &dialog)
{
    auto *bar = dialog.findChild<QProgressBar *>();
    if (bar == nullptr)
        qFatal("there is no bar");
    return *bar;
}

/// Shows @p dialog and calls @p look repeatedly until it returns true. Returns false on timeout.
bool showUntil(CWaitDialog &dialog, const std::function<bool()> &look)
{
    bool seen = false;
    QTimer::singleShot(0, &dialog, [&] {
        seen = QTest::qWaitFor(look, patience);
        dialog.close();
    });
    dialog.showAndWait("Exporting information...");
    return seen;
}

bool showUntilThereIsABar(CWaitDialog &dialog)
{
    return showUntil(dialog, [&] { return barOf(dialog).isVisible(); });
}

} // namespace

void WaitDialogProgress::appearsAfterASecond()
{
    CWaitDialog dialog(nullptr);
    dialog.setProgressSource([] { return 0.25; });
    QElapsedTimer time;
    time.start();
    QVERIFY(showUntilThereIsABar(dialog));
    QVERIFY(time.elapsed() >= 1000);
    QCOMPARE(barOf(dialog).value() * 4, barOf(dialog).maximum());
    QCOMPARE(barOf(dialog).minimum(), 0);
}

void WaitDialogProgress::staysHiddenWhenNothingIsKnown_data()
{
    QTest::addColumn<bool>("hasSource");
    QTest::newRow("no source") << false;
    QTest::newRow("progress unknown") << true;
}

void WaitDialogProgress::staysHiddenWhenNothingIsKnown()
{
    QFETCH(bool, hasSource);
    CWaitDialog dialog(nullptr);
    int asked = 0;
    if (hasSource)
        dialog.setProgressSource([&] { return ++asked, -1.0; });
    QElapsedTimer time;
    time.start();
    QVERIFY(showUntil(dialog, [&] { return hasSource ? asked >= 3 : time.hasExpired(1300); }));
    QVERIFY(barOf(dialog).isHidden());
    QCOMPARE(dialog.accessibleDescription(), QString());
}

void WaitDialogProgress::growsAndNeverShrinks()
{
    CWaitDialog dialog(nullptr);
    const QVector<double> figures{0.1, 0.5, 0.3, -1, 0.6};
    int asked = 0;
    dialog.setProgressSource([&] { return figures.value(asked++, 0.6); });
    QVector<int> values;
    QVERIFY(showUntil(dialog, [&] {
        const int value = barOf(dialog).value();
        if (barOf(dialog).isVisible() && (values.isEmpty() || values.constLast() != value))
            values.append(value);
        return asked > figures.size();
    }));
    const int whole = barOf(dialog).maximum();
    QCOMPARE(values, QVector<int>({whole / 10, whole / 2, whole * 6 / 10}));
}

void WaitDialogProgress::isFullOnlyAtTheEnd()
{
    CWaitDialog dialog(nullptr);
    dialog.setProgressSource([] { return 0.9999; });
    QVERIFY(showUntilThereIsABar(dialog));
    QVERIFY(barOf(dialog).value() < barOf(dialog).maximum());
    QCOMPARE(dialog.accessibleDescription(), "99%");
}

void WaitDialogProgress::reportsThePercentageToAssistiveTools()
{
    CWaitDialog dialog(nullptr);
    dialog.setProgressSource([] { return 0.42; });
    QVERIFY(showUntilThereIsABar(dialog));
    QCOMPARE(dialog.accessibleDescription(), "42%");
    QAccessibleInterface *bar = QAccessible::queryAccessibleInterface(&barOf(dialog));
    QVERIFY(bar != nullptr);
    QCOMPARE(bar->role(), QAccessible::ProgressBar);
    QCOMPARE(bar->text(QAccessible::Name), "Exporting information...");
    QCOMPARE(bar->text(QAccessible::Description), "42%");
}

void WaitDialogProgress::leavesTheFormAsItIs()
{
    CWaitDialog dialog(nullptr);
    dialog.setProgressSource([] { return 0.5; });
    QVERIFY(showUntilThereIsABar(dialog));
    auto &label = part<QLabel>(dialog, "textLabel");
    QCOMPARE(label.text(), "Exporting information...");
    QVERIFY(dialog.layout()->indexOf(&barOf(dialog)) < 0);
    const QRect place = barOf(dialog).geometry();
    QVERIFY(dialog.rect().contains(place));
    QCOMPARE(place.center().x(), dialog.rect().center().x());
    // Below the line of text, whatever the label's size.
    const QRect line(label.x(), label.geometry().center().y() - label.fontMetrics().height() / 2,
                     label.width(), label.fontMetrics().height());
    QVERIFY(place.top() > line.bottom());
}

void WaitDialogProgress::startsFromZeroInTheNextShow()
{
    CWaitDialog dialog(nullptr);
    dialog.setProgressSource([] { return 0.9; });
    QVERIFY(showUntilThereIsABar(dialog));
    dialog.setProgressSource([] { return 0.1; });
    bool wasThere = true;
    QVERIFY(showUntil(dialog, [&] {
        wasThere = barOf(dialog).isVisible();
        return true;
    }));
    QVERIFY(!wasThere);
    QCOMPARE(dialog.accessibleDescription(), QString());
    QVERIFY(showUntilThereIsABar(dialog));
    QCOMPARE(barOf(dialog).value() * 10, barOf(dialog).maximum());
}

void WaitDialogProgress::letsTheDialogBeMovedByIt()
{
    CWaitDialog dialog(nullptr);
    dialog.move(100, 120);
    dialog.show();
    QProgressBar &bar = barOf(dialog);
    bar.show();
    const QPoint start = bar.mapToGlobal(QPoint(5, 2));
    Mouse::press(bar, start);
    Mouse::move(bar, start + QPoint(10, 10), Qt::LeftButton);
    QCOMPARE(dialog.pos(), QPoint(110, 130));
}

QTEST_MAIN(WaitDialogProgress)
#include "tst_wait_dialog_progress.moc"
