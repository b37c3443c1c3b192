// SPDX-License-Identifier: MIT
#include "music/mpris/PlayerMirror.h"
#include "support/registerTest.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

/// `milliseconds` after the test began.
Instant at(int milliseconds)
{
    return Instant(std::chrono::hours(1)) + Milliseconds(milliseconds);
}

QVariantMap metadata(
    const QString &url, const QString &title, const QString &artist, const QString &album, double length)
{
    QVariantMap map;
    const auto insert = [&map](const QString &key, const QVariant &value, bool isGiven) {
        if (isGiven) {
            map.insert(key, value);
        }
    };
    insert(u"xesam:url"_s, url, !url.isEmpty());
    insert(u"xesam:title"_s, title, !title.isEmpty());
    insert(u"xesam:artist"_s, QStringList({artist}), !artist.isEmpty());
    insert(u"xesam:album"_s, album, !album.isEmpty());
    insert(u"mpris:length"_s, qlonglong(length * 1e6), length != 0);
    return map;
}

const QVariantMap one = metadata(u"file:///music/1.flac"_s, u"One"_s, u"Ann"_s, u"Album"_s, 100);
const QVariantMap two = metadata(u"file:///music/2.flac"_s, u"Two"_s, u"Bob"_s, u"Album"_s, 200);

QVariantMap streamOf(double length)
{
    return metadata(u"http://radio.example/live"_s, u"Song"_s, {}, {}, length);
}

QVariantMap with(QVariantMap map, const QString &key, const QVariant &value)
{
    map.insert(key, value);
    return map;
}

QVariantMap status(const QString &text)
{
    return {{u"PlaybackStatus"_s, text}};
}
QVariantMap track(const QVariantMap &map)
{
    return {{u"Metadata"_s, map}};
}
QVariantMap properties(const QString &text, const QVariantMap &map, double position)
{
    return {{u"PlaybackStatus"_s, text}, {u"Metadata"_s, map}, {u"Position"_s, qlonglong(position * 1e6)}};
}

QVariantMap infoOfOne(const QString &state)
{
    return {{u"Player State"_s, state}, {u"PersistentID"_s, qlonglong(8088178011586307282)}, {u"Name"_s, u"One"_s},
        {u"Artist"_s, u"Ann"_s}, {u"Album"_s, u"Album"_s}, {u"Total Time"_s, 100.0},
        {u"Location"_s, u"file:///music/1.flac"_s}};
}

QVariantMap infoOfTwo(const QString &state)
{
    return {{u"Player State"_s, state}, {u"PersistentID"_s, qlonglong(8713235920259556825)}, {u"Name"_s, u"Two"_s},
        {u"Artist"_s, u"Bob"_s}, {u"Album"_s, u"Album"_s}, {u"Total Time"_s, 200.0},
        {u"Location"_s, u"file:///music/2.flac"_s}};
}

const QVariantMap infoOfStopped{{u"Player State"_s, u"Stopped"_s}};
const QVariantMap infoOfLiveStream{{u"Player State"_s, u"Playing"_s},
    {u"PersistentID"_s, qlonglong(771085090456623238)}, {u"Name"_s, u"Song"_s},
    {u"Store URL"_s, u"http://radio.example/live"_s}};

/// The names of the changes.
QString words(const PlayerMirror::Changes &changes)
{
    QStringList result;
    if (changes.userInfo) {
        result.append(u"info"_s);
    }
    if (changes.settings) {
        result.append(u"settings"_s);
    }
    if (changes.status) {
        result.append(u"status"_s);
    }
    return result.join(u' ');
}

const QString nothing;

} // namespace

class PlayerMirrorTest : public QObject {
    Q_OBJECT

private:
    QString read(const QVariantMap &map, int time)
    {
        return words(m_mirror.read(decodePlayerProperties(map), at(time)));
    }
    QString playingOneReadAt(double position, int time) { return read(properties(u"Playing"_s, one, position), time); }
    QString announced(const QVariantMap &map, int time)
    {
        return words(m_mirror.announced(decodePlayerProperties(map), at(time)));
    }
    QString settled(int time) { return words(m_mirror.settle(at(time))); }
    double position(int time) const { return m_mirror.position(at(time)).value_or(-1); }
    /// In milliseconds after the test began; -1 for none.
    qint64 nextSettling() const
    {
        const std::optional<Instant> next = m_mirror.nextSettling();
        return next ? std::chrono::duration_cast<Milliseconds>(*next - at(0)).count() : -1;
    }
    void playOneFrom(double seconds) { playingOneReadAt(seconds, 0); }

