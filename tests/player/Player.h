// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Appearance.h"
#include "platform/UserDefaults.h"
#include "platform/WindowActivation.h"
#include "player/DrawerHost.h"
#include "player/LcdView.h"
#include "player/PlayerView.h"
#include "player/ScrollingMarqueeView.h"
#include "player/ViewController.h"
#include "skin/looks/SkinEnvironment.h"
#include "skin/views/VolumeSlider.h"
#include "support/ScriptedFollowablePlayers.h"
#include "support/ScriptedMusicApplication.h"

#include <QAccessible>
#include <QAction>
#include <QDBusConnection>
#include <QTemporaryDir>
#include <QTimer>
#include <QWheelEvent>

#include <optional>

namespace tunedeck {

class ScriptedDrawerHost : public DrawerHost {
public:
    using DrawerHost::DrawerHost;

    [[nodiscard]] bool isExpanded() const override { return m_isExpanded; }
    void setExpanded(bool expanded) override { m_isExpanded = expanded; }
    void finishResize() { Q_EMIT isExpandedChanged(m_isExpanded); }

private:
    bool m_isExpanded = false;
};

inline MusicTrack aTrack()
{
    return {QStringLiteral("Blues"), QStringLiteral("Band"), QStringLiteral("Record"), {}, 200.0};
}

inline QVariantMap localTrackInfo()
{
    return {{UserInfoKey::persistentId, 1}, {UserInfoKey::playerState, QStringLiteral("Playing")},
        {UserInfoKey::totalTime, 200.0}, {UserInfoKey::location, QStringLiteral("file:///blues")}};
}

inline QVariantMap liveStreamInfo()
{
    return {{UserInfoKey::persistentId, 2}, {UserInfoKey::playerState, QStringLiteral("Playing")},
        {UserInfoKey::storeUrl, QStringLiteral("https://radio.example")}};
}

inline QVariantMap stoppedInfo()
{
    return {{UserInfoKey::playerState, QStringLiteral("Stopped")}};
}

/// A player's view and everything that it needs.
struct Player {
    explicit Player(bool isMusicRunning = true)
    {
        music.setRunning(isMusicRunning);
        defaults.registerDefaults({{SettingsKey::remainingTimeEnabled, true}, {SettingsKey::appearanceClassic, true},
            {SettingsKey::appearanceUpdatesDockIcon, true}, {SettingsKey::volumeButtonsHidden, false}});
        connector.emplace(music, windowActivation);
        controller.emplace(environment(), view);
    }

    [[nodiscard]] ViewController::Environment environment()
    {
        return {*connector, defaults, appearance, windowActivation, players, drawerHost};
    }
    [[nodiscard]] SkinEnvironment skin() const { return {defaults, appearance, windowActivation}; }

    void play(const QVariantMap &userInfo, FourCharCode state = PlayerState::playing)
    {
        music.answers.playerState = state;
        music.answers.currentTrack = aTrack();
        music.answers.playerPosition = 10.0;
        Q_EMIT music.playerInfo(userInfo);
    }

    void stop()
    {
        music.answers.playerState = PlayerState::stopped;
        Q_EMIT music.playerInfo(stoppedInfo());
    }

    [[nodiscard]] QStringList displayed() { return view.lcd().trackInfoLabel().displayStrings(); }

    [[nodiscard]] bool isItemEnabled(const QString &identifier) const
    {
        QAction item;
        item.setObjectName(identifier);
        return controller->validateMenuItem(item);
    }

    [[nodiscard]] QTimer &timer(QStringView name) const { return *controller->findChild<QTimer *>(name.toString()); }

    void turnWheel(int notches) { turnWheelOver(view.volumeSlider(), notches * QWheelEvent::DefaultDeltasPerStep); }
    /// `eighths` is the turn in eighths of a degree.
    static void turnWheelOver(QWidget &control, int eighths)
    {
        const QPointF centre = QRectF(control.rect()).center();
        QWheelEvent event(centre, control.mapToGlobal(centre), {}, {0, eighths}, Qt::NoButton, Qt::NoModifier,
            Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&control, &event);
    }

    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("settings"))};
    Appearance appearance{defaults, QDBusConnection(QStringLiteral("none"))};
    WindowActivation windowActivation;
    ScriptedMusicApplication music;
    ScriptedFollowablePlayers players;
    ScriptedDrawerHost drawerHost;
    std::optional<MusicConnector> connector;
    PlayerView view{skin()};
    std::optional<ViewController> controller;
};

inline QAccessibleInterface &accessible(QWidget &widget)
{
    return *QAccessible::queryAccessibleInterface(&widget);
}

} // namespace tunedeck
