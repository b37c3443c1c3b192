// SPDX-License-Identifier: MIT
#include "updates/Transfer.h"

#include "platform/shortened.h"
#include "updates/inBackground.h"
#include "updates/updatesLog.h"

#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSslSocket>

namespace tunedeck {

namespace {
constexpr int maximumRedirects = 5;
constexpr qint64 bufferSize = 65'536;
constexpr int successStatus = 200;

QList<QNetworkProxy> proxiesFor(const QUrl &url)
{
    // The first call of each takes long.
    static_cast<void>(QSslSocket::supportsSsl());
    return QNetworkProxyFactory::systemProxyForQuery(QNetworkProxyQuery(url));
}

QNetworkRequest requestFor(const QUrl &url)
{
    QNetworkRequest request(url);
    // Compressed data could grow without end when it is unpacked.
    request.setRawHeader("Accept-Encoding", "identity");
    // By default, Qt sends the user's language and country.
    request.setRawHeader("Accept-Language", "*");
    request.setRawHeader("User-Agent", "Tunedeck");
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    return request;
}

int statusOf(const QNetworkReply &reply)
{
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

UpdateFailure failureOf(QNetworkReply::NetworkError error)
{
    switch (error) {
    case QNetworkReply::SslHandshakeFailedError:
        return UpdateFailure::insecure;
    case QNetworkReply::RemoteHostClosedError:
        return UpdateFailure::interrupted;
    case QNetworkReply::AuthenticationRequiredError:
    case QNetworkReply::ProtocolFailure:
        return UpdateFailure::refused;
    default:
        return UpdateFailure::unreachable;
    }
}
} // namespace

Transfer::Transfer(const TransferRules &rules, qint64 maximumSize, QObject *parent)
    : QObject(parent)
    , m_rules(rules)
    , m_maximumSize(maximumSize)
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(rules.patience);
    connect(&m_patience, &QTimer::timeout, this, [this] { fail(UpdateFailure::stalled); });
    connect(&m_proxies, &QFutureWatcher<QList<QNetworkProxy>>::finished, this, &Transfer::request);
}

void Transfer::start(const QUrl &url)
{
    // A failure must not be emitted before start() returns.
    QMetaObject::invokeMethod(
        this, [this, url] { load(url); }, Qt::QueuedConnection);
}

void Transfer::load(const QUrl &url)
{
    if (!m_rules.isTrusted(url)) {
        qCDebug(updatesLog) << "refused: not a secure address:" << shortened(url.toDisplayString());
        fail(UpdateFailure::insecure);
        return;
    }
    m_url = url;
    m_patience.start();
    m_proxies.setFuture(inBackground([url] { return proxiesFor(url); }));
}

void Transfer::request()
{
    m_network.setProxy(m_proxies.result().value(0, QNetworkProxy(QNetworkProxy::NoProxy)));
    m_reply = m_network.get(requestFor(m_url));
    m_reply->setReadBufferSize(bufferSize);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &Transfer::judge);
    connect(m_reply, &QNetworkReply::readyRead, this, &Transfer::read);
    connect(m_reply, &QNetworkReply::finished, this, &Transfer::conclude);
}

void Transfer::judge()
{
    const QUrl location = m_reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
    if (!location.isEmpty()) {
        follow(m_url.resolved(location));
    } else if (statusOf(*m_reply) != successStatus) {
        qCDebug(updatesLog) << "the server answers with status" << statusOf(*m_reply);
        fail(UpdateFailure::refused);
    }
}

void Transfer::follow(const QUrl &url)
{
    dropReply();
    if (m_redirects == maximumRedirects) {
        fail(UpdateFailure::tooManyRedirects);
        return;
    }
    ++m_redirects;
    load(url);
}

void Transfer::read()
{
    const QByteArray bytes = m_reply->readAll();
    if (bytes.isEmpty()) {
        return;
    }
    m_patience.start();
    m_size += bytes.size();
    if (m_size > m_maximumSize) {
        fail(UpdateFailure::tooLong);
        return;
    }
    Q_EMIT received(bytes);
}

void Transfer::conclude()
{
    if (m_reply->error() != QNetworkReply::NoError) {
        qCDebug(updatesLog) << "the connection failed:" << shortened(m_reply->errorString());
        fail(failureOf(m_reply->error()));
        return;
    }
    read();
    // read() has dropped the reply if it was too long.
    if (m_reply) {
        dropReply();
        Q_EMIT finished();
    }
}

void Transfer::dropReply()
{
    m_patience.stop();
    m_reply->disconnect(this);
    // This may run while the reply emits a signal, and abort() must not be called then.
    m_reply->deleteLater();
    m_reply = nullptr;
}

void Transfer::fail(UpdateFailure failure)
{
    m_patience.stop();
    m_proxies.disconnect(this);
    if (m_reply) {
        dropReply();
    }
    Q_EMIT failed(failure);
}

} // namespace tunedeck
