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

struct TransferRules {
    /// Whether an address, even one that a server redirects to, may be loaded.
    std::function<bool(const QUrl &)> isTrusted = isSecureAddress;
    /// The longest time without data.
    std::chrono::milliseconds patience = std::chrono::seconds(15);
};

/// Loads the data at an address through the system's proxy, without cookies, a cache or credentials. Follows at most
/// five redirects. Emits exactly one of finished() and failed(), or none if it is deleted before.
class Transfer : public QObject {
    Q_OBJECT

public:
    /// Fails as soon as it has received more than `maximumSize` bytes.
    Transfer(const TransferRules &rules, qint64 maximumSize, QObject *parent = nullptr);

    /// Call it once.
    void start(const QUrl &url);

Q_SIGNALS:
    void received(const QByteArray &bytes);
    void finished();
    /// One of the failures of a connection, or UpdateFailure::tooLong.
    void failed(tunedeck::UpdateFailure failure);

private:
    void load(const QUrl &url);
    void request();
    /// Decides by the answer's headers whether to wait for its body.
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
    QNetworkReply *m_reply = nullptr; ///< a child of m_network
    int m_redirects = 0;
    qint64 m_size = 0;
};

} // namespace tunedeck
