#pragma once

#include <QCheckBox>
#include <QRegularExpression>

/// The check boxes in @p window, the main window, of all export items but the SDK logs.
[[nodiscard]] inline QList<QCheckBox *> itemBoxes(const QWidget &window)
{
    QList<QCheckBox *> boxes;
    for (QCheckBox *box : window.findChildren<QCheckBox *>(QRegularExpression("^checkBox"))) {
        if (box->window() == &window && box->objectName() != "checkBoxSDKLog")
            boxes.append(box);
    }
    return boxes;
}
