// SPDX-License-Identifier: MIT
#include "storm/Message.h"
#include "storm/Peer.h"
#include "support/registerTest.h"

#include <QByteArray>
#include <QLocalServer>
#include <QLocalSocket>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>
#include <future>
#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using tunedeck::storm::Message;
using tunedeck::storm::Peer;

namespace {

/// A bus with one peer, which answers when the test says so.
class ScriptedBus {
public:
    ScriptedBus() { m_server.listen(m_folder.filePath(u"bus"_s)); }

    [[nodiscard]] QByteArray address() const { return "unix:path=" + m_server.fullServerName().toUtf8(); }
    /// Waits for what the peer sends, and writes `bytes` at once.
    [[nodiscard]] bool answers(const QByteArray &bytes)
    {
        if (!m_peer && QTest::qWaitFor([this] { return m_server.hasPendingConnections(); })) {
            m_peer.reset(m_server.nextPendingConnection());
        }
        if (!m_peer || !QTest::qWaitFor([this] { return m_peer->bytesAvailable() > 0; })) {
            return false;
        }
        m_peer->readAll();
        m_peer->write(bytes);
        return m_peer->flush();
    }

private:
    QTemporaryDir m_folder;
    QLocalServer m_server;
    std::unique_ptr<QLocalSocket> m_peer;
};

QByteArray answerTo(quint32 serial)
{
    return Message{.type = Message::Type::Answer, .answers = serial}.bytes();
}

/// Whether a peer on the bus at `address` has an answer to its first call.
bool callIsAnswered(const QByteArray &address)
{
    Peer peer(address);
    return peer.call({.type = Message::Type::Call, .path = "/", .member = "GetId"}, {}, 3s);
}

} // namespace

/// A peer of the storm knows the answers to its calls.
class StormPeerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void anAnswerIsSeenAlsoIfOneToAnotherCallComesWithIt()
    {
        constexpr quint32 hello = 1'001;
        constexpr quint32 call = 1'002;
        constexpr quint32 stray = 1;
        ScriptedBus bus;
        auto isAnswered = std::async(std::launch::async, callIsAnswered, bus.address());
        QVERIFY(bus.answers("OK 0123456789abcdef\r\n"));
        QVERIFY(bus.answers(answerTo(hello)));
        QVERIFY(bus.answers(answerTo(call) + answerTo(stray)));
        QVERIFY(isAnswered.get());
    }
};

TUNEDECK_TEST(StormPeerTest, QCoreApplication)
#include "StormPeerTest.moc"
