// SPDX-License-Identifier: MIT
#include "music/mpris/bus/NamesOnBus.h"
#include "MusicAtRest.h"
#include "music/mpris/bus/MprisNames.h"
#include "support/PrivateBus.h"
#include "support/registerTest.h"

#include <QDBusConnectionInterface>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

/// The names on a real bus, taken and given up by connections of this process.
class NamesOnBusTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void namesThatWereThereComeInTheOrderOfTheirConnections();
    void aNameThatComesLaterIsAnnouncedWithItsOwner();
    void aSecondNameOfAConnectionIsAnnouncedAfterItsOwnersCountIsKnown();
    void aNameThatGoesHasNoOwner();
    void aNameThatChangesHandsIsAnnouncedAgain();
    void ofManyOwnersWithinATurnTheLastCounts();
    void aNameGivenUpAndTakenAgainWithinATurnHasNotChanged();
    void otherNamesAreNoPlayers_data();
    void otherNamesAreNoPlayers();
    void withoutABusThereAreNoNames();
    void whatWasTooMuchIsLookedForWhenHalfIsGone();

private:
    /// A connection of its own.
    QDBusConnection connect() { return m_bus->connect(QString::number(++m_connections)); }
    static bool take(const QDBusConnection &connection, const QString &name);
    static bool giveUp(const QDBusConnection &connection, const QString &name);
    void startLooking();
    /// Lets all that has happened on the bus arrive within one turn of the event loop.
    [[nodiscard]] bool hasArrived() const;

    std::unique_ptr<PrivateBus> m_bus;
    QDBusConnection m_connection{u"none"_s};
    std::unique_ptr<NamesOnBus> m_names;
    std::unique_ptr<QSignalSpy> m_owned;
    std::unique_ptr<QSignalSpy> m_ownerChanged;
    int m_connections = 0;
};

void NamesOnBusTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_bus = std::make_unique<PrivateBus>();
    QVERIFY(m_bus->isRunning());
}

void NamesOnBusTest::cleanup()
{
    m_owned.reset();
    m_ownerChanged.reset();
    m_names.reset();
    m_connection = QDBusConnection(u"none"_s);
    m_bus.reset();
    for (; m_connections > 0; --m_connections) {
        QDBusConnection::disconnectFromBus(QString::number(m_connections));
    }
}

bool NamesOnBusTest::take(const QDBusConnection &connection, const QString &name)
{
    return connection.interface()
        ->registerService(mpris::namePrefix + name, QDBusConnectionInterface::ReplaceExistingService,
            QDBusConnectionInterface::AllowReplacement)
        .isValid();
}

bool NamesOnBusTest::giveUp(const QDBusConnection &connection, const QString &name)
{
    return connection.interface()->unregisterService(mpris::namePrefix + name).value();
}

bool NamesOnBusTest::hasArrived() const
{
    // QtDBus hands a change of owner to its own thread once more before it announces it. That is done when that thread
    // reads the next answer.
    const bool isRead = !m_connection.interface()->serviceOwner(m_connection.baseService()).value().isEmpty();
    return isRead && MusicAtRest::roundTrip(m_connection);
}

void NamesOnBusTest::startLooking()
{
    m_connection = connect();
    m_names = std::make_unique<NamesOnBus>(m_connection);
    m_owned = std::make_unique<QSignalSpy>(m_names.get(), &NamesOnBus::owned);
    m_ownerChanged = std::make_unique<QSignalSpy>(m_names.get(), &NamesOnBus::ownerChanged);
    QVERIFY(!m_names->isComplete());
    QTRY_VERIFY(m_names->isComplete());
}

