#pragma once

#include <QFile>

/// A text report being written, its bytes as they are given. The first write that fails is logged
/// and ends the report; nobody has to ask for it. One thread at a time.
class ReportFile
{
public:
    enum class Mode { Empty, Append };

    ReportFile(const QString &path, Mode mode);

    void write(const QByteArray &text);

private:
    void logFailure();

    QFile file;
    bool usable;
};
