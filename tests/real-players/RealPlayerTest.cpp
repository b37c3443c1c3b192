// SPDX-License-Identifier: MIT
#include "PlayerWitness.h"
#include "ShownRecord.h"
#include "music/MusicConnector.h"
#include "music/mpris/MprisMusicApplication.h"
#include "platform/ApplicationLauncher.h"
#include "platform/UserDefaults.h"
#include "platform/WindowActivation.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

/// The tracks that run-player gives the player.
const QString firstTags = u"Low Hum / The Even Tones / Bench Recordings"_s;
const QString secondTags = u"Second Wind / Überton & Co / Später"_s;
const QString firstFile = u"first.flac /  / "_s;
const QString secondFile = u"second.mp3 /  / "_s;
/// A file without tags.
const QString untaggedFile = u"no tags #1 %41 ü.flac"_s;
constexpr double untaggedDuration = 30;
constexpr double firstDuration = 40;
constexpr double secondDuration = 50;

enum class Tags { Shown, Perhaps, NotShown };
enum class AfterNext { StaysPaused, Plays, Stops };
enum class AfterTheLast { StaysOnIt, PlaysTheFirst, Stops };

/// The differences between players. The defaults hold for most of them.
struct Habits {
    QLatin1String player;
    /// Whether it plays the files it is opened with.
    bool playsOnStart = true;
    /// Whether it knows the tags of a file before it opens the file. If it does not, the display may show the file
    /// as one without tags when the program starts at the moment in which the player opens its first file.
    bool readsTagsAhead = true;
    Tags tags = Tags::Shown;
    /// Whether it plays one file at a time, without a list.
    bool hasOneTrack = false;
    /// Whether the end of a track leads to the next one every time.
    bool goesOnAtTheEnd = true;
    /// Seconds. VLC and Elisa estimate the length of an mp3 from its first frames.
    double lengthTolerance = 1;
    /// The player's announcements between two tracks, of which the one ends and the other begins.
    QString mixture = {};
    /// The difference between a volume that it is sent and what it then reports, in percent.
    double volumeTolerance = 0.6;
    AfterNext nextWhilePaused = AfterNext::StaysPaused;
    AfterTheLast nextOnTheLast = AfterTheLast::StaysOnIt;
    /// The texts for a file without tags: its name, or no text at all. Versions of a player may differ. None if the
    /// player opens no file on request.
    QStringList untagged = {};
    /// The programs that make it play a file, each with its arguments; FILE is the file. None if `OpenUri` does.
    QList<QStringList> open = {};
    /// Whether it ends when it is asked to.
    bool quits = true;
};

const QString nameOfUntagged = untaggedFile + u" /  / "_s;
const QString noText = u" /  / "_s;

