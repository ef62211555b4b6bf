#include "ClientRegistration.h"
#include "Copy.h"
#include "GuardTraces.h"
#include "LogConfig.h"
#include "ScratchFolder.h"

#include <QFileInfo>
#include <QTest>

/// The real program as a process, with its own home folder and folder for temporary files.
class StartUp : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void printsOnlyThatASecondStartHasNoEffect();
    void worksWithoutASkin();
    void secondStartEndsAtOnceAndLeavesTheFirst();
    void ignoresItsArguments();
};

namespace {

const QString program = VANTREL_PROGRAM;
// Qt's warning about the missing slot has two lines.
const QByteArray missingSlot("QObject::connect: No such slot Vantrel::receiveMessage(QString)");
const QByteArray itsWindow("QObject::connect:  (receiver name: 'Vantrel')");

/// A user with the camera client installed, so that the program does not ask for a properties file.
struct User
{
    User() { folder.file("Client/SDKLOG_default.properties", infoFile); }

    [[nodiscard]] QMap<QString, QString> surroundings() const
    {
        return {{"HOME", folder.path()},
                {"XDG_CONFIG_HOME", folder.path()},
                {"TMPDIR", folder.path()},
                // The offscreen platform leaks its screen.
                {"ASAN_OPTIONS", "detect_leaks=0"}};
    }

    ScratchFolder folder;
    ClientRegistration client{folder.path(), folder.path("Client/QZviewer.exe") + ",0"};
    GuardTraces traces{folder.path(), "Pemberk VantrelVantrel"};
};

struct Start : Copy
{
    explicit Start(const User &user, const QStringList &arguments = {},
                   const QString &executable = program)
        : Copy(executable, arguments, user.surroundings(), user.folder.path())
    {
    }
};

bool saidOnlyWhatItMust(Start &copy)
{
    const QByteArrayList said = copy.errors();
    return said.size() == 2 && said.first().startsWith(missingSlot) && said.last() == itsWindow;
}

} // namespace

void StartUp::initTestCase()
{
    if (!ClientRegistration::available())
        QSKIP("not a test machine");
}

void StartUp::printsOnlyThatASecondStartHasNoEffect()
{
    const User user;
    Start first(user);
    QVERIFY(first.complains(itsWindow));
    Start second(user); // ends long after the first has started
    QCOMPARE(second.exitCode(), 0);
    QVERIFY(saidOnlyWhatItMust(first));
    QVERIFY(first.isRunning());
    QCOMPARE(first.output(), QByteArrayList());
}

void StartUp::worksWithoutASkin()
{
    const User user;
    const QString alone = user.folder.path(QFileInfo(program).fileName());
    QVERIFY(QFile::copy(program, alone));
    Start first(user, {}, alone);
    QVERIFY(first.complains(itsWindow));
    Start second(user);
    QCOMPARE(second.exitCode(), 0);
    QVERIFY(saidOnlyWhatItMust(first));
    QVERIFY(first.isRunning());
}

void StartUp::secondStartEndsAtOnceAndLeavesTheFirst()
{
    const User user;
    Start first(user);
    QVERIFY(first.complains(itsWindow));
    for (int i = 0; i < 2; ++i) {
        Start second(user);
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(second.output(), QByteArrayList());
        QCOMPARE(second.errors(), QByteArrayList());
    }
    QVERIFY(first.isRunning());
    QVERIFY(saidOnlyWhatItMust(first));
}

void StartUp::ignoresItsArguments()
{
    const User user;
    Start first(user, {"--help", "file.log"});
    QVERIFY(first.complains(itsWindow));
    QVERIFY(first.isRunning());
}

QTEST_GUILESS_MAIN(StartUp)
#include "tst_start_up.moc"
