#include "Copy.h"
#include "DeniedGuard.h"
#include "GuardTraces.h"
#include "Machine.h"
#include "OwnMethods.h"
#include "ScratchFolder.h"
#include "SingleApplication.h"

#include <QElapsedTimer>
#include <QLocalSocket>
#include <QLockFile>
#include <QTest>
#include <QUuid>

#include <memory>
#include <vector>

/// Runs real processes with their own key and their own folder for temporary files.
class SingleInstance : public QObject
{
    Q_OBJECT

private slots:
    void isAnApplicationWithOneSignalAndOneSlot();
    void secondCopyEndsAtOnceAndLeavesTheFirst();
    void firstCopyGetsTheMessage_data();
    void firstCopyGetsTheMessage();
    void firstCopyGetsEveryMessage();
    void sendsNothingWhenItIsTheFirst();
    void differentKeysAreIndependent();
    void startsAgainAfterTheFirstHasEnded();
    void startsAgainAfterTheFirstWasKilled();
    void startsAgainAfterTheTracesOfAKilledOneWereHalfCleared();
    void findsTheFirstAfterAnotherWasKilled();
    void oneIsTheFirstOfManyThatStartAtOnce_data();
    void oneIsTheFirstOfManyThatStartAtOnce();
    void startsWithoutTheLockAfterTenSeconds();
    void closesItsServerBeforeItReleasesTheSegment();
    void printsWhyTheFirstCannotBeReached();
    void continuesWithoutAGuard();
    void survivesACallWithoutAConnection();
    void survivesAConnectionWithoutAMessage();
};

namespace {

const QString program = VANTREL_GUARD_COPY;

/// Copies that find one another, but no other copies on this machine.
struct CopyGroup
{
    [[nodiscard]] QMap<QString, QString> environment() const { return {{"TMPDIR", folder.path()}}; }

    /// The key followed by the program's name.
    [[nodiscard]] QString completeKey() const { return key + "guard_copy"; }

    /// The server name of the first copy: a temporary file, except on Windows.
    [[nodiscard]] QString serverName() const
    {
        return onWindows() ? completeKey() : folder.path() + '/' + completeKey();
    }

    /// Locked by a copy while it starts.
    [[nodiscard]] QString lockFile() const
    {
        return (onWindows() ? QDir::tempPath() : folder.path()) + '/' + completeKey() + ".lock";
    }

    ScratchFolder folder;
    QString key = "Test " + QUuid::createUuid().toString(QUuid::Id128).left(8);
    GuardTraces traces{folder.path(), completeKey()};
};

struct GroupCopy : Copy
{
    explicit GroupCopy(const CopyGroup &group, const QStringList &command = {})
        : Copy(program, QStringList{group.key} + command, group.environment())
    {
    }
};

QStringList sending(const QByteArray &utf8)
{
    return {"send", QString::fromLatin1(utf8.toHex())};
}

} // namespace

void SingleInstance::isAnApplicationWithOneSignalAndOneSlot()
{
    QCOMPARE(SingleApplication::staticMetaObject.superClass(), &QApplication::staticMetaObject);
    const OwnMethods own = ownMethods(SingleApplication::staticMetaObject);
    QCOMPARE(own.signalsOf, QStringList{"messageAvailable(QString)"});
    QCOMPARE(own.slotsOf, QStringList{"receiveMessage()"});
}

void SingleInstance::secondCopyEndsAtOnceAndLeavesTheFirst()
{
    const CopyGroup group;
    GroupCopy first(group);
    QVERIFY(first.waitForOutput("first"));
    GroupCopy second(group);
    QCOMPARE(second.exitCode(), 0);
    QCOMPARE(second.output(), QByteArrayList{"second"});
    GroupCopy third(group);
    QVERIFY(third.waitForOutput("second"));
    QVERIFY(first.isRunning());
    QCOMPARE(first.output(), QByteArrayList{"first"});
    QCOMPARE(first.errors(), QByteArrayList());
}

void SingleInstance::firstCopyGetsTheMessage_data()
{
    QTest::addColumn<QByteArray>("sent");
    QTest::addColumn<QByteArray>("received");

    const QByteArray plain("message from other instance.");
    const QByteArray beyondAscii("来自另一个实例 – ü");
    QTest::newRow("the program's own") << plain << plain;
    QTest::newRow("beyond ASCII") << beyondAscii << beyondAscii;
    QTest::newRow("ends at a zero byte") << QByteArray("before\0after", 12) << QByteArray("before");
    QTest::newRow("begins with one") << QByteArray("\0after", 6) << QByteArray();
    QTest::newRow("several lines") << QByteArray("one\ntwo\r\n") << QByteArray("one\ntwo\r\n");
    QTest::newRow("a long one") << QByteArray(2000, 'x') << QByteArray(2000, 'x');
}

