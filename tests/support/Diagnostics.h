#pragma once

#include <QLoggingCategory>
#include <QString>

/// Switches the program's diagnostics on, or those of one category, while it lives. They are off
/// by default.
class Diagnostics
{
public:
    explicit Diagnostics(const QString &categories = QStringLiteral("vantrel.*"))
    {
        QLoggingCategory::setFilterRules(categories + QStringLiteral("=true"));
    }
    ~Diagnostics() { QLoggingCategory::setFilterRules(QString()); }
    Diagnostics(const Diagnostics &) = delete;
    Diagnostics &operator=(const Diagnostics &) = delete;
};
