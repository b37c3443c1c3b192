// SPDX-License-Identifier: MIT
#include "music/mpris/report/TrackDetails.h"
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

const QString trackIdKey = u"mpris:trackid"_s;
const QString lengthKey = u"mpris:length"_s;
const QString urlKey = u"xesam:url"_s;
const QString titleKey = u"xesam:title"_s;
const QString artistKey = u"xesam:artist"_s;
const QString albumKey = u"xesam:album"_s;
const QString genreKey = u"xesam:genre"_s;

TrackDetails withUrl(const QString &url)
{
    return decodeMetadata({{urlKey, url}});
}

std::optional<double> lengthOf(const QVariant &microseconds)
{
    return decodeMetadata({{lengthKey, microseconds}}).length;
}

const QVariantMap soWhat{{trackIdKey, bus::plainValue(QVariant::fromValue(QDBusObjectPath(u"/track/1"_s)))},
    {urlKey, u"file:///music/so%20what.flac"_s}, {titleKey, u"So What"_s}, {artistKey, QStringList({u"Miles Davis"_s})},
    {albumKey, u"Kind of Blue"_s}, {genreKey, QStringList({u"Jazz"_s})}, {lengthKey, qlonglong(545'000'000)}};

QVariantMap soWhatWith(const QString &key, const QVariant &value)
{
    QVariantMap map = soWhat;
    map.insert(key, value);
    return map;
}

} // namespace

class TrackDetailsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aFullTrackIsDecoded()
    {
        const TrackDetails track = decodeMetadata(soWhat);
        QCOMPARE(track.trackId, u"/track/1"_s);
        QCOMPARE(track.url, u"file:///music/so%20what.flac"_s);
        QCOMPARE(track.title, u"So What"_s);
        QCOMPARE(track.artists, QStringList({u"Miles Davis"_s}));
        QCOMPARE(track.album, u"Kind of Blue"_s);
        QCOMPARE(track.genre, u"Jazz"_s);
        QCOMPARE(track.length, 545.0);
        QCOMPARE(track.lengthGrows, false);
        QCOMPARE(track.browserProcessId, std::nullopt);
        QCOMPARE(track.name(), u"So What"_s);
        QCOMPARE(track.artist(), u"Miles Davis"_s);
        QVERIFY(!track.isEmpty());
        QVERIFY(track.isComplete());
        QVERIFY(track.isLocalFile());
        QVERIFY(!track.isFromWeb());
        QVERIFY(!track.isLiveStream());
    }

    void noMetadataIsAnEmptyTrack()
    {
        const TrackDetails track = decodeMetadata({});
        QCOMPARE(track, TrackDetails());
        QVERIFY(track.isEmpty());
        QVERIFY(!track.isComplete());
        QCOMPARE(track.name(), QString());
        QCOMPARE(track.artist(), QString());
    }

    void valuesOfEveryWrongTypeMakeAnEmptyTrack_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::newRow("nothing") << QVariant();
        QTest::newRow("an empty text") << QVariant(QString());
        QTest::newRow("control characters") << QVariant(u"\x01\x02\n"_s);
        QTest::newRow("half of a surrogate pair") << QVariant(QString(QChar(0xd83c)));
        QTest::newRow("a boolean") << QVariant(true);
        QTest::newRow("bytes") << QVariant(QByteArray("So What"));
        QTest::newRow("not a number") << QVariant(std::numeric_limits<double>::quiet_NaN());
        QTest::newRow("infinity") << QVariant(std::numeric_limits<double>::infinity());
        QTest::newRow("the least integer") << QVariant(std::numeric_limits<qint64>::min());
        QTest::newRow("a map") << QVariant(QVariantMap{{u"a"_s, u"b"_s}});
        QTest::newRow("numbers") << QVariant(QVariantList({1, 2}));
    }
    void valuesOfEveryWrongTypeMakeAnEmptyTrack()
    {
        QFETCH(QVariant, value);
        QVariantMap metadata = soWhat;
        for (QVariant &entry : metadata) {
            entry = value;
        }
        for (const QString &key : {u"vlc:nowplaying"_s, u"cmus:stream_title"_s, u"icy-title"_s, u"kde:pid"_s}) {
            metadata.insert(key, value);
        }
        QCOMPARE(decodeMetadata(metadata), TrackDetails());
    }

    void otherKeysAreNotLookedAt()
    {
        QVariantMap metadata = soWhat;
        metadata.insert(u"xesam:trackNumber"_s, 3U);
        metadata.insert(u"xesam:useCount"_s, QVariant());
        metadata.insert(u"rating"_s, 0.5);
        metadata.insert(QString(), qlonglong(5));
        QCOMPARE(decodeMetadata(metadata), decodeMetadata(soWhat));
    }

    // Texts

    void mpvsGenreIsOneText() { QCOMPARE(decodeMetadata({{genreKey, u"Jazz"_s}}).genre, u"Jazz"_s); }

    void anArtistMayBeOneText()
    {
        QCOMPARE(decodeMetadata({{artistKey, u"Miles Davis"_s}}).artists, QStringList({u"Miles Davis"_s}));
    }

    void aTitleMayBeAList() { QCOMPARE(decodeMetadata({{titleKey, QStringList({u"So What"_s})}}).title, u"So What"_s); }

    void quodlibetsSeveralArtistsAreJoined()
    {
        const TrackDetails track = decodeMetadata({{artistKey, QStringList({u"Miles Davis"_s, u"John Coltrane"_s})}});
        QCOMPARE(track.artists, QStringList({u"Miles Davis"_s, u"John Coltrane"_s}));
        QCOMPARE(track.artist(), u"Miles Davis, John Coltrane"_s);
    }

    void vlcsEmptyArtistIsNone()
    {
        const TrackDetails track = decodeMetadata({{artistKey, QStringList({QString()})}, {albumKey, QString()}});
        QCOMPARE(track.artists, QStringList());
        QCOMPARE(track.artist(), QString());
    }

    void ofAHundredArtistsThirtyTwoAreKept()
    {
        QCOMPARE(decodeMetadata({{artistKey, QStringList(100, u"A"_s)}}).artists, QStringList(32, u"A"_s));
    }

    void rhythmboxsUnknownPlaceholdersAreNoTags()
    {
        const TrackDetails track = decodeMetadata({{urlKey, u"file:///music/untagged.mp3"_s}, {titleKey, u"Unknown"_s},
            {artistKey, QStringList({u"Unknown"_s})}, {albumKey, u"Unknown"_s},
            {genreKey, QStringList({u"Unknown"_s})}});
        QCOMPARE(track.name(), u"untagged.mp3"_s);
        QCOMPARE(track.artists, QStringList());
        QCOMPARE(track.album, QString());
        QCOMPARE(track.genre, QString());
    }

    void placeholdersOfOtherFormsAreNoTags()
    {
        QCOMPARE(decodeMetadata({{artistKey, u"Unknown Artist"_s}}).artist(), QString());
        QCOMPARE(decodeMetadata({{artistKey, u"<unknown>"_s}}).artist(), QString());
        QCOMPARE(decodeMetadata({{albumKey, u"[Unknown album]"_s}}).album, QString());
        QCOMPARE(decodeMetadata({{titleKey, u"(unknown title)"_s}}).title, QString());
    }

    void whatOnlyBeginsWithUnknownIsATag()
    {
        QCOMPARE(decodeMetadata({{titleKey, u"Unknown Pleasures"_s}}).title, u"Unknown Pleasures"_s);
        QCOMPARE(decodeMetadata({{artistKey, u"The Unknown"_s}}).artist(), u"The Unknown"_s);
        QCOMPARE(decodeMetadata({{artistKey, u"Unknown Artist Ensemble"_s}}).artist(), u"Unknown Artist Ensemble"_s);
    }

    void textsOfTenMegabytesAreCut()
    {
        const QString endless(10'000'000, u'x');
        const TrackDetails track =
            decodeMetadata({{titleKey, endless}, {artistKey, QStringList({endless})}, {urlKey, endless}});
        QCOMPARE(track.title, QString(1'000, u'x'));
        QCOMPARE(track.artists, QStringList({QString(1'000, u'x')}));
        QCOMPARE(track.url, QString(1'000, u'x'));
    }

    void strawberrysTextTrackIdIsKept()
    {
        const QString id = u"/org/strawberrymusicplayer/strawberry/Track/3"_s;
        QCOMPARE(decodeMetadata({{trackIdKey, id}}).trackId, id);
        QCOMPARE(decodeMetadata({{trackIdKey, bus::plainValue(QVariant::fromValue(QDBusObjectPath(id)))}}).trackId, id);
    }

    void variantsInVariantsAreUnpacked()
    {
        const QVariant packed = QVariant::fromValue(QDBusVariant(QVariant::fromValue(QDBusVariant(u"So What"_s))));
        const QVariant title = bus::plainValue(packed);
        QCOMPARE(decodeMetadata({{titleKey, title}}).title, u"So What"_s);
    }

    // Lengths

    void aLengthMayBeANumberOfAnyType()
    {
        QCOMPARE(lengthOf(qlonglong(12'000'000)), 12.0);
        QCOMPARE(lengthOf(qulonglong(12'500'000)), 12.5);
        QCOMPARE(lengthOf(12'000'000), 12.0);
        QCOMPARE(lengthOf(12'000'000U), 12.0);
        QCOMPARE(lengthOf(12'000'000.0), 12.0);
        QCOMPARE(lengthOf(u"12000000"_s), std::nullopt);
    }

    void aLengthLiesAboveZeroAndUpToThirtyDays()
    {
        QCOMPARE(lengthOf(qlonglong(1)), 0.000001);
        QCOMPARE(lengthOf(qlonglong(2'592'000'000'000)), 2'592'000.0);
        QCOMPARE(lengthOf(qlonglong(2'592'000'000'001)), std::nullopt);
    }

    void rhythmboxsZeroLengthIsNone() { QCOMPARE(lengthOf(qlonglong(0)), std::nullopt); }

    void vlcsLengthBeforeItHasOpenedIsNone() { QCOMPARE(lengthOf(qlonglong(-1)), std::nullopt); }

    void chromiumsEndlessLengthIsNone()
    {
        QCOMPARE(lengthOf(qlonglong(9223372036854775807)), std::nullopt);
        QCOMPARE(lengthOf(std::numeric_limits<quint64>::max()), std::nullopt);
        QCOMPARE(lengthOf(std::numeric_limits<qint64>::min()), std::nullopt);
        QCOMPARE(lengthOf(std::numeric_limits<double>::max()), std::nullopt);
    }

    // Addresses

    void filesAreLocalInEveryForm()
    {
        QVERIFY(withUrl(u"file:///music/a.mp3"_s).isLocalFile());
        QVERIFY(withUrl(u"FILE:///music/a.mp3"_s).isLocalFile());
        QVERIFY(withUrl(u"/music/a.mp3"_s).isLocalFile());
        QVERIFY(!withUrl(u"http://radio.example/a.mp3"_s).isLocalFile());
        QVERIFY(!withUrl(QString()).isLocalFile());
    }

    void webAddressesAreFromTheWeb()
    {
        QVERIFY(withUrl(u"http://radio.example/live"_s).isFromWeb());
        QVERIFY(withUrl(u"HTTPS://radio.example/live"_s).isFromWeb());
        QVERIFY(withUrl(u"mms://radio.example/live"_s).isFromWeb());
        QVERIFY(withUrl(u"rtsp://radio.example/live"_s).isFromWeb());
        QVERIFY(!withUrl(u"file:///http/a.mp3"_s).isFromWeb());
        QVERIFY(!withUrl(u"cdda://1"_s).isFromWeb());
        QVERIFY(!withUrl(u"httpx://radio.example"_s).isFromWeb());
        QVERIFY(!withUrl(u"www.radio.example"_s).isFromWeb());
        QVERIFY(!withUrl(QString()).isFromWeb());
    }

    void whereATitleIsMissingItIsTheLastPartOfTheAddressDecoded()
    {
        QCOMPARE(withUrl(u"file:///music/05%20%23%20%25%20%C3%BC.mp3"_s).name(), u"05 # % ü.mp3"_s);
        QCOMPARE(withUrl(u"http://radio.example/live.mp3?token=1/2#now"_s).name(), u"live.mp3"_s);
        QCOMPARE(withUrl(u"http://radio.example/"_s).name(), u"radio.example"_s);
        QCOMPARE(withUrl(u"file:///music/live#1?.mp3"_s).name(), u"live#1?.mp3"_s);
        QCOMPARE(withUrl(u"file:///music/a%0Ab%00c.mp3"_s).name(), u"a b c.mp3"_s);
        QCOMPARE(withUrl(u"///"_s).name(), QString());
    }

    void anAddressThatIsNotEncodedIsNotDecoded_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("name");
        QTest::newRow("mpDris2, a space") << u"file:///music/04-no tags #1 %41 u.mp3"_s << u"04-no tags #1 %41 u.mp3"_s;
        QTest::newRow("mpDris2, a space before the name") << u"file:///my music/%41.mp3"_s << u"%41.mp3"_s;
        QTest::newRow("mpDris2, an umlaut") << u"file:///music/ü%41.mp3"_s << u"ü%41.mp3"_s;
        QTest::newRow("mpDris2, a lone percent sign") << u"file:///music/100%.mp3"_s << u"100%.mp3"_s;
        QTest::newRow("a hash in a file's address") << u"file:///music/#1%41.mp3"_s << u"#1%41.mp3"_s;
        QTest::newRow("a bracket") << u"file:///music/[1]%41<.mp3"_s << u"[1]%41<.mp3"_s;
        QTest::newRow("a plain path") << u"/music/100%25.mp3"_s << u"100%25.mp3"_s;
        QTest::newRow("a station") << u"http://radio.example/my station %41"_s << u"my station %41"_s;
    }
    void anAddressThatIsNotEncodedIsNotDecoded()
    {
        QFETCH(QString, url);
        QFETCH(QString, name);
        QCOMPARE(withUrl(url).name(), name);
    }

    void vlcsUntaggedFileHasTheNameOfTheFile()
    {
        const TrackDetails track = decodeMetadata({{urlKey, u"file:///music/untagged.mp3"_s},
            {lengthKey, qlonglong(12'000'000)}, {artistKey, QStringList({QString()})}});
        QCOMPARE(track.title, QString());
        QCOMPARE(track.name(), u"untagged.mp3"_s);
        QVERIFY(!track.isEmpty());
        QVERIFY(!track.isComplete());
    }

    // Missing parts

    void metadataThatShowsNoTrackIsEmpty_data()
    {
        QTest::addColumn<QVariantMap>("metadata");
        QTest::newRow("mpv at rest") << QVariantMap{{trackIdKey, u"/noplaylist"_s}};
        QTest::newRow("Quod Libet at rest")
            << QVariantMap{{trackIdKey, u"/org/mpris/MediaPlayer2/TrackList/NoTrack"_s}};
        QTest::newRow("Chromium between two tracks")
            << QVariantMap{{trackIdKey, u"/org/chromium/MediaPlayer2/TrackList/NoTrack"_s}};
        QTest::newRow("a root") << QVariantMap{{trackIdKey, u"/"_s}};
        QTest::newRow("the object of the player itself") << QVariantMap{{trackIdKey, u"/org/mpris/MediaPlayer2"_s}};
        QTest::newRow("an empty track id") << QVariantMap{{trackIdKey, QString()}};
        QTest::newRow("a length of nothing") << QVariantMap{{lengthKey, qlonglong(0)}};
        QTest::newRow("a genre alone") << QVariantMap{{genreKey, QStringList({u"Jazz"_s})}};
    }
    void metadataThatShowsNoTrackIsEmpty()
    {
        QFETCH(QVariantMap, metadata);
        QVERIFY(decodeMetadata(metadata).isEmpty());
    }

    void metadataThatShowsATrackIsNotEmpty_data()
    {
        QTest::addColumn<QVariantMap>("metadata");
        QTest::newRow("cmus, an untagged file")
            << QVariantMap{{trackIdKey, u"/3"_s}, {lengthKey, qlonglong(12'000'000)}};
        QTest::newRow("Totem, an untagged file") << QVariantMap{{lengthKey, qlonglong(12'000'000)}};
        QTest::newRow("a track id alone") << QVariantMap{{trackIdKey, u"/3"_s}};
        QTest::newRow("a track id that is no path") << QVariantMap{{trackIdKey, u"track:3"_s}};
        QTest::newRow("a title alone") << QVariantMap{{titleKey, u"A"_s}};
        QTest::newRow("an artist alone") << QVariantMap{{artistKey, u"A"_s}};
        QTest::newRow("an album alone") << QVariantMap{{albumKey, u"A"_s}};
        QTest::newRow("an address alone") << QVariantMap{{urlKey, u"file:///a.mp3"_s}};
    }
    void metadataThatShowsATrackIsNotEmpty()
    {
        QFETCH(QVariantMap, metadata);
        QVERIFY(!decodeMetadata(metadata).isEmpty());
    }

    void aTrackWithoutTextsHasNoName()
    {
        const TrackDetails track = decodeMetadata({{trackIdKey, u"/3"_s}, {lengthKey, qlonglong(12'000'000)}});
        QCOMPARE(track.name(), QString());
        QCOMPARE(track.artist(), QString());
        QVERIFY(!track.isComplete());
        QVERIFY(!track.isLiveStream());
    }

    void aCompleteTrackHasTitleArtistOrAlbumAndLength()
    {
        QVERIFY(decodeMetadata(soWhatWith(urlKey, QString())).isComplete());
        QVERIFY(decodeMetadata(soWhatWith(artistKey, QString())).isComplete());
        QVERIFY(decodeMetadata(soWhatWith(albumKey, QString())).isComplete());
        QVERIFY(!decodeMetadata(soWhatWith(titleKey, QString())).isComplete());
        QVERIFY(!decodeMetadata(soWhatWith(lengthKey, qlonglong(0))).isComplete());
        QVariantMap titleAndLength = soWhatWith(artistKey, QString());
        titleAndLength.insert(albumKey, QString());
        QVERIFY(!decodeMetadata(titleAndLength).isComplete());
    }

    // Streams

    void aStreamFromTheWebWithoutALengthIsLive()
    {
        QVERIFY(withUrl(u"http://radio.example/live"_s).isLiveStream());
        QVERIFY(decodeMetadata({{urlKey, u"http://radio.example/live"_s}, {lengthKey, qlonglong(0)}}).isLiveStream());
        QVERIFY(decodeMetadata({{urlKey, u"http://radio.example/live"_s}, {lengthKey, qlonglong(-1)}}).isLiveStream());
        QVERIFY(decodeMetadata({{urlKey, u"http://radio.example/live"_s}, {lengthKey, qlonglong(9223372036854775807)}})
                .isLiveStream());
        QVERIFY(decodeMetadata({{urlKey, u"http://radio.example/live"_s}, {lengthKey, qlonglong(2'592'000'000'001)}})
                .isLiveStream());
    }

    void aTrackFromTheWebWithALengthIsNotLive()
    {
        QVERIFY(!decodeMetadata({{urlKey, u"http://shop.example/a.mp3"_s}, {lengthKey, qlonglong(5'000'000)}})
                .isLiveStream());
    }

    void withoutAnAddressTheLengthAloneDecides()
    {
        QVERIFY(decodeMetadata({{titleKey, u"Page"_s}}).isLiveStream());
        QVERIFY(decodeMetadata({{titleKey, u"Page"_s}, {lengthKey, qlonglong(9223372036854775807)}}).isLiveStream());
        QVERIFY(!decodeMetadata({{titleKey, u"Page"_s}, {lengthKey, qlonglong(5'000'000)}}).isLiveStream());
    }

    void aFileWithoutALengthIsNotLive() { QVERIFY(!withUrl(u"file:///music/a.mp3"_s).isLiveStream()); }

    void aLengthThatGrowsMakesALiveStreamOfAllButAFile()
    {
        TrackDetails stream =
            decodeMetadata({{urlKey, u"http://radio.example/live"_s}, {lengthKey, qlonglong(5'000'000)}});
        stream.lengthGrows = true;
        QVERIFY(stream.isLiveStream());
        TrackDetails file = decodeMetadata(soWhat);
        file.lengthGrows = true;
        QVERIFY(!file.isLiveStream());
    }

    void aStationsSongIsTheNameAndTheStationTheAlbum_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("url");
        QTest::newRow("VLC") << u"vlc:nowplaying"_s << u"http://radio.example/live"_s;
        QTest::newRow("cmus, which sends no address") << u"cmus:stream_title"_s << QString();
        QTest::newRow("Celluloid") << u"icy-title"_s << u"http://radio.example/live.mp3"_s;
    }
    void aStationsSongIsTheNameAndTheStationTheAlbum()
    {
        QFETCH(QString, key);
        QFETCH(QString, url);
        const TrackDetails track =
            decodeMetadata({{urlKey, url}, {titleKey, u"Radio Example"_s}, {key, u"Miles Davis - So What"_s}});
        QCOMPARE(track.name(), u"Miles Davis - So What"_s);
        QCOMPARE(track.artist(), QString());
        QCOMPARE(track.album, u"Radio Example"_s);
        QVERIFY(track.isLiveStream());
    }

    void celluloidsSongHasNoStation()
    {
        const TrackDetails track = decodeMetadata(
            {{urlKey, u"http://radio.example/live.mp3"_s}, {u"icy-title"_s, u"Miles Davis - So What"_s}});
        QCOMPARE(track.name(), u"Miles Davis - So What"_s);
        QCOMPARE(track.artist(), QString());
        QCOMPARE(track.album, QString());
    }

    void audaciousStationIsTheArtist()
    {
        const TrackDetails track = decodeMetadata({{urlKey, u"http://radio.example/live"_s},
            {titleKey, u"Miles Davis - So What"_s}, {artistKey, QStringList({u"Radio Example"_s})}});
        QCOMPARE(track.name(), u"Miles Davis - So What"_s);
        QCOMPARE(track.artist(), u"Radio Example"_s);
        QVERIFY(track.isLiveStream());
    }

    void aSongThatRepeatsTheTitleMakesNoStation()
    {
        const TrackDetails track = decodeMetadata(
            {{urlKey, u"http://radio.example/live"_s}, {titleKey, u"So What"_s}, {u"icy-title"_s, u"So What"_s}});
        QCOMPARE(track.name(), u"So What"_s);
        QCOMPARE(track.artist(), QString());
        QCOMPARE(track.album, QString());
    }

    void aFileHasNoStation()
    {
        QCOMPARE(decodeMetadata(soWhatWith(u"icy-title"_s, u"Old Radio"_s)).name(), u"So What"_s);
        QCOMPARE(decodeMetadata(soWhatWith(u"vlc:nowplaying"_s, u"Old Radio"_s)).name(), u"So What"_s);
        QCOMPARE(decodeMetadata(soWhatWith(u"cmus:stream_title"_s, u"Old Radio"_s)).album, u"Kind of Blue"_s);
    }

    void theBrowserThatAnIntegrationSpeaksForIsKept()
    {
        QCOMPARE(decodeMetadata({{u"kde:pid"_s, 77}}).browserProcessId, 77);
        QCOMPARE(decodeMetadata({{u"kde:pid"_s, 0}}).browserProcessId, std::nullopt);
        QCOMPARE(decodeMetadata({{u"kde:pid"_s, -5}}).browserProcessId, std::nullopt);
        QCOMPARE(decodeMetadata({{u"kde:pid"_s, std::numeric_limits<quint64>::max()}}).browserProcessId, std::nullopt);
        QCOMPARE(decodeMetadata({{u"kde:pid"_s, u"77"_s}}).browserProcessId, std::nullopt);
    }

    // Identity

    void aPersistentIdStaysTheSameFromRunToRun()
    {
        QCOMPARE(decodeMetadata(soWhat).persistentId(), 4719524502343721576);
        QCOMPARE(TrackDetails().persistentId(), 1182698997786413608);
    }

    void aPersistentIdHasSixtyThreeBits()
    {
        for (int i = 0; i < 1'000; ++i) {
            const TrackDetails track = decodeMetadata({{titleKey, QString::number(i)}});
            QVERIFY2(track.persistentId() >= 0, qPrintable(track.title));
        }
    }

    void audaciousConstantTrackIdIsNoIdentity_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("value");
        QTest::newRow("address") << urlKey << QVariant(u"file:///music/other.flac"_s);
        QTest::newRow("title") << titleKey << QVariant(u"Freddie Freeloader"_s);
        QTest::newRow("artist") << artistKey << QVariant(QStringList({u"John Coltrane"_s}));
        QTest::newRow("album") << albumKey << QVariant(u"Milestones"_s);
    }
    void audaciousConstantTrackIdIsNoIdentity()
    {
        QFETCH(QString, key);
        QFETCH(QVariant, value);
        const TrackDetails track = decodeMetadata(soWhat);
        const TrackDetails other = decodeMetadata(soWhatWith(key, value));
        QVERIFY(!other.isSameTrack(track));
        QVERIFY(other.persistentId() != track.persistentId());
    }

    void aTrackIsTheSameWithAnotherTrackIdLengthOrGenre_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("value");
        QTest::newRow("track id") << trackIdKey << QVariant(u"/track/2"_s);
        QTest::newRow("length") << lengthKey << QVariant(qlonglong(545'003'000));
        QTest::newRow("genre") << genreKey << QVariant(u"Cool"_s);
    }
    void aTrackIsTheSameWithAnotherTrackIdLengthOrGenre()
    {
        QFETCH(QString, key);
        QFETCH(QVariant, value);
        const TrackDetails track = decodeMetadata(soWhat);
        const TrackDetails other = decodeMetadata(soWhatWith(key, value));
        QVERIFY(other != track);
        QVERIFY(other.isSameTrack(track));
        QCOMPARE(other.persistentId(), track.persistentId());
    }

    void tracksWithoutTextsDifferByTheirTrackIdOrLength_data()
    {
        QTest::addColumn<QVariantMap>("one");
        QTest::addColumn<QVariantMap>("other");
        const QVariant twelve = qlonglong(12'000'000);
        QTest::newRow("cmus, two of one length") << QVariantMap{{trackIdKey, u"/3"_s}, {lengthKey, twelve}}
                                                 << QVariantMap{{trackIdKey, u"/4"_s}, {lengthKey, twelve}};
        QTest::newRow("Totem, which sends no track id")
            << QVariantMap{{lengthKey, twelve}} << QVariantMap{{lengthKey, qlonglong(13'000'000)}};
        QTest::newRow("a constant track id") << QVariantMap{{trackIdKey, u"/3"_s}, {lengthKey, twelve}}
                                             << QVariantMap{{trackIdKey, u"/3"_s}, {lengthKey, qlonglong(180'000'000)}};
        QTest::newRow("track ids alone") << QVariantMap{{trackIdKey, u"/3"_s}} << QVariantMap{{trackIdKey, u"/4"_s}};
        QTest::newRow("a track id, and nothing") << QVariantMap{{trackIdKey, u"/3"_s}} << QVariantMap();
    }
    void tracksWithoutTextsDifferByTheirTrackIdOrLength()
    {
        QFETCH(QVariantMap, one);
        QFETCH(QVariantMap, other);
        QVERIFY(!decodeMetadata(one).isSameTrack(decodeMetadata(other)));
        QVERIFY(decodeMetadata(one).persistentId() != decodeMetadata(other).persistentId());
        QVERIFY(decodeMetadata(one).isSameTrack(decodeMetadata(one)));
        QCOMPARE(decodeMetadata(one).persistentId(), decodeMetadata(one).persistentId());
    }

    void aTrackWithoutTextsStaysTheSameWhileItsLengthDriftsOrGrows()
    {
        const TrackDetails track = decodeMetadata({{trackIdKey, u"/3"_s}, {lengthKey, qlonglong(12'000'000)}});
        const auto withLength = [](double seconds) {
            return decodeMetadata({{trackIdKey, u"/3"_s}, {lengthKey, qlonglong(seconds * 1e6)}});
        };
        QVERIFY(track.isSameTrack(withLength(12.1)));
        QVERIFY(track.isSameTrack(withLength(11.9)));
        QVERIFY(track.isSameTrack(withLength(13)));
        QVERIFY(withLength(13).isSameTrack(track));
        QVERIFY(!track.isSameTrack(withLength(30)));
    }

    void whatMovesFromOneTagToTheNextMakesAnotherTrack()
    {
        const TrackDetails one = decodeMetadata({{titleKey, u"AB"_s}, {albumKey, u"C"_s}});
        const TrackDetails other = decodeMetadata({{titleKey, u"A"_s}, {albumKey, u"BC"_s}});
        QVERIFY(one.persistentId() != other.persistentId());
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::TrackDetailsTest, QCoreApplication)
#include "TrackDetailsTest.moc"
