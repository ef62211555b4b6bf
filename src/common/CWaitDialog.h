#pragma once

#include <QDialog>
#include <QPoint>
#include <QTimer>

#include <functional>
#include <memory>

class QMovie;
class QProgressBar;

namespace Ui {
class CWaitDialog;
}

/// The busy indicator during an export. Its owner ends it with close(). After a second it also
/// shows the progress, if known.
class CWaitDialog : public QDialog
{
    Q_OBJECT

public:
    explicit CWaitDialog(QWidget *parent);
    ~CWaitDialog() override;

    void setTitle(const QString &title);

    /// Sets the function that returns the progress from 0 to 1; negative if unknown. Called on the
    /// GUI thread while the dialog is shown.
    void setProgressSource(std::function<double()> source);

    /// Shows the dialog with @p text below the animation and returns the result of exec() once it
    /// is closed. Events are handled meanwhile.
    int showAndWait(const QString &text);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void setUpProgressBar();
    void centreOnParent();
    void showProgress();

    std::unique_ptr<Ui::CWaitDialog> ui;
    std::unique_ptr<QMovie> movie;
    QPoint pressPos;
    bool pressed = false;
    std::function<double()> progressSource;
    QProgressBar *progressBar = nullptr; ///< not in the form, whose contents are fixed
    QTimer progressTimer;
};
