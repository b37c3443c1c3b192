// SPDX-License-Identifier: MIT
#pragma once

#include "Message.h"

#include <QByteArray>

#include <chrono>
#include <functional>
#include <gio/gio.h>
#include <memory>
#include <vector>

namespace tunedeck::storm {

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};

/// A connection to the bus that sends as fast as the bus reads. It writes to the socket by itself: a library would
/// look at each message.
class Peer {
public:
    /// Gets a call that another program makes, and returns its answer, which may be empty.
    using Answer = std::function<QByteArray(GDBusMessage *call)>;

    /// Connects to the bus at `address`. Throws std::runtime_error if that fails.
    explicit Peer(const QByteArray &address);

    void setAnswer(Answer answer) { m_answer = std::move(answer); }
    /// Queues the bytes of messages; exchange() sends them.
    void send(const QByteArray &messages) { m_out.append(messages); }
    [[nodiscard]] qsizetype unsent() const { return m_out.size() - m_written; }
    /// Calls a method of the bus with one text, or with a name and flags, and does not wait for the answer.
    void own(const QByteArray &name);
    void release(const QByteArray &name);
    /// Waits until the bus has carried out what was sent before.
    void settle();
    /// Calls and waits until the answer is there; false if it does not come in time.
    bool call(Message message, const Values &body, std::chrono::milliseconds patience);

    /// Sends what is queued and answers calls for `time`, or until there is nothing left to send if `untilSent`.
    void exchange(std::chrono::milliseconds time, bool untilSent = false);

    /// For poll(). Several connections can be served at once.
    [[nodiscard]] int descriptor() const { return g_socket_get_fd(m_socket); }
    void write();
    void read();

private:
    void authenticate();
    void readConsent();
    void handleMessages();
    void handle(GDBusMessage *message);

    std::unique_ptr<GIOStream, Unref> m_stream;
    GSocket *m_socket = nullptr;
    Answer m_answer;
    QByteArray m_out;
    qsizetype m_written = 0;
    QByteArray m_in;
    quint32 m_lastSerial = 1'000;
    quint32 m_awaited = 0; ///< serial of the call of ours that is not answered yet, or 0
};

/// Serves all of `peers` for `time`.
void exchangeAll(const std::vector<std::unique_ptr<Peer>> &peers, std::chrono::milliseconds time);

} // namespace tunedeck::storm
