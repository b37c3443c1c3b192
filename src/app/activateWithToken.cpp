// SPDX-License-Identifier: MIT
#include "app/activateWithToken.h"

#include "app/Application.h"
#include "platform/ActivationToken.h"
#include "platform/windowSystem.h"
#include "window/WindowController.h"
#include "x11/activateOnX11.h"

#include <QWindow>

namespace tunedeck {

namespace {
/// While it exists, the toolkit activates windows on Wayland by right of the token. Programs that are started later
/// have no part in it.
class TokenInUse {
public:
    explicit TokenInUse(const QString &token)
        : m_isOne(!token.isEmpty())
    {
        if (m_isOne) {
            qputenv(variable, token.toUtf8());
        }
    }
    ~TokenInUse()
    {
        if (m_isOne) {
            qunsetenv(variable);
        }
    }
    TokenInUse(const TokenInUse &) = delete;
    TokenInUse &operator=(const TokenInUse &) = delete;

private:
    static constexpr const char *variable = "XDG_ACTIVATION_TOKEN";

    const bool m_isOne;
};

QWindow &mainWindow(Application &application)
{
    return *application.windowController().window().windowHandle();
}
} // namespace

void showByRight(Application &application, const Startup &startup)
{
    QWindow &window = mainWindow(application);
    tellStartupOnX11(window, startup);
    const auto useUp = [&window, startup] {
        if (isWayland() && !startup.token.isEmpty()) {
            const TokenInUse token(startup.token);
            window.requestActivate();
        }
        endStartupOnX11(startup);
    };
    // A Wayland desktop gives the keyboard to no window that is not on the screen.
    QObject::connect(&application.windowController().window(), &Window::canBeSeenChanged, &application, useUp,
        Qt::SingleShotConnection);
    application.showMainWindow();
}

void showWithoutActivating(Application &application)
{
    // A widget's attribute counts when its native window is made, and this one has been made.
    constexpr const char *property = "_q_showWithoutActivating";
    QWindow &window = mainWindow(application);
    window.setProperty(property, true);
    application.showMainWindow();
    window.setProperty(property, QVariant());
}

void reopenByRight(Application &application, const Startup &startup)
{
    const TokenInUse token(startup.token);
    application.reopen();
    // After the toolkit has asked: what comes last counts.
    activateOnX11(mainWindow(application), startup);
    endStartupOnX11(startup);
}

} // namespace tunedeck
