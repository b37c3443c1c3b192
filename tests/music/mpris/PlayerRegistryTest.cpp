// SPDX-License-Identifier: MIT
#include "music/mpris/PlayerRegistry.h"
#include "DemoPlayerProcess.h"
#include "music/mpris/bus/BusCall.h"
#include "support/PrivateBus.h"
#include "support/TurnWatch.h"
#include "support/registerTest.h"

#include <QDBusMessage>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr qint64 longestTurn = 500;
#else
constexpr qint64 longestTurn = 50;
#endif

QString tenMegabytes(const QString &part)
{
    return part.repeated(10'000'000 / part.toUtf8().size());
}

} // namespace

/// The players on a real bus, with demo players as processes of their own.
class PlayerRegistryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aPlayersOwnNameIsShortAndPlain_data();
    void aPlayersOwnNameIsShortAndPlain();
    void aNameThatAPlayerTakesLaterIsShortAndPlain_data() { aPlayersOwnNameIsShortAndPlain_data(); }
    void aNameThatAPlayerTakesLaterIsShortAndPlain();

private:
    [[nodiscard]] QString identity() const;
    /// Lets the player call itself so. Returns when it does.
    void name(const QString &text) const;

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<DemoPlayerProcess> m_player;
    std::unique_ptr<PlayerRegistry> m_registry;
};

void PlayerRegistryTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_bus = std::make_unique<PrivateBus>();
    QVERIFY(m_bus->isRunning());
    m_player = std::make_unique<DemoPlayerProcess>(
        *m_bus, m_bus->connect(u"control"_s), QStringList{u"--name"_s, u"player"_s});
    QVERIFY(m_player->isReady());
}

void PlayerRegistryTest::cleanup()
{
    m_registry.reset();
    m_player.reset();
    m_bus.reset();
    QDBusConnection::disconnectFromBus(u"control"_s);
    QDBusConnection::disconnectFromBus(u"registry"_s);
}

QString PlayerRegistryTest::identity() const
{
    const std::vector<MprisPlayer *> players = m_registry->players();
    return players.empty() ? QString() : players.front()->identity();
}

void PlayerRegistryTest::name(const QString &text) const
{
    QVERIFY(m_player->tell(u"wrong Identity string "_s + text));
}

void PlayerRegistryTest::aPlayersOwnNameIsShortAndPlain_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("shown");
    QTest::newRow("ten megabytes") << tenMegabytes(u"x"_s) << QString(59, u'x') + u'…';
    QTest::newRow("ten megabytes of words") << tenMegabytes(u"ab "_s) << u"ab "_s.repeated(19) + u"ab…"_s;
    QTest::newRow("ten megabytes beyond one character")
        << tenMegabytes(u"\U0001f3b5"_s) << u"\U0001f3b5"_s.repeated(29) + u'…';
    QTest::newRow("ten megabytes of overrides") << tenMegabytes(u"\u202e"_s) << u"player"_s;
    QTest::newRow("line ends") << u"One\nTwo\r\nThree\u2028Four"_s << u"One Two Three Four"_s;
    QTest::newRow("overrides") << u"\u202eOne \u2066Two\u2069 \u200fThree\u202c"_s << u"One Two Three"_s;
    QTest::newRow("overrides and line ends within ten megabytes")
        << tenMegabytes(u"\u202ea\n\u2067b"_s) << u"a b"_s.repeated(19) + u"a…"_s;
}

void PlayerRegistryTest::aPlayersOwnNameIsShortAndPlain()
{
    QFETCH(const QString, given);
    QFETCH(const QString, shown);
    name(given);
    const QDBusConnection connection = m_bus->connect(u"registry"_s);
    TurnWatch turns;
    m_registry = std::make_unique<PlayerRegistry>(connection, std::chrono::steady_clock::now);
    QTRY_VERIFY(m_registry->isReady());
    QTRY_VERIFY(m_registry->findChildren<bus::PendingCall *>().isEmpty());
    const qint64 longest = turns.longest();
    QCOMPARE(identity(), shown);
    QVERIFY(m_registry->players().front()->isAttached());
    qInfo("longest turn %lld ms", longest);
    QVERIFY(longest < longestTurn);
}

void PlayerRegistryTest::aNameThatAPlayerTakesLaterIsShortAndPlain()
{
    QFETCH(const QString, given);
    QFETCH(const QString, shown);
    m_registry = std::make_unique<PlayerRegistry>(m_bus->connect(u"registry"_s), std::chrono::steady_clock::now);
    QTRY_COMPARE(identity(), u"Tunedeck Demo Player"_s);
    name(given);
    TurnWatch turns;
    QTRY_VERIFY(identity() != u"Tunedeck Demo Player"_s);
    const qint64 longest = turns.longest();
    QCOMPARE(identity(), shown);
    qInfo("longest turn %lld ms", longest);
    QVERIFY(longest < longestTurn);
}

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::PlayerRegistryTest, QGuiApplication)
#include "PlayerRegistryTest.moc"
