// SPDX-License-Identifier: MIT
#include "above/HyprlandRoad.h"

#include "above/ScriptedCompositor.h"
#include "above/answerTo.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTest>

#include <optional>

using namespace tunedeck;

namespace {
/// Hyprland with one window of the program, its help, and one of another program that has the same title.
class ScriptedHyprland : public ScriptedCompositor {
public:
    ScriptedHyprland()
    {
        answer = [this](const QByteArray &question) { return std::optional(reply(question)); };
    }

    QList<QByteArray> commands;
    QString address = QStringLiteral("0x55d0c0ffee00");
    bool isFloating = true;
    bool isPinned = false;
    bool obeys = true;
    bool pins = true;
    QByteArray commandsAnswer = "ok";

private:
    QByteArray reply(const QByteArray &question)
    {
        if (question == "j/clients") {
            return QJsonDocument(clients()).toJson();
        }
        commands.append(question);
        if (obeys) {
            isFloating = (isFloating || question.startsWith("dispatch setfloating "))
                && !question.startsWith("dispatch settiled ");
            isPinned ^= pins && question.startsWith("dispatch pin ");
        }
        return commandsAnswer;
    }

    [[nodiscard]] QJsonArray clients() const
    {
        const QString title = QStringLiteral("Tunedeck");
        return {client(QStringLiteral("0x1"), 99, title), client(QStringLiteral("0x2"), 42, QStringLiteral("Help")),
            client(address, 42, title)};
    }

    [[nodiscard]] QJsonObject client(const QString &at, int processId, const QString &title) const
    {
        return {{QStringLiteral("address"), at}, {QStringLiteral("pid"), processId}, {QStringLiteral("title"), title},
            {QStringLiteral("floating"), isFloating}, {QStringLiteral("pinned"), isPinned}};
    }
};

/// The road of process 42.
struct Road : HyprlandRoad {
    explicit Road(const ScriptedCompositor &hyprland)
        : HyprlandRoad(hyprland.path(), 42, QStringLiteral("Tunedeck"))
    {
    }
};
} // namespace

class HyprlandRoadTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void aFloatingWindowIsPinnedAndUnpinned()
    {
        ScriptedHyprland hyprland;
        Road road(hyprland);
        QCOMPARE(answerTo(road, true), AboveAnswer::Done);
        QVERIFY(hyprland.isPinned);
        QCOMPARE(answerTo(road, false), AboveAnswer::Done);
        QVERIFY(!hyprland.isPinned);
        QCOMPARE(hyprland.commands,
            (QList<QByteArray>{"dispatch pin address:0x55d0c0ffee00", "dispatch pin address:0x55d0c0ffee00"}));
    }

    void aTiledWindowIsFloatedFirstAndTiledAgain()
    {
        ScriptedHyprland hyprland;
        hyprland.isFloating = false;
        Road road(hyprland);
        QCOMPARE(answerTo(road, true), AboveAnswer::Done);
        QCOMPARE(answerTo(road, false), AboveAnswer::Done);
        QCOMPARE(hyprland.commands,
            (QList<QByteArray>{"dispatch setfloating address:0x55d0c0ffee00", "dispatch pin address:0x55d0c0ffee00",
                "dispatch pin address:0x55d0c0ffee00", "dispatch settiled address:0x55d0c0ffee00"}));
    }

    void aWindowThatOnlyFloatsIsTiledAgainWhenTheWishIsTakenBack()
    {
        ScriptedHyprland hyprland;
        hyprland.isFloating = false;
        hyprland.pins = false;
        Road road(hyprland);
        QCOMPARE(answerTo(road, true), AboveAnswer::Refused);
        QVERIFY(hyprland.isFloating);
        QCOMPARE(answerTo(road, false), AboveAnswer::Done);
        QVERIFY(!hyprland.isFloating);
        QVERIFY(!hyprland.isPinned);
    }

    void aWindowThatTheUserHasPinnedIsNotTurnedOver()
    {
        ScriptedHyprland hyprland;
        hyprland.isPinned = true;
        Road road(hyprland);
        QCOMPARE(answerTo(road, true), AboveAnswer::Done);
        QVERIFY(hyprland.isPinned);
        QCOMPARE(hyprland.commands, QList<QByteArray>());
    }

    void aHyprlandThatSaysItIsDoneButDidNothingIsNotBelieved()
    {
        ScriptedHyprland hyprland;
        hyprland.obeys = false;
        Road road(hyprland);
        QCOMPARE(answerTo(road, true), AboveAnswer::Refused);
    }

    void anErrorIsARefusalThatLeavesNoFurtherCommand()
    {
        ScriptedHyprland hyprland;
        hyprland.isFloating = false;
        hyprland.commandsAnswer = "Invalid dispatcher";
        Road road(hyprland);
        QCOMPARE(answerTo(road, true), AboveAnswer::Refused);
        QCOMPARE(hyprland.commands.size(), 1);
    }

    void anAddressThatWouldBeAnotherCommandIsNoWindows()
    {
        ScriptedHyprland hyprland;
        hyprland.address = QStringLiteral("0x1; exec rm");
        Road road(hyprland);
        QCOMPARE(answerTo(road, true), AboveAnswer::NoWindow);
        QCOMPARE(hyprland.commands, QList<QByteArray>());
    }

    void anAnswerThatIsNotHyprlandsIsARefusal_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("no list") << QByteArray("{}");
        QTest::newRow("no JSON") << QByteArray("unknown request");
        QTest::newRow("deep") << QByteArray(100'000, '[');
    }

    void anAnswerThatIsNotHyprlandsIsARefusal()
    {
        QFETCH(const QByteArray, answer);
        ScriptedCompositor compositor;
        compositor.answer = [&answer](const QByteArray &) { return answer; };
        Road road(compositor);
        QCOMPARE(answerTo(road, true), AboveAnswer::Refused);
    }

    void entriesOfOtherTypesAreNoWindows()
    {
        ScriptedCompositor compositor;
        compositor.answer = [](const QByteArray &) { return QByteArrayLiteral(R"([1, null, {"pid": "42"}, []])"); };
        Road road(compositor);
        QCOMPARE(answerTo(road, true), AboveAnswer::NoWindow);
    }

    void aHyprlandThatHangsIsGivenUp()
    {
        ScriptedCompositor compositor;
        compositor.answer = [](const QByteArray &) { return std::nullopt; };
        Road road(compositor);
        const QSignalSpy answered(&road, &AboveRoad::answered);
        road.ask(true);
        QTRY_COMPARE(compositor.questions.size(), 1);
        road.abandon();
        QTRY_COMPARE(compositor.connectionsClosed, 1);
        QCOMPARE(answered.count(), 0);
    }
};

TUNEDECK_TEST(HyprlandRoadTest, QCoreApplication)
#include "HyprlandRoadTest.moc"
