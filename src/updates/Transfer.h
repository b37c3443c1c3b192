// SPDX-License-Identifier: MIT
#pragma once

#include "updates/HttpsRequest.h"
#include "updates/TransferRules.h"
#include "updates/UpdateFailure.h"

#include <QFutureWatcher>
#include <QList>
#include <QNetworkProxy>
#include <QObject>
#include <QTimer>
#include <QUrl>

#include <memory>

namespace tunedeck {

/// Loads the data at an https address through the system's proxy, without cookies, a cache or credentials. Follows at
/// most five redirects. Emits exactly one of finished() and failed(), or none if it is deleted before.
class Transfer : public QObject {
    Q_OBJECT

public:
    /// Takes the next bytes, on the thread of a request. Returns false if it cannot, which fails as
    /// UpdateFailure::notSaved. A call may outlast the transfer, so the sink must own what it uses.
    using Sink = HttpsRequest::Sink;

    /// Fails as soon as it has received more than `maximumSize` bytes.
    Transfer(const TransferRules &rules, qint64 maximumSize, Sink sink, QObject *parent = nullptr);
    /// Stops the transfer, and does not wait for a call of the sink that hangs.
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
    void conclude();
    void follow(const QUrl &url);

    class Reception;

    const TransferRules m_rules;
    const std::shared_ptr<Reception> m_reception;
    QUrl m_url;
    QFutureWatcher<QList<QNetworkProxy>> m_proxies;
    QTimer m_proxyPatience;
    int m_redirects = 0;
    std::shared_ptr<HttpsRequest> m_request; ///< the thread that runs it owns it, too
    QFutureWatcher<HttpsRequest::Answer> m_answer;
};

} // namespace tunedeck
