#include "Faults.h"
#include "LogConfig.h"
#include "ProcessorTime.h"
#include "SettingsFixture.h"

#include <QFile>
#include <QProcess>
#include <QTimer>

#include <cstdio>

/// Retries after a level could not be set: they continue until they succeed and keep the program
/// responsive.
class RetriedLogLevel : public QObject
{
    Q_OBJECT

private slots:
    void endsOnlyWhenBothLinesWereReplaced_data();
    void endsOnlyWhenBothLinesWereReplaced();
    void setsTheStoredLevelInAFileThatAnotherProcessRepaired();
    void endsWhenTheFileBecomesUnreadable();
    void endsWhenTheFileCanBeWrittenAgain();
    void endsWhenTheDiskHasRoomAgain();
    void setsTheStoredLevelInTheExistingLine();
    void doesNotWriteTheSameAgainAndAgain();
    void waitsBetweenTheRoundsWithoutUsingTheProcessor();
    void letsWindowsPaintAndTimersRun();
    void doesNotStartAgainWhileTheLevelButtonsAreClicked();
    void movesTheFocusToTheFolderButtonMeanwhile();
    void leavesAFileAloneThatIsBeingSaved();
    void endsWithTheProgram();
    void endsWithTheMainWindow();
    void endsWithTheDialog();
    void survivesTheDeletionOfTheDialogDuringAClick();
};

namespace {

const char *const repair = "--repair";
constexpr int aFewRounds = 600; // milliseconds

class PaintCounter : public QWidget
{
public:
    int painted = 0;

protected:
    void paintEvent(QPaintEvent * /*event*/) override { ++painted; }
};

/// A window on a properties file, by default one in which no level can be set.
struct RetryFixture : SettingsFixture
{
    explicit RetryFixture(const QByteArray &contents = "nothing to replace\n")
        : path(properties(contents))
    {
        open();
        output.take();
    }

    /// Runs @p during some rounds after the retry has started.
    void after(int milliseconds, const std::function<void()> &during)
    {
        QTimer::singleShot(milliseconds, &context, [this, during] {
            wasRunning = !radio("radioINFO")->isEnabled();
            during();
        });
    }
    [[nodiscard]] bool write(int level) const
    {
        return window->writeLogLevel(path.toStdString(), level);
    }

    QString path;
    bool wasRunning = false;
    QObject context;
};

} // namespace

void RetriedLogLevel::endsOnlyWhenBothLinesWereReplaced_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::newRow("no marker") << QByteArray("a = b\n");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("only the root line") << QByteArray("log4cpp.rootCategory = INFO\n");
    QTest::newRow("only the category line") << QByteArray("log4cpp.category.qzsdk = INFO\n");
    QTest::newRow("both on one line") << QByteArray("log4cpp.rootCategory log4cpp.category.qzsdk");
    QTest::newRow("binary") << QByteArrayLiteral("\0\xff\n\r\0\x80\r\n");
}

void RetriedLogLevel::endsOnlyWhenBothLinesWereReplaced()
{
    QFETCH(QByteArray, contents);
    RetryFixture f(contents);
    hub().logLevel = 2;
    f.after(aFewRounds, [&f] { f.properties(infoFile); });
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!f.write(1));
    QVERIFY(f.wasRunning);
    QVERIFY(timer.elapsed() >= aFewRounds);
    QCOMPARE(unixLines(f.written()), fatalFile);
    QCOMPARE(hub().logLevel, 2U);
    QVERIFY(f.radio("radioINFO")->isEnabled());
}

void RetriedLogLevel::setsTheStoredLevelInAFileThatAnotherProcessRepaired()
{
    RetryFixture f;
    hub().logLevel = 2;
    QProcess other;
    f.after(aFewRounds, [&] {
        other.start(QCoreApplication::applicationFilePath(), {repair, f.path});
    });
    QVERIFY(!f.write(1));
    QVERIFY(f.wasRunning);
    QTRY_COMPARE(other.state(), QProcess::NotRunning);
    QCOMPARE(other.exitCode(), 0);
    QCOMPARE(unixLines(f.written()), "# repaired\n" + fatalFile);
}

void RetriedLogLevel::endsWhenTheFileBecomesUnreadable()
{
    RetryFixture f;
    f.after(aFewRounds, [&f] { QVERIFY(QFile::remove(f.path)); });
    QVERIFY(!f.write(1));
    QVERIFY(f.wasRunning);
    QCOMPARE(f.output.lines(), QStringList{"open failed"});
    QVERIFY(!QFile::exists(f.path));
    QVERIFY(f.radio("radioINFO")->isEnabled());
}

