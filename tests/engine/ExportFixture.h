#pragma once

#include "CLogProcessThread.h"
#include "DebugCapture.h"
#include "Hub.h"
#include "ScratchFolder.h"
#include "ZipContents.h"

#include <QTableWidgetItem>
#include <QtTest>

#include <memory>
#include <utility>
#include <vector>

/// A worker at work in a scratch SDK folder, with the means to ask it and to see what came of it.
struct ExportFixture
{
    static constexpr int patience = 60'000; ///< milliseconds, which only a broken worker needs

    using Contents = QMap<QString, QByteArray>;

    explicit ExportFixture(SystemProbes probes = {})
        : worker(std::move(probes))
    {
        scratch.folder(QStringLiteral("QZSDK/QZviewer"));
        worker.setBasePath(base());
        worker.setLogSourceFolder(QStringLiteral("QZviewer"));
        QObject::connect(&worker, &CLogProcessThread::closeWaitDlg, &context,
                         [this] { ++answered; });
    }

    [[nodiscard]] QString base() const { return scratch.path(QStringLiteral("QZSDK/")); }
    [[nodiscard]] QString staging() const { return scratch.path(QStringLiteral("QZSDK/LogInfo")); }
    [[nodiscard]] QString zip() const { return scratch.path(QStringLiteral("out.zip")); }

    /// A log file in the current source; its path.
    QString log(const QString &name, const QByteArray &contents = "line\n")
    {
        return scratch.file(QStringLiteral("QZSDK/QZviewer/") + name, contents);
    }

    /// Hands over table items for @p paths and deletes them at once, as a refill of the table may.
    void choose(const QStringList &paths)
    {
        std::vector<std::unique_ptr<QTableWidgetItem>> owned;
        QList<QTableWidgetItem *> items;
        for (const QString &path : paths) {
            owned.push_back(std::make_unique<QTableWidgetItem>());
            owned.back()->setToolTip(path);
            items.append(owned.back().get());
        }
        worker.setSdkLogItems(items);
    }

    /// Starts the worker unless it runs and waits for @p count more answers, so many milliseconds
    /// at most.
    bool waitForExports(int count = 1, int milliseconds = patience)
    {
        if (!worker.isRunning())
            worker.start();
        const bool came = QTest::qWaitFor([&] { return answered >= count; }, milliseconds);
        answered = 0;
        return came;
    }

    /// Asks for an export to zip() and waits for the answer.
    bool exportAndWait()
    {
        worker.enqueueExport(zip());
        return waitForExports();
    }
    /// Likewise, with the logs at @p paths chosen before.
    bool exportAndWait(const QStringList &paths)
    {
        choose(paths);
        return exportAndWait();
    }

    /// Waits until @p line was printed, for requests that get no answer.
    bool waitForOutput(const QString &line)
    {
        if (!worker.isRunning())
            worker.start();
        return QTest::qWaitFor([&] { return output.lines().contains(line); }, patience);
    }

    /// Ends the worker after the request in hand and takes its last answer, if there is one.
    bool ends()
    {
        worker.setRunning(false);
        const bool ended = worker.wait(patience);
        QCoreApplication::processEvents();
        return ended;
    }

    struct FreshHub
    {
        FreshHub() { resetHub(); }
    } freshHub; ///< before the worker, which writes to the hub
    ScratchFolder scratch;
    DebugCapture output;
    CLogProcessThread worker;
    QObject context;  ///< takes the worker's signal on this thread
    int answered = 0; ///< counted on this thread; a QSignalSpy would count on the worker's
};
