// SPDX-License-Identifier: MIT
#include "dock/DockMenuServer.h"

#include "platform/LogLimit.h"
#include "support/PrivateBus.h"
#include "support/registerTest.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingReply>
#include <QMenu>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {
/// The contents of the served menu, and how often it was built.
struct Contents {
    QStringList labels{u"Song"_s};
    QString playPause = u"Pa&use"_s;
    bool isKeptAbove = false;
    int builds = 0;
    QStringList triggered;
    QStringList players; ///< in a submenu, if there are any

    std::unique_ptr<QMenu> build()
    {
        ++builds;
        auto menu = std::make_unique<QMenu>();
        for (const QString &label : labels) {
            menu->addAction(label)->setEnabled(false);
        }
        menu->addSeparator();
        addCommand(*menu, playPause, u"PlayPause"_s);
        QAction *keepAbove = addCommand(*menu, u"Keep Above"_s, u"KeepAbove"_s);
        keepAbove->setCheckable(true);
        keepAbove->setChecked(isKeptAbove);
        if (!players.isEmpty()) {
            addPlayers(*menu);
        }
        return menu;
    }

private:
    void addPlayers(QMenu &menu)
    {
        QMenu *submenu = menu.addMenu(u"Follow"_s);
        submenu->menuAction()->setObjectName(u"Follow"_s);
        auto *group = new QActionGroup(submenu);
        for (const QString &player : std::as_const(players)) {
            QAction *action = addCommand(*submenu, player, player);
            action->setCheckable(true);
            action->setActionGroup(group);
            action->setData(player.toLower());
        }
        submenu->actions().constFirst()->setChecked(true);
    }

    QAction *addCommand(QMenu &menu, const QString &title, const QString &name)
    {
        QAction *action = menu.addAction(title);
        action->setObjectName(name);
        QObject::connect(action, &QAction::triggered, action, [this, name] { triggered.append(name); });
        return action;
    }
};

/// A dock, which knows the program over the bus only.
class Dock : public QObject {
    Q_OBJECT

public:
    /// The connection ends later than the dock: its thread, which closes it, must not find the dock then.
    explicit Dock(QDBusConnection bus)
        : m_bus(std::move(bus))
    {
        // clang-format off
        m_bus.connect(QString(), QString(), u"com.canonical.Unity.LauncherEntry"_s, u"Update"_s,
            this, SLOT(takeEntry(QString,QVariantMap,QDBusMessage)));
        m_bus.connect(QString(), QString(), u"com.canonical.dbusmenu"_s, u"LayoutUpdated"_s,
            this, SLOT(takeUpdate(uint,int)));
        // clang-format on
        catchUp();
    }

    /// The bus handles messages in order: when it answers, it has all that was sent before, and the dock has all that
    /// was sent to it.
    void catchUp() const
    {
        answerTo(QDBusMessage::createMethodCall(
            u"org.freedesktop.DBus"_s, u"/"_s, u"org.freedesktop.DBus.Peer"_s, u"Ping"_s));
    }

    QDBusMessage answerTo(const QDBusMessage &message) const
    {
        const QDBusPendingCall call = m_bus.asyncCall(message);
        return QTest::qWaitFor([&call] { return call.isFinished(); }) ? call.reply() : QDBusMessage();
    }
    QDBusMessage ask(const QString &method, const QVariantList &arguments) const
    {
        QDBusMessage message = QDBusMessage::createMethodCall(sender, path, u"com.canonical.dbusmenu"_s, method);
        message.setArguments(arguments);
        return answerTo(message);
    }
    /// A line for each item of the menu: its id and its properties.
    QStringList read(const QStringList &propertyNames = {})
    {
        const QDBusMessage answer = ask(u"GetLayout"_s, {0, -1, propertyNames});
        revision = answer.arguments().value(0).toUInt();
        QStringList lines;
        for (const QVariant &child :
            qdbus_cast<DockMenuLayout>(answer.arguments().value(1).value<QDBusArgument>()).children) {
            lines.append(lineOf(qdbus_cast<DockMenuLayout>(child).item));
        }
        return lines;
    }
    /// A line for each item of the menu `parentId` and of its submenus, down to `depth`, further in with each submenu.
    [[nodiscard]] QStringList tree(int parentId, int depth, const QStringList &propertyNames) const
    {
        const QDBusMessage answer = ask(u"GetLayout"_s, {parentId, depth, propertyNames});
        return linesOf(qdbus_cast<DockMenuLayout>(answer.arguments().value(1).value<QDBusArgument>()), QString());
    }
    static QStringList linesOf(const DockMenuLayout &layout, const QString &indentation)
    {
        QStringList lines{indentation + lineOf(layout.item)};
        for (const QVariant &child : layout.children) {
            lines += linesOf(qdbus_cast<DockMenuLayout>(child), indentation + u' ');
        }
        return lines;
    }
    static QString lineOf(const DockMenuItem &item)
    {
        QString line = QString::number(item.id);
        for (auto property = item.properties.begin(); property != item.properties.end(); ++property) {
            line += u" %1=%2"_s.arg(property.key(), property.value().toString());
        }
        return line;
    }

