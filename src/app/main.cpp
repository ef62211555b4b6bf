#include "AccessibleControls.h"
#include "ComSecurity.h"
#include "FreeMemory.h"
#include "SingleApplication.h"
#include "Skin.h"
#include "StartUp.h"
#include "Vantrel.h"

int main(int argc, char **argv)
{
    mergeFreedBlocksImmediately();
    configureQtBeforeStart();
    SingleApplication app(argc, argv, QStringLiteral("Pemberk Vantrel"));
    // Set up here rather than in the worker, which uses the result: a system dialog might open
    // first and make COM initialise its security implicitly.
    (void)setUpComSecurity();
    if (app.isRunning()) {
        app.sendMessage(QStringLiteral("message from other instance."));
        return 0;
    }

    keepScaleAtLeastOne();
    useSystemFont();
    Skin::setFallbackFolder(QCoreApplication::applicationDirPath());
    installAccessibleControls();
    Vantrel window;
    // The window deliberately has no such slot: a second start does not affect the first copy. The
    // connection stays so that adding a slot is enough to change that.
    QObject::connect(&app, SIGNAL(messageAvailable(QString)), &window,
                     SLOT(receiveMessage(QString)));
    fitToScreen(window);
    window.show();
    restoreEnvironment();
    return QApplication::exec();
}