const std::array habits{
    Habits{.player = QLatin1String("mpv"), .readsTagsAhead = false, .untagged = {nameOfUntagged}},
    // Skipping a track starts playback, and the list starts again after its end.
    Habits{.player = QLatin1String("vlc"),
        .readsTagsAhead = false,
        .lengthTolerance = 8,
        .nextWhilePaused = AfterNext::Plays,
        .nextOnTheLast = AfterTheLast::PlaysTheFirst,
        .untagged = {nameOfUntagged}},
    // It plays what was opened last. Skipping a track starts playback.
    Habits{.player = QLatin1String("strawberry"),
        .playsOnStart = false,
        .nextWhilePaused = AfterNext::Plays,
        .untagged = {nameOfUntagged}},
    Habits{.player = QLatin1String("audacious")},
    // It opens with its library. Skipping a track starts playback, and skipping the last one stops it.
    Habits{.player = QLatin1String("rhythmbox"),
        .playsOnStart = false,
        .nextWhilePaused = AfterNext::Plays,
        .nextOnTheLast = AfterTheLast::Stops,
        .untagged = {nameOfUntagged}},
    Habits{.player = QLatin1String("celluloid"), .readsTagsAhead = false},
    // It opens with its library. Skipping the last track stops playback.
    Habits{.player = QLatin1String("quodlibet"), .playsOnStart = false, .nextOnTheLast = AfterTheLast::Stops},
    // It shows only the names of files that are not in its library. After a skip, it loads the track and waits.
    Habits{.player = QLatin1String("elisa"),
        .tags = Tags::NotShown,
        .lengthTolerance = 8,
        .nextWhilePaused = AfterNext::Stops},
    // It waits for Play. Skipping a track starts playback. Since 2.12 it names a file without tags.
    Habits{.player = QLatin1String("cmus"),
        .playsOnStart = false,
        .nextWhilePaused = AfterNext::Plays,
        .untagged = {noText, nameOfUntagged},
        .open = {{u"cmus-remote"_s, u"--file"_s, u"FILE"_s}},
        .quits = false},
    // It sends the length before it has read the tags. After a seek it may play the same track again at its end.
    Habits{.player = QLatin1String("totem"),
        .goesOnAtTheEnd = false,
        .nextWhilePaused = AfterNext::Plays,
        .untagged = {noText}},
    // It waits for Play. Skipping a track starts playback, and the list starts again after its end.
    Habits{.player = QLatin1String("sayonara"),
        .playsOnStart = false,
        .nextWhilePaused = AfterNext::Plays,
        .nextOnTheLast = AfterTheLast::PlaysTheFirst},
    // For 180 ms it gives the new track the former one's title. Skipping the last track stops playback.
    Habits{.player = QLatin1String("lollypop"),
        .mixture = u"Low Hum / Überton & Co / Später"_s,
        .nextWhilePaused = AfterNext::Plays,
        .nextOnTheLast = AfterTheLast::Stops},
    // It shows tags or the file's name, as its backend happens to be quick.
    Habits{.player = QLatin1String("dragonplayer"),
        .readsTagsAhead = false,
        .tags = Tags::Perhaps,
        .hasOneTrack = true,
        .volumeTolerance = 1.1,
        .untagged = {nameOfUntagged}},
    // It goes to the end of the list and stops.
    Habits{.player = QLatin1String("mpdris2"),
        .nextWhilePaused = AfterNext::Plays,
        .nextOnTheLast = AfterTheLast::Stops,
        .untagged = {nameOfUntagged},
        .open = {{u"mpc"_s, u"add"_s, u"FILE"_s}, {u"mpc"_s, u"play"_s, u"3"_s}},
        .quits = false},
};

constexpr int longestStart = 20'000; // milliseconds, until a player shows itself
constexpr int patience = 15'000; // milliseconds, for anything that a player does
constexpr int longestSeek = 3'000; // milliseconds
constexpr int longestError = 2'500; // milliseconds, for which the clock may be wrong while a player starts a track
constexpr int lastSample =
    2'200; // milliseconds, after which the program has sampled the position that a command led to
constexpr int longestSample = 11'000; // milliseconds, after which the program has read all that the player has
constexpr double tolerance = 1.5; // seconds: players report whole seconds, and late

/// Milliseconds until `condition` held, if it did.
std::optional<qint64> timeUntil(const std::function<bool()> &condition, int limit = patience)
{
    QElapsedTimer timer;
    timer.start();
    return QTest::qWaitFor(condition, limit) ? std::optional(timer.elapsed()) : std::nullopt;
}

void report(const char *what, qint64 milliseconds)
{
    qInfo("%s after %lld ms", what, milliseconds);
}

} // namespace

