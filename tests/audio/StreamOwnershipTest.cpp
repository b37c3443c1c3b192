// SPDX-License-Identifier: MIT
#include "audio/StreamOwnership.h"
#include "audio/ProcessTable.h"
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QMap>
#include <QSet>
#include <QTest>

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {
struct Process {
    qint64 number;
    qint64 parent;
    QString name;
    QString sandbox = {};
    qint64 numberInside = 0; ///< 0 outside of a PID namespace of its own
};

/// The processes that a test makes up. Each runs the program that has its name.
class ScriptedProcesses : public ProcessTable {
public:
    explicit ScriptedProcesses(const QList<Process> &processes)
    {
        for (const Process &process : processes) {
            m_processes.insert(process.number, process);
        }
    }

    [[nodiscard]] std::optional<ProcessFacts> facts(qint64 number) const override
    {
        const auto process = m_processes.constFind(number);
        if (process == m_processes.cend()) {
            return std::nullopt;
        }
        QList<qint64> numbers{number};
        if (process->numberInside != 0) {
            numbers.append(process->numberInside);
        }
        return ProcessFacts{
            .parent = process->parent, .name = process->name, .binary = process->name, .numbers = numbers};
    }
    [[nodiscard]] QString sandbox(qint64 number) const override { return m_processes.value(number).sandbox; }
    [[nodiscard]] QSet<qint64> numbersInside(const QString &sandbox) const override
    {
        ++m_searches;
        QSet<qint64> numbers;
        for (const Process &process : m_processes) {
            if (process.sandbox == sandbox && process.numberInside != 0) {
                numbers.insert(process.numberInside);
            }
        }
        return numbers;
    }

    void end(qint64 number) { m_processes.remove(number); }
    /// How often all processes were looked at.
    [[nodiscard]] int searches() const { return m_searches; }

private:
    QMap<qint64, Process> m_processes;
    mutable int m_searches = 0;
};

const QList<Process> &machine()
{
    static const QList<Process> processes{{1, 0, u"systemd"_s}, {700, 1, u"systemd"_s}, {701, 700, u"gnome-shell"_s},
        {710, 700, u"bash"_s}, {800, 701, u"vlc"_s}, {810, 710, u"cmus"_s}, {820, 701, u"chromium"_s},
        {821, 820, u"chromium"_s}, {822, 820, u"chromium"_s}, {830, 701, u"python3"_s}, {831, 830, u"pacat"_s},
        {840, 701, u"firefox-esr"_s}, {850, 710, u"mpv"_s}, {860, 700, u"mpd"_s}, {870, 701, u"mpDris2"_s},
        {900, 700, u"bwrap"_s, u"org.example.Flat"_s, 1}, {902, 900, u"flat"_s, u"org.example.Flat"_s, 2},
        {905, 701, u"xdg-dbus-proxy"_s, u"org.example.Flat"_s}, {912, 700, u"other"_s, u"org.example.Other"_s, 2},
        {920, 700, u"unshared"_s, {}, 850}, {950, 700, u"pipewire-pulse"_s}};
    return processes;
}

PlayerProcess player(qint64 id, const QStringList &names)
{
    return {.id = id, .names = names};
}

StreamOrigin origin(std::uint32_t stream, qint64 claimed, const QString &application, const QString &binary = {})
{
    return {.stream = stream,
        .client = stream + 100,
        .claimedProcess = claimed,
        .application = application,
        .binary = binary};
}

StreamOrigin vouched(std::uint32_t stream, qint64 process, const QString &application)
{
    StreamOrigin found = origin(stream, 0, application);
    found.vouchedProcess = process;
    return found;
}

StreamOrigin sandboxed(std::uint32_t stream, qint64 claimed, const QString &sandbox)
{
    StreamOrigin found = origin(stream, claimed, u"flat"_s);
    found.sandbox = sandbox;
    return found;
}

StreamOrigin ofClient(std::uint32_t client, StreamOrigin stream)
{
    stream.client = client;
    return stream;
}

using Indexes = QList<std::uint32_t>;
using Origins = QList<StreamOrigin>;
} // namespace

Q_DECLARE_METATYPE(tunedeck::PlayerProcess)
Q_DECLARE_METATYPE(tunedeck::SoundObstacle)

class StreamOwnershipTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aStreamIsThePlayers_data();
    void aStreamIsThePlayers();
    void aStreamStaysThePlayersWhenTheProcessBetweenThemEnds();
    void anIndexThatIsUsedAgainIsJudgedAgain();
    void theProcessesAreSearchedOnceForAllStreams();
};

