#include "StartUp.h"

#include <QProcess>
#include <QtTest>

/// What start-up does to the environment, which every program that is started from here inherits.
class StartEnvironment : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void asksForNoOpenGlUntilTheFirstWindowIsShown();
    void leavesWhatTheUserHasChosen_data();
    void leavesWhatTheUserHasChosen();
    void takesNothingBackThatItDidNotPut();
};

namespace {

const char *const glIntegration = "QT_XCB_GL_INTEGRATION";

} // namespace

void StartEnvironment::init()
{
    qunsetenv(glIntegration);
}

void StartEnvironment::asksForNoOpenGlUntilTheFirstWindowIsShown()
{
    for (int i = 0; i < 2; ++i) {
        prepareStart();
        QCOMPARE(qgetenv(glIntegration), QByteArray("none"));
        settleStart();
        QVERIFY(!qEnvironmentVariableIsSet(glIntegration));
        QVERIFY(!QProcessEnvironment::systemEnvironment().contains(QLatin1String(glIntegration)));
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
    prepareStart();
    QCOMPARE(qgetenv(glIntegration), chosen);
    settleStart();
    QCOMPARE(qgetenv(glIntegration), chosen);
}

void StartEnvironment::takesNothingBackThatItDidNotPut()
{
    prepareStart();
    settleStart();
    qputenv(glIntegration, "xcb_glx");
    settleStart();
    QCOMPARE(qgetenv(glIntegration), QByteArray("xcb_glx"));
}

QTEST_APPLESS_MAIN(StartEnvironment)
#include "tst_start_environment.moc"
