#include "Faults.h"
#include "LogConfig.h"
#include "SettingsFixture.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QTranslator>

/// The settings window while the level cannot be set in one file: its state, and setting other
/// files.
class RetriedFiles : public QObject
{
    Q_OBJECT

private slots:
    void showTheStoredLevelWhileTheyAreRetried();
    void leaveOtherFilesFree();
    void leaveTheLevelOfAnotherFileShown();
    void showTheStoredLevelWhenTheyAreChosenAgain();
    void areRetriedSeveralAtOnce();
    void doNotChangeTheLevelShownLongAfterTheirEnd();
    void sayWhyTheLevelsAreDisabled_data();
    void sayWhyTheLevelsAreDisabled();
    void sayWhenAnotherReasonKeepsTheLevelsDisabled();
};

namespace {

/// A window with a file in which no level can be set.
struct Fixture : SettingsFixture
{
    Fixture() { open("nothing to replace\n"); }

    /// Chooses this file in the file dialog.
    void choose(const QString &path)
    {
        chooses = path;
        find<QPushButton>("btnSetLogCfgPath")->click();
        QCOMPARE(find<QLineEdit>("lineEditPath")->text(), path);
    }
    [[nodiscard]] bool levelsAreDisabled() const
    {
        return !radio("radioINFO")->isEnabled() && !radio("radioDEBUG")->isEnabled() &&
               !radio("radioFATAL")->isEnabled();
    }
    /// Clicks DEBUG and calls @p during while that is being retried. Returns when the retry has
    /// ended.
    void clickDebug(const std::function<void()> &during)
    {
        bool called = false;
        QTimer::singleShot(0, window.get(), [&] {
            called = true;
            during();
            if (QTest::currentTestFailed()) { // ends the retries
                QFile::remove(wrong);
                QFile::remove(other);
            }
        });
        radio("radioDEBUG")->click();
        QVERIFY(called);
    }
    void repair(const QByteArray &contents = infoFile) { properties(contents); }

    QString wrong = scratch.path(defaultName());
    QString other = scratch.file("other.properties", fatalFile);
    [[nodiscard]] QByteArray otherWritten() const
    {
        return unixLines(scratch.read("other.properties"));
    }
};

} // namespace

void RetriedFiles::showTheStoredLevelWhileTheyAreRetried()
{
    Fixture f;
    hub().logLevel = 2;
    f.clickDebug([&f] {
        QVERIFY(f.levelsAreDisabled());
        QCOMPARE(f.shownLevel(), "FATAL");
        f.repair();
    });
    QVERIFY(!f.levelsAreDisabled());
    QCOMPARE(f.shownLevel(), "FATAL");
    QCOMPARE(unixLines(f.written()), fatalFile);
}

void RetriedFiles::leaveOtherFilesFree()
{
    Fixture f;
    f.clickDebug([&f] {
        f.choose(f.other);
        QVERIFY(!f.levelsAreDisabled());
        QCOMPARE(f.shownLevel(), "FATAL");
        f.radio("radioDEBUG")->click(); // returns at once
        QCOMPARE(f.otherWritten(), debugFile);
        QCOMPARE(hub().logLevel, 1U);
        QCOMPARE(f.shownLevel(), "DEBUG");
        f.choose(f.wrong);
        QVERIFY(f.levelsAreDisabled());
        f.repair();
    });
    QVERIFY(!f.levelsAreDisabled());
    QCOMPARE(unixLines(f.written()), debugFile); // the level stored last
    QCOMPARE(f.otherWritten(), debugFile);
}

void RetriedFiles::leaveTheLevelOfAnotherFileShown()
{
    Fixture f;
    f.clickDebug([&f] {
        f.choose(f.other);
        f.repair();
    });
    QCOMPARE(f.shownLevel(), "FATAL");
    QCOMPARE(hub().logLevel, 0U);
    QCOMPARE(unixLines(f.written()), infoFile);
    QCOMPARE(f.otherWritten(), fatalFile);
}

void RetriedFiles::showTheStoredLevelWhenTheyAreChosenAgain()
{
    if (!OrdinaryUser::available())
        QSKIP("permissions cannot be revoked on this system");
    Fixture f;
    f.choose(f.other);
    QVERIFY(QFile::setPermissions(f.scratch.path(), Everybody::mayDoAll));
    QVERIFY(QFile::setPermissions(f.other, Everybody::mayRead));
    auto user = std::make_unique<OrdinaryUser>();
    f.clickDebug([&] {
        f.choose(f.wrong);
        f.choose(f.other);
        QVERIFY(f.levelsAreDisabled());
        QCOMPARE(f.shownLevel(), "INFO"); // not FATAL, as in the file
        user.reset();
        QVERIFY(QFile::setPermissions(f.other, Everybody::mayReadAndWrite));
    });
    QCOMPARE(f.shownLevel(), "INFO");
    QCOMPARE(f.otherWritten(), infoFile);
}

