// SPDX-License-Identifier: MIT
#include "above/CompositorSocket.h"

#include "above/ScriptedCompositor.h"
#include "support/TurnWatch.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QElapsedTimer>
#include <QFile>
#include <QSignalSpy>
#include <QTest>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace tunedeck;

namespace {
CompositorSocket::Reading untilClosed(const QByteArray & /*bytes*/, bool isClosed)
{
    return isClosed ? CompositorSocket::Reading::Finished : CompositorSocket::Reading::Unfinished;
}

CompositorSocket::Reading untilFullStop(const QByteArray &bytes, bool /*isClosed*/)
{
    return bytes.endsWith('.') ? CompositorSocket::Reading::Finished : CompositorSocket::Reading::Unfinished;
}

CompositorSocket::Reading never(const QByteArray & /*bytes*/, bool /*isClosed*/)
{
    return CompositorSocket::Reading::Invalid;
}

/// A socket whose queue is full, because nobody accepts who waits in it.
class FullSocket {
public:
    explicit FullSocket(const QString &path)
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const QByteArray name = QFile::encodeName(path);
        std::copy(name.begin(), name.end(), address.sun_path);
        const auto *target = reinterpret_cast<const sockaddr *>(&address);
        ::bind(m_listener, target, sizeof(address));
        ::listen(m_listener, 0);
        ::connect(m_waiting, target, sizeof(address));
    }

    ~FullSocket()
    {
        ::close(m_waiting);
        ::close(m_listener);
    }
    FullSocket(const FullSocket &) = delete;
    FullSocket &operator=(const FullSocket &) = delete;

private:
    const int m_listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int m_waiting = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
};
} // namespace

class CompositorSocketTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void itAsksAndHearsTheAnswer()
    {
        ScriptedCompositor compositor;
        compositor.answer = [](const QByteArray &) { return QByteArrayLiteral("yes"); };
        CompositorSocket socket(untilClosed);
        QSignalSpy answered(&socket, &CompositorSocket::answered);
        socket.ask(compositor.path(), "is it?");
        QVERIFY(answered.wait());
        QCOMPARE(answered.constFirst(), QVariantList{QByteArrayLiteral("yes")});
        QCOMPARE(compositor.questions, QList<QByteArray>{"is it?"});
    }

    void anAnswerIsWholeBeforeTheConnectionCloses()
    {
        ScriptedCompositor compositor;
        compositor.closesAfterAnswer = false;
        compositor.answer = [](const QByteArray &) { return QByteArrayLiteral("yes."); };
        CompositorSocket socket(untilFullStop);
        QSignalSpy answered(&socket, &CompositorSocket::answered);
        socket.ask(compositor.path(), "is it?");
        QVERIFY(answered.wait());
        QTRY_COMPARE(compositor.connectionsClosed, 1);
    }

    void itAsksAgainFromTheAnswer()
    {
        ScriptedCompositor compositor;
        compositor.answer = [](const QByteArray &question) { return question; };
        CompositorSocket socket(untilClosed);
        QList<QByteArray> answers;
        connect(&socket, &CompositorSocket::answered, this, [&](const QByteArray &answer) {
            answers.append(answer);
            if (answers.size() < 3) {
                socket.ask(compositor.path(), QByteArray::number(answers.size()));
            }
        });
        socket.ask(compositor.path(), "0");
        QTRY_COMPARE(answers, (QList<QByteArray>{"0", "1", "2"}));
    }

    void itFailsAtOnceWhereNobodyListens_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("nothing") << QString();
        QTest::newRow("missing") << QStringLiteral("/nowhere/socket");
        QTest::newRow("no socket") << QStringLiteral("/dev/null");
        QTest::newRow("too long") << QString(200, u'x');
        QTest::newRow("null byte") << QString(QChar(0));
    }

    void itFailsAtOnceWhereNobodyListens()
    {
        QFETCH(const QString, path);
        CompositorSocket socket(untilClosed);
        const QSignalSpy failed(&socket, &CompositorSocket::failed);
        socket.ask(path, "is it?");
        QCOMPARE(failed.count(), 1);
    }

    void itFailsAtOnceWhereACompositorThatHangsHasTooManyWaiting()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("socket"));
        const FullSocket full(path);
        CompositorSocket socket(untilClosed);
        const QSignalSpy failed(&socket, &CompositorSocket::failed);
        TurnWatch turns;
        socket.ask(path, "is it?");
        QCOMPARE(failed.count(), 1);
        QVERIFY(turns.longest() < 100);
    }

    void anAnswerThatIsNoneFails()
    {
        ScriptedCompositor compositor;
        compositor.answer = [](const QByteArray &) { return QByteArrayLiteral("yes"); };
        CompositorSocket socket(never);
        QSignalSpy failed(&socket, &CompositorSocket::failed);
        socket.ask(compositor.path(), "is it?");
        QVERIFY(failed.wait());
    }

    void anAnswerThatBreaksOffFails()
    {
        ScriptedCompositor compositor;
        compositor.answer = [](const QByteArray &) { return QByteArrayLiteral("ye"); };
        CompositorSocket socket(untilFullStop);
        QSignalSpy failed(&socket, &CompositorSocket::failed);
        socket.ask(compositor.path(), "is it?");
        QVERIFY(failed.wait());
    }

    void anEndlessAnswerIsCutOffWithoutHoldingUpTheProgram()
    {
        ScriptedCompositor compositor;
        compositor.closesAfterAnswer = false;
        compositor.answer = [](const QByteArray &) { return QByteArray(CompositorSocket::mostBytes + 1, 'x'); };
        CompositorSocket socket(untilClosed);
        QSignalSpy failed(&socket, &CompositorSocket::failed);
        socket.ask(compositor.path(), "is it?");
        QVERIFY(failed.wait());
        QTRY_COMPARE(compositor.connectionsClosed, 1);
    }

    void aClosedQuestionIsNotAnswered()
    {
        ScriptedCompositor compositor;
        compositor.answer = [](const QByteArray &) { return QByteArrayLiteral("yes"); };
        CompositorSocket socket(untilClosed);
        const QSignalSpy answered(&socket, &CompositorSocket::answered);
        const QSignalSpy failed(&socket, &CompositorSocket::failed);
        socket.ask(compositor.path(), "is it?");
        socket.close();
        QTRY_COMPARE(compositor.connectionsClosed, 1);
        QCOMPARE(answered.count() + failed.count(), 0);
    }

    void aSocketOfAnotherUserIsNotAsked()
    {
        if (::geteuid() != 0) {
            QSKIP("Only root can listen as another user.");
        }
        const uid_t nobody = 65'534;
        // The credentials are those of the moment when the process began to listen.
        QVERIFY(::seteuid(nobody) == 0);
        const QTemporaryDir folder;
        QLocalServer server;
        const bool listens = server.listen(folder.filePath(QStringLiteral("socket")));
        QVERIFY(::seteuid(0) == 0);
        QVERIFY(listens);
        CompositorSocket socket(untilClosed);
        const QSignalSpy failed(&socket, &CompositorSocket::failed);
        socket.ask(server.fullServerName(), "is it?");
        QCOMPARE(failed.count(), 1);
    }
};

TUNEDECK_TEST(CompositorSocketTest, QCoreApplication)
#include "CompositorSocketTest.moc"
