#pragma once

#include <QAccessibleWidget>

class QAbstractButton;

/// What assistive tools see of a button: their press or toggle is a click. Qt's own toggles a check
/// box behind the back of whoever waits for its clicked(), and offers nothing at all for a tool
/// button of the kind InstantPopup whose menu is not its own.
class AccessibleButton : public QAccessibleWidget
{
public:
    AccessibleButton(QAbstractButton *button, QAccessible::Role role);

    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] QStringList actionNames() const override;
    /// A click follows from the event loop, so that whoever asks need not wait for what it causes.
    void doAction(const QString &actionName) override;

private:
    [[nodiscard]] QAbstractButton *button() const;
    [[nodiscard]] const QString &clickName() const;
};
