// SPDX-License-Identifier: MIT
#include "audio/ServerListing.h"

#include "audio/AnswerWatch.h"
#include "audio/decodedInfo.h"

#include <pulse/error.h>
#include <pulse/operation.h>

#include <algorithm>
#include <utility>

namespace tunedeck {

ServerListing::ServerListing(pa_mainloop_api &api, AnswerWatch &watch, std::function<void()> listed)
    : m_watch(watch)
    , m_listed(std::move(listed))
    , m_timer(api, [this] { beginRound(); })
{
}

void ServerListing::setContext(pa_context *context)
{
    m_context = context;
    m_timer.stop();
    m_unanswered = 0;
    m_hasListed = false;
    m_clients.clear();
    m_streams.clear();
    m_outputs.clear();
    m_mustReadStreams = context != nullptr;
    m_mustReadOutputs = context != nullptr;
    beginRound();
}

void ServerListing::refreshStreams()
{
    m_mustReadStreams = true;
    beginRound();
}

void ServerListing::refreshOutputs()
{
    m_mustReadOutputs = true;
    beginRound();
}

void ServerListing::beginRound()
{
    const bool isWanted = m_mustReadStreams || m_mustReadOutputs;
    if (!m_context || !isWanted || m_unanswered > 0 || m_timer.isActive()) {
        return;
    }
    ++m_round;
    m_hasGivenUp = false;
    m_readsStreams = std::exchange(m_mustReadStreams, false);
    m_readsOutputs = std::exchange(m_mustReadOutputs, false);
    m_readStreams.clear();
    m_readOutputs.clear();
    m_timer.start(shortestInterval);
    if (m_readsOutputs) {
        const auto add = [](pa_context *, const pa_sink_info *info, int end, void *self) {
            if (auto *listing = static_cast<ServerListing *>(self); end == 0) {
                listing->addOutput(*info);
            } else {
                listing->handleEnd(end);
            }
        };
        ask(pa_context_get_sink_info_list(m_context, add, this));
    }
    if (m_readsStreams) {
        const auto add = [](pa_context *, const pa_sink_input_info *info, int end, void *self) {
            if (auto *listing = static_cast<ServerListing *>(self); end == 0) {
                listing->addStream(*info);
            } else {
                listing->handleEnd(end);
            }
        };
        ask(pa_context_get_sink_input_info_list(m_context, add, this));
    }
}

void ServerListing::ask(pa_operation *question)
{
    if (question) {
        pa_operation_unref(question);
        ++m_unanswered;
        m_watch.asked();
    }
}

void ServerListing::handleEnd(int end)
{
    --m_unanswered;
    const bool hasGivenUp = end < 0 && pa_context_errno(m_context) == PA_ERR_TIMEOUT;
    m_hasGivenUp |= hasGivenUp;
    if (m_unanswered == 0 && !m_hasGivenUp && !knowsAllClients()) {
        const auto add = [](pa_context *, const pa_client_info *info, int endOfClients, void *self) {
            if (auto *listing = static_cast<ServerListing *>(self); endOfClients == 0) {
                listing->addClient(*info);
            } else {
                listing->handleEnd(endOfClients);
            }
        };
        m_clients.clear();
        ask(pa_context_get_client_info_list(m_context, add, this));
        // A client that has gone meanwhile says nothing.
        for (const SoundStream &stream : std::as_const(m_readStreams)) {
            m_clients.insert(stream.origin.client, {});
        }
    }
    if (hasGivenUp) {
        m_watch.gaveUp();
    } else {
        m_watch.answered();
    }
    if (m_unanswered > 0) {
        return;
    }
    if (m_hasGivenUp) {
        m_mustReadStreams |= m_readsStreams;
        m_mustReadOutputs |= m_readsOutputs;
    } else {
        completeStreams();
        m_listed();
    }
    beginRound();
}

void ServerListing::addStream(const pa_sink_input_info &info)
{
    if (m_readStreams.size() < longestList && !isEventSound(info)) {
        m_readStreams.append(decodedStream(info));
    }
}

void ServerListing::addClient(const pa_client_info &info)
{
    const auto client = m_clients.find(info.index);
    if (client != m_clients.end()) {
        *client = decodedClient(info);
    }
}

void ServerListing::addOutput(const pa_sink_info &info)
{
    const std::optional<SoundOutput> output = decodedOutput(info);
    if (output && m_readOutputs.size() < longestList) {
        m_readOutputs.insert(info.index, *output);
    }
}

bool ServerListing::knowsAllClients() const
{
    return std::ranges::all_of(
        m_readStreams, [this](const SoundStream &stream) { return m_clients.contains(stream.origin.client); });
}

void ServerListing::completeStreams()
{
    m_hasListed = true;
    if (m_readsOutputs) {
        m_outputs = std::exchange(m_readOutputs, {});
    }
    if (m_readsStreams) {
        QHash<std::uint32_t, Client> clients;
        for (SoundStream &stream : m_readStreams) {
            const Client client = m_clients.value(stream.origin.client);
            clients.insert(stream.origin.client, client);
            stream.origin = completedOrigin(stream.origin, client);
        }
        m_clients = std::move(clients);
        m_streams = std::exchange(m_readStreams, {});
    }
}

} // namespace tunedeck
