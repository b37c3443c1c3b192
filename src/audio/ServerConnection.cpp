// SPDX-License-Identifier: MIT
#include "audio/ServerConnection.h"

#include "audio/audioLog.h"

#include <pulse/error.h>
#include <pulse/operation.h>
#include <pulse/proplist.h>

#include <algorithm>
#include <utility>

namespace tunedeck {

namespace {
pa_context *makeContext(pa_mainloop_api &api)
{
    pa_proplist *properties = pa_proplist_new();
    pa_proplist_sets(properties, PA_PROP_APPLICATION_ID, "org.tunedeck.Tunedeck");
    pa_proplist_sets(properties, PA_PROP_APPLICATION_ICON_NAME, "org.tunedeck.Tunedeck");
    pa_context *context = pa_context_new_with_proplist(&api, "Tunedeck", properties);
    pa_proplist_free(properties);
    return context;
}
} // namespace

ServerConnection::ServerConnection(pa_mainloop_api &api, Handlers handlers)
    : m_api(api)
    , m_handlers(std::move(handlers))
    , m_retryTimer(api, [this] { connect(); })
{
}

ServerConnection::~ServerConnection()
{
    dropContext();
}

void ServerConnection::open()
{
    if (m_state == State::Closed) {
        m_wait = shortestWait;
        connect();
    }
}

void ServerConnection::close()
{
    m_retryTimer.stop();
    m_readySince.reset();
    dropContext();
    enter(State::Closed);
}

void ServerConnection::connect()
{
    dropContext();
    m_context = makeContext(m_api);
    if (!m_context) {
        fail();
        return;
    }
    enter(State::Connecting);
    const auto stateChanged = [](pa_context *, void *self) { static_cast<ServerConnection *>(self)->handleState(); };
    pa_context_set_state_callback(m_context, stateChanged, this);
    // Without a server it fails before it returns.
    const int result = pa_context_connect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
    if (result < 0 && m_state != State::Failed) {
        fail();
    }
}

void ServerConnection::handleState()
{
    const pa_context_state_t state = pa_context_get_state(m_context);
    if (state == PA_CONTEXT_READY) {
        const auto changed = [](pa_context *, pa_subscription_event_type_t type, uint32_t, void *self) {
            const bool isOutput = (type & PA_SUBSCRIPTION_EVENT_FACILITY_MASK) == PA_SUBSCRIPTION_EVENT_SINK;
            static_cast<ServerConnection *>(self)->m_handlers.changed(isOutput);
        };
        pa_context_set_subscribe_callback(m_context, changed, this);
        const auto mask = pa_subscription_mask_t(PA_SUBSCRIPTION_MASK_SINK | PA_SUBSCRIPTION_MASK_SINK_INPUT);
        if (pa_operation *operation = pa_context_subscribe(m_context, mask, nullptr, nullptr)) {
            pa_operation_unref(operation);
        }
        m_readySince = std::chrono::steady_clock::now();
        enter(State::Ready);
    } else if (!PA_CONTEXT_IS_GOOD(state)) {
        fail();
    }
}

void ServerConnection::fail()
{
    const bool hasStood = m_readySince && std::chrono::steady_clock::now() - *m_readySince >= shortestStand;
    m_readySince.reset();
    if (hasStood) {
        m_wait = shortestWait;
    }
    // libpulse is still at work with the context.
    qCDebug(audioLog) << "no sound server:" << pa_strerror(pa_context_errno(m_context)) << "- again in"
                      << m_wait.count() << "ms";
    m_retryTimer.start(m_wait);
    m_wait = std::min(m_wait * 2, longestWait);
    enter(State::Failed);
}

void ServerConnection::enter(State state)
{
    if (m_state != state) {
        m_state = state;
        m_handlers.stateChanged(state);
    }
}

void ServerConnection::dropContext()
{
    if (m_context) {
        pa_context_set_state_callback(m_context, nullptr, nullptr);
        pa_context_set_subscribe_callback(m_context, nullptr, nullptr);
        pa_context_disconnect(m_context);
        pa_context_unref(std::exchange(m_context, nullptr));
    }
}

} // namespace tunedeck
