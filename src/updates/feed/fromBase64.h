// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace tunedeck {

inline constexpr qsizetype signatureSize = 64; ///< of Ed25519
inline constexpr qsizetype hashSize = 64; ///< of SHA-512

/// Empty if `base64` is not the Base64 of `size` bytes.
[[nodiscard]] inline QByteArray fromBase64(const QByteArray &base64, qsizetype size)
{
    const auto decoded = QByteArray::fromBase64Encoding(base64, QByteArray::AbortOnBase64DecodingErrors);
    return decoded && (*decoded).size() == size ? *decoded : QByteArray();
}

} // namespace tunedeck
