// SPDX-License-Identifier: MIT
#include "above/keepAboveTexts.h"

#include <QCoreApplication>

namespace tunedeck {

namespace {
/// The texts have a context of their own.
struct KeepAbove {
    Q_DECLARE_TR_FUNCTIONS(tunedeck::KeepAbove)
};
} // namespace

QString keepAboveTitle(AboveWay way)
{
    switch (way) {
    case AboveWay::Window:
    case AboveWay::KWin:
        break;
    case AboveWay::Sway:
        return KeepAbove::tr("Keep Above All Other Windows (Floating, on Every Workspace)", "Menu command; on Sway");
    case AboveWay::Hyprland:
        return KeepAbove::tr("Keep Above All Other Windows (Pinned)", "Menu command; pinned: Hyprland's word");
    case AboveWay::Restart:
        return KeepAbove::tr("Keep Above All Other Windows (Restarts Tunedeck)", "Menu command");
    case AboveWay::Refused:
        return KeepAbove::tr("Keep Above All Other Windows (The Desktop Refuses)", "Menu command that had no effect");
    case AboveWay::Sandbox:
        return KeepAbove::tr(
            "Keep Above All Other Windows (Not Possible in a Sandbox)", "Menu command that is disabled");
    case AboveWay::None:
        return KeepAbove::tr("Keep Above All Other Windows (Not Possible on Wayland)", "Menu command that is disabled");
    }
    return KeepAbove::tr("Keep Above All Other Windows", "For Menu Command labels: Keep Above All Other Windows");
}

QString keepAboveToolTip(AboveWay way)
{
    switch (way) {
    case AboveWay::Window:
        break;
    case AboveWay::KWin:
        return KeepAbove::tr("KWin does this for Tunedeck.", "Tooltip of the menu command to keep the window above");
    case AboveWay::Sway:
        return KeepAbove::tr("Sway keeps it above tiled windows, but not above others that float.",
            "Tooltip of the menu command to keep the window above");
    case AboveWay::Hyprland:
        return KeepAbove::tr(
            "Hyprland floats and pins it on every workspace.", "Tooltip of the menu command to keep the window above");
    case AboveWay::Restart:
        return KeepAbove::tr("Tunedeck restarts through XWayland, where it can do this. It may look less sharp.",
            "Tooltip of the menu command to keep the window above; less sharp: on a scaled screen");
    case AboveWay::Refused:
    case AboveWay::Sandbox:
    case AboveWay::None:
        return KeepAbove::tr("Use the window's menu instead: Alt+Space in GNOME, Alt+F3 in KDE Plasma.",
            "Tooltip of the menu command to keep the window above all others");
    }
    return {};
}

QString keepAboveObstacle(AboveWay way)
{
    if (way == AboveWay::Restart) {
        return KeepAbove::tr("Tunedeck would have to restart through XWayland; choose the command in its Window menu",
            "On the command line: why the action to keep the window above is refused");
    }
    if (way == AboveWay::Sandbox) {
        return KeepAbove::tr("The sandbox keeps Tunedeck from the desktop; see the window's menu",
            "On the command line: why the action to keep the window above is refused");
    }
    return way == AboveWay::None
        ? KeepAbove::tr("On Wayland only the desktop can keep a window above all others; see the window's menu",
              "On the command line: why the action is refused")
        : QString();
}

QString keepAboveRefusal()
{
    return KeepAbove::tr("The desktop refuses; see the window's menu",
        "On the command line: the desktop has not kept the window above all others");
}

} // namespace tunedeck
