// SPDX-License-Identifier: MIT
#include "audio/SettledStreams.h"

#include <algorithm>
#include <utility>

namespace tunedeck {

void SettledStreams::report(const QList<SoundStream> &reported, Instant now)
{
    QHash<std::uint32_t, Record> streams;
    for (const SoundStream &stream : reported) {
        const std::uint32_t index = stream.origin.stream;
        if (stream.output != PA_INVALID_INDEX) {
            streams.insert(index, updated(stream, now));
        } else if (m_streams.contains(index)) {
            streams.insert(index, m_streams.value(index));
        }
    }
    m_streams = std::move(streams);
}

SettledStreams::Record SettledStreams::updated(const SoundStream &reported, Instant now) const
{
    Record record{.stream = reported, .corkingChangedAt = std::nullopt};
    record.stream.balance = reported.volume;
    const auto known = m_streams.constFind(reported.origin.stream);
    if (known == m_streams.cend()) {
        return record;
    }
    const bool isSilent = pa_cvolume_max(&reported.volume) == PA_VOLUME_MUTED;
    if (isSilent && known->stream.balance.channels == reported.volume.channels) {
        record.stream.balance = known->stream.balance;
    }
    if (reported.isCorked != known->stream.isCorked) {
        record.stream.isCorked = known->stream.isCorked;
        record.corkingChangedAt = known->corkingChangedAt.value_or(now);
    }
    return record;
}

bool SettledStreams::settle(Instant now)
{
    bool hasChanged = false;
    for (auto record = m_streams.begin(); record != m_streams.end(); ++record) {
        if (record->corkingChangedAt && now - *record->corkingChangedAt >= settleTime) {
            record->stream.isCorked = !record->stream.isCorked;
            record->corkingChangedAt.reset();
            hasChanged = true;
        }
    }
    return hasChanged;
}

std::optional<SettledStreams::Instant> SettledStreams::settlesAt() const
{
    std::optional<Instant> earliest;
    for (const Record &record : m_streams) {
        if (record.corkingChangedAt && (!earliest || *record.corkingChangedAt + settleTime < *earliest)) {
            earliest = *record.corkingChangedAt + settleTime;
        }
    }
    return earliest;
}

QList<SoundStream> SettledStreams::streams() const
{
    QList<SoundStream> streams;
    for (const Record &record : m_streams) {
        streams.append(record.stream);
    }
    std::ranges::sort(streams, {}, [](const SoundStream &stream) { return stream.origin.stream; });
    return streams;
}

} // namespace tunedeck
