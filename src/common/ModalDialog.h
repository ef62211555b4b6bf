#pragma once

#include <functional>

class QDialog;

/// Modal dialogs that a window opens and waits for go through here, so that a test can answer them.
namespace ModalDialog {

using Runner = std::function<int(QDialog &dialog)>;

/// Runs @p dialog until the user ends it; returns QDialog::Accepted or QDialog::Rejected.
/// GUI thread only.
int run(QDialog &dialog);

/// Puts @p runner in the place of QDialog::exec(); an empty one puts exec() back.
void setRunner(Runner runner);

} // namespace ModalDialog
