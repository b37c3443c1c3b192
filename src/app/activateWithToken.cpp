// SPDX-License-Identifier: MIT
#include "app/activateWithToken.h"

#include "app/Application.h"
#include "platform/ActivationToken.h"
#include "platform/windowLog.h"
#include "platform/windowSystem.h"
#include "player/ViewController.h"
#include "widgets/bringToFront.h"
#include "widgets/canBeSeen.h"
#include "window/WindowController.h"
#include "x11/activateOnX11.h"
#include "x11/x11.h"

#include <QWindow>

namespace tunedeck {

namespace {
/// While this object exists, Qt activates windows on Wayland with the token, which it reads from the environment.
/// Programs that are started later do not inherit it.
class TokenInUse {
public:
    explicit TokenInUse(const QString &token)
        : m_isSet(!token.isEmpty())
    {
        if (m_isSet) {
            qputenv(variable, token.toUtf8());
        }
    }
    ~TokenInUse()
    {
        if (m_isSet) {
            qunsetenv(variable);
        }
    }
    TokenInUse(const TokenInUse &) = delete;
    TokenInUse &operator=(const TokenInUse &) = delete;

private:
    static constexpr const char *variable = "XDG_ACTIVATION_TOKEN";

    const bool m_isSet;
};

void logActivation(const ActivationToken &token)
{
    // A token lets any program activate a window, so the log does not hold it.
    qCDebug(windowLog) << "activate:" << (token.x11StartupId.isEmpty() ? "no startup id," : "a startup id,")
                       << (token.waylandToken.isEmpty() ? "no token" : "a token");
}

QWindow &mainWindow(Application &application)
{
    return *application.windowController().window().windowHandle();
}

bool isOnScreen(Application &application)
{
    const QWindow &window = mainWindow(application);
    return window.isVisible() && canBeSeen(window);
}
} // namespace

void activateWithToken(Application &application, const ActivationToken &token)
{
    logActivation(token);
    QWindow &window = mainWindow(application);
    setStartupIdOnX11(window, token);
    const auto useToken = [&window, token] {
        if (isWayland() && !token.waylandToken.isEmpty()) {
            const TokenInUse tokenInUse(token.waylandToken);
            window.requestActivate();
        }
        endStartupNotificationOnX11(token);
    };
    // A Wayland desktop gives the keyboard focus only to a window that is on the screen.
    QObject::connect(&application.windowController().window(), &Window::canBeSeenChanged, &application, useToken,
        Qt::SingleShotConnection);
    application.showMainWindow();
}

void showWithoutActivating(Application &application)
{
    // Qt::WA_ShowWithoutActivating has no effect here: Qt reads it when it makes the native window, which exists
    // already.
    constexpr const char *property = "_q_showWithoutActivating";
    QWindow &window = mainWindow(application);
    window.setProperty(property, true);
    application.showMainWindow();
    window.setProperty(property, QVariant());
}

void reopenWithToken(Application &application, const ActivationToken &token)
{
    logActivation(token);
    if (x11Connection()) {
        // Qt's request names the time of whatever happened to the window last, which need not be the user's doing.
        const ShowOnly showOnly;
        application.reopen();
    } else {
        const TokenInUse tokenInUse(token.waylandToken);
        application.reopen();
    }
    activateOnX11(mainWindow(application), token);
    endStartupNotificationOnX11(token);
}

void showOrHideWithToken(Application &application, const ActivationToken &token)
{
    if (isOnScreen(application)) {
        application.windowController().window().hide();
        endStartupNotificationOnX11(token);
    } else {
        reopenWithToken(application, token);
    }
}

void showOrHidePlaylistsWithToken(Application &application, const ActivationToken &token)
{
    const bool isWindowShown = !isOnScreen(application);
    if (isWindowShown) {
        reopenWithToken(application, token);
    } else {
        endStartupNotificationOnX11(token);
    }
    if (!isWindowShown || !application.windowController().isExpanded()) {
        application.playlistViewController();
        application.viewController().toggleDrawer();
    }
}

} // namespace tunedeck
