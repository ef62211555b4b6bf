#include "Log4cppSession.h"
#include "LogViewer.h"
#include "SettingsFixture.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QTableWidget>

/// The SDK's logging library obeys the level set in the window, and the viewer can read its output.
class Log4cppObeys : public QObject
{
    Q_OBJECT

private slots:
    void logsAtTheLevelThatIsClicked_data();
    void logsAtTheLevelThatIsClicked();
    void logsWhatTheViewerShowsInColumns();
};

namespace {

// As delivered with an SDK: appenders, comments, blank lines.
QByteArray sdkFile(const QString &log, const QByteArray &lineEnd)
{
    QByteArray text = "# SDK logging\n"
                      "\n"
                      "log4cpp.rootCategory = WARN, a_root\n"
                      "log4cpp.category.qzsdk = ERROR, a_qzsdk\n"
                      "log4cpp.additivity.qzsdk = false\n"
                      "\n"
                      "# where the root logs to\n"
                      "log4cpp.appender.a_root = ConsoleAppender\n"
                      "log4cpp.appender.a_root.layout = SimpleLayout\n"
                      "\n"
                      "log4cpp.appender.a_qzsdk = FileAppender\n"
                      "log4cpp.appender.a_qzsdk.fileName = " +
                      log.toUtf8() +
                      "\n"
                      "log4cpp.appender.a_qzsdk.layout = PatternLayout\n"
                      "log4cpp.appender.a_qzsdk.layout.ConversionPattern = "
                      "%d{%Y-%m-%d %H:%M:%S,%l} %p [%t] [%c] %m%n\n";
    return text.replace("\n", lineEnd);
}

} // namespace

void Log4cppObeys::logsAtTheLevelThatIsClicked_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QByteArray>("lineEnd");
    QTest::addColumn<QStringList>("levels");

    const QStringList debug{"DEBUG", "INFO", "WARN", "ERROR", "FATAL"};
    const QByteArray lf = "\n";
    const QByteArray crLf = "\r\n";
    QTest::newRow("DEBUG") << QByteArray("radioDEBUG") << lf << debug;
    QTest::newRow("INFO") << QByteArray("radioINFO") << lf << QStringList(debug.mid(1));
    QTest::newRow("FATAL") << QByteArray("radioFATAL") << lf << QStringList(debug.mid(4));
    QTest::newRow("DEBUG, CR LF") << QByteArray("radioDEBUG") << crLf << debug;
    QTest::newRow("INFO, CR LF") << QByteArray("radioINFO") << crLf << QStringList(debug.mid(1));
    QTest::newRow("FATAL, CR LF") << QByteArray("radioFATAL") << crLf << QStringList(debug.mid(4));
}

void Log4cppObeys::logsAtTheLevelThatIsClicked()
{
    QFETCH(QByteArray, button);
    QFETCH(QByteArray, lineEnd);
    QFETCH(QStringList, levels);
    SettingsFixture f;
    const QString path = f.open(sdkFile(f.scratch.path("sdk.log"), lineEnd));
    f.radio(button.constData())->click();
    QCOMPARE(QString::fromStdString(logEveryLevel(path.toStdString())), QString());

    const QRegularExpression pattern(
        "^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d,\\d{3} ([A-Z]+) \\[\\d+\\] \\[qzsdk\\] an? "
        "([a-z]+) message$");
    const QStringList lines =
        QString::fromUtf8(f.scratch.read("sdk.log")).split('\n', Qt::SkipEmptyParts);
    QStringList logged;
    for (const QString &line : lines) {
        const auto match = pattern.match(line);
        QVERIFY2(match.hasMatch(), qPrintable(line));
        QCOMPARE(match.captured(2).toUpper(), match.captured(1));
        logged.append(match.captured(1));
    }
    QCOMPARE(logged, levels);
}

void Log4cppObeys::logsWhatTheViewerShowsInColumns()
{
    SettingsFixture f;
    const QString log = f.scratch.path("sdk.log");
    const QString path = f.open(sdkFile(log, "\n"));
    f.radio("radioDEBUG")->click();
    QCOMPARE(QString::fromStdString(logEveryLevel(path.toStdString())), QString());

    LogViewer viewer(nullptr);
    QVERIFY(viewer.openLogFile(log.toStdString()));
    const auto *table = viewer.findChild<QTableWidget *>("tableWidget");
    QVERIFY(table != nullptr);
    const QStringList levels{"DEBUG", "INFO", "WARN", "ERROR", "FATAL"};
    for (int row = 0; row < levels.size(); ++row) {
        for (int column = 0; column < 4; ++column)
            QVERIFY(table->item(row, column) != nullptr);
        QVERIFY(QDateTime::fromString(table->item(row, 0)->text(), "yyyy-MM-dd HH:mm:ss,zzz")
                    .isValid());
        QCOMPARE(table->item(row, 1)->text(), levels[row]);
        QCOMPARE(table->item(row, 2)->text(), "qzsdk");
        QVERIFY(table->item(row, 3)->text().endsWith(levels[row].toLower() + " message"));
    }
    QVERIFY(table->item(levels.size(), 3) == nullptr);
}

QTEST_MAIN(Log4cppObeys)
#include "tst_log4cpp_obeys.moc"
