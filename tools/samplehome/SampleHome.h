#pragma once

#include <QDateTime>
#include <QString>

/// What a sample home holds. The same plan gives the same bytes and the same times in the same
/// folder; the texts do not depend on the time zone.
struct SampleHomePlan
{
    quint32 seed = 1;
    int logFiles = 12;    // a log source; at least 0
    int logLines = 400;   // of a source's newest log; an older one has from half as many to as many
    int sources = 3;      // folders with logs, "QZviewer" before the others; at least 0
    int dumps = 3;        // crash dumps that the client left in its log folder; at least 0
    bool chinese = false; // the language that the camera client is set to, English otherwise
    QDateTime now{QDate(2025, 3, 14), QTime(17, 30)}; // local time; every file is older
};

/// Lays @p folder, which is made where it is missing, out as the home of somebody who works with
/// the SDK: logs of several programs, crash dumps, the camera client registered, its language file
/// and the SDK's log configuration. A folder that has an SDK folder or a registration already is
/// somebody's home: nothing is written there.
///
/// Returns what went wrong in words for a user, or an empty text.
[[nodiscard]] QString layOutSampleHome(const QString &folder, const SampleHomePlan &plan);
