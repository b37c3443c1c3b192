// SPDX-License-Identifier: MIT
#include "music/mpris/report/PlayerReport.h"

#include "music/mpris/bus/BusValue.h"

#include <algorithm>
#include <cmath>

namespace tunedeck {

namespace {

constexpr double maximumPosition = 1e9;
constexpr double maximumRate = 100.0;
constexpr double microsecondsPerSecond = 1e6;

std::optional<PlaybackStatus> decodeStatus(const QVariant &value)
{
    const QString text = bus::text(value).value_or(QString());
    if (text == u"Playing") {
        return PlaybackStatus::Playing;
    }
    if (text == u"Paused") {
        return PlaybackStatus::Paused;
    }
    return text == u"Stopped" ? std::optional(PlaybackStatus::Stopped) : std::nullopt;
}

std::optional<LoopStatus> decodeLoopStatus(const QVariant &value)
{
    const QString text = bus::text(value).value_or(QString());
    if (text == u"Track") {
        return LoopStatus::Track;
    }
    if (text == u"Playlist") {
        return LoopStatus::Playlist;
    }
    return text == u"None" ? std::optional(LoopStatus::None) : std::nullopt;
}

std::optional<double> decodeRate(const QVariant &value)
{
    const std::optional<double> rate = bus::number(value);
    return rate && *rate >= 0 && *rate <= maximumRate ? rate : std::nullopt;
}

std::optional<double> decodeVolume(const QVariant &value)
{
    const std::optional<double> volume = bus::number(value);
    return volume ? std::optional(std::clamp(*volume, 0.0, 1.0)) : std::nullopt;
}

std::optional<TrackDetails> decodeTrack(const QVariantMap &properties)
{
    const QVariant metadata = properties.value(QStringLiteral("Metadata"));
    return metadata.typeId() == QMetaType::QVariantMap ? std::optional(decodeMetadata(metadata.toMap())) : std::nullopt;
}

template <typename T> void applyChange(std::optional<T> &value, const std::optional<T> &change)
{
    if (change) {
        value = change;
    }
}

} // namespace

std::optional<double> decodePosition(const QVariant &microseconds)
{
    const std::optional<double> number = bus::number(microseconds);
    if (!number || std::abs(*number / microsecondsPerSecond) > maximumPosition) {
        return std::nullopt;
    }
    return std::max(0.0, *number / microsecondsPerSecond);
}

PlayerReport decodePlayerProperties(const QVariantMap &properties)
{
    PlayerReport report;
    report.status = decodeStatus(properties.value(QStringLiteral("PlaybackStatus")));
    report.loopStatus = decodeLoopStatus(properties.value(QStringLiteral("LoopStatus")));
    report.shuffle = bus::boolean(properties.value(QStringLiteral("Shuffle")));
    report.track = decodeTrack(properties);
    report.position = decodePosition(properties.value(QStringLiteral("Position")));
    report.rate = decodeRate(properties.value(QStringLiteral("Rate")));
    report.volume = decodeVolume(properties.value(QStringLiteral("Volume")));
    report.canControl = bus::boolean(properties.value(QStringLiteral("CanControl")));
    report.canPause = bus::boolean(properties.value(QStringLiteral("CanPause")));
    report.canSeek = bus::boolean(properties.value(QStringLiteral("CanSeek")));
    report.canGoNext = bus::boolean(properties.value(QStringLiteral("CanGoNext")));
    report.canGoPrevious = bus::boolean(properties.value(QStringLiteral("CanGoPrevious")));
    return report;
}

void merge(PlayerReport &report, const PlayerReport &change)
{
    applyChange(report.status, change.status);
    applyChange(report.loopStatus, change.loopStatus);
    applyChange(report.shuffle, change.shuffle);
    applyChange(report.track, change.track);
    applyChange(report.position, change.position);
    applyChange(report.rate, change.rate);
    applyChange(report.volume, change.volume);
    applyChange(report.canControl, change.canControl);
    applyChange(report.canPause, change.canPause);
    applyChange(report.canSeek, change.canSeek);
    applyChange(report.canGoNext, change.canGoNext);
    applyChange(report.canGoPrevious, change.canGoPrevious);
}

} // namespace tunedeck
