// SPDX-License-Identifier: MIT
#include "app/ApplicationInstance.h"
#include "app/DesktopAction.h"
#include "app/Program.h"
#include "app/SessionDisplays.h"
#include "app/installTranslators.h"
#include "app/restartInPlace.h"
#include "platform/ActivationToken.h"
#include "platform/BundleInfo.h"
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
#include <optional>
#include <thread>
#include <vector>

namespace {
using namespace tunedeck;

/// Of the event loop; never that of the program.
constexpr int restartStatus = 2;

void setUpNames()
{
    QApplication::setApplicationName(bundleInfo(u"CFBundleName").value_or(QString()));
    QApplication::setApplicationVersion(bundleInfo(u"CFBundleShortVersionString").value_or(QString()));
    QApplication::setDesktopFileName(applicationId.toString());
}

/// For who started the program from a command line.
void say(const QString &message)
{
    std::fputs(qPrintable(QStringLiteral("tunedeck: %1\n").arg(message)), stderr);
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
        say(QCoreApplication::translate(
            "main", "there is no such action; --help tells which there are", "On the command line"));
        std::exit(EXIT_FAILURE);
    }
    return action;
}

int askFirst(ApplicationInstance &instance, std::optional<DesktopAction> action, const ActivationToken &token)
{
    instance.askFirst(action, token, [&token](bool answered) {
        if (!answered) {
            endStartupNotificationOnX11(token);
            say(QCoreApplication::translate("main", "it runs already, but does not answer", "On the command line"));
        }
        QCoreApplication::exit(answered ? 0 : 1);
    });
    return QApplication::exec();
}

/// What the user asked for, that it may run through XWayland, is told to the toolkit in an argument: a variable would
/// be inherited by the programs that are started here. Where XWayland does not answer, Wayland is taken; and what the
/// command line says comes later, and counts.
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

int run(int argc, char *argv[])
{
    const ActivationToken token = ActivationToken::takeFromEnvironment();
    QApplication qtApplication(argc, argv);
    setUpNames();
    installTranslators(qtApplication);
    const std::optional<DesktopAction> action = parseCommandLine(qtApplication);
    // Which fonts there are takes long to find out; meanwhile the bus and the player are asked.
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
        instance.requestAction(*action);
    }

    const Program program(sessionBus, instance, token);
    QObject::connect(&program, &Program::restartRequested, qApp, [] { QCoreApplication::exit(restartStatus); });
    return QApplication::exec();
}
} // namespace

int main(int argc, char *argv[])
{
    std::vector<char *> arguments = argumentsWithPlatform(argc, argv);
    const int status = run(static_cast<int>(arguments.size()) - 1, arguments.data());
    if (status != restartStatus) {
        return status;
    }
    restartInPlace();
    return EXIT_FAILURE;
}
