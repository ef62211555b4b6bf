#pragma once

class QPoint;
class QWidget;

/// The edge or corner of a frameless window that the cursor is on. The values are fixed.
enum class ResizeDirection {
    Up = 0,
    Down = 1,
    Left = 2,
    Right = 3,
    LeftTop = 4,
    LeftBottom = 5,
    RightBottom = 6,
    RightTop = 7,
    None = 8
};

/// Which edge or corner of @p widget lies under @p globalPos: the outermost pixel and the two
/// beside it belong to an edge, and corners go before edges.
[[nodiscard]] ResizeDirection resizeDirectionAt(const QWidget &widget, const QPoint &globalPos);
