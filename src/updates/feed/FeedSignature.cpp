// SPDX-License-Identifier: MIT
#include "updates/feed/FeedSignature.h"

#include "updates/feed/fromBase64.h"

#include <QByteArrayList>

#include <algorithm>

namespace tunedeck {

namespace {
constexpr qsizetype maximumSignatures = 4;
} // namespace

QByteArray feedTextToSign(const QByteArray &feed)
{
    return "Tunedeck feed 1\n" + feed;
}

bool isSignedFeed(const QByteArray &feed, const QByteArray &signatures, const QList<PublicKey> &keys)
{
    const QByteArray text = feedTextToSign(feed);
    const QByteArrayList lines = signatures.trimmed().split('\n');
    return lines.size() <= maximumSignatures && std::any_of(lines.begin(), lines.end(), [&](const QByteArray &line) {
        return isSignedByOneOf(keys, text, fromBase64(line.trimmed(), signatureSize));
    });
}

QUrl signatureAddress(const QUrl &feed)
{
    QUrl address = feed;
    address.setPath(feed.path() + QStringLiteral(".signature"));
    return address;
}

} // namespace tunedeck
