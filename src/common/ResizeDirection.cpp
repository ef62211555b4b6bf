#include "ResizeDirection.h"

#include <QWidget>

namespace {
constexpr int bandWidth = 2;
}

ResizeDirection resizeDirectionAt(const QWidget &widget, const QPoint &globalPos)
{
    const QPoint tl = widget.mapToGlobal(widget.rect().topLeft());
    const QPoint rb = widget.mapToGlobal(widget.rect().bottomRight());
    const auto within = [](int from, int value, int to) { return from <= value && value <= to; };
    const bool left = within(tl.x(), globalPos.x(), tl.x() + bandWidth);
    const bool right = within(rb.x() - bandWidth, globalPos.x(), rb.x());
    const bool top = within(tl.y(), globalPos.y(), tl.y() + bandWidth);
    const bool bottom = within(rb.y() - bandWidth, globalPos.y(), rb.y());

    if (left && top)
        return ResizeDirection::LeftTop;
    if (right && bottom)
        return ResizeDirection::RightBottom;
    if (left && bottom)
        return ResizeDirection::LeftBottom;
    if (right && top)
        return ResizeDirection::RightTop;
    if (left)
        return ResizeDirection::Left;
    if (right)
        return ResizeDirection::Right;
    if (top)
        return ResizeDirection::Up;
    if (bottom)
        return ResizeDirection::Down;
    return ResizeDirection::None;
}
