// SPDX-License-Identifier: MIT
#include "audio/ServerConnection.h"
#include "PrivateSoundServer.h"
#include "audio/PulsePlayerSound.h"
#include "support/registerTest.h"

#include <pulse/context.h>
#include <pulse/proplist.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHostAddress>
#include <QList>
#include <QLocalSocket>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include <atomic>
#include <memory>
#include <unistd.h>

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {
std::atomic<bool> isOutOfMemory = false;

/// A server that can be made to crash: it stands between the program and a real server.
class CrashingServer : public QTcpServer {
public:
    explicit CrashingServer(const QString &realServer)
        : m_realServer(realServer)
    {
        connect(this, &QTcpServer::newConnection, this, &CrashingServer::passOn);
    }

    /// How often the program has connected.
    [[nodiscard]] int connections() const { return m_connections; }
    void crash() const
    {
        const auto clients = findChildren<QTcpSocket *>();
        for (QTcpSocket *client : clients) {
            client->abort();
        }
    }

private:
    void passOn()
    {
        ++m_connections;
        QTcpSocket *client = nextPendingConnection();
        auto *server = new QLocalSocket(client);
        connect(client, &QTcpSocket::readyRead, server, [=] { server->write(client->readAll()); });
        connect(server, &QLocalSocket::readyRead, client, [=] { client->write(server->readAll()); });
        connect(client, &QTcpSocket::disconnected, client, &QObject::deleteLater);
        server->connectToServer(m_realServer);
    }

    QString m_realServer;
    int m_connections = 0;
};

PlayerProcess thisProcess()
{
    return {.id = ::getpid(), .names = {u"deck"_s}};
}
} // namespace

extern "C" {
// The linker has the program call the test's function instead of libpulse's.
pa_context *contextOfLibpulse(pa_mainloop_api *api, const char *name, const pa_proplist *properties) asm(
    "__real_pa_context_new_with_proplist");
pa_context *contextOfTheTest(pa_mainloop_api *api, const char *name, const pa_proplist *properties) asm(
    "__wrap_pa_context_new_with_proplist");

pa_context *contextOfTheTest(pa_mainloop_api *api, const char *name, const pa_proplist *properties)
{
    return isOutOfMemory ? nullptr : contextOfLibpulse(api, name, properties);
}
}

class ServerConnectionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        if (!PrivateSoundServer::isInstalled(PrivateSoundServer::Kind::PulseAudio)) {
            QSKIP("PulseAudio is not installed.");
        }
    }

    void aServerThatCrashesAgainAndAgainIsTriedLessAndLessOften()
    {
        PrivateSoundServer server(PrivateSoundServer::Kind::PulseAudio);
        QVERIFY(server.start());
        CrashingServer crashing(qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/pulse/native"_s);
        QVERIFY(crashing.listen(QHostAddress::LocalHost));
        qputenv("PULSE_SERVER", "tcp:127.0.0.1:" + QByteArray::number(crashing.serverPort()));
        const std::unique_ptr<PlayerSound> sound = PulsePlayerSound::make();
        QElapsedTimer clock;
        QList<qint64> times;
        connect(sound.get(), &PlayerSound::changed, this, [&] {
            if (sound->state().obstacle == SoundObstacle::NoStream) {
                times.append(clock.restart());
                crashing.crash();
            }
        });
        clock.start();
        sound->follow(thisProcess());
        QTRY_COMPARE_WITH_TIMEOUT(times.size(), 5, 10'000);
        sound->disconnect(this);
        // The waits before the last two attempts are at least four and eight times as long as the first one.
        QVERIFY2(times[3] >= 400 && times[4] >= 800, QByteArray::number(times[4]).constData());
        QVERIFY(crashing.connections() >= 5);
        qunsetenv("PULSE_SERVER");
        QTRY_COMPARE_WITH_TIMEOUT(sound->state().obstacle, SoundObstacle::NoStream, 10'000);
    }

    void withoutMemoryForAConnectionThereIsNoServerUntilThereIs()
    {
        PrivateSoundServer server(PrivateSoundServer::Kind::PulseAudio);
        QVERIFY(server.start());
        isOutOfMemory = true;
        const std::unique_ptr<PlayerSound> sound = PulsePlayerSound::make();
        sound->follow(thisProcess());
        QTRY_COMPARE(sound->state().obstacle, SoundObstacle::NoServer);
        sound->follow(std::nullopt);
        sound->follow(thisProcess());
        QTRY_COMPARE(sound->state().obstacle, SoundObstacle::NoServer);
        isOutOfMemory = false;
        QTRY_COMPARE(sound->state().obstacle, SoundObstacle::NoStream);
    }
};

TUNEDECK_TEST(ServerConnectionTest, QCoreApplication)

#include "ServerConnectionTest.moc"
