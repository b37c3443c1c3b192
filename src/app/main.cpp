// SPDX-License-Identifier: MIT
#include "Appearance.h"
#include "Application.h"
#include "ApplicationInstance.h"
#include "ApplicationLauncher.h"
#include "BundleInfo.h"
#include "MprisMusicApplication.h"
#include "UserDefaults.h"
#include "WindowActivation.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDBusConnection>
#include <QFont>
#include <QFontInfo>
#include <QTimer>
#include <QWindow>

#include <chrono>
#include <cstdio>
#include <memory>
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

void parseCommandLine(const QCoreApplication &application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QCoreApplication::translate("main", "A small window that controls the music player that runs", "For --help"));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.process(application);
}

int activateFirst(ApplicationInstance &instance)
{
    instance.activateFirst([](bool answered) {
        if (!answered) {
            std::fputs("tunedeck: it runs already, but does not answer\n", stderr);
        }
        QCoreApplication::exit(answered ? 0 : 1);
    });
    return QApplication::exec();
}
} // namespace

int main(int argc, char *argv[])
{
    const QApplication qtApplication(argc, argv);
    setUpNames();
    parseCommandLine(qtApplication);
    // Which fonts there are takes long to find out; meanwhile the bus and the player are asked.
    const std::jthread fonts([] { QFontInfo(QFont()).family(); });

    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        std::fputs("tunedeck: there is no session bus, so no music player can be reached\n", stderr);
    }
    ApplicationInstance instance(bus);
    if (!instance.isFirst()) {
        return activateFirst(instance);
    }

    UserDefaults defaults;
    Appearance appearance(defaults, bus);
    const WindowActivation windowActivation;
    ApplicationLauncher launcher;
    MprisMusicApplication music(bus, defaults, launcher);
    QObject::connect(&launcher, &ApplicationLauncher::failed, &QApplication::beep);
    QObject::connect(
        &windowActivation, &WindowActivation::windowDidBecomeKey, &music, &MprisMusicApplication::sampleAnew);

    std::unique_ptr<Application> application;
    const auto start = [&] {
        if (application) {
            return;
        }
        application =
            std::make_unique<Application>(Application::Environment{music, defaults, appearance, windowActivation});
        QObject::connect(&instance, &ApplicationInstance::activated, application.get(), &Application::reopen);
        application->showMainWindow();
    };
    QObject::connect(&music, &MprisMusicApplication::ready, &music, start);
    QTimer::singleShot(music.isReady() ? 0ms : longestWaitForMusic, &music, start);
    return QApplication::exec();
}
