#include "FormItems.h"

#include <QMetaEnum>
#include <QSizePolicy>
#include <QStringList>
#include <QWidget>

namespace {

QString policyName(QSizePolicy::Policy policy)
{
    return QString::fromLatin1(QMetaEnum::fromType<QSizePolicy::Policy>().valueToKey(policy));
}

QString describedSpacer(const QSpacerItem &spacer)
{
    const QSize size = spacer.sizeHint();
    const QSizePolicy policy = spacer.sizePolicy();
    return QString("spacer %1 x %2 %3 %4")
        .arg(QString::number(size.width()), QString::number(size.height()),
             policyName(policy.horizontalPolicy()), policyName(policy.verticalPolicy()));
}

} // namespace

QString describedItem(const QLayout &layout, int index)
{
    QLayoutItem *item = layout.itemAt(index);
    if (item == nullptr)
        return "nothing";
    if (const QWidget *widget = item->widget())
        return widget->objectName();
    if (const QLayout *inner = item->layout())
        return "layout " + inner->objectName();
    return describedSpacer(*item->spacerItem());
}

QStringList describedItems(const QLayout &layout)
{
    QStringList items;
    for (int i = 0; i < layout.count(); ++i)
        items.append(describedItem(layout, i));
    return items;
}
