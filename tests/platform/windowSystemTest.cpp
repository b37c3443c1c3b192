// SPDX-License-Identifier: MIT
#include "platform/windowSystem.h"

#include "support/registerTest.h"

#include <QTest>

using namespace tunedeck;

class windowSystemTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theDesktopDecidesWhichIconItsDockShows_data()
    {
        QTest::addColumn<QString>("platform");
        QTest::addColumn<QStringList>("desktops");
        QTest::addColumn<bool>("expected");
        const QString x11 = QStringLiteral("xcb");
        QTest::newRow("Xfce") << x11 << QStringList(QStringLiteral("XFCE")) << true;
        QTest::newRow("no desktop") << x11 << QStringList(QString()) << true;
        QTest::newRow("GNOME") << x11 << QStringList(QStringLiteral("GNOME")) << false;
        QTest::newRow("GNOME of a distribution")
            << x11 << QStringList({QStringLiteral("ubuntu"), QStringLiteral("GNOME")}) << false;
        QTest::newRow("Plasma") << x11 << QStringList(QStringLiteral("KDE")) << false;
        QTest::newRow("in any case") << x11 << QStringList(QStringLiteral("x-cinnamon")) << false;
        QTest::newRow("Wayland") << QStringLiteral("wayland") << QStringList(QStringLiteral("XFCE")) << false;
        QTest::newRow("Wayland with OpenGL") << QStringLiteral("wayland-egl") << QStringList(QString()) << false;
    }

    void theDesktopDecidesWhichIconItsDockShows()
    {
        QFETCH(const QString, platform);
        QFETCH(const QStringList, desktops);
        QTEST(showsWindowIcons(platform, desktops), "expected");
    }
};

TUNEDECK_TEST(windowSystemTest, QGuiApplication)
#include "windowSystemTest.moc"
