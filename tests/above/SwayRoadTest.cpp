// SPDX-License-Identifier: MIT
#include "above/SwayRoad.h"

#include "above/ScriptedCompositor.h"
#include "above/answerTo.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTest>

#include <array>
#include <optional>

using namespace tunedeck;

namespace {
QByteArray framed(quint32 kind, const QByteArray &text)
{
    const std::array head{quint32(text.size()), kind};
    return "i3-ipc" + QByteArray(reinterpret_cast<const char *>(head.data()), sizeof(head)) + text;
}

/// Sway with one window of the program, the preferences, and one of another program that has the same title.
class ScriptedSway : public ScriptedCompositor {
public:
    ScriptedSway()
    {
        closesAfterAnswer = false;
        answer = [this](const QByteArray &question) { return std::optional(reply(question)); };
    }

    QStringList commands;
    bool hasWindow = true;
    bool isFloating = false;
    bool isSticky = false;
    bool obeys = true;
    bool sticks = true;
    QByteArray commandsAnswer = R"([{"success": true}, {"success": true}])";

private:
    QByteArray reply(const QByteArray &question)
    {
        if (question == framed(4, {})) {
            return framed(4, QJsonDocument(tree()).toJson());
        }
        commands.append(QString::fromUtf8(question.mid(14)));
        if (obeys) {
            isFloating = (isFloating || commands.constLast().contains(QStringLiteral("floating enable")))
                && !commands.constLast().contains(QStringLiteral("floating disable"));
            isSticky = sticks && commands.constLast().contains(QStringLiteral("sticky enable"));
        }
        return framed(0, commandsAnswer);
    }

    [[nodiscard]] QJsonObject tree() const
    {
        const QString title = QStringLiteral("Tunedeck");
        QJsonArray tiled{window(7, 99, title, false, false)};
        QJsonArray floating{window(8, 42, QStringLiteral("Help"), true, false)};
        if (hasWindow) {
            (isFloating ? floating : tiled).append(window(12, 42, title, isFloating, isSticky));
        }
        const QJsonObject workspace{{QStringLiteral("nodes"), tiled}, {QStringLiteral("floating_nodes"), floating}};
        return {{QStringLiteral("nodes"), QJsonArray{workspace}}};
    }

    static QJsonObject window(int number, int processId, const QString &title, bool isFloating, bool isSticky)
    {
        return {{QStringLiteral("id"), number}, {QStringLiteral("pid"), processId}, {QStringLiteral("name"), title},
            {QStringLiteral("type"), isFloating ? QStringLiteral("floating_con") : QStringLiteral("con")},
            {QStringLiteral("sticky"), isSticky}};
    }
};

/// The road of process 42.
struct Road : SwayRoad {
    explicit Road(const ScriptedCompositor &sway)
        : SwayRoad(sway.path(), 42, QStringLiteral("Tunedeck"))
    {
    }
};
} // namespace

class SwayRoadTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void theProgramsMainWindowFloatsOnEveryWorkspaceAndIsTiledAgain()
    {
        ScriptedSway sway;
        Road road(sway);
        QCOMPARE(answerTo(road, true), AboveAnswer::Done);
        QCOMPARE(answerTo(road, false), AboveAnswer::Done);
        QCOMPARE(sway.commands,
            (QStringList{QStringLiteral("[con_id=12] floating enable, sticky enable"),
                QStringLiteral("[con_id=12] sticky disable, floating disable")}));
    }

    void aWindowThatFloatedBeforeGoesOnFloating()
    {
        ScriptedSway sway;
        sway.isFloating = true;
        Road road(sway);
        QCOMPARE(answerTo(road, true), AboveAnswer::Done);
        QCOMPARE(answerTo(road, false), AboveAnswer::Done);
        QCOMPARE(sway.commands.constLast(), QStringLiteral("[con_id=12] sticky disable"));
        QVERIFY(sway.isFloating);
    }

    void aWindowThatTheUserHasFloatedSinceGoesOnFloating()
    {
        ScriptedSway sway;
        Road road(sway);
        QCOMPARE(answerTo(road, true), AboveAnswer::Done);
        QCOMPARE(answerTo(road, false), AboveAnswer::Done);
        sway.isFloating = true;
        QCOMPARE(answerTo(road, true), AboveAnswer::Done);
        QCOMPARE(answerTo(road, false), AboveAnswer::Done);
        QCOMPARE(sway.commands.constLast(), QStringLiteral("[con_id=12] sticky disable"));
        QVERIFY(sway.isFloating);
    }

    void aWindowThatOnlyFloatsIsTiledAgainWhenTheWishIsTakenBack()
    {
        ScriptedSway sway;
        sway.sticks = false;
        Road road(sway);
        QCOMPARE(answerTo(road, true), AboveAnswer::Refused);
        QVERIFY(sway.isFloating);
        QCOMPARE(answerTo(road, false), AboveAnswer::Done);
        QVERIFY(!sway.isFloating);
    }

    void aWindowThatIsAsWantedIsLeftAlone()
    {
        ScriptedSway sway;
        sway.isFloating = sway.isSticky = true;
        Road road(sway);
        QCOMPARE(answerTo(road, true), AboveAnswer::Done);
        QCOMPARE(sway.commands, QStringList());
    }

    void aWindowThatIsNotThereYetIsReported()
    {
        ScriptedSway sway;
        sway.hasWindow = false;
        Road road(sway);
        QCOMPARE(answerTo(road, true), AboveAnswer::NoWindow);
    }

    void aSwayThatSaysItSucceededButDidNotIsNotBelieved()
    {
        ScriptedSway sway;
        sway.obeys = false;
        Road road(sway);
        QCOMPARE(answerTo(road, true), AboveAnswer::Refused);
    }

    void aPartThatFailsIsARefusal()
    {
        ScriptedSway sway;
        sway.commandsAnswer = R"([{"success": true}, {"success": false}])";
        Road road(sway);
        QCOMPARE(answerTo(road, true), AboveAnswer::Refused);
    }

    void anAnswerThatIsNotSwaysIsARefusal_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<bool>("isClosed");
        QTest::addColumn<int>("expected");
        const int refused = int(AboveAnswer::Refused);
        QTest::newRow("another protocol") << QByteArray("HTTP/1.1 400 Bad Request") << false << refused;
        QTest::newRow("closed") << QByteArray() << true << refused;
        QTest::newRow("half a head") << QByteArray("i3-ip") << true << refused;
        QTest::newRow("half a text") << framed(4, "{}").chopped(1) << true << refused;
        QTest::newRow("four gigabytes") << QByteArray("i3-ipc\xff\xff\xff\xff\4\0\0\0", 14) << false << refused;
        QTest::newRow("no tree") << framed(4, "[[[[") << false << int(AboveAnswer::NoWindow);
        QTest::newRow("deep") << framed(4, QByteArray(100'000, '[')) << false << int(AboveAnswer::NoWindow);
        QTest::newRow("wrong types") << framed(4, R"({"nodes": {"pid": "42"}, "floating_nodes": [1, null, "x"]})")
                                     << false << int(AboveAnswer::NoWindow);
    }

    void anAnswerThatIsNotSwaysIsARefusal()
    {
        QFETCH(const QByteArray, answer);
        QFETCH(const bool, isClosed);
        ScriptedCompositor compositor;
        compositor.closesAfterAnswer = isClosed;
        compositor.answer = [&answer](const QByteArray &) { return answer; };
        Road road(compositor);
        QTEST(int(answerTo(road, true)), "expected");
    }

    void aSwayThatHangsIsGivenUp()
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

    void aSwayThatIsGoneRefusesAtOnce()
    {
        SwayRoad road(QStringLiteral("/nowhere"), 42, QStringLiteral("Tunedeck"));
        const QSignalSpy answered(&road, &AboveRoad::answered);
        road.ask(true);
        QCOMPARE(answered.count(), 1);
    }
};

TUNEDECK_TEST(SwayRoadTest, QCoreApplication)
#include "SwayRoadTest.moc"