void StreamOwnershipTest::aStreamIsThePlayers_data()
{
    QTest::addColumn<PlayerProcess>("process");
    QTest::addColumn<Origins>("origins");
    QTest::addColumn<SoundObstacle>("obstacle");
    QTest::addColumn<Indexes>("indexes");
    const auto found = SoundObstacle::None;
    const auto none = SoundObstacle::NoStream;

    const StreamOrigin vlc = origin(1, 800, u"VLC media player (LibVLC 3.0.24)"_s, u"vlc"_s);
    const StreamOrigin cmus = origin(2, 810, u"C* Music Player"_s, u"cmus"_s);
    const StreamOrigin chromium = origin(3, 821, u"Chromium"_s, u"chromium"_s);
    const StreamOrigin page = origin(4, 822, u"Chromium"_s, u"chromium"_s);
    const StreamOrigin python = origin(5, 831, u"pacat"_s, u"pacat"_s);
    const StreamOrigin firefox = origin(6, 840, u"Firefox"_s, u"firefox-esr"_s);
    const StreamOrigin nativeMpv = vouched(7, 850, u"mpv"_s);
    const StreamOrigin mpd = origin(8, 860, u"Music Player Daemon"_s, u"mpd"_s);
    const Origins all{vlc, cmus, chromium, page, python, firefox, nativeMpv, mpd};

    QTest::newRow("VLC: the process is the owner") << player(800, {u"vlc"_s}) << all << found << Indexes{1};
    QTest::newRow("cmus, from a terminal") << player(810, {u"cmus"_s}) << all << found << Indexes{2};
    QTest::newRow("Chromium: its audio service's parent is the owner")
        << player(820, {u"chromium"_s, u"Chromium"_s}) << all << found << (Indexes{3, 4});
    QTest::newRow("Firefox") << player(840, {u"firefox"_s}) << all << found << Indexes{6};
    QTest::newRow("a player whose child plays") << player(830, {u"deck"_s}) << all << found << Indexes{5};
    QTest::newRow("mpv on PipeWire itself: its client's process")
        << player(850, {u"mpv"_s}) << all << found << Indexes{7};
    QTest::newRow("MPD: mpDris2 has no stream") << player(870, {u"mpd"_s}) << all << none << Indexes{};
    QTest::newRow("no stream at all") << player(800, {u"vlc"_s}) << Origins{} << none << Indexes{};

    QTest::newRow("the desktop's own player has nobody else's streams")
        << player(701, {u"shell"_s}) << all << none << Indexes{};
    QTest::newRow("nor has a shell") << player(710, {u"script"_s}) << all << none << Indexes{};
    QTest::newRow("but it has its own") << player(701, {u"shell"_s}) << Origins{origin(1, 701, u"bell"_s)} << found
                                        << Indexes{1};

    QTest::newRow("no process is known") << player(0, {u"vlc"_s}) << all << SoundObstacle::NoPlayer << Indexes{};
    QTest::newRow("a phone's player") << PlayerProcess{.id = 800, .isElsewhere = true, .names = {}} << all
                                      << SoundObstacle::PlayerElsewhere << Indexes{};

    QTest::newRow("the kernel's word counts more than the client's")
        << player(800, {u"vlc"_s})
        << Origins{{.stream = 1, .client = 2, .claimedProcess = 800, .vouchedProcess = 850, .application = u"mpv"_s}}
        << none << Indexes{};
    QTest::newRow("a client that claims the player's process, but runs another program")
        << player(800, {u"vlc"_s}) << Origins{origin(1, 800, u"vlc"_s, u"pacat"_s)} << none << Indexes{};
    QTest::newRow("a client that claims no such process")
        << player(42, {u"vlc"_s}) << Origins{origin(1, 42, u"vlc"_s)} << none << Indexes{};
    QTest::newRow("of two that claim it, the one with the player's name")
        << player(800, {u"vlc"_s}) << Origins{origin(9, 800, u"noise"_s), vlc} << found << Indexes{1};
    QTest::newRow("of two that claim it, neither has the player's name")
        << player(800, {u"deck"_s}) << Origins{origin(9, 800, u"noise"_s), vlc} << SoundObstacle::Ambiguous
        << Indexes{};
    QTest::newRow("a name alone makes no stream the player's")
        << player(800, {u"vlc"_s}) << Origins{origin(1, 850, u"vlc"_s)} << none << Indexes{};

    QTest::newRow("a Flatpak on PipeWire: by its identifier")
        << player(905, {u"flat"_s}) << Origins{sandboxed(1, 2, u"org.example.Flat"_s), vlc} << found << Indexes{1};
    QTest::newRow("another Flatpak with the same number inside")
        << player(905, {u"flat"_s}) << Origins{sandboxed(1, 2, u"org.example.Other"_s)} << none << Indexes{};
    QTest::newRow("a Flatpak on PulseAudio: by its number inside")
        << player(905, {u"flat"_s}) << Origins{origin(1, 2, u"flat"_s), vlc} << found << Indexes{1};
    QTest::newRow("a Flatpak that reaches PipeWire itself")
        << player(905, {u"flat"_s}) << Origins{vouched(1, 902, u"flat"_s), nativeMpv} << found << Indexes{1};
    QTest::newRow("a Flatpak with several streams of one client")
        << player(905, {u"flat"_s})
        << Origins{ofClient(5, sandboxed(1, 2, u"org.example.Flat"_s)),
               ofClient(5, sandboxed(2, 2, u"org.example.Flat"_s))}
        << found << (Indexes{1, 2});
    QTest::newRow("two instances of a Flatpak")
        << player(905, {u"flat"_s})
        << Origins{sandboxed(1, 2, u"org.example.Flat"_s), sandboxed(2, 2, u"org.example.Flat"_s)}
        << SoundObstacle::Ambiguous << Indexes{};
    QTest::newRow("a sandboxed stream whose number inside is the player's process")
        << player(850, {u"mpv"_s}) << Origins{sandboxed(1, 850, u"org.example.Flat"_s)} << none << Indexes{};
    QTest::newRow("a process in a PID namespace of its own is no player of ours")
        << player(920, {u"unshared"_s}) << Origins{origin(1, 920, u"unshared"_s)} << none << Indexes{};
}

