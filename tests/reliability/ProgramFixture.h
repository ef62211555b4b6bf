#pragma once

#include "ClientRegistration.h"
#include "Copy.h"
#include "GuardTraces.h"
#include "LogConfig.h"
#include "Noise.h"
#include "ScratchFolder.h"
#include "ZipContents.h"
#include "ZipTools.h"

#include <QFileInfo>
#include <QTest>

#include <memory>

/// A user with a home folder of the given name, in which the camera client has left logs, and the
/// program as a process there.
struct ProgramFixture
{
    using Contents = QMap<QString, QByteArray>;

    explicit ProgramFixture(const QString &homeName = QString("home"))
        : home(scratch.folder(homeName))
        , temporary(scratch.folder("tmp"))
        , client(home + "/.config", home + "/Client/QZviewer.exe,0")
        , traces(temporary, "Pemberk Vantreldriven_program")
    {
        file("Client/SDKLOG_default.properties", infoFile);
        file("AppData/Roaming/QZviewer/language.ini", "[language]\nlang=1\n");
    }

    [[nodiscard]] QString path(const QString &name) const { return home + '/' + name; }
    QString file(const QString &name, const QByteArray &contents)
    {
        return scratch.file(QFileInfo(home).fileName() + '/' + name, contents);
    }

    /// Creates @p count logs of @p size bytes each and their expected contents.
    void layOutLogs(int count, int size)
    {
        for (int i = 0; i < count; ++i) {
            const QByteArray contents = noise(size, quint32(i + 1));
            const QString log = QString("%1.log").arg(i);
            const QString gentl = QString("gentl_cxp_log/%1.txt").arg(i);
            file("QZSDK/QZviewer/" + log, contents);
            file("QZSDK/QZviewer/" + gentl, contents);
            logs["SDKLOG/" + log] = contents;
            logs["SDKLOG/" + gentl] = contents;
        }
        file("QZSDK/QZviewer/client.dmp", "dump");
    }

    /// Whether all logs and settings are unchanged.
    [[nodiscard]] bool nothingIsLost()
    {
        for (auto log = logs.begin(); log != logs.end(); ++log) {
            const QString name = log.key().mid(QString("SDKLOG/").size());
            if (read(path("QZSDK/QZviewer/" + name)) != log.value())
                return false;
        }
        return read(path("QZSDK/QZviewer/client.dmp")) == "dump" &&
               read(path("Client/SDKLOG_default.properties")) == infoFile;
    }

    [[nodiscard]] static QByteArray read(const QString &name)
    {
        QFile opened(name);
        return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray("cannot be read");
    }

    [[nodiscard]] std::unique_ptr<Copy> start(const QStringList &zips,
                                              const QMap<QString, QString> &more = {}) const
    {
        QMap<QString, QString> variables{{"HOME", home},
                                         {"XDG_CONFIG_HOME", home + "/.config"},
                                         {"TMPDIR", temporary},
                                         {"LC_ALL", "C.UTF-8"},
                                         {"ASAN_OPTIONS", "detect_leaks=0"}};
        for (auto variable = more.begin(); variable != more.end(); ++variable)
            variables[variable.key()] = variable.value();
        return std::make_unique<Copy>(VANTREL_DRIVEN_PROGRAM, zips, variables, VANTREL_BIN);
    }

    ScratchFolder scratch;
    QString home;
    QString temporary;
    ClientRegistration client;
    GuardTraces traces;
    Contents logs; ///< by entry name
};

/// The SDK logs in @p contents.
[[nodiscard]] inline ProgramFixture::Contents logsIn(const ProgramFixture::Contents &contents)
{
    ProgramFixture::Contents logs;
    for (auto entry = contents.begin(); entry != contents.end(); ++entry) {
        if (entry.key().startsWith("SDKLOG/"))
            logs.insert(entry.key(), entry.value());
    }
    return logs;
}
