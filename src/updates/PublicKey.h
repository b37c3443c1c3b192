// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <optional>

namespace tunedeck {

/// An Ed25519 public key, with which it is known who signed a file.
class PublicKey {
public:
    /// None for what is not the Base64 of 32 bytes.
    [[nodiscard]] static std::optional<PublicKey> fromBase64(const QByteArray &base64);

    /// Whether `signature` is that of the `size` bytes at `data`. Takes seconds for a gigabyte.
    [[nodiscard]] bool hasSigned(const uchar *data, qint64 size, const QByteArray &signature) const;

private:
    explicit PublicKey(const QByteArray &bytes);

    QByteArray m_bytes;
};

} // namespace tunedeck
