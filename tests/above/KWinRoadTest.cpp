// SPDX-License-Identifier: MIT
#include "above/KWinRoad.h"

#include "support/PrivateBus.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace tunedeck;

namespace {
/// KWin as far as scripts go. It runs none, but calls back as the script would.
class ScriptedKWin : public QDBusVirtualObject {
public:
    explicit ScriptedKWin(const QDBusConnection &bus)
        : m_bus(bus)
    {
        m_bus.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
        m_bus.registerService(QStringLiteral("org.kde.KWin"));
    }

    ~ScriptedKWin() override
    {
        m_bus.unregisterService(QStringLiteral("org.kde.KWin"));
        m_bus.unregisterObject(QStringLiteral("/"), QDBusConnection::UnregisterTree);
    }

    [[nodiscard]] QString introspect(const QString & /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        calls.append(message.path() + u' ' + message.member());
        if (isSilent) {
            message.setDelayedReply(true);
        } else if (message.member() == QStringLiteral("loadScript")) {
            load(message, connection);
        } else if (message.member() == QStringLiteral("unloadScript")) {
            unloaded = message.arguments().value(0).toString();
        } else if (message.path() == scriptPath) {
            connection.send(message.createReply());
            runScript(connection);
        } else {
            connection.send(message.createErrorReply(QDBusError::UnknownObject, QStringLiteral("no such object")));
        }
        return true;
    }

    /// Calls back as the script would.
    void report(const QDBusConnection &connection, const QString &token)
    {
        QDBusMessage call = QDBusMessage::createMethodCall(argument(QStringLiteral("callDBus\\(\"([^\"]+)\"")),
            QStringLiteral("/org/tunedeck/Tunedeck/KeepAbove"), QStringLiteral("org.tunedeck.KeepAbove"),
            QStringLiteral("Report"));
        connection.send(call << token << result);
    }

    [[nodiscard]] QString token() const { return argument(QStringLiteral("\"Report\", \"([^\"]+)\"")); }

    QVariant number = 3;
    QString scriptPath = QStringLiteral("/Scripting/Script3");
    QString result = QStringLiteral("done");
    bool isSilent = false;
    bool hasScripting = true;
    bool runsScripts = true;
    QStringList calls;
    QString file;
    QString text;
    QString name;
    QString unloaded;

private:
    void load(const QDBusMessage &message, const QDBusConnection &connection)
    {
        if (!hasScripting) {
            connection.send(message.createErrorReply(QDBusError::UnknownObject, QStringLiteral("no such object")));
            return;
        }
        file = message.arguments().value(0).toString();
        name = message.arguments().value(1).toString();
        QFile script(file);
        text = script.open(QIODevice::ReadOnly) ? QString::fromUtf8(script.readAll()) : QString();
        connection.send(message.createReply(number));
    }

    void runScript(const QDBusConnection &connection)
    {
        if (runsScripts) {
            report(connection, token());
        }
    }

    [[nodiscard]] QString argument(const QString &pattern) const
    {
        return QRegularExpression(pattern).match(text).captured(1);
    }

    QDBusConnection m_bus;
};

/// A connection's name, which Qt keeps for ever.
QString newName()
{
    static int number = 0;
    return QStringLiteral("peer %1").arg(++number);
}

struct Scene {
    QTemporaryDir folder;
    PrivateBus bus;
    QDBusConnection ours = bus.connect(newName());
    QDBusConnection theirs = bus.connect(newName());
    ScriptedKWin kwin{theirs};
    KWinRoad road{ours, QStringLiteral("Tunedeck")};
    QList<AboveAnswer> answers;

    Scene()
    {
        qputenv("XDG_RUNTIME_DIR", folder.path().toUtf8());
        QObject::connect(&road, &AboveRoad::answered, &road, [this](AboveAnswer answer) { answers.append(answer); });
    }

    [[nodiscard]] bool leavesNothing() const
    {
        return kwin.unloaded == kwin.name && !kwin.name.isEmpty() && QDir(folder.path()).isEmpty()
            && !ours.objectRegisteredAt(QStringLiteral("/org/tunedeck/Tunedeck/KeepAbove"));
    }
};
} // namespace

class KWinRoadTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void aScriptRunsOnceAndLeavesNothingBehind_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("isAbove");
        QTest::newRow("KWin 6") << QStringLiteral("/Scripting/Script3") << true;
        QTest::newRow("KWin 6, taken back") << QStringLiteral("/Scripting/Script3") << false;
        QTest::newRow("KWin 5") << QStringLiteral("/3") << true;
    }

    void aScriptRunsOnceAndLeavesNothingBehind()
    {
        QFETCH(const QString, path);
        QFETCH(const bool, isAbove);
        Scene scene;
        scene.kwin.scriptPath = path;
        scene.road.ask(isAbove);
        QTRY_COMPARE(scene.answers, QList<AboveAnswer>{AboveAnswer::Done});
        QVERIFY(scene.kwin.text.contains(QStringLiteral("\"org.tunedeck.Tunedeck\"")));
        QVERIFY(scene.kwin.text.contains(QStringLiteral("\"Tunedeck\"")));
        QVERIFY(scene.kwin.text.contains(
            isAbove ? QStringLiteral("keepAbove = true;") : QStringLiteral("keepAbove = false;")));
        QTRY_VERIFY(scene.leavesNothing());
    }

    void theScriptSaysWhatCameOfIt_data()
    {
        QTest::addColumn<QString>("result");
        QTest::addColumn<int>("expected");
        QTest::newRow("no window") << QStringLiteral("none") << int(AboveAnswer::NoWindow);
        QTest::newRow("KWin's rules forbid it") << QStringLiteral("refused") << int(AboveAnswer::Refused);
        QTest::newRow("nonsense") << QStringLiteral("?") << int(AboveAnswer::Refused);
    }

    void theScriptSaysWhatCameOfIt()
    {
        QFETCH(const QString, result);
        Scene scene;
        scene.kwin.result = result;
        scene.road.ask(true);
        QTRY_COMPARE(scene.answers.size(), 1);
        QTEST(int(scene.answers.constFirst()), "expected");
    }

    void aKWinThatLoadsNoScriptRefuses_data()
    {
        QTest::addColumn<bool>("hasScripting");
        QTest::addColumn<QVariant>("number");
        QTest::newRow("no scripting") << false << QVariant(3);
        QTest::newRow("loaded already") << true << QVariant(-1);
        QTest::newRow("another type") << true << QVariant(QStringLiteral("3"));
    }

    void aKWinThatLoadsNoScriptRefuses()
    {
        QFETCH(const bool, hasScripting);
        QFETCH(const QVariant, number);
        Scene scene;
        scene.kwin.hasScripting = hasScripting;
        scene.kwin.number = number;
        scene.road.ask(true);
        QTRY_COMPARE(scene.answers, QList<AboveAnswer>{AboveAnswer::Refused});
        QVERIFY(QDir(scene.folder.path()).isEmpty());
    }

    void aKWinThatRunsNoScriptRefuses()
    {
        Scene scene;
        scene.kwin.scriptPath = QStringLiteral("/nowhere");
        scene.road.ask(true);
        QTRY_COMPARE(scene.answers, QList<AboveAnswer>{AboveAnswer::Refused});
        QTRY_VERIFY(scene.leavesNothing());
    }

    void whereThereIsNoKWinItRefuses()
    {
        const QTemporaryDir folder;
        const PrivateBus bus;
        const QDBusConnection ours = bus.connect(newName());
        qputenv("XDG_RUNTIME_DIR", folder.path().toUtf8());
        KWinRoad road(ours, QStringLiteral("Tunedeck"));
        QList<AboveAnswer> answers;
        connect(&road, &AboveRoad::answered, &road, [&answers](AboveAnswer answer) { answers.append(answer); });
        road.ask(true);
        QTRY_COMPARE(answers, QList<AboveAnswer>{AboveAnswer::Refused});
    }

    void withoutABusItRefusesAtOnce()
    {
        const QDBusConnection none(QStringLiteral("no bus"));
        KWinRoad road(none, QStringLiteral("Tunedeck"));
        const QSignalSpy answered(&road, &AboveRoad::answered);
        road.ask(true);
        QCOMPARE(answered.count(), 1);
    }

    void withoutAFolderForTheScriptItRefusesAtOnce()
    {
        Scene scene;
        qputenv("XDG_RUNTIME_DIR", "/nowhere");
        scene.road.ask(true);
        QCOMPARE(scene.answers, QList<AboveAnswer>{AboveAnswer::Refused});
    }

    void aScriptThatNeverRunsIsNoProofAndIsGivenUp()
    {
        Scene scene;
        scene.kwin.runsScripts = false;
        scene.road.ask(true);
        QTRY_VERIFY(scene.kwin.calls.contains(QStringLiteral("/Scripting/Script3 run")));
        QCOMPARE(scene.answers, QList<AboveAnswer>());
        scene.road.abandon();
        QTRY_VERIFY(scene.leavesNothing());
        QCOMPARE(scene.answers, QList<AboveAnswer>());
    }

    void aKWinThatHangsIsToldToForgetTheScript()
    {
        Scene scene;
        scene.kwin.isSilent = true;
        scene.road.ask(true);
        QTRY_COMPARE(scene.kwin.calls.size(), 1);
        scene.road.abandon();
        QTRY_COMPARE(scene.kwin.calls.constLast(), QStringLiteral("/Scripting unloadScript"));
        QVERIFY(QDir(scene.folder.path()).isEmpty());
    }

    void theKWinThatLoadedTheScriptForgetsItAlthoughAnotherHasTakenItsName()
    {
        Scene scene;
        scene.kwin.runsScripts = false;
        scene.road.ask(true);
        QTRY_VERIFY(scene.kwin.calls.contains(QStringLiteral("/Scripting/Script3 run")));
        scene.theirs.unregisterService(QStringLiteral("org.kde.KWin"));
        const ScriptedKWin successor(scene.bus.connect(newName()));
        scene.road.abandon();
        QTRY_VERIFY(scene.leavesNothing());
        QCOMPARE(successor.calls, QStringList());
    }

    void onlyKWinsOwnReportOfThisScriptCounts()
    {
        Scene scene;
        scene.kwin.runsScripts = false;
        scene.road.ask(true);
        QTRY_VERIFY(scene.kwin.calls.contains(QStringLiteral("/Scripting/Script3 run")));
        scene.kwin.report(scene.bus.connect(newName()), scene.kwin.token());
        scene.kwin.report(scene.theirs, QStringLiteral("another script's"));
        scene.kwin.result = QStringLiteral("none");
        scene.kwin.report(scene.theirs, scene.kwin.token());
        QTRY_COMPARE(scene.answers, QList<AboveAnswer>{AboveAnswer::NoWindow});
    }
};

TUNEDECK_TEST(KWinRoadTest, QCoreApplication)
#include "KWinRoadTest.moc"
