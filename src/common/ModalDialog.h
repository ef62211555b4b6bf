#pragma once

#include <functional>

class QDialog;

/// All file dialogs are run through here, so that tests can answer them.
namespace ModalDialog {

using Runner = std::function<int(QDialog &dialog)>;

/// Runs @p dialog; returns QDialog::Accepted or QDialog::Rejected. GUI thread only.
int run(QDialog &dialog);

/// Replaces QDialog::exec() by @p runner; an empty one restores exec().
void setRunner(Runner runner);

} // namespace ModalDialog
