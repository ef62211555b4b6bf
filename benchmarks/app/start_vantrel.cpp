// The program as main() starts it, from start to first paint, with a client registered in the
// home folder that is its argument.

#include "FirstPaint.h"
#include "SingleApplication.h"
#include "StartUp.h"
#include "Vantrel.h"

int main(int argc, char **argv)
{
    prepareStart();
    const SingleApplication app(argc, argv, QStringLiteral("Pemberk Vantrel benchmark"));
    const QString home = QString::fromLocal8Bit(argv[1]);
    Vantrel window(
        nullptr, {home, {home + QStringLiteral("/Client/QZviewer.exe,0"), QStringLiteral("\\/")}});
    FirstPaint watch;
    window.installEventFilter(&watch);
    window.show();
    return QApplication::exec();
}
