// SPDX-License-Identifier: MIT
#pragma once

#include "updates/Transfer.h"
#include "updates/feed/Appcast.h"

#include <QByteArray>
#include <QFutureWatcher>
#include <QObject>
#include <QString>
#include <QTemporaryFile>

namespace tunedeck {

/// Downloads the file of an update into a folder. The file appears there only if it has the length and the SHA-512
/// that the feed says. Emits exactly one of saved() and failed(), or none if it is deleted before.
///
/// On file systems that support files without a name, as those of Linux do, no unverified file is left behind however
/// the program ends. On others, an unverified file stays behind only if the program is
/// killed.
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
    void saveUnderName();
    void fail(UpdateFailure failure);

    const AppcastItem m_update;
    const QString m_folder;
    QTemporaryFile m_file;
    Transfer m_transfer; ///< writes into m_file
    QFutureWatcher<std::optional<bool>> m_verification;
};

} // namespace tunedeck
