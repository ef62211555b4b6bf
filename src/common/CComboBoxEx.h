#pragma once

#include <QComboBox>

class QListView;

/// A combo box that signals when its popup closes, for whatever reason.
class CComboBoxEx : public QComboBox
{
    Q_OBJECT

public:
    explicit CComboBoxEx(QWidget *parent);

    void showPopup() override;
    void hidePopup() override;

signals:
    /// The popup is closing; it is still visible.
    void signalFocusOut();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QListView *listView;     ///< owned by the popup
    bool popupShown = false; ///< not read
};
