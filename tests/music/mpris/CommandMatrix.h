// SPDX-License-Identifier: MIT
#pragma once

#include "DemoPlayerProcess.h"
#include "MusicAtRest.h"
#include "music/MusicConnector.h"
#include "music/mpris/MprisMusicApplication.h"
#include "platform/ApplicationLauncher.h"
#include "platform/UserDefaults.h"
#include "platform/WindowActivation.h"
#include "support/PrivateBus.h"

#include <QObject>
#include <QTemporaryDir>

#include <memory>

namespace tunedeck {

/// Two players, of which one is on show, and a command: one row of a test for each combination of what the players do,
/// the command, and the reason why the player is followed. The command must reach the player that was on show when it
/// was given, as often as it was given, and the display must show what that player then does.
class CommandMatrix : public QObject {
    Q_OBJECT

protected:
    /// How soon the player on show answers.
    enum class Answers { AtOnce, Late, Never };

    /// The data of runRow().
    static void addRows();
    void runRow(Answers answers);

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

private:
    enum class Scene { OnePlays, TwoPlay, PlayingAndPaused, BothPaused };
    enum class Command { Pause, Play, Next, Hold, Volume, Seek, Playlist };
    enum class Choice { Automatic, Pinned };
    struct Row {
        Scene scene;
        Command command;
        Choice choice;
    };

    struct Player {
        QString name; ///< after "org.mpris.MediaPlayer2."
        int track;
        QString title;
        QString nextTitle;
        std::unique_ptr<DemoPlayerProcess> process = {};
    };

    [[nodiscard]] static bool firstPlays(Scene scene) { return scene != Scene::BothPaused; }
    [[nodiscard]] static bool secondPlays(Scene scene) { return scene == Scene::TwoPlay; }
    [[nodiscard]] const Player &pinnedPlayer(const Row &row) const;
    [[nodiscard]] static bool isFirstPinned(const Row &row);
    [[nodiscard]] static bool isOnShowPlaying(const Row &row);
    [[nodiscard]] static bool isPossible(const Row &row);

    [[nodiscard]] bool bringIn(Player &player, bool isPlaying);
    void showMusic(const Row &row);
    [[nodiscard]] const Player *playerOnShow() const;
    [[nodiscard]] bool shows(const QString &title) const;
    void give(Command command);
    void awaitAnswer(Command command);
    void awaitSilence(Command command);
    [[nodiscard]] static QStringList expectedCalls(const Row &row, int track, Answers answers);
    void expectCalls(const Row &row, const Player &onShow, Answers answers);
    void expectEffect(const Row &row, const Player &onShow, Answers answers);
    [[nodiscard]] bool comesToRest() const { return m_rest.isReached(*m_music, m_musicConnection); }

    std::unique_ptr<PrivateBus> m_bus;
    QDBusConnection m_control{QStringLiteral("none")};
    Player m_first{QStringLiteral("first"), 1, QStringLiteral("Borrowed Thimble Waltz"),
        QStringLiteral("Nobody's Umbrella Stand")};
    Player m_second{
        QStringLiteral("second"), 6, QStringLiteral("רחוב הפנסים השקטים"), QStringLiteral("100% Tür #7.wav")};

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
    ApplicationLauncher m_launcher;
    WindowActivation m_windowActivation;
    MusicAtRest m_rest;
    int m_connections = 0;
    QDBusConnection m_musicConnection{QStringLiteral("none")};
    std::unique_ptr<MprisMusicApplication> m_music;
    std::unique_ptr<MusicConnector> m_connector;
};

} // namespace tunedeck
