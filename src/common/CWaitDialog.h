#pragma once

#include <QDialog>
#include <QPoint>

#include <memory>

class QMovie;

namespace Ui {
class CWaitDialog;
}

/// The busy indicator that is shown while an export runs. Its owner ends it with close().
class CWaitDialog : public QDialog
{
    Q_OBJECT

public:
    explicit CWaitDialog(QWidget *parent);
    ~CWaitDialog() override;

    void setTitle(const QString &title);

    /// Shows the dialog with @p text below the animation and returns the result of exec() once it
    /// was closed; events, those of the worker among them, are delivered meanwhile.
    int showAndWait(const QString &text);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void centreOnParent();

    std::unique_ptr<Ui::CWaitDialog> ui;
    std::unique_ptr<QMovie> movie;
    QPoint pressPos;
    bool pressed = false;
};
