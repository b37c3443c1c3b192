// SPDX-License-Identifier: MIT
#include "music/mpris/desktop/PlayerWindow.h"
#include "platform/ActivationToken.h"
#include "platform/DesktopEntries.h"
#include "support/PrivateBus.h"
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusVirtualObject>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

const QString jukebox = u"org.example.Juke-box"_s;

/// A program that notes what it is called for.
class CalledProgram : public QDBusVirtualObject {
public:
    QStringList calls;
    bool refusesToActivate = false;

    [[nodiscard]] QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        QStringList words{message.path(), message.member()};
        if (const QVariantList arguments = message.arguments(); !arguments.isEmpty()) {
            const auto data = qdbus_cast<QVariantMap>(arguments.first());
            for (const auto &[key, value] : data.asKeyValueRange()) {
                words.append(key + u'=' + value.toString());
            }
        }
        calls.append(words.join(u' '));
        const bool isRefused = refusesToActivate && message.member() == u"Activate";
        return connection.send(isRefused ? message.createErrorReply(QDBusError::UnknownMethod, u"no such method"_s)
                                         : message.createReply());
    }
};

} // namespace

class PlayerWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// GIO reads the environment and the folders once.
    void initTestCase()
    {
        for (const char *variable : {"HOME", "XDG_DATA_HOME"}) {
            qputenv(variable, m_home.path().toUtf8());
        }
        qputenv("XDG_DATA_DIRS", m_home.filePath(u"empty"_s).toUtf8());
        install(jukebox, u"DBusActivatable=true"_s);
        install(u"org.example.Plain"_s, u"DBusActivatable=false"_s);
        install(u"jukebox"_s, u"DBusActivatable=true"_s);
    }

    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        m_bus = std::make_unique<PrivateBus>();
        m_player = std::make_unique<QDBusConnection>(m_bus->connect(u"player"_s));
        m_program = std::make_unique<CalledProgram>();
        QVERIFY(m_player->registerVirtualObject(u"/"_s, m_program.get(), QDBusConnection::SubPath));
        m_entries = std::make_unique<DesktopEntries>();
        m_window = std::make_unique<PlayerWindow>(m_bus->connect(u"music"_s), *m_entries);
    }

    void cleanup()
    {
        m_window.reset();
        m_entries.reset();
        m_player.reset();
        for (const auto &name : {u"player"_s, u"music"_s, u"other"_s}) {
            QDBusConnection::disconnectFromBus(name);
        }
        m_bus.reset();
    }

    void aPlayerThatCanRaiseItselfIsRaised()
    {
        QVERIFY(!m_window->canBeShown());
        m_window->setPlayer(player(u"jukebox"_s, true));
        QVERIFY(m_window->canBeShown());
        QVERIFY(m_window->show({}));
        QTRY_COMPARE(m_program->calls, QStringList{u"/org/mpris/MediaPlayer2 Raise"_s});
    }

    void aPlayerThatSharesItsConnectionIsRaisedByItsName()
    {
        PlayerWindow::Player sharing = player({}, true);
        sharing.destination = u"org.mpris.MediaPlayer2.other"_s;
        CalledProgram other;
        QDBusConnection connection = m_bus->connect(u"other"_s);
        QVERIFY(connection.registerVirtualObject(u"/"_s, &other, QDBusConnection::SubPath));
        QVERIFY(connection.registerService(sharing.destination));
        m_window->setPlayer(sharing);
        QVERIFY(m_window->show({}));
        QTRY_COMPARE(other.calls, QStringList{u"/org/mpris/MediaPlayer2 Raise"_s});
        QCOMPARE(m_program->calls, QStringList());
    }

    void aPlayerThatCanDoNothingIsNotCalled()
    {
        m_window->setPlayer(player(u"jukebox"_s, false));
        QVERIFY(!m_window->canBeShown());
        QVERIFY(!m_window->show({}));
        m_window->setPlayer(player(u"jukebox"_s, true));
        QVERIFY(m_window->show({}));
        m_window->setPlayer(std::nullopt);
        QVERIFY(!m_window->show({}));
        QTRY_COMPARE(m_program->calls, QStringList{u"/org/mpris/MediaPlayer2 Raise"_s});
    }

    void aPlayerWhoseEntryAllowsItIsActivatedWithTheToken()
    {
        QVERIFY(m_player->registerService(jukebox));
        const QSignalSpy changed(m_window.get(), &PlayerWindow::changed);
        m_window->setPlayer(player(jukebox, false));
        QVERIFY(!m_window->canBeShown());
        QTRY_COMPARE(changed.count(), 1);
        QVERIFY(m_window->canBeShown());
        QVERIFY(m_window->show({.x11StartupId = u"id_TIME5"_s, .waylandToken = u"token"_s}));
        QTRY_COMPARE(m_program->calls,
            QStringList{u"/org/example/Juke_box Activate activation-token=token desktop-startup-id=id_TIME5"_s});
    }

    void aProgramWithTwoConnectionsIsOnePlayer()
    {
        CalledProgram application;
        QDBusConnection other = m_bus->connect(u"other"_s);
        QVERIFY(other.registerVirtualObject(u"/"_s, &application, QDBusConnection::SubPath));
        QVERIFY(other.registerService(jukebox));
        m_window->setPlayer(player(jukebox, true));
        const QSignalSpy changed(m_window.get(), &PlayerWindow::changed);
        QTRY_COMPARE(changed.count(), 1);
        QVERIFY(m_window->show({}));
        QTRY_COMPARE(application.calls, QStringList{u"/org/example/Juke_box Activate"_s});
        QTRY_COMPARE(m_program->calls, QStringList{u"/org/mpris/MediaPlayer2 Raise"_s});
    }

    void noOtherProgramIsActivated()
    {
        CalledProgram application;
        QDBusConnection other = m_bus->connect(u"other"_s);
        QVERIFY(other.registerVirtualObject(u"/"_s, &application, QDBusConnection::SubPath));
        QVERIFY(other.registerService(jukebox));
        PlayerWindow::Player stranger = player(jukebox, true);
        stranger.processId = 1;
        m_window->setPlayer(stranger);
        QVERIFY(factsAreKnown(jukebox));
        QVERIFY(answeredAll());
        QVERIFY(m_window->show({}));
        QTRY_COMPARE(m_program->calls, QStringList{u"/org/mpris/MediaPlayer2 Raise"_s});
        QCOMPARE(application.calls, QStringList());
    }

    void aNameThatComesLaterCountsAndOneThatGoesDoesNot()
    {
        const QSignalSpy changed(m_window.get(), &PlayerWindow::changed);
        m_window->setPlayer(player(jukebox, false));
        QVERIFY(factsAreKnown(jukebox));
        QVERIFY(answeredAll());
        QVERIFY(!m_window->canBeShown());
        QVERIFY(m_player->registerService(jukebox));
        QTRY_COMPARE(changed.count(), 1);
        QVERIFY(m_window->canBeShown());
        QVERIFY(m_player->unregisterService(jukebox));
        QTRY_COMPARE(changed.count(), 2);
        QVERIFY(!m_window->canBeShown());
    }

    void aPlayerThatIsNotActivatedIsRaised_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::newRow("its entry does not allow it") << u"org.example.Plain"_s;
        QTest::newRow("its entry is not installed") << u"org.example.Missing"_s;
        QTest::newRow("its entry is no name on the bus") << u"jukebox"_s;
        QTest::newRow("it names no entry") << QString();
    }

    void aPlayerThatIsNotActivatedIsRaised()
    {
        QFETCH(const QString, entry);
        if (entry.contains(u'.')) {
            QVERIFY(m_player->registerService(entry));
        }
        const QSignalSpy changed(m_window.get(), &PlayerWindow::changed);
        m_window->setPlayer(player(entry, true));
        QVERIFY(factsAreKnown(entry));
        QVERIFY(answeredAll());
        QVERIFY(m_window->show({}));
        QTRY_COMPARE(m_program->calls, QStringList{u"/org/mpris/MediaPlayer2 Raise"_s});
        QCOMPARE(changed.count(), 0);
    }

    void aPlayerThatIsActivatedIsRaisedWhereItCan_data()
    {
        QTest::addColumn<bool>("refuses");
        QTest::newRow("it may answer and do nothing") << false;
        QTest::newRow("it refuses to be activated") << true;
    }

    void aPlayerThatIsActivatedIsRaisedWhereItCan()
    {
        QFETCH(const bool, refuses);
        m_program->refusesToActivate = refuses;
        QVERIFY(m_player->registerService(jukebox));
        const QSignalSpy changed(m_window.get(), &PlayerWindow::changed);
        m_window->setPlayer(player(jukebox, true));
        QTRY_COMPARE(changed.count(), 1);
        QVERIFY(m_window->show({}));
        QTRY_COMPARE(
            m_program->calls, (QStringList{u"/org/example/Juke_box Activate"_s, u"/org/mpris/MediaPlayer2 Raise"_s}));
    }

    void anEntryThatIsNoNameOnTheBusIsNotAskedFor_data()
    {
        QTest::addColumn<QString>("entry");
        for (const char *entry : {"", ".", "a..b", "org.example.1", "org.example.", ":1.5", "org.ex'ample",
                 "org.example,member='x'", "org.example\n", "org.\u00e9xample"}) {
            QTest::newRow(entry) << QString::fromUtf8(entry);
        }
        QTest::newRow("too long") << u"org."_s + QString(260, u'x');
    }

    void anEntryThatIsNoNameOnTheBusIsNotAskedFor()
    {
        QFETCH(const QString, entry);
        const QSignalSpy known(m_entries.get(), &DesktopEntries::factsKnown);
        m_window->setPlayer(player(entry, false));
        QVERIFY(!m_window->canBeShown());
        QVERIFY(factsAreKnown(jukebox));
        QCOMPARE(known.count(), 1);
    }

