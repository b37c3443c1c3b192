// SPDX-License-Identifier: MIT
#include "updates/UpdateDownload.h"

#include "updates/fileName.h"

#include <QDir>
#include <QFile>

namespace tunedeck {

namespace {
constexpr int maximumNames = 100;
} // namespace

UpdateDownload::UpdateDownload(
    const TransferRules &rules, const AppcastItem &update, const QString &folder, QObject *parent)
    : QObject(parent)
    , m_update(update)
    , m_folder(folder)
    , m_transfer(rules, update.length,
          [this](QByteArrayView bytes) {
              m_received += bytes.size();
              return m_file->write(bytes);
          })
    , m_verification(update.statement())
{
    connect(&m_transfer, &Transfer::progressed, this, &UpdateDownload::progressed);
    connect(&m_transfer, &Transfer::finished, this, &UpdateDownload::verify);
    connect(&m_transfer, &Transfer::failed, this, [this](UpdateFailure failure) {
        fail(failure == UpdateFailure::interrupted ? UpdateFailure::incomplete : failure);
    });
    connect(&m_verification, &FileVerification::finished, this, [this](bool isGenuine) {
        if (isGenuine) {
            save();
        } else {
            fail(UpdateFailure::notGenuine);
        }
    });
}

void UpdateDownload::start()
{
    if (QDir().mkpath(m_folder)) {
        m_file = NamelessFile::create(m_folder);
    }
    if (!m_file) {
        fail(UpdateFailure::notSaved);
        return;
    }
    m_transfer.start(m_update.url);
}

void UpdateDownload::verify()
{
    if (m_received != m_update.length) {
        fail(UpdateFailure::incomplete);
        return;
    }
    Q_EMIT verifying();
    m_verification.start(m_file);
}

void UpdateDownload::save()
{
    const QString name = fileNameFor(m_update.displayVersion(), m_update.url);
    for (int attempt = 0; attempt < maximumNames; ++attempt) {
        const QString path = QDir(m_folder).filePath(numberedFileName(name, attempt));
        const NamelessFile::Naming naming = saveAs(path);
        if (naming == NamelessFile::Naming::Done) {
            Q_EMIT saved(path);
            return;
        }
        if (naming == NamelessFile::Naming::Failed) {
            break;
        }
    }
    fail(UpdateFailure::notSaved);
}

NamelessFile::Naming UpdateDownload::saveAs(const QString &path)
{
    const QString signaturePath = path + QStringLiteral(".signature");
    const std::unique_ptr<NamelessFile> signature = NamelessFile::create(m_folder);
    if (!signature || !signature->write(SignedFileStatement{m_update.statement(), m_update.signature}.text())) {
        return NamelessFile::Naming::Failed;
    }
    if (const auto naming = signature->giveName(signaturePath); naming != NamelessFile::Naming::Done) {
        return naming;
    }
    const NamelessFile::Naming naming = m_file->giveName(path);
    if (naming != NamelessFile::Naming::Done) {
        QFile::remove(signaturePath);
    }
    return naming;
}

void UpdateDownload::fail(UpdateFailure failure)
{
    m_transfer.disconnect(this);
    Q_EMIT failed(failure);
}

} // namespace tunedeck
