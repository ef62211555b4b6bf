#include "DebugCapture.h"
#include "Diagnostics.h"
#include "Faults.h"
#include "LogConfig.h"
#include "LogLevelRewrite.h"
#include "PropertiesFile.h"
#include "ScratchFolder.h"

#include <QFile>
#include <QTest>

#include <memory>

using Outcome = LogLevelRewrite::Outcome;

/// Setting the level on a disk that writes the file only partially.
class LogLevelPartialFile : public QObject
{
    Q_OBJECT

private slots:
    void restoresTheTextWhenTheDiskIsFull();
    void worksFromTheKeptTextAfterAFailedWrite();
    void restoresTheKeptTextAtTheEnd();
    void prefersARepairedFileToTheKeptText();
    void keepsTheTextWhenThePartialFileCannotBeRead();
    void restoresTheKeptTextOverAPartialFileThatWasNeverRead();
    void restoresTheKeptTextAfterAnUnreadableRound();
    void leavesARepairedFileAloneAtTheEnd();
    void noticesARepairedFileInARoundThatDoesNotWrite();
    void doesNotRecreateARemovedFile();
    void logsOnceWhatWasNotWrittenAndNotRestored();
    void doesNotLogARestoredTextAsNotRestored();
};

namespace {

constexpr int writtenBytes = 10; // bytes

/// A properties file on a disk whose first writes are partial.
struct Fixture
{
    Fixture(const QByteArray &contents, int partialWrites)
        : failures(partialWrites)
        , path(scratch.file("sdk.properties", contents))
        , rewrite(std::make_unique<LogLevelRewrite>(
              path, PropertiesFile::Disk{[this](const QString &file) {
                                             return readable ? PropertiesFile::read(file)
                                                             : std::nullopt;
                                         },
                                         [this](const QString & /*file*/, std::string_view bytes) {
                                             return put(bytes);
                                         }}))
    {
    }
    ~Fixture() { end(); }
    Fixture(const Fixture &) = delete;
    Fixture &operator=(const Fixture &) = delete;

    Outcome setDebug() { return rewrite->apply(1); }
    void end() { rewrite.reset(); }

    void write(const QByteArray &contents) { scratch.file("sdk.properties", contents); }
    [[nodiscard]] QByteArray contents() const { return scratch.read("sdk.properties"); }

    int failures; ///< number of writes that still fail
    bool readable = true;
    bool partialIsReadable = true;
    int writes = 0;
    ScratchFolder scratch;
    QString path;
    std::unique_ptr<LogLevelRewrite> rewrite;

private:
    bool put(std::string_view bytes)
    {
        ++writes;
        if (failures == 0)
            return PropertiesFile::overwrite(path, bytes);
        --failures;
        write(QByteArray(bytes.data(), writtenBytes));
        readable = partialIsReadable;
        return false;
    }
};

} // namespace

