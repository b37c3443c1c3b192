// SPDX-License-Identifier: MIT
#include "storms.h"

#include "Peer.h"

#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

namespace tunedeck::storm {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto tick = 2ms;
/// Where the bus is slower than the rate, no more than this waits to be sent, or the storm would go on after its end.
constexpr qsizetype mostUnsent = 4'000'000;
constexpr auto longestTransfer = 60s;
constexpr auto longestIntroduction = 2s;

void announceReady()
{
    std::puts("ready");
    std::fflush(stdout);
}

/// Calls `send` with the number of messages that are due, every few milliseconds, and then `serve` for the rest of the
/// time. Returns how many were due in all.
qint64 inRate(
    const Plan &plan, const std::function<void(qint64 due)> &send, const std::function<void(Clock::duration)> &serve)
{
    const auto begin = Clock::now();
    qint64 sent = 0;
    for (auto now = begin; now - begin < plan.time; now = Clock::now()) {
        const auto due = qint64(plan.rate * std::chrono::duration<double>(now - begin).count()) - sent;
        send(due);
        sent += due;
        serve(tick);
    }
    return sent;
}

/// Sends the same bytes over and over, as many messages as they are.
qint64 repeat(Peer &peer, const QByteArray &message, const Plan &plan)
{
    qint64 dropped = 0;
    const auto send = [&](qint64 due) {
        if (peer.unsent() > mostUnsent) {
            dropped += due;
            return;
        }
        for (qint64 i = 0; i < due; ++i) {
            peer.send(message);
        }
    };
    const auto serve = [&peer](Clock::duration time) {
        peer.exchange(std::chrono::duration_cast<std::chrono::milliseconds>(time));
    };
    const qint64 due = inRate(plan, send, serve);
    peer.exchange(longestTransfer, true);
    return due - dropped;
}

/// Sends a message some times, each when the former has been taken by the bus.
qint64 sendOneByOne(Peer &peer, const QByteArray &message, const Plan &plan)
{
    for (int i = 0; i < plan.count; ++i) {
        peer.send(message);
        peer.exchange(longestTransfer, true);
    }
    peer.settle();
    peer.exchange(std::chrono::duration_cast<std::chrono::milliseconds>(plan.time));
    return plan.count;
}

Message callOfProgram(const QByteArray &method, const QByteArray &signature)
{
    return {.type = Message::Type::Call,
        .destination = name::program,
        .path = name::programPath,
        .interface = "org.freedesktop.Application",
        .member = method,
        .signature = signature};
}

/// A player on a connection of its own.
struct Stage {
    explicit Stage(const Plan &plan)
        : peer(plan.bus)
    {
        peer.setAnswer([this](GDBusMessage *call) {
            isAsked = true;
            return player.answer(call);
        });
        peer.own(name::playerPrefix + "storm");
        peer.settle();
        // A program that has asked the player listens to its signals by now.
        for (const auto end = Clock::now() + longestIntroduction; !isAsked && Clock::now() < end;) {
            peer.exchange(tick);
        }
        peer.settle();
        announceReady();
    }

    StormPlayer player;
    Peer peer;
    bool isAsked = false;
};

} // namespace

qint64 stormOfSignals(const Plan &plan)
{
    Stage stage(plan);
    return repeat(stage.peer, stage.player.change(plan.destination), plan);
}

qint64 stormOfContainers(const Plan &plan)
{
    Stage stage(plan);
    StormPlayer large;
    large.setContainer(plan.container);
    return sendOneByOne(stage.peer, large.change(plan.destination), plan);
}

qint64 stormOfAnswers(const Plan &plan)
{
    Stage stage(plan);
    stage.player.setContainer(plan.container);
    StormPlayer small;
    return sendOneByOne(stage.peer, small.change(plan.destination), plan);
}

qint64 stormOfActivate(const Plan &plan)
{
    Peer peer(plan.bus);
    announceReady();
    Values body;
    body.array(8, [] { });
    return repeat(peer, callOfProgram("Activate", "a{sv}").bytes(body), plan);
}

qint64 stormOfOpen(const Plan &plan)
{
    Peer peer(plan.bus);
    announceReady();
    Values body;
    Container{.type = "as", .size = plan.container.size}.write(body);
    body.array(8, [] { });
    return sendOneByOne(peer, callOfProgram("Open", "asa{sv}").bytes(body), plan);
}

