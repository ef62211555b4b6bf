#include "StyleSheetRules.h"

#include <QRegularExpression>

namespace {

QString withoutComments(QString sheet)
{
    static const QRegularExpression comment("/\\*.*?\\*/",
                                            QRegularExpression::DotMatchesEverythingOption);
    return sheet.remove(comment);
}

} // namespace

StyleSheetRules styleSheetRules(const QString &sheet)
{
    static const QRegularExpression rule("([^{}]+)\\{([^{}]*)\\}");
    StyleSheetRules rules;
    for (auto found = rule.globalMatch(withoutComments(sheet)); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        const QStringList declarations = match.captured(2).split(';', Qt::SkipEmptyParts);
        for (const QString &selector : match.captured(1).split(',')) {
            auto &properties = rules[selector.simplified()];
            for (const QString &declaration : declarations) {
                const QString property = declaration.section(':', 0, 0).simplified();
                if (!property.isEmpty())
                    properties[property] = declaration.section(':', 1).simplified();
            }
        }
    }
    return rules;
}

QStringList styleSheetUrls(const QString &sheet)
{
    static const QRegularExpression url("url\\(\\s*[\"']?([^\"')]*?)[\"']?\\s*\\)");
    QStringList urls;
    for (auto found = url.globalMatch(withoutComments(sheet)); found.hasNext();)
        urls.append(found.next().captured(1));
    return urls;
}
