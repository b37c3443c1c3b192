// SPDX-License-Identifier: MIT
#include "updates/Transfer.h"

#include "platform/shortened.h"
#include "updates/feed/isSecureAddress.h"
#include "updates/inBackground.h"
#include "updates/updatesLog.h"

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

Transfer::Transfer(const TransferRules &rules, qint64 maximumSize, Sink sink, QObject *parent)
    : QObject(parent)
    , m_rules(rules)
    , m_maximumSize(maximumSize)
    , m_sink(std::move(sink))
{
    m_proxyPatience.setSingleShot(true);
    m_proxyPatience.setInterval(rules.patience);
    connect(&m_proxyPatience, &QTimer::timeout, this, [this] {
        m_proxies.disconnect(this);
        Q_EMIT failed(UpdateFailure::stalled);
    });
    connect(&m_proxies, &QFutureWatcher<QList<QNetworkProxy>>::finished, this, &Transfer::request);
}

Transfer::~Transfer()
{
    endThread();
}

void Transfer::start(const QUrl &url)
{
    // A failure must not be emitted before start() returns.
    QMetaObject::invokeMethod(
        this, [this, url] { load(url); }, Qt::QueuedConnection);
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
    m_request =
        std::make_unique<HttpsRequest>(m_rules, m_url, proxy, [this](QByteArrayView bytes) { return receive(bytes); });
    m_thread = std::thread([this] {
        const HttpsRequest::Answer answer = m_request->run();
        QMetaObject::invokeMethod(
            this, [this, answer] { conclude(answer); }, Qt::QueuedConnection);
    });
}

bool Transfer::receive(QByteArrayView bytes)
{
    m_size += bytes.size();
    if (m_size > m_maximumSize) {
        m_sinkFailure = UpdateFailure::tooLong;
    } else if (!m_sink(bytes)) {
        m_sinkFailure = UpdateFailure::notSaved;
    } else if (!m_isProgressPosted.exchange(true)) {
        QMetaObject::invokeMethod(
            this,
            [this] {
                m_isProgressPosted = false;
                Q_EMIT progressed(m_size);
            },
            Qt::QueuedConnection);
    }
    return !m_sinkFailure;
}

void Transfer::conclude(const HttpsRequest::Answer &answer)
{
    endThread();
    if (!answer.redirect.isEmpty()) {
        follow(answer.redirect);
    } else if (m_sinkFailure) {
        Q_EMIT failed(*m_sinkFailure);
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

void Transfer::endThread()
{
    if (m_thread.joinable()) {
        m_request->cancel();
        m_thread.join();
        m_request.reset();
    }
}

} // namespace tunedeck
