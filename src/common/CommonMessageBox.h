#pragma once

#include <QDialog>
#include <QMessageBox>

#include <memory>

class QPushButton;

namespace Ui {
class CommonMessageBox;
}

/// A question or a message in the look of the program's windows, with any of the buttons OK,
/// Cancel, Yes and No. exec() answers QDialog::Accepted for OK and Yes, else QDialog::Rejected;
/// getClickedButton() tells the two of each pair apart.
///
/// Enter presses the affirmative button unless another one has the focus. Esc and the title bar's
/// close button press Cancel, else No, else the only button there is; with none of these they
/// reject the dialog without a button.
class CommonMessageBox : public QDialog
{
    Q_OBJECT

public:
    /// @p text is shown as it is, without formatting. Of @p buttons those four are shown that are
    /// named; OK when none is.
    explicit CommonMessageBox(const QString &text,
                              QMessageBox::StandardButtons buttons = QMessageBox::Ok,
                              QWidget *parent = nullptr);
    ~CommonMessageBox() override;

    /// The button that ended the dialog; QMessageBox::NoButton before that.
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
    int clickedButton = QMessageBox::NoButton;
    QPushButton *escapeButton = nullptr; ///< null: Esc belongs to no button
};
