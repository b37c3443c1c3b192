// SPDX-License-Identifier: MIT
#include "app/ApplicationInstance.h"
#include "app/DesktopAction.h"
#include "app/Program.h"
#include "app/SessionDisplays.h"
#include "app/installTranslators.h"
#include "app/restartInPlace.h"
#include "platform/ActivationToken.h"
#include "platform/BundleInfo.h"
#include "platform/LogLimit.h"
#include "platform/SessionBus.h"
#include "platform/UserDefaults.h"
#include "x11/activateOnX11.h"

#include <QApplication>
#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QFont>
#include <QFontInfo>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <optional>
#include <thread>
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

/// The action that the program was started for, if any.
std::optional<DesktopAction> parseCommandLine(const QCoreApplication &application)
{
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
    parser.addOption(actionOption);
    parser.process(application);
    if (!parser.isSet(actionOption)) {
        return std::nullopt;
    }
    const std::optional<DesktopAction> action = desktopActionNamed(parser.value(actionOption));
    if (!action) {
        say(QCoreApplication::translate("main", "unknown action; see --help", "On the command line"));
        std::exit(EXIT_FAILURE);
    }
    return action;
}

int askFirst(ApplicationInstance &instance, std::optional<DesktopAction> action, const ActivationToken &given)
{
    // A user who starts the program in a terminal wants to see the window now.
    const ActivationToken token = given == ActivationToken() && !action ? tokenOfNowOnX11() : given;
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
std::vector<char *> argumentsWithPlatform(int argc, char *argv[])
{
    static char option[] = "-platform";
    static char platforms[] = "xcb;wayland";
    std::vector<char *> arguments(argv, argv + argc);
    if (SessionDisplays::fromEnvironment().canChooseXWayland()
        && UserDefaults::storedBool(SettingsKey::startThroughXWayland)) {
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

int run(int argc, char *argv[])
{
    const ActivationToken token = ActivationToken::takeFromEnvironment();
    QApplication qtApplication(argc, argv);
    setUpNames();
    installTranslators(qtApplication);
    const std::optional<DesktopAction> action = parseCommandLine(qtApplication);
    // Finding the installed fonts takes long. Meanwhile this thread talks to the bus and the players.
    const std::jthread fonts([] { QFontInfo(QFont()).family(); });

    SessionBus sessionBus;
    const QDBusConnection &bus = sessionBus.connection();
    if (!bus.isConnected()) {
        say(QCoreApplication::translate(
            "main", "there is no session bus, so no music player can be reached", "On the command line"));
    }
    ApplicationInstance instance(bus);
    if (!instance.isFirst()) {
        return askFirst(instance, action, token);
    }
    if (action) {
        instance.requestAction(*action, token, [](const QString &refusal) {
            if (!refusal.isEmpty()) {
                say(refusal);
            }
        });
    }

    const Program program(sessionBus, instance, token);
    QObject::connect(&program, &Program::restartRequested, qApp, [] { QCoreApplication::exit(restartStatus); });
    return QApplication::exec();
}
} // namespace

int main(int argc, char *argv[])
{
    giveMemoryBack();
    LogLimit::install();
    std::vector<char *> arguments = argumentsWithPlatform(argc, argv);
    const int status = run(static_cast<int>(arguments.size()) - 1, arguments.data());
    if (status != restartStatus) {
        return status;
    }
    restartInPlace();
    return EXIT_FAILURE;
}
