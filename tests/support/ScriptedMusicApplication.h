// SPDX-License-Identifier: MIT
#pragma once

#include "music/MusicApplication.h"
#include "platform/ActivationToken.h"

#include <QMap>
#include <QSet>
#include <QStringList>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>

namespace tunedeck {

/// A Music that does what the test says. It answers what `answers` and `answerInBackground()` hold and nothing else: a
/// command it is sent is recorded, and changes no answer.
///
/// Not answered are a member without a value, a command that is in `unansweredCommands`, and, while Music does not run,
/// all but activate(). What is not answered is not recorded, as a real Music would not hear of it either.
class ScriptedMusicApplication : public MusicApplication {
public:
    struct Answers {
        std::optional<FourCharCode> playerState = PlayerState::stopped;
        std::optional<MusicTrack> currentTrack = {};
        std::optional<double> playerPosition = {};
        std::optional<int> soundVolume = {};
        std::optional<bool> shuffleEnabled = {};
        std::optional<FourCharCode> songRepeat = {};
    };

    struct BackgroundAnswers {
        std::optional<MusicPlaylist> currentPlaylist = {};
        std::optional<QVariantList> playlistIds = {};
        std::optional<QVariantList> playlistNames = {};
        PlaylistSource playlistSource = PlaylistSource::music;
        bool hasMorePlaylists = false;
        std::optional<QList<MusicAirPlayDevice>> currentAirPlayDevices = {};
    };

    using MusicApplication::MusicApplication;

    Answers answers;
    bool isWatched = true;
    bool isLaunchable = true;
    PlayerSound *playerSound = nullptr; ///< at first the program knows no sound server
    bool hasVolumeOfStreams = false;
    /// Calls by name, such as "playpause" or "setSoundVolume".
    QSet<QString> unansweredCommands;

    void setRunning(bool running) { m_isRunning = running; }
    void launch()
    {
        m_isRunning = true;
        Q_EMIT didLaunch();
        Q_EMIT playerDidChange();
    }
    void quit()
    {
        m_isRunning = false;
        Q_EMIT didTerminate();
        Q_EMIT playerDidChange();
    }
    /// At first the player has no name, and no window that it could show.
    void setPlayer(const QString &name, bool hasWindow)
    {
        m_playerName = name;
        m_hasWindow = hasWindow;
        Q_EMIT playerDidChange();
    }

    void setResponding(bool responding)
    {
        m_isResponding = responding;
        Q_EMIT respondingDidChange(responding);
    }

    void answerInBackground(const BackgroundAnswers &backgroundAnswers)
    {
        const std::lock_guard lock(m_mutex);
        m_backgroundAnswers = backgroundAnswers;
    }
    /// At first every control is taken.
    void answerControl(MusicControl control, ControlAnswer answer)
    {
        m_controls.insert(control, answer);
        Q_EMIT controlsDidChange();
    }

    /// Lets the next background reads wait until releaseBackground(), but no longer than a real Music's deadline.
    void holdBackground()
    {
        const std::lock_guard lock(m_mutex);
        m_isHeld = true;
    }
    void releaseBackground()
    {
        const std::lock_guard lock(m_mutex);
        m_isHeld = false;
        m_released.notify_all();
    }
    void endBackground() override { releaseBackground(); }

    /// The commands in the order sent, with their argument: "playpause", "setSoundVolume 55", "setSongRepeat kRp1".
    [[nodiscard]] QStringList commands() const { return m_commands; }
    /// The commands among the reads of the main thread, in the order they came: "playerState", "playpause".
    [[nodiscard]] QStringList calls() const { return m_calls; }
    /// The background reads, and the commands sent there, in the order they came: "currentPlaylist", "playPlaylist 7".
    [[nodiscard]] QStringList backgroundReads() const
    {
        const std::lock_guard lock(m_mutex);
        return m_backgroundReads;
    }
    void clearRecords()
    {
        m_commands.clear();
        m_calls.clear();
        const std::lock_guard lock(m_mutex);
        m_backgroundReads.clear();
    }

    [[nodiscard]] bool isRunning() const override { return m_isRunning; }
    [[nodiscard]] bool isResponding() const override { return m_isResponding; }
    void setWatched(bool watched) override { isWatched = watched; }
    [[nodiscard]] bool canBeLaunched() const override { return isLaunchable; }
    bool activate() override { return isAnswered(QStringLiteral("activate")) && recorded(QStringLiteral("activate")); }

    [[nodiscard]] QString playerName() const override { return m_isRunning ? m_playerName : QString(); }
    [[nodiscard]] bool canShowPlayer() const override { return m_isRunning && m_hasWindow; }
    bool showPlayer(const ActivationToken &token) override
    {
        const QString text = token.x11StartupId + token.waylandToken;
        return m_hasWindow
            && (text.isEmpty() ? sent(QStringLiteral("showPlayer")) : sent(QStringLiteral("showPlayer"), text));
    }

