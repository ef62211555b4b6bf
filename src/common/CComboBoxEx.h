#pragma once

#include <QComboBox>

class QListView;

/// A combo box that tells when its open popup closes, however that came about.
class CComboBoxEx : public QComboBox
{
    Q_OBJECT

public:
    explicit CComboBoxEx(QWidget *parent);

    void showPopup() override;
    void hidePopup() override;

signals:
    /// The popup closes; it is still visible.
    void signalFocusOut();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QListView *listView;     ///< what the popup shows; belongs to the popup
    bool popupShown = false; ///< nothing reads it yet
};
