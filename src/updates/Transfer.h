// SPDX-License-Identifier: MIT
#pragma once

#include "updates/UpdateFailure.h"
#include "updates/isSecureAddress.h"

#include <QFutureWatcher>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QObject>
#include <QTimer>
#include <QUrl>

#include <chrono>
#include <functional>

class QNetworkReply;

namespace tunedeck {

/// What a transfer keeps to.
struct TransferRules {
    /// Whether an address may be asked; also of those to which a server sends on.
    std::function<bool(const QUrl &)> isTrusted = isSecureAddress;
    /// How long nothing may come before the server is given up.
    std::chrono::milliseconds patience = std::chrono::seconds(15);
};

/// Gets what is at an address, through the system's proxy; without cookies, a cache or credentials, and follows five
/// redirects at most. Ends with exactly one of finished() and failed(); deleted before, silently.
class Transfer : public QObject {
    Q_OBJECT

public:
    /// Fails as soon as more than `maximumSize` bytes come.
    Transfer(const TransferRules &rules, qint64 maximumSize, QObject *parent = nullptr);

    /// May be called once.
    void start(const QUrl &url);

Q_SIGNALS:
    void received(const QByteArray &bytes);
    void finished();
    /// One of the failures of a connection, or UpdateFailure::tooLong.
    void failed(tunedeck::UpdateFailure failure);

private:
    void approach(const QUrl &url);
    void request();
    /// Knows by the answer's head whether its body is worth to be waited for.
    void judge();
    void follow(const QUrl &url);
    void read();
    void conclude();
    void dropReply();
    void fail(UpdateFailure failure);

    const TransferRules m_rules;
    const qint64 m_maximumSize;
    QUrl m_url;
    QNetworkAccessManager m_network;
    QFutureWatcher<QList<QNetworkProxy>> m_proxies;
    QTimer m_patience;
    QNetworkReply *m_reply = nullptr; ///< m_network's
    int m_redirects = 0;
    qint64 m_size = 0;
};

} // namespace tunedeck
