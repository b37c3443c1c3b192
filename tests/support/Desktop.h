// SPDX-License-Identifier: MIT
#pragma once

#include "app/Application.h"
#include "platform/Appearance.h"
#include "platform/DesktopEntries.h"
#include "platform/UserDefaults.h"
#include "platform/WindowActivation.h"
#include "platform/bus/PortalSettings.h"
#include "preferences/DesktopSettings.h"
#include "preferences/Updater.h"
#include "support/ScriptedFollowablePlayers.h"
#include "support/ScriptedMusicApplication.h"
#include "support/failOnWarning.h"

#include <QDBusConnection>
#include <QTemporaryDir>
#include <QTest>

namespace tunedeck {

class CountingUpdater : public Updater {
public:
    int checks = 0;
    [[nodiscard]] bool looksForUpdates() const override { return true; }
    void checkForUpdates() override { ++checks; }
};

class SilentDesktopSettings : public DesktopSettings {
public:
    [[nodiscard]] QString note(const QString &) const override { return {}; }
};

/// The services that the program stands on, with settings of the test's own and no bus.
struct Desktop {
    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("settings"))};
    Appearance appearance{defaults, QDBusConnection(QStringLiteral("none"))};
    WindowActivation windowActivation;
    ScriptedMusicApplication music;
    ScriptedFollowablePlayers players;
    DesktopEntries desktopEntries;
    CountingUpdater updater;
    SilentDesktopSettings desktopSettings;

    [[nodiscard]] Application::Environment environment()
    {
        return {music, defaults, appearance, windowActivation, players, desktopEntries, updater, desktopSettings};
    }

    /// Announces the change as the portal does.
    void changeSetting(const QString &group, const QString &key, const QVariant &value)
    {
        Q_EMIT appearance.findChild<PortalSettings *>()->read({group, key}, value);
    }

    void play(const QVariantMap &userInfo)
    {
        music.answers.playerState = PlayerState::playing;
        music.answers.currentTrack =
            MusicTrack{QStringLiteral("Salt & Pepper"), QStringLiteral("Band"), QStringLiteral("Record"), {}, 200.0};
        Q_EMIT music.playerInfo(userInfo);
    }
    void playTrack()
    {
        play({{UserInfoKey::persistentId, 1}, {UserInfoKey::totalTime, 200.0},
            {UserInfoKey::location, QStringLiteral("file:///salt")}});
    }
    void playLiveStream()
    {
        play({{UserInfoKey::persistentId, 2}, {UserInfoKey::storeUrl, QStringLiteral("https://radio.example")}});
    }
};

} // namespace tunedeck