/// Tests MusicConnector and the classes below it with a player that people use. TUNEDECK_PLAYER names it; run-player
/// starts it. All tests use the same player, so each one continues where the last one ended.
class RealPlayerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void thePlayerIsFollowed();
    void theFirstTrackIsShownInFull();
    void theClockRunsWithThePlayers();
    void aPauseIsShownAtOnceAndTheClockStands();
    void playGoesOnFromThere();
    void aSeekLeadsToItsPlaceAndTheClockNeverJumps();
    void holdingForwardLeadsOnInTheTrack();
    void everyVolumeIsTakenAndReadBack();
    void aVolumeSetInThePlayersWindowIsSeen();
    void nextShowsTheSecondTrackAndNothingBetween();
    void theEndOfATrackLeadsToTheNextAndNothingBetween();
    void backAtTheStartOfATrackLeadsToTheTrackBefore();
    void backLaterOnLeadsToTheStartOfTheTrack();
    void nextWhilePausedShowsTheSecondTrack();
    void nextOnTheLastTrackDoesWhatThePlayerIsKnownFor();
    void aFileWithoutTagsIsShownWithItsTimes();
    void aPlayerThatQuitsIsGoneWithin100Milliseconds();

private:
    [[nodiscard]] FourCharCode state() { return m_music.playerState().value_or(0); }
    [[nodiscard]] double position() { return m_music.playerPosition().value_or(-1); }
    [[nodiscard]] bool shows(const QString &track) const
    {
        return ShownRecord::text(m_connector->currentTrack()) == track;
    }
    [[nodiscard]] bool goToTheFirstTrack();
    [[nodiscard]] bool goToTheTrackBefore();
    [[nodiscard]] bool goTo(double seconds);
    /// Plays the first track from about `seconds` on.
    [[nodiscard]] bool playTheFirstTrackFrom(double seconds);
    [[nodiscard]] bool isAtPlayersPosition();
    void expectTheSecondTrackAlone();
    [[nodiscard]] bool playUntagged() const;

    const Habits *m_habits = nullptr;
    QString m_first;
    QString m_second;
    QTemporaryDir m_folder;
    UserDefaults m_defaults{m_folder.filePath(u"settings"_s)};
    ApplicationLauncher m_launcher;
    WindowActivation m_windowActivation;
    PlayerWitness m_witness;
    MprisMusicApplication m_music{QDBusConnection::sessionBus(), m_defaults, m_launcher};
    std::unique_ptr<MusicConnector> m_connector;
    std::unique_ptr<ShownRecord> m_shown;
};

void RealPlayerTest::initTestCase()
{
    const QString player = qEnvironmentVariable("TUNEDECK_PLAYER");
    const auto found = std::ranges::find(habits, player, &Habits::player);
    QVERIFY2(found != habits.end(), "TUNEDECK_PLAYER names no player; run-player does");
    m_habits = &*found;
    m_first = m_habits->tags == Tags::NotShown ? firstFile : firstTags;
    m_second = m_habits->tags == Tags::NotShown ? secondFile : secondTags;
    m_connector = std::make_unique<MusicConnector>(m_music, m_windowActivation);
    m_shown = std::make_unique<ShownRecord>(*m_connector);
}

void RealPlayerTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

bool RealPlayerTest::goToTheFirstTrack()
{
    return shows(m_first) || (goToTheTrackBefore() && timeUntil([this] { return shows(m_first); }));
}

bool RealPlayerTest::goToTheTrackBefore()
{
    // Sayonara goes to the start of the track on Previous until it has carried the seek out.
    return m_music.setPlayerPosition(0) && timeUntil([this] { return m_witness.position() < 1; })
        && m_music.backTrack();
}

bool RealPlayerTest::goTo(double seconds)
{
    // While a player loads a track, Rhythmbox cannot seek, and Celluloid may forget a seek.
    return m_music.setPlayerPosition(seconds)
        && timeUntil([&] { return std::abs(m_witness.position() - seconds) < tolerance; }, longestSeek);
}

bool RealPlayerTest::playTheFirstTrackFrom(double seconds)
{
    if (!goToTheFirstTrack()) {
        return false;
    }
    if (state() != PlayerState::playing) {
        m_music.playpause();
    }
    const bool isThere = timeUntil([this] {
        return m_witness.status() == u"Playing" && state() == PlayerState::playing;
    }) && timeUntil([&] { return goTo(seconds); });
    // The next command comes when the seek is over: it could be lost otherwise.
    m_witness.awaitQuiet();
    return isThere;
}