void NamesOnBusTest::namesThatWereThereComeInTheOrderOfTheirConnections()
{
    QStringList expected;
    QStringList connections;
    // More than ten, as ":1.10" is less than ":1.9" as a text.
    for (int i = 0; i < 12; ++i) {
        const QDBusConnection owner = connect();
        expected.append(u"player%1"_s.arg(99 - i));
        connections.append(owner.baseService());
        QVERIFY(take(owner, expected.last()));
    }
    startLooking();
    QCOMPARE(m_names->names(), expected);
    QCOMPARE(m_owned->count(), expected.size());
    for (qsizetype i = 0; i < expected.size(); ++i) {
        QCOMPARE(m_owned->at(i).first().toString(), expected.at(i));
        const std::optional<NamesOnBus::Owner> owner = m_names->owner(expected.at(i));
        QVERIFY(owner);
        QCOMPARE(owner->connection, connections.at(i));
        QCOMPARE(owner->processId, QCoreApplication::applicationPid());
        QVERIFY(!owner->cameLater);
    }
}

void NamesOnBusTest::aNameThatComesLaterIsAnnouncedWithItsOwner()
{
    startLooking();
    const QDBusConnection owner = connect();
    QVERIFY(take(owner, u"later"_s));
    QTRY_COMPARE(m_owned->count(), 1);
    QCOMPARE(m_ownerChanged->count(), 1);
    const std::optional<NamesOnBus::Owner> found = m_names->owner(u"later"_s);
    QVERIFY(found);
    QCOMPARE(found->connection, owner.baseService());
    QCOMPARE(found->processId, QCoreApplication::applicationPid());
    QVERIFY(found->cameLater);
    QVERIFY(!m_names->ownsSeveral(owner.baseService()));
}

void NamesOnBusTest::aSecondNameOfAConnectionIsAnnouncedAfterItsOwnersCountIsKnown()
{
    const QDBusConnection owner = connect();
    QVERIFY(take(owner, u"first"_s));
    startLooking();
    QVERIFY(!m_names->ownsSeveral(owner.baseService()));
    QStringList events;
    QObject::connect(m_names.get(), &NamesOnBus::ownerChanged, this, [&](const QString &name) {
        events.append(m_names->ownsSeveral(owner.baseService()) ? u"several, changed "_s + name : name);
    });
    QObject::connect(m_names.get(), &NamesOnBus::owned, this, [&](const QString &name) {
        events.append(m_names->ownsSeveral(owner.baseService()) ? u"several, owned "_s + name : name);
    });
    QVERIFY(take(owner, u"second"_s));
    QTRY_COMPARE(events, (QStringList{u"several, changed second"_s, u"several, owned second"_s}));
    QCOMPARE(m_names->names(), (QStringList{u"first"_s, u"second"_s}));
    QVERIFY(giveUp(owner, u"first"_s));
    QTRY_VERIFY(!m_names->ownsSeveral(owner.baseService()));
    QCOMPARE(m_names->names(), QStringList{u"second"_s});
}

void NamesOnBusTest::aNameThatGoesHasNoOwner()
{
    const QDBusConnection owner = connect();
    QVERIFY(take(owner, u"player"_s));
    startLooking();
    QVERIFY(m_names->isOwnedBy(u"player"_s, owner.baseService()));
    QVERIFY(giveUp(owner, u"player"_s));
    QTRY_COMPARE(m_ownerChanged->count(), 1);
    QVERIFY(!m_names->hasOwner(u"player"_s));
    QVERIFY(!m_names->owner(u"player"_s));
    QVERIFY(!m_names->isOwnedBy(u"player"_s, owner.baseService()));
    QCOMPARE(m_names->names(), QStringList());
    QCOMPARE(m_owned->count(), 1);
}

void NamesOnBusTest::aNameThatChangesHandsIsAnnouncedAgain()
{
    const QDBusConnection former = connect();
    const QDBusConnection next = connect();
    QVERIFY(take(former, u"moving"_s));
    QVERIFY(take(former, u"other"_s));
    startLooking();
    QVERIFY(take(next, u"moving"_s));
    QTRY_COMPARE(m_owned->count(), 3);
    QCOMPARE(m_owned->last().first().toString(), u"moving"_s);
    QCOMPARE(m_ownerChanged->count(), 1);
    QVERIFY(m_names->isOwnedBy(u"moving"_s, next.baseService()));
    QVERIFY(!m_names->isOwnedBy(u"moving"_s, former.baseService()));
    QVERIFY(m_names->owner(u"moving"_s)->cameLater);
    // It comes after the other now.
    QCOMPARE(m_names->names(), (QStringList{u"other"_s, u"moving"_s}));
}

