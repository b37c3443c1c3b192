// SPDX-License-Identifier: MIT
#pragma once

#include "audio/SoundStream.h"

#include <QHash>
#include <QList>

#include <chrono>
#include <cstdint>
#include <optional>

namespace tunedeck {

/// The streams as far as the server's reports are believed. PipeWire first reports a stream without an output and with
/// a wrong volume, and reports streams as corked for some milliseconds while it moves them.
class SettledStreams {
public:
    using Instant = std::chrono::steady_clock::time_point;

    /// How long a stream must be corked, or not be, until it counts.
    static constexpr std::chrono::milliseconds settleTime{150};

    /// `reported` are all streams that there are now.
    void report(const QList<SoundStream> &reported, Instant now);
    /// Believes what has lasted long enough. Returns whether anything has changed.
    bool settle(Instant now);
    /// When settle() should be called. None if nothing waits for it.
    [[nodiscard]] std::optional<Instant> settlesAt() const;
    void clear() { m_streams.clear(); }

    /// In the order of their indexes.
    [[nodiscard]] QList<SoundStream> streams() const;

private:
    struct Record {
        SoundStream stream;
        std::optional<Instant> corkingChangedAt; ///< none while the server reports what is believed
    };

    [[nodiscard]] Record updated(const SoundStream &reported, Instant now) const;

    QHash<std::uint32_t, Record> m_streams;
};

} // namespace tunedeck
