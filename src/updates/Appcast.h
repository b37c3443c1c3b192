// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUrl>

#include <optional>

namespace tunedeck {

/// A version that a feed offers. What the feed does not say, or says in a way that is not understood, is empty.
struct AppcastItem {
    /// The build number: by it versions are compared.
    QString version;
    /// What a user knows the version by.
    QString shortVersion;
    QString minimumSystemVersion;
    /// Of those who want prereleases; empty for everybody's.
    QString channel;
    /// HTML as it came, of 65,536 characters at most. Not safe to show.
    QString releaseNotes;
    /// Of the file to download.
    QUrl url;
    /// Of the file, in bytes; 0 if it is not known.
    qint64 length = 0;
    /// Ed25519, of the file's bytes: 64 bytes.
    QByteArray signature;

    /// The version as a user knows it.
    [[nodiscard]] QString displayVersion() const;
};

/// A program in use, and the system it runs on.
struct RunningProgram {
    /// The build number.
    QString version;
    QString shortVersion;
    QString systemVersion;
};

/// The items of a feed for Linux, in the feed's order; 1,000 of them are read at most. None where `xml` is no such
/// feed: where it is malformed or not in UTF-8, declares a document type (and so might declare entities), or has a tag
/// of more than 16,384 characters.
[[nodiscard]] std::optional<QList<AppcastItem>> readAppcast(const QByteArray &xml);

/// Of `items`, the highest version above the one that runs. Passed over are the versions of a channel, prereleases if
/// what runs is none itself, and versions for a newer system. A system's version is compared if both are dotted
/// numbers; such as "rolling" fits.
[[nodiscard]] std::optional<AppcastItem> newestUpdate(const QList<AppcastItem> &items, const RunningProgram &program);

/// Of `items`, the highest version above the one that runs that needs a newer system; otherwise as newestUpdate().
[[nodiscard]] std::optional<AppcastItem> newestForNewerSystem(
    const QList<AppcastItem> &items, const RunningProgram &program);

} // namespace tunedeck
