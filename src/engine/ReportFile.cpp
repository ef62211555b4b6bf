#include "ReportFile.h"

#include <QDebug>

ReportFile::ReportFile(const QString &path, Start start)
    : file(path)
    , usable(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered |
                       (start == Start::Empty ? QIODevice::Truncate : QIODevice::Append)))
{
    if (!usable)
        complain();
}

void ReportFile::write(const QByteArray &text)
{
    if (!usable)
        return;
    usable = file.write(text) == text.size();
    if (!usable)
        complain();
}

void ReportFile::complain()
{
    qDebug() << "report not written:" << file.fileName() << file.errorString();
}