    PlayerMirror m_mirror;

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        m_mirror = PlayerMirror();
    }

    // The first read

    void beforeTheFirstReadThePlayerIsStopped()
    {
        QCOMPARE(m_mirror.status(), PlaybackStatus::Stopped);
        QCOMPARE(m_mirror.userInfo(), infoOfStopped);
        QCOMPARE(m_mirror.position(at(0)), std::nullopt);
        QCOMPARE(m_mirror.volume(), std::nullopt);
        QCOMPARE(m_mirror.shuffle(), std::nullopt);
        QCOMPARE(m_mirror.loopStatus(), std::nullopt);
        QCOMPARE(m_mirror.reportedTrackId(), QString());
        QCOMPARE(nextSettling(), -1);
    }

    void theFirstReadIsBelievedAtOnce()
    {
        QCOMPARE(read(properties(u"Playing"_s, one, 10), 0), u"info settings status"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfOne(u"Playing"_s));
        QCOMPARE(position(0), 10.0);
        QCOMPARE(nextSettling(), -1);
    }

    void aFirstReadOfAPauseIsBelievedAtOnce()
    {
        QCOMPARE(read(properties(u"Paused"_s, one, 10), 0), u"info settings status"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfOne(u"Paused"_s));
        QCOMPARE(position(5'000), 10.0);
    }

    void aFirstReadOfAnIncompleteTrackIsBelievedAtOnce()
    {
        read(properties(u"Playing"_s, {{u"xesam:url"_s, u"file:///music/untagged.mp3"_s}}, 0), 0);
        QCOMPARE(m_mirror.userInfo(),
            QVariantMap({{u"Player State"_s, u"Playing"_s}, {u"PersistentID"_s, qlonglong(5292824117517657355)},
                {u"Name"_s, u"untagged.mp3"_s}, {u"Total Time"_s, 0.0},
                {u"Location"_s, u"file:///music/untagged.mp3"_s}}));
    }

    void aStoppedPlayerTellsItsStateAlone()
    {
        read(properties(u"Stopped"_s, one, 0), 0);
        QCOMPARE(m_mirror.userInfo(), infoOfStopped);
        QCOMPARE(m_mirror.track().title, u"One"_s);
    }

    void aPlayerThatPlaysNothingIsStopped()
    {
        read(properties(u"Playing"_s, {}, 0), 0);
        QCOMPARE(m_mirror.status(), PlaybackStatus::Stopped);
        QCOMPARE(m_mirror.userInfo(), infoOfStopped);
    }

    void anEmptyAnswerIsAStoppedPlayerThatCanAll()
    {
        QCOMPARE(read({}, 0), nothing);
        QCOMPARE(m_mirror.userInfo(), infoOfStopped);
        QCOMPARE(m_mirror.position(at(0)), std::nullopt);
        QVERIFY(m_mirror.canControl() && m_mirror.canPause() && m_mirror.canSeek());
        QVERIFY(m_mirror.canGoNext() && m_mirror.canGoPrevious());
    }

    void aReadThatChangesNothingSaysSo()
    {
        playOneFrom(10);
        QCOMPARE(read(properties(u"Playing"_s, one, 10.5), 500), nothing);
        QCOMPARE(announced(track(one), 600), nothing);
        QCOMPARE(settled(700), nothing);
    }

    // Statuses

    void playingIsBelievedAtOnce()
    {
        read(properties(u"Paused"_s, one, 10), 0);
        QCOMPARE(announced(status(u"Playing"_s), 1'000), u"info status"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfOne(u"Playing"_s));
        QCOMPARE(position(1'500), 10.5);
    }

    void anUnaskedPauseIsBelievedAfter150Milliseconds()
    {
        playOneFrom(10);
        QCOMPARE(announced(status(u"Paused"_s), 1'000), nothing);
        QCOMPARE(nextSettling(), 1'150);
        QCOMPARE(settled(1'149), nothing);
        QCOMPARE(m_mirror.status(), PlaybackStatus::Playing);
        QCOMPARE(nextSettling(), 1'150);
        QCOMPARE(settled(1'150), u"info status"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfOne(u"Paused"_s));
        QCOMPARE(nextSettling(), -1);
    }

    void aPauseHoldsThePositionFromWhenItBegan()
    {
        playOneFrom(10);
        announced(status(u"Paused"_s), 1'000);
        QCOMPARE(position(1'100), 11.1);
        settled(1'150);
        QCOMPARE(position(1'150), 11.0);
        QCOMPARE(position(60'000), 11.0);
    }

    void anUnaskedStopIsBelievedAfter150Milliseconds()
    {
        playOneFrom(10);
        QCOMPARE(announced(status(u"Stopped"_s), 1'000), nothing);
        QCOMPARE(settled(1'149), nothing);
        QCOMPARE(settled(1'150), u"info status"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfStopped);
        QCOMPARE(position(1'150), 0.0);
    }

    void aReadConfirmsAPauseWhenItIsDue()
    {
        playOneFrom(10);
        announced(status(u"Paused"_s), 1'000);
        QCOMPARE(read(properties(u"Paused"_s, one, 11), 1'040), nothing);
        QCOMPARE(nextSettling(), 1'150);
        read(properties(u"Paused"_s, one, 11), 1'200);
        QCOMPARE(m_mirror.userInfo(), infoOfOne(u"Paused"_s));
        QCOMPARE(position(1'200), 11.0);
    }

    void vlcsStoppedBlinkAtATrackChangeIsNotSeen()
    {
        playOneFrom(90);
        QCOMPARE(announced(status(u"Stopped"_s), 1'000), nothing);
        QVariantMap change = status(u"Playing"_s);
        change.insert(track(two));
        QCOMPARE(announced(change, 1'110), u"info"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfTwo(u"Playing"_s));
        QCOMPARE(position(1'110), 0.0);
        QCOMPARE(position(2'110), 1.0);
        QCOMPARE(nextSettling(), -1);
    }

    void theFileNameThatVlcShowsWhileItOpensAFileIsNotSeen()
    {
        m_mirror.distrustFirstReport();
        const QVariantMap opening{{u"xesam:url"_s, one.value(u"xesam:url"_s)}};
        QCOMPARE(read(properties(u"Playing"_s, opening, 0), 1'000), nothing);
        QCOMPARE(m_mirror.userInfo(), infoOfStopped);
        QCOMPARE(nextSettling(), 1'150);
        QVERIFY(announced(track(one), 1'126).contains(u"info"));
        QCOMPARE(m_mirror.userInfo(), infoOfOne(u"Playing"_s));
    }

    void vlcsPositionDuringItsBlinkDoesNotMoveTheClock()
    {
        playOneFrom(90);
        announced(status(u"Stopped"_s), 1'000);
        QCOMPARE(read(properties(u"Stopped"_s, one, 0), 1'040), nothing);
        QCOMPARE(position(1'040), 91.04);
        QCOMPARE(read(properties(u"Stopped"_s, one, 0), 1'050), nothing);
        announced(status(u"Playing"_s), 1'100);
        QCOMPARE(position(1'100), 91.1);
    }

    void celluloidsPausedBlinkAtASeekIsNotSeen()
    {
        playOneFrom(10);
        QCOMPARE(announced(status(u"Paused"_s), 1'000), nothing);
        QCOMPARE(announced(status(u"Playing"_s), 1'020), nothing);
        QCOMPARE(settled(1'150), nothing);
        QCOMPARE(position(2'000), 12.0);
    }

    void onlyTheLastBlinkCounts()
    {
        playOneFrom(10);
        announced(status(u"Stopped"_s), 1'000);
        announced(status(u"Playing"_s), 1'100);
        announced(status(u"Paused"_s), 1'140);
        QCOMPARE(settled(1'289), nothing);
        QCOMPARE(settled(1'290), u"info status"_s);
        QCOMPARE(m_mirror.status(), PlaybackStatus::Paused);
    }

    void aStatusThatMakesNoSenseChangesNothing()
    {
        playOneFrom(10);
        QCOMPARE(announced(status(u"Buffering"_s), 1'000), nothing);
        QCOMPARE(settled(2'000), nothing);
        QCOMPARE(m_mirror.status(), PlaybackStatus::Playing);
    }

    // Commands

    void aPauseThatWasAskedForIsBelievedAtOnce()
    {
        playOneFrom(10);
        QCOMPARE(words(m_mirror.askedForStatus(PlaybackStatus::Paused, at(1'000))), u"info status"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfOne(u"Paused"_s));
        QCOMPARE(position(5'000), 11.0);
    }

    void anAskedPauseThatIsConfirmedStays()
    {
        playOneFrom(10);
        m_mirror.askedForStatus(PlaybackStatus::Paused, at(1'000));
        m_mirror.commandAnswered(at(1'005));
        QCOMPARE(announced(status(u"Paused"_s), 1'010), nothing);
        QCOMPARE(settled(1'255), nothing);
        QCOMPARE(m_mirror.userInfo(), infoOfOne(u"Paused"_s));
        QCOMPARE(nextSettling(), -1);
    }

    void elisasOldStatusRightAfterACommandIsNotSeen()
    {
        playOneFrom(10);
        m_mirror.askedForStatus(PlaybackStatus::Paused, at(1'000));
        m_mirror.commandAnswered(at(1'005));
        QCOMPARE(read(properties(u"Playing"_s, one, 11), 1'022), nothing);
        QCOMPARE(m_mirror.status(), PlaybackStatus::Paused);
        QCOMPARE(position(1'022), 11.0);
    }

    void aCommandWithoutEffectIsCorrected250MillisecondsAfterItsAnswer()
    {
        playOneFrom(10);
        m_mirror.askedForStatus(PlaybackStatus::Paused, at(1'000));
        QCOMPARE(settled(1'900), nothing);
        m_mirror.commandAnswered(at(1'950));
        QCOMPARE(nextSettling(), 2'200);
        QCOMPARE(settled(2'199), nothing);
        QCOMPARE(settled(2'200), u"info status"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfOne(u"Playing"_s));
    }

    void aCommandThatIsNeverAnsweredIsBelievedForASecondAndAQuarter()
    {
        playOneFrom(10);
        m_mirror.askedForStatus(PlaybackStatus::Paused, at(1'000));
        QCOMPARE(nextSettling(), 2'250);
        QCOMPARE(settled(2'249), nothing);
        QCOMPARE(m_mirror.status(), PlaybackStatus::Paused);
        QCOMPARE(settled(2'250), u"info status"_s);
        QCOMPARE(m_mirror.status(), PlaybackStatus::Playing);
        QCOMPARE(nextSettling(), -1);
    }

    void aPlayWithoutEffectIsCorrectedToo()
    {
        read(properties(u"Paused"_s, one, 10), 0);
        m_mirror.askedForStatus(PlaybackStatus::Playing, at(1'000));
        QCOMPARE(m_mirror.userInfo(), infoOfOne(u"Playing"_s));
        m_mirror.commandAnswered(at(1'005));
        QCOMPARE(settled(1'254), nothing);
        QCOMPARE(settled(1'255), u"info status"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfOne(u"Paused"_s));
    }

    void quodlibetsStopThatIsAPauseIsCorrected()
    {
        playOneFrom(10);
        m_mirror.askedForStatus(PlaybackStatus::Stopped, at(1'000));
        QCOMPARE(m_mirror.userInfo(), infoOfStopped);
        m_mirror.commandAnswered(at(1'002));
        QCOMPARE(announced(status(u"Paused"_s), 1'004), nothing);
        QCOMPARE(settled(1'252), u"info status"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfOne(u"Paused"_s));
    }

    void aCommandThatFailedIsTakenBackAtOnce()
    {
        playOneFrom(10);
        m_mirror.askedForStatus(PlaybackStatus::Paused, at(1'000));
        QCOMPARE(words(m_mirror.commandFailed(at(1'010))), u"info status"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfOne(u"Playing"_s));
    }

    void twoCommandsInOneMomentLeaveThingsAsTheyWere()
    {
        playOneFrom(10);
        m_mirror.askedForStatus(PlaybackStatus::Paused, at(1'000));
        m_mirror.askedForStatus(PlaybackStatus::Playing, at(1'000));
        QCOMPARE(m_mirror.userInfo(), infoOfOne(u"Playing"_s));
        QCOMPARE(position(2'000), 12.0);
    }

    // Tracks

    void aFullNewTrackIsBelievedAtOnce()
    {
        playOneFrom(90);
        QCOMPARE(announced(track(two), 1'000), u"info"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfTwo(u"Playing"_s));
        QCOMPARE(position(1'000), 0.0);
        QCOMPARE(position(3'000), 2.0);
    }

    void aPausedPlayerMayChangeItsTrack()
    {
        read(properties(u"Paused"_s, one, 10), 0);
        QCOMPARE(announced(track(two), 1'000), u"info"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfTwo(u"Paused"_s));
        QCOMPARE(position(5'000), 0.0);
    }

    void emptyMetadataIsBelievedAfter150Milliseconds()
    {
        playOneFrom(10);
        QCOMPARE(announced(track({}), 1'000), nothing);
        QCOMPARE(nextSettling(), 1'150);
        QCOMPARE(settled(1'149), nothing);
        QCOMPARE(m_mirror.userInfo(), infoOfOne(u"Playing"_s));
        QCOMPARE(settled(1'150), u"info status"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfStopped);
    }

    void partialMetadataIsBelievedAfter150Milliseconds()
    {
        playOneFrom(10);
        QCOMPARE(announced(track({{u"xesam:url"_s, u"file:///music/untagged.mp3"_s}}), 1'000), nothing);
        QCOMPARE(settled(1'149), nothing);
        QCOMPARE(settled(1'150), u"info"_s);
        QCOMPARE(m_mirror.userInfo(),
            QVariantMap({{u"Player State"_s, u"Playing"_s}, {u"PersistentID"_s, qlonglong(5292824117517657355)},
                {u"Name"_s, u"untagged.mp3"_s}, {u"Total Time"_s, 0.0},
                {u"Location"_s, u"file:///music/untagged.mp3"_s}}));
        // It began when it was announced, not when it was believed.
        QCOMPARE(position(1'150), 0.15);
    }

    void chromiumsPartialMetadataNeverShows()
    {
        playOneFrom(90);
        const QVariantMap page = metadata({}, u"page"_s, {}, {}, 0);
        QCOMPARE(
            announced(track({{u"mpris:trackid"_s, u"/org/mpris/MediaPlayer2/TrackList/NoTrack"_s}}), 1'000), nothing);
        QCOMPARE(announced(status(u"Stopped"_s), 1'002), nothing);
        QCOMPARE(announced(track({}), 1'004), nothing);
        QCOMPARE(announced(track({{u"mpris:length"_s, qlonglong(0)}}), 1'006), nothing);
        QCOMPARE(announced(track(page), 1'010), nothing);
        QCOMPARE(announced(track(with(page, u"xesam:title"_s, u"Two"_s)), 1'015), nothing);
        QVariantMap full = status(u"Playing"_s);
        full.insert(track(two));
        QCOMPARE(announced(full, 1'035), u"info"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfTwo(u"Playing"_s));
    }

    void metadataThatComesBackWasNeverGone()
    {
        playOneFrom(10);
        announced(track({}), 1'000);
        QCOMPARE(announced(track(one), 1'100), nothing);
        QCOMPARE(settled(1'200), nothing);
        QCOMPARE(position(2'000), 12.0);
    }

    void metadataThatNeverComesToRestIsBelievedAfterHalfASecond()
    {
        playOneFrom(10);
        QString change;
        for (int time = 1'000; time < 1'500; time += 100) {
            change = announced(track({{u"xesam:title"_s, QString::number(time)}}), time);
            QCOMPARE(change, nothing);
        }
        QCOMPARE(nextSettling(), 1'500);
        QCOMPARE(settled(1'499), nothing);
        QCOMPARE(settled(1'500), u"info"_s);
        QCOMPARE(m_mirror.userInfo().value(u"Name"_s), u"1400"_s);
    }

    void elisasFirstTrackAtTheEndOfTheQueueIsNotShown()
    {
        read(properties(u"Playing"_s, two, 199), 0);
        QCOMPARE(announced(status(u"Stopped"_s), 1'000), nothing);
        QCOMPARE(announced(track(one), 1'005), nothing);
        QCOMPARE(m_mirror.userInfo(), infoOfTwo(u"Playing"_s));
        QCOMPARE(settled(1'499), nothing);
        QCOMPARE(settled(1'500), u"info status"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfStopped);
        QCOMPARE(settled(1'505), nothing);
        QCOMPARE(m_mirror.track().title, u"One"_s);
    }

    void elisaThatLoadsTheNextTrackIsNeverStopped()
    {
        playOneFrom(99);
        QCOMPARE(announced(status(u"Stopped"_s), 1'000), nothing);
        QCOMPARE(
            announced(track({{u"xesam:title"_s, u"two.mp3"_s}, {u"mpris:length"_s, qlonglong(200'000'000)}}), 1'020),
            nothing);
        QCOMPARE(settled(1'170), nothing);
        QCOMPARE(announced(status(u"Playing"_s), 1'250), u"info"_s);
        QCOMPARE(m_mirror.userInfo().value(u"Name"_s), u"two.mp3"_s);
        QCOMPARE(nextSettling(), -1);
    }

    void celluloidsStaleLengthIsCorrectedByItsSecondAnnouncement()
    {
        playOneFrom(90);
        QCOMPARE(announced(track(with(two, u"mpris:length"_s, qlonglong(100'000'000))), 1'000), u"info"_s);
        QCOMPARE(m_mirror.userInfo().value(u"Total Time"_s), 100.0);
        QCOMPARE(announced(track(two), 1'020), u"info"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfTwo(u"Playing"_s));
        // It is the same track, so its clock goes on.
        QCOMPARE(position(2'000), 1.0);
    }

    void vlcsDriftingLengthIsNoChange()
    {
        playOneFrom(10);
        QCOMPARE(announced(track(with(one, u"mpris:length"_s, qlonglong(100'003'000))), 1'000), nothing);
        QCOMPARE(announced(track(with(one, u"mpris:length"_s, qlonglong(99'995'000))), 2'000), nothing);
        QCOMPARE(m_mirror.userInfo(), infoOfOne(u"Playing"_s));
    }

    void mpvsRowAsATrackIdIsNoChange()
    {
        playOneFrom(10);
        QCOMPARE(announced(track(with(one, u"mpris:trackid"_s, u"/7"_s)), 1'000), nothing);
        QCOMPARE(m_mirror.reportedTrackId(), u"/7"_s);
        QCOMPARE(position(1'000), 11.0);
    }

    void audaciousConstantTrackIdHidesNoChange()
    {
        const QString id = u"/org/mpris/MediaPlayer2/CurrentTrack"_s;
        read(properties(u"Playing"_s, with(one, u"mpris:trackid"_s, id), 90), 0);
        QCOMPARE(announced(track(with(two, u"mpris:trackid"_s, id)), 1'000), u"info"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfTwo(u"Playing"_s));
    }

    void aReadWithoutMetadataIsAnEmptyTrack()
    {
        playOneFrom(10);
        QCOMPARE(read(status(u"Playing"_s), 1'000), nothing);
        QCOMPARE(settled(1'150), u"info status"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfStopped);
    }

    void strawberrysTrackBeforeItsStatusIsShownWithIt()
    {
        read(properties(u"Stopped"_s, {}, 0), 0);
        QCOMPARE(announced(track(one), 1'000), nothing);
        QCOMPARE(announced(status(u"Playing"_s), 1'014), u"info status"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfOne(u"Playing"_s));
    }

    // Kinds of track

    void aTrackFromTheWebWithALengthHasAStoreUrl()
    {
        read(properties(u"Playing"_s, with(one, u"xesam:url"_s, u"http://shop.example/1.mp3"_s), 0), 0);
        QCOMPARE(m_mirror.userInfo(),
            QVariantMap({{u"Player State"_s, u"Playing"_s}, {u"PersistentID"_s, qlonglong(123924948760309567)},
                {u"Name"_s, u"One"_s}, {u"Artist"_s, u"Ann"_s}, {u"Album"_s, u"Album"_s}, {u"Total Time"_s, 100.0},
                {u"Store URL"_s, u"http://shop.example/1.mp3"_s}}));
    }

    void chromiumsTrackWithoutAnAddressHasALocation()
    {
        read(properties(u"Playing"_s, metadata({}, u"Page"_s, {}, {}, 60), 0), 0);
        QCOMPARE(m_mirror.userInfo(),
            QVariantMap({{u"Player State"_s, u"Playing"_s}, {u"PersistentID"_s, qlonglong(7556618620765885540)},
                {u"Name"_s, u"Page"_s}, {u"Total Time"_s, 60.0}, {u"Location"_s, QString()}}));
    }

    void chromiumsEndlessTrackWithoutAnAddressIsALiveStream()
    {
        const QVariantMap page{{u"xesam:title"_s, u"Page"_s}, {u"mpris:length"_s, qlonglong(9223372036854775807)}};
        read(properties(u"Playing"_s, page, 0), 0);
        QCOMPARE(m_mirror.userInfo(),
            QVariantMap({{u"Player State"_s, u"Playing"_s}, {u"PersistentID"_s, qlonglong(7556618620765885540)},
                {u"Name"_s, u"Page"_s}, {u"Store URL"_s, QString()}}));
    }

    void aStreamWithoutALengthThatCouldBeBelievedIsLive_data()
    {
        QTest::addColumn<QVariant>("length");
        QTest::newRow("none, as vlc") << QVariant();
        QTest::newRow("0, as rhythmbox") << QVariant(qlonglong(0));
        QTest::newRow("-1") << QVariant(qlonglong(-1));
        QTest::newRow("endless, as chromium") << QVariant(qlonglong(9223372036854775807));
        QTest::newRow("31 days") << QVariant(qlonglong(2'678'400'000'000));
    }
    void aStreamWithoutALengthThatCouldBeBelievedIsLive()
    {
        QFETCH(QVariant, length);
        read(properties(u"Playing"_s, with(streamOf(0), u"mpris:length"_s, length), 30), 0);
        QCOMPARE(m_mirror.userInfo(), infoOfLiveStream);
        QCOMPARE(position(1'000), 31.0);
    }

    void mpvsGrowingLengthMakesALiveStream()
    {
        read(properties(u"Playing"_s, streamOf(5), 0), 0);
        QCOMPARE(m_mirror.userInfo().value(u"Total Time"_s), 5.0);
        announced(track(streamOf(6)), 1'000);
        settled(1'150);
        QCOMPARE(m_mirror.userInfo().value(u"Total Time"_s), 6.0);
        announced(track(streamOf(7)), 2'000);
        QCOMPARE(settled(2'150), u"info"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfLiveStream);
        QCOMPARE(announced(track(streamOf(8)), 3'000), nothing);
        QCOMPARE(settled(3'150), nothing);
        QCOMPARE(position(60'000), 60.0);
    }

    void aLiveStreamStaysOneWhileItsLengthRests()
    {
        read(properties(u"Playing"_s, streamOf(5), 0), 0);
        announced(track(streamOf(6)), 1'000);
        announced(track(streamOf(7)), 2'000);
        announced(track(streamOf(7)), 3'000);
        settled(3'150);
        QCOMPARE(m_mirror.userInfo(), infoOfLiveStream);
    }

    void aLengthThatGrowsWhilePausedMakesNoLiveStream()
    {
        read(properties(u"Paused"_s, streamOf(5), 0), 0);
        for (int i = 1; i <= 5; ++i) {
            announced(track(streamOf(5 + i)), i * 1'000);
            settled(i * 1'000 + 150);
        }
        QCOMPARE(m_mirror.userInfo().value(u"Total Time"_s), 10.0);
    }

    void aLengthThatLeapsMakesNoLiveStream()
    {
        read(properties(u"Playing"_s, streamOf(5), 0), 0);
        announced(track(streamOf(6)), 1'000);
        announced(track(streamOf(200)), 2'000);
        announced(track(streamOf(201)), 3'000);
        settled(3'150);
        QCOMPARE(m_mirror.userInfo().value(u"Total Time"_s), 201.0);
    }

    void aLengthThatComesLateIsNoGrowth()
    {
        read(properties(u"Playing"_s, streamOf(0), 0), 0);
        QCOMPARE(m_mirror.userInfo(), infoOfLiveStream);
        announced(track(streamOf(5)), 1'000);
        announced(track(streamOf(6)), 2'000);
        settled(2'150);
        QCOMPARE(m_mirror.userInfo().value(u"Total Time"_s), 6.0);
    }

    void theNextStreamHasItsOwnGrowth()
    {
        read(properties(u"Playing"_s, streamOf(5), 0), 0);
        announced(track(streamOf(6)), 1'000);
        announced(track(streamOf(7)), 2'000);
        announced(track(with(streamOf(8), u"xesam:url"_s, u"http://shop.example/1.mp3"_s)), 3'000);
        settled(3'150);
        QCOMPARE(m_mirror.userInfo().value(u"Total Time"_s), 8.0);
    }

    void aFileThatGrowsIsNoLiveStream()
    {
        playOneFrom(10);
        for (int i = 1; i <= 5; ++i) {
            announced(track(with(one, u"mpris:length"_s, qlonglong(100 + i) * 1'000'000)), i * 1'000);
        }
        QCOMPARE(m_mirror.userInfo(), with(infoOfOne(u"Playing"_s), u"Total Time"_s, 105.0));
    }

    void aFileWithoutALengthIsALocalTrack_data()
    {
        QTest::addColumn<QString>("url");
        QTest::newRow("an address") << u"file:///music/1.flac"_s;
        QTest::newRow("a plain path") << u"/music/1.flac"_s;
    }
    void aFileWithoutALengthIsALocalTrack()
    {
        QFETCH(QString, url);
        read(properties(u"Playing"_s, metadata(url, u"One"_s, u"Ann"_s, u"Album"_s, 0), 10), 0);
        const QVariantMap info = m_mirror.userInfo();
        QCOMPARE(info.value(u"Total Time"_s), QVariant(0.0));
        QCOMPARE(info.value(u"Location"_s), QVariant(url));
        QVERIFY(!info.contains(u"Store URL"_s));
        QCOMPARE(position(1'000), 11.0);
    }

    // Tracks without a text

    void cmusUntaggedFileIsATrackWithTimes()
    {
        const QVariantMap untagged{{u"mpris:trackid"_s, u"/3"_s}, {u"mpris:length"_s, qlonglong(12'000'000)}};
        read(properties(u"Playing"_s, untagged, 5), 0);
        QVariantMap info = m_mirror.userInfo();
        QVERIFY(info.take(u"PersistentID"_s).toLongLong() > 0);
        QCOMPARE(info,
            QVariantMap({{u"Player State"_s, u"Playing"_s}, {u"Total Time"_s, 12.0}, {u"Location"_s, QString()}}));
        QCOMPARE(position(1'000), 6.0);
    }

    void theNextUntaggedFileOfTheSameLengthIsAnotherTrack()
    {
        const QVariantMap untagged{{u"mpris:trackid"_s, u"/3"_s}, {u"mpris:length"_s, qlonglong(12'000'000)}};
        read(properties(u"Playing"_s, untagged, 5), 0);
        const QVariant id = m_mirror.userInfo().value(u"PersistentID"_s);
        announced(track(with(untagged, u"mpris:trackid"_s, u"/4"_s)), 1'000);
        settled(1'150);
        QVERIFY(m_mirror.userInfo().value(u"PersistentID"_s) != id);
        QCOMPARE(position(2'000), 1.0);
    }

    void aTrackIdThatDiffersAtEveryReadIsTheSameTrack()
    {
        const QVariantMap untagged{{u"mpris:trackid"_s, u"/a"_s}, {u"mpris:length"_s, qlonglong(12'000'000)}};
        read(properties(u"Playing"_s, untagged, 5), 0);
        const QVariantMap info = m_mirror.userInfo();
        QCOMPARE(read(properties(u"Playing"_s, with(untagged, u"mpris:trackid"_s, u"/b"_s), 6), 1'000), nothing);
        QCOMPARE(settled(1'500), nothing);
        QCOMPARE(m_mirror.userInfo(), info);
        QCOMPARE(m_mirror.reportedTrackId(), u"/b"_s);
        QCOMPARE(position(2'000), 7.0);
    }

    void aTrackIdAloneIsSeenWithoutAnAnnouncement()
    {
        read(properties(u"Playing"_s, {}, 0), 0);
        read(properties(u"Playing"_s, {{u"mpris:trackid"_s, u"/3"_s}}, 0), 1'000);
        settled(1'150);
        QCOMPARE(m_mirror.userInfo().value(u"Player State"_s), QVariant(u"Playing"_s));
    }

    void whatPlaysNoTrackIsAtTheStart()
    {
        read(properties(u"Playing"_s, {{u"mpris:trackid"_s, u"/noplaylist"_s}}, 11), 0);
        QCOMPARE(m_mirror.userInfo(), infoOfStopped);
        QCOMPARE(position(1'000), 0.0);
    }

    void aNewTitleOfALiveStreamLeavesItsClock()
    {
        read(properties(u"Playing"_s, streamOf(0), 30), 0);
        announced(track(with(streamOf(0), u"xesam:title"_s, u"Next song"_s)), 1'000);
        QCOMPARE(settled(1'150), u"info"_s);
        QCOMPARE(m_mirror.userInfo().value(u"Name"_s), u"Next song"_s);
        QCOMPARE(position(2'000), 32.0);
    }

    // Positions

    void aSampleWithinTheToleranceMovesNothing()
    {
        playOneFrom(10);
        QCOMPARE(playingOneReadAt(13.1, 2'000), nothing);
        QCOMPARE(position(2'000), 12.0);
        QCOMPARE(playingOneReadAt(15, 2'000), u"settings"_s);
        QCOMPARE(position(2'000), 15.0);
    }

    void theNextSampleIsTakenAsItIsWhereThatIsAskedFor()
    {
        playOneFrom(10);
        m_mirror.trustNextSample();
        QCOMPARE(playingOneReadAt(12.5, 2'000), u"settings"_s);
        QCOMPARE(position(2'000), 12.5);
    }

    void ourTargetIsTrustedForOneAndAHalfSeconds()
    {
        playOneFrom(10);
        QCOMPARE(words(m_mirror.askedForPosition(60, at(1'000))), u"settings"_s);
        QCOMPARE(position(1'000), 60.0);
        QCOMPARE(read(properties(u"Playing"_s, one, 11), 1'040), nothing);
        QCOMPARE(playingOneReadAt(0, 2'499), nothing);
        QCOMPARE(position(2'499), 61.499);
        QCOMPARE(playingOneReadAt(13, 2'500), u"settings"_s);
        QCOMPARE(position(2'500), 13.0);
    }

    void aSeekedWithTheOldPositionAfterOurSeekIsIgnored()
    {
        playOneFrom(10);
        m_mirror.askedForPosition(60, at(1'000));
        QCOMPARE(words(m_mirror.seeked(11, at(1'005))), nothing);
        QCOMPARE(position(1'005), 60.005);
    }

    void aSeekedOfThePlayerMovesTheClock()
    {
        playOneFrom(10);
        QCOMPARE(words(m_mirror.seeked(60, at(1'000))), u"settings"_s);
        QCOMPARE(position(1'000), 60.0);
    }

    void mpDris2sUnaskedSeekedWithAnOldPositionIsNoSeek()
    {
        playOneFrom(10);
        QCOMPARE(words(m_mirror.seeked(13, at(5'000))), nothing);
        QCOMPARE(position(5'000), 15.0);
        QVERIFY(m_mirror.isPositionInDoubt());
        QCOMPARE(playingOneReadAt(16.4, 6'600), nothing);
        QCOMPARE(position(6'600), 16.6);
        QVERIFY(!m_mirror.isPositionInDoubt());
        QVERIFY(!m_mirror.announcesSeeks());
    }

    void aSmallStepBackInThePlayerIsBelievedOnceItIsBorneOut()
    {
        playOneFrom(10);
        m_mirror.seeked(13, at(5'000));
        QCOMPARE(playingOneReadAt(14.6, 6'600), nothing);
        QCOMPARE(playingOneReadAt(16.2, 8'200), u"settings"_s);
        QCOMPARE(position(8'200), 16.2);
    }

    void sayonarasSeekedOfEverySecondIsNoSeek()
    {
        playOneFrom(10);
        for (int second = 1; second <= 5; ++second) {
            QCOMPARE(words(m_mirror.seeked(9.95 + second, at(second * 1'000))), nothing);
        }
        QCOMPARE(position(5'000), 15.0);
        QVERIFY(!m_mirror.isPositionInDoubt());
        QVERIFY(!m_mirror.announcesSeeks());
    }

    void aSeekedThatFollowsOurSeekShowsThatThePlayerAnnouncesThem()
    {
        playOneFrom(10);
        m_mirror.askedForPosition(60, at(1'000));
        QVERIFY(!m_mirror.announcesSeeks());
        m_mirror.seeked(60, at(1'005));
        QVERIFY(m_mirror.announcesSeeks());
    }

    void aSeekedThatItsClockBearsOutShowsThatThePlayerAnnouncesThem()
    {
        playOneFrom(10);
        m_mirror.seeked(60, at(1'000));
        QVERIFY(!m_mirror.announcesSeeks());
        playingOneReadAt(61.6, 2'600);
        QVERIFY(m_mirror.announcesSeeks());
    }

    void aSeekedThatItsClockDoesNotBearOutShowsNothing()
    {
        playOneFrom(10);
        m_mirror.seeked(60, at(1'000));
        playingOneReadAt(12.6, 2'600);
        QCOMPARE(position(2'600), 12.6);
        playingOneReadAt(14.6, 4'600);
        QVERIFY(!m_mirror.announcesSeeks());
    }

    void audaciousPositionThatFollowsItsSeekedLateIsIgnored()
    {
        playOneFrom(10);
        m_mirror.seeked(60, at(1'000));
        QCOMPARE(playingOneReadAt(11.2, 1'200), nothing);
        QCOMPARE(position(1'200), 60.2);
    }

    void everySeekedOfAUserWhoScrubsInThePlayerMovesTheClock()
    {
        playOneFrom(10);
        m_mirror.seeked(20, at(1'000));
        QCOMPARE(words(m_mirror.seeked(30, at(1'200))), u"settings"_s);
        QCOMPARE(position(1'200), 30.0);
    }

    void elisasSeekedBeyondTheEndIsClampedToTheLength()
    {
        playOneFrom(10);
        m_mirror.seeked(3'600, at(1'000));
        QCOMPARE(position(1'000), 100.0);
    }

    void thePositionIsClampedToTheLength()
    {
        playOneFrom(99);
        QCOMPARE(position(1'000), 100.0);
        QCOMPARE(position(60'000), 100.0);
    }

    void ratesAreFollowed()
    {
        playOneFrom(10);
        announced({{u"Rate"_s, 2.0}}, 1'000);
        QCOMPARE(position(2'000), 13.0);
        announced({{u"Rate"_s, 0.0}}, 2'000);
        QCOMPARE(position(9'000), 13.0);
    }

    void chromiumsRateOfZeroWhilePausedEndsWithThePause()
    {
        playOneFrom(10);
        announced({{u"Rate"_s, 0.0}}, 1'000);
        announced(status(u"Paused"_s), 1'002);
        settled(1'152);
        QCOMPARE(position(5'000), 11.0);
        announced({{u"Rate"_s, 1.0}}, 5'000);
        announced(status(u"Playing"_s), 5'000);
        QCOMPARE(position(6'000), 12.0);
    }

    void thePositionOfTheNextTrackIsNotAppliedToTheOldOne()
    {
        playOneFrom(90);
        const QVariantMap partial = metadata(u"file:///music/2.flac"_s, u"Two"_s, {}, {}, 0);
        QCOMPARE(read(properties(u"Playing"_s, partial, 0.04), 1'040), nothing);
        QCOMPARE(position(1'040), 91.04);
        QCOMPARE(m_mirror.userInfo(), infoOfOne(u"Playing"_s));
        settled(1'190);
        QCOMPARE(m_mirror.userInfo().value(u"Name"_s), u"Two"_s);
        QCOMPARE(position(1'190), 0.15);
    }

    void aTrackChangeEndsTheTrustInOurTarget()
    {
        playOneFrom(10);
        m_mirror.askedForPosition(60, at(1'000));
        announced(track(two), 1'100);
        QCOMPARE(position(1'100), 0.0);
        read(properties(u"Playing"_s, two, 0.5), 1'200);
        QCOMPARE(position(1'200), 0.5);
    }

    void aPlayerThatDoesNotRespondHasAStandingClock()
    {
        playOneFrom(10);
        m_mirror.setResponding(false, at(1'000));
        QCOMPARE(position(9'000), 11.0);
        QCOMPARE(m_mirror.userInfo(), infoOfOne(u"Playing"_s));
        m_mirror.setResponding(true, at(9'000));
        QCOMPARE(position(10'000), 12.0);
        // It may have played on meanwhile, so its next position is believed, however little it differs.
        playingOneReadAt(12.5, 10'000);
        QCOMPARE(position(10'000), 12.5);
    }

    void aCommandThatWasNeverAnsweredIsTakenBackButTheClockStands()
    {
        playOneFrom(10);
        m_mirror.askedForStatus(PlaybackStatus::Paused, at(1'000));
        m_mirror.setResponding(false, at(2'000));
        m_mirror.commandFailed(at(2'000));
        QCOMPARE(m_mirror.userInfo(), infoOfOne(u"Playing"_s));
        QCOMPARE(position(9'000), 11.0);
    }

    void aPausedPlayerThatRespondsAgainStaysPaused()
    {
        read(properties(u"Paused"_s, one, 10), 0);
        m_mirror.setResponding(false, at(1'000));
        m_mirror.setResponding(true, at(2'000));
        QCOMPARE(position(5'000), 10.0);
    }

    void theClockRunsOnAfterTheMetadataWasGoneWhileThePlayerWasSilent()
    {
        playOneFrom(10);
        announced(track({}), 1'000);
        settled(1'150);
        m_mirror.setResponding(false, at(2'000));
        m_mirror.setResponding(true, at(3'000));
        announced(track(two), 4'000);
        QCOMPARE(position(5'000), 1.0);
    }

    void rhythmboxTellsNoPositionWhileStopped()
    {
        playOneFrom(10);
        read(status(u"Stopped"_s), 1'000);
        QCOMPARE(m_mirror.position(at(1'000)), std::nullopt);
    }

    void rhythmboxTellsNoPositionForAMomentAtATrackChange()
    {
        playOneFrom(10);
        read({{u"PlaybackStatus"_s, u"Playing"_s}, {u"Metadata"_s, one}}, 1'000);
        QCOMPARE(position(1'000), 11.0);
    }

    // Stopped and yet playing

    void mpvStartedIdlePlaysThoughItSaysStopped()
    {
        read(properties(u"Stopped"_s, {}, 0), 0);
        QVERIFY(!m_mirror.mayPlayThoughStopped());
        announced(track(one), 1'000);
        QVERIFY(m_mirror.mayPlayThoughStopped());
        QCOMPARE(read(properties(u"Stopped"_s, one, 0.04), 1'040), nothing);
        QCOMPARE(read(properties(u"Stopped"_s, one, 0.4), 1'400), u"info settings status"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfOne(u"Playing"_s));
        QCOMPARE(position(1'400), 0.4);
        QCOMPARE(position(2'400), 1.4);
    }

    void mpvPlaysOnThoughItIsReadTwiceInOneMoment()
    {
        read(properties(u"Stopped"_s, one, 1), 0);
        read(properties(u"Stopped"_s, one, 1.4), 400);
        QCOMPARE(read(properties(u"Stopped"_s, one, 1.44), 440), nothing);
        QCOMPARE(settled(590), nothing);
        QCOMPARE(m_mirror.userInfo(), infoOfOne(u"Playing"_s));
    }

    void mpvPlaysOnThroughATrackChangeThoughItSaysStopped()
    {
        read(properties(u"Stopped"_s, one, 98), 0);
        read(properties(u"Stopped"_s, one, 98.4), 400);
        QCOMPARE(announced(track(two), 2'000), u"info"_s);
        QCOMPARE(read(properties(u"Stopped"_s, two, 0.04), 2'040), nothing);
        QCOMPARE(settled(2'190), nothing);
        QCOMPARE(read(properties(u"Stopped"_s, two, 0.4), 2'400), nothing);
        QCOMPARE(m_mirror.userInfo(), infoOfTwo(u"Playing"_s));
    }

    void mpvThatStandsStillIsStoppedAfter150Milliseconds()
    {
        read(properties(u"Stopped"_s, one, 1), 0);
        read(properties(u"Stopped"_s, one, 1.4), 400);
        QCOMPARE(read(properties(u"Stopped"_s, one, 1.4), 2'400), nothing);
        QCOMPARE(nextSettling(), 2'550);
        QCOMPARE(settled(2'549), nothing);
        QCOMPARE(settled(2'550), u"info status"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfStopped);
    }

    void mpvThatSaysItPausesIsBelieved()
    {
        read(properties(u"Stopped"_s, one, 1), 0);
        read(properties(u"Stopped"_s, one, 1.4), 400);
        announced(status(u"Paused"_s), 1'000);
        QCOMPARE(settled(1'150), u"info status"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfOne(u"Paused"_s));
        QVERIFY(!m_mirror.mayPlayThoughStopped());
    }

    void mpvThatSaysStoppedAnewIsStoppedAfter150Milliseconds()
    {
        read(properties(u"Stopped"_s, one, 1), 0);
        read(properties(u"Stopped"_s, one, 1.4), 400);
        QCOMPARE(announced(status(u"Stopped"_s), 1'000), nothing);
        // It stopped beyond the position at which it was last seen playing.
        QCOMPARE(read(properties(u"Stopped"_s, one, 1.9), 1'040), nothing);
        QCOMPARE(settled(1'149), nothing);
        QCOMPARE(settled(1'150), u"info status"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfStopped);
    }

    void aStopThatIsOnlyReadEndsWhatPlayedThoughItSaidStopped()
    {
        read(properties(u"Stopped"_s, one, 1), 0);
        read(properties(u"Stopped"_s, one, 1.4), 400);
        read(properties(u"Playing"_s, one, 2), 1'000);
        QCOMPARE(read(properties(u"Stopped"_s, one, 0), 2'000), nothing);
        QCOMPARE(settled(2'150), u"info status"_s);
        QCOMPARE(m_mirror.userInfo(), infoOfStopped);
    }

    void vlcThatKeepsItsTrackWhileStoppedStaysStopped()
    {
        read(properties(u"Stopped"_s, one, 0), 0);
        QVERIFY(m_mirror.mayPlayThoughStopped());
        QCOMPARE(read(properties(u"Stopped"_s, one, 0), 400), nothing);
        QCOMPARE(m_mirror.userInfo(), infoOfStopped);
    }

    void elisasStalePositionThatFallsBackWhileStoppedIsNoPlaying()
    {
        read(properties(u"Stopped"_s, one, 11.8), 0);
        QCOMPARE(read(properties(u"Stopped"_s, one, 0), 400), nothing);
        QCOMPARE(m_mirror.userInfo(), infoOfStopped);
    }

    // The volume

    void aVolumeOfThePlayerIsTakenOver()
    {
        read(with(properties(u"Playing"_s, one, 0), u"Volume"_s, 0.5), 0);
        QCOMPARE(m_mirror.volume(), 0.5);
        QCOMPARE(announced({{u"Volume"_s, 0.7}}, 1'000), u"settings"_s);
        QCOMPARE(m_mirror.volume(), 0.7);
    }

    void echoesOfOurVolumeAreIgnoredUntilItIsAnsweredAnd250MillisecondsLonger()
    {
        read(with(properties(u"Playing"_s, one, 0), u"Volume"_s, 0.5), 0);
        m_mirror.askedForVolume(0.8, at(1'000));
        QCOMPARE(announced({{u"Volume"_s, 0.5}}, 1'240), nothing);
        QCOMPARE(announced({{u"Volume"_s, 0.6}}, 1'900), nothing);
        QCOMPARE(m_mirror.volume(), 0.8);
        m_mirror.volumeAnswered(at(1'950));
        QCOMPARE(nextSettling(), 2'200);
        QCOMPARE(announced({{u"Volume"_s, 0.7}}, 2'000), nothing);
        QCOMPARE(announced({{u"Volume"_s, 0.8}}, 2'100), nothing);
        QCOMPARE(settled(2'200), nothing);
        QCOMPARE(m_mirror.volume(), 0.8);
        QCOMPARE(nextSettling(), -1);
    }

    void anEchoThatIsRoundedOrCutOffIsNoChange()
    {
        read(with(properties(u"Playing"_s, one, 0), u"Volume"_s, 0.5), 0);
        m_mirror.askedForVolume(0.484, at(1'000));
        m_mirror.volumeAnswered(at(1'002));
        QCOMPARE(announced({{u"Volume"_s, 0.48}}, 1'010), nothing);
        QCOMPARE(settled(1'252), nothing);
        QCOMPARE(announced({{u"Volume"_s, 0.484}}, 2'000), nothing);
        QCOMPARE(announced({{u"Volume"_s, 0.486}}, 3'000), u"settings"_s);
    }

    void aPositionThatIsCorrectedUnseenIsNoChange()
    {
        playOneFrom(10);
        m_mirror.askedForStatus(PlaybackStatus::Paused, at(1'000));
        QCOMPARE(read(properties(u"Paused"_s, one, 11.04), 1'040), nothing);
        QCOMPARE(position(1'040), 11.04);
        m_mirror.trustNextSample();
        QCOMPARE(read(properties(u"Paused"_s, one, 11.1), 1'100), u"settings"_s);
        QCOMPARE(position(1'100), 11.1);
    }

    void chromiumsIgnoredVolumeGoesBack()
    {
        read(with(properties(u"Playing"_s, one, 0), u"Volume"_s, 1.0), 0);
        m_mirror.askedForVolume(0.3, at(1'000));
        m_mirror.volumeAnswered(at(1'002));
        QCOMPARE(settled(1'251), nothing);
        QCOMPARE(m_mirror.volume(), 0.3);
        QCOMPARE(settled(1'252), u"settings"_s);
        QCOMPARE(m_mirror.volume(), 1.0);
    }

    void anotherVolumeInBetweenIsHeldFromItsOwnAnswer()
    {
        read(with(properties(u"Playing"_s, one, 0), u"Volume"_s, 0.5), 0);
        m_mirror.askedForVolume(0.6, at(1'000));
        m_mirror.volumeAnswered(at(1'010));
        m_mirror.askedForVolume(0.7, at(1'200));
        QCOMPARE(announced({{u"Volume"_s, 0.6}}, 1'400), nothing);
        m_mirror.volumeAnswered(at(1'410));
        QCOMPARE(announced({{u"Volume"_s, 0.7}}, 1'600), nothing);
        QCOMPARE(settled(1'660), nothing);
        QCOMPARE(m_mirror.volume(), 0.7);
    }

    void vlcsSilenceWhileStoppedIsNotItsVolume()
    {
        read(with(properties(u"Playing"_s, one, 0), u"Volume"_s, 0.5), 0);
        announced(status(u"Stopped"_s), 1'000);
        QCOMPARE(announced({{u"Volume"_s, 0.0}}, 1'002), nothing);
        settled(1'150);
        QCOMPARE(m_mirror.volume(), 0.5);
        QVariantMap again = status(u"Playing"_s);
        again.insert(u"Volume"_s, 0.5);
        announced(again, 2'000);
        QCOMPARE(m_mirror.volume(), 0.5);
    }

    void silenceOfAPlayingPlayerIsItsVolume()
    {
        read(with(properties(u"Playing"_s, one, 0), u"Volume"_s, 0.5), 0);
        QCOMPARE(announced({{u"Volume"_s, 0.0}}, 1'000), u"settings"_s);
        QCOMPARE(m_mirror.volume(), 0.0);
    }

    void aPlayerThatIsFoundStoppedAndSilentIsSilent()
    {
        read(with(properties(u"Stopped"_s, one, 0), u"Volume"_s, 0.0), 0);
        QCOMPARE(m_mirror.volume(), 0.0);
    }

    // Shuffle and loop status

    void cmusQuietShuffleAndLoopStatusAreSeen()
    {
        QVariantMap answer = properties(u"Paused"_s, one, 0);
        answer.insert(u"Shuffle"_s, false);
        answer.insert(u"LoopStatus"_s, u"None"_s);
        read(answer, 0);
        answer.insert(u"LoopStatus"_s, u"Playlist"_s);
        QCOMPARE(read(answer, 1'000), u"settings"_s);
        QCOMPARE(m_mirror.loopStatus(), LoopStatus::Playlist);
        answer.insert(u"Shuffle"_s, true);
        QCOMPARE(read(answer, 2'000), nothing);
        QVERIFY(m_mirror.isInDoubt());
        QCOMPARE(read(answer, 2'040), nothing);
        QCOMPARE(read(answer, 2'080), u"settings"_s);
        QCOMPARE(m_mirror.shuffle(), true);
        QVERIFY(!m_mirror.isInDoubt());
    }

    void mpvsRandomShuffleIsUnknown()
    {
        QVariantMap answer = properties(u"Playing"_s, one, 0);
        answer.insert(u"Shuffle"_s, true);
        read(answer, 0);
        QCOMPARE(m_mirror.shuffle(), true);
        answer.insert(u"Shuffle"_s, false);
        QCOMPARE(read(answer, 1'000), nothing);
        answer.insert(u"Shuffle"_s, true);
        QCOMPARE(read(answer, 1'040), u"settings"_s);
        QCOMPARE(m_mirror.shuffle(), std::nullopt);
    }

    void aModeThatWasAskedForIsBelievedUntilItsEffectIsRead()
    {
        QVariantMap answer = properties(u"Playing"_s, one, 0);
        answer.insert(u"Shuffle"_s, false);
        answer.insert(u"LoopStatus"_s, u"None"_s);
        read(answer, 0);
        m_mirror.askedForShuffle(true, at(1'000));
        m_mirror.askedForLoopStatus(LoopStatus::Track, at(1'000));
        QCOMPARE(m_mirror.shuffle(), true);
        QCOMPARE(m_mirror.loopStatus(), LoopStatus::Track);
        m_mirror.shuffleAnswered(at(1'010));
        m_mirror.loopStatusAnswered(at(1'010));
        // Quod Libet announces the old mode first.
        QCOMPARE(announced({{u"Shuffle"_s, false}, {u"LoopStatus"_s, u"None"_s}}, 1'015), nothing);
        QCOMPARE(read(answer, 1'060), nothing);
        QCOMPARE(announced({{u"Shuffle"_s, true}}, 1'100), nothing);
        answer.insert(u"Shuffle"_s, true);
        QCOMPARE(read(answer, 1'211), u"settings"_s);
        QCOMPARE(m_mirror.shuffle(), true);
        QCOMPARE(m_mirror.loopStatus(), LoopStatus::None);
        QCOMPARE(nextSettling(), -1);
    }

    void aModeThatIsNeverAnsweredIsBelievedForASecondAndAQuarter()
    {
        QVariantMap answer = properties(u"Playing"_s, one, 0);
        answer.insert(u"Shuffle"_s, false);
        read(answer, 0);
        m_mirror.askedForShuffle(true, at(1'000));
        QCOMPARE(nextSettling(), 2'250);
        QCOMPARE(settled(2'249), nothing);
        QCOMPARE(m_mirror.shuffle(), true);
        QCOMPARE(settled(2'250), u"settings"_s);
        QCOMPARE(m_mirror.shuffle(), false);
        QCOMPARE(nextSettling(), -1);
    }

    void announcedModesAreBelieved()
    {
        playOneFrom(0);
        QCOMPARE(announced({{u"Shuffle"_s, true}, {u"LoopStatus"_s, u"Playlist"_s}}, 1'000), u"settings"_s);
        QCOMPARE(m_mirror.shuffle(), true);
        QCOMPARE(m_mirror.loopStatus(), LoopStatus::Playlist);
        QCOMPARE(announced({{u"LoopStatus"_s, u"Bogus"_s}}, 2'000), nothing);
        QCOMPARE(m_mirror.loopStatus(), LoopStatus::Playlist);
    }

    void aPlayerWithoutModesHasNone()
    {
        playOneFrom(0);
        QCOMPARE(m_mirror.shuffle(), std::nullopt);
        QCOMPARE(m_mirror.loopStatus(), std::nullopt);
    }

    // Abilities

    void thePositionCanBeSetWhereThePlayerCanSeekInATrackWithALength_data()
    {
        QTest::addColumn<QVariantMap>("properties");
        QTest::addColumn<ControlAnswer>("answer");
        const QVariantMap playing = properties(u"Playing"_s, one, 10);
        QVariantMap withoutPosition = playing;
        withoutPosition.remove(u"Position"_s);
        QTest::newRow("a track") << playing << ControlAnswer::taken;
        QTest::newRow("a player that cannot seek") << with(playing, u"CanSeek"_s, false) << ControlAnswer::missing;
        QTest::newRow("a player that cannot be controlled")
            << with(playing, u"CanControl"_s, false) << ControlAnswer::missing;
        QTest::newRow("a player without a position") << withoutPosition << ControlAnswer::missing;
        QTest::newRow("a file without a length")
            << properties(u"Playing"_s, with(one, u"mpris:length"_s, qlonglong(0)), 10) << ControlAnswer::missing;
        QTest::newRow("VLC, stopped") << with(properties(u"Stopped"_s, one, 0), u"CanSeek"_s, false)
                                      << ControlAnswer::taken;
    }
    void thePositionCanBeSetWhereThePlayerCanSeekInATrackWithALength()
    {
        QFETCH(QVariantMap, properties);
        read(properties, 0);
        QTEST(m_mirror.answerTo(MusicControl::position), "answer");
    }

    void aMomentInWhichVlcCannotSeekIsNotSeen()
    {
        playOneFrom(10);
        announced({{u"CanSeek"_s, false}}, 1'000);
        QCOMPARE(nextSettling(), 1'150);
        announced({{u"CanSeek"_s, true}}, 1'100);
        settled(1'150);
        QCOMPARE(m_mirror.answerTo(MusicControl::position), ControlAnswer::taken);
        announced({{u"CanSeek"_s, false}}, 2'000);
        QVERIFY(m_mirror.settle(at(2'150)).controls);
        QCOMPARE(m_mirror.answerTo(MusicControl::position), ControlAnswer::missing);
    }

    void whatVlcLosesAroundATrackChangeIsNotIgnored()
    {
        const auto playing = [](const QVariantMap &map) {
            return with(properties(u"Playing"_s, map, 0), u"Volume"_s, 1.0);
        };
        read(playing(one), 0);
        for (int change = 1; change <= 4; ++change) {
            m_mirror.askedForVolume(0.5, at(change * 1'000));
            m_mirror.volumeAnswered(at(change * 1'000));
            read(playing(change % 2 == 0 ? one : two), change * 1'000 + 300);
        }
        QCOMPARE(m_mirror.answerTo(MusicControl::volume), ControlAnswer::taken);
    }

    void theVolumeOfAStoppedPlayerShowsNothing()
    {
        read(with(properties(u"Stopped"_s, one, 0), u"Volume"_s, 0.0), 0);
        for (int attempt = 1; attempt <= 3; ++attempt) {
            m_mirror.askedForVolume(0.5, at(attempt * 1'000));
            m_mirror.volumeAnswered(at(attempt * 1'000));
            read(with(properties(u"Stopped"_s, one, 0), u"Volume"_s, 0.0), attempt * 1'000 + 300);
        }
        QCOMPARE(m_mirror.answerTo(MusicControl::volume), ControlAnswer::taken);
    }

    void aPlayerThatCannotBeControlledCanNeitherSeekNorSkip()
    {
        QVariantMap answer = properties(u"Playing"_s, one, 0);
        answer.insert(u"CanControl"_s, false);
        for (const QString &ability : {u"CanPause"_s, u"CanSeek"_s, u"CanGoNext"_s, u"CanGoPrevious"_s}) {
            answer.insert(ability, true);
        }
        read(answer, 0);
        QVERIFY(!m_mirror.canControl());
        QVERIFY(m_mirror.canPause());
        QVERIFY(!m_mirror.canSeek() && !m_mirror.canGoNext() && !m_mirror.canGoPrevious());
    }

    void whatAPlayerSaysItCannotItCannot()
    {
        playOneFrom(0);
        announced({{u"CanPause"_s, false}}, 1);
        QVERIFY(!m_mirror.canPause() && m_mirror.canSeek() && m_mirror.canGoNext() && m_mirror.canGoPrevious());
        announced({{u"CanSeek"_s, false}}, 2);
        QVERIFY(!m_mirror.canSeek() && m_mirror.canGoNext() && m_mirror.canGoPrevious());
        announced({{u"CanGoNext"_s, false}}, 3);
        QVERIFY(!m_mirror.canGoNext() && m_mirror.canGoPrevious());
        announced({{u"CanGoPrevious"_s, false}}, 4);
        QVERIFY(!m_mirror.canGoPrevious());
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::PlayerMirrorTest, QCoreApplication)
#include "PlayerMirrorTest.moc"
