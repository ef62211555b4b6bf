#pragma once

#include <QDialog>
#include <QMessageBox>

#include <memory>

class QPushButton;

namespace Ui {
class CommonMessageBox;
}

/// A message box in the skin's look, with any of the buttons OK, Cancel, Yes and No. exec() returns
/// QDialog::Accepted for OK and Yes, otherwise QDialog::Rejected; getClickedButton() returns the
/// button.
///
/// Enter presses the button that has the focus, otherwise Yes, else OK, else the first one. Esc and
/// the title bar's close button press Cancel, else No, else the only button; without these they
/// reject the dialog.
class CommonMessageBox : public QDialog
{
    Q_OBJECT

public:
    /// @p text is plain text. Of @p buttons only the four above are shown; OK if there are none.
    explicit CommonMessageBox(const QString &text,
                              QMessageBox::StandardButtons buttons = QMessageBox::Ok,
                              QWidget *parent = nullptr);
    ~CommonMessageBox() override;

    /// The button that closed the dialog; QMessageBox::NoButton before that.
    [[nodiscard]] QMessageBox::StandardButton getClickedButton() const;

protected:
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private slots:
    void on_btnOK_clicked();
    void on_btnCancel_clicked();
    void on_btnYes_clicked();
    void on_btnNo_clicked();

private:
    void offer(QMessageBox::StandardButtons buttons);
    void fitToText();
    void answer(QMessageBox::StandardButton button);
    void dismiss();

    std::unique_ptr<Ui::CommonMessageBox> ui;
    QMessageBox::StandardButton clickedButton = QMessageBox::NoButton;
    QPushButton *escapeButton = nullptr; ///< null: Esc presses no button
};
