#pragma once

class QKeyEvent;
class QWidget;

/// If @p event is Return or Enter and a button of @p window, but not a check box, has the focus,
/// clicks the button and returns true. GUI thread only.
bool clickFocusedButton(const QWidget &window, const QKeyEvent &event);
