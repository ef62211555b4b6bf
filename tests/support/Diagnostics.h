#pragma once

#include <QLoggingCategory>
#include <QString>

/// Switches the program's diagnostics, or one category, on while it exists.
class Diagnostics
{
public:
    explicit Diagnostics(const QString &categories = QString("vantrel.*"))
    {
        QLoggingCategory::setFilterRules(categories + "=true");
    }
    ~Diagnostics() { QLoggingCategory::setFilterRules(QString()); }
    Diagnostics(const Diagnostics &) = delete;
    Diagnostics &operator=(const Diagnostics &) = delete;
};
