// SPDX-License-Identifier: MIT
#include "BusName.h"
#include "BusTypes.h"
#include "Library.h"
#include "MprisObject.h"
#include "PlayerOnBus.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusError>
#include <QSocketNotifier>
#include <QTextStream>

#include <csignal>
#include <memory>
#include <optional>
#include <sys/signalfd.h>
#include <vector>

namespace {

using namespace tunedeck::demo;
using namespace Qt::StringLiterals;

struct Options {
    QString name;
    QStringList furtherNames;
    quint32 seed;
    qsizetype track;
    bool plays;
    bool replaces;
    QStringList lines;
};

int fail(const QString &reason)
{
    QTextStream(stderr) << reason << Qt::endl;
    return EXIT_FAILURE;
}

QString lengthText(const Track &track)
{
    if (!track.length) {
        return u"live"_s;
    }
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(*track.length).count();
    return u"%1:%2"_s.arg(seconds / 60).arg(seconds % 60, 2, 10, QChar(u'0'));
}

int printLibrary()
{
    QTextStream out(stdout);
    const QList<Track> tracks = library();
    for (qsizetype number = 0; number < tracks.size(); ++number) {
        const Track &track = tracks.at(number);
        out << number << '\t' << lengthText(track) << '\t' << track.title << '\t' << track.artists.join(u", "_s) << '\t'
            << track.album << '\t' << track.url << '\n';
    }
    return EXIT_SUCCESS;
}

/// Sends a script line to the demo player running under `name`.
int tell(const QString &name, const QString &line)
{
    // Long enough for a loaded machine; a frozen player must not hold its script for the usual 25 s.
    constexpr int deadline = 5'000;
    auto call = QDBusMessage::createMethodCall(BusName::of(name), QString::fromLatin1(MprisObject::path),
        QString::fromLatin1(MprisObject::controlInterface), u"Script"_s);
    call.setAutoStartService(false);
    call << line;
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, deadline);
    return reply.type() == QDBusMessage::ReplyMessage ? EXIT_SUCCESS : fail(reply.errorMessage());
}

/// Returns a descriptor that reports SIGTERM and SIGINT. Call it before the first thread starts, which would otherwise
/// get them.
int openTerminationSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    return signalfd(-1, &signals, SFD_CLOEXEC);
}

/// Players in this process, each on a connection of its own.
using Players = std::vector<std::unique_ptr<PlayerOnBus>>;

/// Lets a player of `options` with this name appear. Returns the reason if it cannot.
std::optional<QString> addPlayer(
    Players &players, const QDBusConnection &connection, const QString &name, const Options &options)
{
    if (!connection.isConnected()) {
        return connection.lastError().message();
    }
    auto player = std::make_unique<PlayerOnBus>(connection, name, options.seed);
    // Queued, so that the answer to Quit is still sent.
    QObject::connect(player.get(), &PlayerOnBus::quitRequested, QCoreApplication::instance(), &QCoreApplication::quit,
        Qt::QueuedConnection);
    const bool isFirst = players.empty();
    const std::optional<QString> error = player->appear({.track = options.track,
        .plays = isFirst && options.plays,
        .lines = isFirst ? options.lines : QStringList(),
        .replaces = options.replaces});
    players.push_back(std::move(player));
    return error;
}

int run(const Options &options, int terminationSignals)
{
    registerBusTypes();
    auto *const application = QCoreApplication::instance();
    const QSocketNotifier notifier(terminationSignals, QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, application, &QCoreApplication::quit);
    QDBusConnection connection = QDBusConnection::sessionBus();
    // A player whose bus has ended cannot be reached, not even to end it.
    connection.connect({}, u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s, u"Disconnected"_s,
        application, SLOT(quit()));

    Players players;
    if (const auto error = addPlayer(players, connection, options.name, options)) {
        return fail(*error);
    }
    for (const QString &name : options.furtherNames) {
        const QDBusConnection further = QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
        if (const auto error = addPlayer(players, further, name, options)) {
            return fail(*error);
        }
    }
    QTextStream(stdout) << "ready" << Qt::endl;
    const int result = QCoreApplication::exec();
    for (const std::unique_ptr<PlayerOnBus> &player : players) {
        player->leave();
    }
    return result;
}

} // namespace

int main(int argc, char *argv[])
{
    const int terminationSignals = openTerminationSignals();
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"tunedeck-demo-player"_s);

    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"A music player for the desktop's remote controls (MPRIS2), without sound, that misbehaves on request.\n\n"
        "Lines for --do and --tell, and for the method Script of org.tunedeck.DemoPlayer:\n"_s
        + Script::explanation());
    parser.addHelpOption();
    const QCommandLineOption name(
        u"name"_s, u"The bus name, after \"org.mpris.MediaPlayer2.\"."_s, u"NAME"_s, u"tunedeckdemo"_s);
    const QCommandLineOption also(u"also"_s,
        u"Adds a player called NAME on a connection of its own; may be repeated. It does not play, and --do does not "
        "reach it; --tell does, by --name."_s,
        u"NAME"_s);
    const QCommandLineOption replace(u"replace"_s, u"Takes the name from the demo player that has it."_s);
    const QCommandLineOption play(u"play"_s, u"Plays at once."_s);
    const QCommandLineOption track(u"track"_s, u"Starts at track N of the library."_s, u"N"_s, u"0"_s);
    const QCommandLineOption seed(u"seed"_s, u"Decides the order of shuffling."_s, u"N"_s, u"1"_s);
    const QCommandLineOption line(u"do"_s, u"Carries out LINE before the start; may be repeated."_s, u"LINE"_s);
    const QCommandLineOption list(u"list"_s, u"Prints the library."_s);
    const QCommandLineOption tellLine(u"tell"_s, u"Sends LINE to the running demo player."_s, u"LINE"_s);
    parser.addOptions({name, also, replace, play, track, seed, line, list, tellLine});
    parser.process(application);

    if (!parser.positionalArguments().isEmpty()) {
        return fail(u"Unexpected argument \"%1\""_s.arg(parser.positionalArguments().constFirst()));
    }
    if (parser.isSet(list)) {
        return printLibrary();
    }
    if (parser.isSet(tellLine)) {
        return tell(parser.value(name), parser.value(tellLine));
    }
    bool isSeed = false;
    bool isTrack = false;
    const Options options{parser.value(name), parser.values(also), parser.value(seed).toUInt(&isSeed),
        parser.value(track).toLongLong(&isTrack), parser.isSet(play), parser.isSet(replace), parser.values(line)};
    if (!isSeed || !isTrack || options.track < 0 || options.track >= library().size()) {
        return fail(u"--seed takes a whole number, --track the number of a track (see --list)"_s);
    }
    return run(options, terminationSignals);
}
