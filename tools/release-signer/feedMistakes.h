// SPDX-License-Identifier: MIT
#pragma once

#include "updates/feed/PublicKey.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QStringList>

namespace tunedeck {

/// The demands on a feed that is published.
struct FeedDemands {
    /// The serial of the feed that is published now. 0 for the first feed.
    qint64 publishedSerial;
    QDateTime now;
    /// One of them must have signed each file.
    QList<PublicKey> keys;
};

/// Why programs would not believe `feed`, or would believe it for too long. Empty if it can be signed.
[[nodiscard]] QStringList feedMistakes(const QByteArray &feed, const FeedDemands &demands);

} // namespace tunedeck
