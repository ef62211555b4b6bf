#include "ReportFile.h"

#include "EngineLog.h"

ReportFile::ReportFile(const QString &path, Mode mode)
    : file(path)
    , usable(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered |
                       (mode == Mode::Truncate ? QIODevice::Truncate : QIODevice::Append)))
{
    if (!usable)
        logFailure();
}

void ReportFile::write(const QByteArray &text)
{
    if (!usable)
        return;
    usable = file.write(text) == text.size();
    if (!usable)
        logFailure();
}

void ReportFile::logFailure()
{
    qCWarning(engineLog) << "report not written:" << file.fileName() << file.errorString();
}
