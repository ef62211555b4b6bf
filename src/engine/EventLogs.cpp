#include "EventLogs.h"

#include <QFile>

QString uniqueFilePath(const QString &folder, const QString &base, const QString &extension)
{
    const QString start = folder + QLatin1Char('/') + base;
    QString candidate = start + extension;
    for (qint64 n = 1; QFile::exists(candidate); ++n)
        candidate = start + QStringLiteral("(%1)").arg(n) + extension;
    return candidate;
}

bool exportEventLogs(
    const QString &folder,
    const std::function<bool(const QString &channel, const QString &target)> &exportChannel)
{
    const auto target = [&](const QString &base) {
        return uniqueFilePath(folder, base, QStringLiteral(".evtx"));
    };
    return exportChannel(QStringLiteral("Application"),
                         target(QStringLiteral("ApplicationEvents"))) &&
           exportChannel(QStringLiteral("System"), target(QStringLiteral("SystemEvents")));
}
