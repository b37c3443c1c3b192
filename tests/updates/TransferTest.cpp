// SPDX-License-Identifier: MIT
#include "updates/Transfer.h"

#include "UpdateServer.h"
#include "support/registerTest.h"
#include "updates/feed/isSecureAddress.h"

#include <QElapsedTimer>
#include <QHostAddress>
#include <QNetworkProxyFactory>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include <atomic>
#include <memory>
#include <optional>
#include <semaphore>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

// The linker puts the second in the place of QNetworkProxyFactory::systemProxyForQuery() and gives the first its name.
QList<QNetworkProxy> proxiesOfTheSystem(const QNetworkProxyQuery &query) asm(
    "__real__ZN20QNetworkProxyFactory19systemProxyForQueryERK18QNetworkProxyQuery");
QList<QNetworkProxy> proxiesOfTheTest(const QNetworkProxyQuery &query) asm(
    "__wrap__ZN20QNetworkProxyFactory19systemProxyForQueryERK18QNetworkProxyQuery");

namespace {
/// What a look-up waits for while it must not end; null otherwise. Look-ups run on a thread of their own.
std::atomic<std::binary_semaphore *> lookUp = nullptr;
} // namespace

QList<QNetworkProxy> proxiesOfTheTest(const QNetworkProxyQuery &query)
{
    if (std::binary_semaphore *const awaited = lookUp) {
        awaited->acquire();
    }
    return proxiesOfTheSystem(query);
}

