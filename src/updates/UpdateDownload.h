// SPDX-License-Identifier: MIT
#pragma once

#include "updates/FileVerification.h"
#include "updates/NamelessFile.h"
#include "updates/Transfer.h"
#include "updates/feed/Appcast.h"

#include <QFutureWatcher>
#include <QObject>
#include <QString>

#include <atomic>
#include <memory>

namespace tunedeck {

/// Downloads the file of an update into a folder. The file appears there, with its signature beside it, only if it has
/// the length and the SHA-512 that the feed says. Emits exactly one of saved() and failed(), or none if it is deleted
/// before. The folder may be on a slow disk or in the network: what is done there is done on other threads.
class UpdateDownload : public QObject {
    Q_OBJECT

public:
    /// Creates `folder` if it does not exist.
    UpdateDownload(
        const TransferRules &rules, const AppcastItem &update, const QString &folder, QObject *parent = nullptr);
    /// Leaves no file, except if the verified file is being saved at that moment. Waits for nothing: until a file that
    /// has not been saved is gone, it counts as BackgroundWork.
    ~UpdateDownload() override;

    /// Call it once.
    void start();

Q_SIGNALS:
    void progressed(qint64 bytes);
    /// All data has been received; the file is being verified.
    void verifying();
    void saved(const QString &path);
    void failed(tunedeck::UpdateFailure failure);

private:
    void load();
    void verify();
    void startSaving();
    void report();
    void fail(UpdateFailure failure);

    const AppcastItem m_update;
    const QString m_folder;
    QFutureWatcher<std::shared_ptr<NamelessFile>> m_creation;
    struct ReceivedFile;
    std::shared_ptr<ReceivedFile> m_received;
    Transfer m_transfer; ///< writes into the file of m_received
    FileVerification m_verification;
    QFutureWatcher<QString> m_saving;
    const std::shared_ptr<std::atomic_bool> m_isGivenUp = std::make_shared<std::atomic_bool>(false);
};

} // namespace tunedeck
