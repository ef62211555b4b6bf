#pragma once

#include <QFile>

/// A text report being written, its bytes as they are given. What cannot be written is told once
/// on the debug output and is otherwise of no consequence. One thread at a time.
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