qint64 stormOfArguments(const Plan &plan)
{
    Peer peer(plan.bus);
    announceReady();
    const auto container = [&plan](
                               const QByteArray &type) { return Container{.type = type, .size = plan.container.size}; };
    Values data;
    container("a{sv}").write(data);
    qint64 sent = sendOneByOne(peer, callOfProgram("Activate", "a{sv}").bytes(data), plan);
    Values action;
    action.text("next");
    container("av").write(action);
    action.array(8, [] { });
    sent += sendOneByOne(peer, callOfProgram("ActivateAction", "sava{sv}").bytes(action), plan);
    Values properties;
    properties.array(4, [] { });
    container("as").write(properties);
    Message ofMenu = callOfProgram("GetGroupProperties", "aias");
    ofMenu.path = name::programPath + "/DockMenu";
    ofMenu.interface = "com.canonical.dbusmenu";
    sent += sendOneByOne(peer, ofMenu.bytes(properties), plan);
    Values junk;
    container("as").write(junk);
    Message ofIntrospection = callOfProgram("Introspect", "as");
    ofIntrospection.interface = "org.freedesktop.DBus.Introspectable";
    sent += sendOneByOne(peer, ofIntrospection.bytes(junk), plan);
    return sent;
}

qint64 stormOfStrays(const Plan &plan)
{
    Peer peer(plan.bus);
    announceReady();
    Values data;
    Container{.type = "as", .size = plan.container.size}.write(data);
    Message signal{.destination = name::program, .path = "/stray", .interface = "org.tunedeck.Stray"};
    signal.member = "Stray";
    signal.signature = "as";
    Message call = signal;
    call.type = Message::Type::Call;
    return sendOneByOne(peer, signal.bytes(data), plan) + sendOneByOne(peer, call.bytes(data), plan);
}

qint64 stormOfForgeries(const Plan &plan)
{
    Peer peer(plan.bus);
    announceReady();
    Values change;
    change.text(name::playerPrefix + "tunedeckdemo");
    change.text(":1.1");
    change.text("");
    const Message forgery{.destination = plan.destination.isEmpty() ? name::program : plan.destination,
        .path = "/org/freedesktop/DBus",
        .interface = "org.freedesktop.DBus",
        .member = "NameOwnerChanged",
        .signature = "sss"};
    return repeat(peer, forgery.bytes(change), plan);
}

qint64 stormOfTokens(const Plan &plan)
{
    Peer peer(plan.bus);
    announceReady();
    Values none;
    none.array(8, [] { });
    Values forged;
    forged.array(8, [&forged] {
        forged.textEntry("desktop-startup-id", "storm_TIME4294967295");
        forged.textEntry("activation-token", "storm");
    });
    const Message call = callOfProgram("Activate", "a{sv}");
    return repeat(peer, call.bytes(none) + call.bytes(forged), plan);
}

qint64 stormOfSettings(const Plan &plan)
{
    Peer peer(plan.bus);
    announceReady();
    Values change;
    change.text("org.freedesktop.appearance");
    change.text("color-scheme");
    change.signature(plan.container.type);
    plan.container.write(change);
    const Message signal{.destination = plan.destination,
        .path = "/org/freedesktop/portal/desktop",
        .interface = "org.freedesktop.portal.Settings",
        .member = "SettingChanged",
        .signature = "ssv"};
    return sendOneByOne(peer, signal.bytes(change), plan);
}

qint64 stormOfNames(const Plan &plan)
{
    Peer peer(plan.bus);
    const StormPlayer player;
    peer.setAnswer([&player](GDBusMessage *call) { return player.answer(call); });
    const auto busName = [](qint64 number) { return name::playerPrefix + "storm.n" + QByteArray::number(number); };
    for (int i = 0; i < plan.count; ++i) {
        peer.own(busName(i));
    }
    peer.settle();
    announceReady();
    qint64 changes = 0;
    // A name is given up with one change and taken again with the next.
    const auto change = [&](qint64 due) {
        for (qint64 i = 0; i < due; ++i, ++changes) {
            const QByteArray changed = busName(changes / 2 % plan.count);
            changes % 2 == 0 ? peer.release(changed) : peer.own(changed);
        }
    };
    return inRate(plan, change,
        [&peer](Clock::duration time) { peer.exchange(std::chrono::duration_cast<std::chrono::milliseconds>(time)); });
}

qint64 stormOfPlayers(const Plan &plan)
{
    std::vector<StormPlayer> players(size_t(plan.count));
    std::vector<std::unique_ptr<Peer>> peers;
    for (int i = 0; i < plan.count; ++i) {
        StormPlayer &player = players.at(size_t(i));
        player.setTitle("Storm " + QByteArray::number(i));
        player.setPlaying(i == 0);
        Peer &peer = *peers.emplace_back(std::make_unique<Peer>(plan.bus));
        peer.setAnswer([&player](GDBusMessage *call) { return player.answer(call); });
        peer.own(name::playerPrefix + "storm.p" + QByteArray::number(i));
        peer.settle();
    }
    announceReady();
    size_t next = 0;
    const auto change = [&](qint64 due) {
        for (qint64 i = 0; i < due; ++i, next = (next + 1) % peers.size()) {
            players[next].setPlaying(!players[next].isPlaying());
            peers[next]->send(players[next].change());
        }
    };
    return inRate(plan, change, [&peers](Clock::duration time) {
        exchangeAll(peers, std::chrono::duration_cast<std::chrono::milliseconds>(time));
    });
}

} // namespace tunedeck::storm
