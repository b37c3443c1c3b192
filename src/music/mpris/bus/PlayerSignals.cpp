// SPDX-License-Identifier: MIT
#include "music/mpris/bus/PlayerSignals.h"

namespace tunedeck::bus {

PlayerSignals::PlayerSignals(SignalStream &stream, const QString &owner, QObject *parent)
    : QObject(parent)
    , m_stream(stream)
    , m_owner(owner)
{
    m_stream.add(m_owner, this);
}

PlayerSignals::~PlayerSignals()
{
    m_stream.remove(m_owner, this);
}

} // namespace tunedeck::bus