namespace tunedeck {

namespace {
/// The result of a transfer.
struct Outcome {
    QByteArray bytes;
    std::optional<UpdateFailure> failure;
};

const TransferRules trustingRules{updateServerCertificate()};

Outcome transferred(const QUrl &url, const TransferRules &rules = trustingRules, qint64 maximumSize = 1'000)
{
    Outcome outcome;
    Transfer transfer(rules, maximumSize, [&outcome](QByteArrayView bytes) {
        outcome.bytes += bytes;
        return true;
    });
    const QSignalSpy finished(&transfer, &Transfer::finished);
    const QSignalSpy failed(&transfer, &Transfer::failed);
    QObject::connect(
        &transfer, &Transfer::failed, &transfer, [&outcome](UpdateFailure failure) { outcome.failure = failure; });
    transfer.start(url);
    if (!QTest::qWaitFor([&] { return finished.count() + failed.count() > 0; }, 20'000)) {
        qWarning("The transfer has no end.");
    }
    // No signal may follow the end.
    QCoreApplication::processEvents();
    if (finished.count() + failed.count() != 1) {
        qWarning("The transfer has more than one end.");
    }
    return outcome;
}
} // namespace

class TransferTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("no_proxy", "127.0.0.1"); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void secureAddressesAreHttpsWithAHost()
    {
        QVERIFY(isSecureAddress(QUrl(u"https://tunedeck.example/feed"_s)));
        for (const QString &address :
            {u"http://tunedeck.example/"_s, u"https:///feed"_s, u"https://a:b@tunedeck.example/"_s,
                u"https://a@tunedeck.example/"_s, u"file:///feed"_s, u"tunedeck.example"_s, QString()}) {
            QVERIFY2(!isSecureAddress(QUrl(address)), qPrintable(address));
        }
    }

    void theBytesArriveAsTheyAre()
    {
        UpdateServer server;
        const QByteArray body("\x1f\x8b\0 no archive", 14);
        server.setAnswer(u"/a"_s, {body, "200 OK", "Content-Type: application/gzip\r\n"});
        const Outcome outcome = transferred(server.url(u"/a"_s));
        QVERIFY(!outcome.failure);
        QCOMPARE(outcome.bytes, body);
    }

    void theRequestTellsNothingOfTheUser()
    {
        UpdateServer server;
        server.setAnswer(u"/a"_s, {"a", "200 OK", "Set-Cookie: id=1; Path=/\r\n"});
        server.redirect(u"/b"_s, server.url(u"/a"_s));
        QVERIFY(!transferred(server.url(u"/a"_s)).failure);
        QVERIFY(!transferred(server.url(u"/b"_s)).failure);
        QCOMPARE(server.requests().size(), 3);
        for (const QByteArray &request : server.requests()) {
            QVERIFY(!request.toLower().contains("\r\ncookie:"));
            QVERIFY(!request.toLower().contains("\r\nauthorization:"));
            QVERIFY(request.contains("Accept-Encoding: identity\r\n"));
            QVERIFY(request.contains("Accept-Language: *\r\n"));
            QVERIFY(request.contains("User-Agent: Tunedeck\r\n"));
        }
    }

    void aServerThatNobodyVouchesForIsNotAsked()
    {
        UpdateServer server;
        server.setAnswer(u"/a"_s, {"a"});
        QCOMPARE(transferred(server.url(u"/a"_s), {}).failure, UpdateFailure::insecure);
        QCOMPARE(server.requests().size(), 0);
    }

    void anAddressThatIsNotSecureIsNotAsked()
    {
        UpdateServer server;
        server.setAnswer(u"/a"_s, {"a"});
        QUrl plain = server.url(u"/a"_s);
        plain.setScheme(u"http"_s);
        QCOMPARE(transferred(plain).failure, UpdateFailure::insecure);
        server.redirect(u"/b"_s, plain);
        QCOMPARE(transferred(server.url(u"/b"_s)).failure, UpdateFailure::insecure);
        QUrl withName = server.url(u"/a"_s);
        withName.setUserName(u"a"_s);
        server.redirect(u"/c"_s, withName);
        QCOMPARE(transferred(server.url(u"/c"_s)).failure, UpdateFailure::insecure);
        server.redirect(u"/d"_s, QUrl(u"file:///etc/passwd"_s));
        QCOMPARE(transferred(server.url(u"/d"_s)).failure, UpdateFailure::insecure);
        QCOMPARE(server.requests().size(), 3);
    }

    void fiveRedirectsAreFollowed()
    {
        UpdateServer server;
        server.setAnswer(u"/6"_s, {"a"});
        for (int number = 1; number <= 5; ++number) {
            server.redirect(u"/%1"_s.arg(number), QUrl(QString::number(number + 1)));
        }
        server.redirect(u"/0"_s, server.url(u"/1"_s));
        QCOMPARE(transferred(server.url(u"/1"_s)).bytes, QByteArray("a"));
        QCOMPARE(transferred(server.url(u"/0"_s)).failure, UpdateFailure::tooManyRedirects);
    }

    void theBodyOfARedirectOrAnErrorIsNotWaitedFor()
    {
        UpdateServer server;
        server.setAnswer(u"/a"_s, {"a"});
        server.setAnswer(u"/b"_s, {"x", "302 Found", "Location: /a\r\n", 1, 10'000'000, true});
        server.setAnswer(u"/c"_s, {"x", "500 Internal Server Error", {}, 1, 10'000'000, true});
        QCOMPARE(transferred(server.url(u"/b"_s)).bytes, QByteArray("a"));
        QCOMPARE(transferred(server.url(u"/c"_s)).failure, UpdateFailure::refused);
    }

    void aTransferGoesThroughTheProxyOfTheSystem()
    {
        UpdateServer server;
        server.setAnswer(u"/a"_s, {"a"});
        QByteArray asked;
        QTcpServer proxy;
        QVERIFY(proxy.listen(QHostAddress::LocalHost));
        connect(&proxy, &QTcpServer::newConnection, this, [&] {
            QTcpSocket *client = proxy.nextPendingConnection();
            auto *target = new QTcpSocket(client);
            connect(client, &QTcpSocket::readyRead, target, [client, target, &asked, &server] {
                if (!asked.isEmpty()) {
                    target->write(client->readAll());
                    return;
                }
                asked = client->readAll();
                target->connectToHost(QHostAddress(QHostAddress::LocalHost), quint16(server.url({}).port()));
                client->write("HTTP/1.1 200 Connection established\r\n\r\n");
            });
            connect(target, &QTcpSocket::readyRead, client, [client, target] { client->write(target->readAll()); });
            connect(target, &QTcpSocket::disconnected, client, &QTcpSocket::disconnectFromHost);
        });
        const QUrl url = server.url(u"/a"_s);
        qunsetenv("no_proxy");
        qputenv("https_proxy", "http://127.0.0.1:" + QByteArray::number(proxy.serverPort()));
        const Outcome outcome = transferred(url);
        qunsetenv("https_proxy");
        qputenv("no_proxy", "127.0.0.1");
        QVERIFY2(asked.startsWith("CONNECT " + url.authority().toLatin1() + " HTTP/1.1\r\n"), asked.constData());
        QCOMPARE(outcome.failure, std::nullopt);
        QCOMPARE(outcome.bytes, QByteArray("a"));
    }

    /// The system may ask a server for its proxy, and the server may be silent.
    void aLookUpOfTheProxyThatDoesNotEndIsGivenUp()
    {
        UpdateServer server;
        server.setAnswer(u"/a"_s, {"a"});
        // The thread that looks up may need it when the test has ended.
        static std::binary_semaphore silent(0);
        lookUp = &silent;
        const Outcome outcome = transferred(server.url(u"/a"_s), {updateServerCertificate(), 1s});
        lookUp = nullptr;
        QCOMPARE(outcome.failure, UpdateFailure::stalled);
        QCOMPARE(server.requests().size(), 0);
        silent.release();
        QCOMPARE(transferred(server.url(u"/a"_s)).bytes, QByteArray("a"));
        QCOMPARE(server.requests().size(), 1);
    }

    void aProxyDoesNotRedirect()
    {
        UpdateServer server;
        server.setAnswer(u"/a"_s, {"a"});
        server.setAnswer(u"/b"_s, {"b"});
        QTcpServer proxy;
        QVERIFY(proxy.listen(QHostAddress::LocalHost));
        connect(&proxy, &QTcpServer::newConnection, this, [&] {
            QTcpSocket *socket = proxy.nextPendingConnection();
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            socket->write(
                "HTTP/1.1 302 Found\r\nLocation: " + server.url(u"/b"_s).toEncoded() + "\r\nContent-Length: 0\r\n\r\n");
        });
        QUrl url = server.url(u"/a"_s);
        url.setHost(u"localhost"_s);
        qputenv("https_proxy", "http://127.0.0.1:" + QByteArray::number(proxy.serverPort()));
        const Outcome outcome = transferred(url);
        qunsetenv("https_proxy");
        QCOMPARE(outcome.failure, UpdateFailure::refused);
        QCOMPARE(server.requests().size(), 0);
    }

    void moreThanTheMaximumEndsIt()
    {
        UpdateServer server;
        server.setAnswer(u"/whole"_s, {QByteArray(1'000, 'x')});
        server.setAnswer(u"/long"_s, {QByteArray(1'001, 'x')});
        QCOMPARE(transferred(server.url(u"/whole"_s)).bytes.size(), 1'000);
        QCOMPARE(transferred(server.url(u"/long"_s)).failure, UpdateFailure::tooLong);
    }

    void aTransferFails_data()
    {
        QTest::addColumn<QByteArray>("status");
        QTest::addColumn<qint64>("announced");
        QTest::addColumn<bool>("staysOpen");
        QTest::addColumn<int>("failure");
        QTest::newRow("not found") << QByteArray("404 Not Found") << 1LL << false << int(UpdateFailure::missing);
        QTest::newRow("gone") << QByteArray("410 Gone") << 1LL << false << int(UpdateFailure::missing);
        QTest::newRow("overloaded") << QByteArray("503 Service Unavailable") << 1LL << false
                                    << int(UpdateFailure::refused);
        QTest::newRow("a password is asked for")
            << QByteArray("401 Unauthorized") << 1LL << false << int(UpdateFailure::refused);
        QTest::newRow("a part") << QByteArray("206 Partial Content") << 1LL << false << int(UpdateFailure::refused);
        QTest::newRow("broken off") << QByteArray("200 OK") << 100LL << false << int(UpdateFailure::interrupted);
        QTest::newRow("silent") << QByteArray("200 OK") << 100LL << true << int(UpdateFailure::stalled);
    }
    void aTransferFails()
    {
        QFETCH(const QByteArray, status);
        QFETCH(const qint64, announced);
        QFETCH(const bool, staysOpen);
        QFETCH(const int, failure);
        const TransferRules rules{updateServerCertificate(), staysOpen ? 1s : 10s};
        UpdateServer server;
        server.setAnswer(u"/a"_s, {"x", status, {}, 1, announced, staysOpen});
        QCOMPARE(int(transferred(server.url(u"/a"_s), rules).failure.value()), failure);
    }

    void endlessHeadersEndIt()
    {
        UpdateServer server;
        server.setAnswer(u"/a"_s, {"a", "200 OK", {}, 1, -1, false, 20'000'000});
        QCOMPARE(transferred(server.url(u"/a"_s)).failure, UpdateFailure::refused);
        QVERIFY2(server.sentBytes() < 6'000'000, qPrintable(QString::number(server.sentBytes())));
    }

    void aServerThatSendsAByteNowAndThenEndsIt()
    {
        UpdateServer server;
        server.setAnswer(u"/a"_s, {"a", "200 OK", {}, 100, -1, false, 0, 100ms});
        QCOMPARE(transferred(server.url(u"/a"_s), {updateServerCertificate(), 1s}).failure, UpdateFailure::stalled);
    }

    void oneEndlessHeaderEndsIt()
    {
        UpdateServer server;
        server.setAnswer(u"/a"_s, {"a", "200 OK", "X: " + QByteArray(5'000'000, 'x') + "\r\n"});
        QCOMPARE(transferred(server.url(u"/a"_s)).failure, UpdateFailure::refused);
    }

    void aTransferIsCancelledAtOnce_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("silent") << u"/silent"_s;
        QTest::newRow("endless") << u"/endless"_s;
        QTest::newRow("slow") << u"/slow"_s;
    }
    void aTransferIsCancelledAtOnce()
    {
        QFETCH(const QString, path);
        UpdateServer server;
        server.setAnswer(u"/silent"_s, {{}, "200 OK", {}, 1, 100, true});
        server.setAnswer(u"/endless"_s, {QByteArray(100'000, 'x'), "200 OK", {}, 1'000'000});
        server.setAnswer(u"/slow"_s, {"a", "200 OK", {}, 1'000, -1, false, 0, 20ms});
        auto transfer = std::make_unique<Transfer>(trustingRules, 1LL << 40, [](QByteArrayView) { return true; });
        transfer->start(server.url(path));
        QTRY_COMPARE(server.openConnections(), 1);
        QTRY_VERIFY(server.sentBytes() > 0);
        QElapsedTimer time;
        time.start();
        transfer.reset();
        QVERIFY2(time.elapsed() < 100, qPrintable(QString::number(time.elapsed())));
        QTRY_COMPARE(server.openConnections(), 0);
    }

    void aTransferIsCancelledAtOnceBeforeAServerAnswers()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        auto transfer = std::make_unique<Transfer>(trustingRules, 1'000, [](QByteArrayView) { return true; });
        transfer->start(QUrl(u"https://127.0.0.1:%1/a"_s.arg(server.serverPort())));
        QTRY_VERIFY(server.hasPendingConnections());
        QElapsedTimer time;
        time.start();
        transfer.reset();
        QVERIFY2(time.elapsed() < 100, qPrintable(QString::number(time.elapsed())));
    }

    /// The sink may write into a folder in the network.
    void aTransferWhoseSinkHangsIsCancelledAtOnce()
    {
        struct Sink {
            std::binary_semaphore isCalled{0};
            std::binary_semaphore mayEnd{0};
            std::binary_semaphore hasEnded{0};
        };
        UpdateServer server;
        server.setAnswer(u"/a"_s, {"a"});
        const auto sink = std::make_shared<Sink>();
        auto transfer = std::make_unique<Transfer>(trustingRules, 1'000, [sink](QByteArrayView) {
            sink->isCalled.release();
            static_cast<void>(sink->mayEnd.try_acquire_for(3s));
            sink->hasEnded.release();
            return true;
        });
        const QSignalSpy progressed(transfer.get(), &Transfer::progressed);
        transfer->start(server.url(u"/a"_s));
        QVERIFY(QTest::qWaitFor([&] { return sink->isCalled.try_acquire(); }));
        QElapsedTimer time;
        time.start();
        transfer.reset();
        QVERIFY2(time.elapsed() < 100, qPrintable(QString::number(time.elapsed())));
        sink->mayEnd.release();
        QVERIFY(QTest::qWaitFor([&] { return sink->hasEnded.try_acquire(); }));
        QTRY_COMPARE(server.openConnections(), 0);
        QCOMPARE(progressed.count(), 0);
    }

    void aServerThatIsNotThereIsUnreachable()
    {
        QUrl url;
        {
            const UpdateServer gone;
            url = gone.url(u"/a"_s);
        }
        QCOMPARE(transferred(url).failure, UpdateFailure::unreachable);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::TransferTest, QCoreApplication)
#include "TransferTest.moc"
