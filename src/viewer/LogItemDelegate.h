#pragma once

#include <QStyledItemDelegate>

/// Lays out only the visible part of a long cell. The cell itself keeps everything.
class LogItemDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QString displayText(const QVariant &value, const QLocale &locale) const override;
};