void SingleInstance::firstCopyGetsTheMessage()
{
    QFETCH(QByteArray, sent);
    QFETCH(QByteArray, received);
    const CopyGroup group;
    GroupCopy first(group);
    QVERIFY(first.waitForOutput("first"));
    GroupCopy second(group, sending(sent));
    QCOMPARE(second.exitCode(), 0);
    QCOMPARE(second.output(), (QByteArrayList{"second", "sent"}));
    QVERIFY(first.waitForOutput(QByteArray("message " + received.toHex()).trimmed()));
    QCOMPARE(first.errors(), QByteArrayList());
}

void SingleInstance::firstCopyGetsEveryMessage()
{
    const CopyGroup group;
    GroupCopy first(group);
    QVERIFY(first.waitForOutput("first"));
    for (const char *text : {"one", "two", "three"}) {
        GroupCopy second(group, sending(text));
        QVERIFY(second.waitForOutput("sent"));
        QVERIFY(first.waitForOutput("message " + QByteArray(text).toHex()));
    }
    QCOMPARE(first.output().size(), 4);
}

void SingleInstance::sendsNothingWhenItIsTheFirst()
{
    const CopyGroup group;
    GroupCopy only(group, sending("hello"));
    QCOMPARE(only.exitCode(), 0);
    QCOMPARE(only.output(), (QByteArrayList{"first", "not sent"}));
    QCOMPARE(only.errors(), QByteArrayList());
}

void SingleInstance::differentKeysAreIndependent()
{
    const CopyGroup one;
    const CopyGroup other;
    GroupCopy first(one);
    QVERIFY(first.waitForOutput("first"));
    GroupCopy alsoFirst(other);
    QVERIFY(alsoFirst.waitForOutput("first"));
}

void SingleInstance::startsAgainAfterTheFirstHasEnded()
{
    const CopyGroup group;
    for (int i = 0; i < 2; ++i) {
        GroupCopy only(group, sending("ends by itself"));
        QCOMPARE(only.exitCode(), 0);
        QVERIFY(only.waitForOutput("first"));
    }
}

void SingleInstance::startsAgainAfterTheFirstWasKilled()
{
    const CopyGroup group;
    GroupCopy killed(group);
    QVERIFY(killed.waitForOutput("first"));
    killed.kill();
    GroupCopy next(group);
    QVERIFY(next.waitForOutput("first"));
    GroupCopy second(group, sending("reached"));
    QVERIFY(second.waitForOutput("sent"));
    QVERIFY(next.waitForOutput("message " + QByteArray("reached").toHex()));
}

void SingleInstance::startsAgainAfterTheTracesOfAKilledOneWereHalfCleared()
{
    // The killed copy's files are gone, but its segment still exists.
    const CopyGroup group;
    constexpr int rounds = 5;
    for (int i = 0; i < rounds; ++i) {
        const QDir folder(group.folder.path());
        for (const QString &file : folder.entryList(QDir::Files | QDir::System))
            QVERIFY(QFile::remove(folder.filePath(file)));
        GroupCopy killed(group);
        QVERIFY(killed.waitForOutput("first"));
        GroupCopy second(group);
        QVERIFY(second.waitForOutput("second"));
        QCOMPARE(killed.errors(), QByteArrayList());
        if (i + 1 < rounds)
            killed.kill();
    }
}

void SingleInstance::findsTheFirstAfterAnotherWasKilled()
{
    const CopyGroup group;
    GroupCopy first(group);
    QVERIFY(first.waitForOutput("first"));
    GroupCopy killed(group, {"stay"});
    QVERIFY(killed.waitForOutput("second"));
    killed.kill();
    GroupCopy next(group, sending("still there"));
    QVERIFY(next.waitForOutput("sent"));
    QVERIFY(first.waitForOutput("message " + QByteArray("still there").toHex()));
}

void SingleInstance::oneIsTheFirstOfManyThatStartAtOnce_data()
{
    QTest::addColumn<bool>("killed");
    QTest::newRow("after one was killed") << true;
    QTest::newRow("after none") << false;
}

