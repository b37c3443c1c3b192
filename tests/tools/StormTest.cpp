// SPDX-License-Identifier: MIT
#include "support/PrivateBus.h"
#include "support/endWithParent.h"
#include "support/registerTest.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using tunedeck::PrivateBus;

namespace {

constexpr int patience = 20'000; // milliseconds

/// A storm on a bus, until it is over or this ends.
class Storm {
public:
    Storm(const PrivateBus &bus, const QStringList &arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
        m_process.setProcessEnvironment(environment);
        tunedeck::endWithParent(m_process);
        m_process.start(QStringLiteral(STORM), arguments);
    }
    ~Storm()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    Storm(const Storm &) = delete;
    Storm &operator=(const Storm &) = delete;

    [[nodiscard]] bool isReady()
    {
        return QTest::qWaitFor([this] { return m_process.canReadLine(); }, patience)
            && m_process.readLine() == "ready\n";
    }
    /// The number that it prints as "sent" when it is over.
    [[nodiscard]] qint64 sent()
    {
        if (!QTest::qWaitFor([this] { return m_process.state() == QProcess::NotRunning; }, patience)) {
            return -1;
        }
        const QString said = QString::fromUtf8(m_process.readAllStandardOutput());
        return QRegularExpression(u"^sent: (\\d+)$"_s, QRegularExpression::MultilineOption)
            .match(said)
            .captured(1)
            .toLongLong();
    }

private:
    QProcess m_process;
};

/// The players as a listener on the bus hears them.
class Listener : public QObject {
    Q_OBJECT

public:
    explicit Listener(const PrivateBus &bus)
        : connection(bus.connect(u"listener"_s))
    {
        connection.connect(QString(), u"/org/mpris/MediaPlayer2"_s, u"org.freedesktop.DBus.Properties"_s,
            u"PropertiesChanged"_s, this, SLOT(handleChange(QDBusMessage)));
    }
    ~Listener() override { QDBusConnection::disconnectFromBus(u"listener"_s); }

    [[nodiscard]] qsizetype namesOfPlayers() const
    {
        const QStringList names = connection.interface()->registeredServiceNames();
        return names.filter(QRegularExpression(u"^org\\.mpris\\.MediaPlayer2\\."_s)).size();
    }

    QDBusConnection connection;
    qint64 changes = 0;
    qsizetype artists = 0;
    QStringList statuses;

private Q_SLOTS:
    void handleChange(const QDBusMessage &signal)
    {
        ++changes;
        const auto properties = qdbus_cast<QVariantMap>(signal.arguments().value(1));
        const auto metadata = qdbus_cast<QVariantMap>(properties.value(u"Metadata"_s));
        artists = metadata.value(u"xesam:artist"_s).toStringList().size();
        statuses.append(properties.value(u"PlaybackStatus"_s).toString());
    }
};

} // namespace

/// The storm is as strong as it says.
class StormTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void itSendsAsManySignalsAsItSays()
    {
        const PrivateBus bus;
        const Listener listener(bus);
        Storm storm(bus, {u"signals"_s, u"--rate"_s, u"2000"_s, u"--seconds"_s, u"1"_s});
        QVERIFY(storm.isReady());
        const qint64 sent = storm.sent();
        QVERIFY2(sent > 1'000 && sent <= 2'000, qPrintable(QString::number(sent)));
        QTRY_COMPARE(listener.changes, sent);
    }

    void itSendsContainersAsLargeAsItIsAskedTo()
    {
        const PrivateBus bus;
        const Listener listener(bus);
        Storm storm(bus, {u"containers"_s, u"--size"_s, u"80000"_s, u"--count"_s, u"3"_s, u"--seconds"_s, u"0"_s});
        QVERIFY(storm.isReady());
        QCOMPARE(storm.sent(), 3);
        QTRY_COMPARE(listener.changes, 3);
        QCOMPARE(listener.artists, 10'000);
    }

    void itsPlayersChangeInTurn()
    {
        const PrivateBus bus;
        const Listener listener(bus);
        Storm storm(bus, {u"players"_s, u"--count"_s, u"5"_s, u"--rate"_s, u"100"_s, u"--seconds"_s, u"1"_s});
        QVERIFY(storm.isReady());
        QCOMPARE(listener.namesOfPlayers(), 5);
        // The first plays, and the others do not: each changes once, then once more.
        QTRY_VERIFY(listener.changes >= 10);
        QVERIFY(listener.statuses.contains(u"Paused"_s));
        QVERIFY(listener.statuses.contains(u"Playing"_s));
        QVERIFY(storm.sent() >= 50);
    }

    void itsNamesComeAndGo()
    {
        const PrivateBus bus;
        const Listener listener(bus);
        Storm storm(bus, {u"names"_s, u"--count"_s, u"300"_s, u"--rate"_s, u"4"_s, u"--seconds"_s, u"2"_s});
        QVERIFY(storm.isReady());
        QTRY_COMPARE(listener.namesOfPlayers(), 299);
        QTRY_COMPARE(listener.namesOfPlayers(), 300);
        QVERIFY(storm.sent() >= 4);
    }

    void anUnknownStormIsRefused()
    {
        QProcess process;
        process.start(QStringLiteral(STORM), {u"of paper"_s});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 1);
        QCOMPARE(process.readAllStandardError(), "Which storm? See --help.\n");
    }
};

TUNEDECK_TEST(StormTest, QCoreApplication)
#include "StormTest.moc"
