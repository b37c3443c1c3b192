// SPDX-License-Identifier: MIT
#include "above/aboveRoadOfSession.h"

#include "above/CompositorSocket.h"
#include "above/HyprlandRoad.h"
#include "above/KWinRoad.h"
#include "above/SwayRoad.h"
#include "platform/BundleInfo.h"

#include <QCoreApplication>

namespace tunedeck {

namespace {
QString windowTitle()
{
    return bundleInfo(u"CFBundleName").value_or(QString());
}

/// Hyprland's socket, or an empty path.
QString hyprlandSocket(const QProcessEnvironment &environment)
{
    const QString runtime = environment.value(QStringLiteral("XDG_RUNTIME_DIR"));
    const QString instance = environment.value(QStringLiteral("HYPRLAND_INSTANCE_SIGNATURE"));
    return runtime.isEmpty() || instance.isEmpty() ? QString()
                                                   : QStringLiteral("%1/hypr/%2/.socket.sock").arg(runtime, instance);
}
} // namespace

std::unique_ptr<AboveRoad> aboveRoadOfSession(const QDBusConnection &bus, const QProcessEnvironment &environment)
{
    const QStringList desktops = environment.value(QStringLiteral("XDG_CURRENT_DESKTOP")).split(u':');
    if (desktops.contains(QLatin1String("KDE"), Qt::CaseInsensitive)) {
        return std::make_unique<KWinRoad>(bus, windowTitle());
    }
    const qint64 processId = QCoreApplication::applicationPid();
    // Variables of an earlier session may be left in the environment that systemd gives programs.
    if (const QString socket = hyprlandSocket(environment); CompositorSocket::isListening(socket)) {
        return std::make_unique<HyprlandRoad>(socket, processId, windowTitle());
    }
    if (const QString socket = environment.value(QStringLiteral("SWAYSOCK")); CompositorSocket::isListening(socket)) {
        return std::make_unique<SwayRoad>(socket, processId, windowTitle());
    }
    return nullptr;
}

} // namespace tunedeck
