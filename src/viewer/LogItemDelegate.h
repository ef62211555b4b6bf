#pragma once

#include <QStyledItemDelegate>

/// Shows log cells as the plain text that they are, however long: no more is laid out than can be
/// seen, and markup in a log is no markup on the screen. The cells themselves keep everything.
class LogItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QString displayText(const QVariant &value, const QLocale &locale) const override;

public slots:
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;
};
