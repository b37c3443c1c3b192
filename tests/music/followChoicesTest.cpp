// SPDX-License-Identifier: MIT
#include "music/followChoices.h"

#include "support/ScriptedFollowablePlayers.h"
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tunedeck;

namespace {
const FollowablePlayer vlc{.id = u"vlc"_s, .name = u"VLC"_s, .desktopEntry = u"vlc"_s, .title = {}};
const FollowablePlayer strawberry{.id = u"strawberry"_s,
    .name = u"Strawberry"_s,
    .desktopEntry = {},
    .title = u"Quince Harbour Timetable"_s,
    .isFollowed = true};

/// A line for each entry; the chosen one has a mark.
QStringList lines(const QList<FollowChoice> &choices)
{
    QStringList lines;
    for (const FollowChoice &choice : choices) {
        lines.append((choice.isChosen ? u"* "_s : u"  "_s) + choice.text);
    }
    return lines;
}
} // namespace

class followChoicesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void automaticComesFirstAndNamesThePlayerThatItFollows()
    {
        ScriptedFollowablePlayers players;
        QCOMPARE(lines(followChoices(players, {})), {u"* Automatic"_s});
        players.players = {vlc, strawberry};
        QCOMPARE(lines(followChoices(players, {})),
            (QStringList{u"* Automatic (Strawberry)"_s, u"  VLC"_s, u"  Strawberry: Quince Harbour Timetable"_s}));
    }

    void aPinnedPlayerIsTheChosenOne()
    {
        ScriptedFollowablePlayers players;
        players.players = {vlc, strawberry};
        QCOMPARE(lines(followChoices(players, u"strawberry"_s)),
            (QStringList{u"  Automatic"_s, u"  VLC"_s, u"* Strawberry: Quince Harbour Timetable"_s}));
    }

    void eachEntryHasTheIdentifierAndTheDesktopEntryOfItsPlayer()
    {
        ScriptedFollowablePlayers players;
        players.players = {vlc, strawberry};
        const QList<FollowChoice> choices = followChoices(players, {});
        QCOMPARE(choices.at(0).id, QString());
        QCOMPARE(choices.at(1).id, u"vlc"_s);
        QCOMPARE(choices.at(1).desktopEntry, u"vlc"_s);
        QCOMPARE(choices.at(2).id, u"strawberry"_s);
        QCOMPARE(choices.at(2).desktopEntry, QString());
    }

    void aPinnedPlayerThatDoesNotRunIsTheLastAndTheChosenOne()
    {
        ScriptedFollowablePlayers players;
        players.players = {vlc};
        players.awaited = u"Strawberry"_s;
        QCOMPARE(lines(followChoices(players, u"strawberry"_s)),
            (QStringList{u"  Automatic"_s, u"  VLC"_s, u"* Strawberry (not open)"_s}));
        QCOMPARE(followChoices(players, u"strawberry"_s).last().id, u"strawberry"_s);
        players.awaited.clear();
        QCOMPARE(followChoices(players, u"org.example"_s).last().text, u"org.example (not open)"_s);
    }

    void ofPlayersWithOneIdentifierTheFollowedOneIsChosen()
    {
        ScriptedFollowablePlayers players;
        FollowablePlayer followed = vlc;
        followed.name = u"Second VLC"_s;
        followed.isFollowed = true;
        players.players = {vlc, followed, vlc};
        QCOMPARE(lines(followChoices(players, u"vlc"_s)),
            (QStringList{u"  Automatic"_s, u"  VLC"_s, u"* Second VLC"_s, u"  VLC (2)"_s}));
        players.players = {vlc, vlc};
        QCOMPARE(lines(followChoices(players, u"vlc"_s)), (QStringList{u"  Automatic"_s, u"* VLC"_s, u"  VLC (2)"_s}));
    }

    void entriesThatWouldReadTheSameAreNumbered()
    {
        ScriptedFollowablePlayers players;
        FollowablePlayer numbered = vlc;
        numbered.name = u"VLC (2)"_s;
        FollowablePlayer playing = vlc;
        playing.title = u"Song"_s;
        players.players = {vlc, numbered, vlc, playing, vlc, playing};
        QCOMPARE(lines(followChoices(players, {})),
            (QStringList{u"* Automatic"_s, u"  VLC"_s, u"  VLC (2)"_s, u"  VLC (3)"_s, u"  VLC: Song"_s, u"  VLC (4)"_s,
                u"  VLC: Song (2)"_s}));
    }

    void aNumberFitsIntoALongEntry()
    {
        ScriptedFollowablePlayers players;
        FollowablePlayer longest = vlc;
        longest.name = QString(60, u'x');
        players.players = {longest, longest};
        QCOMPARE(followChoices(players, {}).at(2).text, QString(55, u'x') + u"… (2)"_s);
    }

    void entriesArePlainAndBounded_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("text");
        QTest::newRow("ampersand") << u"Salt & Pepper"_s << u"A & B"_s << u"Salt & Pepper: A & B"_s;
        QTest::newRow("places of arguments") << u"%1%2"_s << u"%2%1"_s << u"%1%2: %2%1"_s;
        QTest::newRow("lines") << u"VLC\nmedia"_s << u"\tSong\n"_s << u"VLC media: Song"_s;
        QTest::newRow("override") << u"\u202eCLV"_s << u"\u2067gnoS"_s << u"CLV: gnoS"_s;
        QTest::newRow("long") << QString(60, u'x') << QString(60, u'y') << QString(59, u'x') + u'…';
        QTest::newRow("no name") << QString() << QString() << u"vlc"_s;
    }

    void entriesArePlainAndBounded()
    {
        QFETCH(const QString, name);
        QFETCH(const QString, title);
        ScriptedFollowablePlayers players;
        players.players = {{.id = u"vlc"_s, .name = name, .desktopEntry = {}, .title = title}};
        QTEST(followChoices(players, {}).at(1).text, "text");
    }

    void anAutomaticThatFollowsALongNameIsBounded()
    {
        ScriptedFollowablePlayers players;
        players.players = {strawberry};
        players.players.first().name = QString(60, u'x');
        QCOMPARE(followChoices(players, {}).first().text.size(), 60);
    }

    void theFollowedPlayerIsFound()
    {
        ScriptedFollowablePlayers players;
        QVERIFY(!followedPlayer(players));
        players.players = {vlc};
        QVERIFY(!followedPlayer(players));
        players.players = {vlc, strawberry};
        QCOMPARE(followedPlayer(players)->id, u"strawberry"_s);
        QCOMPARE(neverFollowText(strawberry), u"Never Follow Strawberry"_s);
    }

    void aPlayerThatIsAwaitedIsNamed()
    {
        ScriptedFollowablePlayers players;
        QCOMPARE(waitingText(players), QString());
        players.awaited = u"Strawberry"_s;
        QCOMPARE(waitingText(players), u"Waiting for Strawberry"_s);
    }
};

TUNEDECK_TEST(followChoicesTest, QCoreApplication)
#include "followChoicesTest.moc"
