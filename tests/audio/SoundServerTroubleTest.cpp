// SPDX-License-Identifier: MIT
#include "PrivateSoundServer.h"
#include "SoundClient.h"
#include "audio/PulsePlayerSound.h"
#include "audio/ServerConnection.h"
#include "support/TurnWatch.h"
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTemporaryFile>
#include <QTest>

#include <unistd.h>

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {
constexpr qint64 longestTurn = 50; // ms
constexpr int longestReturn = int(ServerConnection::longestWait.count()); // ms, until a new server is found
} // namespace

/// Servers that hang, die, refuse, or have far too much to report.
class SoundServerTroubleTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<PrivateSoundServer> m_server;
    std::unique_ptr<PlayerSound> m_sound;

    [[nodiscard]] SoundObstacle obstacle() const { return m_sound->state().obstacle; }
    [[nodiscard]] bool hasVolume(int volume) const { return m_sound->state().volume == volume; }
    void drag(int from, int to) const
    {
        for (int volume = from; volume >= to; --volume) {
            m_sound->setVolume(volume);
            QCoreApplication::processEvents();
        }
    }

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
        m_sound = PulsePlayerSound::make();
        QVERIFY(m_sound);
    }

    void cleanup()
    {
        m_sound.reset();
        m_server.reset();
    }

    void noServerIsStarted()
    {
        qint64 turn = 0;
        {
            TurnWatch turns;
            m_sound->follow(thisProcess());
            QTRY_COMPARE(obstacle(), SoundObstacle::NoServer);
            QSignalSpy changed(m_sound.get(), &PlayerSound::changed);
            QVERIFY(!changed.wait(1'000));
            turn = turns.longest();
        }
        QVERIFY2(turn < longestTurn, QByteArray::number(turn).constData());
        QVERIFY(m_server->control({u"info"_s}).isNull());
        QVERIFY(m_server->start());
        QTRY_COMPARE_WITH_TIMEOUT(obstacle(), SoundObstacle::NoStream, longestReturn);
    }

    void aServerThatIsKilledInADragIsFoundAgain()
    {
        QVERIFY(m_server->start());
        auto client = std::make_unique<SoundClient>();
        QVERIFY(client->play({}) != PA_INVALID_INDEX);
        m_sound->follow(thisProcess());
        QTRY_VERIFY(hasVolume(100));
        drag(99, 80);
        m_server->kill();
        qint64 turn = 0;
        {
            TurnWatch turns;
            drag(79, 60);
            QTRY_COMPARE(obstacle(), SoundObstacle::NoServer);
            turn = turns.longest();
        }
        QVERIFY2(turn < longestTurn, QByteArray::number(turn).constData());
        QCOMPARE(m_sound->state().volume, std::nullopt);
        QVERIFY(m_sound->state().outputs.isEmpty());
        client.reset();
        QVERIFY(m_server->start());
        client = std::make_unique<SoundClient>();
        const quint32 index = client->play({});
        QTRY_COMPARE_WITH_TIMEOUT(obstacle(), SoundObstacle::None, longestReturn);
        m_sound->setVolume(30);
        QTRY_VERIFY(std::abs(m_server->volumes(index).value(0) - 19'661) <= 2);
        m_sound->moveTo(u"second"_s);
        QTRY_COMPARE(m_sound->state().currentOutputs, QStringList{u"second"_s});
    }

    void aServerThatHangsIsNotWaitedFor()
    {
        QVERIFY(m_server->start());
        SoundClient client;
        const quint32 index = client.play({});
        m_sound->follow(thisProcess());
        QTRY_VERIFY(hasVolume(100));
        m_server->freeze();
        QElapsedTimer clock;
        clock.start();
        qint64 turn = 0;
        {
            TurnWatch turns;
            m_sound->setVolume(70);
            m_sound->setVolume(60);
            QTRY_COMPARE(obstacle(), SoundObstacle::NotResponding);
            turn = turns.longest();
        }
        QVERIFY2(turn < longestTurn, QByteArray::number(turn).constData());
        QVERIFY2(clock.elapsed() >= 900 && clock.elapsed() < 3'000, QByteArray::number(clock.elapsed()).constData());
        QCOMPARE(m_sound->state().volume, std::nullopt);
        m_sound->setVolume(5);
        m_server->thaw();
        // The one that was under way has been set. What the hand wanted after it is too old.
        QTRY_VERIFY(hasVolume(70));
        m_sound->setVolume(40);
        QTRY_VERIFY(std::abs(m_server->volumes(index).value(0) - 26'214) <= 2);
    }

    void aServerThatHangsBeforeTheConnectionIsNotWaitedFor()
    {
        QVERIFY(m_server->start());
        SoundClient client;
        QVERIFY(client.play({}) != PA_INVALID_INDEX);
        m_server->freeze();
        qint64 turn = 0;
        {
            TurnWatch turns;
            m_sound->follow(thisProcess());
            QTRY_COMPARE(obstacle(), SoundObstacle::NotResponding);
            turn = turns.longest();
        }
        QVERIFY2(turn < longestTurn, QByteArray::number(turn).constData());
        m_server->thaw();
        QTRY_VERIFY(hasVolume(100));
    }

    void aHangingServerDoesNotDelayTheEnd()
    {
        QVERIFY(m_server->start());
        m_sound->follow(thisProcess());
        QTRY_COMPARE(obstacle(), SoundObstacle::NoStream);
        m_server->freeze();
        QElapsedTimer clock;
        clock.start();
        m_sound->follow(PlayerProcess{.id = 1});
        m_sound.reset();
        QVERIFY2(clock.elapsed() < 500, QByteArray::number(clock.elapsed()).constData());
        m_server->thaw();
    }

    void aServerThatRefusesIsNone()
    {
        QFETCH_GLOBAL(const PrivateSoundServer::Kind, kind);
        if (kind == PrivateSoundServer::Kind::PipeWire) {
            QSKIP("PipeWire refuses nobody but without its core, which the next test is about.");
        }
        QVERIFY(m_server->start());
        QTcpServer free;
        QVERIFY(free.listen(QHostAddress::LocalHost));
        const quint16 port = free.serverPort();
        free.close();
        QVERIFY(!m_server
                ->control(
                    {u"load-module"_s, u"module-native-protocol-tcp"_s, u"listen=127.0.0.1"_s, u"port=%1"_s.arg(port)})
                .isNull());
        QTemporaryFile cookie;
        QVERIFY(cookie.open());
        cookie.write(QByteArray(256, 'x'));
        QVERIFY(cookie.flush());
        qputenv("PULSE_SERVER", "tcp:127.0.0.1:" + QByteArray::number(port));
        qputenv("PULSE_COOKIE", QFile::encodeName(cookie.fileName()));
        TurnWatch turns;
        m_sound->follow(thisProcess());
        QTRY_COMPARE(obstacle(), SoundObstacle::NoServer);
        const qint64 turn = turns.longest();
        QVERIFY2(turn < longestTurn, QByteArray::number(turn).constData());
        qunsetenv("PULSE_SERVER");
        qunsetenv("PULSE_COOKIE");
        QTRY_COMPARE(obstacle(), SoundObstacle::NoStream);
    }

    void aServerThatLosesItsCoreIsNone()
    {
        QFETCH_GLOBAL(const PrivateSoundServer::Kind, kind);
        if (kind == PrivateSoundServer::Kind::PulseAudio) {
            QSKIP("PulseAudio is one process.");
        }
        QVERIFY(m_server->start());
        auto client = std::make_unique<SoundClient>();
        QVERIFY(client->play({}) != PA_INVALID_INDEX);
        m_sound->follow(thisProcess());
        QTRY_VERIFY(hasVolume(100));
        qint64 turn = 0;
        {
            TurnWatch turns;
            m_server->killCore();
            QTRY_COMPARE(obstacle(), SoundObstacle::NoServer);
            turn = turns.longest();
        }
        QVERIFY2(turn < longestTurn, QByteArray::number(turn).constData());
        client.reset();
        m_server->kill();
        QVERIFY(m_server->start());
        QTRY_COMPARE_WITH_TIMEOUT(obstacle(), SoundObstacle::NoStream, longestReturn);
    }

    void twoHundredStreamsAreReadAndSet()
    {
        QVERIFY(m_server->start());
        SoundClient client;
        QList<quint32> indexes;
        // PipeWire mixes 128 streams to one output at most.
        for (int i = 0; i < 200; ++i) {
            indexes.append(
                client.play({.channels = 1, .isCorked = true, .output = i % 2 == 0 ? "first"_ba : "second"_ba}));
        }
        QVERIFY(!indexes.contains(PA_INVALID_INDEX));
        qint64 turn = 0;
        {
            TurnWatch turns;
            m_sound->follow(thisProcess());
            QTRY_COMPARE(obstacle(), SoundObstacle::None);
            m_sound->setVolume(50);
            QSignalSpy(m_sound.get(), &PlayerSound::changed).wait(300);
            turn = turns.longest();
        }
        QVERIFY2(turn < longestTurn, QByteArray::number(turn).constData());
        QTRY_COMPARE(m_server->volumes(indexes.last()), QList<int>{32'768});
        QCOMPARE(m_server->volumes(indexes.first()), QList<int>{32'768});
        QVERIFY(hasVolume(50));
    }

    void aThousandOutputsComeAndGo()
    {
        QVERIFY(m_server->start());
        SoundClient client;
        const quint32 index = client.play({});
        m_sound->follow(thisProcess());
        QTRY_VERIFY(hasVolume(100));
        qint64 turn = 0;
        {
            TurnWatch turns;
            for (int round = 0; round < 10 && !QTest::currentTestFailed(); ++round) {
                comeAndGo(client, 100);
            }
            QTRY_COMPARE(m_sound->state().outputs.size(), 2);
            turn = turns.mostWork();
        }
        QVERIFY2(turn < longestTurn, QByteArray::number(turn).constData());
        m_sound->setVolume(50);
        QTRY_VERIFY(std::abs(m_server->volumes(index).value(0) - 32'768) <= 2);
    }

private:
    /// The outputs are added and removed one after the other, while the event loop goes on.
    void comeAndGo(SoundClient &client, int count) const
    {
        QList<quint32> numbers;
        for (int i = 0; i < count; ++i) {
            numbers.append(client.addOutput("output" + QByteArray::number(i)));
            QVERIFY(numbers.last() != PA_INVALID_INDEX);
            QCoreApplication::processEvents();
        }
        QTRY_COMPARE(m_sound->state().outputs.size(), PlayerSound::maximumOutputs);
        for (const quint32 number : std::as_const(numbers)) {
            client.removeOutput(number);
        }
    }
};

TUNEDECK_TEST(SoundServerTroubleTest, QCoreApplication)

#include "SoundServerTroubleTest.moc"
