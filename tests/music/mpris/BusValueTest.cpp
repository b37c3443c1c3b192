// SPDX-License-Identifier: MIT
#include "music/mpris/bus/BusValue.h"
#include "support/PrivateBus.h"
#include "support/registerTest.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusSignature>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

const QString path = u"/test"_s;
const QString interface = u"org.tunedeck.Test"_s;
const QString member = u"Value"_s;

QVariant variantOf(const QVariant &value)
{
    return QVariant::fromValue(QDBusVariant(value));
}

QVariant variantNested(int depth, const QVariant &value)
{
    return depth == 0 ? value : variantOf(variantNested(depth - 1, value));
}

QDBusArgument packedMap(const QList<std::pair<QString, QVariant>> &entries)
{
    QDBusArgument map;
    map.beginMap(QMetaType::fromType<QString>(), QMetaType::fromType<QDBusVariant>());
    for (const auto &[key, value] : entries) {
        map.beginMapEntry();
        map << key << QDBusVariant(value);
        map.endMapEntry();
    }
    map.endMap();
    return map;
}

QDBusArgument packedStructure()
{
    QDBusArgument structure;
    structure.beginStructure();
    structure << QDBusObjectPath(u"/list/1"_s) << u"Evening"_s << 3;
    structure.endStructure();
    return structure;
}

} // namespace

class BusValueTest : public QObject {
    Q_OBJECT

private:
    /// `value` as it arrives over the bus.
    QVariant arrived(const QVariant &value)
    {
        m_arrived.reset();
        QDBusMessage signal = QDBusMessage::createSignal(path, interface, member);
        signal.setArguments({value});
        m_connection->send(signal);
        const bool isHere = QTest::qWaitFor([this] { return m_arrived.has_value(); });
        return isHere ? *m_arrived : u"nothing arrived"_s;
    }

    std::optional<PrivateBus> m_bus;
    std::optional<QDBusConnection> m_connection;
    std::optional<QVariant> m_arrived;

private Q_SLOTS:
    void initTestCase()
    {
        m_bus.emplace();
        QVERIFY(m_bus->isRunning());
        m_connection = m_bus->connect(u"values"_s);
        QVERIFY(m_connection->connect(QString(), path, interface, member, this, SLOT(keep(QDBusMessage))));
    }

    void cleanupTestCase()
    {
        m_arrived.reset();
        m_connection.reset();
        QDBusConnection::disconnectFromBus(u"values"_s);
    }

    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    // Texts

    void aTextIsItself()
    {
        QCOMPARE(bus::text(u"So What"_s), u"So What"_s);
        QCOMPARE(bus::text(u"  Don't Stop\t"_s), u"Don't Stop"_s);
    }

    void anEmptyTextIsNone()
    {
        QCOMPARE(bus::text(QString()), std::nullopt);
        QCOMPARE(bus::text(u" \n\t"_s), std::nullopt);
        QCOMPARE(bus::text(QStringList()), std::nullopt);
        QCOMPARE(bus::text(QStringList{QString()}), std::nullopt);
    }

    void whatIsNoTextIsNone()
    {
        QCOMPARE(bus::text(QVariant()), std::nullopt);
        QCOMPARE(bus::text(5), std::nullopt);
        QCOMPARE(bus::text(5.5), std::nullopt);
        QCOMPARE(bus::text(true), std::nullopt);
        QCOMPARE(bus::text(QByteArray("So What")), std::nullopt);
        QCOMPARE(bus::text(QVariantMap{{u"a"_s, u"b"_s}}), std::nullopt);
        QCOMPARE(bus::text(QVariantList{1, true}), std::nullopt);
    }

    void aListWhereATextIsDueIsJoined()
    {
        QCOMPARE(bus::text(QStringList({u"Jazz"_s, u"Blues"_s})), u"Jazz, Blues"_s);
        QCOMPARE(bus::text(QVariantList({u"Jazz"_s, 7, u"Blues"_s})), u"Jazz, Blues"_s);
    }

