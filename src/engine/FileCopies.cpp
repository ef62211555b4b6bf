#include "FileCopies.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <atomic>
#include <future>
#include <new>
#include <system_error>
#include <vector>

namespace {

constexpr std::size_t threadCount = 4; // copying waits for the disk, not for the processor

/// The indices of the copies, grouped by target: copies to one target must not race.
std::vector<std::vector<int>> groupedByTarget(const QVector<FileCopy> &copies)
{
    std::vector<std::vector<int>> groups;
    QHash<QString, std::size_t> groupOf;
    for (int i = 0; i < copies.size(); ++i) {
        const QString target = copies.at(i).to.toCaseFolded();
        const auto group = groupOf.constFind(target);
        if (group != groupOf.constEnd()) {
            groups[*group].push_back(i);
        } else {
            groupOf.insert(target, groups.size());
            groups.push_back({i});
        }
    }
    return groups;
}

} // namespace

CopyResult copyFile(const FileCopy &copy)
{
    // Opening a pipe would block until it has a writer; some devices have no end.
    const QFileInfo source(copy.from);
    if (source.exists() && !source.isFile())
        return {false, QStringLiteral("not a regular file")};
    QFile file(copy.from);
    if (file.copy(copy.to))
        return {true, {}};
    return {false, file.errorString()};
}

void copyFiles(const QVector<FileCopy> &copies,
               const std::function<void(const FileCopy &, const CopyResult &)> &report,
               const std::function<CopyResult(const FileCopy &)> &copyOne)
{
    const std::vector<std::vector<int>> groups = groupedByTarget(copies);
    std::vector<std::packaged_task<CopyResult()>> tasks;
    for (const FileCopy &copy : copies)
        tasks.emplace_back([&copyOne, &copy]() -> CopyResult {
            try {
                return copyOne(copy);
            } catch (const std::bad_alloc &) {
                return {false, QStringLiteral("out of memory")};
            }
        });
    std::atomic<std::size_t> nextGroup{0};
    const auto work = [&] {
        for (std::size_t group = nextGroup++; group < groups.size(); group = nextGroup++) {
            for (const int i : groups[group])
                tasks[std::size_t(i)]();
        }
    };

    std::vector<std::future<void>> workers; // their destructors wait
    try {
        for (std::size_t i = 0; i < std::min(groups.size(), threadCount); ++i)
            workers.push_back(std::async(std::launch::async, work));
    } catch (const std::system_error &) { // too many threads
        if (workers.empty())
            work();
    }
    for (int i = 0; i < copies.size(); ++i)
        report(copies.at(i), tasks[std::size_t(i)].get_future().get());
}
