#pragma once

#include "SystemProbes.h"

#include <QFile>
#include <QStringList>

/// A fake system whose query results a test defines. It must outlive the worker; the recorded calls
/// may be read once the worker has answered.
struct FakeSystem
{
    qint32 comSecurity = 0;
    AdapterList adapters;
    std::optional<MemoryStatus> memory = MemoryStatus{};
    MemoryModuleList modules;
    CrashDumpPaths dumps;
    QByteArray filling;          ///< appended to the events of each channel
    QString refusedChannel;      ///< fails to export
    QStringList exportedTargets; ///< target files, in call order
    QStringList calledProbes;    ///< names of the probes, in call order

    /// Called before each query; may throw.
    std::function<void(const QString &probe)> beforeQuery = [](const QString &) {};

    [[nodiscard]] SystemProbes probes()
    {
        SystemProbes result;
        result.comSecurity = [this] { return record("comSecurity"), comSecurity; };
        result.adapters = [this] { return record("adapters"), adapters; };
        result.memory = [this] { return record("memory"), memory; };
        result.memoryModules = [this] { return record("memoryModules"), modules; };
        result.crashDumpPaths = [this] { return record("crashDumpPaths"), dumps; };
        result.exportEventLog = [this](const QString &channel, const QString &target) {
            record(channel.toUtf8().constData());
            exportedTargets.append(target);
            if (channel == refusedChannel)
                return false;
            QFile file(target);
            return file.open(QIODevice::WriteOnly) &&
                   file.write("events of " + channel.toUtf8() + filling) > 0;
        };
        return result;
    }

private:
    void record(const char *probe)
    {
        calledProbes.append(QString::fromUtf8(probe));
        beforeQuery(calledProbes.last());
    }
};
