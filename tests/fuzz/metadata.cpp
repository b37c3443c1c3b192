// SPDX-License-Identifier: MIT
#include "music/MusicTypes.h"
#include "music/mpris/report/PlayerReport.h"
#include "music/mpris/report/PropertyTypes.h"
#include "music/mpris/report/userInfoOf.h"

#include "Value.h"
#include "require.h"
#include "requireText.h"

#include <QByteArrayView>
#include <QLoggingCategory>

#include <cmath>

using namespace tunedeck;
using fuzz::require;
using fuzz::requireClean;
using fuzz::Value;

namespace {
constexpr double thirtyDays = 30.0 * 24 * 60 * 60; // seconds

void checkTrack(const TrackDetails &track)
{
    for (const QString &text :
        {track.trackId, track.url, track.title, track.album, track.genre, track.distinctId, track.name()}) {
        requireClean(text);
    }
    require(track.artists.size() <= 32, "artists are limited");
    for (const QString &artist : track.artists) {
        requireClean(artist);
        require(!artist.isEmpty(), "an artist has a name");
    }
    require(!track.length || (*track.length > 0 && *track.length <= thirtyDays), "a length is believable");
    require(track.persistentId() >= 0, "an identifier has 63 bits");
    require(!track.browserProcessId || *track.browserProcessId >= 0, "a process has a number");
    require(track.isSameTrack(track), "a track is the same as itself");
    require(!track.isEmpty() || track.isNameless(), "what is empty has no name");
    require(!(track.isLocalFile() && track.isFromWeb()), "an address is of a file or of the web");
    require(!(track.isLocalFile() && track.isLiveStream()), "a file has an end");
}

void checkReport(const PlayerReport &report)
{
    require(!report.position || (*report.position >= 0 && *report.position <= 1e9), "a position is in its range");
    require(!report.rate || (*report.rate >= 0 && *report.rate <= 100), "a rate is in its range");
    require(!report.volume || (*report.volume >= 0 && *report.volume <= 1), "a volume is in its range");
    if (report.track) {
        checkTrack(*report.track);
    }
}

void checkUserInfo(const TrackDetails &track)
{
    for (const auto status : {PlaybackStatus::Playing, PlaybackStatus::Paused}) {
        const QVariantMap info = userInfoOf(track, status);
        require(info.value(UserInfoKey::persistentId).typeId() == QMetaType::LongLong, "the identifier is a number");
        require(
            info.contains(UserInfoKey::location) != info.contains(UserInfoKey::storeUrl), "a track is in one place");
        require(info.contains(UserInfoKey::totalTime) != track.isLiveStream(), "only a stream has no total time");
    }
    require(userInfoOf(track, PlaybackStatus::Stopped).size() == 1, "what is stopped has no track");
}
} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    // The types are compared only for the log.
    QLoggingCategory::setFilterRules(QStringLiteral("tunedeck.*=true"));
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) { });
    return 0;
}

/// Each value is a player's properties, in the order in which it sends them.
int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    PropertyTypes types(QStringLiteral("player"));
    PlayerReport merged;
    const QList<Value> values = Value::readAll(QByteArrayView(data, qsizetype(size)));
    for (const Value &value : values) {
        const QVariantMap properties = value.plain().toMap();
        types.check(properties);
        const PlayerReport report = decodePlayerProperties(properties);
        checkReport(report);
        if (report.track && merged.track) {
            require(report.track->isSameTrack(*merged.track) == merged.track->isSameTrack(*report.track),
                "two tracks are the same from both sides");
        }
        merge(merged, report);
        require(!report.track || merged.track == report.track, "a report overwrites what was there");
        if (merged.track) {
            checkUserInfo(*merged.track);
        }
    }
    return 0;
}
