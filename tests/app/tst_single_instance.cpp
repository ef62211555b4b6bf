#include "Copy.h"
#include "DeniedGuard.h"
#include "GuardTraces.h"
#include "Machine.h"
#include "OwnMethods.h"
#include "ScratchFolder.h"
#include "SingleApplication.h"

#include <QElapsedTimer>
#include <QLocalSocket>
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
    void printsWhyTheFirstCannotBeReached();
    void continuesWithoutAGuard();
    void survivesACallWithoutAConnection();
    void survivesAConnectionWithoutAMessage();
};

namespace {

const QString program = VANTREL_GUARD_COPY;

/// Copies that find one another, but no other copies on this machine.
struct Family
{
    [[nodiscard]] QMap<QString, QString> surroundings() const
    {
        return {{"TMPDIR", folder.path()}};
    }

    /// The key followed by the program's name.
    [[nodiscard]] QString completeKey() const { return key + "guard_copy"; }

    /// The server name of the first copy: a temporary file, except on Windows.
    [[nodiscard]] QString serverName() const
    {
        return onWindows() ? completeKey() : folder.path() + '/' + completeKey();
    }

    ScratchFolder folder;
    QString key = "Test " + QUuid::createUuid().toString(QUuid::Id128).left(8);
    GuardTraces traces{folder.path(), completeKey()};
};

struct Member : Copy
{
    explicit Member(const Family &family, const QStringList &wish = {})
        : Copy(program, QStringList{family.key} + wish, family.surroundings())
    {
    }
};

QStringList sending(const QByteArray &utf8)
{
    return {"send", QString::fromLatin1(utf8.toHex())};
}

QStringList wish(const char *word)
{
    return {QString::fromLatin1(word)};
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
    const Family family;
    Member first(family);
    QVERIFY(first.tells("first"));
    Member second(family);
    QCOMPARE(second.exitCode(), 0);
    QCOMPARE(second.output(), QByteArrayList{"second"});
    Member third(family);
    QVERIFY(third.tells("second"));
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
    const Family family;
    Member first(family);
    QVERIFY(first.tells("first"));
    Member second(family, sending(sent));
    QCOMPARE(second.exitCode(), 0);
    QCOMPARE(second.output(), (QByteArrayList{"second", "sent"}));
    QVERIFY(first.tells(QByteArray("message " + received.toHex()).trimmed()));
    QCOMPARE(first.errors(), QByteArrayList());
}

void SingleInstance::firstCopyGetsEveryMessage()
{
    const Family family;
    Member first(family);
    QVERIFY(first.tells("first"));
    for (const char *text : {"one", "two", "three"}) {
        Member second(family, sending(text));
        QVERIFY(second.tells("sent"));
        QVERIFY(first.tells("message " + QByteArray(text).toHex()));
    }
    QCOMPARE(first.output().size(), 4);
}

void SingleInstance::sendsNothingWhenItIsTheFirst()
{
    const Family family;
    Member only(family, sending("hello"));
    QCOMPARE(only.exitCode(), 0);
    QCOMPARE(only.output(), (QByteArrayList{"first", "not sent"}));
    QCOMPARE(only.errors(), QByteArrayList());
}

void SingleInstance::differentKeysAreIndependent()
{
    const Family one;
    const Family other;
    Member first(one);
    QVERIFY(first.tells("first"));
    Member alsoFirst(other);
    QVERIFY(alsoFirst.tells("first"));
}

void SingleInstance::startsAgainAfterTheFirstHasEnded()
{
    const Family family;
    for (int i = 0; i < 2; ++i) {
        Member only(family, sending("ends by itself"));
        QCOMPARE(only.exitCode(), 0);
        QVERIFY(only.tells("first"));
    }
}

void SingleInstance::startsAgainAfterTheFirstWasKilled()
{
    const Family family;
    Member killed(family);
    QVERIFY(killed.tells("first"));
    killed.kill();
    Member next(family);
    QVERIFY(next.tells("first"));
    Member second(family, sending("reached"));
    QVERIFY(second.tells("sent"));
    QVERIFY(next.tells("message " + QByteArray("reached").toHex()));
}

void SingleInstance::startsAgainAfterTheTracesOfAKilledOneWereHalfCleared()
{
    // The killed copy's files are gone, but its segment still exists.
    const Family family;
    constexpr int rounds = 5;
    for (int i = 0; i < rounds; ++i) {
        const QDir folder(family.folder.path());
        for (const QString &file : folder.entryList(QDir::Files | QDir::System))
            QVERIFY(QFile::remove(folder.filePath(file)));
        Member killed(family);
        QVERIFY(killed.tells("first"));
        Member second(family);
        QVERIFY(second.tells("second"));
        QCOMPARE(killed.errors(), QByteArrayList());
        if (i + 1 < rounds)
            killed.kill();
    }
}

void SingleInstance::findsTheFirstAfterAnotherWasKilled()
{
    const Family family;
    Member first(family);
    QVERIFY(first.tells("first"));
    Member killed(family, wish("stay"));
    QVERIFY(killed.tells("second"));
    killed.kill();
    Member next(family, sending("still there"));
    QVERIFY(next.tells("sent"));
    QVERIFY(first.tells("message " + QByteArray("still there").toHex()));
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
        Family family;
        if (killed) {
            Member before(family);
            QVERIFY(before.tells("first"));
            before.kill();
        }
        const QString sign = family.folder.path("begin");
        auto surroundings = family.surroundings();
        surroundings.insert("GUARD_COPY_WAITS_FOR", sign);
        std::vector<std::unique_ptr<Copy>> started;
        for (int i = 0; i < copies; ++i) {
            started.push_back(
                std::make_unique<Copy>(program, QStringList(family.key), surroundings));
            QVERIFY(started.back()->tells("ready"));
        }
        family.folder.file("begin");
        int firsts = 0;
        for (const auto &copy : started) {
            QVERIFY(QTest::qWaitFor([&] { return copy->output().size() > 1; }, 20000));
            QVERIFY(copy->output().size() == 2);
            firsts += copy->output().last() == "first" ? 1 : 0;
            QVERIFY2(copy->errors().isEmpty(), copy->errors().join("; "));
        }
        QVERIFY2(firsts == 1, qPrintable(QString("%1 in round %2").arg(firsts).arg(round)));
        Member late(family, sending("reached"));
        QVERIFY(late.tells("sent"));
    }
}

