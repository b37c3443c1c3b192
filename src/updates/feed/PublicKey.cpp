// SPDX-License-Identifier: MIT
#include "updates/feed/PublicKey.h"

#include <sodium.h>

#include <algorithm>

namespace tunedeck {

namespace {
const uchar *bytesOf(const QByteArray &array)
{
    return reinterpret_cast<const uchar *>(array.constData());
}
} // namespace

std::optional<PublicKey> PublicKey::fromBase64(const QByteArray &base64)
{
    const auto decoded = QByteArray::fromBase64Encoding(base64, QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded || (*decoded).size() != crypto_sign_PUBLICKEYBYTES) {
        return std::nullopt;
    }
    return PublicKey(*decoded);
}

PublicKey::PublicKey(const QByteArray &bytes)
    : m_bytes(bytes)
{
}

bool PublicKey::hasSigned(const QByteArray &text, const QByteArray &signature) const
{
    return sodium_init() >= 0 && signature.size() == crypto_sign_BYTES
        && crypto_sign_verify_detached(
               bytesOf(signature), bytesOf(text), static_cast<unsigned long long>(text.size()), bytesOf(m_bytes))
        == 0;
}

bool isSignedByOneOf(const QList<PublicKey> &keys, const QByteArray &text, const QByteArray &signature)
{
    return std::any_of(keys.begin(), keys.end(), [&](const PublicKey &key) { return key.hasSigned(text, signature); });
}

} // namespace tunedeck
