#include "SampleHome.h"

#include "SampleLog.h"
#include "SampleRandom.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QStringList>

namespace {

const QString sdkFolder = QStringLiteral("QZSDK");
const QString registration = QStringLiteral(".config/Pemberk/qzcfgfile.ini");
const QString client = QStringLiteral("QZviewer");
constexpr qint64 hour = 3600LL * 1000; // milliseconds
constexpr qint64 month = 30LL * 24 * 3600 * 1000;

/// Writes files below one folder. Records the first failure and writes nothing after it.
class Builder
{
public:
    Builder(const QString &folder, const SampleHomePlan &wanted)
        : root(QFileInfo(folder).absoluteFilePath())
        , plan(wanted)
        , random(wanted.seed)
        // Wall-clock time without time zone or daylight saving time, so that texts are the same
        // everywhere.
        , now(wanted.now.date(), wanted.now.time(), Qt::UTC)
    {
    }

    QString build();

private:
    void addSource(const QString &name);
    void addTransportLogs();
    void addDumps();
    void addClient();

    [[nodiscard]] QString path(const QString &name) const { return root + QLatin1Char('/') + name; }
    void write(const QString &name, const QByteArray &contents, const QDateTime &modified);
    void writeSetting(const QString &name, const QString &key, const QVariant &value);
    void setModified(const QString &name, const QDateTime &modified);
    void fail(const QString &name);

    const QString root;
    const SampleHomePlan &plan;
    SampleRandom random;
    const QDateTime now;
    QString error;
};

QString sourceName(int number)
{
    static const QStringList names{client, QStringLiteral("QZcontrol"), QStringLiteral("QZgrabber"),
                                   QStringLiteral("QZupdate"), QStringLiteral("QZcalibrate")};
    return number < names.size() ? names.at(number) : QStringLiteral("QZtool%1").arg(number);
}

/// The name of a program's @p n-th newest log, which ended at @p time: the client starts one per
/// day, the others rotate one file.
QString logName(const QString &source, int n, const QDateTime &time)
{
    if (source == client)
        return time.toString(QStringLiteral("'qzsdk_'yyyyMMdd_HHmmss'.log'"));
    return n == 0 ? source.toLower() + QLatin1String(".log")
                  : QStringLiteral("%1.log.%2").arg(source.toLower()).arg(n);
}

QString Builder::build()
{
    for (const QString &taken : {sdkFolder, registration}) {
        if (QFileInfo::exists(path(taken)))
            return QStringLiteral("%1 is there already; nothing was written").arg(path(taken));
    }
    if (!QDir().mkpath(path(sdkFolder)))
        return QStringLiteral("cannot make %1").arg(path(sdkFolder));
    for (int i = 0; i < plan.sources; ++i)
        addSource(sourceName(i));
    if (plan.sources > 0) {
        addTransportLogs();
        addDumps();
    }
    addClient();
    return error;
}

void Builder::addSource(const QString &name)
{
    if (!QDir().mkpath(path(sdkFolder + QLatin1Char('/') + name)))
        fail(name);
    for (int i = 0; i < plan.logFiles && error.isEmpty(); ++i) {
        // Always further apart than the span of one log, so that logs do not overlap.
        const qint64 age = i * (17 * hour) + random.below(int(8 * hour));
        const QDateTime end = now.addMSecs(-age);
        const int lines = i == 0 ? plan.logLines : random.between(plan.logLines / 2, plan.logLines);
        write(QStringLiteral("%1/%2/%3").arg(sdkFolder, name, logName(name, i, end)),
              lines > 0 ? sampleLog(name.toUtf8(), end, lines, random) : QByteArray(), end);
    }
}

void Builder::addTransportLogs()
{
    const QString folder = QStringLiteral("%1/%2/gentl_cxp_log/").arg(sdkFolder, client);
    for (int i = 0; i < 2; ++i) {
        const QDateTime end = now.addMSecs(-((24LL * i + 2) * hour));
        write(folder + QStringLiteral("gentl_cxp_%1.log").arg(i),
              sampleLog("gentl_cxp", end, 40, random), end);
    }
    write(folder + QStringLiteral("links.txt"), "link 0: 12.5 Gbit/s\nlink 1: 12.5 Gbit/s\n",
          now.addMSecs(-2 * hour));
}

void Builder::addDumps()
{
    const QString folder = QStringLiteral("%1/%2/").arg(sdkFolder, client);
    for (int i = 0; i < plan.dumps; ++i) {
        QByteArray bytes("MDMP\x93\xa7", 6);
        for (int left = random.between(4096, 16384); left > 0; --left)
            bytes += char(random.below(256));
        const QDateTime time = now.addMSecs(-(i + 1) * (41 * hour));
        const QString name = time.toString(QStringLiteral("'QZviewer_'yyyyMMdd_HHmmss'.dmp'"));
        write(folder + name, bytes, time);
        if (i == 0)
            write(folder + QStringLiteral("sent/") + name, bytes, time.addMSecs(-hour));
    }
}

void Builder::addClient()
{
    writeSetting(registration, QStringLiteral("DefaultIcon"),
                 path(QStringLiteral("Client/QZviewer.exe,0")));
    writeSetting(QStringLiteral("AppData/Roaming/QZviewer/language.ini"),
                 QStringLiteral("language/lang"), plan.chinese ? 0 : 1);
    write(QStringLiteral("Client/SDKLOG_default.properties"),
          "# Log configuration of the QZ SDK\n"
          "log4cpp.rootCategory = INFO\n"
          "log4cpp.category.qzsdk = INFO, a_qzsdk\n"
          "\n"
          "log4cpp.appender.a_qzsdk = RollingFileAppender\n"
          "log4cpp.appender.a_qzsdk.fileName = qzsdk.log\n"
          "log4cpp.appender.a_qzsdk.maxFileSize = 10485760\n"
          "log4cpp.appender.a_qzsdk.maxBackupIndex = 10\n"
          "log4cpp.appender.a_qzsdk.layout = PatternLayout\n"
          "log4cpp.appender.a_qzsdk.layout.ConversionPattern = "
          "%d{%Y-%m-%d %H:%M:%S,%l} %p [%t] [%c] %m%n\n",
          now.addMSecs(-month));
}

void Builder::write(const QString &name, const QByteArray &contents, const QDateTime &modified)
{
    if (!error.isEmpty())
        return;
    QFile file(path(name));
    if (!QDir().mkpath(QFileInfo(file).path()) || !file.open(QIODevice::WriteOnly) ||
        file.write(contents) != contents.size() || !file.flush())
        return fail(name);
    file.close();
    setModified(name, modified);
}

void Builder::writeSetting(const QString &name, const QString &key, const QVariant &value)
{
    if (!error.isEmpty())
        return;
    {
        QSettings settings(path(name), QSettings::IniFormat);
        settings.setValue(key, value);
        settings.sync();
        if (settings.status() != QSettings::NoError)
            return fail(name);
    }
    setModified(name, now.addMSecs(-month));
}

void Builder::setModified(const QString &name, const QDateTime &modified)
{
    QFile file(path(name));
    const QDateTime local(modified.date(), modified.time(), Qt::LocalTime);
    if (!file.open(QIODevice::ReadWrite) ||
        !file.setFileTime(local, QFileDevice::FileModificationTime))
        fail(name);
}

void Builder::fail(const QString &name)
{
    if (error.isEmpty())
        error = QStringLiteral("cannot write %1").arg(path(name));
}

} // namespace

QString layOutSampleHome(const QString &folder, const SampleHomePlan &plan)
{
    return Builder(folder, plan).build();
}
