// SPDX-License-Identifier: MIT
#include "music/mpris/report/userInfoOf.h"

#include "music/MusicTypes.h"

namespace tunedeck {

namespace {

QString statusText(PlaybackStatus status)
{
    switch (status) {
    case PlaybackStatus::Stopped:
        return QStringLiteral("Stopped");
    case PlaybackStatus::Paused:
        return QStringLiteral("Paused");
    case PlaybackStatus::Playing:
        return QStringLiteral("Playing");
    }
    return {};
}

void insertText(QVariantMap &map, const QString &key, const QString &text)
{
    if (!text.isEmpty()) {
        map.insert(key, text);
    }
}

} // namespace

QVariantMap userInfoOf(const TrackDetails &track, PlaybackStatus status)
{
    QVariantMap info{{UserInfoKey::playerState, statusText(status)}};
    if (status == PlaybackStatus::Stopped) {
        return info;
    }
    info.insert(UserInfoKey::persistentId, track.persistentId());
    insertText(info, UserInfoKey::name, track.name());
    insertText(info, UserInfoKey::artist, track.artist());
    insertText(info, UserInfoKey::album, track.album);
    const bool isLive = track.isLiveStream();
    if (!isLive) {
        // A file whose length is not known is no live stream: it has a total time of 0.
        info.insert(UserInfoKey::totalTime, track.length.value_or(0));
    }
    info.insert(isLive || track.isFromWeb() ? UserInfoKey::storeUrl : UserInfoKey::location, track.url);
    return info;
}

} // namespace tunedeck