void StreamOwnershipTest::aStreamIsThePlayers()
{
    QFETCH(const PlayerProcess, process);
    QFETCH(const Origins, origins);
    const ScriptedProcesses processes(machine());
    const StreamOwnership::Streams streams = StreamOwnership(process, processes).among(origins);
    QTEST(streams.obstacle, "obstacle");
    QTEST(streams.indexes, "indexes");
}

void StreamOwnershipTest::aStreamStaysThePlayersWhenTheProcessBetweenThemEnds()
{
    ScriptedProcesses processes({{830, 1, u"deck"_s}, {831, 830, u"worker"_s}, {832, 831, u"pacat"_s}});
    StreamOwnership ownership(player(830, {u"deck"_s}), processes);
    const Origins origins{origin(1, 832, u"pacat"_s)};
    QCOMPARE(ownership.among(origins).indexes, Indexes{1});
    processes.end(831);
    QCOMPARE(ownership.among(origins).indexes, Indexes{1});
}

void StreamOwnershipTest::anIndexThatIsUsedAgainIsJudgedAgain()
{
    const ScriptedProcesses processes(machine());
    StreamOwnership ownership(player(800, {u"vlc"_s}), processes);
    QCOMPARE(ownership.among({origin(1, 800, u"vlc"_s)}).indexes, Indexes{1});
    QCOMPARE(ownership.among({origin(1, 850, u"mpv"_s)}).obstacle, SoundObstacle::NoStream);
}

void StreamOwnershipTest::theProcessesAreSearchedOnceForAllStreams()
{
    const ScriptedProcesses processes(machine());
    StreamOwnership ownership(player(905, {u"flat"_s}), processes);
    Origins origins{ofClient(5, origin(1, 2, u"flat"_s))};
    for (std::uint32_t stream = 2; stream < 200; ++stream) {
        origins.append(origin(stream, 800, u"vlc"_s));
    }
    QCOMPARE(ownership.among(origins).indexes, Indexes{1});
    QCOMPARE(processes.searches(), 1);
    // A process that the round before did not find may have started since.
    origins.append(ofClient(5, origin(200, 2, u"flat"_s)));
    QCOMPARE(ownership.among(origins).indexes, (Indexes{1, 200}));
    QCOMPARE(processes.searches(), 2);
    QCOMPARE(ownership.among(origins).indexes, (Indexes{1, 200}));
    QCOMPARE(processes.searches(), 2);
}

TUNEDECK_TEST(StreamOwnershipTest, QCoreApplication)

#include "StreamOwnershipTest.moc"
