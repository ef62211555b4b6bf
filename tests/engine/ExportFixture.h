#pragma once

#include "CLogProcessThread.h"
#include "DebugCapture.h"
#include "Hub.h"
#include "ScratchFolder.h"
#include "ZipContents.h"

#include <QTableWidgetItem>
#include <QTest>

#include <memory>
#include <utility>
#include <vector>

/// A running worker in a scratch SDK folder, with helpers to send requests and check results.
struct ExportFixture
{
    static constexpr int patience = 60'000; ///< milliseconds; only exceeded on failure

    using Contents = QMap<QString, QByteArray>;

    explicit ExportFixture(SystemProbes probes = {})
        : worker(std::move(probes))
    {
        scratch.folder("QZSDK/QZviewer");
        worker.setBasePath(base());
        worker.setLogSourceFolder("QZviewer");
        QObject::connect(&worker, &CLogProcessThread::closeWaitDlg, &context,
                         [this] { ++answered; });
    }

    [[nodiscard]] QString base() const { return scratch.path("QZSDK/"); }
    [[nodiscard]] QString staging() const { return scratch.path("QZSDK/LogInfo"); }
    [[nodiscard]] QString zip() const { return scratch.path("out.zip"); }

    /// Creates a log file in the current source and returns its path.
    QString log(const QString &name, const QByteArray &contents = "line\n")
    {
        return scratch.file("QZSDK/QZviewer/" + name, contents);
    }

    /// Passes table items for @p paths and deletes them immediately, as refilling the table does.
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

    /// Starts the worker if necessary and waits for @p count more answers.
    bool waitForExports(int count = 1, int milliseconds = patience)
    {
        if (!worker.isRunning())
            worker.start();
        const bool came = QTest::qWaitFor([&] { return answered >= count; }, milliseconds);
        answered = 0;
        return came;
    }

    /// Requests an export to zip() and waits for the answer.
    bool exportAndWait()
    {
        worker.enqueueExport(zip());
        return waitForExports();
    }
    /// The same with the logs at @p paths.
    bool exportAndWait(const QStringList &paths)
    {
        choose(paths);
        return exportAndWait();
    }

    /// Waits until @p line is printed, for requests without an answer.
    bool waitForOutput(const QString &line)
    {
        if (!worker.isRunning())
            worker.start();
        return QTest::qWaitFor([&] { return output.lines().contains(line); }, patience);
    }

    /// Stops the worker after the current request and processes its last answer, if any.
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
    } freshHub; ///< constructed before the worker, which writes to the hub
    ScratchFolder scratch;
    DebugCapture output;
    CLogProcessThread worker;
    QObject context;  ///< receives the worker's signal on this thread
    int answered = 0; ///< counted on this thread, unlike by a QSignalSpy
};
