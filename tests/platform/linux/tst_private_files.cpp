#include "Faults.h"
#include "PrivateFiles.h"
#include "ScratchFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

/// Only the owner can read what the program writes.
class PrivateFiles : public QObject
{
    Q_OBJECT

private slots:
    void aFileIsPrivate_data() { umasks(); }
    void aFileIsPrivate();
    void anExistingFileIsReplaced();
    void aFileThatCannotBeReplacedBecomesPrivate();
    void aLinkIsFollowed();
    void specialFilesKeepTheirPermissions();
    void aFolderIsPrivate_data() { umasks(); }
    void aFolderIsPrivate();
    void anExistingFolderBecomesPrivate();
    void aFolderIsOneLevelOnly();
    void aFileIsNoFolder();

private:
    static void umasks();
};

namespace {

/// Sets the umask while it exists.
class Umask
{
public:
    explicit Umask(int mask)
        : before(umask(mode_t(mask)))
    {
    }
    ~Umask() { umask(before); }
    Umask(const Umask &) = delete;
    Umask &operator=(const Umask &) = delete;

private:
    mode_t before;
};

struct stat statusOf(const QString &path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        qFatal("cannot stat the file");
    return status;
}

int modeOf(const QString &path)
{
    return int(statusOf(path).st_mode & 07777);
}

} // namespace

void PrivateFiles::umasks()
{
    QTest::addColumn<int>("mask");
    for (const int mask : {0, 022, 077, 0777})
        QTest::addRow("%03o", mask) << mask;
}

void PrivateFiles::aFileIsPrivate()
{
    QFETCH(int, mask);
    ScratchFolder scratch;
    const QString path = scratch.path("文件");
    {
        const Umask umask(mask);
        makePrivateFile(path);
    }
    QCOMPARE(modeOf(path), 0600);
}

void PrivateFiles::anExistingFileIsReplaced()
{
    ScratchFolder scratch;
    const QString path = scratch.file("file", "old");
    QVERIFY(QFile::setPermissions(path, Everybody::mayReadAndWrite));
    QFile reader(path);
    QVERIFY(reader.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    makePrivateFile(path);
    QCOMPARE(modeOf(path), 0600);
    scratch.file("file", "secret");
    QCOMPARE(reader.readAll(), QByteArray("old")); // an open file sees nothing new
}

void PrivateFiles::aFileThatCannotBeReplacedBecomesPrivate()
{
    ScratchFolder scratch;
    QVERIFY(QFile::setPermissions(scratch.path(), Everybody::mayDoAll));
    const QString path = scratch.path("folder/file");
    {
        scratch.folder("folder");
        QVERIFY(QFile::setPermissions(scratch.path("folder"), Everybody::mayDoAll));
        const OrdinaryUser user; // the file's owner
        scratch.file("folder/file", "old");
        QVERIFY(QFile::setPermissions(path, Everybody::mayReadAndWrite));
    }
    QVERIFY(QFile::setPermissions(scratch.path("folder"), Everybody::mayReadAndEnter));
    {
        const OrdinaryUser user;
        makePrivateFile(path);
        QCOMPARE(modeOf(path), 0600);
    }
    QVERIFY(QFile::setPermissions(scratch.path("folder"), Everybody::mayDoAll));
}

void PrivateFiles::aLinkIsFollowed()
{
    ScratchFolder scratch;
    const QString elsewhere = scratch.file("elsewhere", "old");
    const QString link = scratch.path("link");
    QVERIFY(makeLink(elsewhere, link));
    makePrivateFile(link);
    QVERIFY(QFileInfo(link).isSymLink());
    QCOMPARE(modeOf(elsewhere), 0600);
}

void PrivateFiles::specialFilesKeepTheirPermissions()
{
    ScratchFolder scratch;
    const QByteArray pipe = QFile::encodeName(scratch.path("pipe"));
    QCOMPARE(::mkfifo(pipe.constData(), 0600), 0);
    QCOMPARE(::chmod(pipe.constData(), 0644), 0);
    const int reader = ::open(pipe.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    QVERIFY(reader >= 0);
    makePrivateFile(scratch.path("pipe"));
    ::close(reader);
    QVERIFY(S_ISFIFO(statusOf(scratch.path("pipe")).st_mode));
    QCOMPARE(modeOf(scratch.path("pipe")), 0644);
}

void PrivateFiles::aFolderIsPrivate()
{
    QFETCH(int, mask);
    ScratchFolder scratch;
    const QString path = scratch.path("文件夹");
    {
        const Umask umask(mask);
        QVERIFY(makePrivateFolder(path));
    }
    QCOMPARE(modeOf(path), 0700);
}

void PrivateFiles::anExistingFolderBecomesPrivate()
{
    ScratchFolder scratch;
    const QString path = scratch.folder("folder");
    QVERIFY(QFile::setPermissions(path, Everybody::mayDoAll));
    const QString file = scratch.file("folder/file");
    QVERIFY(makePrivateFolder(path));
    QCOMPARE(modeOf(path), 0700);
    QVERIFY(QFileInfo::exists(file));
}

void PrivateFiles::aFolderIsOneLevelOnly()
{
    ScratchFolder scratch;
    QVERIFY(!makePrivateFolder(scratch.path("missing/folder")));
    QVERIFY(!QFileInfo::exists(scratch.path("missing")));
}

void PrivateFiles::aFileIsNoFolder()
{
    ScratchFolder scratch;
    const QString path = scratch.file("file");
    const int before = modeOf(path);
    QVERIFY(!makePrivateFolder(path));
    QCOMPARE(modeOf(path), before);
}

QTEST_GUILESS_MAIN(PrivateFiles)
#include "tst_private_files.moc"
