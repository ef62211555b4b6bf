#pragma once

#include <QLayout>
#include <QString>
#include <QWidget>

/// What one item of a layout is, in words that a test can compare: "lbTitle", "layout
/// horizontalRow", "spacer 20 x 50 Minimum Fixed".
[[nodiscard]] QString describedItem(const QLayout &layout, int index);

/// All items of @p layout, in order, in the words of describedItem().
[[nodiscard]] QStringList describedItems(const QLayout &layout);

/// The child of @p form that has this class and object name; none ends the program.
template <typename T>
T &part(const QObject &form, const char *name)
{
    T *found = form.findChild<T *>(QString::fromLatin1(name));
    if (found == nullptr)
        qFatal("the form has no %s", name);
    return *found;
}
