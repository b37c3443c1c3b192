// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <functional>
#include <optional>

namespace tunedeck::demo {

class BusName;
class Player;
class Words;
struct Oddities;

/// Carries out script lines: actions in the player's own window, and changes of its oddities.
class Script : public QObject {
    Q_OBJECT

public:
    /// All must outlive the script.
    Script(Player &player, Oddities &oddities, BusName &busName);

    /// Why the line was not understood; none if it was carried out.
    std::optional<QString> run(const QString &line);

    /// All lines with their meanings, for --help.
    [[nodiscard]] static QString explanation();

Q_SIGNALS:
    /// After every line, as any may have changed what the player shows.
    void lineDone();
    void floodWanted(int count);

private:
    using Action = std::function<void()>;
    /// Reads a line's words and returns the action, so that a line with an error at its end does nothing.
    using Read = Action (Script::*)(Words &);
    struct Line {
        const char *words; ///< the first one names the line
        const char *meaning;
        Read read;
    };
    static const QList<Line> &lines();
    [[nodiscard]] Action read(const QString &line);

    // The player's own window
    Action readPlay(Words &words);
    Action readPause(Words &words);
    Action readStop(Words &words);
    Action readToggle(Words &words);
    Action readNext(Words &words);
    Action readPrevious(Words &words);
    Action readTrack(Words &words);
    Action readSeek(Words &words);
    Action readVolume(Words &words);
    Action readShuffle(Words &words);
    Action readLoop(Words &words);
    Action readRate(Words &words);
    Action readTitle(Words &words);
    Action readLength(Words &words);
    Action readGrow(Words &words);
    Action readRestart(Words &words);
    Action readPlaylist(Words &words);
    // Answers
    Action readLate(Words &words);
    Action readHold(Words &words);
    Action readSilent(Words &words);
    Action readRefuse(Words &words);
    Action readFlip(Words &words);
    Action readToggling(Words &words);
    Action readCannot(Words &words);
    Action readPlaylists(Words &words);
    Action readPages(Words &words);
    Action readDieOnGet(Words &words);
    Action readDieOnCall(Words &words);
    // Values
    Action readWrong(Words &words);
    Action readRight(Words &words);
    Action readAbsent(Words &words);
    Action readTrackId(Words &words);
    Action readStale(Words &words);
    Action readViewed(Words &words);
    Action readStation(Words &words);
    Action readTextless(Words &words);
    Action readStoppedKeeps(Words &words);
    Action readIntegration(Words &words);
    // Signals
    Action readSignals(Words &words);
    Action readUnasked(Words &words);
    Action readQuiet(Words &words);
    Action readBlink(Words &words);
    Action readPartial(Words &words);
    Action readEcho(Words &words);
    Action readFlood(Words &words);
    // Process and name
    Action readFreeze(Words &words);
    Action readDie(Words &words);
    Action readRetake(Words &words);

    Player &m_player;
    Oddities &m_oddities;
    BusName &m_busName;
};

} // namespace tunedeck::demo
