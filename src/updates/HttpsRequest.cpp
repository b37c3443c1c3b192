// SPDX-License-Identifier: MIT
#include "updates/HttpsRequest.h"

#include <QFile>

#include <algorithm>
#include <csignal>
#include <utility>

namespace tunedeck {

namespace {
constexpr qint64 maximumHeaders = 300'000;
constexpr int successStatus = 200;
constexpr int notFoundStatus = 404;
constexpr int goneStatus = 410;
/// In milliseconds. libcurl shortens it for timers of its own.
constexpr int longestWait = 60'000;

/// libcurl may write to a connection that the server has closed.
void blockBrokenPipes()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

curl_slist *requestLines()
{
    // Compressed data could grow without end when it is unpacked.
    return curl_slist_append(curl_slist_append(nullptr, "Accept-Encoding: identity"), "Accept-Language: *");
}

/// The number in a line such as "HTTP/1.1 200 OK".
int statusIn(QByteArrayView line)
{
    const qsizetype space = line.indexOf(' ');
    return space < 0 ? 0 : line.sliced(space + 1).first(std::min<qsizetype>(3, line.size() - space - 1)).toInt();
}

/// No value if `line` is another header.
std::optional<QByteArray> locationIn(QByteArrayView line)
{
    constexpr QByteArrayView name("location:");
    const bool isLocation =
        line.size() > name.size() && line.first(name.size()).compare(name, Qt::CaseInsensitive) == 0;
    return isLocation ? std::optional(line.sliced(name.size()).trimmed().toByteArray()) : std::nullopt;
}

UpdateFailure failureOf(CURLcode code)
{
    switch (code) {
    case CURLE_COULDNT_RESOLVE_PROXY:
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_CONNECT:
    case CURLE_PROXY:
        return UpdateFailure::unreachable;
    case CURLE_UNSUPPORTED_PROTOCOL:
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_ENGINE_INITFAILED:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_USE_SSL_FAILED:
        return UpdateFailure::insecure;
    case CURLE_OPERATION_TIMEDOUT:
        return UpdateFailure::stalled;
    case CURLE_PARTIAL_FILE:
    case CURLE_GOT_NOTHING:
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
        return UpdateFailure::interrupted;
    default:
        return UpdateFailure::refused;
    }
}
} // namespace

void HttpsRequest::prepareLibrary()
{
    static const CURLcode prepared = curl_global_init(CURL_GLOBAL_DEFAULT);
    static_cast<void>(prepared);
}

HttpsRequest::HttpsRequest(const TransferRules &rules, const QUrl &url, const QNetworkProxy &proxy, Sink sink)
    : m_url(url)
    , m_sink(std::move(sink))
    , m_lines(requestLines(), &curl_slist_free_all)
    , m_multi(curl_multi_init(), &curl_multi_cleanup)
    , m_easy(curl_easy_init(), &curl_easy_cleanup)
{
    setUp(rules);
    setUpProxy(proxy);
}

HttpsRequest::Answer HttpsRequest::run()
{
    blockBrokenPipes();
    const CURLcode code = perform();
    if (code != CURLE_OK && !m_answer.failure && m_answer.redirect.isEmpty()) {
        m_answer.failure = failureOf(code);
        m_answer.detail = QStringLiteral("the connection failed: ") + QString::fromUtf8(m_error);
    }
    return m_answer;
}

void HttpsRequest::cancel()
{
    m_isCancelled = true;
    curl_multi_wakeup(m_multi.get());
}

size_t HttpsRequest::receiveHeader(char *line, size_t, size_t size, void *request)
{
    const bool goesOn = static_cast<HttpsRequest *>(request)->takeHeader({line, static_cast<qsizetype>(size)});
    return goesOn ? size : 0;
}

size_t HttpsRequest::receiveBody(char *bytes, size_t, size_t size, void *request)
{
    const bool goesOn = static_cast<HttpsRequest *>(request)->m_sink({bytes, static_cast<qsizetype>(size)});
    return goesOn ? size : 0;
}

void HttpsRequest::setUp(const TransferRules &rules)
{
    CURL *easy = m_easy.get();
    curl_easy_setopt(easy, CURLOPT_URL, m_url.toEncoded().constData());
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "https");
    curl_easy_setopt(easy, CURLOPT_SSLVERSION, long(CURL_SSLVERSION_TLSv1_2));
    curl_easy_setopt(easy, CURLOPT_HTTP_VERSION, long(CURL_HTTP_VERSION_1_1));
    if (!rules.authorities.isEmpty()) {
        curl_easy_setopt(easy, CURLOPT_CAINFO, QFile::encodeName(rules.authorities).constData());
    }
    curl_easy_setopt(easy, CURLOPT_USERAGENT, "Tunedeck");
    curl_easy_setopt(easy, CURLOPT_HTTPHEADER, m_lines.get());
    curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS, long(std::chrono::milliseconds(rules.patience).count()));
    curl_easy_setopt(easy, CURLOPT_LOW_SPEED_TIME, long(rules.patience.count()));
    curl_easy_setopt(easy, CURLOPT_LOW_SPEED_LIMIT, long(rules.leastRate));
    // It would catch signals of the whole program, and wait for the look-up of a name when it is cancelled.
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L);
    curl_easy_setopt(easy, CURLOPT_ERRORBUFFER, m_error);
    curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, &HttpsRequest::receiveHeader);
    curl_easy_setopt(easy, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &HttpsRequest::receiveBody);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, this);
}

