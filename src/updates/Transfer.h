// SPDX-License-Identifier: MIT
#pragma once

#include "updates/HttpsRequest.h"
#include "updates/TransferRules.h"
#include "updates/UpdateFailure.h"

#include <QByteArrayView>
#include <QFutureWatcher>
#include <QList>
#include <QNetworkProxy>
#include <QObject>
#include <QTimer>
#include <QUrl>

#include <atomic>
#include <memory>
#include <optional>
#include <thread>

namespace tunedeck {

/// Loads the data at an https address through the system's proxy, without cookies, a cache or credentials. Follows at
/// most five redirects. Emits exactly one of finished() and failed(), or none if it is deleted before.
class Transfer : public QObject {
    Q_OBJECT

public:
    /// Takes the next bytes, on a thread of the transfer's own. Returns false if it cannot, which fails as
    /// UpdateFailure::notSaved.
    using Sink = HttpsRequest::Sink;

    /// Fails as soon as it has received more than `maximumSize` bytes.
    Transfer(const TransferRules &rules, qint64 maximumSize, Sink sink, QObject *parent = nullptr);
    /// Stops the transfer within some milliseconds. The sink is not called afterwards.
    ~Transfer() override;

    /// Call it once.
    void start(const QUrl &url);

Q_SIGNALS:
    /// `bytes` in all.
    void progressed(qint64 bytes);
    void finished();
    /// One of the failures of a connection, UpdateFailure::tooLong or UpdateFailure::notSaved.
    void failed(tunedeck::UpdateFailure failure);

private:
    void load(const QUrl &url);
    void request();
    /// Runs on the transfer's thread.
    bool receive(QByteArrayView bytes);
    void conclude(const HttpsRequest::Answer &answer);
    void follow(const QUrl &url);
    void endThread();

    const TransferRules m_rules;
    const qint64 m_maximumSize;
    const Sink m_sink;
    QUrl m_url;
    QFutureWatcher<QList<QNetworkProxy>> m_proxies;
    QTimer m_proxyPatience;
    int m_redirects = 0;
    std::atomic<qint64> m_size = 0;
    std::atomic_bool m_isProgressPosted = false;
    /// Written by the transfer's thread, read when it has ended.
    std::optional<UpdateFailure> m_sinkFailure;
    std::unique_ptr<HttpsRequest> m_request;
    std::thread m_thread;
};

} // namespace tunedeck