private:
    void install(const QString &identifier, const QString &more) const
    {
        QVERIFY(QDir(m_home.path()).mkpath(u"applications"_s));
        QFile entry(m_home.filePath(u"applications/%1.desktop"_s.arg(identifier)));
        QVERIFY(entry.open(QIODevice::WriteOnly));
        QVERIFY(
            entry.write(u"[Desktop Entry]\nType=Application\nName=Player\nExec=false\n%1\n"_s.arg(more).toUtf8()) > 0);
    }

    [[nodiscard]] PlayerWindow::Player player(const QString &entry, bool canRaise) const
    {
        return {.owner = m_player->baseService(),
            .destination = m_player->baseService(),
            .processId = QCoreApplication::applicationPid(),
            .desktopEntry = entry,
            .canRaise = canRaise};
    }

    [[nodiscard]] bool factsAreKnown(const QString &entry) const
    {
        return QTest::qWaitFor([this, &entry] { return m_entries->facts(entry).has_value(); });
    }

    /// The bus answers in order, so it has answered what the window has asked, and what that made it ask.
    [[nodiscard]] bool answeredAll() const
    {
        const QDBusConnection bus(u"music"_s);
        for (int i = 0; i < 2; ++i) {
            const QDBusPendingCall answer = bus.asyncCall(QDBusMessage::createMethodCall(
                u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, u"GetId"_s));
            if (!QTest::qWaitFor([&answer] { return answer.isFinished(); })) {
                return false;
            }
            QCoreApplication::processEvents();
        }
        return true;
    }

    QTemporaryDir m_home;
    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<QDBusConnection> m_player;
    std::unique_ptr<CalledProgram> m_program;
    std::unique_ptr<DesktopEntries> m_entries;
    std::unique_ptr<PlayerWindow> m_window;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::PlayerWindowTest, QGuiApplication)
#include "PlayerWindowTest.moc"
