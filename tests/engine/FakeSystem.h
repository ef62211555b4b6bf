#pragma once

#include "SystemProbes.h"

#include <QFile>
#include <QStringList>

/// A machine whose answers a test makes up. It has to outlive the worker that asks it; what it was
/// asked may be read when the worker has answered.
struct FakeSystem
{
    qint32 comSecurity = 0;
    AdapterList adapters;
    std::optional<MemoryStatus> memory = MemoryStatus{};
    MemoryModuleList modules;
    CrashDumpPaths dumps;
    QByteArray filling;          ///< behind the events of each channel
    QString refusedChannel;      ///< cannot be exported
    QStringList exportedTargets; ///< of the channels, in the order of the asking
    QStringList asked;           ///< names of the probes, in the order of the asking

    /// Throws where a test says so, in place of the answer.
    std::function<void(const QString &question)> ask = [](const QString &) {};

    [[nodiscard]] SystemProbes probes()
    {
        SystemProbes result;
        result.comSecurity = [this] { return noting("comSecurity"), comSecurity; };
        result.adapters = [this] { return noting("adapters"), adapters; };
        result.memory = [this] { return noting("memory"), memory; };
        result.memoryModules = [this] { return noting("memoryModules"), modules; };
        result.crashDumpPaths = [this] { return noting("crashDumpPaths"), dumps; };
        result.exportEventLog = [this](const QString &channel, const QString &target) {
            noting(channel.toUtf8().constData());
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
    void noting(const char *question)
    {
        asked.append(QString::fromUtf8(question));
        ask(asked.last());
    }
};
