// SPDX-License-Identifier: MIT
#include "Script.h"

#include "BusName.h"
#include "Oddities.h"
#include "Player.h"
#include "Words.h"
#include "WrongValue.h"

#include <QTimer>

#include <csignal>
#include <cstdlib>
#include <limits>
#include <unistd.h>

namespace tunedeck::demo {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

Script::Script(Player &player, Oddities &oddities, BusName &busName)
    : m_player(player)
    , m_oddities(oddities)
    , m_busName(busName)
{
}

const QList<Script::Line> &Script::lines()
{
    static const QList<Line> lines{
        {"play", "plays; this line and all down to playlist act like the player's own window", &Script::readPlay},
        {"pause", "pauses", &Script::readPause},
        {"stop", "stops; the next play starts at the beginning of the track", &Script::readStop},
        {"toggle", "plays or pauses", &Script::readToggle},
        {"next", "goes to the next track; stops after the last", &Script::readNext},
        {"previous", "goes to the previous track; stops before the first", &Script::readPrevious},
        {"track N", "goes to track N (see --list) and plays it", &Script::readTrack},
        {"seek SECONDS", "goes to this place in the track", &Script::readSeek},
        {"volume F", "sets the volume; F is -10 to 10, also outside what MPRIS allows. Audacious reports such volumes",
            &Script::readVolume},
        {"shuffle on|off", "shuffles in an order that --seed decides", &Script::readShuffle},
        {"loop None|Track|Playlist", "sets what follows the end", &Script::readLoop},
        {"rate F", "sets the rate; F is 0.25 to 4", &Script::readRate},
        {"title TEXT", "changes the current title; without TEXT it has none", &Script::readTitle},
        {"length SECONDS", "changes the current track's length; a length before the position ends the track",
            &Script::readLength},
        {"grow on|off", "lets the length grow by 1 s in every second of playing, as mpv and Celluloid do with streams",
            &Script::readGrow},
        {"restart", "announces the same track again from its start", &Script::readRestart},
        {"playlist N NAME", "renames playlist N and says so with PlaylistChanged", &Script::readPlaylist},

        {"late MS", "carries calls out and answers them MS later, as cmus does while it opens a stream; 0 ends it",
            &Script::readLate},
        {"hold on|off", "calls wait, and are carried out and answered in their order when it ends", &Script::readHold},
        {"silent on|off", "neither carries calls out nor answers them", &Script::readSilent},
        {"refuse KEY|none",
            "lets setting the property KEY succeed without effect, as Chromium does with Volume; none ends all",
            &Script::readRefuse},
        {"toggling on|off", "Play and Pause both toggle, as in Celluloid", &Script::readToggling},
        {"flip on|off", "Shuffle is another at every read and cannot be set, as in mpv", &Script::readFlip},
        {"cannot KEY on|off",
            "KEY (CanPlay, CanPause, CanSeek, CanGoNext, CanGoPrevious, CanControl) is false and its calls do nothing",
            &Script::readCannot},
        {"playlists N|off", "has N playlists; off: has no Playlists interface", &Script::readPlaylists},
        {"pages N lenient|strict",
            "sends N playlists at once, however many are requested; strict: a request after the last is an error",
            &Script::readPages},
        {"dieoncall", "ends the process as the next call arrives", &Script::readDieOnCall},
        {"die-on-get KEY", "aborts when KEY is read by Get, as Celluloid does with Shuffle", &Script::readDieOnGet},

        {"wrong KEY KIND [VALUE]",
            "gives KEY, a property or a metadata key, known or new, a value of KIND and announces it. VALUE is for the "
            "kinds string, number-string, int, uint, int64, uint64, double, bool, path, and array of one",
            &Script::readWrong},
        {"right KEY|all", "ends wrong, absent and die-on-get of KEY", &Script::readRight},
        {"absent KEY", "leaves the property or metadata key out; its Get is an error", &Script::readAbsent},
        {"trackid path|string|constant|none",
            "sets the form of mpris:trackid: string as in Rhythmbox, constant as in Audacious, none as in Totem, which "
            "lets SetPosition take any id",
            &Script::readTrackId},
        {"textless on|off",
            "sends no address and no text, but the track id and the length, as cmus does for an untagged file; with "
            "trackid none as Totem does",
            &Script::readTextless},
        {"station vlc|cmus|celluloid|off",
            "sends the song of a live stream as vlc:nowplaying, cmus:stream_title or icy-title, and the station as the "
            "title",
            &Script::readStation},
        {"viewed N|off", "playlist N is active whatever plays, also while stopped, as the one that Strawberry shows",
            &Script::readViewed},
        {"stale MS", "reports a position that is up to MS old, as mpDris2 does; 0 ends it", &Script::readStale},
        {"stoppedkeeps on|off", "keeps Metadata while stopped, as VLC does", &Script::readStoppedKeeps},
        {"integration PID", "adds kde:pid to the metadata: a tab of the browser PID; 0 ends it",
            &Script::readIntegration},

        {"signals properties|seeked on|off", "announces changes or not; Celluloid announces no seeks",
            &Script::readSignals},
        {"quiet KEY|none",
            "does not announce changes of the property KEY, as Totem with Volume and cmus with Shuffle; none ends all",
            &Script::readQuiet},
        {"unasked MS", "announces a seek every MS while it plays, as Sayonara does; 0 ends it", &Script::readUnasked},
        {"blink MS", "announces a new track first as Stopped without metadata, for MS, as Chromium does; 0 ends it",
            &Script::readBlink},
        {"partial MS", "announces a new track first with id and length alone, for MS, as Chromium does; 0 ends it",
            &Script::readPartial},
        {"echo N", "announces a change of volume N times, from N = 2 the first with the old one; Elisa echoes several",
            &Script::readEcho},
        {"flood N", "announces N changes of title and status and N seeks, as fast as the bus takes them",
            &Script::readFlood},

        {"freeze", "stops the process (SIGSTOP) after the answer", &Script::readFreeze},
        {"die", "ends the process without a goodbye after the answer", &Script::readDie},
        {"retake MS", "gives the bus name up and takes it again after MS, as mpDris2 does", &Script::readRetake},
    };
    return lines;
}

QString Script::explanation()
{
    QString text;
    for (const Line &line : lines()) {
        text += u"  %1\n        %2\n"_s.arg(QLatin1StringView(line.words), QLatin1StringView(line.meaning));
    }
    return text + u"KIND is one of: %1.\n"_s.arg(wrongValueKinds().join(u", "_s));
}

std::optional<QString> Script::run(const QString &line)
{
    try {
        read(line)();
    } catch (const NotUnderstood &error) {
        return error.reason;
    }
    Q_EMIT lineDone();
    return std::nullopt;
}

Script::Action Script::read(const QString &line)
{
    Words words(line);
    const QString name = words.word();
    for (const Line &known : lines()) {
        if (QString::fromLatin1(known.words).section(u' ', 0, 0) == name) {
            Action action = (this->*known.read)(words);
            words.end();
            return action;
        }
    }
    throw NotUnderstood(u"unknown line \"%1\""_s.arg(name));
}

Script::Action Script::readPlay(Words &)
{
    return [this] { m_player.play(); };
}

Script::Action Script::readPause(Words &)
{
    return [this] { m_player.pause(); };
}

Script::Action Script::readStop(Words &)
{
    return [this] { m_player.stop(); };
}

Script::Action Script::readToggle(Words &)
{
    return [this] { m_player.playPause(); };
}

Script::Action Script::readNext(Words &)
{
    return [this] { m_player.next(); };
}

Script::Action Script::readPrevious(Words &)
{
    return [this] { m_player.previous(); };
}

Script::Action Script::readTrack(Words &words)
{
    const int number = words.integer(0, static_cast<int>(m_player.trackCount()) - 1);
    return [this, number] {
        m_player.goToTrack(number);
        m_player.play();
    };
}

Script::Action Script::readSeek(Words &words)
{
    return [this, position = words.seconds()] { m_player.setPosition(position); };
}

Script::Action Script::readVolume(Words &words)
{
    constexpr double limit = 10;
    return [this, volume = words.number(-limit, limit)] { m_player.setVolume(volume); };
}

Script::Action Script::readShuffle(Words &words)
{
    return [this, isOn = words.onOff()] { m_player.setShuffled(isOn); };
}

Script::Action Script::readLoop(Words &words)
{
    const QStringList names{u"None"_s, u"Track"_s, u"Playlist"_s};
    const auto status = static_cast<LoopStatus>(names.indexOf(words.oneOf(names)));
    return [this, status] { m_player.setLoopStatus(status); };
}

Script::Action Script::readRate(Words &words)
{
    return [this, rate = words.number(Player::minimumRate, Player::maximumRate)] { m_player.setRate(rate); };
}

Script::Action Script::readTitle(Words &words)
{
    return [this, title = words.text()] { m_player.setTitle(title); };
}

Script::Action Script::readLength(Words &words)
{
    return [this, length = words.seconds()] { m_player.setLength(length); };
}

Script::Action Script::readGrow(Words &words)
{
    return [this, isOn = words.onOff()] { m_player.setGrowing(isOn); };
}

Script::Action Script::readRestart(Words &)
{
    return [this] { m_player.restart(); };
}

Script::Action Script::readPlaylist(Words &words)
{
    const int number = words.integer(0, static_cast<int>(m_player.playlists().size()) - 1);
    return [this, number, name = words.text()] { m_player.renamePlaylist(number, name); };
}

Script::Action Script::readLate(Words &words)
{
    return [this, time = words.milliseconds()] { m_oddities.late = time; };
}

Script::Action Script::readHold(Words &words)
{
    return [this, isOn = words.onOff()] { m_oddities.holdsCalls = isOn; };
}

Script::Action Script::readSilent(Words &words)
{
    return [this, isOn = words.onOff()] { m_oddities.isSilent = isOn; };
}

Script::Action Script::readRefuse(Words &words)
{
    const QString key = words.oneOf({u"LoopStatus"_s, u"Rate"_s, u"Shuffle"_s, u"Volume"_s, u"none"_s});
    if (key == u"none"_s) {
        return [this] { m_oddities.refused.clear(); };
    }
    return [this, key] { m_oddities.refused.insert(key); };
}

Script::Action Script::readToggling(Words &words)
{
    return [this, isOn = words.onOff()] { m_oddities.togglesAlways = isOn; };
}

Script::Action Script::readFlip(Words &words)
{
    return [this, isOn = words.onOff()] { m_oddities.flipsShuffle = isOn; };
}

Script::Action Script::readCannot(Words &words)
{
    const QString key =
        words.oneOf({u"CanPlay"_s, u"CanPause"_s, u"CanSeek"_s, u"CanGoNext"_s, u"CanGoPrevious"_s, u"CanControl"_s});
    if (words.onOff()) {
        return [this, key] { m_oddities.denied.insert(key); };
    }
    return [this, key] { m_oddities.denied.remove(key); };
}

Script::Action Script::readPlaylists(Words &words)
{
    Words count = words;
    if (words.word() == u"off"_s) {
        return [this] { m_oddities.offersPlaylists = false; };
    }
    constexpr int maximum = 1'000'000;
    return [this, number = count.integer(0, maximum)] {
        m_oddities.offersPlaylists = true;
        m_player.setPlaylistCount(number);
    };
}

Script::Action Script::readPages(Words &words)
{
    constexpr int maximum = 1'000'000;
    const int longest = words.integer(1, maximum);
    const bool isStrict = words.oneOf({u"lenient"_s, u"strict"_s}) == u"strict"_s;
    return [this, longest, isStrict] {
        m_oddities.longestPage = longest;
        m_oddities.isStrictOnPages = isStrict;
    };
}

Script::Action Script::readDieOnGet(Words &words)
{
    return [this, key = words.word()] { m_oddities.deadly.insert(key); };
}

Script::Action Script::readDieOnCall(Words &)
{
    return [this] { m_oddities.diesOnCall = true; };
}

Script::Action Script::readWrong(Words &words)
{
    const QString key = words.word();
    const QString kind = words.oneOf(wrongValueKinds());
    const QString text = words.text();
    const QVariant value = wrongValue(kind, key, text);
    if (!value.isValid()) {
        throw NotUnderstood(u"\"%1\" cannot be the value of a %2"_s.arg(text, kind));
    }
    return [this, key, value] { m_oddities.wrong.insert(key, value); };
}

Script::Action Script::readRight(Words &words)
{
    const QString key = words.word();
    if (key == u"all"_s) {
        return [this] {
            m_oddities.wrong.clear();
            m_oddities.absent.clear();
            m_oddities.deadly.clear();
        };
    }
    return [this, key] {
        m_oddities.wrong.remove(key);
        m_oddities.absent.remove(key);
        m_oddities.deadly.remove(key);
    };
}

Script::Action Script::readAbsent(Words &words)
{
    return [this, key = words.word()] { m_oddities.absent.insert(key); };
}

Script::Action Script::readTrackId(Words &words)
{
    const QStringList names{u"path"_s, u"string"_s, u"constant"_s, u"none"_s};
    const auto kind = static_cast<TrackIdKind>(names.indexOf(words.oneOf(names)));
    return [this, kind] { m_oddities.trackId = kind; };
}

Script::Action Script::readTextless(Words &words)
{
    return [this, isOn = words.onOff()] { m_oddities.hasNoTexts = isOn; };
}

Script::Action Script::readStation(Words &words)
{
    const QStringList names{u"vlc"_s, u"cmus"_s, u"celluloid"_s, u"off"_s};
    const QStringList keys{u"vlc:nowplaying"_s, u"cmus:stream_title"_s, u"icy-title"_s, QString()};
    return [this, key = keys.at(names.indexOf(words.oneOf(names)))] { m_oddities.songKey = key; };
}

Script::Action Script::readViewed(Words &words)
{
    Words number = words;
    if (words.word() == u"off"_s) {
        return [this] { m_oddities.viewedPlaylist.reset(); };
    }
    const int last = static_cast<int>(m_player.playlists().size()) - 1;
    return [this, viewed = number.integer(0, last)] { m_oddities.viewedPlaylist = viewed; };
}

Script::Action Script::readStale(Words &words)
{
    return [this, time = words.milliseconds()] { m_oddities.stale = time; };
}

Script::Action Script::readStoppedKeeps(Words &words)
{
    return [this, isOn = words.onOff()] { m_oddities.keepsMetadataWhenStopped = isOn; };
}

Script::Action Script::readIntegration(Words &words)
{
    return [this, pid = words.integer(0, std::numeric_limits<int>::max())] { m_oddities.integratedPid = pid; };
}

Script::Action Script::readSignals(Words &words)
{
    const QString which = words.oneOf({u"properties"_s, u"seeked"_s});
    bool Oddities::*const announces = which == u"seeked"_s ? &Oddities::announcesSeeks : &Oddities::announcesProperties;
    return [this, announces, isOn = words.onOff()] { m_oddities.*announces = isOn; };
}

Script::Action Script::readQuiet(Words &words)
{
    const QString key = words.word();
    if (key == u"none"_s) {
        return [this] { m_oddities.quiet.clear(); };
    }
    return [this, key] { m_oddities.quiet.insert(key); };
}

Script::Action Script::readUnasked(Words &words)
{
    return [this, time = words.milliseconds()] { m_oddities.unaskedSeeks = time; };
}

Script::Action Script::readBlink(Words &words)
{
    return [this, time = words.milliseconds()] { m_oddities.blink = time; };
}

Script::Action Script::readPartial(Words &words)
{
    return [this, time = words.milliseconds()] { m_oddities.partial = time; };
}

Script::Action Script::readEcho(Words &words)
{
    constexpr int maximum = 1'000;
    return [this, count = words.integer(1, maximum)] { m_oddities.volumeEchoes = count; };
}

Script::Action Script::readFlood(Words &words)
{
    constexpr int maximum = 10'000'000;
    return [this, count = words.integer(1, maximum)] { Q_EMIT floodWanted(count); };
}

Script::Action Script::readFreeze(Words &)
{
    return [this] {
        QTimer::singleShot(0ms, this, [this] {
            m_busName.flush();
            std::raise(SIGSTOP);
        });
    };
}

Script::Action Script::readDie(Words &)
{
    return [this] {
        QTimer::singleShot(0ms, this, [this] {
            m_busName.flush();
            _exit(EXIT_FAILURE);
        });
    };
}

Script::Action Script::readRetake(Words &words)
{
    return [this, time = words.milliseconds()] {
        QTimer::singleShot(0ms, this, [this, time] {
            m_busName.giveUp();
            if (time == 0ms) {
                m_busName.take();
                return;
            }
            QTimer::singleShot(time, this, [this] { m_busName.take(); });
        });
    };
}

} // namespace tunedeck::demo