void SingleInstance::oneIsTheFirstOfManyThatStartAtOnce()
{
    QFETCH(bool, killed);
    const int rounds = underWine() ? 2 : 12; // processes start slowly under Wine
    const int copies = underWine() ? 4 : 8;
    for (int round = 0; round < rounds; ++round) {
        CopyGroup group;
        if (killed) {
            GroupCopy before(group);
            QVERIFY(before.waitForOutput("first"));
            before.kill();
        }
        const QString startSignal = group.folder.path("begin");
        auto environment = group.environment();
        environment.insert("GUARD_COPY_WAITS_FOR", startSignal);
        std::vector<std::unique_ptr<Copy>> started;
        for (int i = 0; i < copies; ++i) {
            started.push_back(std::make_unique<Copy>(program, QStringList(group.key), environment));
            QVERIFY(started.back()->waitForOutput("ready"));
        }
        group.folder.file("begin");
        int firsts = 0;
        for (const auto &copy : started) {
            QVERIFY(QTest::qWaitFor([&] { return copy->output().size() > 1; }, 20000));
            QVERIFY(copy->output().size() == 2);
            firsts += copy->output().last() == "first" ? 1 : 0;
            QVERIFY2(copy->errors().isEmpty(), copy->errors().join("; "));
        }
        QVERIFY2(firsts == 1, qPrintable(QString("%1 in round %2").arg(firsts).arg(round)));
        GroupCopy late(group, sending("reached"));
        QVERIFY(late.waitForOutput("sent"));
    }
}

void SingleInstance::startsWithoutTheLockAfterTenSeconds()
{
    const CopyGroup group;
    QLockFile turn(group.lockFile());
    QVERIFY(turn.tryLock());
    GroupCopy first(group);
    QVERIFY(first.waitForOutput("first"));
    QVERIFY(turn.isLocked());
}

void SingleInstance::closesItsServerBeforeItReleasesTheSegment()
{
    const CopyGroup group;
    GroupCopy only(group, {"end"});
    QCOMPARE(only.exitCode(), 0);
    QCOMPARE(only.output(), (QByteArrayList{"first", "server closed, segment held"}));
}

void SingleInstance::printsWhyTheFirstCannotBeReached()
{
    // The first copy has ended, but a second one still holds the segment: nobody listens.
    const CopyGroup group;
    GroupCopy killed(group);
    QVERIFY(killed.waitForOutput("first"));
    GroupCopy lingering(group, {"stay"});
    QVERIFY(lingering.waitForOutput("second"));
    killed.kill();

    QElapsedTimer time;
    time.start();
    GroupCopy next(group, sending("hello"));
    QCOMPARE(next.exitCode(), 0);
    QCOMPARE(next.output(), (QByteArrayList{"second", "not sent"}));
    QCOMPARE(next.errors().size(), 1);
    QVERIFY2(next.errors().first().contains("QLocalSocket"), next.errors().first().constData());
    QVERIFY(time.elapsed() < 10000);
}

void SingleInstance::continuesWithoutAGuard()
{
    const CopyGroup group;
    const DeniedGuard denied(group.completeKey());
    Copy first(program, {group.key}, DeniedGuard::variables());
    QVERIFY(first.waitForOutput("first"));
    QVERIFY(first.waitForError("Unable to create single instance."));
    QCOMPARE(first.errors().size(), 1);
    QVERIFY(first.isRunning());
}

void SingleInstance::survivesACallWithoutAConnection()
{
    const CopyGroup group;
    GroupCopy first(group, {"receive"});
    QCOMPARE(first.exitCode(), 0);
    QCOMPARE(first.output(), (QByteArrayList{"first", "alive"}));

    GroupCopy real(group);
    QVERIFY(real.waitForOutput("first"));
    GroupCopy second(group, {"receive"}); // has no server
    QCOMPARE(second.exitCode(), 0);
    QCOMPARE(second.output(), (QByteArrayList{"second", "alive"}));
}

void SingleInstance::survivesAConnectionWithoutAMessage()
{
    const CopyGroup group;
    GroupCopy first(group);
    QVERIFY(first.waitForOutput("first"));
    QLocalSocket visitor;
    visitor.connectToServer(group.serverName());
    QVERIFY2(visitor.waitForConnected(5000), qPrintable(visitor.errorString()));
    // After a second. Windows pipes have no specific message for a timeout.
    QVERIFY(first.waitForError(onWindows() ? "Unknown error" : "QLocalSocket"));
    GroupCopy second(group, sending("hello"));
    QVERIFY(second.waitForOutput("sent"));
    QVERIFY(first.waitForOutput("message " + QByteArray("hello").toHex()));
    QCOMPARE(first.output().size(), 2);
}

QTEST_GUILESS_MAIN(SingleInstance)
#include "tst_single_instance.moc"
