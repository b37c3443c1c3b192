// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <optional>

namespace tunedeck {

/// An Ed25519 public key, which verifies signatures of files.
class PublicKey {
public:
    /// No value if `base64` is not the Base64 of 32 bytes.
    [[nodiscard]] static std::optional<PublicKey> fromBase64(const QByteArray &base64);

    /// Whether `signature` is the signature of the `size` bytes at `data`. Takes seconds for a gigabyte.
    [[nodiscard]] bool hasSigned(const uchar *data, qint64 size, const QByteArray &signature) const;

private:
    explicit PublicKey(const QByteArray &bytes);

    QByteArray m_bytes;
};

} // namespace tunedeck
