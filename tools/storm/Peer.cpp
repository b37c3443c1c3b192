// SPDX-License-Identifier: MIT
#include "Peer.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <sys/socket.h>
#include <unistd.h>

namespace tunedeck::storm {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr qsizetype longestLine = 1'000;
constexpr gsize shortestMessage = 16;

Message daemonCall(const QByteArray &method, const QByteArray &signature)
{
    const QByteArray bus = "org.freedesktop.DBus";
    return {.type = Message::Type::Call,
        .destination = bus,
        .path = "/org/freedesktop/DBus",
        .interface = bus,
        .member = method,
        .signature = signature};
}

int millisecondsUntil(Clock::time_point end)
{
    return std::max(0, int(std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count()));
}

short awaited(const Peer &peer)
{
    return short(POLLIN | (peer.unsent() > 0 ? POLLOUT : 0));
}

void serve(Peer &peer, short events)
{
    if ((events & POLLOUT) != 0) {
        peer.write();
    }
    if ((events & (POLLIN | POLLHUP | POLLERR)) != 0) {
        peer.read();
    }
}

[[noreturn]] void failForTheBus()
{
    throw std::runtime_error("the bus has closed the connection");
}

} // namespace

Peer::Peer(const QByteArray &address)
{
    GError *error = nullptr;
    m_stream.reset(g_dbus_address_get_stream_sync(address.constData(), nullptr, nullptr, &error));
    if (!m_stream) {
        const std::string reason = error->message;
        g_error_free(error);
        throw std::runtime_error(reason);
    }
    m_socket = g_socket_connection_get_socket(G_SOCKET_CONNECTION(m_stream.get()));
    authenticate();
    if (!call(daemonCall("Hello", ""), {}, 10s)) {
        throw std::runtime_error("the bus does not answer");
    }
}

void Peer::authenticate()
{
    const QByteArray user = QByteArray::number(::getuid()).toHex();
    const QByteArray request = QByteArray(1, '\0') + "AUTH EXTERNAL " + user + "\r\n";
    if (::send(descriptor(), request.constData(), size_t(request.size()), MSG_NOSIGNAL) != request.size()) {
        failForTheBus();
    }
    readConsent();
    m_out = "BEGIN\r\n";
}

void Peer::readConsent()
{
    QByteArray consent;
    for (char character = 0; character != '\n' && consent.size() < longestLine; consent.append(character)) {
        pollfd awaitedOfBus{.fd = descriptor(), .events = POLLIN, .revents = 0};
        ::poll(&awaitedOfBus, 1, 10'000);
        if (::recv(descriptor(), &character, 1, 0) != 1) {
            failForTheBus();
        }
    }
    if (!consent.startsWith("OK ")) {
        throw std::runtime_error("the bus refuses the user: " + consent.trimmed().toStdString());
    }
}

void Peer::own(const QByteArray &name)
{
    Values body;
    body.text(name);
    body.number(0);
    send(daemonCall("RequestName", "su").bytes(body));
}

void Peer::release(const QByteArray &name)
{
    Values body;
    body.text(name);
    send(daemonCall("ReleaseName", "s").bytes(body));
}

void Peer::settle()
{
    if (!call(daemonCall("GetId", ""), {}, 60s)) {
        throw std::runtime_error("the bus does not answer");
    }
}

bool Peer::call(Message message, const Values &body, std::chrono::milliseconds patience)
{
    message.serial = ++m_lastSerial;
    message.wantsAnswer = true;
    m_awaited = message.serial;
    send(message.bytes(body));
    const auto end = Clock::now() + patience;
    while (m_awaited != 0 && Clock::now() < end) {
        pollfd awaitedOfPeer{.fd = descriptor(), .events = awaited(*this), .revents = 0};
        ::poll(&awaitedOfPeer, 1, 10);
        serve(*this, awaitedOfPeer.revents);
    }
    return m_awaited == 0;
}

void Peer::exchange(std::chrono::milliseconds time, bool untilSent)
{
    const auto end = Clock::now() + time;
    while (!untilSent || unsent() > 0) {
        pollfd awaitedOfPeer{.fd = descriptor(), .events = awaited(*this), .revents = 0};
        ::poll(&awaitedOfPeer, 1, millisecondsUntil(end));
        serve(*this, awaitedOfPeer.revents);
        if (Clock::now() >= end) {
            return;
        }
    }
}

void Peer::write()
{
    while (unsent() > 0) {
        const ssize_t written =
            ::send(descriptor(), m_out.constData() + m_written, size_t(unsent()), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (written < 0 && (errno == EAGAIN || errno == EINTR)) {
            return;
        }
        if (written < 0) {
            failForTheBus();
        }
        m_written += written;
    }
    m_out.clear();
    m_written = 0;
}

void Peer::read()
{
    std::array<char, 65'536> buffer{};
    while (true) {
        const ssize_t size = ::recv(descriptor(), buffer.data(), buffer.size(), MSG_DONTWAIT);
        if (size == 0 || (size < 0 && errno != EAGAIN && errno != EINTR)) {
            failForTheBus();
        }
        if (size < 0) {
            break;
        }
        m_in.append(buffer.data(), size);
    }
    handleMessages();
}

void Peer::handleMessages()
{
    qsizetype begin = 0;
    while (gsize(m_in.size() - begin) >= shortestMessage) {
        auto *bytes = reinterpret_cast<guchar *>(m_in.data() + begin);
        const gssize needed = g_dbus_message_bytes_needed(bytes, gsize(m_in.size() - begin), nullptr);
        if (needed <= 0 || m_in.size() - begin < needed) {
            break;
        }
        const std::unique_ptr<GDBusMessage, Unref> message(
            g_dbus_message_new_from_blob(bytes, gsize(needed), G_DBUS_CAPABILITY_FLAGS_NONE, nullptr));
        if (message) {
            handle(message.get());
        }
        begin += needed;
    }
    m_in.remove(0, begin);
}

void Peer::handle(GDBusMessage *message)
{
    switch (g_dbus_message_get_message_type(message)) {
    case G_DBUS_MESSAGE_TYPE_METHOD_RETURN:
    case G_DBUS_MESSAGE_TYPE_ERROR:
        if (g_dbus_message_get_reply_serial(message) == m_awaited) {
            m_awaited = 0;
        }
        break;
    case G_DBUS_MESSAGE_TYPE_METHOD_CALL:
        if (m_answer) {
            send(m_answer(message));
        }
        break;
    default:
        break;
    }
}

void exchangeAll(const std::vector<std::unique_ptr<Peer>> &peers, std::chrono::milliseconds time)
{
    const auto end = Clock::now() + time;
    std::vector<pollfd> awaitedOfPeers(peers.size());
    do {
        for (size_t i = 0; i < peers.size(); ++i) {
            awaitedOfPeers[i] = {.fd = peers[i]->descriptor(), .events = awaited(*peers[i]), .revents = 0};
        }
        ::poll(awaitedOfPeers.data(), nfds_t(awaitedOfPeers.size()), millisecondsUntil(end));
        for (size_t i = 0; i < peers.size(); ++i) {
            serve(*peers[i], awaitedOfPeers[i].revents);
        }
    } while (Clock::now() < end);
}

} // namespace tunedeck::storm
