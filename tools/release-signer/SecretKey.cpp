// SPDX-License-Identifier: MIT
#include "SecretKey.h"

#include "Refusal.h"

#include <QFile>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tunedeck {

namespace {
constexpr QByteArrayView firstLine("Tunedeck secret key 1\n");
constexpr qint64 maximumFile = 200;

QString reasonOf(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

/// Throws if others than this user have access.
void demandPrivate(int descriptor, const QString &path)
{
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        throw Refusal(QStringLiteral("%1 is not a file").arg(path));
    }
    if (status.st_uid != ::geteuid()) {
        throw Refusal(QStringLiteral("%1 belongs to another user").arg(path));
    }
    if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
        throw Refusal(
            QStringLiteral("others have access to %1: chmod 600 it, and make a new key if they may have read it")
                .arg(path));
    }
}
} // namespace

void SecretKey::make(const QString &path)
{
    if (sodium_init() < 0) {
        throw Refusal(QStringLiteral("this computer has no source of random numbers"));
    }
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor < 0) {
        throw Refusal(QStringLiteral("%1: %2").arg(path, reasonOf(errno)));
    }
    QFile file;
    QByteArray seed(crypto_sign_SEEDBYTES, '\0');
    randombytes_buf(seed.data(), static_cast<size_t>(seed.size()));
    const QByteArray text = firstLine.toByteArray() + seed.toBase64() + '\n';
    if (!file.open(descriptor, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle) || file.write(text) != text.size()
        || !file.flush() || ::fsync(descriptor) != 0) {
        throw Refusal(QStringLiteral("%1: %2").arg(path, reasonOf(errno)));
    }
}

SecretKey::SecretKey(const QString &path)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        throw Refusal(QStringLiteral("%1: %2").arg(path, reasonOf(errno)));
    }
    QFile file;
    if (!file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        throw Refusal(QStringLiteral("%1 cannot be read").arg(path));
    }
    demandPrivate(descriptor, path);
    QByteArray text = file.read(maximumFile);
    QByteArray seed = text.startsWith(firstLine) && text.endsWith('\n')
        ? QByteArray::fromBase64(text.mid(firstLine.size()).chopped(1))
        : QByteArray();
    const bool isKey = sodium_init() >= 0 && seed.size() == crypto_sign_SEEDBYTES
        && crypto_sign_seed_keypair(
               m_public.data(), m_secret.data(), reinterpret_cast<const unsigned char *>(seed.constData()))
            == 0;
    sodium_memzero(text.data(), static_cast<size_t>(text.size()));
    sodium_memzero(seed.data(), static_cast<size_t>(seed.size()));
    if (!isKey) {
        throw Refusal(QStringLiteral("%1 is not a key").arg(path));
    }
}

SecretKey::~SecretKey()
{
    sodium_memzero(m_secret.data(), m_secret.size());
}

QByteArray SecretKey::publicKey() const
{
    return QByteArray(reinterpret_cast<const char *>(m_public.data()), qsizetype(m_public.size())).toBase64();
}

QByteArray SecretKey::sign(const QByteArray &text) const
{
    QByteArray signature(crypto_sign_BYTES, '\0');
    crypto_sign_detached(reinterpret_cast<unsigned char *>(signature.data()), nullptr,
        reinterpret_cast<const unsigned char *>(text.constData()), static_cast<unsigned long long>(text.size()),
        m_secret.data());
    return signature;
}

} // namespace tunedeck
