// SPDX-License-Identifier: MIT
#include "music/mpris/PlayerModes.h"

namespace tunedeck {

namespace {

constexpr int sightingsToBelieve = 3;

} // namespace

void PlayerModes::read(const PlayerReport &report)
{
    if (m_flips) {
        return;
    }
    m_loopStatus = report.loopStatus;
    if (report.shuffle && m_shuffle) {
        judge(*report.shuffle);
    } else {
        believe(report.shuffle);
    }
}

void PlayerModes::announced(const PlayerReport &report)
{
    if (report.loopStatus) {
        m_loopStatus = report.loopStatus;
    }
    if (report.shuffle) {
        m_flips = false;
        believe(report.shuffle);
    }
}

void PlayerModes::judge(bool shuffle)
{
    if (shuffle == m_shuffle) {
        m_flips = isInDoubt();
        m_sightings = 0;
    } else if (shuffle == m_asked || ++m_sightings == sightingsToBelieve) {
        believe(shuffle);
    }
}

void PlayerModes::believe(std::optional<bool> shuffle)
{
    m_shuffle = shuffle;
    m_asked.reset();
    m_sightings = 0;
}

} // namespace tunedeck
