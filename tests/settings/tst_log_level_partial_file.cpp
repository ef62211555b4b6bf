#include "DebugCapture.h"
#include "Faults.h"
#include "LogConfig.h"
#include "LogLevelFile.h"
#include "LogLevelRewrite.h"
#include "ScratchFolder.h"

#include <QFile>
#include <QFileInfo>
#include <QtTest>

#include <memory>
#include <utility>

using Outcome = LogLevelRewrite::Outcome;

/// Setting the level on a disk that tears the file apart.
class LogLevelTornFile : public QObject
{
    Q_OBJECT

private slots:
    void putsTheTextBackWhenTheDiskIsFull();
    void worksFromTheKeptTextAfterAFailedWrite();
    void putsTheKeptTextBackAtTheEnd();
    void takesAMendedFileOverTheKeptText();
    void keepsTheTextWhenTheTornFileCannotBeRead();
    void putsTheKeptTextOverATornFileThatWasNeverRead();
    void putsTheKeptTextBackAfterAnUnreadableRound();
    void leavesAMendedFileAloneAtTheEnd();
    void leavesATornFileThatWasRemovedAlone();
    void saysOnceWhatWasNotWrittenAndNotRestored();
    void saysNotThatATextWhichIsBackWasNotRestored();
};

namespace {

constexpr int writtenBytes = 10; // bytes
constexpr qint64 tooLargeToRead = 600LL * 1024 * 1024;

// Too large to be read, but to be written: the fault of a moment, made to last.
void makeUnreadable(const QString &path)
{
    if (!QFile::resize(path, tooLargeToRead) || readPropertiesFile(path))
        qFatal("cannot make the file unreadable");
}

/// A disk that tears a file apart as often as it is told to.
struct TearingDisk
{
    int failures = 0;
    bool unreadable = false; ///< the torn file cannot be read either

    bool operator()(const QString &path, const QByteArray &bytes)
    {
        if (failures == 0)
            return overwriteFile(path, bytes);
        --failures;
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) ||
            file.write(bytes.left(writtenBytes)) != writtenBytes)
            qFatal("cannot tear the file");
        file.close();
        if (unreadable)
            makeUnreadable(path);
        return false;
    }
};

/// A properties file, in which the level is about to be set.
struct Fixture
{
    Fixture(const QByteArray &contents, LogLevelRewrite::Overwrite overwrite)
        : path(scratch.file(QStringLiteral("sdk.properties"), contents))
        , rewrite(std::make_unique<LogLevelRewrite>(path, std::move(overwrite)))
    {
    }

    Outcome setDebug() { return rewrite->apply(1); }
    void end() { rewrite.reset(); }

    void write(const QByteArray &contents)
    {
        scratch.file(QStringLiteral("sdk.properties"), contents);
    }
    [[nodiscard]] QByteArray contents() const
    {
        return scratch.read(QStringLiteral("sdk.properties"));
    }

    ScratchFolder scratch;
    QString path;
    std::unique_ptr<LogLevelRewrite> rewrite;
};

} // namespace

void LogLevelTornFile::putsTheTextBackWhenTheDiskIsFull()
{
    if (!FileSizeLimit::available())
        QSKIP("no way to fill a disk here");
    QByteArray text = infoFile;
    for (int i = 0; i < 500; ++i)
        text += "log4cpp.category.qzsdk\n"; // each grows when it is set
    Fixture f(text, overwriteFile);
    {
        const FileSizeLimit limit(long(text.size()) + 1000);
        for (int attempt = 0; attempt < 2; ++attempt) {
            QCOMPARE(f.setDebug(), Outcome::Failed);
            QCOMPARE(f.contents(), text);
        }
    }
    QCOMPARE(f.setDebug(), Outcome::Done);
    QVERIFY(f.contents().size() > text.size() + 1000);
}

void LogLevelTornFile::worksFromTheKeptTextAfterAFailedWrite()
{
    // Two attempts, each with a vain try to put the text back.
    Fixture f("first line\n" + infoFile + "last line", TearingDisk{4});
    for (int attempt = 0; attempt < 2; ++attempt) {
        QCOMPARE(f.setDebug(), Outcome::Failed);
        QCOMPARE(f.contents().size(), writtenBytes);
    }
    QCOMPARE(f.setDebug(), Outcome::Done);
    QCOMPARE(unixLines(f.contents()), "first line\n" + debugFile + "last line");
}

