// SPDX-License-Identifier: MIT
// Loads the playlists of the player on the session bus into the whole window, opens the drawer and its picker and
// chooses the last playlist. Says of each step how long the event loop was busy at a stretch at most, in milliseconds,
// and then how much memory it has to itself, in kilobytes.

#include "app/Application.h"
#include "app/SoftwareUpdater.h"
#include "drawer/PlaylistView.h"
#include "drawer/PlaylistViewController.h"
#include "music/mpris/MprisMusicApplication.h"
#include "platform/Appearance.h"
#include "platform/ApplicationLauncher.h"
#include "platform/DesktopEntries.h"
#include "platform/UserDefaults.h"
#include "platform/WindowActivation.h"
#include "player/ViewController.h"
#include "portal/DesktopIntegration.h"
#include "skin/views/MetalPopupButton.h"
#include "window/WindowController.h"

#include <QApplication>
#include <QByteArrayList>
#include <QDBusConnection>
#include <QElapsedTimer>
#include <QFile>
#include <QListView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <cstdio>

using namespace tunedeck;

namespace {

/// Until what a step brings about has come about.
constexpr int settling = 400; // milliseconds
constexpr int longestLoad = 10'000; // milliseconds

template <typename Step> void watch(const char *name, Step step)
{
    QElapsedTimer sinceLastTurn;
    double longest = 0;
    QTimer everyTurn;
    QObject::connect(&everyTurn, &QTimer::timeout, &everyTurn, [&] {
        longest = std::max(longest, static_cast<double>(sinceLastTurn.nsecsElapsed()) / 1e6);
        sinceLastTurn.restart();
    });
    everyTurn.start(1);
    sinceLastTurn.start();
    step();
    QTest::qWait(settling);
    std::printf("%s: %.1f\n", name, longest);
}

/// Kilobytes.
qint64 privateMemory()
{
    QFile file(QStringLiteral("/proc/self/smaps_rollup"));
    qint64 sum = 0;
    if (file.open(QFile::ReadOnly)) {
        const QByteArrayList lines = file.readAll().split('\n');
        for (const QByteArray &line : lines) {
            sum += line.startsWith("Private_") ? line.simplified().split(' ').at(1).toLongLong() : 0;
        }
    }
    return sum;
}

} // namespace

int main(int argc, char *argv[])
{
    const QApplication qtApplication(argc, argv);
    const QTemporaryDir folder;
    const QDBusConnection bus = QDBusConnection::sessionBus();
    UserDefaults defaults(folder.filePath(QStringLiteral("settings.conf")));
    Appearance appearance(defaults, bus);
    const WindowActivation windowActivation;
    ApplicationLauncher launcher;
    DesktopEntries desktopEntries;
    MprisMusicApplication music(bus, defaults, launcher);
    SoftwareUpdater updater(bus, defaults);
    if (!QTest::qWaitFor([&] { return music.isReady(); })) {
        return 1;
    }
    DesktopIntegration desktopIntegration(defaults, {});
    Application application({music, defaults, appearance, windowActivation, music.followablePlayers(), desktopEntries,
        updater, desktopIntegration});
    application.showMainWindow();
    MusicConnector &connector = application.musicConnector();
    const auto isLoaded = [&] { return connector.selectedPlaylist().has_value(); };
    if (!QTest::qWaitFor(isLoaded, longestLoad)) {
        return 1;
    }
    QTest::qWait(settling);

    watch("loading", [&] {
        connector.setSelectedPlaylist(std::nullopt);
        connector.loadPlaylists();
        (void)QTest::qWaitFor(isLoaded, longestLoad);
    });
    watch("opening the drawer", [&] { application.viewController().toggleDrawer(); });
    auto *picker = application.windowController().window().findChild<MetalPopupButton *>();
    watch("opening the picker", [&] { picker->showPopup(); });
    watch("typing ahead", [&] { QTest::keyClicks(picker->view(), QStringLiteral("List 5")); });
    watch("going to the end", [&] { QTest::keyClick(picker->view(), Qt::Key_End); });
    watch("choosing", [&] { QTest::keyClick(picker->view(), Qt::Key_Return); });
    std::printf("playlists: %d\nchosen: %d\nmemory: %lld\n", picker->count(), picker->currentIndex(),
        static_cast<long long>(privateMemory()));
    return 0;
}
