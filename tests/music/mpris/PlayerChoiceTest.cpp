// SPDX-License-Identifier: MIT
#include "music/mpris/choice/PlayerChoice.h"
#include "support/registerTest.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

PlayerCandidate player(const QString &name)
{
    return {.name = name, .identity = name, .processId = {}, .browserProcessId = {}};
}

PlayerCandidate ofProcess(PlayerCandidate candidate, qint64 processId)
{
    candidate.processId = processId;
    return candidate;
}

PlayerCandidate called(PlayerCandidate candidate, const QString &identity)
{
    candidate.identity = identity;
    return candidate;
}

PlayerCandidate playing(PlayerCandidate candidate, quint64 lastPlayed)
{
    candidate.isPlaying = true;
    candidate.lastPlayed = lastPlayed;
    return candidate;
}

PlayerCandidate havingPlayed(PlayerCandidate candidate, quint64 lastPlayed)
{
    candidate.lastPlayed = lastPlayed;
    return candidate;
}

PlayerCandidate justChanged(PlayerCandidate candidate)
{
    candidate.hasJustChanged = true;
    return candidate;
}

PlayerCandidate speakingFor(PlayerCandidate candidate, qint64 browserProcessId)
{
    candidate.browserProcessId = browserProcessId;
    return candidate;
}

const PlayerCandidate mpv = player(u"mpv"_s);
const PlayerCandidate strawberry = player(u"strawberry"_s);
const PlayerCandidate elisa = player(u"elisa"_s);

const PlayerCandidate vlc = ofProcess(player(u"vlc"_s), 1234);
const PlayerCandidate vlcInstance = called(ofProcess(player(u"vlc.instance1234"_s), 1234), u"vlc"_s);

const PlayerCandidate chromium = ofProcess(player(u"chromium.instance77"_s), 77);
const PlayerCandidate integration = speakingFor(ofProcess(player(u"plasma-browser-integration"_s), 99), 77);

QStringList names(const QList<PlayerCandidate> &candidates)
{
    QStringList names;
    for (const PlayerCandidate &candidate : candidates) {
        names.append(candidate.name);
    }
    return names;
}

PlayerWishes pinning(const QString &id)
{
    return {.pinned = PlayerPin::fromId(id), .neverFollowed = {}};
}

QStringList followable(const QList<PlayerCandidate> &candidates, const PlayerWishes &wishes = {})
{
    return names(followablePlayers(candidates, wishes));
}

std::optional<PlayerDecision> decision(
    const QList<PlayerCandidate> &candidates, const QString &pinned, const QString &current, const QString &commanded)
{
    const PlayerWishes wishes = pinning(pinned);
    return choosePlayer(followablePlayers(candidates, wishes), wishes.pinned, commanded, current);
}

std::optional<QString> choice(const QList<PlayerCandidate> &candidates, const QString &pinned = {},
    const QString &current = {}, const QString &commanded = {})
{
    const std::optional<PlayerDecision> made = decision(candidates, pinned, current, commanded);
    return made ? std::optional(made->name) : std::nullopt;
}

FollowReason reason(const QList<PlayerCandidate> &candidates, const QString &pinned = {}, const QString &current = {},
    const QString &commanded = {})
{
    return decision(candidates, pinned, current, commanded)->reason;
}

} // namespace

class PlayerChoiceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void onAnEmptyBusThereIsNoneToFollow() { QCOMPARE(choice({}, u"mpv"_s, u"mpv"_s), std::nullopt); }

    void thePinnedOneIsFollowedWhateverElsePlays()
    {
        QCOMPARE(choice({playing(mpv, 9), strawberry, playing(elisa, 8)}, u"strawberry"_s, u"mpv"_s), u"strawberry"_s);
    }

    void whereThePinnedOneIsNotOnTheBusTheOthersAreChosenFrom()
    {
        QCOMPARE(choice({mpv, playing(elisa, 1)}, u"strawberry"_s), u"elisa"_s);
    }

    void anInstanceOfThePinnedOneWhoseNameChangesAtEveryStartIsFollowed()
    {
        QCOMPARE(choice({chromium, playing(elisa, 1)}, u"chromium"_s), u"chromium.instance77"_s);
        QCOMPARE(choice({chromium, playing(elisa, 1)}, u"chrom"_s), u"elisa"_s);
    }

    void thePinIsAWholeName() { QCOMPARE(choice({player(u"mpvx"_s), playing(elisa, 1)}, u"mpv"_s), u"elisa"_s); }

    void noPinMeansNoPlayerWithoutAName()
    {
        QCOMPARE(choice({player(QString()), playing(elisa, 1)}, QString()), u"elisa"_s);
    }

    void aPlayingOneIsFollowedRatherThanOneThatPlayedLater()
    {
        QCOMPARE(choice({havingPlayed(mpv, 9), playing(elisa, 3)}), u"elisa"_s);
    }

    void aPlayingOneIsNeverLeftForAPausedOne()
    {
        QCOMPARE(choice({havingPlayed(mpv, 9), playing(elisa, 3)}, {}, u"elisa"_s), u"elisa"_s);
    }

    void aPlayingOneIsNotLeftForAnotherThatBeginsToPlay()
    {
        QCOMPARE(choice({playing(mpv, 9), playing(elisa, 3)}, {}, u"elisa"_s), u"elisa"_s);
    }

    void aPausedOneIsLeftForOneThatPlays()
    {
        QCOMPARE(choice({havingPlayed(mpv, 3), playing(elisa, 2)}, {}, u"mpv"_s), u"elisa"_s);
    }

    void ofSeveralThatPlayTheOneThatBeganLastIsFollowed()
    {
        QCOMPARE(choice({playing(mpv, 4), playing(strawberry, 6), playing(elisa, 5)}), u"strawberry"_s);
    }

    void whereNonePlaysTheOneThatPlayedLastIsFollowed()
    {
        QCOMPARE(choice({mpv, havingPlayed(strawberry, 1), havingPlayed(elisa, 2)}, {}, u"mpv"_s), u"elisa"_s);
    }

    void whereNoneHasPlayedTheFirstOnTheBusIsFollowed()
    {
        QCOMPARE(choice({strawberry, mpv, elisa}, {}, u"elisa"_s), u"strawberry"_s);
    }

    void ofTwoInstancesOfThePinnedOneThePlayingOneIsFollowed()
    {
        const PlayerCandidate second = player(u"mpv.instance9"_s);
        QCOMPARE(choice({mpv, playing(second, 1), playing(elisa, 2)}, u"mpv"_s), u"mpv.instance9"_s);
    }

    void ofTwoInstancesTheVeryOneThatIsPinnedIsFollowed()
    {
        const PlayerCandidate second = called(player(u"mpv.instance9"_s), u"mpv"_s);
        QCOMPARE(choice({mpv, playing(second, 1)}, u"mpv/mpv/mpv"_s), u"mpv"_s);
        QCOMPARE(choice({playing(mpv, 1), second}, u"mpv/mpv.instance9/mpv"_s), u"mpv.instance9"_s);
        QCOMPARE(choice({playing(mpv, 1), second}, u"mpv/mpv.instance7/mpv"_s), u"mpv"_s);
    }

    void aPhonesPlayerIsPinnedByWhatItCallsItself()
    {
        const PlayerCandidate podcast = called(player(u"kdeconnect.mpris_0123456789ab"_s), u"Pixel: Podcast"_s);
        const PlayerCandidate music = called(player(u"kdeconnect.mpris_ba9876543210"_s), u"Pixel: Music"_s);
        QCOMPARE(choice({podcast, playing(music, 1)}, u"kdeconnect//Pixel: Podcast"_s), podcast.name);
        QCOMPARE(choice({podcast, playing(music, 1)}, u"kdeconnect//Pixel: Radio"_s), music.name);
    }

    void whatCannotBeFollowedIsNotOffered()
    {
        QCOMPARE(followable({player(u"playerctld"_s), vlcInstance, vlc, chromium, integration, elisa}),
            (QStringList{u"vlc"_s, u"plasma-browser-integration"_s, u"elisa"_s}));
    }

    void oneThatIsNeverFollowedIsLeftOutUnlessItIsPinned()
    {
        PlayerWishes wishes;
        wishes.neverFollowed = {PlayerPin::fromId(u"mpv"_s), PlayerPin::fromId(u"kdeconnect//Pixel: Podcast"_s)};
        const PlayerCandidate podcast = called(player(u"kdeconnect.mpris_0123456789ab"_s), u"Pixel: Podcast"_s);
        const PlayerCandidate music = called(player(u"kdeconnect.mpris_ba9876543210"_s), u"Pixel: Music"_s);
        QCOMPARE(followable({playing(mpv, 1), podcast, music, elisa}, wishes), (QStringList{music.name, u"elisa"_s}));
        wishes.pinned = PlayerPin::fromId(u"mpv"_s);
        QCOMPARE(followable({playing(mpv, 1), elisa}, wishes), (QStringList{u"mpv"_s, u"elisa"_s}));
    }

    void theOneThatWasCommandedIsFollowedAlsoWhileAnotherPlays()
    {
        QCOMPARE(choice({havingPlayed(mpv, 1), playing(elisa, 2)}, {}, u"mpv"_s, u"mpv"_s), u"mpv"_s);
        QCOMPARE(choice({havingPlayed(mpv, 1), playing(elisa, 2)}, u"elisa"_s, u"mpv"_s, u"mpv"_s), u"elisa"_s);
    }

    void aCommandCountsUntilAnotherBeginsToPlayOrItsPlayerLeaves()
    {
        const LastCommand command{.name = u"mpv"_s, .time = 5};
        QVERIFY(stillCounts(command, {havingPlayed(mpv, 9), playing(elisa, 4)}));
        QVERIFY(!stillCounts(command, {mpv, playing(elisa, 6)}));
        QVERIFY(!stillCounts(command, {mpv, havingPlayed(elisa, 6)}));
        QVERIFY(!stillCounts(command, {playing(elisa, 4)}));
    }

    void theReasonIsTheStrongestThatHolds()
    {
        QCOMPARE(reason({playing(mpv, 9)}, u"mpv"_s, u"mpv"_s, u"mpv"_s), FollowReason::Pinned);
        QCOMPARE(reason({playing(mpv, 9)}, {}, u"mpv"_s, u"mpv"_s), FollowReason::Commanded);
        QCOMPARE(reason({playing(mpv, 9)}, u"elisa"_s), FollowReason::Plays);
        QCOMPARE(reason({playing(mpv, 9)}, {}, u"mpv"_s), FollowReason::Plays);
        QCOMPARE(reason({mpv, havingPlayed(elisa, 1)}), FollowReason::PlayedLast);
        QCOMPARE(reason({mpv, elisa}), FollowReason::FirstOnBus);
    }

    void playerctldOnlyRepeatsOthers()
    {
        const PlayerCandidate proxy = playing(player(u"playerctld"_s), 9);
        QCOMPARE(choice({proxy, mpv}), u"mpv"_s);
        QCOMPARE(choice({proxy, mpv}, u"playerctld"_s, u"playerctld"_s), u"mpv"_s);
        QCOMPARE(choice({proxy}), std::nullopt);
    }

    void playersOfOneProcessAreEachAPlayer()
    {
        const PlayerCandidate one = ofProcess(player(u"one"_s), 5);
        const PlayerCandidate two = playing(ofProcess(player(u"two"_s), 5), 1);
        QCOMPARE(followable({one, two}), (QStringList{u"one"_s, u"two"_s}));
        QCOMPARE(choice({one, two}), u"two"_s);
    }

    void vlcsTwoNamesAreOnePlayerInBothOrders()
    {
        QCOMPARE(choice({vlcInstance, vlc}), u"vlc"_s);
        QCOMPARE(choice({vlc, vlcInstance}), u"vlc"_s);
        QCOMPARE(choice({playing(vlcInstance, 2), playing(vlc, 1)}, {}, u"vlc.instance1234"_s), u"vlc"_s);
    }

    void vlcsSecondInstanceIsAPlayerOfItsOwn()
    {
        const PlayerCandidate second = ofProcess(player(u"vlc.instance1300"_s), 1300);
        QCOMPARE(followable({vlcInstance, vlc, second}), (QStringList{u"vlc"_s, u"vlc.instance1300"_s}));
    }

    void anInstanceWithAnotherNumberIsTheSamePlayerIfItCallsItselfTheSame()
    {
        const PlayerCandidate inSandbox = called(ofProcess(player(u"vlc.instance2"_s), 1234), u"vlc"_s);
        QCOMPARE(followable({inSandbox, vlc}), QStringList{u"vlc"_s});
        const PlayerCandidate other = called(ofProcess(player(u"vlc.instance2"_s), 1234), u"Pixel: Podcast"_s);
        QCOMPARE(followable({other, vlc}), (QStringList{u"vlc.instance2"_s, u"vlc"_s}));
        const PlayerCandidate word = called(ofProcess(player(u"vlc.instance2x"_s), 1234), u"vlc"_s);
        QCOMPARE(followable({word, vlc}), (QStringList{u"vlc.instance2x"_s, u"vlc"_s}));
    }

    void playersOfUnknownProcessesAreNotTakenForOne()
    {
        QCOMPARE(followable({player(u"vlc"_s), player(u"vlc.instance1234"_s)}),
            (QStringList{u"vlc"_s, u"vlc.instance1234"_s}));
    }

    void aPlayingOneIsNoDoubleOfAPausedOne()
    {
        QCOMPARE(followable({playing(vlcInstance, 1), vlc}), (QStringList{u"vlc.instance1234"_s, u"vlc"_s}));
        QCOMPARE(followable({playing(chromium, 1), integration}),
            (QStringList{u"chromium.instance77"_s, u"plasma-browser-integration"_s}));
    }

    void whileOneHasJustChangedTheOtherMayNotHaveNoticed()
    {
        QCOMPARE(followable({playing(vlcInstance, 1), justChanged(vlc)}), QStringList{u"vlc"_s});
        QCOMPARE(followable({justChanged(playing(vlcInstance, 1)), vlc}), QStringList{u"vlc"_s});
    }

    void thePinnedOneIsNoDouble()
    {
        QCOMPARE(followable({vlcInstance, vlc}, pinning(u"vlc/vlc.instance1234/vlc"_s)),
            (QStringList{u"vlc.instance1234"_s, u"vlc"_s}));
        QCOMPARE(followable({vlcInstance, vlc}, pinning(u"vlc"_s)), QStringList{u"vlc"_s});
        QCOMPARE(followable({chromium, playing(integration, 1)}, pinning(u"chromium"_s)),
            (QStringList{u"chromium.instance77"_s, u"plasma-browser-integration"_s}));
        QCOMPARE(choice({chromium, playing(integration, 1)}, u"chromium"_s), u"chromium.instance77"_s);
    }

    void aBrowserIsLeftOutWhereTheIntegrationSpeaksForIt()
    {
        QCOMPARE(choice({playing(chromium, 2), playing(integration, 1)}, {}, u"chromium.instance77"_s),
            u"plasma-browser-integration"_s);
        QCOMPARE(choice({integration, chromium}), u"plasma-browser-integration"_s);
    }

    void theIntegrationHidesNoPlayerThatIsNoBrowser()
    {
        QCOMPARE(followable({ofProcess(player(u"strawberry"_s), 77), integration}),
            (QStringList{u"strawberry"_s, u"plasma-browser-integration"_s}));
    }

    void nobodyElseSpeaksForABrowser()
    {
        const PlayerCandidate liar = speakingFor(ofProcess(player(u"liar"_s), 5), 77);
        QCOMPARE(followable({chromium, liar}), (QStringList{u"chromium.instance77"_s, u"liar"_s}));
    }

    void theChoiceAmongManyIsNotFelt()
    {
        QList<PlayerCandidate> candidates;
        PlayerWishes wishes = pinning(u"mpv"_s);
        for (int i = 0; i < 64; ++i) {
            candidates.append(ofProcess(player(u'a' + QString(200, u'1') + QString::number(i) + u'x'), i + 1));
            wishes.neverFollowed.append(PlayerPin::fromId(u"never%1"_s.arg(i)));
        }
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(followablePlayers(candidates, wishes).size(), 64);
        QVERIFY2(clock.elapsed() < 50, qPrintable(QString::number(clock.elapsed())));
    }

    void anInstanceAloneIsAPlayer() { QCOMPARE(choice({vlcInstance}), u"vlc.instance1234"_s); }

    void aBrowserStaysWhereTheIntegrationSpeaksForAnother()
    {
        QCOMPARE(choice({playing(chromium, 2), speakingFor(integration, 78)}), u"chromium.instance77"_s);
    }

    void aPlayerThatClaimsToSpeakForItselfIsNotLeftOut()
    {
        QCOMPARE(choice({speakingFor(chromium, 77)}), u"chromium.instance77"_s);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::PlayerChoiceTest, QCoreApplication)
#include "PlayerChoiceTest.moc"