    bool ownsUnity() { return m_bus.registerService(u"com.canonical.Unity"_s); }

    int entries = 0;
    QString application;
    QString sender;
    QString path;
    uint revision = 0;
    QList<uint> updates;

private Q_SLOTS:
    void takeEntry(const QString &uri, const QVariantMap &properties, const QDBusMessage &message)
    {
        ++entries;
        application = uri;
        sender = message.service();
        path = properties.value(u"quicklist"_s).toString();
    }
    void takeUpdate(uint newRevision, int parent)
    {
        QCOMPARE(parent, 0);
        updates.append(newRevision);
    }

private:
    QDBusConnection m_bus;
};

/// A program with a menu, and a dock that knows it.
struct Session {
    PrivateBus bus;
    QDBusConnection docksBus = bus.connect(u"the dock"_s);
    Dock dock{docksBus};
    Contents contents;
    DockMenuServer menu{bus.connect(u"the program"_s), [this] { return contents.build(); }};

    bool isKnown = QTest::qWaitFor([this] { return dock.entries > 0; });

    Session() = default;
    ~Session()
    {
        QDBusConnection::disconnectFromBus(u"the dock"_s);
        QDBusConnection::disconnectFromBus(u"the program"_s);
    }
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    QString labelOf(const QString &title)
    {
        contents.labels = {title};
        return dock.read({u"label"_s}).constFirst().mid(u"1 label="_s.size());
    }
};

DockMenuEvent clickOn(int id)
{
    return {id, u"clicked"_s, QDBusVariant(0), 0};
}
} // namespace

class DockMenuServerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        LogLimit::leaveOutUnknownCalls();
    }

    void docksAreToldWhereTheMenuIs()
    {
        const Session session;
        QVERIFY(session.isKnown);
        QCOMPARE(session.dock.entries, 1);
        QCOMPARE(session.dock.application, u"application://org.tunedeck.Tunedeck.desktop"_s);
        QVERIFY(session.dock.path.startsWith(u'/'));
        QCOMPARE(session.contents.builds, 0);
    }

    void aDockThatComesLaterIsToldToo()
    {
        Session session;
        QVERIFY(session.dock.ownsUnity());
        QTRY_COMPARE(session.dock.entries, 2);
    }

    void theMenuIsReadItemByItem()
    {
        Session session;
        QCOMPARE(session.dock.read(),
            (QStringList{u"1 enabled=false label=Song type=standard visible=true"_s,
                u"2 enabled=true label= type=separator visible=true"_s,
                u"3 enabled=true label=Pa_use type=standard visible=true"_s,
                u"4 enabled=true label=Keep Above toggle-state=0 toggle-type=checkmark type=standard visible=true"_s}));
        QCOMPARE(session.dock.revision, 1U);
        session.contents.isKeptAbove = true;
        QCOMPARE(session.dock.read({u"toggle-state"_s, u"no such property"_s}),
            (QStringList{u"1"_s, u"2"_s, u"3"_s, u"4 toggle-state=1"_s}));
        QCOMPARE(session.dock.revision, 2U);
    }

    void theMenuItselfHasChildrenAndNoneWhenAskedForNone()
    {
        const Session session;
        const QDBusMessage answer = session.dock.ask(u"GetLayout"_s, {0, 0, QStringList()});
        QCOMPARE(answer.signature(), u"u(ia{sv}av)"_s);
        const auto layout = qdbus_cast<DockMenuLayout>(answer.arguments().value(1).value<QDBusArgument>());
        QCOMPARE(Dock::lineOf(layout.item), u"0 children-display=submenu"_s);
        QVERIFY(layout.children.isEmpty());
    }

    void aSubmenuIsReadWithItsMenuOrAlone()
    {
        Session session;
        session.contents.players = {u"VLC"_s, u"Strawberry"_s};
        const QStringList properties{u"children-display"_s, u"icon-name"_s, u"toggle-type"_s, u"toggle-state"_s};
        const QStringList submenu{u"5 children-display=submenu"_s,
            u" 6 icon-name=vlc toggle-state=1 toggle-type=radio"_s,
            u" 7 icon-name=strawberry toggle-state=0 toggle-type=radio"_s};
        const QStringList whole = session.dock.tree(0, -1, properties);
        QCOMPARE(whole.size(), 8);
        QCOMPARE(whole.at(5), u' ' + submenu.at(0));
        QCOMPARE(whole.at(7), u' ' + submenu.at(2));
        QCOMPARE(session.dock.tree(0, 1, properties).size(), 6);
        QCOMPARE(session.dock.tree(0, 2, properties), whole);
        QCOMPARE(session.dock.tree(5, -1, properties), submenu);
        QCOMPARE(session.dock.tree(5, 0, properties), submenu.first(1));
    }

    void anItemOfASubmenuIsClicked()
    {
        Session session;
        session.contents.players = {u"VLC"_s, u"Strawberry"_s};
        session.dock.read();
        session.contents.players = {u"mpv"_s, u"VLC"_s, u"Strawberry"_s};
        session.dock.read();
        session.dock.ask(u"Event"_s, {7, u"clicked"_s, QVariant::fromValue(QDBusVariant(0)), 0U});
        QCOMPARE(session.contents.triggered, {u"Strawberry"_s});
    }

    void aChangeInASubmenuIsReported()
    {
        Session session;
        session.contents.players = {u"VLC"_s};
        session.dock.read();
        QCOMPARE(session.dock.ask(u"AboutToShow"_s, {5}).arguments(), {false});
        session.contents.players.append(u"Strawberry"_s);
        QCOMPARE(session.dock.ask(u"AboutToShow"_s, {5}).arguments(), {true});
        QTRY_COMPARE(session.dock.updates, QList{2U});
        session.dock.read();
        session.contents.players.append(u"mpv"_s);
        session.menu.update();
        QTRY_COMPARE(session.dock.updates, (QList<uint>{2U, 3U}));
    }

    void playersThatComeAndGoKeepNothing()
    {
        Session session;
        for (int run = 0; run < 30; ++run) {
            session.contents.players.clear();
            for (int player = 0; player < 64; ++player) {
                session.contents.players.append(u"P%1"_s.arg(run * 64 + player));
            }
            session.dock.read();
        }
        // An id that was forgotten is not used for another item.
        session.dock.ask(u"Event"_s, {6, u"clicked"_s, QVariant::fromValue(QDBusVariant(0)), 0U});
        session.dock.ask(u"Event"_s, {6 + 29 * 64, u"clicked"_s, QVariant::fromValue(QDBusVariant(0)), 0U});
        QCOMPARE(session.contents.triggered, {u"P%1"_s.arg(29 * 64)});
        QCOMPARE(session.dock.tree(0, 1, {u"label"_s}).at(3), u" 3 label=Pa_use"_s);
    }

    void anItemIsReadAlone()
    {
        const Session session;
        const QDBusMessage answer = session.dock.ask(u"GetLayout"_s, {3, -1, QStringList{u"label"_s}});
        const auto layout = qdbus_cast<DockMenuLayout>(answer.arguments().value(1).value<QDBusArgument>());
        QCOMPARE(Dock::lineOf(layout.item), u"3 label=Pa_use"_s);
        QVERIFY(layout.children.isEmpty());
    }

    void propertiesAreReadInAGroupAndOneByOne()
    {
        const Session session;
        const QDBusMessage some = session.dock.ask(
            u"GetGroupProperties"_s, {QVariant::fromValue(QList{3, 1, 3, 77, -1}), QStringList{u"label"_s}});
        QCOMPARE(some.signature(), u"a(ia{sv})"_s);
        const auto items = qdbus_cast<QList<DockMenuItem>>(some.arguments().value(0).value<QDBusArgument>());
        QCOMPARE(items.size(), 2);
        QCOMPARE(Dock::lineOf(items.at(0)), u"1 label=Song"_s);
        QCOMPARE(Dock::lineOf(items.at(1)), u"3 label=Pa_use"_s);
        const QDBusMessage all =
            session.dock.ask(u"GetGroupProperties"_s, {QVariant::fromValue(QList<int>()), QStringList()});
        QCOMPARE(qdbus_cast<QList<DockMenuItem>>(all.arguments().value(0).value<QDBusArgument>()).size(), 5);

        const QDBusMessage one = session.dock.ask(u"GetProperty"_s, {4, u"toggle-type"_s});
        QCOMPARE(one.arguments().value(0).value<QDBusVariant>().variant().toString(), u"checkmark"_s);
    }

    void labelsHaveTheMarkOfTheDocksMnemonics_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("label");
        QTest::newRow("plain") << u"Next"_s << u"Next"_s;
        QTest::newRow("a mnemonic") << u"&Next"_s << u"_Next"_s;
        QTest::newRow("an ampersand") << u"Salt && Pepper"_s << u"Salt & Pepper"_s;
        QTest::newRow("two ampersands") << u"&&&&"_s << u"&&"_s;
        QTest::newRow("an ampersand that is marked") << u"&&&A"_s << u"&_A"_s;
        QTest::newRow("a mark of nothing") << u"A&"_s << u"A"_s;
        QTest::newRow("an underscore") << u"snake_case__"_s << u"snake__case____"_s;
        QTest::newRow("a marked underscore") << u"&_A"_s << u"__A"_s;
        QTest::newRow("lines and tabs") << u"One\nTwo\tThree"_s << u"One Two Three"_s;
        QTest::newRow("nothing in between") << u"One%1Two"_s.arg(QChar(0)) << u"One Two"_s;
        QTest::newRow("half a character") << QString(QChar(0xd83d)) << u"?"_s;
    }
    void labelsHaveTheMarkOfTheDocksMnemonics()
    {
        QFETCH(const QString, title);
        QFETCH(const QString, label);
        Session session;
        QCOMPARE(session.labelOf(title), label);
    }

    void labelsAreShort()
    {
        Session session;
        QCOMPARE(session.labelOf(QString(100, u'x')), QString(100, u'x'));
        QCOMPARE(session.labelOf(QString(1'000'000, u'x')), QString(100, u'x') + u'…');
        QCOMPARE(session.labelOf(QString(99, u'x') + u"&&y"_s), QString(99, u'x') + u"&…"_s);
        QCOMPARE(session.labelOf(QString(99, u'x') + u"__"_s), QString(99, u'x') + u"__…"_s);
        const QString note = u"\U0001f3b5"_s;
        QCOMPARE(session.labelOf(QString(99, u'x') + note + note), QString(99, u'x') + note + u'…');
    }

    void aClickTriggersTheItem()
    {
        Session session;
        session.dock.read();
        const auto event = [&session](int id, const QString &type) {
            return session.dock.ask(u"Event"_s, {id, type, QVariant::fromValue(QDBusVariant(u"x"_s)), 7U}).type();
        };
        QCOMPARE(event(3, u"clicked"_s), QDBusMessage::ReplyMessage);
        QCOMPARE(session.contents.triggered, {u"PlayPause"_s});
        QCOMPARE(event(4, u"clicked"_s), QDBusMessage::ReplyMessage);
        QCOMPARE(session.contents.triggered, (QStringList{u"PlayPause"_s, u"KeepAbove"_s}));
        for (const int idle : {0, 1, 2}) {
            QCOMPARE(event(idle, u"clicked"_s), QDBusMessage::ReplyMessage);
        }
        QCOMPARE(event(3, u"hovered"_s), QDBusMessage::ReplyMessage);
        QCOMPARE(event(77, u"clicked"_s), QDBusMessage::ErrorMessage);
        QCOMPARE(event(-1, u"clicked"_s), QDBusMessage::ErrorMessage);
        QCOMPARE(session.contents.triggered.size(), 2);
    }

    void aClickOnAMenuThatHasChangedTriggersWhatWasClicked()
    {
        Session session;
        session.dock.read();
        session.contents.labels = {u"Song"_s, u"Band"_s, u"Record"_s};
        session.menu.update();
        QTRY_COMPARE(session.dock.updates.size(), 1);
        session.dock.ask(u"Event"_s, {3, u"clicked"_s, QVariant::fromValue(QDBusVariant(0)), 0U});
        QCOMPARE(session.contents.triggered, {u"PlayPause"_s});
        QCOMPARE(session.dock.read({u"label"_s}),
            (QStringList{u"1 label=Song"_s, u"5 label=Band"_s, u"6 label=Record"_s, u"7 label="_s, u"3 label=Pa_use"_s,
                u"4 label=Keep Above"_s}));
    }

    void manyClicksAtOnceAreOne()
    {
        Session session;
        session.dock.read();
        QList<DockMenuEvent> events(1'000, clickOn(3));
        events.append({clickOn(4), clickOn(77)});
        const QDBusMessage answer = session.dock.ask(u"EventGroup"_s, {QVariant::fromValue(events)});
        QCOMPARE(qdbus_cast<QList<int>>(answer.arguments().value(0).value<QDBusArgument>()), {77});
        QCOMPARE(session.contents.triggered, (QStringList{u"PlayPause"_s, u"KeepAbove"_s}));
        const QDBusMessage strangers =
            session.dock.ask(u"EventGroup"_s, {QVariant::fromValue(QList{clickOn(77), clickOn(78)})});
        QCOMPARE(strangers.type(), QDBusMessage::ErrorMessage);
        const QDBusMessage none = session.dock.ask(u"EventGroup"_s, {QVariant::fromValue(QList<DockMenuEvent>())});
        QCOMPARE(none.type(), QDBusMessage::ReplyMessage);
    }

    void rightBeforeItIsShownTheMenuIsBuiltAnew()
    {
        Session session;
        session.dock.read();
        QCOMPARE(session.dock.ask(u"AboutToShow"_s, {0}).arguments(), {false});
        session.contents.playPause = u"Play"_s;
        QCOMPARE(session.dock.ask(u"AboutToShow"_s, {0}).arguments(), {true});
        QCOMPARE(session.dock.read({u"label"_s}).at(2), u"3 label=Play"_s);
        QCOMPARE(session.dock.ask(u"AboutToShow"_s, {77}).type(), QDBusMessage::ErrorMessage);
    }

    void menusAreShownInAGroup()
    {
        Session session;
        const auto askFor = [&session](const QList<int> &ids) {
            return session.dock.ask(u"AboutToShowGroup"_s, {QVariant::fromValue(ids)});
        };
        const auto numbers = [](const QDBusMessage &answer, int index) {
            return qdbus_cast<QList<int>>(answer.arguments().value(index).value<QDBusArgument>());
        };
        const QDBusMessage first = askFor({0, 3, 77});
        QCOMPARE(numbers(first, 0), {0});
        QCOMPARE(numbers(first, 1), {77});
        const QDBusMessage second = askFor({0});
        QCOMPARE(numbers(second, 0), QList<int>());
        QCOMPARE(numbers(second, 1), QList<int>());
        QCOMPARE(askFor({77, 78}).type(), QDBusMessage::ErrorMessage);
    }

    void aDockThatHasReadIsToldOfAChangeOnceUntilItReadsAgain()
    {
        Session session;
        session.dock.read();
        session.contents.playPause = u"Play"_s;
        session.menu.update();
        session.menu.update();
        QTRY_COMPARE(session.dock.updates, QList{2U});
        const int builds = session.contents.builds;
        session.contents.playPause = u"Stop"_s;
        session.menu.update();
        QCoreApplication::processEvents();
        session.dock.catchUp();
        QCOMPARE(session.contents.builds, builds);
        QCOMPARE(session.dock.read({u"label"_s}).at(2), u"3 label=Stop"_s);
        QCOMPARE(session.dock.revision, 3U);
        session.contents.playPause = u"Play"_s;
        session.menu.update();
        QTRY_COMPARE(session.dock.updates, (QList<uint>{2U, 4U}));
    }

    void whatLooksTheSameIsNotTold()
    {
        Session session;
        session.dock.read();
        session.menu.update();
        QTRY_COMPARE(session.contents.builds, 2);
        session.contents.playPause = u"Play"_s;
        session.menu.update();
        QTRY_COMPARE(session.dock.updates, QList{2U});
    }

    void whileNobodyReadsNothingIsBuilt()
    {
        Session session;
        session.menu.update();
        QCoreApplication::processEvents();
        session.dock.catchUp();
        QCOMPARE(session.contents.builds, 0);
        QCOMPARE(session.dock.updates, QList<uint>());
    }

    void whatNobodyHasReadYetCanBeAskedForOrClicked()
    {
        Session session;
        session.dock.ask(u"Event"_s, {3, u"clicked"_s, QVariant::fromValue(QDBusVariant(0)), 0U});
        QCOMPARE(session.contents.triggered, {u"PlayPause"_s});
    }

    void nonsenseIsRefused_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<QVariantList>("arguments");
        QTest::newRow("a menu that there is not") << u"GetLayout"_s << QVariantList{77, -1, QStringList()};
        QTest::newRow("a number below any") << u"GetLayout"_s << QVariantList{-2'147'483'647, 1, QStringList()};
        QTest::newRow("a text for a number") << u"GetLayout"_s << QVariantList{u"0"_s, -1, QStringList()};
        QTest::newRow("too few arguments") << u"GetLayout"_s << QVariantList{0};
        QTest::newRow("a property of no item") << u"GetProperty"_s << QVariantList{77, u"label"_s};
        QTest::newRow("a property that there is not") << u"GetProperty"_s << QVariantList{1, QString(10'000, u'x')};
        QTest::newRow("a text for a group") << u"AboutToShowGroup"_s << QVariantList{u"all"_s};
        QTest::newRow("an event without its parts") << u"Event"_s << QVariantList{3, u"clicked"_s};
        QTest::newRow("what only the program may do") << u"update"_s << QVariantList{};
    }
    void nonsenseIsRefused()
    {
        QFETCH(const QString, method);
        QFETCH(const QVariantList, arguments);
        Session session;
        QCOMPARE(session.dock.ask(method, arguments).type(), QDBusMessage::ErrorMessage);
        QCOMPARE(session.contents.triggered, QStringList());
        QCOMPARE(session.dock.read().size(), 4);
    }

    void muchIsAnsweredWithNoMoreThanTheMenu()
    {
        Session session;
        QStringList names(9'000, u"label"_s);
        names.append(u"type"_s);
        QCOMPARE(session.dock.read(names).constFirst(), u"1 label=Song type=standard"_s);
        const QDBusMessage answer = session.dock.ask(
            u"GetGroupProperties"_s, {QVariant::fromValue(QList<int>(9'000, 3)), QStringList{u"label"_s}});
        QCOMPARE(qdbus_cast<QList<DockMenuItem>>(answer.arguments().value(0).value<QDBusArgument>()).size(), 1);
        const QDBusMessage tooMuch = session.dock.ask(
            u"GetGroupProperties"_s, {QVariant::fromValue(QList<int>(100'000, 3)), QStringList{u"label"_s}});
        QCOMPARE(tooMuch.errorName(), QDBusError::errorString(QDBusError::LimitsExceeded));
        const QDBusMessage deep = session.dock.ask(u"GetLayout"_s, {0, 2'147'483'647, QStringList()});
        QCOMPARE(deep.type(), QDBusMessage::ReplyMessage);
    }

    void theInterfacesPropertiesAreThere()
    {
        const Session session;
        QDBusMessage message = QDBusMessage::createMethodCall(
            session.dock.sender, session.dock.path, u"org.freedesktop.DBus.Properties"_s, u"GetAll"_s);
        message << u"com.canonical.dbusmenu"_s;
        const QDBusMessage answer = session.dock.answerTo(message);
        const auto properties = qdbus_cast<QVariantMap>(answer.arguments().value(0).value<QDBusArgument>());
        QCOMPARE(properties.value(u"Version"_s), QVariant(3U));
        QCOMPARE(properties.value(u"Status"_s), QVariant(u"normal"_s));
        QCOMPARE(properties.value(u"TextDirection"_s), QVariant(u"ltr"_s));
        QCOMPARE(properties.value(u"IconThemePath"_s), QVariant(QStringList()));
        QCOMPARE(properties.size(), 4);
    }

    void withoutABusThereIsNothingToServe()
    {
        Contents contents;
        DockMenuServer menu(QDBusConnection(u"none"_s), [&contents] { return contents.build(); });
        menu.update();
        QCOMPARE(contents.builds, 0);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::DockMenuServerTest, QApplication)
#include "DockMenuServerTest.moc"
