// SPDX-License-Identifier: MIT
#include "above/aboveRoadOfSession.h"

#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QByteArray>
#include <QDBusConnection>
#include <QDir>
#include <QFile>
#include <QLocalServer>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace tunedeck;

namespace {
/// `variables` are pairs of a name and a value, separated by spaces.
AboveWay wayIn(const QString &variables)
{
    QProcessEnvironment environment;
    const QStringList pairs = variables.split(u' ', Qt::SkipEmptyParts);
    for (const QString &pair : pairs) {
        environment.insert(pair.section(u'=', 0, 0), pair.section(u'=', 1));
    }
    const QDBusConnection bus(QStringLiteral("none"));
    const std::unique_ptr<AboveRoad> road = aboveRoadOfSession(bus, environment);
    return road ? road->way() : AboveWay::None;
}
} // namespace

class aboveRoadOfSessionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void theEnvironmentNamesTheCompositor_data()
    {
        QTest::addColumn<QString>("variables");
        QTest::addColumn<int>("expected");
        QTest::newRow("nothing") << QString() << int(AboveWay::None);
        QTest::newRow("GNOME") << QStringLiteral("XDG_CURRENT_DESKTOP=GNOME") << int(AboveWay::None);
        QTest::newRow("Plasma") << QStringLiteral("XDG_CURRENT_DESKTOP=KDE") << int(AboveWay::KWin);
        QTest::newRow("Plasma of a distribution")
            << QStringLiteral("XDG_CURRENT_DESKTOP=neon:KDE SWAYSOCK=/left/over") << int(AboveWay::KWin);
        QTest::newRow("Sway") << QStringLiteral("XDG_CURRENT_DESKTOP=sway SWAYSOCK=%1/sway") << int(AboveWay::Sway);
        QTest::newRow("no socket") << QStringLiteral("SWAYSOCK=") << int(AboveWay::None);
        QTest::newRow("Sway that is gone") << QStringLiteral("SWAYSOCK=%1/gone") << int(AboveWay::None);
        QTest::newRow("Sway's socket that nobody listens at")
            << QStringLiteral("XDG_CURRENT_DESKTOP=GNOME SWAYSOCK=%1/left") << int(AboveWay::None);
        QTest::newRow("Hyprland") << QStringLiteral("XDG_RUNTIME_DIR=%1 HYPRLAND_INSTANCE_SIGNATURE=0_1")
                                  << int(AboveWay::Hyprland);
        QTest::newRow("Hyprland that is gone")
            << QStringLiteral("XDG_RUNTIME_DIR=%1 HYPRLAND_INSTANCE_SIGNATURE=0_2") << int(AboveWay::None);
        QTest::newRow("Sway, and Hyprland that is gone")
            << QStringLiteral("XDG_RUNTIME_DIR=%1 HYPRLAND_INSTANCE_SIGNATURE=0_2 SWAYSOCK=%1/sway")
            << int(AboveWay::Sway);
        QTest::newRow("no folder") << QStringLiteral("HYPRLAND_INSTANCE_SIGNATURE=0_1") << int(AboveWay::None);
    }

    void theEnvironmentNamesTheCompositor()
    {
        QFETCH(const QString, variables);
        QVERIFY(QDir(m_folder.path()).mkpath(QStringLiteral("hypr/0_1")));
        QLocalServer sway;
        QVERIFY(sway.listen(m_folder.filePath(QStringLiteral("sway"))));
        QLocalServer hyprland;
        QVERIFY(hyprland.listen(m_folder.filePath(QStringLiteral("hypr/0_1/.socket.sock"))));
        QVERIFY(leaveSocket(m_folder.filePath(QStringLiteral("left"))));
        const QString found = variables.contains(u'%') ? variables.arg(m_folder.path()) : variables;
        QTEST(int(wayIn(found)), "expected");
    }

private:
    /// Leaves what a program that was killed leaves. False if that fails.
    static bool leaveSocket(const QString &path)
    {
        QFile::remove(path);
        const QByteArray name = QFile::encodeName(path);
        sockaddr_un address = {.sun_family = AF_UNIX, .sun_path = {}};
        if (size_t(name.size()) >= sizeof address.sun_path) {
            return false;
        }
        std::ranges::copy(name, address.sun_path);
        const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        const bool isBound = ::bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
        ::close(socket);
        return isBound;
    }

    QTemporaryDir m_folder;
};

TUNEDECK_TEST(aboveRoadOfSessionTest, QCoreApplication)
#include "aboveRoadOfSessionTest.moc"
