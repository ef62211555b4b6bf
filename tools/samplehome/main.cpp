#include "SampleHome.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

namespace {

int printError(const QString &text)
{
    std::fprintf(stderr, "vantrel-sample-home: %s\n", qPrintable(text));
    return 1;
}

/// The options that take a count, with their fields.
struct Count
{
    const char *option;
    const char *meaning;
    int SampleHomePlan::*field;
};

const Count counts[] = {
    {"log-files", "Logs of each source.", &SampleHomePlan::logFiles},
    {"log-lines", "Lines of a source's newest log.", &SampleHomePlan::logLines},
    {"sources", "Log sources.", &SampleHomePlan::sources},
    {"dumps", "Crash dumps of the camera client.", &SampleHomePlan::dumps},
};

void describe(QCommandLineParser &parser)
{
    const SampleHomePlan usual;
    parser.setApplicationDescription(
        QStringLiteral("Lays FOLDER out as the home of somebody who works with the camera SDK.\n"
                       "The same arguments give the same files."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("FOLDER"),
                                 QStringLiteral("Made where it is missing."));
    const QString number = QStringLiteral("N");
    parser.addOption({QStringLiteral("seed"), QStringLiteral("Seed of all that is random."), number,
                      QString::number(usual.seed)});
    for (const Count &count : counts)
        parser.addOption({QString::fromLatin1(count.option), QString::fromLatin1(count.meaning),
                          number, QString::number(usual.*count.field)});
    parser.addOption({QStringLiteral("now"), QStringLiteral("Local time; every file is older."),
                      QStringLiteral("yyyy-MM-ddTHH:mm:ss"), usual.now.toString(Qt::ISODate)});
    parser.addOption({QStringLiteral("language"),
                      QStringLiteral("What the camera client is set to: english or chinese."),
                      QStringLiteral("name"), QStringLiteral("english")});
}

/// Returns an error message about the options, or an empty text.
QString readPlan(const QCommandLineParser &parser, SampleHomePlan &plan)
{
    bool fine = false;
    plan.seed = parser.value(QStringLiteral("seed")).toUInt(&fine);
    if (!fine)
        return QStringLiteral("--seed takes a number from 0 to 4294967295");
    for (const Count &count : counts) {
        const int value = parser.value(QString::fromLatin1(count.option)).toInt(&fine);
        if (!fine || value < 0)
            return QStringLiteral("--%1 takes a number from 0 up")
                .arg(QString::fromLatin1(count.option));
        plan.*count.field = value;
    }
    plan.now = QDateTime::fromString(parser.value(QStringLiteral("now")), Qt::ISODate);
    if (!plan.now.isValid())
        return QStringLiteral("--now takes a time such as 2025-03-14T17:30:00");
    const QString language = parser.value(QStringLiteral("language"));
    plan.chinese = language == QLatin1String("chinese");
    if (!plan.chinese && language != QLatin1String("english"))
        return QStringLiteral("--language takes english or chinese");
    return {};
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    describe(parser);
    parser.process(app);
    if (parser.positionalArguments().size() != 1)
        return printError(QStringLiteral("one FOLDER is wanted; --help says more"));

    SampleHomePlan plan;
    const QString wrong = readPlan(parser, plan);
    if (!wrong.isEmpty())
        return printError(wrong);
    const QString failure = layOutSampleHome(parser.positionalArguments().constFirst(), plan);
    return failure.isEmpty() ? 0 : printError(failure);
}
