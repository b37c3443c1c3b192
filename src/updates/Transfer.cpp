// SPDX-License-Identifier: MIT
#include "updates/Transfer.h"

#include "platform/shortened.h"
#include "updates/feed/isSecureAddress.h"
#include "updates/inBackground.h"
#include "updates/updatesLog.h"

#include <QByteArrayView>

#include <mutex>
#include <optional>
#include <utility>

namespace tunedeck {

namespace {
constexpr int maximumRedirects = 5;

QList<QNetworkProxy> proxiesFor(const QUrl &url)
{
    HttpsRequest::prepareLibrary();
    return QNetworkProxyFactory::systemProxyForQuery(QNetworkProxyQuery(url));
}
} // namespace

/// What the threads of a transfer's requests receive, one after another. The last one may outlive the transfer.
class Transfer::Reception {
public:
    Reception(Transfer *transfer, qint64 maximumSize, Sink sink)
        : m_maximumSize(maximumSize)
        , m_sink(std::move(sink))
        , m_transfer(transfer)
    {
    }

    /// Runs on the thread of a request. Returns false to end the request.
    bool receive(QByteArrayView bytes)
    {
        if (!count(bytes.size())) {
            return false;
        }
        // The sink may hang, so nothing is locked meanwhile.
        const bool isTaken = m_sink(bytes);
        const std::lock_guard lock(m_mutex);
        if (!isTaken) {
            m_failure = UpdateFailure::notSaved;
            return false;
        }
        postProgress();
        return true;
    }

    // The main thread calls these two.

    /// Nothing reaches the transfer afterwards.
    void end()
    {
        const std::lock_guard lock(m_mutex);
        m_transfer = nullptr;
    }
    [[nodiscard]] std::optional<UpdateFailure> failure() const
    {
        const std::lock_guard lock(m_mutex);
        return m_failure;
    }

private:
    /// Returns whether the sink may have the bytes.
    bool count(qint64 bytes)
    {
        const std::lock_guard lock(m_mutex);
        m_size += bytes;
        if (m_size > m_maximumSize) {
            m_failure = UpdateFailure::tooLong;
        }
        return m_transfer && !m_failure;
    }
    /// Call it under the mutex.
    void postProgress()
    {
        if (m_transfer && !std::exchange(m_isProgressPosted, true)) {
            QMetaObject::invokeMethod(m_transfer, [this] { report(); }, Qt::QueuedConnection);
        }
    }
    /// Runs on the main thread, while there is a transfer.
    void report()
    {
        std::unique_lock lock(m_mutex);
        m_isProgressPosted = false;
        const qint64 size = m_size;
        Transfer *const transfer = m_transfer;
        lock.unlock();
        Q_EMIT transfer->progressed(size);
    }

    const qint64 m_maximumSize;
    const Sink m_sink;
    mutable std::mutex m_mutex;
    // Under the mutex:
    Transfer *m_transfer; ///< null after its end
    qint64 m_size = 0; ///< in bytes
    bool m_isProgressPosted = false;
    std::optional<UpdateFailure> m_failure;
};

Transfer::Transfer(const TransferRules &rules, qint64 maximumSize, Sink sink, QObject *parent)
    : QObject(parent)
    , m_rules(rules)
    , m_reception(std::make_shared<Reception>(this, maximumSize, std::move(sink)))
{
    m_proxyPatience.setSingleShot(true);
    m_proxyPatience.setInterval(rules.patience);
    connect(&m_proxyPatience, &QTimer::timeout, this, [this] {
        m_proxies.disconnect(this);
        Q_EMIT failed(UpdateFailure::stalled);
    });
    connect(&m_proxies, &QFutureWatcher<QList<QNetworkProxy>>::finished, this, &Transfer::request);
    connect(&m_answer, &QFutureWatcher<HttpsRequest::Answer>::finished, this, &Transfer::conclude);
}

Transfer::~Transfer()
{
    m_reception->end();
    if (m_request) {
        m_request->cancel();
    }
}

void Transfer::start(const QUrl &url)
{
    // A failure must not be emitted before start() returns.
    QMetaObject::invokeMethod(this, [this, url] { load(url); }, Qt::QueuedConnection);
}

void Transfer::load(const QUrl &url)
{
    if (!isSecureAddress(url)) {
        qCDebug(updatesLog) << "refused: not a secure address:" << shortened(url.toDisplayString());
        Q_EMIT failed(UpdateFailure::insecure);
        return;
    }
    m_url = url;
    // The system may ask a server for the proxy.
    m_proxyPatience.start();
    m_proxies.setFuture(inBackground([url] { return proxiesFor(url); }));
}

void Transfer::request()
{
    m_proxyPatience.stop();
    const QNetworkProxy proxy = m_proxies.result().value(0, QNetworkProxy(QNetworkProxy::NoProxy));
    m_request = std::make_shared<HttpsRequest>(
        m_rules, m_url, proxy, [reception = m_reception](QByteArrayView bytes) { return reception->receive(bytes); });
    m_answer.setFuture(inBackground([request = m_request] { return request->run(); }));
}

void Transfer::conclude()
{
    const HttpsRequest::Answer answer = m_answer.result();
    const std::optional<UpdateFailure> failure = m_reception->failure();
    if (!answer.redirect.isEmpty()) {
        follow(answer.redirect);
    } else if (failure) {
        Q_EMIT failed(*failure);
    } else if (answer.failure) {
        qCDebug(updatesLog).noquote() << shortened(answer.detail);
        Q_EMIT failed(*answer.failure);
    } else {
        Q_EMIT finished();
    }
}

void Transfer::follow(const QUrl &url)
{
    if (m_redirects == maximumRedirects) {
        Q_EMIT failed(UpdateFailure::tooManyRedirects);
        return;
    }
    ++m_redirects;
    load(url);
}

} // namespace tunedeck
