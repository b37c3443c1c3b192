// SPDX-License-Identifier: MIT
#pragma once

#include "updates/feed/PublicKey.h"

#include <QByteArray>
#include <QList>
#include <QUrl>

namespace tunedeck {

/// The text that the makers sign for a feed: a line that no other signed text begins with, and the feed's bytes.
[[nodiscard]] QByteArray feedTextToSign(const QByteArray &feed);

/// Whether one of `keys` has signed the feed. `signatures` has at most four lines, each an Ed25519 signature in Base64,
/// so that a feed can be signed with the old and the new key.
[[nodiscard]] bool isSignedFeed(const QByteArray &feed, const QByteArray &signatures, const QList<PublicKey> &keys);

/// The address of a feed's signatures: that of the feed with ".signature" at the end of its path.
[[nodiscard]] QUrl signatureAddress(const QUrl &feed);

} // namespace tunedeck
