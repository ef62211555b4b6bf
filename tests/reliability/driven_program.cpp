#include "CConfiguration.h"
#include "ItemBoxes.h"
#include "Part.h"
#include "SingleApplication.h"
#include "StartUp.h"
#include "Vantrel.h"

#include <QPushButton>
#include <QTimer>

#include <cstdio>

/// The program driven by code, for tests that need a process:
///
///   driven_program ZIP...   ticks every item, presses Export once per zip, closes the window
///
/// It prints "second" and exits if a copy is running; otherwise "exporting" and "exported" per zip.
namespace {

void tell(const char *line)
{
    std::printf("%s\n", line);
    std::fflush(stdout);
}

void drive(Vantrel &window, const QStringList &zips)
{
    for (QCheckBox *box : itemBoxes(window))
        box->click();
    for (const QString &zip : zips) {
        CConfiguration::instance()->exportPath = zip;
        tell("exporting");
        part<QPushButton>(window, "btnExport").click(); // returns when the wait dialog closes
        tell("exported");
    }
    window.close();
}

} // namespace

int main(int argc, char **argv)
{
    configureQtBeforeStart();
    SingleApplication app(argc, argv, "Pemberk Vantrel");
    if (app.isRunning()) {
        tell("second");
        return 0;
    }
    useSystemFont();
    Vantrel window;
    window.show();
    restoreEnvironment();
    QTimer::singleShot(0, &window, [&] { drive(window, QApplication::arguments().mid(1)); });
    return QApplication::exec();
}
