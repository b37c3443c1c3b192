// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>

#include <optional>

namespace tunedeck {

/// An Ed25519 public key, which verifies signatures.
class PublicKey {
public:
    /// No value if `base64` is not the Base64 of 32 bytes.
    [[nodiscard]] static std::optional<PublicKey> fromBase64(const QByteArray &base64);

    /// Whether `signature` is the signature of `text`.
    [[nodiscard]] bool hasSigned(const QByteArray &text, const QByteArray &signature) const;

private:
    explicit PublicKey(const QByteArray &bytes);

    QByteArray m_bytes;
};

/// Whether `signature` is the signature of `text` by one of `keys`.
[[nodiscard]] bool isSignedByOneOf(const QList<PublicKey> &keys, const QByteArray &text, const QByteArray &signature);

} // namespace tunedeck
