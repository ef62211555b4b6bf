#pragma once

#include "ClientRegistration.h"
#include "Copy.h"
#include "GuardTraces.h"
#include "LogConfig.h"
#include "Noise.h"
#include "ScratchFolder.h"
#include "Text.h"
#include "ZipContents.h"
#include "ZipTools.h"

#include <QFileInfo>
#include <QtTest>

#include <memory>

/// A user with a home folder of the given name, in which the camera client has left logs, and the
/// program as a process there.
struct ProgramFixture
{
    using Contents = QMap<QString, QByteArray>;

    explicit ProgramFixture(const QString &homeName = QStringLiteral("home"))
        : home(scratch.folder(homeName))
        , temporary(scratch.folder(QStringLiteral("tmp")))
        , client(home + QStringLiteral("/.config"), home + QStringLiteral("/Client/QZviewer.exe,0"))
        , traces(temporary, QStringLiteral("Pemberk Vantreldriven_program"))
    {
        file(QStringLiteral("Client/SDKLOG_default.properties"), infoFile);
        file(QStringLiteral("AppData/Roaming/QZviewer/language.ini"), "[language]\nlang=1\n");
    }

    [[nodiscard]] QString path(const QString &name) const { return home + QLatin1Char('/') + name; }
    QString file(const QString &name, const QByteArray &contents)
    {
        return scratch.file(QFileInfo(home).fileName() + QLatin1Char('/') + name, contents);
    }

    /// Creates @p count logs of @p size bytes each and their expected contents.
    void layOutLogs(int count, int size)
    {
        for (int i = 0; i < count; ++i) {
            const QByteArray contents = noise(size, quint32(i + 1));
            const QString log = QStringLiteral("%1.log").arg(i);
            const QString gentl = QStringLiteral("gentl_cxp_log/%1.txt").arg(i);
            file(QStringLiteral("QZSDK/QZviewer/") + log, contents);
            file(QStringLiteral("QZSDK/QZviewer/") + gentl, contents);
            logs[QStringLiteral("SDKLOG/") + log] = contents;
            logs[QStringLiteral("SDKLOG/") + gentl] = contents;
        }
        file(QStringLiteral("QZSDK/QZviewer/client.dmp"), "dump");
    }

    /// Whether all logs and settings are unchanged.
    [[nodiscard]] bool nothingIsLost()
    {
        for (auto log = logs.begin(); log != logs.end(); ++log) {
            const QString name = log.key().mid(QStringLiteral("SDKLOG/").size());
            if (read(path(QStringLiteral("QZSDK/QZviewer/") + name)) != log.value())
                return false;
        }
        return read(path(QStringLiteral("QZSDK/QZviewer/client.dmp"))) == "dump" &&
               read(path(QStringLiteral("Client/SDKLOG_default.properties"))) == infoFile;
    }

    [[nodiscard]] static QByteArray read(const QString &name)
    {
        QFile opened(name);
        return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray("cannot be read");
    }

    [[nodiscard]] std::unique_ptr<Copy> start(const QStringList &zips,
                                              const QMap<QString, QString> &more = {}) const
    {
        QMap<QString, QString> variables{{text("HOME"), home},
                                         {text("XDG_CONFIG_HOME"), home + text("/.config")},
                                         {text("TMPDIR"), temporary},
                                         {text("LC_ALL"), text("C.UTF-8")},
                                         {text("ASAN_OPTIONS"), text("detect_leaks=0")}};
        for (auto variable = more.begin(); variable != more.end(); ++variable)
            variables[variable.key()] = variable.value();
        return std::make_unique<Copy>(text(VANTREL_DRIVEN_PROGRAM), zips, variables,
                                      text(VANTREL_BIN));
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
        if (entry.key().startsWith(QLatin1String("SDKLOG/")))
            logs.insert(entry.key(), entry.value());
    }
    return logs;
}
