// SPDX-License-Identifier: MIT
#include "app/ApplicationInstance.h"
#include "app/DesktopAction.h"
#include "app/Program.h"
#include "app/SessionDisplays.h"
#include "app/TerminationSignals.h"
#include "app/installTranslators.h"
#include "app/restartInPlace.h"
#include "platform/ActivationToken.h"
#include "platform/BundleInfo.h"
#include "platform/LogLimit.h"
#include "platform/UserDefaults.h"
#include "platform/bus/SessionBus.h"
#include "platform/fontConfiguration.h"
#include "x11/WithoutSharedMemory.h"
#include "x11/activateOnX11.h"
#include "x11/expectedScale.h"

#include <QApplication>
#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QGuiApplication>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <malloc.h>
#include <memory>
#include <optional>
#include <vector>

namespace {
using namespace tunedeck;

/// An exit status of the event loop that never becomes the program's.
constexpr int restartStatus = 2;

void setUpNames()
{
    QApplication::setApplicationName(bundleInfo(u"CFBundleName").value_or(QString()));
    QApplication::setApplicationVersion(bundleInfo(u"CFBundleShortVersionString").value_or(QString()));
    QApplication::setDesktopFileName(applicationId.toString());
}

/// Prints a message for a user who started the program from a command line.
void say(const QString &message)
{
    std::fputs(qPrintable(QStringLiteral("tunedeck: %1\n").arg(message)), stderr);
}

/// The start that the command line asks for.
struct Request {
    std::optional<DesktopAction> action;
    Program::StartedBy startedBy = Program::StartedBy::User;
};

Request parseCommandLine(const QCoreApplication &application)
{
    const QCommandLineOption autostartOption(QStringLiteral("autostart"),
        QCoreApplication::translate("main",
            "For sessions that start Tunedeck: opens the window without the keyboard focus, and only while a player is "
            "there if the preferences say so.",
            "For --help"));
    const QCommandLineOption actionOption(QStringLiteral("action"),
        QCoreApplication::translate("main",
            "Carries out <name> in the running Tunedeck, or starts Tunedeck for it. <name> is one of: %1.",
            "For --help; <name> stays as it is, %1 is a list of names")
            .arg(desktopActionNames().join(QStringLiteral(", "))),
        QStringLiteral("name"));
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QCoreApplication::translate("main", "A small window that controls the running music player", "For --help"));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({actionOption, autostartOption});
    parser.process(application);
    const auto startedBy = parser.isSet(autostartOption) ? Program::StartedBy::Session : Program::StartedBy::User;
    if (!parser.isSet(actionOption)) {
        return {std::nullopt, startedBy};
    }
    const std::optional<DesktopAction> action = desktopActionNamed(parser.value(actionOption));
    if (!action) {
        say(QCoreApplication::translate("main", "unknown action; see --help", "On the command line"));
        std::exit(EXIT_FAILURE);
    }
    return {action, startedBy};
}

int askFirst(ApplicationInstance &instance, std::optional<DesktopAction> action, const ActivationToken &given)
{
    // A user who starts the program in a terminal wants to see the window now.
    const bool wantsWindow = !action || showsWindow(*action);
    const ActivationToken token = given == ActivationToken() && wantsWindow ? tokenOfNowOnX11() : given;
    instance.askFirst(action, token, [&token](const FirstsAnswer &answer) {
        if (!answer.isGiven) {
            endStartupNotificationOnX11(token);
            say(QCoreApplication::translate("main", "already running, but not responding", "On the command line"));
        } else if (!answer.refusal.isEmpty()) {
            say(answer.refusal);
        }
        QCoreApplication::exit(answer.isGiven && answer.refusal.isEmpty() ? EXIT_SUCCESS : EXIT_FAILURE);
    });
    return QApplication::exec();
}

/// Passes the user's wish to run through XWayland to Qt as an argument, because the programs that this one starts would
/// inherit a variable. Qt falls back to Wayland if XWayland does not answer. A platform on the command line comes
/// later in the list and wins.
std::vector<char *> argumentsWithPlatform(int argc, char *argv[], bool isXWaylandWanted)
{
    static char option[] = "-platform";
    static char platforms[] = "xcb;wayland";
    std::vector<char *> arguments(argv, argv + argc);
    if (isXWaylandWanted) {
        arguments.insert(arguments.begin() + std::min(argc, 1), {option, platforms});
    }
    arguments.push_back(nullptr);
    return arguments;
}

