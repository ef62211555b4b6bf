#include "StartUp.h"

#include <QProcess>
#include <QTest>

/// The effect of startup on the environment, which child processes inherit.
class StartEnvironment : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void asksForNoOpenGlUntilTheFirstWindowIsShown();
    void leavesWhatTheUserHasChosen_data();
    void leavesWhatTheUserHasChosen();
    void restoresOnlyWhatItHasSet();
    void prefersTheXServerOfAWaylandDesktop_data();
    void prefersTheXServerOfAWaylandDesktop();
};

namespace {

const char *const glIntegration = "QT_XCB_GL_INTEGRATION";
const char *const platform = "QT_QPA_PLATFORM";

} // namespace

void StartEnvironment::init()
{
    for (const char *variable : {glIntegration, platform, "DISPLAY", "WAYLAND_DISPLAY"})
        qunsetenv(variable);
}

void StartEnvironment::asksForNoOpenGlUntilTheFirstWindowIsShown()
{
    for (int i = 0; i < 2; ++i) {
        configureQtBeforeStart();
        QCOMPARE(qgetenv(glIntegration), QByteArray("none"));
        restoreEnvironment();
        QVERIFY(!qEnvironmentVariableIsSet(glIntegration));
        QVERIFY(!QProcessEnvironment::systemEnvironment().contains(glIntegration));
    }
}

void StartEnvironment::leavesWhatTheUserHasChosen_data()
{
    QTest::addColumn<QByteArray>("chosen");
    QTest::newRow("another") << QByteArray("xcb_egl");
    QTest::newRow("the same") << QByteArray("none");
}

void StartEnvironment::leavesWhatTheUserHasChosen()
{
    QFETCH(QByteArray, chosen);
    qputenv(glIntegration, chosen);
    configureQtBeforeStart();
    QCOMPARE(qgetenv(glIntegration), chosen);
    restoreEnvironment();
    QCOMPARE(qgetenv(glIntegration), chosen);
}

void StartEnvironment::restoresOnlyWhatItHasSet()
{
    configureQtBeforeStart();
    restoreEnvironment();
    qputenv(glIntegration, "xcb_glx");
    restoreEnvironment();
    QCOMPARE(qgetenv(glIntegration), QByteArray("xcb_glx"));
}

void StartEnvironment::prefersTheXServerOfAWaylandDesktop_data()
{
    QTest::addColumn<QByteArray>("display");
    QTest::addColumn<QByteArray>("waylandDisplay");
    QTest::addColumn<QByteArray>("chosen");
    QTest::addColumn<QByteArray>("platform");
    const QByteArray none;
    QTest::newRow("with an X server")
        << QByteArray(":0") << QByteArray("wayland-0") << none << QByteArray("xcb;wayland");
    QTest::newRow("without one") << none << QByteArray("wayland-0") << none << none;
    QTest::newRow("another desktop") << QByteArray(":0") << none << none << none;
    QTest::newRow("chosen otherwise") << QByteArray(":0") << QByteArray("wayland-0")
                                      << QByteArray("wayland") << QByteArray("wayland");
}

void StartEnvironment::prefersTheXServerOfAWaylandDesktop()
{
    QFETCH(QByteArray, display);
    QFETCH(QByteArray, waylandDisplay);
    QFETCH(QByteArray, chosen);
    qputenv("DISPLAY", display);
    qputenv("WAYLAND_DISPLAY", waylandDisplay);
    if (!chosen.isEmpty())
        qputenv(platform, chosen);
    configureQtBeforeStart();
    QTEST(qgetenv(platform), "platform");
    restoreEnvironment();
    QCOMPARE(qgetenv(platform), chosen);
}

QTEST_APPLESS_MAIN(StartEnvironment)
#include "tst_start_environment.moc"
