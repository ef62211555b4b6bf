#include "StyleSheetRules.h"

#include <QRegularExpression>

namespace {

QString withoutComments(QString sheet)
{
    static const QRegularExpression comment(QStringLiteral("/\\*.*?\\*/"),
                                            QRegularExpression::DotMatchesEverythingOption);
    return sheet.remove(comment);
}

} // namespace

StyleSheetRules styleSheetRules(const QString &sheet)
{
    static const QRegularExpression rule(QStringLiteral("([^{}]+)\\{([^{}]*)\\}"));
    StyleSheetRules rules;
    for (auto found = rule.globalMatch(withoutComments(sheet)); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        const QStringList declarations =
            match.captured(2).split(QLatin1Char(';'), Qt::SkipEmptyParts);
        for (const QString &selector : match.captured(1).split(QLatin1Char(','))) {
            auto &properties = rules[selector.simplified()];
            for (const QString &declaration : declarations) {
                const QString property = declaration.section(QLatin1Char(':'), 0, 0).simplified();
                if (!property.isEmpty())
                    properties[property] = declaration.section(QLatin1Char(':'), 1).simplified();
            }
        }
    }
    return rules;
}

QStringList styleSheetUrls(const QString &sheet)
{
    static const QRegularExpression url(QStringLiteral("url\\(\\s*[\"']?([^\"')]*?)[\"']?\\s*\\)"));
    QStringList urls;
    for (auto found = url.globalMatch(withoutComments(sheet)); found.hasNext();)
        urls.append(found.next().captured(1));
    return urls;
}