void HttpsRequest::setUpProxy(const QNetworkProxy &proxy)
{
    CURL *easy = m_easy.get();
    if (proxy.type() != QNetworkProxy::HttpProxy && proxy.type() != QNetworkProxy::Socks5Proxy) {
        // Empty text: libcurl must not look for a proxy itself.
        curl_easy_setopt(easy, CURLOPT_PROXY, "");
        return;
    }
    const bool isSocks = proxy.type() == QNetworkProxy::Socks5Proxy;
    m_awaitsTunnel = !isSocks;
    curl_easy_setopt(easy, CURLOPT_PROXY, proxy.hostName().toUtf8().constData());
    curl_easy_setopt(easy, CURLOPT_PROXYPORT, long(proxy.port()));
    curl_easy_setopt(easy, CURLOPT_PROXYTYPE, long(isSocks ? CURLPROXY_SOCKS5_HOSTNAME : CURLPROXY_HTTP));
    if (!proxy.user().isEmpty()) {
        curl_easy_setopt(easy, CURLOPT_PROXYUSERNAME, proxy.user().toUtf8().constData());
        curl_easy_setopt(easy, CURLOPT_PROXYPASSWORD, proxy.password().toUtf8().constData());
    }
}

CURLcode HttpsRequest::perform()
{
    curl_multi_add_handle(m_multi.get(), m_easy.get());
    CURLcode code = CURLE_ABORTED_BY_CALLBACK;
    for (int running = 1; running > 0 && !m_isCancelled;) {
        curl_multi_perform(m_multi.get(), &running);
        if (running > 0) {
            curl_multi_poll(m_multi.get(), nullptr, 0, longestWait, nullptr);
        }
    }
    int rest = 0;
    if (const CURLMsg *message = curl_multi_info_read(m_multi.get(), &rest)) {
        code = message->data.result;
    }
    curl_multi_remove_handle(m_multi.get(), m_easy.get());
    return code;
}

bool HttpsRequest::takeHeader(QByteArrayView line)
{
    m_headerBytes += line.size();
    if (m_headerBytes > maximumHeaders) {
        m_answer = {UpdateFailure::refused, {}, QStringLiteral("the server sends too many headers")};
        return false;
    }
    if (line.trimmed().isEmpty()) {
        return m_awaitsTunnel ? takeAnswerOfProxy() : takeEndOfHeaders();
    }
    if (line.startsWith("HTTP/")) {
        m_status = statusIn(line);
        m_location.clear();
    } else if (const std::optional<QByteArray> location = locationIn(line)) {
        m_location = *location;
    }
    return true;
}

bool HttpsRequest::takeEndOfHeaders()
{
    const int kind = m_status / 100;
    if (m_status == successStatus || kind == 1) {
        return true;
    }
    // The body of a redirect or an error is not waited for.
    if (kind == 3 && !m_location.isEmpty()) {
        m_answer.redirect = m_url.resolved(QUrl::fromEncoded(m_location));
    } else {
        const bool isMissing = m_status == notFoundStatus || m_status == goneStatus;
        m_answer = {isMissing ? UpdateFailure::missing : UpdateFailure::refused, {},
            QStringLiteral("the server answers with status %1").arg(m_status)};
    }
    return false;
}

bool HttpsRequest::takeAnswerOfProxy()
{
    const int kind = m_status / 100;
    if (kind != 1 && kind != 2) {
        m_answer = {UpdateFailure::refused, {}, QStringLiteral("the proxy answers with status %1").arg(m_status)};
        return false;
    }
    m_awaitsTunnel = kind == 1;
    return true;
}

} // namespace tunedeck