/// After a large message from the bus glibc would keep tens of megabytes that it took for it, unless it is given a
/// limit, in bytes.
void giveMemoryBack()
{
    constexpr int large = 1'048'576;
    ::mallopt(M_MMAP_THRESHOLD, large);
}

/// Destroys the application, except on Wayland: Qt 6.4 sometimes waits there for ever for a thread of its own. The end
/// of the process then closes the connection to the compositor.
struct ApplicationDeleter {
    void operator()(QApplication *application) const
    {
        if (!QGuiApplication::platformName().startsWith(u"wayland")) {
            delete application;
        }
    }
};

using QtApplication = std::unique_ptr<QApplication, ApplicationDeleter>;

/// `argc` must live as long as the application. `scale` is the one that the window is expected to have.
QtApplication makeQtApplication(int &argc, char *argv[], std::optional<double> scale)
{
    const WithoutSharedMemory whileQtConnects(scale);
    return QtApplication(new QApplication(argc, argv));
}

int run(int argc, char *argv[], bool isForX11)
{
    const ActivationToken token = ActivationToken::takeFromEnvironment();
    EarlyX11Connection server = isForX11 ? connectToX11Early() : nullptr;
    const std::optional<double> scale = server ? std::optional(expectedScale(*server)) : std::nullopt;
    // Listing the installed fonts takes long, with new ones seconds. Meanwhile Qt connects to the X server. The thread
    // starts after the questions above: where the X server shares a processor with it, they would wait for it.
    // Fontconfig reads numbers as the locale says, and Qt's setting it must not change that halfway.
    std::setlocale(LC_ALL, "");
    // Static, so that the process ends after the thread, also where the command line's parser ends it.
    static std::future<FontConfiguration> listed = std::async(std::launch::async, &readFontConfiguration);
    const QtApplication qtApplication = makeQtApplication(argc, argv, scale);
    server.reset();
    setUpNames();
    installTranslators(*qtApplication);
    const auto [action, startedBy] = parseCommandLine(*qtApplication);

    SessionBus sessionBus;
    const QDBusConnection &bus = sessionBus.connection();
    if (!bus.isConnected()) {
        say(QCoreApplication::translate(
            "main", "there is no session bus, so no music player can be reached", "On the command line"));
    }
    ApplicationInstance instance(bus);
    if (!instance.isFirst()) {
        if (startedBy == Program::StartedBy::Session && !action) {
            return EXIT_SUCCESS;
        }
        return askFirst(instance, action, token);
    }
    if (action) {
        instance.requestAction(*action, token, [](const QString &refusal) {
            if (!refusal.isEmpty()) {
                say(refusal);
            }
        });
    }

    // A session ends the program as the user does, who finds the window where it was.
    const TerminationSignals terminationSignals;
    QObject::connect(
        &terminationSignals, &TerminationSignals::received, qApp, [] { QCoreApplication::exit(EXIT_SUCCESS); });
    // The window measures text.
    useFontConfiguration(listed.get());
    const Program program(sessionBus, instance, token, startedBy);
    QObject::connect(&program, &Program::restartRequested, qApp, [] { QCoreApplication::exit(restartStatus); });
    return QApplication::exec();
}
} // namespace

int main(int argc, char *argv[])
{
    giveMemoryBack();
    LogLimit::install();
    const SessionDisplays displays = SessionDisplays::fromEnvironment();
    const bool isXWaylandWanted =
        displays.canChooseXWayland() && UserDefaults::storedBool(SettingsKey::startThroughXWayland);
    std::vector<char *> arguments = argumentsWithPlatform(argc, argv, isXWaylandWanted);
    const int status =
        run(static_cast<int>(arguments.size()) - 1, arguments.data(), displays.leadToX11(isXWaylandWanted));
    if (status != restartStatus) {
        return status;
    }
    restartInPlace();
    return EXIT_FAILURE;
}
