#pragma once

class QPoint;
class QWidget;

/// The edge or corner of a frameless window under the cursor. The values are fixed.
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

/// The edge or corner of @p widget at @p globalPos. Edges are three pixels wide; corners take
/// precedence.
[[nodiscard]] ResizeDirection resizeDirectionAt(const QWidget &widget, const QPoint &globalPos);
