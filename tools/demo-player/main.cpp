// SPDX-License-Identifier: MIT
#include "BusName.h"
#include "BusTypes.h"
#include "MprisObject.h"
#include "Oddities.h"
#include "Player.h"
#include "Script.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusError>
#include <QSocketNotifier>
#include <QTextStream>
#include <QTimer>

#include <csignal>
#include <sys/signalfd.h>

namespace {

using namespace tunedeck::demo;
using namespace Qt::StringLiterals;

struct Options {
    QString name;
    quint32 seed;
    qsizetype track;
    bool plays;
    QStringList lines;
};

int fail(const QString &reason)
{
    QTextStream(stderr) << reason << Qt::endl;
    return EXIT_FAILURE;
}

std::chrono::microseconds monotonicTime()
{
    return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now().time_since_epoch());
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

/// Wakes the player when its next event is due.
void drive(Player &player, QTimer &timer)
{
    const auto rearm = [&player, &timer] {
        using std::chrono::milliseconds;
        const auto time = player.timeToNextEvent();
        if (!time) {
            timer.stop();
            return;
        }
        // An hour at most, as a timer cannot hold the longest lengths; advance() does nothing when woken early.
        constexpr milliseconds longest = std::chrono::hours(1);
        timer.start(qMin(std::chrono::ceil<milliseconds>(*time), longest));
    };
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, &player, [&player, rearm] {
        player.advance();
        rearm();
    });
    QObject::connect(&player, &Player::changed, &timer, rearm);
    QObject::connect(&player, &Player::trackStarted, &timer, rearm);
    QObject::connect(&player, &Player::seeked, &timer, rearm);
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

int run(const Options &options, int terminationSignals)
{
    QDBusConnection connection = QDBusConnection::sessionBus();
    if (!connection.isConnected()) {
        return fail(connection.lastError().message());
    }
    registerBusTypes();
    Player player(monotonicTime, options.seed);
    Oddities oddities;
    BusName busName(connection, options.name);
    Script script(player, oddities, busName);
    MprisObject object(player, oddities, script, connection);
    QTimer timer;
    drive(player, timer);

    auto *const application = QCoreApplication::instance();
    const QSocketNotifier notifier(terminationSignals, QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, application, &QCoreApplication::quit);
    // Queued, so that the answer to Quit is still sent.
    QObject::connect(&object, &MprisObject::quitRequested, application, &QCoreApplication::quit, Qt::QueuedConnection);
    // A player whose bus has ended cannot be reached, not even to end it.
    connection.connect({}, u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s, u"Disconnected"_s,
        application, SLOT(quit()));

    player.goToTrack(options.track);
    if (options.plays) {
        player.play();
    }
    for (const QString &line : options.lines) {
        if (const auto error = script.run(line)) {
            return fail(u"%1: %2"_s.arg(line, *error));
        }
    }
    if (!connection.registerVirtualObject(QString::fromLatin1(MprisObject::path), &object) || !busName.take()) {
        return fail(u"The bus refuses the name %1"_s.arg(busName.name()));
    }
    QTextStream(stdout) << "ready" << Qt::endl;
    const int result = QCoreApplication::exec();
    busName.giveUp();
    busName.flush();
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
    const QCommandLineOption play(u"play"_s, u"Plays at once."_s);
    const QCommandLineOption track(u"track"_s, u"Starts at track N of the library."_s, u"N"_s, u"0"_s);
    const QCommandLineOption seed(u"seed"_s, u"Decides the order of shuffling."_s, u"N"_s, u"1"_s);
    const QCommandLineOption line(u"do"_s, u"Carries out LINE before the start; may be repeated."_s, u"LINE"_s);
    const QCommandLineOption list(u"list"_s, u"Prints the library."_s);
    const QCommandLineOption tellLine(u"tell"_s, u"Sends LINE to the running demo player."_s, u"LINE"_s);
    parser.addOptions({name, play, track, seed, line, list, tellLine});
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
    const Options options{parser.value(name), parser.value(seed).toUInt(&isSeed),
        parser.value(track).toLongLong(&isTrack), parser.isSet(play), parser.values(line)};
    if (!isSeed || !isTrack || options.track < 0 || options.track >= library().size()) {
        return fail(u"--seed takes a whole number, --track the number of a track (see --list)"_s);
    }
    return run(options, terminationSignals);
}
