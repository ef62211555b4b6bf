#include "Copy.h"

#include "Machine.h"

#include <QTest>

namespace {

constexpr int patience = 20000; // milliseconds; sanitized programs on a busy machine start slowly

QByteArrayList linesOf(const QByteArray &text)
{
    QByteArrayList lines;
    for (const QByteArray &line : text.split('\n')) {
        if (!line.trimmed().isEmpty())
            lines.append(line.trimmed());
    }
    return lines;
}

} // namespace

Copy::Copy(const QString &program, const QStringList &arguments,
           const QMap<QString, QString> &variables, const QString &workingFolder)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (auto variable = variables.cbegin(); variable != variables.cend(); ++variable)
        environment.insert(variable.key(), variable.value());
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(workingFolder);
    process.start(program, arguments);
    if (!process.waitForStarted(patience))
        qFatal("cannot start %s: %s", qPrintable(program), qPrintable(process.errorString()));
}

Copy::~Copy()
{
    // Terminated rather than killed, if possible, so that it writes its coverage data.
    if (isRunning() && !onWindows()) {
        process.terminate();
        process.waitForFinished(patience);
    }
    kill();
}

QByteArrayList Copy::output()
{
    collect();
    return linesOf(standardOutput);
}

QByteArrayList Copy::errors()
{
    collect();
    QByteArrayList own;
    for (const QByteArray &line : linesOf(standardError)) {
        if (!line.contains("This plugin does not support") && !line.contains("QStandardPaths:"))
            own.append(line);
    }
    return own;
}

bool Copy::waitForOutput(const QByteArray &line)
{
    return QTest::qWaitFor([&] { return output().contains(line); }, patience);
}

bool Copy::waitForError(const QByteArray &part)
{
    return QTest::qWaitFor([&] { return errors().join('\n').contains(part); }, patience);
}

int Copy::exitCode()
{
    if (isRunning() && !process.waitForFinished(patience))
        return -1;
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

void Copy::kill()
{
    if (!isRunning())
        return;
    process.kill();
    process.waitForFinished(patience);
}

void Copy::collect()
{
    standardOutput += process.readAllStandardOutput();
    standardError += process.readAllStandardError();
}
