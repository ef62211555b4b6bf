#pragma once

#include <QFile>

/// Writes a text report. The first failed write is logged and ends the report; callers need not
/// check. One thread at a time.
class ReportFile
{
public:
    enum class Mode { Truncate, Append }; ///< what happens to an existing file

    ReportFile(const QString &path, Mode mode);

    void write(const QByteArray &text);

private:
    void logFailure();

    QFile file;
    bool usable;
};