bool RealPlayerTest::isAtPlayersPosition()
{
    return std::abs(position() - m_witness.position()) <= tolerance;
}

void RealPlayerTest::expectTheSecondTrackAlone()
{
    // Elisa tells the position of the track before for a second.
    m_witness.awaitQuiet();
    QVERIFY(timeUntil([this] { return m_witness.status() == u"Playing" && m_witness.position() >= 1; }));
    QVERIFY(timeUntil([this] { return isAtPlayersPosition(); }, longestError));
    QStringList shown = m_shown->texts();
    if (!shown.isEmpty() && shown.first() == m_habits->mixture) {
        shown.removeFirst();
    }
    QCOMPARE(shown.join(u" | "_s), m_second);
    QVERIFY2(!m_shown->states().contains(u"Stopped"_s) && !m_shown->states().contains(u"Paused"_s),
        qPrintable(m_shown->states().join(u' ')));
    QVERIFY(
        timeUntil([this] { return std::abs(m_connector->duration() - secondDuration) < m_habits->lengthTolerance; }));
}

bool RealPlayerTest::playUntagged() const
{
    const QString file = qEnvironmentVariable("TUNEDECK_UNTAGGED");
    if (m_habits->open.isEmpty()) {
        m_witness.openFile(file);
    }
    return std::ranges::all_of(m_habits->open, [&file](QStringList command) {
        command.replaceInStrings(u"FILE"_s, file);
        return QProcess::execute(command.takeFirst(), command) == 0;
    });
}

void RealPlayerTest::thePlayerIsFollowed()
{
    const auto time = timeUntil([this] { return m_connector->isMusicAppRunning(); }, longestStart);
    QVERIFY(time);
    report("followed", *time);
    QVERIFY(m_witness.findPlayer());
    QCOMPARE(m_music.isResponding(), true);
}

void RealPlayerTest::theFirstTrackIsShownInFull()
{
    if (!m_habits->playsOnStart) {
        // The player ignores commands until it has read its files.
        QVERIFY(timeUntil(
            [this] {
                return m_witness.status() == u"Playing"
                    || (m_music.playpause() && timeUntil([this] { return m_witness.status() == u"Playing"; }, 500));
            },
            longestStart));
        QVERIFY(timeUntil([this] { return shows(m_first) || shows(m_second); }));
        // A player that still reads its library may begin with either track. Strawberry goes on to the second one when
        // that is opened.
        m_witness.awaitQuiet();
        QVERIFY(timeUntil([this] { return goToTheFirstTrack(); }, longestStart));
    }
    if (m_habits->tags == Tags::Perhaps) {
        QVERIFY(timeUntil([this] { return m_witness.position() > 1; }));
        m_first = m_witness.title() == u"first.flac" ? firstFile : firstTags;
    }
    const auto time = timeUntil([this] { return shows(m_first); }, longestStart);
    QVERIFY2(
        time, qPrintable(ShownRecord::text(m_connector->currentTrack()) + u"; the player: "_s + m_witness.title()));
    report("shown", *time);
    QVERIFY2(timeUntil([this] { return std::abs(m_connector->duration() - firstDuration) < 1; }),
        qPrintable(QString::number(m_connector->duration())));
    qInfo().noquote() << "at the start:" << m_shown->texts();
    for (const QString &text : m_shown->texts()) {
        const bool isFull = text == m_first || text == m_second;
        QVERIFY2(isFull || (!m_habits->readsTagsAhead && (text == firstFile || text == noText)), qPrintable(text));
    }
}