    [[nodiscard]] std::optional<FourCharCode> playerState() const override
    {
        return answered(QStringLiteral("playerState"), answers.playerState);
    }
    [[nodiscard]] std::optional<MusicTrack> currentTrack() const override
    {
        return answered(QStringLiteral("currentTrack"), answers.currentTrack);
    }
    [[nodiscard]] std::optional<double> playerPosition() const override
    {
        return answered(QStringLiteral("playerPosition"), answers.playerPosition);
    }
    bool setPlayerPosition(double seconds) override
    {
        return sent(QStringLiteral("setPlayerPosition"), QString::number(seconds));
    }
    [[nodiscard]] std::optional<int> soundVolume() const override
    {
        return answered(QStringLiteral("soundVolume"), answers.soundVolume);
    }
    bool setSoundVolume(qint64 volume) override
    {
        return sent(QStringLiteral("setSoundVolume"), QString::number(volume));
    }
    [[nodiscard]] bool isVolumeOfStreams() const override { return hasVolumeOfStreams; }
    [[nodiscard]] PlayerSound *sound() const override { return playerSound; }
    [[nodiscard]] std::optional<bool> shuffleEnabled() const override
    {
        return answered(QStringLiteral("shuffleEnabled"), answers.shuffleEnabled);
    }
    bool setShuffleEnabled(bool enabled) override
    {
        return sent(QStringLiteral("setShuffleEnabled"), enabled ? QStringLiteral("true") : QStringLiteral("false"));
    }
    [[nodiscard]] std::optional<FourCharCode> songRepeat() const override
    {
        return answered(QStringLiteral("songRepeat"), answers.songRepeat);
    }
    bool setSongRepeat(FourCharCode repeat) override { return sent(QStringLiteral("setSongRepeat"), textOf(repeat)); }
    [[nodiscard]] ControlAnswer answerTo(MusicControl control) const override
    {
        return m_isRunning ? m_controls.value(control, ControlAnswer::taken) : ControlAnswer::taken;
    }

    bool playpause() override { return sent(QStringLiteral("playpause")); }
    bool nextTrack() override { return sent(QStringLiteral("nextTrack")); }
    bool backTrack() override { return sent(QStringLiteral("backTrack")); }
    bool fastForward() override { return sent(QStringLiteral("fastForward")); }
    bool rewind() override { return sent(QStringLiteral("rewind")); }
    bool resume() override { return sent(QStringLiteral("resume")); }

    [[nodiscard]] std::optional<MusicPlaylist> currentPlaylist() const override
    {
        return answeredInBackground(QStringLiteral("currentPlaylist"), &BackgroundAnswers::currentPlaylist);
    }
    [[nodiscard]] std::optional<QVariantList> playlistIds() const override
    {
        return answeredInBackground(QStringLiteral("playlistIds"), &BackgroundAnswers::playlistIds);
    }
    [[nodiscard]] std::optional<QVariantList> playlistNames() const override
    {
        return answeredInBackground(QStringLiteral("playlistNames"), &BackgroundAnswers::playlistNames);
    }
    [[nodiscard]] PlaylistSource playlistSource() const override
    {
        const std::lock_guard lock(m_mutex);
        return m_backgroundAnswers.playlistSource;
    }
    [[nodiscard]] bool hasMorePlaylists() const override
    {
        const std::lock_guard lock(m_mutex);
        return m_backgroundAnswers.hasMorePlaylists;
    }
    [[nodiscard]] std::optional<QList<MusicAirPlayDevice>> currentAirPlayDevices() const override
    {
        return answeredInBackground(QStringLiteral("currentAirPlayDevices"), &BackgroundAnswers::currentAirPlayDevices);
    }

    bool playPlaylist(qint64 id) override
    {
        const std::lock_guard lock(m_mutex);
        m_backgroundReads.append(QStringLiteral("playPlaylist ") + QString::number(id));
        return m_isRunning;
    }

private:
    static QString textOf(FourCharCode code)
    {
        QString text;
        for (const int shift : {24, 16, 8, 0}) {
            text += QLatin1Char(static_cast<char>(code >> shift & 0xff));
        }
        return text;
    }

    [[nodiscard]] bool isAnswered(const QString &command) const { return !unansweredCommands.contains(command); }

    bool recorded(const QString &command)
    {
        m_commands.append(command);
        m_calls.append(command);
        return true;
    }

    bool sent(const QString &command) { return m_isRunning && isAnswered(command) && recorded(command); }
    bool sent(const QString &command, const QString &argument)
    {
        return m_isRunning && isAnswered(command) && recorded(command + u' ' + argument);
    }

    template <typename Value>
    std::optional<Value> answered(const QString &member, const std::optional<Value> &answer) const
    {
        if (!m_isRunning || !answer) {
            return std::nullopt;
        }
        m_calls.append(member);
        return answer;
    }

    template <typename Value>
    std::optional<Value> answeredInBackground(
        const QString &member, std::optional<Value> BackgroundAnswers::*answer) const
    {
        constexpr std::chrono::seconds deadline(5);
        std::unique_lock lock(m_mutex);
        m_backgroundReads.append(member);
        m_released.wait_for(lock, deadline, [this] { return !m_isHeld; });
        if (!m_isRunning) {
            return std::nullopt;
        }
        return m_backgroundAnswers.*answer;
    }

    std::atomic<bool> m_isRunning = true;
    bool m_isResponding = true;
    QString m_playerName;
    bool m_hasWindow = false;
    QMap<MusicControl, ControlAnswer> m_controls;
    QStringList m_commands;
    mutable QStringList m_calls;

    mutable std::mutex m_mutex;
    mutable std::condition_variable m_released;
    bool m_isHeld = false;
    BackgroundAnswers m_backgroundAnswers;
    mutable QStringList m_backgroundReads;
};

} // namespace tunedeck
