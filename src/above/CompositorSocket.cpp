// SPDX-License-Identifier: MIT
#include "above/CompositorSocket.h"

#include "platform/shortened.h"
#include "platform/windowLog.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace tunedeck {

namespace {
/// Returns false if the path is empty or too long for a socket.
bool setPath(sockaddr_un &address, const QByteArray &path)
{
    if (path.isEmpty() || path.size() >= qsizetype(sizeof(address.sun_path)) || path.contains('\0')) {
        return false;
    }
    address.sun_family = AF_UNIX;
    std::ranges::copy(path, address.sun_path);
    return true;
}

/// The user of the process that listens at the other end.
bool isOurs(int socket)
{
    ucred peer{};
    socklen_t size = sizeof(peer);
    return ::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == ::geteuid();
}
} // namespace

bool CompositorSocket::isListening(const QString &path)
{
    CompositorSocket socket(nullptr);
    errno = 0;
    return socket.open(path) || errno == EAGAIN;
}

CompositorSocket::CompositorSocket(Judge judge, QObject *parent)
    : QObject(parent)
    , m_judge(judge)
{
}

CompositorSocket::~CompositorSocket()
{
    close();
}

void CompositorSocket::ask(const QString &path, const QByteArray &question)
{
    close();
    if (!open(path) || !send(question)) {
        qCDebug(windowLog) << "cannot ask the compositor at" << shortened(path);
        close();
        Q_EMIT failed();
        return;
    }
    m_notifier = std::make_unique<QSocketNotifier>(m_socket, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &CompositorSocket::read);
}

void CompositorSocket::close()
{
    if (m_notifier) {
        // This may be the notifier's own signal.
        m_notifier->setEnabled(false);
        m_notifier.release()->deleteLater();
    }
    if (m_socket >= 0) {
        ::close(std::exchange(m_socket, -1));
    }
    m_answer.clear();
}

bool CompositorSocket::open(const QString &path)
{
    sockaddr_un address{};
    if (!setPath(address, QFile::encodeName(path))) {
        return false;
    }
    m_socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    // Where too many wait for a compositor that hangs, this fails at once.
    return m_socket >= 0
        && ::connect(m_socket, reinterpret_cast<const sockaddr *>(&address), socklen_t(sizeof(address))) == 0
        && isOurs(m_socket);
}

bool CompositorSocket::send(const QByteArray &question) const
{
    return ::send(m_socket, question.constData(), size_t(question.size()), MSG_NOSIGNAL) == question.size();
}

/// Reads one portion. An endless answer must not hold up the event loop.
void CompositorSocket::read()
{
    std::array<char, 65'536> portion;
    const ssize_t size = ::recv(m_socket, portion.data(), portion.size(), 0);
    if (size < 0 && (errno == EAGAIN || errno == EINTR)) {
        return;
    }
    if (size > 0) {
        m_answer.append(portion.data(), qsizetype(size));
    }
    handle(size <= 0);
}

void CompositorSocket::handle(bool isClosed)
{
    const Reading reading = m_answer.size() > mostBytes ? Reading::Invalid : m_judge(m_answer, isClosed);
    if (reading == Reading::Unfinished && !isClosed) {
        return;
    }
    const QByteArray answer = std::exchange(m_answer, {});
    close();
    if (reading == Reading::Finished) {
        Q_EMIT answered(answer);
    } else {
        qCDebug(windowLog) << "the compositor's answer is not one";
        Q_EMIT failed();
    }
}

} // namespace tunedeck
