#include "BackgroundLoop.h"
#include "Hub.h"
#include "MainWindowFixture.h"
#include "SeededRandom.h"
#include "ViewerFixture.h"
#include "ZipTools.h"

#include <QAction>

/// Windows in use while files and sources change.
class BusyWindows : public QObject
{
    Q_OBJECT

private slots:
    void theSourceIsSwitchedWhileExportsRun();
    void theViewerLoadsWhileTheFileIsRewritten();
    void logsFromAnotherTimeAreListedAndExported();
};

namespace {

/// A zip is valid only after its last byte is written.
bool isWholeZip(const QString &path)
{
    return QFileInfo::exists(path) && !zipContents(path).contains("not a zip");
}

/// The contents of a zip of all listed logs, requested now and processed after all earlier
/// requests.
QMap<QString, QByteArray> lastExport(MainWindowFixture &f)
{
    const QString zip = f.home.path("last.zip");
    hub().exportPath = zip;
    f.find<QAction>("actionExportAll")->trigger();
    return QTest::qWaitFor([&] { return isWholeZip(zip); }, 60000)
               ? verifiedZipContents(zip)
               : QMap<QString, QByteArray>{{"no zip", {}}};
}

} // namespace

void BusyWindows::theSourceIsSwitchedWhileExportsRun()
{
    MainWindowFixture f;
    const int sources = 5;
    for (int source = 0; source < sources; ++source) {
        const QString folder = source == 0 ? "QZviewer" : QString("QZtool%1").arg(source);
        for (int log = 0; log < 10; ++log)
            f.log(QString("%1/%2-%3.log").arg(folder).arg(source).arg(log),
                  QByteArray(2000, char('a' + source)));
    }
    f.open();
    f.window->show();
    auto *combo = f.find<CComboBoxEx>("comboSource");
    QCOMPARE(combo->count(), sources);
    KeptZips kept;
    const int switches = times("VANTREL_SWITCHES", 1000);
    QStringList zips;
    for (int i = 0; i < switches; ++i) {
        combo->setCurrentIndex(i % sources);
        QCOMPARE(f.listedNames().size(), 10);
        if (i % 10 == 0) {
            zips.append(f.home.path(QString("%1.zip").arg(i)));
            hub().exportPath = zips.last();
            f.find<QAction>("actionExportAll")->trigger();
        }
        QCoreApplication::processEvents();
    }
    // A request still queued would take the logs chosen for the last one.
    QVERIFY(QTest::qWaitFor([&] { return isWholeZip(zips.last()); }, 60000));
    combo->setCurrentIndex(combo->findText("QZtool3"));
    const auto last = lastExport(f);
    QCOMPARE(last.size(), 10);
    for (int log = 0; log < 10; ++log)
        QCOMPARE(last.value(QString("SDKLOG/3-%1.log").arg(log)), QByteArray(2000, 'd'));

    for (const QString &zip : zips) {
        kept.keep(zip);
        // Queued requests share the logs chosen last; no file is truncated or mixed up.
        const auto contents = zipContents(zip);
        for (auto entry = contents.begin(); entry != contents.end(); ++entry) {
            const char letter = char('a' + entry.key().mid(7, 1).toInt());
            QCOMPARE(entry.value(), QByteArray(2000, letter));
        }
    }
    QCOMPARE(kept.count(), zips.size());
    QCOMPARE(kept.complaint(), QString());
}

void BusyWindows::theViewerLoadsWhileTheFileIsRewritten()
{
    ViewerFixture f;
    const int lines = 3000;
    QByteArray whole;
    for (int i = 0; i < lines; ++i)
        whole += logLine(i % 2 == 0 ? "INFO" : "ERROR", QByteArray::number(i)) + '\n';
    const QString path = f.folder.file("busy.log", whole);
    const QString other = f.folder.file("other.log", logLine("INFO") + '\n');
    {
        BackgroundLoop writer([&](int round) {
            QFile file(path);
            switch (round % 4) {
            case 0: // truncated and rewritten
                if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
                    file.write(whole);
                break;
            case 1: // appended to
                if (file.open(QIODevice::WriteOnly | QIODevice::Append))
                    file.write(whole.left(5000));
                break;
            case 2: // rolled over
                QFile::rename(path, path + QString(".%1").arg(round % 3));
                QFile::remove(path + QString(".%1").arg((round + 1) % 3));
                break;
            default:
                file.resize(round % whole.size());
            }
        });
        for (int i = times("VANTREL_LOADS", 150); i > 0; --i) {
            (void)f.open(path);
            f.search(i % 2 == 0 ? "ERROR.*1" : "INFO");
            f.pressEnter(QString()); // reloads the file
            QVERIFY(f.filledRows() <= 100000);
            QVERIFY(f.open(other));
            QCOMPARE(f.text(0, 3), " frame received");
        }
        QVERIFY(writer.roundsSoFar() > 0);
    }
    f.folder.file("busy.log", whole);
    QVERIFY(f.open(path));
    QCOMPARE(f.filledRows(), lines);
    for (int i = 0; i < lines; ++i)
        QCOMPARE(f.text(i, 3), ' ' + QString::number(i));
}

void BusyWindows::logsFromAnotherTimeAreListedAndExported()
{
    MainWindowFixture f;
    const QDateTime now = QDateTime::currentDateTime();
    f.log("QZviewer/now.log", "now\n", now);
    f.log("QZviewer/next year.log", "next year\n", now.addYears(1));
    f.log("QZviewer/2037.log", "2037\n", QDateTime(QDate(2037, 12, 31), QTime(12, 0)));
    f.log("QZviewer/1980.log", "1980\n", QDateTime(QDate(1980, 1, 1), QTime(0, 0)));
    f.log("QZviewer/1970.log", "1970\n", QDateTime(QDate(1970, 1, 2), QTime(0, 0)));
    f.open();
    f.window->show();
    QCOMPARE(f.listedNames(),
             QStringList({"2037.log", "next year.log", "now.log", "1980.log", "1970.log"}));
    QCOMPARE(lastExport(f), (QMap<QString, QByteArray>{{"SDKLOG/now.log", "now\n"},
                                                       {"SDKLOG/next year.log", "next year\n"},
                                                       {"SDKLOG/2037.log", "2037\n"},
                                                       {"SDKLOG/1980.log", "1980\n"},
                                                       {"SDKLOG/1970.log", "1970\n"}}));
}

QTEST_MAIN(BusyWindows)
#include "tst_busy_windows.moc"
