// SPDX-License-Identifier: MIT
#pragma once

#include "updates/Appcast.h"
#include "updates/PublicKey.h"
#include "updates/Transfer.h"

#include <QByteArray>
#include <QFutureWatcher>
#include <QObject>
#include <QString>
#include <QTemporaryFile>

namespace tunedeck {

/// Downloads the file of an update into a folder, and lets it be seen there only if it has the length and the
/// signature that the feed says. Ends with exactly one of saved() and failed(); deleted before, silently.
///
/// Where the file system can hold a file without a name, as those of Linux can, nothing unverified is left behind
/// however the program ends; elsewhere, unless it is killed.
class UpdateDownload : public QObject {
    Q_OBJECT

public:
    /// Whom to believe, and where to save.
    struct Terms {
        TransferRules transferRules;
        PublicKey publicKey;
        /// Is made if there is none.
        QString folder;
    };

    UpdateDownload(const Terms &terms, const AppcastItem &update, QObject *parent = nullptr);

    /// May be called once.
    void start();

Q_SIGNALS:
    void progressed(qint64 bytes);
    /// All has come, and is checked now.
    void verifying();
    void saved(const QString &path);
    void failed(tunedeck::UpdateFailure failure);

private:
    void write(const QByteArray &bytes);
    void verify();
    void giveName();
    void fail(UpdateFailure failure);

    const Terms m_terms;
    const AppcastItem m_update;
    Transfer m_transfer;
    QTemporaryFile m_file;
    QFutureWatcher<std::optional<bool>> m_verification;
};

} // namespace tunedeck