void SingleInstance::printsWhyTheFirstCannotBeReached()
{
    // The first copy has ended, but a second one still holds the segment: nobody listens.
    const Family family;
    Member killed(family);
    QVERIFY(killed.tells("first"));
    Member lingering(family, wish("stay"));
    QVERIFY(lingering.tells("second"));
    killed.kill();

    QElapsedTimer time;
    time.start();
    Member next(family, sending("hello"));
    QCOMPARE(next.exitCode(), 0);
    QCOMPARE(next.output(), (QByteArrayList{"second", "not sent"}));
    QCOMPARE(next.errors().size(), 1);
    QVERIFY2(next.errors().first().contains("QLocalSocket"), next.errors().first().constData());
    QVERIFY(time.elapsed() < 10000);
}

void SingleInstance::continuesWithoutAGuard()
{
    const Family family;
    const DeniedGuard denied(family.completeKey());
    Copy first(program, {family.key}, DeniedGuard::variables());
    QVERIFY(first.tells("first"));
    QVERIFY(first.complains("Unable to create single instance."));
    QCOMPARE(first.errors().size(), 1);
    QVERIFY(first.isRunning());
}

void SingleInstance::survivesACallWithoutAConnection()
{
    const Family family;
    Member first(family, wish("poke"));
    QCOMPARE(first.exitCode(), 0);
    QCOMPARE(first.output(), (QByteArrayList{"first", "alive"}));

    Member real(family);
    QVERIFY(real.tells("first"));
    Member second(family, wish("poke")); // has no server
    QCOMPARE(second.exitCode(), 0);
    QCOMPARE(second.output(), (QByteArrayList{"second", "alive"}));
}

void SingleInstance::survivesAConnectionWithoutAMessage()
{
    const Family family;
    Member first(family);
    QVERIFY(first.tells("first"));
    QLocalSocket visitor;
    visitor.connectToServer(family.serverName());
    QVERIFY2(visitor.waitForConnected(5000), qPrintable(visitor.errorString()));
    // After a second. Windows pipes have no specific message for a timeout.
    QVERIFY(first.complains(onWindows() ? "Unknown error" : "QLocalSocket"));
    Member second(family, sending("hello"));
    QVERIFY(second.tells("sent"));
    QVERIFY(first.tells("message " + QByteArray("hello").toHex()));
    QCOMPARE(first.output().size(), 2);
}

QTEST_GUILESS_MAIN(SingleInstance)
#include "tst_single_instance.moc"
