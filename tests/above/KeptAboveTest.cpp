// SPDX-License-Identifier: MIT
#include "above/KeptAbove.h"

#include "support/elapse.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace tunedeck;

namespace {
/// A compositor that answers when the test says so, or at once.
class ScriptedRoad : public AboveRoad {
public:
    [[nodiscard]] AboveWay way() const override { return AboveWay::KWin; }
    void ask(bool isAbove) override
    {
        asked.append(isAbove);
        if (answersAtOnce) {
            Q_EMIT answered(AboveAnswer::Done);
        }
    }
    void abandon() override { ++abandoned; }
    void answer(AboveAnswer answer) { Q_EMIT answered(answer); }

    QList<bool> asked;
    int abandoned = 0;
    bool answersAtOnce = false;
};

struct Scene {
    KeptAbove keptAbove{false};
    ScriptedRoad *road = new ScriptedRoad;

    Scene() { keptAbove.setRoad(std::unique_ptr<AboveRoad>(road)); }

    [[nodiscard]] QTimer &timer(const char *name) const { return *keptAbove.findChild<QTimer *>(QLatin1String(name)); }

    /// The window is seen and wanted above, and the compositor has been asked.
    void want()
    {
        keptAbove.setSeen(true);
        keptAbove.setWanted(true);
    }
};
} // namespace

class KeptAboveTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void aCompositorIsAskedForNothingAsLongAsNothingIsWanted()
    {
        Scene scene;
        scene.keptAbove.setWanted(false);
        scene.keptAbove.setSeen(true);
        scene.keptAbove.setSeen(false);
        QCOMPARE(scene.road->asked, QList<bool>());
        QVERIFY(!scene.timer("patience").isActive());
    }

    void whatIsWantedIsAskedForWhenTheWindowAppearsAndEachTimeItAppearsAgain()
    {
        Scene scene;
        scene.road->answersAtOnce = true;
        scene.keptAbove.setWanted(true);
        QCOMPARE(scene.road->asked, QList<bool>());
        scene.keptAbove.setSeen(true);
        QCOMPARE(scene.road->asked, QList<bool>{true});
        scene.keptAbove.setSeen(false);
        scene.keptAbove.setSeen(true);
        QCOMPARE(scene.road->asked, (QList<bool>{true, true}));
    }

    void itIsTakenBackEvenOfAMinimisedWindow()
    {
        Scene scene;
        scene.road->answersAtOnce = true;
        scene.want();
        scene.keptAbove.setSeen(false);
        scene.keptAbove.setWanted(false);
        QCOMPARE(scene.road->asked, (QList<bool>{true, false}));
        scene.keptAbove.setWanted(false);
        scene.keptAbove.setSeen(true);
        QCOMPARE(scene.road->asked, (QList<bool>{true, false}));
    }

    void howeverOftenTheWishChangesMeanwhileOneMoreQuestionFollows()
    {
        Scene scene;
        scene.want();
        for (int change = 0; change < 1001; ++change) {
            scene.keptAbove.setWanted(change % 2 == 1);
        }
        QCOMPARE(scene.road->asked, QList<bool>{true});
        scene.road->answer(AboveAnswer::Done);
        QCOMPARE(scene.road->asked, (QList<bool>{true, false}));
        scene.road->answer(AboveAnswer::Done);
        QCOMPARE(scene.road->asked, (QList<bool>{true, false}));
    }

    void aRefusalIsReportedOnceForEachWish()
    {
        Scene scene;
        const QSignalSpy refused(&scene.keptAbove, &KeptAbove::refused);
        scene.want();
        scene.road->answer(AboveAnswer::Refused);
        QCOMPARE(refused.count(), 1);
        scene.keptAbove.setSeen(false);
        scene.keptAbove.setSeen(true);
        scene.road->answer(AboveAnswer::Refused);
        QCOMPARE(refused.count(), 1);
        scene.keptAbove.setWanted(false);
        scene.road->answer(AboveAnswer::Refused);
        QCOMPARE(refused.count(), 1);
        scene.keptAbove.setWanted(true);
        scene.road->answer(AboveAnswer::Refused);
        QCOMPARE(refused.count(), 2);
        scene.keptAbove.setWanted(true);
        scene.road->answer(AboveAnswer::Done);
        QCOMPARE(refused.count(), 2);
    }

    void aRefusalOfTheFormerWishIsNotReportedForTheNextOne()
    {
        Scene scene;
        scene.want();
        scene.road->answer(AboveAnswer::Done);
        const QSignalSpy refused(&scene.keptAbove, &KeptAbove::refused);
        scene.keptAbove.setWanted(false);
        scene.keptAbove.setWanted(true);
        scene.road->answer(AboveAnswer::Refused);
        QCOMPARE(refused.count(), 0);
        scene.road->answer(AboveAnswer::Refused);
        QCOMPARE(refused.count(), 1);
    }

    void theWayIsTheRoadsUntilItRefuses()
    {
        Scene scene;
        QCOMPARE(scene.keptAbove.way(), AboveWay::KWin);
        scene.want();
        const QSignalSpy changed(&scene.keptAbove, &KeptAbove::wayChanged);
        scene.road->answer(AboveAnswer::Done);
        QCOMPARE(scene.keptAbove.way(), AboveWay::KWin);
        scene.keptAbove.setWanted(true);
        scene.road->answer(AboveAnswer::Refused);
        QCOMPARE(scene.keptAbove.way(), AboveWay::Refused);
        QCOMPARE(changed.count(), 3);
        QVERIFY(scene.keptAbove.canToggle());
        scene.keptAbove.setWanted(true);
        scene.road->answer(AboveAnswer::Done);
        QCOMPARE(scene.keptAbove.way(), AboveWay::KWin);
    }

    void aCompositorThatDoesNotAnswerHasRefusedAfterASecond()
    {
        Scene scene;
        scene.want();
        QTimer &patience = scene.timer("patience");
        QCOMPARE(patience.interval(), 1000);
        QVERIFY(elapse(patience));
        QCOMPARE(scene.road->abandoned, 1);
        QCOMPARE(scene.keptAbove.way(), AboveWay::Refused);
        QVERIFY(!patience.isActive());
    }

    void whatWasRefusedInTimeIsStillTakenBack()
    {
        Scene scene;
        scene.want();
        QVERIFY(elapse(scene.timer("patience")));
        scene.keptAbove.setWanted(false);
        QCOMPARE(scene.road->asked, (QList<bool>{true, false}));
        scene.road->answer(AboveAnswer::Done);
        QCOMPARE(scene.keptAbove.way(), AboveWay::KWin);
    }

    void aWindowThatTheCompositorDoesNotShowYetIsAskedForAgainWithinTheSecond()
    {
        Scene scene;
        scene.want();
        scene.road->answer(AboveAnswer::NoWindow);
        QCOMPARE(scene.timer("retry").interval(), 150);
        QVERIFY(elapse(scene.timer("retry")));
        QCOMPARE(scene.road->asked, (QList<bool>{true, true}));
        scene.road->answer(AboveAnswer::NoWindow);
        QVERIFY(elapse(scene.timer("patience")));
        QVERIFY(!scene.timer("retry").isActive());
        QCOMPARE(scene.keptAbove.way(), AboveWay::Refused);
    }

    void aMissedSecondIsFollowedByOneMoreQuestionSomeSecondsLater()
    {
        Scene scene;
        scene.want();
        QVERIFY(elapse(scene.timer("patience")));
        QVERIFY(scene.keptAbove.findChild<QTimer *>(QStringLiteral("secondTry")));
        QVERIFY(elapse(scene.timer("secondTry")));
        QCOMPARE(scene.road->asked, (QList<bool>{true, true}));
        scene.road->answer(AboveAnswer::Done);
        QCOMPARE(scene.keptAbove.way(), AboveWay::KWin);
    }

    void aSecondMissedSecondIsTheLast()
    {
        Scene scene;
        scene.want();
        QVERIFY(elapse(scene.timer("patience")));
        QVERIFY(elapse(scene.timer("secondTry")));
        QVERIFY(elapse(scene.timer("patience")));
        QVERIFY(!scene.timer("secondTry").isActive());
        QCOMPARE(scene.keptAbove.way(), AboveWay::Refused);
        scene.keptAbove.setSeen(true);
        QVERIFY(elapse(scene.timer("patience")));
        QVERIFY(scene.timer("secondTry").isActive());
    }

    void whatCouldNotBeTakenBackInASecondIsAskedForOnceMoreToo()
    {
        Scene scene;
        scene.road->answersAtOnce = true;
        scene.want();
        scene.road->answersAtOnce = false;
        scene.keptAbove.setWanted(false);
        QVERIFY(elapse(scene.timer("patience")));
        QVERIFY(elapse(scene.timer("secondTry")));
        QCOMPARE(scene.road->asked, (QList<bool>{true, false, false}));
    }

    void aRefusalIsNotFollowedByAnotherQuestion()
    {
        Scene scene;
        scene.want();
        scene.road->answer(AboveAnswer::Refused);
        QVERIFY(!scene.timer("secondTry").isActive());
    }

    void aWindowThatHasGoneMeanwhileIsNotAskedForOnceMore()
    {
        Scene scene;
        scene.want();
        QVERIFY(elapse(scene.timer("patience")));
        scene.keptAbove.setSeen(false);
        QVERIFY(elapse(scene.timer("secondTry")));
        QCOMPARE(scene.road->asked, QList<bool>{true});
    }

    void whoAsksWhatBecameOfTheWishIsAnsweredOnce_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<QList<bool>>("isRefused");
        QTest::newRow("done") << int(AboveAnswer::Done) << QList<bool>{false};
        QTest::newRow("refused") << int(AboveAnswer::Refused) << QList<bool>{true};
    }

    void whoAsksWhatBecameOfTheWishIsAnsweredOnce()
    {
        QFETCH(const int, answer);
        Scene scene;
        QList<bool> told;
        scene.want();
        scene.keptAbove.whenAnswered([&told](bool isRefused) { told.append(isRefused); });
        QCOMPARE(told, QList<bool>());
        scene.road->answer(AboveAnswer(answer));
        QTEST(told, "isRefused");
        scene.keptAbove.setSeen(true);
        scene.road->answer(AboveAnswer(answer));
        QTEST(told, "isRefused");
        scene.keptAbove.whenAnswered([&told](bool isRefused) { told.append(isRefused); });
        QCOMPARE(told.size(), 2);
    }

    void eachAnswerIsToldToThoseWhoAwaitIt()
    {
        Scene scene;
        QList<bool> told;
        scene.want();
        scene.keptAbove.whenAnswered([&told](bool isRefused) { told.append(isRefused); });
        scene.keptAbove.setWanted(false);
        scene.keptAbove.whenAnswered([&told](bool isRefused) { told.append(isRefused); });
        scene.road->answer(AboveAnswer::Done);
        QCOMPARE(told, QList<bool>{false});
        scene.road->answer(AboveAnswer::Refused);
        QCOMPARE(told, (QList<bool>{false, true}));
    }

    void noAnswerIsARefusalForEveryoneAfterASecond()
    {
        Scene scene;
        QList<bool> told;
        scene.want();
        scene.keptAbove.whenAnswered([&told](bool isRefused) { told.append(isRefused); });
        scene.keptAbove.setWanted(false);
        scene.keptAbove.whenAnswered([&told](bool isRefused) { told.append(isRefused); });
        QVERIFY(elapse(scene.timer("patience")));
        QCOMPARE(told, (QList<bool>{true, true}));
    }

    void aWishForLaterIsNotRefused()
    {
        Scene scene;
        QList<bool> told;
        scene.want();
        scene.road->answer(AboveAnswer::Refused);
        scene.keptAbove.setSeen(false);
        scene.keptAbove.setWanted(true);
        scene.keptAbove.whenAnswered([&told](bool isRefused) { told.append(isRefused); });
        QCOMPARE(told, QList<bool>{false});
    }

    void noWindowHasNothingToTakeBack()
    {
        Scene scene;
        scene.road->answersAtOnce = true;
        scene.want();
        scene.road->answersAtOnce = false;
        scene.keptAbove.setWanted(false);
        scene.road->answer(AboveAnswer::NoWindow);
        QVERIFY(!scene.timer("patience").isActive());
        QVERIFY(!scene.timer("retry").isActive());
        QCOMPARE(scene.keptAbove.way(), AboveWay::KWin);
    }

    void withoutARoadARestartIsOfferedUntilTheWishIsThere()
    {
        KeptAbove keptAbove(false);
        QCOMPARE(keptAbove.way(), AboveWay::None);
        QVERIFY(!keptAbove.canToggle());
        keptAbove.setCanRestart(true);
        QCOMPARE(keptAbove.way(), AboveWay::Restart);
        QVERIFY(keptAbove.canToggle());
        keptAbove.setSeen(true);
        keptAbove.setWanted(true);
        QCOMPARE(keptAbove.way(), AboveWay::None);
        QVERIFY(keptAbove.canToggle());
    }

    void inASandboxItCanOnlyBeSwitchedOff()
    {
        KeptAbove keptAbove(false);
        keptAbove.setIsInSandbox(true);
        QCOMPARE(keptAbove.way(), AboveWay::Sandbox);
        QVERIFY(!keptAbove.canToggle());
        keptAbove.setWanted(true);
        QVERIFY(keptAbove.canToggle());
    }

    void aRoadThatRefusesLeavesTheRestart()
    {
        Scene scene;
        scene.keptAbove.setCanRestart(true);
        scene.want();
        scene.road->answer(AboveAnswer::Refused);
        QCOMPARE(scene.keptAbove.way(), AboveWay::Refused);
        scene.keptAbove.setWanted(false);
        scene.road->answer(AboveAnswer::Refused);
        QCOMPARE(scene.keptAbove.way(), AboveWay::Restart);
    }

    void whereTheWindowItselfAsksNothingElseIsOffered()
    {
        KeptAbove keptAbove(true);
        keptAbove.setCanRestart(true);
        keptAbove.setSeen(true);
        keptAbove.setWanted(true);
        QCOMPARE(keptAbove.way(), AboveWay::Window);
        keptAbove.setWanted(false);
        QCOMPARE(keptAbove.way(), AboveWay::Window);
        QVERIFY(keptAbove.canToggle());
    }
};

TUNEDECK_TEST(KeptAboveTest, QCoreApplication)
#include "KeptAboveTest.moc"