void RetriedLogLevel::endsWhenTheFileCanBeWrittenAgain()
{
    if (!OrdinaryUser::available())
        QSKIP("permissions cannot be revoked on this system");
    RetryFixture f(infoFile);
    hub().logLevel = 2;
    QVERIFY(QFile::setPermissions(f.scratch.path(), Everybody::mayDoAll));
    QVERIFY(QFile::setPermissions(f.path, Everybody::mayRead));
    auto user = std::make_unique<OrdinaryUser>();
    f.after(aFewRounds, [&] {
        user.reset();
        QCOMPARE(f.written(), infoFile);
        QVERIFY(QFile::setPermissions(f.path, Everybody::mayReadAndWrite));
    });
    QVERIFY(!f.write(1));
    QVERIFY(f.wasRunning);
    QCOMPARE(unixLines(f.written()), fatalFile);
}

void RetriedLogLevel::endsWhenTheDiskHasRoomAgain()
{
    if (!FileSizeLimit::available())
        QSKIP("a full disk cannot be simulated on this system");
    QByteArray text = "log4cpp.rootCategory\n";
    for (int i = 0; i < 100; ++i)
        text += "log4cpp.category.qzsdk\n"; // grows when set
    RetryFixture f(text);
    auto limit = std::make_unique<FileSizeLimit>(long(text.size()) + 10);
    f.after(aFewRounds, [&] {
        QCOMPARE(f.written(), text);
        limit.reset();
    });
    QVERIFY(!f.write(1));
    QVERIFY(f.wasRunning);
    QCOMPARE(unixLines(f.written()),
             "log4cpp.rootCategory = INFO\n" +
                 QByteArray("log4cpp.category.qzsdk = INFO, a_qzsdk\n").repeated(100));
}

void RetriedLogLevel::setsTheStoredLevelInTheExistingLine()
{
    RetryFixture f("log4cpp.rootCategory = WARN\nx");
    hub().logLevel = 2;
    f.after(0, [&] {
        QTRY_COMPARE(unixLines(f.written()), QByteArray("log4cpp.rootCategory = FATAL\nx"));
        QVERIFY(QFile::remove(f.path));
    });
    QVERIFY(!f.write(1));
    QVERIFY(f.wasRunning);
}

void RetriedLogLevel::doesNotWriteTheSameAgainAndAgain()
{
    RetryFixture f("log4cpp.rootCategory = WARN\nx");
    QDateTime early;
    QDateTime late;
    hub().logLevel = 2;
    f.after(0, [&] {
        QTRY_VERIFY(f.written().contains("FATAL"));
        early = QFileInfo(f.path).lastModified();
    });
    f.after(3 * aFewRounds, [&] {
        late = QFileInfo(f.path).lastModified();
        QVERIFY(QFile::remove(f.path));
    });
    QVERIFY(!f.write(1));
    QVERIFY(early.isValid());
    QCOMPARE(late, early);
}

void RetriedLogLevel::waitsBetweenTheRoundsWithoutUsingTheProcessor()
{
    RetryFixture f;
    f.after(1000, [&f] { QVERIFY(QFile::remove(f.path)); });
    const double before = processorSeconds();
    QVERIFY(!f.write(1));
    const double seconds = processorSeconds() - before;
    QVERIFY2(seconds < 0.5, qPrintable(QString::number(seconds)));
}

void RetriedLogLevel::letsWindowsPaintAndTimersRun()
{
    RetryFixture f;
    PaintCounter window;
    QTimer clock;
    connect(&clock, &QTimer::timeout, &window, QOverload<>::of(&QWidget::update));
    f.after(aFewRounds, [&] {
        window.show();
        clock.start(20);
    });
    f.after(aFewRounds + 400, [&f] { QVERIFY(QFile::remove(f.path)); });
    QVERIFY(!f.write(1));
    QVERIFY2(window.painted > 5, qPrintable(QString::number(window.painted)));
}

void RetriedLogLevel::doesNotStartAgainWhileTheLevelButtonsAreClicked()
{
    RetryFixture f;
    f.window->show();
    hub().logLevel = 2;
    f.after(aFewRounds, [&f] {
        // Neither by mouse nor by code: a second retry would return after the first.
        QTest::mouseClick(f.radio("radioINFO"), Qt::LeftButton);
        QTest::keyClick(f.radio("radioINFO"), Qt::Key_Space);
        QVERIFY(QMetaObject::invokeMethod(f.window.get(), "on_radioINFO_clicked"));
        QVERIFY(QMetaObject::invokeMethod(f.window.get(), "on_radioDEBUG_clicked"));
        QVERIFY(QMetaObject::invokeMethod(f.window.get(), "on_radioFATAL_clicked"));
        QVERIFY(!f.radio("radioINFO")->isEnabled());
        f.properties(infoFile);
    });
    f.radio("radioDEBUG")->click();
    QVERIFY(f.wasRunning);
    QCOMPARE(f.shownLevel(), "FATAL");
    QCOMPARE(unixLines(f.written()), fatalFile);

    f.radio("radioDEBUG")->click();
    QCOMPARE(hub().logLevel, 1U);
}

