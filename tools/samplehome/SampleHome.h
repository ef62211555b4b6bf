#pragma once

#include <QDateTime>
#include <QString>

/// The contents of a sample home. The same plan gives identical files and times; texts do not
/// depend on the time zone.
struct SampleHomePlan
{
    quint32 seed = 1;
    int logFiles = 12;    // per log source; at least 0
    int logLines = 400;   // in a source's newest log; older ones have at least half as many
    int sources = 3;      // folders with logs, the first is "QZviewer"; at least 0
    int dumps = 3;        // the client's crash dumps in its log folder; at least 0
    bool chinese = false; // the camera client's language; otherwise English
    QDateTime now{QDate(2025, 3, 14), QTime(17, 30)}; // local time; every file is older
};

/// Fills @p folder, creating it if necessary, as the home of an SDK user: logs of several programs,
/// crash dumps, the registered camera client, its language file and the SDK's log configuration.
/// Writes nothing if the folder already has an SDK folder or a registration, because it is a real
/// home then.
///
/// Returns an error message for the user, or an empty text.
[[nodiscard]] QString layOutSampleHome(const QString &folder, const SampleHomePlan &plan);
