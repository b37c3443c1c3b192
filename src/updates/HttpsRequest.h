// SPDX-License-Identifier: MIT
#pragma once

#include "updates/TransferRules.h"
#include "updates/UpdateFailure.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QNetworkProxy>
#include <QString>
#include <QUrl>

#include <curl/curl.h>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>

namespace tunedeck {

/// One request to a server over https, without cookies, a cache or credentials. It follows no redirect.
class HttpsRequest {
public:
    /// Takes the next bytes of the body. Returns false if it cannot, which ends the request.
    using Sink = std::function<bool(QByteArrayView bytes)>;

    struct Answer {
        /// No value if the body has arrived or the server redirects.
        std::optional<UpdateFailure> failure;
        /// The address that the server redirects to. Empty if it does not.
        QUrl redirect;
        /// The reason of a failure in English, for the log.
        QString detail;
    };

    /// The first call takes long. Call it, on any thread, before the first request is created.
    static void prepareLibrary();

    HttpsRequest(const TransferRules &rules, const QUrl &url, const QNetworkProxy &proxy, Sink sink);

    /// Blocks until the request ends. Calls the sink on the same thread. Call it once.
    [[nodiscard]] Answer run();
    /// Ends run() within some milliseconds. Any thread may call it.
    void cancel();

private:
    using Easy = std::unique_ptr<CURL, decltype(&curl_easy_cleanup)>;
    using Multi = std::unique_ptr<CURLM, decltype(&curl_multi_cleanup)>;
    using Lines = std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)>;

    static size_t receiveHeader(char *line, size_t, size_t size, void *request);
    static size_t receiveBody(char *bytes, size_t, size_t size, void *request);

    void setUp(const TransferRules &rules);
    void setUpProxy(const QNetworkProxy &proxy);
    [[nodiscard]] CURLcode perform();
    /// These return false to end the request.
    [[nodiscard]] bool takeHeader(QByteArrayView line);
    [[nodiscard]] bool takeEndOfHeaders();
    [[nodiscard]] bool takeAnswerOfProxy();

    const QUrl m_url;
    const Sink m_sink;
    std::atomic_bool m_isCancelled = false;
    qint64 m_headerBytes = 0;
    /// Whether the next answer is that of the proxy, for which no certificate vouches.
    bool m_awaitsTunnel = false;
    int m_status = 0;
    QByteArray m_location;
    Answer m_answer;
    char m_error[CURL_ERROR_SIZE] = {};
    Lines m_lines;
    Multi m_multi; ///< outlives the handle in it
    Easy m_easy;
};

} // namespace tunedeck
