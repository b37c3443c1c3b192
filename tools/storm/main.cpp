// SPDX-License-Identifier: MIT
#include "Watch.h"
#include "storms.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <stdexcept>

namespace {

using namespace tunedeck::storm;
using namespace Qt::StringLiterals;

struct Kind {
    qint64 (*storm)(const Plan &plan);
    QString explanation;
};

const std::map<QString, Kind> &kinds()
{
    static const std::map<QString, Kind> result{
        {u"signals"_s, {stormOfSignals, u"a player announces changes, --rate a second for --seconds"_s}},
        {u"containers"_s, {stormOfContainers, u"a player announces --count times --size bytes of --type as artists"_s}},
        {u"answers"_s, {stormOfAnswers, u"a player announces --count changes, and answers with such artists"_s}},
        {u"activate"_s, {stormOfActivate, u"calls Activate, --rate a second for --seconds"_s}},
        {u"open"_s, {stormOfOpen, u"calls Open --count times with --size bytes of files"_s}},
        {u"arguments"_s, {stormOfArguments, u"calls every interface --count times with --size bytes"_s}},
        {u"strays"_s, {stormOfStrays, u"sends --size bytes --count times where nobody receives them"_s}},
        {u"forgeries"_s, {stormOfForgeries, u"says as the bus, --rate times a second, that a player has gone"_s}},
        {u"tokens"_s, {stormOfTokens, u"calls Activate without a token, and with a made-up one, in turn"_s}},
        {u"settings"_s, {stormOfSettings, u"says as the portal, --count times, that a setting has --size bytes"_s}},
        {u"names"_s, {stormOfNames, u"one connection owns --count players' names and changes --rate a second"_s}},
        {u"players"_s, {stormOfPlayers, u"--count players, a connection for each, change --rate times a second"_s}},
    };
    return result;
}

QString kindsText()
{
    QString text = u"What the storm is made of:"_s;
    for (const auto &[kind, of] : kinds()) {
        text += u"\n  %1  %2"_s.arg(kind, -10).arg(of.explanation);
    }
    return text;
}

int fail(const QString &reason)
{
    std::fprintf(stderr, "%s\n", qPrintable(reason));
    return EXIT_FAILURE;
}

int run(const Kind &kind, const Plan &plan, int watched)
{
    const std::unique_ptr<Watch> watch = watched > 0 ? std::make_unique<Watch>(plan.bus, watched) : nullptr;
    const auto begin = std::chrono::steady_clock::now();
    const qint64 sent = kind.storm(plan);
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    std::printf("sent: %lld\nseconds: %.1f\n", static_cast<long long>(sent), seconds);
    std::fflush(stdout);
    if (watch) {
        watch->report(std::chrono::seconds(10));
    }
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const auto option = [](const QString &name, const QString &explanation, const QString &usual) {
        return QCommandLineOption(name, explanation, name, usual);
    };
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Floods the session bus as a hostile program would, and reports how another program bears it.\n"_s
        + kindsText());
    parser.addHelpOption();
    parser.addPositionalArgument(u"kind"_s, u"What the storm is made of"_s);
    parser.addOptions({
        option(u"rate"_s, u"Messages or changes a second"_s, u"20000"_s),
        option(u"seconds"_s, u"How long the storm lasts, or is over before its players leave"_s, u"10"_s),
        option(u"count"_s, u"How many messages, names or players"_s, u"1"_s),
        option(u"size"_s, u"Bytes of a container"_s, u"30000000"_s),
        option(u"type"_s, u"Type of a container: as, av, ay, s or a{sv}"_s, u"as"_s),
        option(u"to"_s, u"Name on the bus that signals go to, instead of to everybody"_s, QString()),
        option(u"watch"_s, u"Process id of the running Tunedeck, whose answers and memory are reported"_s, u"0"_s),
    });
    parser.process(application);
    const auto kind = kinds().find(parser.positionalArguments().value(0));
    if (kind == kinds().end() || parser.positionalArguments().size() != 1) {
        return fail(u"Which storm? See --help."_s);
    }
    const Plan plan{.bus = qgetenv("DBUS_SESSION_BUS_ADDRESS"),
        .destination = parser.value(u"to"_s).toUtf8(),
        .rate = parser.value(u"rate"_s).toDouble(),
        .time = std::chrono::duration<double>(parser.value(u"seconds"_s).toDouble()),
        .count = parser.value(u"count"_s).toInt(),
        .container = {.type = parser.value(u"type"_s).toUtf8(), .size = parser.value(u"size"_s).toLongLong()}};
    if (plan.bus.isEmpty() || plan.count < 1) {
        return fail(plan.bus.isEmpty() ? u"DBUS_SESSION_BUS_ADDRESS is not set."_s : u"--count must be at least 1."_s);
    }
    try {
        return run(kind->second, plan, parser.value(u"watch"_s).toInt());
    } catch (const std::exception &error) {
        return fail(QString::fromUtf8(error.what()));
    }
}
