// SPDX-License-Identifier: MIT
#pragma once

#include "updates/feed/FileStatement.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QUrl>

#include <optional>

namespace tunedeck {

/// A version that a feed offers. A field is empty if the feed does not contain it or its value is not valid. No text
/// but the notes has characters that turn the text around them (see isDirectionControl()).
struct AppcastItem {
    /// The build number, by which versions are compared.
    QString version;
    /// The version that users see.
    QString shortVersion;
    QString minimumSystemVersion;
    /// The channel of a version that is not for everybody.
    QString channel;
    /// HTML from the network, at most 65,536 characters. Not safe to show.
    QString releaseNotes;
    /// The address of the file to download.
    QUrl url;
    /// The size of the file in bytes. 0 if it is unknown.
    qint64 length = 0;
    /// The SHA-512 of the file, 64 bytes.
    QByteArray sha512;
    /// The Ed25519 signature of statement(), 64 bytes.
    QByteArray signature;

    /// The version that users see, or the build number if there is none.
    [[nodiscard]] QString displayVersion() const;
    [[nodiscard]] FileStatement statement() const;
};

inline constexpr qint64 highestSerial = 1'000'000'000;

/// A feed: a list of versions.
struct Appcast {
    /// Each feed that is published has a higher one. At least 1 and at most the highest, or 0 if it is missing.
    qint64 serial = 0;
    /// The time after which the feed is not believed. Invalid if it is missing.
    QDateTime expiry;
    /// At most 1,000, for Linux, in the feed's order.
    QList<AppcastItem> items;
};

/// The running program and its system.
struct RunningProgram {
    /// The build number.
    QString version;
    QString shortVersion;
    QString systemVersion;
};

/// No value if `xml` is malformed, is not in UTF-8, or may take long to read (see isSafeXml()).
[[nodiscard]] std::optional<Appcast> readAppcast(const QByteArray &xml);

/// The highest version in `items` above the running one. Ignores versions of a channel, versions for a newer system,
/// and prereleases unless the running version is one. Compares versions of the system only if both are dotted numbers;
/// any other version, such as "rolling", is new enough.
[[nodiscard]] std::optional<AppcastItem> newestUpdate(const QList<AppcastItem> &items, const RunningProgram &program);

/// Like newestUpdate(), but only among the versions that need a newer system.
[[nodiscard]] std::optional<AppcastItem> newestForNewerSystem(
    const QList<AppcastItem> &items, const RunningProgram &program);

} // namespace tunedeck
