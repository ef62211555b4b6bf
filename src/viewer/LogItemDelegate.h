#pragma once

#include <QStyledItemDelegate>

/// Lays out no more of a long cell than can be seen. The cell itself keeps everything.
class LogItemDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QString displayText(const QVariant &value, const QLocale &locale) const override;
};