void RetriedFiles::areRetriedSeveralAtOnce()
{
    Fixture f;
    const QString second = f.scratch.file("second.properties", "nor here\n");
    f.clickDebug([&] {
        f.choose(second);
        f.clickDebug([&] {
            QVERIFY(f.levelsAreDisabled());
            f.choose(f.wrong);
            QVERIFY(f.levelsAreDisabled());
            f.repair();
            QTRY_VERIFY(!f.levelsAreDisabled()); // although the second file is still being retried
            f.radio("radioFATAL")->click();
            QCOMPARE(hub().logLevel, 2U);
            QCOMPARE(unixLines(f.written()), fatalFile);
            f.scratch.file("second.properties", debugFile);
        });
    });
    QCOMPARE(unixLines(f.scratch.read("second.properties")), fatalFile);
    QVERIFY(!f.levelsAreDisabled());
}

void RetriedFiles::doNotChangeTheLevelShownLongAfterTheirEnd()
{
    Fixture f;
    const QString second = f.scratch.file("second.properties", "nor here\n");
    f.clickDebug([&] {
        f.choose(second);
        f.clickDebug([&] {
            f.repair(debugFile);
            QTRY_COMPARE(unixLines(f.written()), infoFile); // the stored level
            f.choose(f.other);
            f.radio("radioDEBUG")->click();
            QCOMPARE(hub().logLevel, 1U);
            f.choose(f.wrong);
            QTRY_VERIFY(!f.levelsAreDisabled());
            QCOMPARE(f.shownLevel(), "INFO");
            QVERIFY(QFile::remove(second));
        });
    });
    // The first click, which failed first, returns last.
    QCOMPARE(f.shownLevel(), "INFO");
    QCOMPARE(unixLines(f.written()), infoFile);
}

void RetriedFiles::sayWhyTheLevelsAreDisabled_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<bool>("writable");
    QTest::addColumn<QString>("why");
    QTest::newRow("lines missing, English")
        << "EN" << true << "lacks a line with log4cpp.rootCategory";
    QTest::newRow("not writable, English") << "EN" << false << "cannot be written";
    QTest::newRow("lines missing, Chinese") << "CN" << true << "该文件缺少包含";
    QTest::newRow("not writable, Chinese") << "CN" << false << "该文件无法写入";
}

void RetriedFiles::sayWhyTheLevelsAreDisabled()
{
    QFETCH(QString, language);
    QFETCH(bool, writable);
    QFETCH(QString, why);
    if (!OrdinaryUser::available())
        QSKIP("permissions cannot be revoked on this system");
    QTranslator hints;
    QVERIFY(hints.load(QString(":/Hints_%1.qm").arg(language)));
    QCoreApplication::installTranslator(&hints);
    Fixture f;
    if (!writable)
        f.choose(f.other);
    QVERIFY(QFile::setPermissions(f.scratch.path(), Everybody::mayDoAll));
    QVERIFY(QFile::setPermissions(f.wrong, Everybody::mayReadAndWrite));
    QVERIFY(QFile::setPermissions(f.other, Everybody::mayRead));
    auto user = std::make_unique<OrdinaryUser>();
    f.clickDebug([&] {
        for (const char *name : {"radioINFO", "radioDEBUG", "radioFATAL"}) {
            const QString tip = f.radio(name)->toolTip();
            QVERIFY2(tip.contains(why), qPrintable(tip));
            QCOMPARE(f.radio(name)->accessibleDescription(), tip);
        }
        user.reset();
        QVERIFY(QFile::setPermissions(f.other, Everybody::mayReadAndWrite));
        f.repair();
    });
    QCOMPARE(f.radio("radioINFO")->toolTip(), QString());
    QCOMPARE(f.radio("radioINFO")->accessibleDescription(), QString());
}

void RetriedFiles::sayWhenAnotherReasonKeepsTheLevelsDisabled()
{
    if (!OrdinaryUser::available())
        QSKIP("permissions cannot be revoked on this system");
    Fixture f;
    QVERIFY(QFile::setPermissions(f.scratch.path(), Everybody::mayDoAll));
    QVERIFY(QFile::setPermissions(f.wrong, Everybody::mayRead));
    auto user = std::make_unique<OrdinaryUser>();
    f.clickDebug([&] {
        QVERIFY(f.radio("radioINFO")->toolTip().contains("cannot be written"));
        user.reset();
        QVERIFY(QFile::setPermissions(f.wrong, Everybody::mayReadAndWrite));
        QTRY_VERIFY(f.radio("radioINFO")->toolTip().contains("lacks a line with"));
        QCOMPARE(f.radio("radioINFO")->accessibleDescription(), f.radio("radioINFO")->toolTip());
        f.repair();
    });
}

QTEST_MAIN(RetriedFiles)
#include "tst_log_settings_retried_files.moc"
