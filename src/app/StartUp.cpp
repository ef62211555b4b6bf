#include "StartUp.h"

#include <QApplication>
#include <QFont>

#include <utility>

namespace {

constexpr const char *glIntegration = "QT_XCB_GL_INTEGRATION"; // read by Qt's X11 platform alone
bool glIntegrationIsOurs = false;

} // namespace

void prepareStart()
{
    QGuiApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QGuiApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);

    if (!qEnvironmentVariableIsSet(glIntegration))
        glIntegrationIsOurs = qputenv(glIntegration, "none");
}

void settleStart()
{
    if (std::exchange(glIntegrationIsOurs, false))
        qunsetenv(glIntegration);
}

void useSystemFont()
{
    // Qt knows it as the font of its message boxes.
    QApplication::setFont(QApplication::font("QMessageBox"));
}