void LogLevelPartialFile::restoresTheTextWhenTheDiskIsFull()
{
    if (!FileSizeLimit::available())
        QSKIP("a full disk cannot be simulated on this system");
    QByteArray text = infoFile;
    for (int i = 0; i < 500; ++i)
        text += "log4cpp.category.qzsdk\n"; // grows when set
    Fixture f(text, 0);
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

void LogLevelPartialFile::worksFromTheKeptTextAfterAFailedWrite()
{
    // Two attempts, each of which also fails to restore the text.
    Fixture f("first line\n" + infoFile + "last line", 4);
    for (int attempt = 0; attempt < 2; ++attempt) {
        QCOMPARE(f.setDebug(), Outcome::Failed);
        QCOMPARE(f.contents().size(), writtenBytes);
    }
    QCOMPARE(f.setDebug(), Outcome::Done);
    QCOMPARE(unixLines(f.contents()), "first line\n" + debugFile + "last line");
}

void LogLevelPartialFile::restoresTheKeptTextAtTheEnd()
{
    Fixture f("first line\n" + infoFile, 2);
    QCOMPARE(f.setDebug(), Outcome::Failed);
    QCOMPARE(f.contents(), QByteArray("first line"));
    f.end();
    QCOMPARE(f.contents(), "first line\n" + infoFile);
}

void LogLevelPartialFile::prefersARepairedFileToTheKeptText()
{
    Fixture f("old\n" + infoFile, 2);
    QCOMPARE(f.setDebug(), Outcome::Failed);
    f.write("repaired\n" + infoFile);
    QCOMPARE(f.setDebug(), Outcome::Done);
    QCOMPARE(unixLines(f.contents()), "repaired\n" + debugFile);
}

void LogLevelPartialFile::keepsTheTextWhenThePartialFileCannotBeRead()
{
    Fixture f("first line\n" + infoFile, 2);
    f.partialIsReadable = false;
    QCOMPARE(f.setDebug(), Outcome::Failed);
    f.readable = true;
    QCOMPARE(f.contents(), QByteArray("first line"));
    QCOMPARE(f.setDebug(), Outcome::Done);
    QCOMPARE(unixLines(f.contents()), "first line\n" + debugFile);
}

void LogLevelPartialFile::restoresTheKeptTextOverAPartialFileThatWasNeverRead()
{
    const QByteArray text = "first line\n" + infoFile;
    Fixture f(text, 2);
    f.partialIsReadable = false;
    QCOMPARE(f.setDebug(), Outcome::Failed);
    QCOMPARE(f.setDebug(), Outcome::Unreadable);
    f.end();
    QCOMPARE(f.contents(), text);
}

void LogLevelPartialFile::restoresTheKeptTextAfterAnUnreadableRound()
{
    const QByteArray text = "first line\n" + infoFile;
    Fixture f(text, 2);
    QCOMPARE(f.setDebug(), Outcome::Failed);
    f.readable = false;
    QCOMPARE(f.setDebug(), Outcome::Unreadable);
    f.end();
    QCOMPARE(f.contents(), text);
}

void LogLevelPartialFile::leavesARepairedFileAloneAtTheEnd()
{
    Fixture f("old\n" + infoFile, 2);
    QCOMPARE(f.setDebug(), Outcome::Failed);
    f.write("repaired\n" + infoFile);
    f.end();
    QCOMPARE(f.contents(), "repaired\n" + infoFile);
}

void LogLevelPartialFile::noticesARepairedFileInARoundThatDoesNotWrite()
{
    Fixture f(infoFile, 2);
    QCOMPARE(f.setDebug(), Outcome::Failed);
    const QByteArray partial = f.contents();
    f.write("repaired\n");
    QCOMPARE(f.rewrite->applyIfSettled(1), Outcome::Failed);
    f.write(partial); // written on purpose this time
    f.end();
    QCOMPARE(f.contents(), partial);
}

void LogLevelPartialFile::doesNotRecreateARemovedFile()
{
    Fixture f(infoFile, 3);
    QCOMPARE(f.setDebug(), Outcome::Failed);
    QCOMPARE(f.writes, 2);
    QVERIFY(QFile::remove(f.path));
    f.end();
    QCOMPARE(f.writes, 2);
    QVERIFY(!QFile::exists(f.path));
}

void LogLevelPartialFile::logsOnceWhatWasNotWrittenAndNotRestored()
{
    DebugCapture output;
    const Diagnostics diagnostics;
    Fixture f(infoFile, 5); // the last one in the destructor
    QCOMPARE(f.setDebug(), Outcome::Failed);
    QCOMPARE(f.setDebug(), Outcome::Failed);
    f.end();
    QCOMPARE(output.lines(), QStringList({"log config not written: " + f.path,
                                          "log config not restored: " + f.path}));
    QCOMPARE(f.contents(), infoFile.left(writtenBytes));
}

void LogLevelPartialFile::doesNotLogARestoredTextAsNotRestored()
{
    DebugCapture output;
    const Diagnostics diagnostics;
    Fixture f(infoFile, 1);
    QCOMPARE(f.setDebug(), Outcome::Failed);
    f.end();
    QCOMPARE(output.lines(), QStringList{"log config not written: " + f.path});
    QCOMPARE(f.contents(), infoFile);
}

QTEST_GUILESS_MAIN(LogLevelPartialFile)
#include "tst_log_level_partial_file.moc"
