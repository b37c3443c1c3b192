// SPDX-License-Identifier: MIT
#include "app/SessionDisplays.h"
#include "support/registerTest.h"

#include <QTest>

namespace tunedeck {

namespace {
const QString xcb = QStringLiteral("xcb");
const QString wayland = QStringLiteral("wayland");
} // namespace

class SessionDisplaysTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        qputenv("WAYLAND_DISPLAY", "wayland-0");
        qputenv("DISPLAY", ":0");
        qunsetenv("QT_QPA_PLATFORM");
    }

    void xWaylandIsWhatBothDisplaysTogetherAre()
    {
        QVERIFY(SessionDisplays::fromEnvironment().canChooseXWayland());
        qunsetenv("WAYLAND_DISPLAY");
        QVERIFY(!SessionDisplays::fromEnvironment().canChooseXWayland());
        qputenv("WAYLAND_DISPLAY", "wayland-0");
        qunsetenv("DISPLAY");
        QVERIFY(!SessionDisplays::fromEnvironment().canChooseXWayland());
    }

    void anEmptyVariableIsNoDisplay()
    {
        qputenv("DISPLAY", "");
        QVERIFY(!SessionDisplays::fromEnvironment().canChooseXWayland());
    }

    void whatTheUserSaysForAllProgramsIsNotOverridden()
    {
        qputenv("QT_QPA_PLATFORM", "wayland");
        const SessionDisplays displays = SessionDisplays::fromEnvironment();
        QVERIFY(!displays.canChooseXWayland());
        QVERIFY(!displays.offersXWayland(wayland, false));
        QVERIFY(!displays.offersXWayland(wayland, true));
    }

    void onWaylandXWaylandIsOffered()
    {
        const SessionDisplays displays = SessionDisplays::fromEnvironment();
        QVERIFY(displays.offersXWayland(wayland, false));
        QVERIFY(displays.offersXWayland(QStringLiteral("wayland-egl"), false));
    }

    void throughXWaylandTheWayBackIsOffered() { QVERIFY(SessionDisplays::fromEnvironment().offersXWayland(xcb, true)); }

    void whereXWaylandDidNotAnswerItIsOfferedStill()
    {
        QVERIFY(SessionDisplays::fromEnvironment().offersXWayland(wayland, true));
    }

    void whoIsOnX11WithoutHavingWantedItIsOfferedNothing()
    {
        QVERIFY(!SessionDisplays::fromEnvironment().offersXWayland(xcb, false));
    }

    void withoutAWaylandDisplayOneOfX11LeadsToX11()
    {
        QVERIFY(!SessionDisplays::fromEnvironment().leadToX11(false));
        qunsetenv("WAYLAND_DISPLAY");
        QVERIFY(SessionDisplays::fromEnvironment().leadToX11(false));
        qunsetenv("DISPLAY");
        QVERIFY(!SessionDisplays::fromEnvironment().leadToX11(false));
    }

    void theWishForXWaylandLeadsToX11() { QVERIFY(SessionDisplays::fromEnvironment().leadToX11(true)); }

    void aChosenPlatformLeadsToX11IfItComesFirst_data()
    {
        QTest::addColumn<QByteArray>("platform");
        QTest::addColumn<bool>("leadsToX11");
        QTest::newRow("xcb") << QByteArray("xcb") << true;
        QTest::newRow("xcb first") << QByteArray("xcb;wayland") << true;
        QTest::newRow("Wayland first") << QByteArray("wayland;xcb") << false;
        QTest::newRow("no display") << QByteArray("offscreen") << false;
    }
    void aChosenPlatformLeadsToX11IfItComesFirst()
    {
        QFETCH(const QByteArray, platform);
        QFETCH(const bool, leadsToX11);
        qputenv("QT_QPA_PLATFORM", platform);
        QCOMPARE(SessionDisplays::fromEnvironment().leadToX11(false), leadsToX11);
        qunsetenv("WAYLAND_DISPLAY");
        QCOMPARE(SessionDisplays::fromEnvironment().leadToX11(false), leadsToX11);
    }

    void onX11AloneNothingIsOffered()
    {
        qunsetenv("WAYLAND_DISPLAY");
        QVERIFY(!SessionDisplays::fromEnvironment().offersXWayland(xcb, true));
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::SessionDisplaysTest, QCoreApplication)
#include "SessionDisplaysTest.moc"
