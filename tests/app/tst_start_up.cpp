#include "ClientRegistration.h"
#include "Copy.h"
#include "GuardTraces.h"
#include "LogConfig.h"
#include "ScratchFolder.h"

#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <QTest>

/// The real program as a process, with its own home folder and folder for temporary files.
class StartUp : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void worksWithoutASkin();
    void secondStartEndsAtOnceAndLeavesTheFirst();
    void secondStartSendsItsMessage();
    void ignoresItsArguments();
};

namespace {

const QString program = VANTREL_PROGRAM;
const QString completeKey = "Pemberk VantrelVantrel"; // the key followed by the program's name
// Qt's warning about the missing slot has two lines.
const QByteArray missingSlot("QObject::connect: No such slot Vantrel::receiveMessage(QString)");
const QByteArray itsWindow("QObject::connect:  (receiver name: 'Vantrel')");

/// A user with the camera client installed, so that the program does not ask for a properties file.
struct User
{
    User() { folder.file("Client/SDKLOG_default.properties", infoFile); }

    [[nodiscard]] QMap<QString, QString> environment() const
    {
        return {{"HOME", folder.path()},
                {"XDG_CONFIG_HOME", folder.path()},
                {"TMPDIR", folder.path()},
                // The offscreen platform leaks its screen.
                {"ASAN_OPTIONS", "detect_leaks=0"}};
    }

    ScratchFolder folder;
    ClientRegistration client{folder.path(), folder.path("Client/QZviewer.exe") + ",0"};
    GuardTraces traces{folder.path(), completeKey};
};

struct Start : Copy
{
    explicit Start(const User &user, const QStringList &arguments = {},
                   const QString &executable = program)
        : Copy(executable, arguments, user.environment(), user.folder.path())
    {
    }
};

bool printedOnlyTheMissingSlot(Start &copy)
{
    const QByteArrayList errors = copy.errors();
    return errors.size() == 2 && errors.first().startsWith(missingSlot) &&
           errors.last() == itsWindow;
}

} // namespace

void StartUp::initTestCase()
{
    if (!ClientRegistration::available())
        QSKIP("not a test machine");
}

void StartUp::worksWithoutASkin()
{
    const User user;
    const QString alone = user.folder.path(QFileInfo(program).fileName());
    QVERIFY(QFile::copy(program, alone));
    Start first(user, {}, alone);
    QVERIFY(first.waitForError(itsWindow));
    Start second(user);
    QCOMPARE(second.exitCode(), 0);
    QVERIFY(printedOnlyTheMissingSlot(first));
    QVERIFY(first.isRunning());
}

void StartUp::secondStartEndsAtOnceAndLeavesTheFirst()
{
    const User user;
    Start first(user);
    QVERIFY(first.waitForError(itsWindow));
    for (int i = 0; i < 2; ++i) {
        Start second(user);
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(second.output(), QByteArrayList());
        QCOMPARE(second.errors(), QByteArrayList());
    }
    QVERIFY(first.isRunning());
    QVERIFY(printedOnlyTheMissingSlot(first));
    QCOMPARE(first.output(), QByteArrayList());
}

void StartUp::secondStartSendsItsMessage()
{
    const User user;
    // This process stands in for the first copy.
    const TemporaryFiles here(user.folder.path());
    QSharedMemory segment(completeKey);
    QVERIFY2(segment.create(1), qPrintable(segment.errorString()));
    QLocalServer server;
    QVERIFY2(server.listen(completeKey), qPrintable(server.errorString()));

    Start second(user);
    QTRY_VERIFY_WITH_TIMEOUT(server.hasPendingConnections(), 20000);
    QLocalSocket &connection = *server.nextPendingConnection();
    QTRY_COMPARE(connection.state(), QLocalSocket::UnconnectedState);
    QCOMPARE(connection.readAll(), QByteArray("message from other instance."));
    QCOMPARE(second.exitCode(), 0);
    QCOMPARE(second.output(), QByteArrayList());
    QCOMPARE(second.errors(), QByteArrayList());
}

void StartUp::ignoresItsArguments()
{
    const User user;
    Start first(user, {"--help", "file.log"});
    QVERIFY(first.waitForError(itsWindow));
    QVERIFY(first.isRunning());
}

QTEST_GUILESS_MAIN(StartUp)
#include "tst_start_up.moc"