void NamesOnBusTest::ofManyOwnersWithinATurnTheLastCounts()
{
    startLooking();
    const QDBusConnection first = connect();
    const QDBusConnection last = connect();
    for (int i = 0; i < 50; ++i) {
        QVERIFY(take(first, u"moving"_s));
        QVERIFY(take(last, u"moving"_s));
    }
    QVERIFY(hasArrived());
    QTRY_COMPARE(m_owned->count(), 1);
    QCOMPARE(m_ownerChanged->count(), 1);
    QVERIFY(m_names->isOwnedBy(u"moving"_s, last.baseService()));
}

void NamesOnBusTest::aNameGivenUpAndTakenAgainWithinATurnHasNotChanged()
{
    const QDBusConnection owner = connect();
    QVERIFY(take(owner, u"player"_s));
    startLooking();
    QVERIFY(giveUp(owner, u"player"_s));
    QVERIFY(take(owner, u"player"_s));
    // Another name shows that the changes before it have been handled.
    QVERIFY(take(owner, u"sign"_s));
    QVERIFY(hasArrived());
    QTRY_COMPARE(m_ownerChanged->count(), 1);
    QCOMPARE(m_ownerChanged->first().first().toString(), u"sign"_s);
    QVERIFY(!m_names->owner(u"player"_s)->cameLater);
}

void NamesOnBusTest::otherNamesAreNoPlayers_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("the interface alone") << u"org.mpris.MediaPlayer2"_s;
    QTest::newRow("a longer word") << u"org.mpris.MediaPlayer2x.player"_s;
    QTest::newRow("something else") << u"org.example.player"_s;
}

void NamesOnBusTest::otherNamesAreNoPlayers()
{
    QFETCH(const QString, name);
    QDBusConnection owner = connect();
    QVERIFY(owner.registerService(name));
    startLooking();
    QVERIFY(owner.unregisterService(name));
    QVERIFY(owner.registerService(name));
    QVERIFY(take(owner, u"player"_s));
    QTRY_COMPARE(m_owned->count(), 1);
    QCOMPARE(m_names->names(), QStringList{u"player"_s});
    QCOMPARE(m_ownerChanged->count(), 1);
    QVERIFY(!m_names->ownsSeveral(owner.baseService()));
}

void NamesOnBusTest::withoutABusThereAreNoNames()
{
    NamesOnBus names(QDBusConnection(u"none"_s));
    const QSignalSpy completed(&names, &NamesOnBus::completed);
    QVERIFY(!names.isComplete());
    QTRY_COMPARE(completed.count(), 1);
    QVERIFY(names.isComplete());
    QCOMPARE(names.names(), QStringList());
}

void NamesOnBusTest::whatWasTooMuchIsLookedForWhenHalfIsGone()
{
    constexpr int most = 4'000;
    constexpr int tooMuch = 10;
    constexpr int gone = most / 2 + tooMuch + 1;
    QDBusConnection crowd = connect();
    for (int i = 0; i < most + tooMuch; ++i) {
        QVERIFY(crowd.registerService(mpris::namePrefix + u"n%1"_s.arg(i)));
    }
    startLooking();
    QCOMPARE(m_names->names().size(), most);
    const QDBusConnection other = connect();
    QVERIFY(take(other, u"other"_s));
    QVERIFY(hasArrived());
    QVERIFY(!m_names->hasOwner(u"other"_s));
    const QStringList known = m_names->names();
    for (int i = 0; i < gone; ++i) {
        QVERIFY(crowd.unregisterService(mpris::namePrefix + known.at(i)));
    }
    QTRY_COMPARE(m_names->names().size(), most + tooMuch - gone + 1);
    QVERIFY(m_names->owner(u"other"_s));
}

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::NamesOnBusTest, QGuiApplication)
#include "NamesOnBusTest.moc"