    void aPathOrSignatureIsAText()
    {
        QCOMPARE(bus::text(bus::plainValue(QVariant::fromValue(QDBusObjectPath(u"/track/1"_s)))), u"/track/1"_s);
        QCOMPARE(bus::text(bus::plainValue(QVariant::fromValue(QDBusSignature(u"as"_s)))), u"as"_s);
    }

    void controlCharactersAreSpaces()
    {
        QCOMPARE(bus::text(u"a\nb\tc\rd"_s), u"a b c d"_s);
        QCOMPARE(bus::text(u"a"_s + QChar(0) + u'b' + QChar(0x7f) + u'c' + QChar(0x9f) + u'd'), u"a b c d"_s);
        QCOMPARE(bus::text(u"\x01 title \x02"_s), u"title"_s);
    }

    void lineAndParagraphEndsAreSpaces() { QCOMPARE(bus::text(u"a\u2028b\u2029c"_s), u"a b c"_s); }

    void noTextTurnsTheTextAroundIt()
    {
        QCOMPARE(bus::text(u"\u202Agood \u202Eday\u202C \u2067x\u2069"_s), u"good day x"_s);
        QCOMPARE(bus::text(u" \u202E "_s), std::nullopt);
        QCOMPARE(bus::text(u"\u200Fשלום\u200E"_s), u"\u200Fשלום\u200E"_s);
    }

    void halvesOfSurrogatePairsAreSpaces()
    {
        QCOMPARE(bus::text(u"a"_s + QChar(0xd83c) + u'b' + QChar(0xdfb5) + u'c'), u"a b c"_s);
        QCOMPARE(bus::text(QString(QChar(0xd83c))), std::nullopt);
    }

    void everyScriptAndEmojiStaysWhatItIs()
    {
        QCOMPARE(bus::text(u"Ünïcode \u5b57 \u0645\u0648\u0633\u064a\u0642\u0649 \U0001f3b5"_s),
            u"Ünïcode \u5b57 \u0645\u0648\u0633\u064a\u0642\u0649 \U0001f3b5"_s);
    }

