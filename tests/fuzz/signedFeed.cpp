// SPDX-License-Identifier: MIT
#include "updates/feed/FeedSignature.h"

#include "require.h"
#include "updates/feed/FileStatement.h"

#include <QByteArray>
#include <QList>

#include <sodium.h>

#include <array>
#include <optional>

using namespace tunedeck;
using fuzz::require;

namespace {
/// A maker who signs always with the same key, so that a finding can be repeated.
class Maker {
public:
    Maker()
    {
        const std::array<unsigned char, crypto_sign_SEEDBYTES> seed = {1, 2, 3};
        crypto_sign_seed_keypair(m_public.data(), m_secret.data(), seed.data());
    }

    [[nodiscard]] QList<PublicKey> keys() const
    {
        const QByteArray bytes(reinterpret_cast<const char *>(m_public.data()), qsizetype(m_public.size()));
        return {*PublicKey::fromBase64(bytes.toBase64())};
    }

    [[nodiscard]] QByteArray sign(const QByteArray &text) const
    {
        QByteArray signature(crypto_sign_BYTES, '\0');
        crypto_sign_detached(reinterpret_cast<unsigned char *>(signature.data()), nullptr,
            reinterpret_cast<const unsigned char *>(text.constData()), static_cast<unsigned long long>(text.size()),
            m_secret.data());
        return signature.toBase64();
    }

private:
    std::array<unsigned char, crypto_sign_PUBLICKEYBYTES> m_public = {};
    std::array<unsigned char, crypto_sign_SECRETKEYBYTES> m_secret = {};
};

void checkFeed(const QByteArray &feed, const QByteArray &signatures)
{
    static const Maker maker;
    static const QList<PublicKey> keys = maker.keys();
    require(!isSignedFeed(feed, signatures, keys), "a feed that nobody has signed is not signed");
    require(!isSignedFeed(feed, signatures, {}), "without a key nothing is signed");
    const QByteArray signature = maker.sign(feedTextToSign(feed));
    require(isSignedFeed(feed, signature, keys), "a signed feed is signed");
    require(isSignedFeed(feed, signature + '\n' + signature, keys), "a feed may have two signatures");
    require(!isSignedFeed(feed + ' ', signature, keys), "the signature is of all bytes");
    require(!isSignedFeed(feed, maker.sign(feed), keys), "the signature is of a feed and of nothing else");
}

void checkStatement(const QByteArray &text)
{
    if (const std::optional<SignedFileStatement> read = SignedFileStatement::fromText(text)) {
        require(read->text() == text, "a statement has one form");
        require(read->statement.length > 0, "a stated length is believable");
        require(read->statement.sha512.size() == 64, "a stated hash is whole");
        require(!text.startsWith("Tunedeck feed"), "a statement is no feed");
    }
}
} // namespace

/// The signatures end at the first empty line; the rest is the feed.
int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const qsizetype end = bytes.indexOf("\n\n");
    checkFeed(end < 0 ? QByteArray() : bytes.mid(end + 2), bytes.left(end));
    checkStatement(bytes);
    return 0;
}
