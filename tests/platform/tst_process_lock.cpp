#include "ProcessLock.h"

#include <QElapsedTimer>
#include <QThread>
#include <QUuid>
#include <QtTest>

#include <memory>

class ProcessLockTest : public QObject
{
    Q_OBJECT

private slots:
    void isHeldByOneAtATime();
    void isFreeAgainWhenItsHolderIsGone();
    void differentNamesDoNotMeet();
    void holdsNothingWhereItCannotBeMade();

private:
    const QString name =
        QStringLiteral("Lock ") + QUuid::createUuid().toString(QUuid::Id128).left(8);
};

namespace {

/// Whether another thread, which a lock of Windows takes for another process, gets the lock.
bool availableToOthers(const QString &name, int patience)
{
    bool held = false;
    std::unique_ptr<QThread> other(QThread::create([&] {
        const ProcessLock lock(name, patience);
        held = lock.isHeld();
    }));
    other->start();
    other->wait();
    return held;
}

} // namespace

void ProcessLockTest::isHeldByOneAtATime()
{
    const ProcessLock lock(name, 0);
    QVERIFY(lock.isHeld());
    QElapsedTimer time;
    time.start();
    QVERIFY(!availableToOthers(name, 20));
    QVERIFY(time.elapsed() >= 20);
}

void ProcessLockTest::isFreeAgainWhenItsHolderIsGone()
{
    for (int i = 0; i < 3; ++i) {
        const ProcessLock lock(name, 0);
        QVERIFY(lock.isHeld());
    }
    QVERIFY(availableToOthers(name, 0));
}

void ProcessLockTest::differentNamesDoNotMeet()
{
    const ProcessLock lock(name, 0);
    QVERIFY(availableToOthers(name + QStringLiteral(" 2"), 0));
}

void ProcessLockTest::holdsNothingWhereItCannotBeMade()
{
#ifdef Q_OS_WIN
    QSKIP("a lock there needs no file");
#else
    // A folder that takes no new files, not even from root.
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", "/proc");
    const bool held = ProcessLock(name, 20000).isHeld(); // at once, without waiting
    before.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before);
    QVERIFY(!held);
#endif
}

QTEST_APPLESS_MAIN(ProcessLockTest)
#include "tst_process_lock.moc"
