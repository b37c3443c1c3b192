// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstdint>

namespace tunedeck {

/// Four characters as one number, the first most significant. Music's constants are named so.
using FourCharCode = std::uint32_t;

[[nodiscard]] consteval FourCharCode fourCharCode(const char (&text)[5])
{
    FourCharCode code = 0;
    for (int i = 0; i < 4; ++i) {
        code = (code << 8) | static_cast<unsigned char>(text[i]);
    }
    return code;
}

/// MusicEPlS. Every code other than stopped and paused counts as playing.
namespace PlayerState {
inline constexpr FourCharCode stopped = fourCharCode("kPSS");
inline constexpr FourCharCode paused = fourCharCode("kPSp");
inline constexpr FourCharCode playing = fourCharCode("kPSP");
inline constexpr FourCharCode fastForwarding = fourCharCode("kPSF");
inline constexpr FourCharCode rewinding = fourCharCode("kPSR");

[[nodiscard]] constexpr bool isIdle(FourCharCode state)
{
    return state == stopped || state == paused;
}
} // namespace PlayerState

/// MusicERpt.
namespace SongRepeat {
inline constexpr FourCharCode off = fourCharCode("kRpO");
inline constexpr FourCharCode one = fourCharCode("kRp1");
inline constexpr FourCharCode all = fourCharCode("kAll");
} // namespace SongRepeat

/// MusicEKnd. The first two are the kinds of audio output that the display does not name.
namespace AirPlayDeviceKind {
inline constexpr FourCharCode unknown = fourCharCode("kAPU");
inline constexpr FourCharCode computer = fourCharCode("kAPC");
inline constexpr FourCharCode bluetooth = fourCharCode("kAPB");
inline constexpr FourCharCode other = fourCharCode("kAPO"); ///< any other device apart from the computer
} // namespace AirPlayDeviceKind

/// The keys of MusicApplication::playerInfo.
namespace UserInfoKey {
inline const QString persistentId = QStringLiteral("PersistentID"); ///< 63-bit integer
inline const QString playerState = QStringLiteral("Player State"); ///< "Playing", "Paused" or "Stopped"
inline const QString name = QStringLiteral("Name");
inline const QString artist = QStringLiteral("Artist");
inline const QString album = QStringLiteral("Album");
inline const QString totalTime = QStringLiteral("Total Time"); ///< seconds, above 0
inline const QString location = QStringLiteral("Location"); ///< address of a track that is not from the web
inline const QString storeUrl = QStringLiteral("Store URL"); ///< address of a track or stream of the web
} // namespace UserInfoKey

/// The kind of content that Music plays.
enum class FeedType { unknown = 0, localTrack = 1, streamedTrack = 2, liveStream = 3, stopped = 4 };

/// Whether a feed of this type plays nothing.
[[nodiscard]] constexpr bool isEmptyFeed(FeedType feedType)
{
    return feedType == FeedType::stopped || feedType == FeedType::unknown;
}

/// The source of the playlists on offer.
enum class PlaylistSource {
    unknown, ///< not known yet
    none, ///< Music neither has playlists nor opens playlist files
    music, ///< Music itself
    files ///< the user's music folder, whose playlist files Music opens
};

enum class RepeatMode { off = 0, one = 1, all = 2 };

/// A state of Music that the user can set.
enum class MusicControl { position, volume, shuffle, repeat };

/// Whether Music takes what the user sets.
enum class ControlAnswer {
    taken, ///< it does, or nothing shows yet that it does not
    missing, ///< Music has no such state, or cannot set it in the current track
    ignored ///< Music reports such a state, and keeps it when another is set
};

} // namespace tunedeck
