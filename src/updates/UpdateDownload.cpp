// SPDX-License-Identifier: MIT
#include "updates/UpdateDownload.h"

#include "updates/fileName.h"
#include "updates/inBackground.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <thread>

namespace tunedeck {

namespace {
constexpr int maximumNames = 100;

/// Null if there can be no file in the folder. The file is closed on a thread of its own, whoever owns it last: the
/// folder may hang.
std::shared_ptr<NamelessFile> createFile(const QString &folder)
{
    std::unique_ptr<NamelessFile> file = QDir().mkpath(folder) ? NamelessFile::create(folder) : nullptr;
    if (!file) {
        return nullptr;
    }
    // A file system that knows no files without a name would keep the hidden one after the program's end.
    const auto close = [isOpen = std::make_shared<BackgroundWork>()](
                           const NamelessFile *last) { std::thread([isOpen, last] { delete last; }).detach(); };
    return {file.release(), close};
}

/// Saves both the file and its signature, or neither.
NamelessFile::Naming saveAs(const QString &path, NamelessFile &file, const SignedFileStatement &statement)
{
    const QString signaturePath = path + QStringLiteral(".signature");
    const std::unique_ptr<NamelessFile> signature = NamelessFile::create(QFileInfo(path).path());
    if (!signature || !signature->write(statement.text())) {
        return NamelessFile::Naming::Failed;
    }
    if (const auto naming = signature->giveName(signaturePath); naming != NamelessFile::Naming::Done) {
        return naming;
    }
    const NamelessFile::Naming naming = file.giveName(path);
    if (naming != NamelessFile::Naming::Done) {
        QFile::remove(signaturePath);
    }
    return naming;
}

/// Returns the path at which the file is then. Empty if it cannot be saved.
QString save(NamelessFile &file, const SignedFileStatement &statement, const QString &folder, const QString &name)
{
    for (int attempt = 0; attempt < maximumNames; ++attempt) {
        const QString path = QDir(folder).filePath(numberedFileName(name, attempt));
        const NamelessFile::Naming naming = saveAs(path, file, statement);
        if (naming != NamelessFile::Naming::IsTaken) {
            return naming == NamelessFile::Naming::Done ? path : QString();
        }
    }
    return {};
}
} // namespace

/// What the threads of the transfer's requests write, which may outlive the download.
struct UpdateDownload::ReceivedFile {
    std::shared_ptr<NamelessFile> file; ///< set before the transfer starts
    std::atomic<qint64> size = 0; ///< in bytes
};

UpdateDownload::UpdateDownload(
    const TransferRules &rules, const AppcastItem &update, const QString &folder, QObject *parent)
    : QObject(parent)
    , m_update(update)
    , m_folder(folder)
    , m_received(std::make_shared<ReceivedFile>())
    , m_transfer(rules, update.length,
          [received = m_received](QByteArrayView bytes) {
              received->size += bytes.size();
              return received->file->write(bytes);
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
            startSaving();
        } else {
            fail(UpdateFailure::notGenuine);
        }
    });
    connect(&m_creation, &QFutureWatcherBase::finished, this, &UpdateDownload::load);
    connect(&m_saving, &QFutureWatcherBase::finished, this, &UpdateDownload::report);
}

UpdateDownload::~UpdateDownload()
{
    *m_isGivenUp = true;
}

void UpdateDownload::start()
{
    m_creation.setFuture(inBackground([folder = m_folder] { return createFile(folder); }));
}

void UpdateDownload::load()
{
    m_received->file = m_creation.result();
    if (!m_received->file) {
        fail(UpdateFailure::notSaved);
        return;
    }
    m_transfer.start(m_update.url);
}

void UpdateDownload::verify()
{
    if (m_received->size != m_update.length) {
        fail(UpdateFailure::incomplete);
        return;
    }
    Q_EMIT verifying();
    m_verification.start(m_received->file);
}

void UpdateDownload::startSaving()
{
    m_saving.setFuture(inBackground([file = m_received->file, folder = m_folder, isGivenUp = m_isGivenUp,
                                        statement = SignedFileStatement{m_update.statement(), m_update.signature},
                                        name = fileNameFor(m_update.displayVersion(), m_update.url)] {
        return *isGivenUp ? QString() : save(*file, statement, folder, name);
    }));
}

void UpdateDownload::report()
{
    const QString path = m_saving.result();
    if (path.isEmpty()) {
        fail(UpdateFailure::notSaved);
    } else {
        Q_EMIT saved(path);
    }
}

void UpdateDownload::fail(UpdateFailure failure)
{
    m_transfer.disconnect(this);
    Q_EMIT failed(failure);
}

} // namespace tunedeck
