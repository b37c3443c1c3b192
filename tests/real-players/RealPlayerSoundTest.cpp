// SPDX-License-Identifier: MIT
#include "PlayerWitness.h"
#include "audio/PulsePlayerSound.h"
#include "music/MusicWithSound.h"
#include "music/mpris/MprisMusicApplication.h"
#include "platform/ApplicationLauncher.h"
#include "platform/UserDefaults.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QList>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

/// What a player's own volume does to its stream.
enum class OwnVolume {
    IsTheStreams, ///< they are one number
    IsTheStreamsGain, ///< the stream has its cube root
    IsApart, ///< the stream keeps its own; the two multiply
    IsKept ///< the player does not take it
};

struct Habits {
    QLatin1String player;
    OwnVolume volume = OwnVolume::IsTheStreams;
    /// Whether it plays as soon as it is started.
    bool playsOnStart = true;
};

constexpr std::array habits{Habits{.player = QLatin1String("mpv"), .volume = OwnVolume::IsApart},
    Habits{.player = QLatin1String("mpv-pipewire"), .volume = OwnVolume::IsApart},
    Habits{.player = QLatin1String("mpv-sandboxed"), .volume = OwnVolume::IsApart},
    Habits{.player = QLatin1String("vlc")}, Habits{.player = QLatin1String("cmus"), .playsOnStart = false},
    Habits{.player = QLatin1String("strawberry"), .volume = OwnVolume::IsTheStreamsGain},
    Habits{.player = QLatin1String("chromium"), .volume = OwnVolume::IsKept},
    Habits{.player = QLatin1String("firefox"), .volume = OwnVolume::IsTheStreamsGain}};

constexpr int longestStart = 30'000; // milliseconds, until a player shows itself
constexpr int patience = 5'000; // milliseconds, for anything that a player does
constexpr double tolerance = 1.1; // percent

/// The player's stream, as the sound server lists it for others.
struct ListedStream {
    int output = -1; ///< index
    double volume = -1; ///< percent
};

QJsonArray listed(const QString &what)
{
    QProcess pactl;
    pactl.start(u"pactl"_s, {u"--format=json"_s, u"list"_s, what});
    return pactl.waitForFinished() ? QJsonDocument::fromJson(pactl.readAllStandardOutput()).array() : QJsonArray();
}

bool isCorked(const QJsonValue &stream)
{
    return stream[u"corked"].toBool();
}

/// The stream that plays, or the player's only stream: mpv corks its own for moments. No value if several could be
/// meant.
std::optional<ListedStream> listedStream()
{
    QList<QJsonValue> streams;
    const QJsonArray all = listed(u"sink-inputs"_s);
    for (const auto &stream : all) {
        streams.append(stream);
    }
    if (!std::ranges::all_of(streams, isCorked)) {
        streams.removeIf(isCorked);
    }
    if (streams.size() != 1) {
        return std::nullopt;
    }
    const QJsonObject channels = streams.first()[u"volume"].toObject();
    constexpr double fullVolume = 65'536;
    return ListedStream{.output = streams.first()[u"sink"].toInt(),
        .volume = channels.isEmpty() ? -1 : channels.begin().value()[u"value"].toDouble() / fullVolume * 100};
}

/// -1 if there is none of this name.
int indexOfOutput(const QString &name)
{
    const QJsonArray outputs = listed(u"sinks"_s);
    for (const auto &output : outputs) {
        if (output[u"name"].toString() == name) {
            return output[u"index"].toInt();
        }
    }
    return -1;
}

} // namespace

/// Tests whose stream is found for a player that people use, and that the volume and the choice of an output reach it.
/// TUNEDECK_PLAYER names the player; run-player starts it and a sound server. Each test continues where the last one
/// ended.
class RealPlayerSoundTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void aPlayerThatDoesNotPlayHasNoStream();
    void thePlayersStreamIsFoundWhenItPlays();
    void theKnobTurnsThePlayersVolumeOrTheStreams();
    void playThroughMovesThePlayer();
    void theStreamOfTheNextTrackIsFound();
    void theKnobWorksAsBeforeThen();
    void aPlayerThatQuitsHasNoSound();

private:
    [[nodiscard]] bool isPlaying() { return m_players.playerState() == PlayerState::playing; }
    [[nodiscard]] QStringList outputs() const;
    [[nodiscard]] double volumeOfStreamFor(int volume) const;
    void turnTo(int volume);

    const Habits *m_habits = nullptr;
    QTemporaryDir m_folder;
    UserDefaults m_defaults{m_folder.filePath(u"settings"_s)};
    ApplicationLauncher m_launcher;
    PlayerWitness m_witness;
    MprisMusicApplication m_players{QDBusConnection::sessionBus(), m_defaults, m_launcher};
    std::unique_ptr<PlayerSound> m_sound = PulsePlayerSound::make();
    MusicWithSound m_music{m_players, *m_sound};
};

void RealPlayerSoundTest::initTestCase()
{
    const QString player = qEnvironmentVariable("TUNEDECK_PLAYER");
    const auto found = std::ranges::find(habits, player, &Habits::player);
    QVERIFY2(found != habits.end(), "TUNEDECK_PLAYER names no player; run-player does");
    m_habits = &*found;
    const auto follow = [this] { m_sound->follow(m_players.playerProcess()); };
    connect(&m_players, &MusicApplication::playerInfo, this, follow);
    connect(&m_players, &MusicApplication::playerDidChange, this, follow);
    connect(&m_players, &MusicApplication::didTerminate, this, follow);
    QVERIFY(QTest::qWaitFor([this] { return m_witness.findPlayer() && m_players.isRunning(); }, longestStart));
}

void RealPlayerSoundTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

QStringList RealPlayerSoundTest::outputs() const
{
    QStringList names;
    const QList<MusicAirPlayDevice> devices = m_music.currentAirPlayDevices().value_or(QList<MusicAirPlayDevice>());
    for (const MusicAirPlayDevice &device : devices) {
        names.append(device.name.value_or(QString()));
    }
    return names;
}

double RealPlayerSoundTest::volumeOfStreamFor(int volume) const
{
    switch (m_habits->volume) {
    case OwnVolume::IsTheStreams:
    case OwnVolume::IsKept:
        return volume;
    case OwnVolume::IsTheStreamsGain:
        return std::cbrt(volume / 100.0) * 100;
    case OwnVolume::IsApart:
        break;
    }
    return 100;
}

void RealPlayerSoundTest::turnTo(int volume)
{
    // A volume that is taken back while the track changes proves nothing.
    m_witness.awaitQuiet();
    // The player takes it back twice, and is believed then.
    const int times = m_habits->volume == OwnVolume::IsKept && !m_music.isVolumeOfStreams() ? 2 : 1;
    for (int time = 0; time < times; ++time) {
        QVERIFY(m_music.setSoundVolume(volume - time));
        m_witness.awaitQuiet();
    }
    const double wanted = volumeOfStreamFor(volume - times + 1);
    QVERIFY2(QTest::qWaitFor(
                 [&] {
                     const std::optional<ListedStream> stream = listedStream();
                     return stream && std::abs(stream->volume - wanted) < tolerance;
                 },
                 patience),
        QByteArray::number(listedStream().value_or(ListedStream()).volume).constData());
    QCOMPARE(m_music.soundVolume(), volume - times + 1);
    QCOMPARE(m_music.isVolumeOfStreams(), m_habits->volume == OwnVolume::IsKept);
    const double own = m_habits->volume == OwnVolume::IsKept ? 1 : volume / 100.0;
    QVERIFY2(std::abs(m_witness.volume() - own) * 100 < tolerance, QByteArray::number(m_witness.volume()).constData());
}

void RealPlayerSoundTest::aPlayerThatDoesNotPlayHasNoStream()
{
    if (m_habits->playsOnStart || isPlaying()) {
        QSKIP("The player plays already.");
    }
    QTRY_COMPARE(m_sound->state().obstacle, SoundObstacle::NoStream);
    QVERIFY(!m_music.currentAirPlayDevices());
}

void RealPlayerSoundTest::thePlayersStreamIsFoundWhenItPlays()
{
    // A player that reads its files ignores commands.
    const auto plays = [this] {
        return m_witness.status() == u"Playing"
            || (m_music.playpause() && QTest::qWaitFor([this] { return m_witness.status() == u"Playing"; }, 500));
    };
    QVERIFY(m_habits->playsOnStart || QTest::qWaitFor(plays, longestStart));
    QTRY_COMPARE_WITH_TIMEOUT(m_sound->state().obstacle, SoundObstacle::None, longestStart);
    QTRY_COMPARE(outputs(), QStringList{u"first"_s});
    QCOMPARE(m_music.currentAirPlayDevices()->first().kind, AirPlayDeviceKind::computer);
    QVERIFY(m_sound->state().canMove);
}

void RealPlayerSoundTest::theKnobTurnsThePlayersVolumeOrTheStreams()
{
    turnTo(60);
}

void RealPlayerSoundTest::playThroughMovesThePlayer()
{
    const int first = indexOfOutput(u"first"_s);
    const int second = indexOfOutput(u"second"_s);
    QVERIFY(first >= 0 && second >= 0);
    m_sound->moveTo(u"second"_s);
    QTRY_COMPARE(listedStream().value_or(ListedStream()).output, second);
    QTRY_COMPARE(outputs(), QStringList{u"second"_s});
    m_sound->moveTo({});
    QTRY_COMPARE(listedStream().value_or(ListedStream()).output, first);
    QTRY_COMPARE(outputs(), QStringList{u"first"_s});
}

void RealPlayerSoundTest::theStreamOfTheNextTrackIsFound()
{
    const QString before = m_witness.title();
    const auto hasChanged = [&] { return m_witness.title() != before; };
    if (!m_music.nextTrack() || !QTest::qWaitFor(hasChanged, patience)) {
        // It was the last one. At its start, the command leads to the one before.
        QVERIFY(m_music.setPlayerPosition(0));
        QVERIFY(QTest::qWaitFor([this] { return m_witness.position() < 1; }, patience));
        QVERIFY(m_music.backTrack());
        QVERIFY(QTest::qWaitFor(hasChanged, patience));
    }
    QTRY_COMPARE(m_witness.status(), u"Playing"_s);
    QTRY_VERIFY(listedStream());
    QTRY_COMPARE(m_sound->state().obstacle, SoundObstacle::None);
    QTRY_COMPARE(outputs(), QStringList{u"first"_s});
}

void RealPlayerSoundTest::theKnobWorksAsBeforeThen()
{
    turnTo(80);
}

void RealPlayerSoundTest::aPlayerThatQuitsHasNoSound()
{
    m_witness.closePlayer();
    QTRY_VERIFY(m_witness.isGone());
    QTRY_COMPARE(m_sound->state().obstacle, SoundObstacle::NoPlayer);
    QVERIFY(!m_music.currentAirPlayDevices());
    QVERIFY(!m_music.isVolumeOfStreams());
}

} // namespace tunedeck

QTEST_MAIN(tunedeck::RealPlayerSoundTest)
#include "RealPlayerSoundTest.moc"
