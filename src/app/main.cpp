// SPDX-License-Identifier: MIT
#include "Appearance.h"
#include "Application.h"
#include "ApplicationInstance.h"
#include "ApplicationLauncher.h"
#include "BundleInfo.h"
#include "DesktopAction.h"
#include "DockMenu.h"
#include "MprisMusicApplication.h"
#include "PlayersOnTheBus.h"
#include "SessionBus.h"
#include "SoftwareUpdater.h"
#include "UserDefaults.h"
#include "ViewController.h"
#include "WindowActivation.h"
#include "WindowController.h"
#include "installTranslators.h"

#include <QApplication>
#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QDBusConnection>
#include <QFont>
#include <QFontInfo>
#include <QTimer>
#include <QWindow>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <thread>

namespace {
using namespace std::chrono_literals;
using namespace tunedeck;

/// The window opens with the track on it, unless the players take longer than anyone should wait for a window.
constexpr auto longestWaitForMusic = 100ms;

void setUpNames()
{
    QApplication::setApplicationName(bundleInfo(u"CFBundleName").value_or(QString()));
    QApplication::setApplicationVersion(bundleInfo(u"CFBundleShortVersionString").value_or(QString()));
    QApplication::setDesktopFileName(applicationId.toString());
}

/// The action that the program is started for, if it is for one.
std::optional<DesktopAction> parseCommandLine(const QCoreApplication &application)
{
    const QCommandLineOption actionOption(QStringLiteral("action"),
        QCoreApplication::translate("main",
            "Carries out <name> in the Tunedeck that runs, or starts it for that. It is one of: %1.",
            "For --help; <name> stays as it is, %1 is a list of names")
            .arg(desktopActionNames().join(QStringLiteral(", "))),
        QStringLiteral("name"));
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QCoreApplication::translate("main", "A small window that controls the music player that runs", "For --help"));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption(actionOption);
    parser.process(application);
    if (!parser.isSet(actionOption)) {
        return std::nullopt;
    }
    const std::optional<DesktopAction> action = desktopActionNamed(parser.value(actionOption));
    if (!action) {
        std::fputs("tunedeck: there is no such action; --help tells which there are\n", stderr);
        std::exit(EXIT_FAILURE);
    }
    return action;
}

int askFirst(ApplicationInstance &instance, std::optional<DesktopAction> action)
{
    instance.askFirst(action, [](bool answered) {
        if (!answered) {
            std::fputs("tunedeck: it runs already, but does not answer\n", stderr);
        }
        QCoreApplication::exit(answered ? 0 : 1);
    });
    return QApplication::exec();
}

/// The keyboard stays with whoever has it.
void showWithoutActivating(Application &application)
{
    // A widget's attribute counts when its native window is made, and this one has been made.
    constexpr const char *property = "_q_showWithoutActivating";
    QWindow &window = *application.windowController().window().windowHandle();
    window.setProperty(property, true);
    application.showMainWindow();
    window.setProperty(property, QVariant());
}

std::unique_ptr<DockMenu> serveDockMenu(
    const QDBusConnection &bus, Application &application, const UserDefaults &defaults)
{
    auto served =
        std::make_unique<DockMenu>(bus, [&application] { return application.delegate().applicationDockMenu(); });
    DockMenu *menu = served.get();
    const ViewController &viewController = application.viewController();
    const MusicConnector &musicConnector = application.musicConnector();
    QObject::connect(&viewController, &ViewController::currentTrackInfoChanged, menu, &DockMenu::update);
    QObject::connect(&viewController, &ViewController::playPauseTitleChanged, menu, &DockMenu::update);
    QObject::connect(&musicConnector, &MusicConnector::isMusicAppRunningChanged, menu, &DockMenu::update);
    QObject::connect(&musicConnector, &MusicConnector::feedTypeChanged, menu, &DockMenu::update);
    QObject::connect(&defaults, &UserDefaults::valueChanged, menu, &DockMenu::update);
    return served;
}
} // namespace

int main(int argc, char *argv[])
{
    QApplication qtApplication(argc, argv);
    setUpNames();
    installTranslators(qtApplication);
    const std::optional<DesktopAction> action = parseCommandLine(qtApplication);
    // Which fonts there are takes long to find out; meanwhile the bus and the player are asked.
    const std::jthread fonts([] { QFontInfo(QFont()).family(); });

    SessionBus sessionBus;
    const QDBusConnection &bus = sessionBus.connection();
    if (!bus.isConnected()) {
        std::fputs("tunedeck: there is no session bus, so no music player can be reached\n", stderr);
    }
    ApplicationInstance instance(bus);
    if (!instance.isFirst()) {
        return askFirst(instance, action);
    }
    if (action) {
        instance.requestAction(*action);
    }

    UserDefaults defaults;
    Appearance appearance(defaults, bus);
    const WindowActivation windowActivation;
    ApplicationLauncher launcher;
    MprisMusicApplication music(bus, defaults, launcher);
    PlayersOnTheBus players(music);
    SoftwareUpdater updater(bus);
    QObject::connect(&launcher, &ApplicationLauncher::failed, &QApplication::beep);
    QObject::connect(
        &windowActivation, &WindowActivation::windowDidBecomeKey, &music, &MprisMusicApplication::sampleAnew);

    std::unique_ptr<Application> application;
    std::unique_ptr<DockMenu> dockMenu;
    const auto start = [&] {
        if (application) {
            return;
        }
        application = std::make_unique<Application>(
            Application::Environment{music, defaults, appearance, windowActivation, players, updater});
        QObject::connect(&instance, &ApplicationInstance::activated, application.get(), &Application::reopen);
        QObject::connect(&instance, &ApplicationInstance::actionRequested, &application->delegate(),
            [delegate = &application->delegate()](DesktopAction requested) { perform(requested, *delegate); });
        if (instance.isAskedForActionsAlone()) {
            showWithoutActivating(*application);
        } else {
            application->showMainWindow();
        }
        // Nobody waits for it to see the window.
        QMetaObject::invokeMethod(
            application.get(),
            [&] {
                dockMenu.reset();
                dockMenu = serveDockMenu(bus, *application, defaults);
            },
            Qt::QueuedConnection);
        if (music.isReady()) {
            instance.tellActions();
        }
    };
    QObject::connect(&sessionBus, &SessionBus::changed, &music, [&] {
        instance.setBus(bus);
        appearance.setBus(bus);
        music.setBus(bus);
        dockMenu.reset();
        if (application) {
            dockMenu = serveDockMenu(bus, *application, defaults);
        }
    });
    QObject::connect(&music, &MprisMusicApplication::ready, &music, start);
    QObject::connect(&music, &MprisMusicApplication::ready, &instance, &ApplicationInstance::tellActions);
    QTimer::singleShot(music.isReady() ? 0ms : longestWaitForMusic, &music, start);
    return QApplication::exec();
}