void RealPlayerTest::theClockRunsWithThePlayers()
{
    QVERIFY(timeUntil([this] { return state() == PlayerState::playing && m_witness.position() > 0.5; }));
    const double start = position();
    QVERIFY(timeUntil([&] { return position() > start + 0.5; }, 1'500));
    QVERIFY(timeUntil([this] { return isAtPlayersPosition(); }, 2'500));
    QVERIFY(m_connector->isProgressPollingTimerActive());
}

void RealPlayerTest::aPauseIsShownAtOnceAndTheClockStands()
{
    QElapsedTimer sincePause;
    sincePause.start();
    QVERIFY(m_music.playpause());
    QCOMPARE(state(), PlayerState::paused);
    const auto time = timeUntil([this] { return m_witness.status() == u"Paused"; });
    QVERIFY(time);
    report("paused", *time);
    QVERIFY(QTest::qWaitFor([&] { return sincePause.elapsed() >= lastSample; }));
    QCOMPARE(state(), PlayerState::paused);
    const double stands = position();
    m_witness.awaitQuiet();
    QCOMPARE(position(), stands);
    QCOMPARE(state(), PlayerState::paused);
    QVERIFY(isAtPlayersPosition());
    QVERIFY(!m_connector->isProgressPollingTimerActive());
}

void RealPlayerTest::playGoesOnFromThere()
{
    const double stood = position();
    QVERIFY(m_music.playpause());
    QCOMPARE(state(), PlayerState::playing);
    const auto time = timeUntil([this] { return m_witness.status() == u"Playing"; });
    QVERIFY(time);
    report("playing again", *time);
    QVERIFY(timeUntil([&] { return position() > stood + 0.3; }));
    QVERIFY(position() < stood + tolerance);
    QCOMPARE(state(), PlayerState::playing);
}

void RealPlayerTest::aSeekLeadsToItsPlaceAndTheClockNeverJumps()
{
    constexpr double target = 20;
    QVERIFY(m_music.setPlayerPosition(target));
    QElapsedTimer sinceSeek;
    sinceSeek.start();
    const auto expected = [&] { return target + double(sinceSeek.elapsed()) / 1'000; };
    const auto time = timeUntil([&] { return std::abs(m_witness.position() - expected()) < tolerance; }, 2'000);
    QVERIFY(time);
    report("seek done", *time);
    // The program trusts the target for 1.5 s; then it asks the player for the position.
    double largestError = 0;
    const auto isBelieved = [&] {
        largestError = std::max(largestError, std::abs(position() - expected()));
        return sinceSeek.elapsed() >= lastSample;
    };
    QVERIFY(QTest::qWaitFor(isBelieved, patience));
    qInfo("largest error of the clock after the seek: %.2f s", largestError);
    QVERIFY(largestError < tolerance);
    QVERIFY(timeUntil([this] { return isAtPlayersPosition(); }, longestError));
}

void RealPlayerTest::holdingForwardLeadsOnInTheTrack()
{
    QVERIFY(playTheFirstTrackFrom(5));
    const double start = position();
    QVERIFY(m_music.fastForward());
    QCOMPARE(state(), PlayerState::fastForwarding);
    QVERIFY(timeUntil([&] { return position() > start + 13; }, 1'500));
    QVERIFY(m_music.resume());
    const double end = position();
    QCOMPARE(state(), PlayerState::playing);
    QVERIFY(timeUntil([&] { return std::abs(m_witness.position() - end) < tolerance + 1; }));
    QVERIFY(timeUntil([this] { return isAtPlayersPosition(); }));
    QVERIFY(shows(m_first));
    QVERIFY(position() < end + 4);
}

void RealPlayerTest::everyVolumeIsTakenAndReadBack()
{
    for (const int volume : {30, 29, 57, 100, 0, 80}) {
        m_connector->setVolume(volume);
        const auto time =
            timeUntil([&] { return std::abs(m_witness.volume() * 100 - volume) < m_habits->volumeTolerance; });
        QVERIFY2(time, qPrintable(u"%1: the player has %2"_s.arg(volume).arg(m_witness.volume())));
        m_witness.awaitQuiet();
        QVERIFY2(std::abs(m_connector->soundVolume() - volume) < m_habits->volumeTolerance,
            qPrintable(QString::number(m_connector->soundVolume())));
        QVERIFY(std::abs(m_music.soundVolume().value_or(-1) - volume) < m_habits->volumeTolerance);
    }
}

void RealPlayerTest::aVolumeSetInThePlayersWindowIsSeen()
{
    QCOMPARE(state(), PlayerState::playing);
    m_witness.setVolume(0.604);
    // Totem announces no volume, so it is seen with the next sample.
    const auto time = timeUntil(
        [this] { return std::abs(m_connector->soundVolume() - 60) < m_habits->volumeTolerance; }, longestSample);
    QVERIFY2(time, qPrintable(QString::number(m_connector->soundVolume())));
    report("volume seen", *time);
}

void RealPlayerTest::nextShowsTheSecondTrackAndNothingBetween()
{
    if (m_habits->hasOneTrack) {
        QSKIP("This player has no list of tracks");
    }
    QVERIFY(playTheFirstTrackFrom(10));
    m_shown->clear();
    QVERIFY(m_music.nextTrack());
    const auto time = timeUntil([this] { return shows(m_second); });
    QVERIFY(time);
    report("next track", *time);
    expectTheSecondTrackAlone();
}

void RealPlayerTest::theEndOfATrackLeadsToTheNextAndNothingBetween()
{
    if (m_habits->hasOneTrack) {
        QSKIP("This player has no list of tracks");
    }
    if (!m_habits->goesOnAtTheEnd) {
        QSKIP("This player does not always go on to the next track");
    }
    QVERIFY(playTheFirstTrackFrom(firstDuration - 4));
    m_shown->clear();
    QVERIFY(timeUntil([this] { return shows(m_second); }));
    expectTheSecondTrackAlone();
}

void RealPlayerTest::backAtTheStartOfATrackLeadsToTheTrackBefore()
{
    if (m_habits->hasOneTrack) {
        QSKIP("This player has no list of tracks");
    }
    if (!m_habits->goesOnAtTheEnd) {
        QVERIFY(goToTheFirstTrack());
        QVERIFY(m_music.nextTrack());
        QVERIFY(timeUntil([this] { return shows(m_second); }));
        m_witness.awaitQuiet();
    }
    QVERIFY(shows(m_second));
    m_shown->clear();
    QVERIFY(goToTheTrackBefore());
    const auto time = timeUntil([this] { return shows(m_first); });
    QVERIFY(time);
    report("track before", *time);
    QVERIFY(timeUntil([this] { return m_witness.status() == u"Playing" && m_witness.position() > 0.5; }));
    QCOMPARE(m_shown->texts().join(u" | "_s), m_first);
}

void RealPlayerTest::backLaterOnLeadsToTheStartOfTheTrack()
{
    QVERIFY(playTheFirstTrackFrom(20));
    m_shown->clear();
    QVERIFY(m_music.backTrack());
    QVERIFY(position() < 0.5);
    const auto time = timeUntil([this] { return m_witness.position() < tolerance; });
    QVERIFY(time);
    report("start of the track", *time);
    QVERIFY(timeUntil([this] { return isAtPlayersPosition(); }));
    QCOMPARE(m_shown->texts(), QStringList());
}

void RealPlayerTest::nextWhilePausedShowsTheSecondTrack()
{
    if (m_habits->hasOneTrack) {
        QSKIP("This player has no list of tracks");
    }
    QVERIFY(playTheFirstTrackFrom(10));
    QVERIFY(m_music.playpause());
    QVERIFY(timeUntil([this] { return m_witness.status() == u"Paused"; }));
    m_witness.awaitQuiet();
    m_shown->clear();
    QVERIFY(m_music.nextTrack());
    if (m_habits->nextWhilePaused == AfterNext::Stops) {
        QVERIFY(timeUntil([this] { return state() == PlayerState::stopped; }));
        m_witness.awaitQuiet();
        QCOMPARE(m_shown->texts(), QStringList{u"none"_s});
        QVERIFY(m_music.playpause());
        QVERIFY(timeUntil([this] { return shows(m_second); }));
        return;
    }
    const auto time = timeUntil([this] { return shows(m_second); });
    QVERIFY(time);
    report("next track while paused", *time);
    const bool plays = m_habits->nextWhilePaused == AfterNext::Plays;
    QVERIFY(timeUntil([&] { return m_witness.status() == (plays ? u"Playing" : u"Paused"); }));
    m_witness.awaitQuiet();
    QCOMPARE(state(), plays ? PlayerState::playing : PlayerState::paused);
    QVERIFY(timeUntil([this] { return isAtPlayersPosition(); }));
    QCOMPARE(m_shown->texts().join(u" | "_s), m_second);
}

void RealPlayerTest::nextOnTheLastTrackDoesWhatThePlayerIsKnownFor()
{
    if (m_habits->hasOneTrack) {
        QSKIP("This player has no list of tracks");
    }
    QVERIFY(shows(m_second));
    if (state() != PlayerState::playing) {
        QVERIFY(m_music.playpause());
    }
    QVERIFY(timeUntil([this] { return m_witness.status() == u"Playing"; }));
    m_witness.awaitQuiet();
    m_shown->clear();
    m_music.nextTrack();
    m_witness.awaitQuiet();
    switch (m_habits->nextOnTheLast) {
    case AfterTheLast::StaysOnIt:
        QCOMPARE(m_shown->texts(), QStringList());
        QCOMPARE(state(), PlayerState::playing);
        break;
    case AfterTheLast::PlaysTheFirst:
        QCOMPARE(m_shown->texts().join(u" | "_s), m_first);
        QCOMPARE(state(), PlayerState::playing);
        break;
    case AfterTheLast::Stops:
        QCOMPARE(m_shown->texts(), QStringList{u"none"_s});
        QCOMPARE(state(), PlayerState::stopped);
        break;
    }
}

void RealPlayerTest::aFileWithoutTagsIsShownWithItsTimes()
{
    if (m_habits->untagged.isEmpty()) {
        QSKIP("This player opens no file on request");
    }
    QVERIFY(playUntagged());
    const auto time =
        timeUntil([this] { return m_habits->untagged.contains(ShownRecord::text(m_connector->currentTrack())); });
    QVERIFY2(time, qPrintable(ShownRecord::text(m_connector->currentTrack())));
    report("file without tags", *time);
    QVERIFY(timeUntil([this] { return std::abs(m_connector->duration() - untaggedDuration) < 1; }));
    QVERIFY(timeUntil([this] { return m_witness.position() >= 1 && isAtPlayersPosition(); }));
    m_connector->updatePlayerProgressInfo();
    QVERIFY2(
        m_connector->remainingFormattedTime().startsWith(u"-0:2"_s), qPrintable(m_connector->remainingFormattedTime()));
    QCOMPARE(m_connector->feedType(), FeedType::localTrack);
}

void RealPlayerTest::aPlayerThatQuitsIsGoneWithin100Milliseconds()
{
    QList<bool> running;
    connect(m_connector.get(), &MusicConnector::isMusicAppRunningChanged, this, [&](bool isRunning) {
        if (running.isEmpty() || running.last() != isRunning) {
            running.append(isRunning);
        }
    });
    QElapsedTimer sinceQuit;
    sinceQuit.start();
    if (m_habits->quits) {
        m_witness.quitPlayer();
    } else {
        m_witness.closePlayer();
    }
    QVERIFY(timeUntil([this] { return m_witness.isGone(); }, 5'000));
    const qint64 gone = sinceQuit.elapsed();
    const auto time = timeUntil([this] { return !m_connector->isMusicAppRunning(); }, 100);
    report("quit: name lost", gone);
    QVERIFY(time);
    report("not running", *time);
    m_witness.awaitQuiet();
    QCOMPARE(running, QList<bool>{false});
    QVERIFY(!m_connector->currentTrack());
    QVERIFY(!m_music.playerState());
    QVERIFY(!m_connector->isProgressPollingTimerActive());
}

} // namespace tunedeck

QTEST_MAIN(tunedeck::RealPlayerTest)
#include "RealPlayerTest.moc"
