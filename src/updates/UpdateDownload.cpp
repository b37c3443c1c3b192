// SPDX-License-Identifier: MIT
#include "updates/UpdateDownload.h"

#include "updates/fileName.h"
#include "updates/inBackground.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <unistd.h>

namespace tunedeck {

namespace {
constexpr int maximumNames = 100;

/// No value if the file cannot be read. Closes `descriptor`.
std::optional<bool> isGenuine(int descriptor, const AppcastItem &update)
{
    QFile file;
    if (!file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle) || file.size() != update.length) {
        return std::nullopt;
    }
    const uchar *data = file.map(0, update.length);
    const QByteArrayView content(data, data ? update.length : 0);
    return data ? std::optional(QCryptographicHash::hash(content, QCryptographicHash::Sha512) == update.sha512)
                : std::nullopt;
}

/// A dangling link takes a path too.
bool isTaken(const QString &path)
{
    const QFileInfo file(path);
    return file.exists() || file.isSymLink();
}
} // namespace

UpdateDownload::UpdateDownload(
    const TransferRules &rules, const AppcastItem &update, const QString &folder, QObject *parent)
    : QObject(parent)
    , m_update(update)
    , m_folder(folder)
    , m_file(QDir(folder).filePath(QStringLiteral(".tunedeck-XXXXXX")))
    , m_transfer(rules, update.length,
          [this](QByteArrayView bytes) { return m_file.write(bytes.data(), bytes.size()) == bytes.size(); })
{
    connect(&m_transfer, &Transfer::progressed, this, &UpdateDownload::progressed);
    connect(&m_transfer, &Transfer::finished, this, &UpdateDownload::verify);
    connect(&m_transfer, &Transfer::failed, this, [this](UpdateFailure failure) {
        fail(failure == UpdateFailure::interrupted ? UpdateFailure::incomplete : failure);
    });
    connect(&m_verification, &QFutureWatcher<std::optional<bool>>::finished, this, &UpdateDownload::saveUnderName);
}

void UpdateDownload::start()
{
    if (!QDir().mkpath(m_folder) || !m_file.open()) {
        fail(UpdateFailure::notSaved);
        return;
    }
    m_transfer.start(m_update.url);
}

void UpdateDownload::verify()
{
    if (!m_file.flush()) {
        fail(UpdateFailure::notSaved);
        return;
    }
    if (m_file.size() != m_update.length) {
        fail(UpdateFailure::incomplete);
        return;
    }
    Q_EMIT verifying();
    // The thread has a descriptor of its own, because the download may be stopped meanwhile.
    m_verification.setFuture(inBackground(
        [descriptor = ::dup(m_file.handle()), update = m_update] { return isGenuine(descriptor, update); }));
}

void UpdateDownload::saveUnderName()
{
    const std::optional<bool> isVerified = m_verification.result();
    // A temporary file is readable for its owner only, downloads usually are for others too.
    constexpr QFileDevice::Permissions forAllToRead =
        QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther;
    if (!isVerified || !m_file.setPermissions(forAllToRead)) {
        fail(UpdateFailure::notSaved);
        return;
    }
    if (!*isVerified) {
        fail(UpdateFailure::notGenuine);
        return;
    }
    const QString name = fileNameFor(m_update.displayVersion(), m_update.url);
    for (int attempt = 0; attempt < maximumNames; ++attempt) {
        const QString path = QDir(m_folder).filePath(numberedFileName(name, attempt));
        if (isTaken(path)) {
            continue;
        }
        if (!QFile::rename(m_file.fileName(), path)) {
            break;
        }
        Q_EMIT saved(path);
        return;
    }
    fail(UpdateFailure::notSaved);
}

void UpdateDownload::fail(UpdateFailure failure)
{
    m_transfer.disconnect(this);
    Q_EMIT failed(failure);
}

} // namespace tunedeck