    void aTextOfTenMegabytesIsCut()
    {
        QCOMPARE(bus::text(QString(10'000'000, u'x')), QString(1'000, u'x'));
        QCOMPARE(bus::text(QString(1'000, u'x')), QString(1'000, u'x'));
        QCOMPARE(bus::text(QStringList({QString(10'000'000, u'x')})), QString(1'000, u'x'));
    }

    void aPairThatTheCutPartsIsLeftOut()
    {
        QCOMPARE(bus::text(QString(999, u'x') + u"\U0001f3b5"_s), QString(999, u'x'));
        QCOMPARE(bus::text(QStringList({QString(997, u'x'), u"\U0001f3b5"_s})), QString(997, u'x') + u',');
    }

    void aJoinedListIsCutToo()
    {
        QCOMPARE(bus::text(QStringList(100'000, u"ab"_s)), u"ab, "_s.repeated(250).trimmed());
    }

    // Lists of texts

    void aListKeepsWhatIsText()
    {
        QCOMPARE(bus::texts(QStringList({u" A "_s, QString(), u"B\n"_s}), 32), QStringList({u"A"_s, u"B"_s}));
        QCOMPARE(bus::texts(QVariantList({u"A"_s, 3, QVariant(), u"B"_s}), 32), QStringList({u"A"_s, u"B"_s}));
    }

    void oneTextIsAListOfOne() { QCOMPARE(bus::texts(u"A"_s, 32), QStringList({u"A"_s})); }

    void whatIsNoListOfTextsIsEmpty()
    {
        QCOMPARE(bus::texts(QVariant(), 32), QStringList());
        QCOMPARE(bus::texts(QString(), 32), QStringList());
        QCOMPARE(bus::texts(QStringList{QString()}, 32), QStringList());
        QCOMPARE(bus::texts(3, 32), QStringList());
        QCOMPARE(bus::texts(QVariantMap{{u"a"_s, u"b"_s}}, 32), QStringList());
        QCOMPARE(bus::texts(QVariantList{QVariantList{u"A"_s}}, 32), QStringList());
    }

    void aListIsCutToItsMaximum()
    {
        QCOMPARE(bus::texts(QStringList(100, u"A"_s), 32), QStringList(32, u"A"_s));
        QCOMPARE(bus::texts(QVariantList(100, u"A"_s), 32), QStringList(32, u"A"_s));
    }

    // Numbers

    void aNumberOfAnyTypeIsANumber()
    {
        QCOMPARE(bus::number(QVariant::fromValue<qint16>(-1)), -1.0);
        QCOMPARE(bus::number(QVariant::fromValue<quint16>(2)), 2.0);
        QCOMPARE(bus::number(-3), -3.0);
        QCOMPARE(bus::number(4U), 4.0);
        QCOMPARE(bus::number(QVariant::fromValue<qint64>(-5)), -5.0);
        QCOMPARE(bus::number(QVariant::fromValue<quint64>(6)), 6.0);
        QCOMPARE(bus::number(7.5), 7.5);
    }

    void theEndsOfTheIntegersAreNumbers()
    {
        QCOMPARE(bus::number(std::numeric_limits<qint64>::min()), -9223372036854775808.0);
        QCOMPARE(bus::number(std::numeric_limits<qint64>::max()), 9223372036854775808.0);
        QCOMPARE(bus::number(std::numeric_limits<quint64>::max()), 18446744073709551616.0);
        QCOMPARE(bus::number(std::numeric_limits<double>::max()), 1.7976931348623157e308);
        QCOMPARE(bus::number(std::numeric_limits<double>::denorm_min()), 4.9406564584124654e-324);
    }

    void whatIsNotFiniteIsNone()
    {
        QCOMPARE(bus::number(std::numeric_limits<double>::quiet_NaN()), std::nullopt);
        QCOMPARE(bus::number(std::numeric_limits<double>::infinity()), std::nullopt);
        QCOMPARE(bus::number(-std::numeric_limits<double>::infinity()), std::nullopt);
    }

    void whatIsNoNumberIsNone()
    {
        QCOMPARE(bus::number(QVariant()), std::nullopt);
        QCOMPARE(bus::number(u"5"_s), std::nullopt);
        QCOMPARE(bus::number(QString()), std::nullopt);
        QCOMPARE(bus::number(true), std::nullopt);
        QCOMPARE(bus::number(QVariantList{5}), std::nullopt);
    }

    void onlyABooleanIsABoolean()
    {
        QCOMPARE(bus::boolean(true), true);
        QCOMPARE(bus::boolean(false), false);
        QCOMPARE(bus::boolean(bus::plainValue(variantOf(true))), true);
        QCOMPARE(bus::boolean(1), std::nullopt);
        QCOMPARE(bus::boolean(u"true"_s), std::nullopt);
        QCOMPARE(bus::boolean(QVariant()), std::nullopt);
    }

    // Variants in variants

    void aVariantInAVariantIsWhatItHolds()
    {
        QCOMPARE(bus::plainValue(variantNested(8, 5)), QVariant(5));
        QCOMPARE(bus::text(bus::plainValue(variantNested(3, u"A"_s))), u"A"_s);
        QCOMPARE(bus::number(bus::plainValue(variantNested(3, 5.5))), 5.5);
    }

    void whatIsNestedMoreThanEightDeepIsLeftOut()
    {
        QCOMPARE(bus::plainValue(variantNested(9, 5)), QVariant());
        QCOMPARE(bus::text(bus::plainValue(variantNested(60, u"A"_s))), std::nullopt);
    }

    void onlyAMapIsAMap()
    {
        QCOMPARE(bus::plainMap(QVariantMap{{u"a"_s, 1}}), QVariantMap({{u"a"_s, 1}}));
        QCOMPARE(bus::plainMap(variantOf(QVariantMap{{u"a"_s, 1}})), QVariantMap({{u"a"_s, 1}}));
        QCOMPARE(bus::plainMap(u"a"_s), QVariantMap());
        QCOMPARE(bus::plainMap(QVariant()), QVariantMap());
    }

    // Values from the bus

    void aMapFromTheBusIsPlain()
    {
        const QVariant value = arrived(QVariantMap{{u"title"_s, u"So What"_s},
            {u"artist"_s, QStringList({u"Miles"_s, u"John"_s})}, {u"length"_s, qlonglong(545'000'000)},
            {u"trackid"_s, QVariant::fromValue(QDBusObjectPath(u"/track/1"_s))}, {u"rating"_s, 0.5},
            {u"variant"_s, variantNested(3, u"deep"_s)}});
        QCOMPARE(value.metaType(), QMetaType::fromType<QDBusArgument>());
        const QVariantMap expected{{u"title"_s, u"So What"_s}, {u"artist"_s, QStringList({u"Miles"_s, u"John"_s})},
            {u"length"_s, qlonglong(545'000'000)}, {u"trackid"_s, u"/track/1"_s}, {u"rating"_s, 0.5},
            {u"variant"_s, u"deep"_s}};
        QCOMPARE(bus::plainMap(value), expected);
        // Reading takes nothing out of it.
        QCOMPARE(bus::plainMap(value), expected);
    }

    void aMapInAMapFromTheBusIsPlain()
    {
        const QVariant value = arrived(QVariantMap{{u"Metadata"_s, QVariantMap{{u"title"_s, u"So What"_s}}}});
        QCOMPARE(bus::plainMap(value), QVariantMap({{u"Metadata"_s, QVariantMap{{u"title"_s, u"So What"_s}}}}));
    }

    void aMapOfOtherTypesFromTheBusIsPlain()
    {
        QDBusArgument map;
        map.beginMap(QMetaType::fromType<QString>(), QMetaType::fromType<double>());
        map.beginMapEntry();
        map << u"volume"_s << 0.5;
        map.endMapEntry();
        map.endMap();
        QCOMPARE(bus::plainMap(arrived(QVariant::fromValue(map))), QVariantMap({{u"volume"_s, 0.5}}));
    }

    void entriesWhoseKeyIsNoTextAreLeftOut()
    {
        QDBusArgument map;
        map.beginMap(QMetaType::fromType<int>(), QMetaType::fromType<QString>());
        map.beginMapEntry();
        map << 1 << u"one"_s;
        map.endMapEntry();
        map.endMap();
        QCOMPARE(bus::plainMap(arrived(QVariant::fromValue(map))), QVariantMap());
    }

    void ofVlcsTwoEqualKeysTheLastCounts()
    {
        const QDBusArgument map = packedMap({{u"LoopStatus"_s, u"None"_s}, {u"LoopStatus"_s, u"Track"_s}});
        QCOMPARE(bus::plainMap(arrived(QVariant::fromValue(map))), QVariantMap({{u"LoopStatus"_s, u"Track"_s}}));
    }

    void aStructureFromTheBusIsAList()
    {
        QCOMPARE(bus::plainValue(arrived(QVariant::fromValue(packedStructure()))),
            QVariant(QVariantList({u"/list/1"_s, u"Evening"_s, 3})));
    }

    void aListOfStructuresFromTheBusIsAListOfLists()
    {
        const QVariant value = arrived(
            QVariantList({variantOf(QVariant::fromValue(packedStructure())), u"other"_s, QVariantList({1, 2})}));
        QCOMPARE(bus::plainValue(value),
            QVariant(QVariantList({QVariantList({u"/list/1"_s, u"Evening"_s, 3}), u"other"_s, QVariantList({1, 2})})));
    }

    void aListOfVariantsFromTheBusIsAListOfTexts()
    {
        QCOMPARE(bus::texts(bus::plainValue(arrived(QVariantList({u"A"_s, 1, variantOf(u"B"_s)}))), 32),
            QStringList({u"A"_s, u"B"_s}));
    }

    void aListOfPathsFromTheBusIsAListOfTexts()
    {
        const QList<QDBusObjectPath> paths{QDBusObjectPath(u"/a"_s), QDBusObjectPath(u"/b"_s)};
        QCOMPARE(bus::texts(bus::plainValue(arrived(QVariant::fromValue(paths))), 32), QStringList({u"/a"_s, u"/b"_s}));
    }

    void bytesFromTheBusAreNoText()
    {
        QCOMPARE(bus::text(bus::plainValue(arrived(QByteArray("So What")))), std::nullopt);
    }

    void mapsNestedTooDeepAreLeftOut()
    {
        QVariantMap map{{u"end"_s, 1}};
        for (int i = 0; i < 20; ++i) {
            map = {{u"map"_s, map}};
        }
        QVariantMap plain = bus::plainMap(arrived(map));
        int depth = 0;
        for (; plain.value(u"map"_s).typeId() == QMetaType::QVariantMap; ++depth) {
            plain = plain.value(u"map"_s).toMap();
        }
        // Every map is in a variant, which is a level of its own.
        QCOMPARE(depth, 4);
        QCOMPARE(plain, QVariantMap({{u"map"_s, QVariant()}}));
    }

    void aHugeMapFromTheBusIsCut()
    {
        QVariantMap map;
        for (int i = 0; i < 20'000; ++i) {
            map.insert(QString::number(i), i);
        }
        QCOMPARE(bus::plainMap(arrived(map)).size(), 1'000);
    }

    void aHugeListFromTheBusIsCut()
    {
        QCOMPARE(bus::plainValue(arrived(QVariantList(20'000, 1))).toList().size(), 1'000);
        QCOMPARE(bus::texts(bus::plainValue(arrived(QStringList(20'000, u"A"_s))), 32), QStringList(32, u"A"_s));
    }

    void whatIsCutOffIsNotUnpacked()
    {
        // Unpacked as a whole they take longer than a second.
        const QVariant texts = arrived(QVariantMap{{u"texts"_s, QStringList(2'000'000, u"A"_s)}});
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(bus::plainMap(texts), QVariantMap({{u"texts"_s, QStringList(1'000, u"A"_s)}}));
        QVERIFY2(clock.elapsed() < 100, qPrintable(QString::number(clock.elapsed())));
    }

    void aMessageKeepsTenThousandValues()
    {
        const QVariantList list = bus::plainValue(arrived(QVariantList(500, QStringList(500, u"A"_s)))).toList();
        qsizetype kept = list.size();
        for (const QVariant &texts : list) {
            kept += texts.toStringList().size();
        }
        QCOMPARE(kept, 10'000);
    }

    void aTextIsCutWhateverItIsFor()
    {
        QCOMPARE(bus::plainValue(arrived(QString(100'000, u'A'))).toString().size(), 65'536);
        QCOMPARE(bus::plainValue(arrived(QByteArray(100'000, 'A'))).toByteArray().size(), 65'536);
    }

    void aHugeKeyFromTheBusIsCut()
    {
        QCOMPARE(
            bus::plainMap(arrived(QVariantMap{{QString(100'000, u'k'), 1}})), QVariantMap({{QString(1'000, u'k'), 1}}));
    }

    void numbersThatAreNotFiniteComeOverTheBusAndAreNone()
    {
        QCOMPARE(bus::number(arrived(std::numeric_limits<double>::quiet_NaN())), std::nullopt);
        QCOMPARE(bus::number(arrived(-std::numeric_limits<double>::infinity())), std::nullopt);
    }

public Q_SLOTS:
    void keep(const QDBusMessage &message) { m_arrived = message.arguments().value(0); }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::BusValueTest, QCoreApplication)
#include "BusValueTest.moc"
