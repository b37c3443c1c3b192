// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/bus/SignalStream.h"

#include <QObject>
#include <QString>

namespace tunedeck::bus {

/// The signals of one connection on the bus that are about a player. While this thread does not come round to them, or
/// they come in a flood, most of them are dropped.
class PlayerSignals : public QObject {
    Q_OBJECT

public:
    /// `owner` is the unique name of the player's connection. `stream` must outlive this object.
    PlayerSignals(SignalStream &stream, const QString &owner, QObject *parent = nullptr);
    ~PlayerSignals() override;

Q_SIGNALS:
    // Do not delete listeners to the same stream where these are emitted.

    void received(const tunedeck::bus::PlayerSignal &signal);
    /// Signals have been dropped since the last one received.
    void missed();

private:
    SignalStream &m_stream;
    const QString m_owner;
};

} // namespace tunedeck::bus
