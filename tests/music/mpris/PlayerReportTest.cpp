// SPDX-License-Identifier: MIT
#include "music/mpris/report/PlayerReport.h"
#include "music/mpris/bus/BusValue.h"
#include "support/registerTest.h"

#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QRegularExpression>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

PlayerReport reportOf(const QString &property, const QVariant &value)
{
    return decodePlayerProperties({{property, value}});
}

std::optional<PlaybackStatus> statusOf(const QVariant &value)
{
    return reportOf(u"PlaybackStatus"_s, value).status;
}
std::optional<LoopStatus> loopStatusOf(const QVariant &value)
{
    return reportOf(u"LoopStatus"_s, value).loopStatus;
}
std::optional<double> volumeOf(const QVariant &value)
{
    return reportOf(u"Volume"_s, value).volume;
}
std::optional<double> rateOf(const QVariant &value)
{
    return reportOf(u"Rate"_s, value).rate;
}

} // namespace

class PlayerReportTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void allThatAPlayerSaysIsDecoded()
    {
        const PlayerReport report =
            decodePlayerProperties({{u"PlaybackStatus"_s, u"Playing"_s}, {u"LoopStatus"_s, u"Playlist"_s},
                {u"Shuffle"_s, true}, {u"Metadata"_s, QVariantMap{{u"xesam:title"_s, u"So What"_s}}},
                {u"Position"_s, qlonglong(61'500'000)}, {u"Rate"_s, 1.5}, {u"Volume"_s, 0.25}, {u"CanControl"_s, true},
                {u"CanPause"_s, false}, {u"CanSeek"_s, true}, {u"CanGoNext"_s, false}, {u"CanGoPrevious"_s, true}});
        QCOMPARE(report.status, PlaybackStatus::Playing);
        QCOMPARE(report.loopStatus, LoopStatus::Playlist);
        QCOMPARE(report.shuffle, true);
        QCOMPARE(report.track->title, u"So What"_s);
        QCOMPARE(report.position, 61.5);
        QCOMPARE(report.rate, 1.5);
        QCOMPARE(report.volume, 0.25);
        QCOMPARE(report.canControl, true);
        QCOMPARE(report.canPause, false);
        QCOMPARE(report.canSeek, true);
        QCOMPARE(report.canGoNext, false);
        QCOMPARE(report.canGoPrevious, true);
    }

    void whatAPlayerDoesNotSayIsNone()
    {
        const PlayerReport report = decodePlayerProperties({});
        QVERIFY(!report.status && !report.loopStatus && !report.shuffle && !report.track && !report.position);
        QVERIFY(!report.rate && !report.volume && !report.canControl && !report.canPause && !report.canSeek);
        QVERIFY(!report.canGoNext && !report.canGoPrevious);
    }

    void valuesOfEveryWrongTypeAreNone_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::newRow("nothing") << QVariant();
        QTest::newRow("an empty text") << QVariant(QString());
        QTest::newRow("a text") << QVariant(u"seven"_s);
        QTest::newRow("ten megabytes of text") << QVariant(QString(10'000'000, u'x'));
        QTest::newRow("bytes") << QVariant(QByteArray("Playing"));
        QTest::newRow("a list") << QVariant(QVariantList({1, 2}));
        QTest::newRow("texts") << QVariant(QStringList({u"Playing"_s, u"Paused"_s}));
        QTest::newRow("a path") << bus::plainValue(QVariant::fromValue(QDBusObjectPath(u"/Playing"_s)));
        QTest::newRow("not a number") << QVariant(notANumber);
        QTest::newRow("infinity") << QVariant(infinity);
        QTest::newRow("minus infinity") << QVariant(-infinity);
    }
    void valuesOfEveryWrongTypeAreNone()
    {
        QFETCH(QVariant, value);
        const PlayerReport report = decodePlayerProperties(
            {{u"PlaybackStatus"_s, value}, {u"LoopStatus"_s, value}, {u"Shuffle"_s, value}, {u"Metadata"_s, value},
                {u"Position"_s, value}, {u"Rate"_s, value}, {u"Volume"_s, value}, {u"CanControl"_s, value},
                {u"CanPause"_s, value}, {u"CanSeek"_s, value}, {u"CanGoNext"_s, value}, {u"CanGoPrevious"_s, value}});
        QVERIFY(!report.status && !report.loopStatus && !report.shuffle && !report.track && !report.position);
        QVERIFY(!report.rate && !report.volume && !report.canControl && !report.canPause && !report.canSeek);
        QVERIFY(!report.canGoNext && !report.canGoPrevious);
    }

    void threeStatusesAreKnown()
    {
        QCOMPARE(statusOf(u"Playing"_s), PlaybackStatus::Playing);
        QCOMPARE(statusOf(u"Paused"_s), PlaybackStatus::Paused);
        QCOMPARE(statusOf(u"Stopped"_s), PlaybackStatus::Stopped);
        QCOMPARE(statusOf(u"playing"_s), std::nullopt);
        QCOMPARE(statusOf(u"Buffering"_s), std::nullopt);
        QCOMPARE(statusOf(bus::plainValue(QVariant::fromValue(QDBusVariant(u"Paused"_s)))), PlaybackStatus::Paused);
    }

    void celluloidsBogusLoopStatusIsNone()
    {
        QCOMPARE(loopStatusOf(u"None"_s), LoopStatus::None);
        QCOMPARE(loopStatusOf(u"Track"_s), LoopStatus::Track);
        QCOMPARE(loopStatusOf(u"Playlist"_s), LoopStatus::Playlist);
        QCOMPARE(loopStatusOf(u"Bogus"_s), std::nullopt);
        QCOMPARE(loopStatusOf(false), std::nullopt);
    }

    void audaciousRawVolumeIsClamped()
    {
        QCOMPARE(volumeOf(1.3), 1.0);
        QCOMPARE(volumeOf(-0.5), 0.0);
        QCOMPARE(volumeOf(0.5), 0.5);
        QCOMPARE(volumeOf(std::numeric_limits<double>::max()), 1.0);
        QCOMPARE(volumeOf(std::numeric_limits<double>::denorm_min()), std::numeric_limits<double>::denorm_min());
    }

    void aVolumeMayBeAWholeNumber()
    {
        QCOMPARE(volumeOf(1), 1.0);
        QCOMPARE(volumeOf(std::numeric_limits<quint64>::max()), 1.0);
        QCOMPARE(volumeOf(std::numeric_limits<qint64>::min()), 0.0);
    }

    void aRateLiesFromZeroToAHundred()
    {
        QCOMPARE(rateOf(0.0), 0.0);
        QCOMPARE(rateOf(0.01), 0.01);
        QCOMPARE(rateOf(100.0), 100.0);
        QCOMPARE(rateOf(2), 2.0);
        QCOMPARE(rateOf(100.5), std::nullopt);
        QCOMPARE(rateOf(-1.0), std::nullopt);
    }

    void aPositionIsToldInMicroseconds()
    {
        QCOMPARE(decodePosition(0), 0.0);
        QCOMPARE(decodePosition(qlonglong(1)), 0.000001);
        QCOMPARE(decodePosition(qulonglong(1'500'000)), 1.5);
        QCOMPARE(decodePosition(2'500'000.0), 2.5);
        QCOMPARE(decodePosition(bus::plainValue(QVariant::fromValue(QDBusVariant(3'000'000)))), 3.0);
    }

    void mpvsNegativePositionAroundASeekIsTheStart()
    {
        QCOMPARE(decodePosition(qlonglong(-100'000)), 0.0);
        QCOMPARE(decodePosition(qlonglong(-1'000'000)), 0.0);
    }

    void elisasSeekBeforeTheStartIsTheStart() { QCOMPARE(decodePosition(qlonglong(-492'600'000)), 0.0); }

    void rhythmboxsPositionBeforeTheStartIsNoPosition()
    {
        QCOMPARE(decodePosition(qlonglong(4'294'967'295'000'000)), std::nullopt);
    }

    void aPositionLiesUpToABillionSeconds()
    {
        QCOMPARE(decodePosition(qlonglong(1'000'000'000'000'000)), 1e9);
        QCOMPARE(decodePosition(qlonglong(1'000'000'000'000'001)), std::nullopt);
        QCOMPARE(decodePosition(std::numeric_limits<qint64>::max()), std::nullopt);
        QCOMPARE(decodePosition(std::numeric_limits<qint64>::min()), std::nullopt);
        QCOMPARE(decodePosition(std::numeric_limits<quint64>::max()), std::nullopt);
        QCOMPARE(decodePosition(std::numeric_limits<double>::max()), std::nullopt);
        QCOMPARE(decodePosition(notANumber), std::nullopt);
        QCOMPARE(decodePosition(u"5"_s), std::nullopt);
        QCOMPARE(decodePosition(QVariant()), std::nullopt);
    }

    void emptyMetadataIsATrackThatIsEmpty()
    {
        const PlayerReport report = reportOf(u"Metadata"_s, QVariantMap());
        QVERIFY(report.track);
        QVERIFY(report.track->isEmpty());
    }

    void aChangeTakesOverWhatItSays()
    {
        PlayerReport report = decodePlayerProperties({{u"PlaybackStatus"_s, u"Playing"_s}, {u"Volume"_s, 0.25},
            {u"Metadata"_s, QVariantMap{{u"xesam:title"_s, u"So What"_s}}}, {u"CanSeek"_s, true}});
        merge(report,
            decodePlayerProperties({{u"PlaybackStatus"_s, u"Paused"_s}, {u"Shuffle"_s, false},
                {u"LoopStatus"_s, u"Track"_s}, {u"Position"_s, 1'000'000}, {u"Rate"_s, 0.5}, {u"CanControl"_s, true},
                {u"CanPause"_s, true}, {u"CanSeek"_s, false}, {u"CanGoNext"_s, true}, {u"CanGoPrevious"_s, false}}));
        QCOMPARE(report.status, PlaybackStatus::Paused);
        QCOMPARE(report.loopStatus, LoopStatus::Track);
        QCOMPARE(report.shuffle, false);
        QCOMPARE(report.track->title, u"So What"_s);
        QCOMPARE(report.position, 1.0);
        QCOMPARE(report.rate, 0.5);
        QCOMPARE(report.volume, 0.25);
        QCOMPARE(report.canControl, true);
        QCOMPARE(report.canPause, true);
        QCOMPARE(report.canSeek, false);
        QCOMPARE(report.canGoNext, true);
        QCOMPARE(report.canGoPrevious, false);

        merge(report, decodePlayerProperties({{u"Volume"_s, 1.0}, {u"Metadata"_s, QVariantMap()}}));
        QCOMPARE(report.volume, 1.0);
        QVERIFY(report.track->isEmpty());
    }

    void aChangeThatMakesNoSenseTakesNothingAway()
    {
        PlayerReport report = decodePlayerProperties({{u"PlaybackStatus"_s, u"Playing"_s}, {u"Volume"_s, 0.25}});
        merge(report, decodePlayerProperties({{u"PlaybackStatus"_s, 3}, {u"Volume"_s, notANumber}}));
        QCOMPARE(report.status, PlaybackStatus::Playing);
        QCOMPARE(report.volume, 0.25);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::PlayerReportTest, QCoreApplication)
#include "PlayerReportTest.moc"