void RetriedLogLevel::movesTheFocusToTheFolderButtonMeanwhile()
{
    RetryFixture f;
    f.window->show();
    QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
    f.radio("radioDEBUG")->setFocus();
    const QWidget *meanwhile = nullptr;
    f.after(aFewRounds, [&] {
        meanwhile = f.window->focusWidget();
        f.properties(infoFile);
    });
    f.radio("radioDEBUG")->click();
    QCOMPARE(meanwhile, f.find<QWidget>("btnSetLogCfgPath"));
    QCOMPARE(f.window->focusWidget(), f.radio("radioINFO")); // the checked one
}

void RetriedLogLevel::leavesAFileAloneThatIsBeingSaved()
{
    const QByteArray first = "log4cpp.rootCategory = DEBUG, a_root\n";
    const QByteArray second = "# the second half of what is saved\n";
    RetryFixture f;
    QTimer save;
    int saves = 0;
    QFile file(f.path);
    connect(&save, &QTimer::timeout, &save, [&] {
        if (file.isOpen()) {
            file.write(second);
            file.close();
        } else if (++saves <= 10) {
            QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)); // truncates it
            file.write(first);
        } else {
            save.stop();
            QTRY_COMPARE(unixLines(f.written()), "log4cpp.rootCategory = INFO\n" + second);
            QVERIFY(QFile::remove(f.path));
        }
    });
    save.start(130);
    QVERIFY(!f.write(1));
    QCOMPARE(saves, 11);
}

void RetriedLogLevel::endsWithTheProgram()
{
    RetryFixture f;
    bool result = true;
    bool returned = false;
    QTimer::singleShot(0, &f.context, [&] {
        result = f.write(1);
        returned = true;
    });
    f.after(aFewRounds, [] { QCoreApplication::quit(); });
    QCOMPARE(QCoreApplication::exec(), 0);
    QVERIFY(f.wasRunning);
    QVERIFY(returned);
    QVERIFY(!result);
    QCOMPARE(unixLines(f.written()), QByteArray("nothing to replace\n"));
}

void RetriedLogLevel::endsWithTheMainWindow()
{
    RetryFixture f;
    auto main = std::make_unique<CommonDialog>(nullptr, false, false);
    auto *settings = new LogSettingsDlg(main.get(), f.client);
    main->show();
    settings->show();
    QTimer::singleShot(0, settings,
                       [settings] { settings->findChild<QRadioButton *>("radioDEBUG")->click(); });
    bool wasRunning = false;
    QTimer::singleShot(aFewRounds, main.get(), [&] {
        wasRunning = !settings->findChild<QRadioButton *>("radioINFO")->isEnabled();
        main->close();
    });
    QTimer::singleShot(20000, main.get(), [] { qFatal("the program did not end"); });
    QCOMPARE(QCoreApplication::exec(), 0);
    QVERIFY(wasRunning);
    main.reset();
}

void RetriedLogLevel::endsWithTheDialog()
{
    RetryFixture f;
    f.after(aFewRounds, [&f] { f.window.reset(); });
    LogSettingsDlg *window = f.window.get();
    QVERIFY(!window->writeLogLevel(f.path.toStdString(), 1));
    QVERIFY(f.wasRunning);
}

void RetriedLogLevel::survivesTheDeletionOfTheDialogDuringAClick()
{
    RetryFixture f;
    f.window->show();
    f.after(aFewRounds, [&f] { f.window.reset(); });
    f.radio("radioDEBUG")->click();
    QVERIFY(f.wasRunning);
    QVERIFY(f.window == nullptr);
}

// This executable is also the other process that repairs the file.
int main(int argc, char **argv)
{
    if (argc == 3 && qstrcmp(argv[1], repair) == 0) {
        QFile file(QFile::decodeName(argv[2]));
        const bool repaired = file.open(QIODevice::WriteOnly) &&
                              file.write("# repaired\n" + infoFile) > 0 && file.flush();
        return repaired ? 0 : 1;
    }
    QApplication app(argc, argv);
    RetriedLogLevel test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_log_level_retry.moc"
