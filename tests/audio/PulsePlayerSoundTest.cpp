// SPDX-License-Identifier: MIT
#include "audio/PulsePlayerSound.h"
#include "PrivateSoundServer.h"
#include "SoundClient.h"
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <unistd.h>

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {
QStringList names(const QList<SoundOutput> &outputs)
{
    QStringList names;
    for (const SoundOutput &output : outputs) {
        names.append(output.name);
    }
    return names;
}
} // namespace

/// The sound of this process, which plays as a player would, on PulseAudio and on PipeWire.
class PulsePlayerSoundTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<PrivateSoundServer> m_server;
    std::unique_ptr<PlayerSound> m_sound;

    [[nodiscard]] SoundObstacle obstacle() const { return m_sound->state().obstacle; }
    /// Whether the player's sound is found with this volume.
    [[nodiscard]] bool hasVolume(int volume) const { return m_sound->state().volume == volume; }

private Q_SLOTS:
    void initTestCase_data() { addServerKinds(); }

    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        QFETCH_GLOBAL(const PrivateSoundServer::Kind, kind);
        if (!PrivateSoundServer::isInstalled(kind)) {
            QSKIP("The sound server is not installed.");
        }
        m_server = std::make_unique<PrivateSoundServer>(kind);
        QVERIFY(m_server->start());
        m_sound = PulsePlayerSound::make();
        QVERIFY(m_sound);
    }

    void cleanup()
    {
        m_sound.reset();
        m_server.reset();
    }

    void theStreamOfTheProcessIsFound()
    {
        SoundClient client;
        const quint32 index = client.play({});
        QVERIFY(index != PA_INVALID_INDEX);
        m_sound->follow(thisProcess());
        QCOMPARE(obstacle(), SoundObstacle::NotAsked);
        QTRY_COMPARE(obstacle(), SoundObstacle::None);
        QVERIFY(hasVolume(100));
        QVERIFY(!m_sound->state().isMuted);
        QVERIFY(m_sound->state().canMove);
        QVERIFY(names(m_sound->state().outputs).contains(u"First"_s));
        QVERIFY(names(m_sound->state().outputs).contains(u"Second"_s));
        QCOMPARE(m_sound->state().currentOutputs, QStringList{u"first"_s});
    }

    void aPlayerWithoutAStreamGetsOneWhenItPlays()
    {
        m_sound->follow(thisProcess());
        QTRY_COMPARE(obstacle(), SoundObstacle::NoStream);
        SoundClient client;
        const quint32 index = client.play({});
        QVERIFY(index != PA_INVALID_INDEX);
        QTRY_COMPARE(obstacle(), SoundObstacle::None);
        client.end(index);
        QTRY_COMPARE(obstacle(), SoundObstacle::NoStream);
        QVERIFY(client.play({}) != PA_INVALID_INDEX);
        QTRY_COMPARE(obstacle(), SoundObstacle::None);
    }

    void theStreamOfAChildIsThePlayers()
    {
        QProcess child;
        child.start(u"pacat"_s, {u"--playback"_s, u"--raw"_s, u"/dev/zero"_s});
        QVERIFY(child.waitForStarted());
        m_sound->follow(thisProcess());
        QTRY_COMPARE(obstacle(), SoundObstacle::None);
        m_sound->follow(PlayerProcess{.id = child.processId()});
        QTRY_COMPARE(obstacle(), SoundObstacle::None);
        child.kill();
        QVERIFY(child.waitForFinished());
        QTRY_COMPARE(obstacle(), SoundObstacle::NoStream);
    }

    void anotherProgramsStreamIsNot()
    {
        SoundClient liar("liar", {{PA_PROP_APPLICATION_PROCESS_ID, "1"}});
        QVERIFY(liar.play({.properties = {{PA_PROP_APPLICATION_PROCESS_ID, "1"}}}) != PA_INVALID_INDEX);
        m_sound->follow(thisProcess());
        QTRY_COMPARE(obstacle(), SoundObstacle::NoStream);
        m_sound->follow(PlayerProcess{.id = 42, .names = {u"liar"_s}});
        QTRY_COMPARE(obstacle(), SoundObstacle::NoStream);
    }

    void theVolumeReachesTheStreamAndKeepsItsBalance()
    {
        SoundClient client;
        const quint32 index = client.play({});
        QVERIFY(
            !m_server->control({u"set-sink-input-volume"_s, QString::number(index), u"65536"_s, u"32768"_s}).isNull());
        m_sound->follow(thisProcess());
        QTRY_VERIFY(hasVolume(100));
        const QSignalSpy changed(m_sound.get(), &PlayerSound::changed);
        m_sound->setVolume(50);
        QVERIFY(hasVolume(50));
        QCOMPARE(changed.count(), 1);
        const auto isNear = [&](int left, int right) {
            const QList<int> volumes = m_server->volumes(index);
            return volumes.size() == 2 && std::abs(volumes[0] - left) <= 2 && std::abs(volumes[1] - right) <= 2;
        };
        QTRY_VERIFY(isNear(32'768, 16'384));
        m_sound->setVolume(0);
        QTRY_VERIFY(isNear(0, 0));
        m_sound->setVolume(100);
        QTRY_VERIFY(isNear(65'536, 32'768));
    }

    void aMonoStreamCanBeSet()
    {
        SoundClient client;
        const quint32 index = client.play({.channels = 1});
        m_sound->follow(thisProcess());
        QTRY_VERIFY(hasVolume(100));
        m_sound->setVolume(30);
        QTRY_VERIFY(std::abs(m_server->volumes(index).value(0) - 19'661) <= 2);
        QCOMPARE(m_server->volumes(index).size(), 1);
        QVERIFY(hasVolume(30));
    }

    void aVolumeSetElsewhereIsShown()
    {
        SoundClient client;
        const quint32 index = client.play({});
        m_sound->follow(thisProcess());
        QTRY_VERIFY(hasVolume(100));
        QVERIFY(!m_server->control({u"set-sink-input-volume"_s, QString::number(index), u"40%"_s}).isNull());
        QTRY_VERIFY(hasVolume(40));
        QVERIFY(!m_server->control({u"set-sink-input-volume"_s, QString::number(index), u"150%"_s}).isNull());
        QTRY_VERIFY(hasVolume(100));
        QVERIFY(m_server->volumes(index).value(0) > 98'000);
        m_sound->setVolume(99);
        QTRY_VERIFY(std::abs(m_server->volumes(index).value(0) - 64'881) <= 2);
    }

    void muteIsSetAndShownAndLeavesTheVolume()
    {
        SoundClient client;
        const quint32 index = client.play({});
        m_sound->follow(thisProcess());
        QTRY_COMPARE(obstacle(), SoundObstacle::None);
        QVERIFY(!m_server->control({u"set-sink-input-mute"_s, QString::number(index), u"1"_s}).isNull());
        QTRY_VERIFY(m_sound->state().isMuted);
        QVERIFY(hasVolume(100));
        m_sound->setMuted(false);
        QTRY_VERIFY(!m_sound->state().isMuted);
        QVERIFY(!m_server->stream(index).value(u"mute"_s).toBool());
    }

    void ofADragTheLastVolumeWinsAndNoEchoMovesTheKnob()
    {
        SoundClient client;
        const quint32 index = client.play({});
        m_sound->follow(thisProcess());
        QTRY_VERIFY(hasVolume(100));
        QList<int> echoes;
        int hand = 100;
        connect(m_sound.get(), &PlayerSound::changed, this, [&] {
            if (!hasVolume(hand)) {
                echoes.append(m_sound->state().volume.value_or(-1));
            }
        });
        for (hand = 99; hand > 23; --hand) {
            m_sound->setVolume(hand);
            QCoreApplication::processEvents();
        }
        hand = 24;
        QTRY_VERIFY(std::abs(m_server->volumes(index).value(0) - 15'729) <= 2);
        QCOMPARE(echoes, QList<int>());
        QVERIFY(hasVolume(24));
        m_sound->disconnect(this);
    }

    void theHandReachesTheStreamWithin20Milliseconds()
    {
        SoundClient client;
        QVERIFY(client.play({}) != PA_INVALID_INDEX);
        m_sound->follow(thisProcess());
        QTRY_VERIFY(hasVolume(100));
        const std::unique_ptr<PlayerSound> witness = PulsePlayerSound::make();
        witness->follow(thisProcess());
        QTRY_COMPARE(witness->state().volume, 100);
        QList<qint64> times;
        for (int volume = 90; volume > 40; volume -= 10) {
            // The witness has rested for longer than its shortest interval.
            QSignalSpy(witness.get(), &PlayerSound::changed).wait(int(ServerListing::shortestInterval.count()) * 2);
            QSignalSpy changed(witness.get(), &PlayerSound::changed);
            QElapsedTimer clock;
            clock.start();
            m_sound->setVolume(volume);
            QVERIFY(changed.wait(1'000));
            times.append(clock.elapsed());
            QCOMPARE(witness->state().volume, volume);
        }
        // The best of five: the machine may be busy.
        QVERIFY2(
            *std::ranges::min_element(times) < 20, QByteArray::number(*std::ranges::min_element(times)).constData());
    }

    void streamsThatAreCorkedAreLeftAloneWhileOthersPlay()
    {
        SoundClient client;
        const quint32 playing = client.play({});
        const quint32 silent = client.play({.isCorked = true});
        m_sound->follow(thisProcess());
        QTRY_VERIFY(hasVolume(100));
        m_sound->setVolume(60);
        QTRY_VERIFY(std::abs(m_server->volumes(playing).value(0) - 39'322) <= 2);
        QCOMPARE(m_server->volumes(silent).value(0), 65'536);
        client.setCorked(silent, false);
        QTRY_VERIFY(hasVolume(100));
        m_sound->setVolume(70);
        QTRY_VERIFY(std::abs(m_server->volumes(playing).value(0) - 45'875) <= 2);
        QTRY_VERIFY(std::abs(m_server->volumes(silent).value(0) - 45'875) <= 2);
    }

    void aPausedPlayerKeepsItsKnob()
    {
        SoundClient client;
        const quint32 index = client.play({.isCorked = true});
        m_sound->follow(thisProcess());
        QTRY_VERIFY(hasVolume(100));
        m_sound->setVolume(10);
        QTRY_VERIFY(std::abs(m_server->volumes(index).value(0) - 6'554) <= 2);
    }

    void allStreamsMoveToTheOutput()
    {
        SoundClient client;
        QVERIFY(client.play({}) != PA_INVALID_INDEX);
        QVERIFY(client.play({}) != PA_INVALID_INDEX);
        m_sound->follow(thisProcess());
        QTRY_COMPARE(m_sound->state().currentOutputs, QStringList{u"first"_s});
        m_sound->moveTo(u"second"_s);
        QTRY_COMPARE(m_sound->state().currentOutputs, QStringList{u"second"_s});
        m_sound->moveTo({});
        QTRY_COMPARE(m_sound->state().currentOutputs, QStringList{u"first"_s});
        QVERIFY(m_sound->state().canMove);
    }

    void aStreamThatMustNotBeMovedSaysSo()
    {
        SoundClient client;
        QVERIFY(client.play({.mayBeMoved = false}) != PA_INVALID_INDEX);
        m_sound->follow(thisProcess());
        QTRY_COMPARE(obstacle(), SoundObstacle::None);
        m_sound->moveTo(u"second"_s);
        QTRY_VERIFY(!m_sound->state().canMove);
        QCOMPARE(m_sound->state().currentOutputs, QStringList{u"first"_s});
    }

    void anOutputThatIsUnpluggedLeavesTheList()
    {
        const int number = m_server->addOutput(u"third"_s, u"Third"_s);
        QVERIFY(number != 0);
        SoundClient client;
        QVERIFY(client.play({}) != PA_INVALID_INDEX);
        m_sound->follow(thisProcess());
        QTRY_COMPARE(obstacle(), SoundObstacle::None);
        m_sound->moveTo(u"third"_s);
        QTRY_COMPARE(m_sound->state().currentOutputs, QStringList{u"third"_s});
        QVERIFY(m_server->removeOutput(number));
        QTRY_COMPARE(m_sound->state().currentOutputs, QStringList{u"first"_s});
        QTRY_VERIFY(!names(m_sound->state().outputs).contains(u"Third"_s));
        m_sound->setVolume(50);
        QTRY_VERIFY(hasVolume(50));
    }

    void atRestNothingIsReportedAndNothingWakesTheThread()
    {
        SoundClient client;
        QVERIFY(client.play({}) != PA_INVALID_INDEX);
        m_sound->follow(thisProcess());
        QTRY_COMPARE(obstacle(), SoundObstacle::None);
        // The changes that follow a start, such as the default output's, are over.
        QSignalSpy changed(m_sound.get(), &PlayerSound::changed);
        qint64 before = 0;
        for (int second = 0; second < 10 && (changed.wait(1'000) || wakeUps() != before); ++second) {
            before = wakeUps();
        }
        QVERIFY(before > 0);
        QVERIFY(!changed.wait(2'000));
        QCOMPARE(wakeUps(), before);
    }

    void nobodyIsFollowedWithoutAConnection()
    {
        SoundClient client;
        QVERIFY(client.play({}) != PA_INVALID_INDEX);
        m_sound->follow(thisProcess());
        QTRY_COMPARE(obstacle(), SoundObstacle::None);
        QVERIFY(m_server->control({u"list"_s, u"clients"_s}).contains("org.tunedeck.Tunedeck"));
        m_sound->follow(std::nullopt);
        QCOMPARE(obstacle(), SoundObstacle::NoPlayer);
        m_sound->setVolume(5);
        m_sound->moveTo(u"second"_s);
        QTRY_VERIFY(!m_server->control({u"list"_s, u"clients"_s}).contains("org.tunedeck.Tunedeck"));
    }

private:
    /// How often the thread of libpulse that this object started has waited.
    [[nodiscard]] static qint64 wakeUps()
    {
        const QStringList threads = QDir(u"/proc/self/task"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        for (const QString &thread : threads) {
            QFile status(u"/proc/self/task/%1/status"_s.arg(thread));
            const QByteArray text = status.open(QIODevice::ReadOnly) ? status.readAll() : QByteArray();
            const qsizetype at = text.indexOf("voluntary_ctxt_switches:");
            if (text.startsWith("Name:\ttunedeck-audio\n") && at >= 0) {
                return text.mid(at).simplified().split(' ').value(1).toLongLong();
            }
        }
        return 0;
    }
};

TUNEDECK_TEST(PulsePlayerSoundTest, QCoreApplication)

#include "PulsePlayerSoundTest.moc"
