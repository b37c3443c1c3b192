// SPDX-License-Identifier: MIT
#pragma once

#include "updates/FileVerification.h"
#include "updates/NamelessFile.h"
#include "updates/Transfer.h"
#include "updates/feed/Appcast.h"

#include <QObject>
#include <QString>

#include <memory>

namespace tunedeck {

/// Downloads the file of an update into a folder. The file appears there, with its signature beside it, only if it has
/// the length and the SHA-512 that the feed says. Emits exactly one of saved() and failed(), or none if it is deleted
/// before.
class UpdateDownload : public QObject {
    Q_OBJECT

public:
    /// Creates `folder` if it does not exist.
    UpdateDownload(
        const TransferRules &rules, const AppcastItem &update, const QString &folder, QObject *parent = nullptr);

    /// Call it once.
    void start();

Q_SIGNALS:
    void progressed(qint64 bytes);
    /// All data has been received; the file is being verified.
    void verifying();
    void saved(const QString &path);
    void failed(tunedeck::UpdateFailure failure);

private:
    void verify();
    void save();
    /// Saves both the file and its signature, or neither.
    [[nodiscard]] NamelessFile::Naming saveAs(const QString &path);
    void fail(UpdateFailure failure);

    const AppcastItem m_update;
    const QString m_folder;
    std::shared_ptr<NamelessFile> m_file;
    qint64 m_received = 0;
    Transfer m_transfer; ///< writes into m_file and counts in m_received
    FileVerification m_verification;
};

} // namespace tunedeck
