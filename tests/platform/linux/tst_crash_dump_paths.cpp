#include "Faults.h"
#include "ScratchFolder.h"
#include "linux/LinuxSeams.h"

#include <QFile>
#include <QTest>

class KernelDumps : public QObject
{
    Q_OBJECT

private slots:
    void noCrashFolderMeansNoKernelDump();
    void theNewestKernelDumpIsTaken();
    void theKernelsLogIsNotADump();
    void unreadableOnesAreMissing();
    void smallDumpsAreKernelLogsThatMayBeRead();
};

namespace {

const QDateTime noon = QDateTime::fromSecsSinceEpoch(1'700'000'000, Qt::UTC);

QString kernelDumpBelow(const QString &folder)
{
    return crashDumpPathsFrom(folder).kernelDump;
}

} // namespace

void KernelDumps::noCrashFolderMeansNoKernelDump()
{
    ScratchFolder scratch;
    QCOMPARE(kernelDumpBelow(scratch.path("nowhere")), QString());
    QCOMPARE(kernelDumpBelow(scratch.path()), QString());
    scratch.file("kexec_cmd");
    scratch.folder("vmcore");
    QCOMPARE(kernelDumpBelow(scratch.path()), QString());
}

void KernelDumps::theNewestKernelDumpIsTaken()
{
    ScratchFolder scratch;
    scratch.file("127.0.0.1-2024-01-01-10:00:00/vmcore", "1", noon.addDays(-3));
    const QString second = scratch.file("202401021000/dump.202401021000", "2", noon.addDays(-2));
    QCOMPARE(kernelDumpBelow(scratch.path()), second);
    const QString third = scratch.file("deep/er/vmcore.flat", "3", noon.addDays(-1));
    QCOMPARE(kernelDumpBelow(scratch.path()), third);
    QCOMPARE(crashDumpPathsFrom(scratch.path()).kernelDumpTestPath, third);
    QVERIFY(QFile::link(third, scratch.path("vmcore.link")));
    QCOMPARE(kernelDumpBelow(scratch.path()), third);
}

void KernelDumps::theKernelsLogIsNotADump()
{
    ScratchFolder scratch;
    const QString dump = scratch.file("a/vmcore", "1", noon.addDays(-1));
    scratch.file("a/vmcore-dmesg.txt", "log", noon);
    scratch.file("a/dmesg.202401021000", "log", noon);
    QCOMPARE(kernelDumpBelow(scratch.path()), dump);
}

void KernelDumps::unreadableOnesAreMissing()
{
    if (!OrdinaryUser::available())
        QSKIP("read permission cannot be revoked on this system");
    ScratchFolder scratch;
    const QString older = scratch.file("a/vmcore", "1", noon.addDays(-1));
    const QString newer = scratch.file("b/vmcore", "2", noon);
    QVERIFY(QFile::setPermissions(newer, QFileDevice::Permissions()));
    QVERIFY(QFile::setPermissions(scratch.path(), Everybody::mayDoAll));
    const OrdinaryUser user;
    QCOMPARE(kernelDumpBelow(scratch.path()), older);
}

void KernelDumps::smallDumpsAreKernelLogsThatMayBeRead()
{
    const CrashDumpPaths locations = crashDumpPathsFrom("/nowhere", "/kernel/logs");
    QCOMPARE(locations.minidumps, "/kernel/logs");
    QVERIFY(QString("dmesg-efi-170000000001001").contains(locations.minidumpNamePart));
    QVERIFY(QString("dmesg.txt").contains(locations.minidumpNamePart));
    QVERIFY(!QString("console-ramoops-0").contains(locations.minidumpNamePart));
    QVERIFY(locations.unreadableIsMissing);
}

QTEST_GUILESS_MAIN(KernelDumps)
#include "tst_crash_dump_paths.moc"
