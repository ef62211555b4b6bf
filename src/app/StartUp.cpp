#include "StartUp.h"

#include <QApplication>
#include <QFont>
#include <QScreen>
#include <QWidget>
#include <private/qhighdpiscaling_p.h>

#include <utility>
#include <vector>

namespace {

std::vector<const char *> ownVariables; ///< set by prefer(), removed by restoreEnvironment()

/// Sets an environment variable unless the user has set it.
void prefer(const char *variable, const char *value)
{
    if (!qEnvironmentVariableIsSet(variable) && qputenv(variable, value))
        ownVariables.push_back(variable);
}

void raiseScaleToOne(QScreen *screen)
{
    if (QHighDpiScaling::factor(screen) >= 1)
        return;
    const QScreen *const none = nullptr; // stands for the factor shared by all screens
    const qreal shared = QHighDpiScaling::factor(none);
    // Qt ignores a screen's own factor of 1 until some screen has had another one.
    for (const qreal own : {2.0, 1 / shared})
        QHighDpiScaling::setScreenFactor(screen, own);
}

} // namespace

void configureQtBeforeStart()
{
    QGuiApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QGuiApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);

    prefer("QT_XCB_GL_INTEGRATION", "none"); // only read by Qt's X11 platform
    // Windows with their own title bars position themselves, which Wayland does not allow.
    if (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") && !qEnvironmentVariableIsEmpty("DISPLAY"))
        prefer("QT_QPA_PLATFORM", "xcb;wayland");
}

void restoreEnvironment()
{
    for (const char *variable : std::exchange(ownVariables, {}))
        qunsetenv(variable);
}

void keepScaleAtLeastOne()
{
    const auto watch = [](QScreen *screen) {
        raiseScaleToOne(screen);
        QObject::connect(screen, &QScreen::logicalDotsPerInchChanged, screen,
                         [screen] { raiseScaleToOne(screen); });
    };
    for (QScreen *screen : QGuiApplication::screens())
        watch(screen);
    QObject::connect(qApp, &QGuiApplication::screenAdded, watch);
}

void fitToScreen(QWidget &window)
{
    const QSize room = QGuiApplication::primaryScreen()->availableSize();
    const auto fit = [room](QWidget &widget) {
        widget.ensurePolished();
        // The window's own minimum takes precedence over its layout's.
        const QSize least = widget.minimumSize().expandedTo(widget.minimumSizeHint());
        if (least.width() > room.width())
            widget.setMinimumWidth(room.width());
        if (least.height() > room.height())
            widget.setMinimumHeight(room.height());
        widget.resize(widget.size().boundedTo(room));
    };
    fit(window);
    for (QWidget *child : window.findChildren<QWidget *>()) {
        if (child->windowType() == Qt::Dialog)
            fit(*child);
    }
}

void useSystemFont()
{
    // Qt exposes it as the font of its message boxes.
    QApplication::setFont(QApplication::font("QMessageBox"));
}
