#include "Diagnostics.h"
#include "Faults.h"
#include "FullJob.h"
#include "Noise.h"
#include "SmallDisk.h"

#include <QScopeGuard>

/// The disk becomes full at every point of an export with every item. At each point the worker
/// continues, the user's files stay, there is no incomplete zip, and with free space the next
/// export is complete.
class FullDisk : public QObject
{
    Q_OBJECT

private slots:
    void everyFileIsTooLargeFromSomePointOn();
    void theDiskIsFullFromSomePointOn();
    void thereAreNoMoreFilesFromSomePointOn();
    void theDiskIsReadOnly();

public:
    QString noDisks; ///< why a test cannot mount one

private:
    const Diagnostics diagnostics; ///< to know what was lost
};

namespace {

using Contents = FullJob::Contents;

const int points = 24;
const qint64 diskSize = 4 << 20;
const QByteArray filling = noise(20'000);

/// Whether an export requested during the fault finishes. @p strike causes the fault, and its
/// result ends it.
template <typename Strike>
bool settlesDuring(FullJob &job, const Strike &strike)
{
    QFile::remove(job.f.zip());
    job.f.output.take();
    const auto fault = strike();
    job.request();
    return job.settles();
}

/// Reports and event logs may be truncated; logs and archives may not.
bool isPartOf(const Contents &found, const Contents &whole)
{
    for (auto entry = found.begin(); entry != found.end(); ++entry) {
        const QByteArray wanted = whole.value(entry.key());
        const bool mayBeCut = entry.key().endsWith(".txt") || entry.key().endsWith(".evtx");
        if (mayBeCut ? !wanted.startsWith(entry.value()) : wanted != entry.value())
            return false;
    }
    return true;
}

/// With free space again.
void isWholeAgain(FullJob &job, KeptZips &kept)
{
    QVERIFY(QDir(job.f.staging()).removeRecursively()); // left by a dropped request
    job.f.output.take();
    QVERIFY(job.run());
    QCOMPARE(difference(job.packed(&kept), job.whole), QString());
    QVERIFY(!QFileInfo::exists(job.f.staging()));
}

/// The zip is correct although @p fault struck while it was written, losses are logged, and the
/// next export is complete.
void endsWell(FullJob &job, KeptZips &kept, const char *fault, qint64 room)
{
    const QByteArray where = QByteArray(fault) + " at " + QByteArray::number(room);
    if (QFileInfo::exists(job.f.zip())) {
        const Contents found = job.packed(&kept);
        QVERIFY2(isPartOf(found, job.whole), where + ": " + found.keys().join(' ').toUtf8());
        QVERIFY2(found == job.whole || job.f.output.lines().size() > job.printed({}).size() ||
                     job.f.output.lines().contains("false"),
                 where);
    } else {
        QVERIFY2(!job.f.output.lines().isEmpty(), where);
    }
    QFile log(job.log);
    QVERIFY2(log.open(QIODevice::ReadOnly) && log.readAll() == "line\n" + filling, where);
    isWholeAgain(job, kept);
}

} // namespace

void FullDisk::everyFileIsTooLargeFromSomePointOn()
{
    KeptZips kept;
    FullJob job(filling);
    QVERIFY(job.run());
    const qint64 needed = QFileInfo(job.f.zip()).size();
    int lost = 0;
    for (int point = 0; point <= points; ++point) {
        const long room = long(needed * point / points);
        QVERIFY(settlesDuring(job, [&] { return FileSizeLimit(room); }));
        lost += QFileInfo::exists(job.f.zip()) ? 0 : 1;
        endsWell(job, kept, "file size", room);
        if (QTest::currentTestFailed())
            return;
    }
    QVERIFY(lost > 0 && lost <= points);
    QCOMPARE(kept.complaint(), QString());
}

void FullDisk::theDiskIsFullFromSomePointOn()
{
    if (!noDisks.isEmpty())
        QSKIP(qPrintable(noDisks));
    KeptZips kept; // elsewhere
    SmallDisk disk(diskSize, 1000);
    QVERIFY2(disk.trouble().isEmpty(), qPrintable(disk.trouble()));
    FullJob job(filling);
    QVERIFY(job.run());
    const qint64 needed = 2 * QFileInfo(job.f.zip()).size() + (64 << 10);
    int lost = 0;
    for (int point = 0; point <= points; ++point) {
        const qint64 room = needed * point / points;
        QVERIFY(settlesDuring(job, [&] {
            disk.leaveBytes(room);
            return qScopeGuard([&] { disk.makeRoom(); });
        }));
        lost += QFileInfo::exists(job.f.zip()) ? 0 : 1;
        endsWell(job, kept, "room", room);
        if (QTest::currentTestFailed())
            return;
    }
    QVERIFY(lost > 0 && lost < points);
    QCOMPARE(kept.complaint(), QString());
}

void FullDisk::thereAreNoMoreFilesFromSomePointOn()
{
    if (!noDisks.isEmpty())
        QSKIP(qPrintable(noDisks));
    KeptZips kept; // elsewhere
    SmallDisk disk(diskSize, 200);
    QVERIFY2(disk.trouble().isEmpty(), qPrintable(disk.trouble()));
    FullJob job(filling);
    // Inodes: the staging folder, its SDKLOG folder, seven files and the zip.
    for (int left = 0; left <= 10; ++left) {
        QVERIFY(settlesDuring(job, [&] {
            disk.leaveFiles(left);
            return qScopeGuard([&] { disk.makeRoom(); });
        }));
        QCOMPARE(job.f.output.contains("mkdir failed"), left == 0);
        QCOMPARE(job.f.output.contains("mkpath failed"), left == 1);
        endsWell(job, kept, "files", left);
        if (QTest::currentTestFailed())
            return;
    }
    QCOMPARE(kept.complaint(), QString());
}

void FullDisk::theDiskIsReadOnly()
{
    if (!noDisks.isEmpty())
        QSKIP(qPrintable(noDisks));
    KeptZips kept; // elsewhere
    SmallDisk disk(diskSize, 1000);
    QVERIFY2(disk.trouble().isEmpty(), qPrintable(disk.trouble()));
    FullJob job(filling);
    QVERIFY(settlesDuring(job, [&] {
        disk.setReadOnly(true);
        return qScopeGuard([&] { disk.setReadOnly(false); });
    }));
    QVERIFY(job.f.output.contains("mkdir failed"));
    QVERIFY(!QFileInfo::exists(job.f.zip()));
    isWholeAgain(job, kept);
    QCOMPARE(kept.complaint(), QString());
}

int main(int argc, char **argv)
{
    FullDisk tests;
    tests.noDisks = SmallDisk::prepare(); // while this is the only thread
    QCoreApplication app(argc, argv);
    return QTest::qExec(&tests, argc, argv);
}

#include "tst_full_disk.moc"
