// SPDX-License-Identifier: MIT
#include "platform/Appearance.h"

#include "platform/UserDefaults.h"
#include "support/PrivateBus.h"
#include "support/registerTest.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace tunedeck {

namespace {
const QString group = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");
const QString accentColor = QStringLiteral("accent-color");
const QString gnomeGroup = QStringLiteral("org.gnome.desktop.interface");
const QString textScale = QStringLiteral("text-scaling-factor");
const QString fontName = QStringLiteral("font-name");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalInterface = QStringLiteral("org.freedesktop.portal.Settings");

QVariant color(double red, double green, double blue)
{
    QDBusArgument argument;
    argument.beginStructure();
    argument << red << green << blue;
    argument.endStructure();
    return QVariant::fromValue(argument);
}

QVariant wrapped(const QVariant &value)
{
    return QVariant::fromValue(QDBusVariant(value));
}

/// The settings part of the desktop portal.
class Portal : public QDBusVirtualObject {
public:
    explicit Portal(const QDBusConnection &bus)
        : m_bus(bus)
    {
        m_bus.registerVirtualObject(portalPath, this);
        m_bus.registerService(portalService);
    }

    ~Portal() override
    {
        m_bus.unregisterService(portalService);
        m_bus.unregisterObject(portalPath);
    }

    QString introspect(const QString & /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        asked.append(message.member() + u' ' + message.arguments().value(1).toString());
        if (isSilent) {
            message.setDelayedReply(true);
            return true;
        }
        if (message.member() == QStringLiteral("ReadOne") && isOld) {
            connection.send(message.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("no such method")));
            return true;
        }
        const QVariant value =
            groups.value(message.arguments().value(0).toString()).value(message.arguments().value(1).toString());
        if (!value.isValid()) {
            connection.send(message.createErrorReply(error, QStringLiteral("no such setting")));
            return true;
        }
        connection.send(message.createReply(wrapped(isOld ? wrapped(value) : value)));
        return true;
    }

    void change(const QString &key, const QVariant &value, const QString &inGroup = group)
    {
        QDBusMessage signal = QDBusMessage::createSignal(portalPath, portalInterface, QStringLiteral("SettingChanged"));
        signal << inGroup << key << wrapped(value);
        m_bus.send(signal);
    }

    QHash<QString, QVariantHash> groups;
    QVariantHash &values = groups[group];
    QStringList asked;
    /// The answer for a setting without a value.
    QString error = QStringLiteral("org.freedesktop.portal.Error.NotFound");
    bool isOld = false;
    bool isSilent = false;

private:
    QDBusConnection m_bus;
};

void setPalette(const QColor &text, const QColor &window, const QColor &highlight)
{
    QPalette palette;
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Highlight, highlight);
    QGuiApplication::setPalette(palette);
    // Qt itself sends it only once the application's own event loop runs.
    QEvent event(QEvent::ApplicationPaletteChange);
    QCoreApplication::sendEvent(qGuiApp, &event);
}

void setLightPalette()
{
    setPalette(Qt::black, Qt::white, Qt::blue);
}
void setDarkPalette()
{
    setPalette(Qt::white, Qt::black, Qt::blue);
}
} // namespace

class AppearanceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_bus.isRunning());
        m_connection = std::make_unique<QDBusConnection>(m_bus.connect(QStringLiteral("appearance")));
        m_portalConnection = std::make_unique<QDBusConnection>(m_bus.connect(QStringLiteral("portal")));
    }

    void init()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
        setLightPalette();
        m_defaults = std::make_unique<UserDefaults>(m_home.filePath(QStringLiteral("tunedeck.conf")));
        m_portal = std::make_unique<Portal>(*m_portalConnection);
    }

    void cleanup()
    {
        m_portal.reset();
        m_defaults.reset();
    }

    // This test must be the first: it needs a process that has not handled a D-Bus variant. Qt 6.8 knows them always.
    void followsThePortalWhereNobodyHasSpokenToTheBusYet()
    {
        QCOMPARE(QMetaType::fromName("QDBusVariant").isValid(), QT_VERSION >= QT_VERSION_CHECK(6, 8, 0));
        const Appearance appearance(*m_defaults, *m_connection);
        QTRY_COMPARE(m_portal->asked.size(), 7);
        m_portal->change(colorScheme, 1U);
        QTRY_COMPARE(appearance.effectiveAppearance(), AppearanceName::DarkAqua);
    }

    void isDarkForBothDarkAppearances()
    {
        QVERIFY(!isDark(AppearanceName::Aqua));
        QVERIFY(isDark(AppearanceName::DarkAqua));
        QVERIFY(isDark(AppearanceName::VibrantDark));
    }

    void takesTheColorSchemeFromThePortal_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<bool>("isOld");
        QTest::addColumn<AppearanceName>("expected");
        QTest::newRow("dark") << QVariant(1U) << false << AppearanceName::DarkAqua;
        QTest::newRow("light") << QVariant(2U) << false << AppearanceName::Aqua;
        QTest::newRow("dark, from an old portal") << QVariant(1U) << true << AppearanceName::DarkAqua;
        QTest::newRow("light, from an old portal") << QVariant(2U) << true << AppearanceName::Aqua;
    }

    void takesTheColorSchemeFromThePortal()
    {
        QFETCH(const QVariant, value);
        QFETCH(const bool, isOld);
        QFETCH(const AppearanceName, expected);
        // The palette says the opposite, so that the portal's answer shows.
        expected == AppearanceName::Aqua ? setDarkPalette() : setLightPalette();
        m_portal->values = {{colorScheme, value}};
        m_portal->isOld = isOld;
        const Appearance appearance(*m_defaults, *m_connection);
        QVERIFY(appearance.effectiveAppearance() != expected);
        QTRY_COMPARE(appearance.effectiveAppearance(), expected);
    }

    void aPortalWithoutAPreferenceLeavesItToThePalette_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::newRow("no preference") << QVariant(0U);
        QTest::newRow("unknown") << QVariant(77U);
    }

    void aPortalWithoutAPreferenceLeavesItToThePalette()
    {
        QFETCH(const QVariant, value);
        setDarkPalette();
        m_portal->values = {{colorScheme, 2U}};
        const Appearance appearance(*m_defaults, *m_connection);
        QTRY_COMPARE(appearance.effectiveAppearance(), AppearanceName::Aqua);
        m_portal->change(colorScheme, value);
        QTRY_COMPARE(appearance.effectiveAppearance(), AppearanceName::DarkAqua);
    }

    void followsThePortalLive()
    {
        m_portal->values = {{colorScheme, 0U}};
        Appearance appearance(*m_defaults, *m_connection);
        const QSignalSpy spy(&appearance, &Appearance::effectiveAppearanceChanged);
        QTRY_COMPARE(m_portal->asked.size(), 7);
        m_portal->change(colorScheme, 1U);
        QTRY_COMPARE(appearance.effectiveAppearance(), AppearanceName::DarkAqua);
        m_portal->change(colorScheme, 1U);
        m_portal->change(colorScheme, 2U);
        QTRY_COMPARE(appearance.effectiveAppearance(), AppearanceName::Aqua);
        QCOMPARE(spy.count(), 2);
    }

    void whoeverWantsNothingToMoveIsHeard_data()
    {
        QTest::addColumn<QString>("inGroup");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("reduced");
        QTest::addColumn<QVariant>("moving");
        QTest::newRow("GNOME") << QStringLiteral("org.gnome.desktop.interface") << QStringLiteral("enable-animations")
                               << QVariant(false) << QVariant(true);
        QTest::newRow("KDE") << QStringLiteral("org.kde.kdeglobals.KDE") << QStringLiteral("AnimationDurationFactor")
                             << QVariant(QStringLiteral("0")) << QVariant(QStringLiteral("0.5"));
    }

    void whoeverWantsNothingToMoveIsHeard()
    {
        QFETCH(const QString, inGroup);
        QFETCH(const QString, key);
        QFETCH(const QVariant, reduced);
        QFETCH(const QVariant, moving);
        m_portal->groups[inGroup] = {{key, reduced}};
        const Appearance appearance(*m_defaults, *m_connection);
        const QSignalSpy spy(&appearance, &Appearance::motionReducedChanged);
        QVERIFY(!appearance.isMotionReduced());
        QTRY_VERIFY(appearance.isMotionReduced());
        m_portal->change(key, moving, inGroup);
        QTRY_VERIFY(!appearance.isMotionReduced());
        m_portal->change(key, reduced, inGroup);
        QTRY_VERIFY(appearance.isMotionReduced());
        QCOMPARE(spy.count(), 3);
    }

    void highContrastIsFollowed()
    {
        const QString contrast = QStringLiteral("contrast");
        m_portal->values = {{contrast, 1U}};
        const Appearance appearance(*m_defaults, *m_connection);
        const QSignalSpy spy(&appearance, &Appearance::highContrastChanged);
        QVERIFY(!appearance.isHighContrast());
        QTRY_VERIFY(appearance.isHighContrast());
        m_portal->change(contrast, 1U);
        m_portal->change(contrast, 0U);
        QTRY_VERIFY(!appearance.isHighContrast());
        QCOMPARE(spy.count(), 2);
    }

    void nonsenseIsNoContrast_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::newRow("text") << QVariant(QStringLiteral("1"));
        QTest::newRow("signed") << QVariant(1);
        QTest::newRow("unknown") << QVariant(2U);
        QTest::newRow("colour") << color(1, 1, 1);
    }

    void nonsenseIsNoContrast()
    {
        QFETCH(const QVariant, value);
        m_portal->values = {{QStringLiteral("contrast"), value}, {colorScheme, 1U}};
        const Appearance appearance(*m_defaults, *m_connection);
        QTRY_COMPARE(m_portal->asked.size(), 7);
        m_portal->change(QStringLiteral("contrast"), value);
        // The portal's messages keep their order.
        m_portal->change(colorScheme, 2U);
        QTRY_COMPARE(appearance.effectiveAppearance(), AppearanceName::Aqua);
        QVERIFY(!appearance.isHighContrast());
    }

    void oneDesktopsWishIsNotTakenBackByAnother()
    {
        m_portal->groups[QStringLiteral("org.kde.kdeglobals.KDE")] = {
            {QStringLiteral("AnimationDurationFactor"), QStringLiteral("0")}};
        m_portal->groups[QStringLiteral("org.gnome.desktop.interface")] = {{QStringLiteral("enable-animations"), true}};
        const Appearance appearance(*m_defaults, *m_connection);
        QTRY_VERIFY(appearance.isMotionReduced());
        m_portal->change(QStringLiteral("enable-animations"), true, QStringLiteral("org.gnome.desktop.interface"));
        m_portal->change(colorScheme, 1U);
        QTRY_COMPARE(appearance.effectiveAppearance(), AppearanceName::DarkAqua);
        QVERIFY(appearance.isMotionReduced());
    }

    void nonsenseDoesNotStopAnythingFromMoving()
    {
        m_portal->groups[QStringLiteral("org.gnome.desktop.interface")] = {
            {QStringLiteral("enable-animations"), QStringLiteral("false")}};
        m_portal->groups[QStringLiteral("org.kde.kdeglobals.KDE")] = {
            {QStringLiteral("AnimationDurationFactor"), QStringLiteral("none")}};
        const Appearance appearance(*m_defaults, *m_connection);
        QTRY_COMPARE(m_portal->asked.size(), 7);
        m_portal->change(QStringLiteral("enable-animations"), false, QStringLiteral("org.example"));
        // The portal's messages keep their order.
        m_portal->change(colorScheme, 1U);
        QTRY_COMPARE(appearance.effectiveAppearance(), AppearanceName::DarkAqua);
        QVERIFY(!appearance.isMotionReduced());
    }

    void otherSettingsOfThePortalAreNotTaken()
    {
        m_portal->values = {{colorScheme, 1U}};
        Appearance appearance(*m_defaults, *m_connection);
        QTRY_COMPARE(appearance.effectiveAppearance(), AppearanceName::DarkAqua);
        const QSignalSpy spy(&appearance, &Appearance::effectiveAppearanceChanged);
        m_portal->change(colorScheme, 0U, QStringLiteral("org.example.desktop"));
        m_portal->change(QStringLiteral("contrast"), 0U);
        m_portal->change(accentColor, color(0.5, 0.5, 0.5));
        QTRY_COMPARE(m_defaults->integerForKey(SettingsKey::appleAccentColor), -1);
        QCOMPARE(spy.count(), 0);
    }

    void aValueOfAWrongTypeLeavesThePalette_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::newRow("text") << QVariant(QStringLiteral("1"));
        QTest::newRow("fraction") << QVariant(1.0);
        QTest::newRow("structure") << color(1, 1, 1);
        QTest::newRow("list") << QVariant(QStringList({QStringLiteral("1")}));
        QTest::newRow("wrapped again and again") << wrapped(wrapped(wrapped(QStringLiteral("1"))));
    }

    void aValueOfAWrongTypeLeavesThePalette()
    {
        QFETCH(const QVariant, value);
        m_portal->values = {{colorScheme, value}, {accentColor, QStringLiteral("grey")}};
        Appearance appearance(*m_defaults, *m_connection);
        QTRY_COMPARE(m_portal->asked.size(), 7);
        m_portal->change(colorScheme, value);
        m_portal->change(accentColor, color(0.5, 0.5, 0.5));
        QTRY_COMPARE(m_defaults->integerForKey(SettingsKey::appleAccentColor), -1);
        QCOMPARE(appearance.effectiveAppearance(), AppearanceName::Aqua);
        setDarkPalette();
        QCOMPARE(appearance.effectiveAppearance(), AppearanceName::DarkAqua);
    }

    void aGreyAccentIsGraphite_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<int>("expected");
        QTest::newRow("grey") << color(0.4, 0.45, 0.42) << -1;
        QTest::newRow("white") << color(1, 1, 1) << -1;
        QTest::newRow("blue") << color(0.2, 0.4, 0.9) << 0;
        QTest::newRow("just coloured") << color(0.4, 0.4, 0.55) << 0;
        QTest::newRow("none") << color(-1, -1, -1) << 0;
        QTest::newRow("above") << color(2, 2, 2) << 0;
        QTest::newRow("not a number") << color(qQNaN(), qQNaN(), qQNaN()) << 0;
        QTest::newRow("infinite") << color(qInf(), qInf(), qInf()) << 0;
    }

    void aGreyAccentIsGraphite()
    {
        QFETCH(const QVariant, value);
        QFETCH(const int, expected);
        // The palette says the opposite, so that the portal's answer shows.
        setPalette(Qt::black, Qt::white, expected == 0 ? Qt::gray : Qt::blue);
        m_portal->values = {{accentColor, value}};
        const Appearance appearance(*m_defaults, *m_connection);
        QCOMPARE(m_defaults->integerForKey(SettingsKey::appleAccentColor), expected == 0 ? -1 : 0);
        QTRY_COMPARE(m_defaults->integerForKey(SettingsKey::appleAccentColor), expected);
    }

    void aChangedAccentIsPassedOn()
    {
        m_portal->values = {{accentColor, color(0.5, 0.5, 0.5)}};
        const Appearance appearance(*m_defaults, *m_connection);
        QTRY_COMPARE(m_defaults->integerForKey(SettingsKey::appleAccentColor), -1);
        const QSignalSpy spy(m_defaults.get(), &UserDefaults::valueChanged);
        m_portal->change(accentColor, color(0.9, 0.1, 0.1));
        QTRY_COMPARE(m_defaults->integerForKey(SettingsKey::appleAccentColor), 0);
        QCOMPARE(spy.count(), 1);
    }

    void tellsHowTheUserWantsTexts()
    {
        m_portal->groups[gnomeGroup] = {{textScale, 1.25}, {fontName, QStringLiteral("Cantarell 11")}};
        const Appearance appearance(*m_defaults, *m_connection);
        const QSignalSpy spy(&appearance, &Appearance::textChanged);
        QCOMPARE(appearance.textScale(), 1.0);
        QCOMPARE(appearance.fontName(), QString());
        QTRY_COMPARE(appearance.fontName(), QStringLiteral("Cantarell 11"));
        QCOMPARE(appearance.textScale(), 1.25);
        QCOMPARE(spy.count(), 2);
        m_portal->change(fontName, QStringLiteral("Cantarell 11"), gnomeGroup);
        m_portal->change(textScale, 1.5, gnomeGroup);
        QTRY_COMPARE(appearance.textScale(), 1.5);
        QCOMPARE(spy.count(), 3);
    }

    void aTextScaleThatNobodyCanMeanIsNone_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<double>("scale");
        QTest::newRow("the least") << QVariant(0.5) << 0.5;
        QTest::newRow("the most") << QVariant(3.0) << 3.0;
        QTest::newRow("too little") << QVariant(0.49) << 1.0;
        QTest::newRow("too much") << QVariant(100.0) << 1.0;
        QTest::newRow("nothing") << QVariant(0.0) << 1.0;
        QTest::newRow("less than nothing") << QVariant(-1.5) << 1.0;
        QTest::newRow("not a number") << QVariant(qQNaN()) << 1.0;
        QTest::newRow("infinite") << QVariant(qInf()) << 1.0;
        QTest::newRow("text") << QVariant(QStringLiteral("1.5")) << 1.0;
        QTest::newRow("an integer") << QVariant(2) << 1.0;
        QTest::newRow("a structure") << color(2, 2, 2) << 1.0;
    }
    void aTextScaleThatNobodyCanMeanIsNone()
    {
        QFETCH(const QVariant, value);
        QFETCH(const double, scale);
        m_portal->groups[gnomeGroup] = {{textScale, 2.0}};
        const Appearance appearance(*m_defaults, *m_connection);
        QTRY_COMPARE(appearance.textScale(), 2.0);
        m_portal->change(textScale, value, gnomeGroup);
        QTRY_COMPARE(appearance.textScale(), scale);
    }

    void aFontNameThatIsNoneIsNotPassedOn_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::newRow("a number") << QVariant(11);
        QTest::newRow("endless") << QVariant(QString(201, u'x'));
        QTest::newRow("empty") << QVariant(QString());
    }
    void aFontNameThatIsNoneIsNotPassedOn()
    {
        QFETCH(const QVariant, value);
        m_portal->groups[gnomeGroup] = {{fontName, QStringLiteral("Cantarell 11")}};
        const Appearance appearance(*m_defaults, *m_connection);
        QTRY_COMPARE(appearance.fontName(), QStringLiteral("Cantarell 11"));
        m_portal->change(fontName, value, gnomeGroup);
        QTRY_COMPARE(appearance.fontName(), QString());
    }

    void withoutAPortalThePaletteDecides()
    {
        removePortal();
        setDarkPalette();
        Appearance appearance(*m_defaults, *m_connection);
        const QSignalSpy spy(&appearance, &Appearance::effectiveAppearanceChanged);
        QCOMPARE(appearance.effectiveAppearance(), AppearanceName::DarkAqua);
        QCOMPARE(m_defaults->integerForKey(SettingsKey::appleAccentColor), 0);
        setPalette(Qt::black, Qt::white, Qt::gray);
        QCOMPARE(appearance.effectiveAppearance(), AppearanceName::Aqua);
        QCOMPARE(m_defaults->integerForKey(SettingsKey::appleAccentColor), -1);
        setLightPalette();
        QCOMPARE(m_defaults->integerForKey(SettingsKey::appleAccentColor), 0);
        QCOMPARE(spy.count(), 1);
    }

    void withoutABusThePaletteDecides()
    {
        setDarkPalette();
        const Appearance appearance(*m_defaults, QDBusConnection(QStringLiteral("no such connection")));
        QCoreApplication::processEvents();
        QCOMPARE(appearance.effectiveAppearance(), AppearanceName::DarkAqua);
    }

    void aSilentPortalIsNotWaitedFor()
    {
        m_portal->isSilent = true;
        setDarkPalette();
        const auto appearance = std::make_unique<Appearance>(*m_defaults, *m_connection);
        QCOMPARE(appearance->effectiveAppearance(), AppearanceName::DarkAqua);
        QTRY_COMPARE(m_portal->asked.size(), 7);
        setLightPalette();
        QCOMPARE(appearance->effectiveAppearance(), AppearanceName::Aqua);
    }

    void anOldPortalIsAskedAsItUnderstands()
    {
        m_portal->isOld = true;
        m_portal->values = {{colorScheme, 1U}};
        const Appearance appearance(*m_defaults, *m_connection);
        QTRY_COMPARE(appearance.effectiveAppearance(), AppearanceName::DarkAqua);
        QTRY_COMPARE(m_portal->asked.size(), 14);
        QCOMPARE(m_portal->asked.count(QStringLiteral("ReadOne color-scheme")), 1);
        QCOMPARE(m_portal->asked.count(QStringLiteral("Read color-scheme")), 1);
    }

    void thePaletteDoesNotMatterOnceAPortalHasAnswered()
    {
        m_portal->values = {{colorScheme, 1U}};
        const Appearance appearance(*m_defaults, *m_connection);
        QTRY_COMPARE(appearance.effectiveAppearance(), AppearanceName::DarkAqua);
        setLightPalette();
        QCOMPARE(appearance.effectiveAppearance(), AppearanceName::DarkAqua);
    }

    void aForcedAppearanceWinsUntilItIsTakenBack()
    {
        removePortal();
        setDarkPalette();
        Appearance appearance(*m_defaults, *m_connection);
        const QSignalSpy spy(&appearance, &Appearance::effectiveAppearanceChanged);
        QVERIFY(!appearance.applicationAppearance());
        appearance.setApplicationAppearance(AppearanceName::Aqua);
        QCOMPARE(appearance.applicationAppearance(), AppearanceName::Aqua);
        QCOMPARE(appearance.effectiveAppearance(), AppearanceName::Aqua);
        appearance.setApplicationAppearance(AppearanceName::Aqua);
        QCOMPARE(spy.count(), 1);
        appearance.setApplicationAppearance(AppearanceName::VibrantDark);
        QCOMPARE(appearance.effectiveAppearance(), AppearanceName::VibrantDark);
        appearance.setApplicationAppearance(std::nullopt);
        QCOMPARE(appearance.effectiveAppearance(), AppearanceName::DarkAqua);
        QCOMPARE(spy.count(), 3);
    }

    void theProgramsOwnPaletteIsNotTheSystems()
    {
        removePortal();
        setLightPalette();
        Appearance appearance(*m_defaults, *m_connection);
        appearance.setPalette(QPalette(Qt::black, Qt::black));
        QVERIFY(!appearance.isSystemPaletteDark());
        QCOMPARE(appearance.effectiveAppearance(), AppearanceName::Aqua);
        appearance.setPalette(std::nullopt);
        QCOMPARE(QGuiApplication::palette(), QPalette());
    }

    void theSystemIsFollowedBehindAForcedAppearance()
    {
        m_portal->values = {{colorScheme, 1U}, {accentColor, color(0.5, 0.5, 0.5)}};
        Appearance appearance(*m_defaults, *m_connection);
        appearance.setApplicationAppearance(AppearanceName::Aqua);
        const QSignalSpy spy(&appearance, &Appearance::effectiveAppearanceChanged);
        QTRY_COMPARE(m_defaults->integerForKey(SettingsKey::appleAccentColor), -1);
        QCOMPARE(spy.count(), 0);
        appearance.setApplicationAppearance(std::nullopt);
        QCOMPARE(appearance.effectiveAppearance(), AppearanceName::DarkAqua);
    }

private:
    /// The name stays owned, otherwise the bus would start this machine's portal.
    void removePortal() { m_portal->error = QStringLiteral("org.freedesktop.DBus.Error.ServiceUnknown"); }

    QTemporaryDir m_home;
    PrivateBus m_bus;
    std::unique_ptr<QDBusConnection> m_connection;
    std::unique_ptr<QDBusConnection> m_portalConnection;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<Portal> m_portal;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::AppearanceTest, QGuiApplication)
#include "AppearanceTest.moc"
