// SPDX-License-Identifier: MIT
#pragma once

#include "updates/Transfer.h"
#include "updates/feed/Appcast.h"
#include "updates/feed/PublicKey.h"

#include <QByteArray>
#include <QFutureWatcher>
#include <QList>
#include <QObject>
#include <QTimer>
#include <QUrl>

#include <chrono>
#include <memory>
#include <optional>

namespace tunedeck {

/// Looks in a signed feed, of at most a megabyte, for a version above the running one. Emits exactly one of its signals
/// other than believed(), or none if it is deleted before.
class UpdateCheck : public QObject {
    Q_OBJECT

public:
    struct Terms {
        TransferRules transferRules;
        /// The longest time that the check takes.
        std::chrono::milliseconds deadline;
        QList<PublicKey> keys;
        /// A feed with a lower serial is not believed.
        qint64 newestSerial;
        RunningProgram program;
    };

    explicit UpdateCheck(const Terms &terms, QObject *parent = nullptr);

    /// Call it once.
    void start(const QUrl &feed);

Q_SIGNALS:
    /// The feed is signed, and neither older than one seen before nor expired.
    void believed(qint64 serial);
    void upToDate();
    void found(const tunedeck::AppcastItem &update);
    /// All newer versions need a newer system. `newest` is the highest of them.
    void foundForNewerSystem(const tunedeck::AppcastItem &newest);
    void failed(tunedeck::UpdateFailure failure);

private:
    /// A feed that was read. The appcast is empty after a failure.
    struct Reading {
        std::optional<UpdateFailure> failure;
        Appcast appcast;
    };

    [[nodiscard]] static Reading read(
        const QByteArray &feed, const QByteArray &signatures, const QList<PublicKey> &keys, qint64 newestSerial);
    void startReading();
    void report();
    void fail(UpdateFailure failure);

    const Terms m_terms;
    QUrl m_address;
    // The transfers append to these, and own them, too.
    const std::shared_ptr<QByteArray> m_feed = std::make_shared<QByteArray>();
    const std::shared_ptr<QByteArray> m_signatures = std::make_shared<QByteArray>();
    Transfer m_feedTransfer;
    Transfer m_signatureTransfer;
    QFutureWatcher<Reading> m_reading;
    QTimer m_deadline;
};

} // namespace tunedeck
