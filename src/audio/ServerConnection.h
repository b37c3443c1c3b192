// SPDX-License-Identifier: MIT
#pragma once

#include "audio/LoopTimer.h"

#include <pulse/context.h>
#include <pulse/mainloop-api.h>
#include <pulse/subscribe.h>

#include <chrono>
#include <functional>
#include <optional>

namespace tunedeck {

/// Keeps up a connection to the sound server. It never starts a server. All calls belong to the loop's thread.
class ServerConnection {
public:
    enum class State {
        Closed,
        Connecting,
        Ready,
        Failed ///< no server runs, or it refuses this program, or it has gone; another attempt follows
    };

    struct Handlers {
        std::function<void(State state)> stateChanged;
        /// Something has changed on the server. `isOutput`: an output, else a stream.
        std::function<void(bool isOutput)> changed;
    };

    /// Wait before the first attempt that follows a failure. It doubles with each failure.
    static constexpr std::chrono::milliseconds shortestWait{100};
    static constexpr std::chrono::milliseconds longestWait{30'000};
    /// The failure of a server that has stood for so long counts as the first. One that crashes sooner may do so again
    /// and again.
    static constexpr std::chrono::milliseconds shortestStand{10'000};

    /// `api` must outlive the connection.
    ServerConnection(pa_mainloop_api &api, Handlers handlers);
    ~ServerConnection();
    ServerConnection(const ServerConnection &) = delete;
    ServerConnection &operator=(const ServerConnection &) = delete;

    /// Does nothing unless the connection is closed.
    void open();
    void close();
    [[nodiscard]] State state() const { return m_state; }
    /// Null unless the connection is ready.
    [[nodiscard]] pa_context *context() const { return m_state == State::Ready ? m_context : nullptr; }

private:
    void connect();
    void handleState();
    void fail();
    void enter(State state);
    void dropContext();

    pa_mainloop_api &m_api;
    Handlers m_handlers;
    pa_context *m_context = nullptr;
    State m_state = State::Closed;
    std::chrono::milliseconds m_wait = shortestWait;
    /// Since when the connection is ready; none unless it is.
    std::optional<std::chrono::steady_clock::time_point> m_readySince;
    LoopTimer m_retryTimer;
};

} // namespace tunedeck
