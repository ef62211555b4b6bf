#include "ModalDialog.h"

#include <QDialog>

#include <utility>

namespace {

ModalDialog::Runner &currentRunner()
{
    static ModalDialog::Runner runner;
    return runner;
}

} // namespace

int ModalDialog::run(QDialog &dialog)
{
    return currentRunner() ? currentRunner()(dialog) : dialog.exec();
}

void ModalDialog::setRunner(Runner runner)
{
    currentRunner() = std::move(runner);
}
