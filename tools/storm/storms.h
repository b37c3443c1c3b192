// SPDX-License-Identifier: MIT
#pragma once

#include "StormPlayer.h"

#include <QByteArray>

#include <chrono>

namespace tunedeck::storm {

/// The parts of a storm. Each kind of storm uses some of it.
struct Plan {
    QByteArray bus; ///< its address
    QByteArray destination; ///< of signals; empty: everybody who listens
    double rate = 0; ///< per second
    std::chrono::duration<double> time{0};
    int count = 1;
    Container container;
};

/// Storms return how many messages they have sent, and hold what they own until then. They print "ready" when they
/// begin, and throw std::runtime_error if the bus goes away.
qint64 stormOfSignals(const Plan &plan);
qint64 stormOfContainers(const Plan &plan);
qint64 stormOfAnswers(const Plan &plan);
qint64 stormOfActivate(const Plan &plan);
qint64 stormOfOpen(const Plan &plan);
qint64 stormOfArguments(const Plan &plan);
qint64 stormOfStrays(const Plan &plan);
qint64 stormOfForgeries(const Plan &plan);
qint64 stormOfTokens(const Plan &plan);
qint64 stormOfSettings(const Plan &plan);
qint64 stormOfNames(const Plan &plan);
qint64 stormOfPlayers(const Plan &plan);

} // namespace tunedeck::storm
