// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <sodium.h>

#include <array>

namespace tunedeck {

/// The Ed25519 key that releases are signed with. It is in a file that only its owner may read, and in memory as long
/// as this object.
class SecretKey {
public:
    /// Makes a new key in a new file. Throws a Refusal if there is such a file, or if it cannot be written.
    static void make(const QString &path);

    /// Throws a Refusal if the file has no key, belongs to another user, or can be read or written by others.
    explicit SecretKey(const QString &path);
    ~SecretKey();
    SecretKey(const SecretKey &) = delete;
    SecretKey &operator=(const SecretKey &) = delete;

    /// In Base64.
    [[nodiscard]] QByteArray publicKey() const;
    /// 64 bytes.
    [[nodiscard]] QByteArray sign(const QByteArray &text) const;

private:
    std::array<unsigned char, crypto_sign_PUBLICKEYBYTES> m_public = {};
    std::array<unsigned char, crypto_sign_SECRETKEYBYTES> m_secret = {};
};

} // namespace tunedeck
