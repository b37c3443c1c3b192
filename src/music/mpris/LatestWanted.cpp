// SPDX-License-Identifier: MIT
#include "music/mpris/LatestWanted.h"

#include <utility>

namespace tunedeck {

LatestWanted::LatestWanted(Send send)
    : m_send(std::move(send))
{
}

void LatestWanted::want(double value)
{
    m_waiting = value;
    sendNext();
}

bool LatestWanted::answered()
{
    m_isUnanswered = false;
    return sendNext();
}

bool LatestWanted::sendNext()
{
    if (m_isUnanswered || !m_waiting) {
        return false;
    }
    m_isUnanswered = true;
    m_send(*std::exchange(m_waiting, std::nullopt));
    return true;
}

} // namespace tunedeck
