// SPDX-License-Identifier: MIT
#include "music/mpris/choice/PlayerChoice.h"
#include "support/registerTest.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

PlayerCandidate player(const QString &owner, const QString &name)
{
    return {.owner = owner, .name = name, .processId = {}, .browserProcessId = {}};
}

PlayerCandidate ofProcess(PlayerCandidate candidate, qint64 processId)
{
    candidate.processId = processId;
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

PlayerCandidate speakingFor(PlayerCandidate candidate, qint64 browserProcessId)
{
    candidate.browserProcessId = browserProcessId;
    return candidate;
}

const PlayerCandidate mpv = player(u":1.1"_s, u"mpv"_s);
const PlayerCandidate strawberry = player(u":1.2"_s, u"strawberry"_s);
const PlayerCandidate elisa = player(u":1.3"_s, u"elisa"_s);

const PlayerCandidate vlc = ofProcess(player(u":1.11"_s, u"vlc"_s), 1234);
const PlayerCandidate vlcInstance = ofProcess(player(u":1.10"_s, u"vlc.instance1234"_s), 1234);

const PlayerCandidate chromium = ofProcess(player(u":1.20"_s, u"chromium.instance77"_s), 77);
const PlayerCandidate integration = speakingFor(ofProcess(player(u":1.21"_s, u"plasma-browser-integration"_s), 99), 77);

std::optional<QString> choice(
    const QList<PlayerCandidate> &candidates, const QString &pinned = {}, const QString &current = {})
{
    const std::optional<PlayerDecision> decision = choosePlayer(candidates, pinned, current);
    return decision ? std::optional(decision->owner) : std::nullopt;
}

FollowReason reason(const QList<PlayerCandidate> &candidates, const QString &pinned = {}, const QString &current = {})
{
    return choosePlayer(candidates, pinned, current)->reason;
}

} // namespace

class PlayerChoiceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void onAnEmptyBusThereIsNoneToFollow() { QCOMPARE(choice({}, u"mpv"_s, u":1.1"_s), std::nullopt); }

    void thePinnedOneIsFollowedWhateverElsePlays()
    {
        QCOMPARE(choice({playing(mpv, 9), strawberry, playing(elisa, 8)}, u"strawberry"_s, u":1.1"_s), u":1.2"_s);
    }

    void whereThePinnedOneIsNotOnTheBusTheOthersAreChosenFrom()
    {
        QCOMPARE(choice({mpv, playing(elisa, 1)}, u"strawberry"_s), u":1.3"_s);
    }

    void ofTwoInstancesOfThePinnedOneThePlayingOneIsFollowed()
    {
        const PlayerCandidate second = player(u":1.9"_s, u"mpv"_s);
        QCOMPARE(choice({mpv, playing(second, 1), playing(elisa, 2)}, u"mpv"_s), u":1.9"_s);
    }

    void anInstanceOfThePinnedOneWhoseNameChangesAtEveryStartIsFollowed()
    {
        QCOMPARE(choice({chromium, playing(elisa, 1)}, u"chromium"_s), u":1.20"_s);
        QCOMPARE(choice({chromium, playing(elisa, 1)}, u"chrom"_s), u":1.3"_s);
    }

    void whatCannotBeFollowedIsNotOffered()
    {
        const QList<PlayerCandidate> followable =
            followablePlayers({player(u":1.30"_s, u"playerctld"_s), vlcInstance, vlc, chromium, integration, elisa});
        QStringList names;
        for (const PlayerCandidate &candidate : followable) {
            names.append(candidate.name);
        }
        QCOMPARE(names, (QStringList{u"vlc"_s, u"plasma-browser-integration"_s, u"elisa"_s}));
    }

    void thePinIsAWholeName()
    {
        QCOMPARE(choice({player(u":1.8"_s, u"mpvx"_s), playing(elisa, 1)}, u"mpv"_s), u":1.3"_s);
    }

    void noPinMeansNoPlayerWithoutAName()
    {
        QCOMPARE(choice({player(u":1.8"_s, QString()), playing(elisa, 1)}, QString()), u":1.3"_s);
    }

    void aPlayingOneIsFollowedRatherThanOneThatPlayedLater()
    {
        QCOMPARE(choice({havingPlayed(mpv, 9), playing(elisa, 3)}), u":1.3"_s);
    }

    void aPlayingOneIsNeverLeftForAPausedOne()
    {
        QCOMPARE(choice({havingPlayed(mpv, 9), playing(elisa, 3)}, {}, u":1.3"_s), u":1.3"_s);
    }

    void aPlayingOneIsNotLeftForAnotherThatBeginsToPlay()
    {
        QCOMPARE(choice({playing(mpv, 9), playing(elisa, 3)}, {}, u":1.3"_s), u":1.3"_s);
    }

    void aPausedOneIsLeftForOneThatPlays()
    {
        QCOMPARE(choice({havingPlayed(mpv, 3), playing(elisa, 2)}, {}, u":1.1"_s), u":1.3"_s);
    }

    void ofSeveralThatPlayTheOneThatBeganLastIsFollowed()
    {
        QCOMPARE(choice({playing(mpv, 4), playing(strawberry, 6), playing(elisa, 5)}), u":1.2"_s);
    }

    void whereNonePlaysTheOneThatPlayedLastIsFollowed()
    {
        QCOMPARE(choice({mpv, havingPlayed(strawberry, 1), havingPlayed(elisa, 2)}, {}, u":1.1"_s), u":1.3"_s);
    }

    void theReasonIsTheStrongestThatHolds()
    {
        QCOMPARE(reason({playing(mpv, 9)}, u"mpv"_s, u":1.1"_s), FollowReason::Pinned);
        QCOMPARE(reason({playing(mpv, 9)}, u"elisa"_s), FollowReason::Plays);
        QCOMPARE(reason({playing(mpv, 9)}, {}, u":1.1"_s), FollowReason::Plays);
        QCOMPARE(reason({mpv, havingPlayed(elisa, 1)}), FollowReason::PlayedLast);
        QCOMPARE(reason({mpv, elisa}), FollowReason::FirstOnBus);
    }

    void whereNoneHasPlayedTheFirstOnTheBusIsFollowed()
    {
        QCOMPARE(choice({strawberry, mpv, elisa}, {}, u":1.3"_s), u":1.2"_s);
    }

    void playerctldOnlyRepeatsOthers()
    {
        const PlayerCandidate proxy = playing(player(u":1.4"_s, u"playerctld"_s), 9);
        QCOMPARE(choice({proxy, mpv}), u":1.1"_s);
        QCOMPARE(choice({proxy, mpv}, u"playerctld"_s, u":1.4"_s), u":1.1"_s);
        QCOMPARE(choice({proxy}), std::nullopt);
    }

    void vlcsTwoNamesAreOnePlayerInBothOrders()
    {
        QCOMPARE(choice({vlcInstance, vlc}), u":1.11"_s);
        QCOMPARE(choice({vlc, vlcInstance}), u":1.11"_s);
        QCOMPARE(choice({playing(vlcInstance, 2), playing(vlc, 1)}, {}, u":1.10"_s), u":1.11"_s);
    }

    void vlcsSecondInstanceIsAPlayerOfItsOwn()
    {
        const PlayerCandidate second = playing(ofProcess(player(u":1.12"_s, u"vlc.instance1300"_s), 1300), 1);
        QCOMPARE(choice({vlcInstance, vlc, second}), u":1.12"_s);
    }

    void anInstanceAloneIsAPlayer() { QCOMPARE(choice({vlcInstance}), u":1.10"_s); }

    void ofTwoOtherNamesOfOneProcessTheFirstIsFollowed()
    {
        const PlayerCandidate one = ofProcess(player(u":1.30"_s, u"one"_s), 5);
        const PlayerCandidate two = playing(ofProcess(player(u":1.31"_s, u"two"_s), 5), 1);
        QCOMPARE(choice({one, two}), u":1.30"_s);
        QCOMPARE(choice({two, one}), u":1.31"_s);
    }

    void ofThreeNamesOfOneProcessTheOneWithoutAnInstanceIsFollowed()
    {
        const PlayerCandidate third = ofProcess(player(u":1.13"_s, u"vlc.instance1235"_s), 1234);
        QCOMPARE(choice({vlcInstance, third, vlc}), u":1.11"_s);
        QCOMPARE(choice({vlc, third, vlcInstance}), u":1.11"_s);
    }

    void playersOfUnknownProcessesAreNotTakenForOne()
    {
        const PlayerCandidate instance = playing(player(u":1.10"_s, u"vlc.instance1234"_s), 1);
        QCOMPARE(choice({player(u":1.11"_s, u"vlc"_s), instance}), u":1.10"_s);
    }

    void aBrowserIsLeftOutWhereTheIntegrationSpeaksForIt()
    {
        QCOMPARE(choice({playing(chromium, 2), playing(integration, 1)}, {}, u":1.20"_s), u":1.21"_s);
        QCOMPARE(choice({integration, chromium}), u":1.21"_s);
    }

    void aBrowserStaysWhereTheIntegrationSpeaksForAnother()
    {
        QCOMPARE(choice({playing(chromium, 2), speakingFor(integration, 78)}), u":1.20"_s);
    }

    void aPlayerThatClaimsToSpeakForItselfIsNotLeftOut() { QCOMPARE(choice({speakingFor(chromium, 77)}), u":1.20"_s); }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::PlayerChoiceTest, QCoreApplication)
#include "PlayerChoiceTest.moc"
