// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <sodium.h>

namespace tunedeck {

/// Signs files as the makers of updates do.
class TestSigner {
public:
    /// Signs by a new key.
    TestSigner() { crypto_sign_keypair(bytesOf(m_publicKey), bytesOf(m_secretKey)); }
    /// Signs by the key that 32 bytes make.
    explicit TestSigner(QByteArray &seed)
    {
        crypto_sign_seed_keypair(bytesOf(m_publicKey), bytesOf(m_secretKey), bytesOf(seed));
    }

    /// Keys and signatures are in Base64.
    [[nodiscard]] QByteArray publicKey() const { return m_publicKey.toBase64(); }
    [[nodiscard]] QByteArray sign(const QByteArray &text) const
    {
        QByteArray signature(crypto_sign_BYTES, '\0');
        crypto_sign_detached(bytesOf(signature), nullptr, reinterpret_cast<const unsigned char *>(text.constData()),
            static_cast<unsigned long long>(text.size()),
            reinterpret_cast<const unsigned char *>(m_secretKey.constData()));
        return signature.toBase64();
    }

private:
    static unsigned char *bytesOf(QByteArray &array) { return reinterpret_cast<unsigned char *>(array.data()); }

    QByteArray m_publicKey{crypto_sign_PUBLICKEYBYTES, '\0'};
    QByteArray m_secretKey{crypto_sign_SECRETKEYBYTES, '\0'};
};

} // namespace tunedeck
