#include "ResizeDirection.h"

#include <QWidget>

#include <utility>

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

    using D = ResizeDirection;
    const std::pair<bool, D> places[] = {{left && top, D::LeftTop},
                                         {right && bottom, D::RightBottom},
                                         {left && bottom, D::LeftBottom},
                                         {right && top, D::RightTop},
                                         {left, D::Left},
                                         {right, D::Right},
                                         {top, D::Up},
                                         {bottom, D::Down}};
    for (const auto &[isThere, direction] : places) {
        if (isThere)
            return direction;
    }
    return D::None;
}