void LogLevelTornFile::putsTheKeptTextBackAtTheEnd()
{
    Fixture f("first line\n" + infoFile, TearingDisk{2});
    QCOMPARE(f.setDebug(), Outcome::Failed);
    QCOMPARE(f.contents(), QByteArray("first line"));
    f.end();
    QCOMPARE(f.contents(), "first line\n" + infoFile);
}

void LogLevelTornFile::takesAMendedFileOverTheKeptText()
{
    Fixture f("old\n" + infoFile, TearingDisk{2});
    QCOMPARE(f.setDebug(), Outcome::Failed);
    f.write("mended\n" + infoFile);
    QCOMPARE(f.setDebug(), Outcome::Done);
    QCOMPARE(unixLines(f.contents()), "mended\n" + debugFile);
}

void LogLevelTornFile::keepsTheTextWhenTheTornFileCannotBeRead()
{
    Fixture f("first line\n" + infoFile, TearingDisk{2, true});
    QCOMPARE(f.setDebug(), Outcome::Failed);
    QVERIFY(QFile::resize(f.path, writtenBytes));
    QCOMPARE(f.contents(), QByteArray("first line"));
    QCOMPARE(f.setDebug(), Outcome::Done);
    QCOMPARE(unixLines(f.contents()), "first line\n" + debugFile);
}

void LogLevelTornFile::putsTheKeptTextOverATornFileThatWasNeverRead()
{
    const QByteArray text = "first line\n" + infoFile;
    Fixture f(text, TearingDisk{2, true});
    QCOMPARE(f.setDebug(), Outcome::Failed);
    QCOMPARE(f.setDebug(), Outcome::Unreadable);
    f.end();
    QCOMPARE(QFileInfo(f.path).size(), qint64(text.size()));
    QCOMPARE(f.contents(), text);
}

void LogLevelTornFile::putsTheKeptTextBackAfterAnUnreadableRound()
{
    const QByteArray text = "first line\n" + infoFile;
    Fixture f(text, TearingDisk{2});
    QCOMPARE(f.setDebug(), Outcome::Failed);
    makeUnreadable(f.path);
    QCOMPARE(f.setDebug(), Outcome::Unreadable);
    f.end();
    QCOMPARE(QFileInfo(f.path).size(), qint64(text.size()));
    QCOMPARE(f.contents(), text);
}

void LogLevelTornFile::leavesAMendedFileAloneAtTheEnd()
{
    Fixture f("old\n" + infoFile, TearingDisk{2});
    QCOMPARE(f.setDebug(), Outcome::Failed);
    f.write("mended\n" + infoFile);
    f.end();
    QCOMPARE(f.contents(), "mended\n" + infoFile);
}

void LogLevelTornFile::leavesATornFileThatWasRemovedAlone()
{
    int writes = 0;
    Fixture f(infoFile, [&writes](const QString &, const QByteArray &) {
        ++writes;
        return false;
    });
    QCOMPARE(f.setDebug(), Outcome::Failed);
    QCOMPARE(writes, 2);
    QVERIFY(QFile::remove(f.path));
    f.end();
    QCOMPARE(writes, 2);
}

void LogLevelTornFile::saysOnceWhatWasNotWrittenAndNotRestored()
{
    DebugCapture output;
    Fixture f(infoFile, TearingDisk{5}); // the last one at the end
    QCOMPARE(f.setDebug(), Outcome::Failed);
    QCOMPARE(f.setDebug(), Outcome::Failed);
    f.end();
    QCOMPARE(output.lines(), QStringList({QStringLiteral("log config not written"),
                                          QStringLiteral("log config not restored")}));
    QCOMPARE(f.contents(), infoFile.left(writtenBytes));
}

void LogLevelTornFile::saysNotThatATextWhichIsBackWasNotRestored()
{
    DebugCapture output;
    Fixture f(infoFile, TearingDisk{1});
    QCOMPARE(f.setDebug(), Outcome::Failed);
    f.end();
    QCOMPARE(output.lines(), QStringList{QStringLiteral("log config not written")});
    QCOMPARE(f.contents(), infoFile);
}

QTEST_GUILESS_MAIN(LogLevelTornFile)
#include "tst_log_level_partial_file.moc"
